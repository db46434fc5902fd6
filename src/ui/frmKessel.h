// The tank: a drawn cylinder with its filling, beside the result of a tank calculation.
#pragma once
#include <QWidget>

#include "session/session.h"

class QLabel;
class QAbstractButton;

namespace quom {

class TankPicture;
class ValueBox;

class frmKessel : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmKessel";
    explicit frmKessel(Session& session, QWidget* parent = nullptr);
    // Shows the tank of the record. The result window has said what there is to say: nothing is asked here.
    void refresh();

    TankPicture* picTank;
    QLabel* lblp;
    ValueBox *txtLevel, *txtp;
    QLabel* lblError;
    QAbstractButton* cmdTankHelp;

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void take_colour();
    Session& session_;
};

}  // namespace quom

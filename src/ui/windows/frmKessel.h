// The tank: a drawn cylinder with its filling, beside the result of a tank calculation.
#pragma once
#include <QWidget>

#include "forms/freshness.h"

class QLabel;
class QAbstractButton;

namespace quom {

class Workbench;
class StaleLine;
class TankPicture;
class ValueBox;

class frmKessel : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmKessel";
    explicit frmKessel(Workbench& bench, QWidget* parent = nullptr);
    // Shows the tank of the result in force. The result window has said what there is to say: nothing is
    // asked here.
    void refresh();

    StaleLine* stale;
    TankPicture* picTank;
    QLabel* lblp;
    ValueBox *txtLevel, *txtp;
    QLabel* lblError;
    QAbstractButton* cmdTankHelp;

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void document_changed();
    void show_tank(const Outcome& outcome);
    void take_colour();
    Workbench& bench_;
    ShownResult shown_;
};

}  // namespace quom

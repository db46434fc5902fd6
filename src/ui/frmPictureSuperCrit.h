// The regions about the critical point, with the state of the last calculation in them.
#pragma once
#include <QWidget>

#include "session/session.h"

class QLabel;
class QPushButton;

namespace quom {

class IsothermView;
class ValueBox;

class frmPictureSuperCrit : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmPictureSuperCrit";
    explicit frmPictureSuperCrit(Session& session, QWidget* parent = nullptr);
    // State at T [K], p [kPa]; 0 for not known.
    void show_state(double T, double p);

    QLabel* lblRegion;
    ValueBox *txtState, *txtCritical;
    IsothermView* picRegions;
    QPushButton* cmdClose;

 private:
    Session& session_;
};

}  // namespace quom

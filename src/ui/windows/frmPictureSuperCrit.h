// The regions about the critical point, with the state of the last calculation in them.
#pragma once
#include <QWidget>

class QLabel;
class QPushButton;

namespace quom {

class Workbench;
class IsothermView;
class StaleLine;
class ValueBox;

class frmPictureSuperCrit : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmPictureSuperCrit";
    explicit frmPictureSuperCrit(Workbench& bench, QWidget* parent = nullptr);
    // State at T [K], p [kPa]; 0 for not known.
    void show_state(double T, double p);
    // Greys what is shown and says why.
    void show_stale(const QString& reason);

    QLabel* lblRegion;
    ValueBox *txtState, *txtCritical;
    IsothermView* picRegions;
    StaleLine* stale;
    QPushButton* cmdClose;

 private:
    Workbench& bench_;
};

}  // namespace quom

// The window of state charts: log p-h, T-s and h-s of the substance in force, with what may be chosen for
// them. It follows every change of substance, models and reference state; what stands against a chart is said
// in its place.
#pragma once
#include <QWidget>

#include "forms/state_chart_form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QMenu;
class QPushButton;
class QTimer;

namespace quom {

class StateChartView;
class mdiQUOM;

class frmStateChart : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmStateChart";
    // Shows the chart of that kind; there is one window.
    static frmStateChart* open(mdiQUOM& frame, ChartKind kind);
    explicit frmStateChart(mdiQUOM& frame);

    const StateChartForm& form() const { return form_; }

    QComboBox *cboKind, *cboT, *cboP, *cboBasis, *cboReference;
    QCheckBox* chkBlack;
    QPushButton *cmdZoomIn, *cmdZoomOut, *cmdZoomReset, *cmdChart, *cmdClose;
    QMenu* mnuChart;  // pictures and data
    StateChartView* chart;
    QLabel *lblRefusal, *lblHint;

 private:
    void make_controls();
    void build_layout();
    void make_menu();
    void connect_controls();
    void choose();
    void show_choices();
    void show_chart();
    void show_calculated();
    void set_window(const std::optional<ChartWindow>& window);
    void zoom(double X, double Y, double factor);
    void say(const QString& text);
    void tell_pointed(const ChartState& state);
    // frmStateChart_pictures
    void copy_picture();
    void save_picture();
    void print();
    void copy_data();
    void save_data();
    QString picture_name() const;

    mdiQUOM& frame_;
    StateChartForm form_;
    ChartLimits whole_;
    QTimer* resized_;
};

// An entry of the menu mnuChart; kind: a ChartKind.
void open_state_chart(mdiQUOM& frame, int kind);

}  // namespace quom

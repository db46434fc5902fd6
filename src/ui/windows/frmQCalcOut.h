// The result of a calculation: the state in words, specified values, list, table, record, and the steps
// through the data points. Shown anew at every change of the document; what needs the user first is marked as
// not up to date.
#pragma once
#include <QPointer>
#include <QWidget>

#include "forms/freshness.h"
#include "report/result_list.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace quom {

class ColumnHeads;
class Dialogs;
class FooterLine;
class PointsPage;
class ResultList;
class ResultTable;
class StateStrip;
class ValueBox;
class ViewLabel;
class Workbench;
class frmCEOSDiagnose;
class frmIsoCalc;
class frmPictureSuperCrit;

class frmQCalcOut : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQCalcOut";
    // Calculates the first active data point, or the direct input.
    explicit frmQCalcOut(Workbench& bench, QWidget* parent = nullptr);

    // Calculates the point in force anew and shows it. False: there is nothing to show, and the user was
    // told.
    bool refresh();
    // False: there was nothing to show when the window was made, and the user was told why; it is not to
    // open.
    bool loaded() const { return loaded_; }
    // What is shown; without a result that of none.
    const Outcome& outcome() const { return outcome_; }
    const OutputView& view() const { return view_; }
    QSize sizeHint() const override { return QWidget::sizeHint().expandedTo({780, 660}); }

    StateStrip* strip;  // with cmdCalculateAgain
    QTabWidget* tabs;   // list, table, record and output
    ResultTable* table;
    PointsPage* points;  // of a batch
    FooterLine* footer;
    QGroupBox* fraBatchVorgabe;
    ValueBox *par1, *par2;
    QPushButton *cmdRueck, *cmdVor;
    ViewLabel *co1, *Bezeichnung2, *lblGleich;
    ValueBox* txtco2;
    QLabel *lblLphase, *lblVphase;
    ResultList* Liste;
    QCheckBox* chkUHS;
    QCheckBox* ResPlus[2];
    QPushButton *cmdInfoSuperCrit, *cmdCEOSDiagnose, *cmdIsoCalc, *cmdShowManuInput;
    QPushButton *cmdProtokoll, *cmdOpenNew;
    ValueBox* lblProtText2;
    QRadioButton* optResultPrint[3];  // none, printer, file
    QCheckBox* chkFuncPrint;
    QPushButton* cmdCalc_OK;

 signals:
    // The user ends the calculation: all its windows are to close.
    void calculation_ended();

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void build_layout();
    QWidget* make_list_page();
    QWidget* make_record_page();
    void set_tab_order();
    void connect_controls();
    void load();
    bool calculate(bool warn_triple);
    void document_changed();
    void calculate_again();
    void show_outcome();
    void show_view();
    void show_stale(const StaleWords& words);
    void grey(bool stale);
    void show_boxes();
    void show_diagnosis_button();
    void show_point_text(const char* head);
    void choose_point(int point);
    void step(int direction);
    void set_extended();
    void open_iso_calculator_window();
    void open_diagnosis();
    void open_picture();
    void end_calculation();
    void close_windows();
    void connect_output();
    void show_batch_controls();
    void go_to_point(int point);
    void show_record();
    void write_row();
    void close_record(bool with_clipboard);
    void put_out();
    void print_list();
    void save_list(const QString& path);
    Dialogs& dialogs() const;

    Workbench& bench_;
    Outcome outcome_;
    OutputView view_;
    ShownResult shown_;  // what outcome_ was calculated from
    Mode shown_mode_ = Mode::none;
    bool direct_;
    bool loaded_ = false;
    bool own_change_ = false;  // the document is changed from here
    ColumnHeads* heads_;
    QPointer<frmIsoCalc> iso_;
    QPointer<frmCEOSDiagnose> diagnosis_;
    QPointer<frmPictureSuperCrit> picture_;
};

}  // namespace quom

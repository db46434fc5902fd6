// The same curve by several equations: which ones, their curves on the sheet, and their deviations.
#pragma once
#include "forms/compare_form.h"
#include "ui/windows/input_window.h"

class QComboBox;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTabWidget;

namespace quom {

class NumberBox;
class TableView;
class mdiQUOM;

class frmCompare : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmCompare";
    // Shows the window beside the sheet.
    static frmCompare* open(mdiQUOM& frame);
    explicit frmCompare(mdiQUOM& frame);

    // The sheet shows another diagram, or another range of it: offers and table anew.
    void sheet_changed();

    QLabel *lblDiagram, *lblParameter, *lblReference, *lblNotes;
    QListWidget* lstEquations;
    QComboBox* cmbReference;
    NumberBox* txtParameter;
    QPushButton *cmdDraw, *cmdCopy, *cmdClose;
    QTabWidget* tabs;
    TableView *tblCurve, *tblPoints, *tblValues, *tblMeasured;

 private:
    void build_layout();
    void show_offers();
    void show_reference();
    void show_table();
    void show_nothing(const QString& reason);
    bool take_typed(bool tell);
    void draw();
    void copy();
    std::vector<CompareChoice> chosen() const;
    std::size_t reference_of(const std::vector<CompareChoice>& choices) const;

    mdiQUOM& frame_;
    std::vector<CompareChoice> offered_;
    std::vector<CompareChoice> wanted_;  // checked by the user, kept over diagrams
    // What the offers and the table belong to.
    struct Shown {
        DiagramRec diagram;
        double T = 0, p = 0, v = 0;  // parameters of the next curve
    };
    std::optional<Shown> shown_;
};

}  // namespace quom

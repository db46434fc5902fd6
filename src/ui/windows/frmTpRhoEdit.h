// The editor of experimental data: points typed in the units chosen, a grid with all of them, their file.
#pragma once
#include <QWidget>
#include <string>

#include "forms/exp_data_form.h"
#include "session/session.h"
#include "ui/widgets/data_grid.h"

class QAbstractButton;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quom {

class NoticeStrip;
class NumberBox;
class mdiQUOM;

class frmTpRhoEdit : public QWidget, private GridLines {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmTpRhoEdit";
    // Shows the window; there is one.
    static frmTpRhoEdit* open(mdiQUOM& frame);
    explicit frmTpRhoEdit(mdiQUOM& frame);

    NumberBox* y[exp_columns];
    QLabel *lblY[exp_columns], *lblUnit[exp_columns], *lblDensity;
    QRadioButton* opt_T_unit[2];    // K, °C
    QRadioButton* opt_p_Unit[3];    // kPa, atm, Torr
    QRadioButton* opt_Rho_Unit[2];  // density, volume of n kmol
    NumberBox* txtMol;              // n
    QLabel* lblMolHint;
    QRadioButton* optInputMode[2];  // add line, edit line
    QLabel* lblZeile;
    QPushButton* OKinput;
    QPushButton *cmdBatchLoad, *cmdBatchAdd, *cmdBatchSave, *cmdSaveXY;
    QLineEdit* txtComment;
    NoticeStrip* notice;  // what cannot be taken
    DataGrid* grid;
    QPushButton *TSort, *pSort, *cmdAus, *cmdErase, *cmdClipEinfuegen;
    QRadioButton* optFitFunction[5];  // p, rho(L), rho(V), delta(LV)h, cp
    QPushButton *cmdGraphFunction, *cmdlogGraf, *cmdFitting;
    QPushButton *cmdPrintTpVListe, *cmdClose;
    QAbstractButton* cmdHelp;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    // GridLines
    QStringList heads() const override;
    QString off_hint() const override;
    int count() const override;
    QString text(int line, int column) const override;
    bool off(int line) const override;
    std::string broken_rule_of(int column, double value) const override;
    void write(const std::vector<GridNumber>& numbers) override;
    void toggle(GridRange lines) override;
    void insert_clipboard() override;
    void remove_marked() override;

    void make_controls();
    void build_layout();
    QWidget* make_input_group();
    QWidget* make_unit_group();
    QWidget* make_function_group();
    void set_tab_order();
    void connect_controls();
    const ExperimentalData& data() const;
    // Commits what a change makes of the data; it counts as not saved.
    template <class Change>
    void change(Change make);
    void document_changed(const Changes& changes);
    void show_document();

    ExpInputUnits chosen_units() const;
    ExpBoxes box_texts() const;
    void choose_units();
    void show_units();
    void show_point();  // that of the marked line, where it is edited
    void show_line_number();
    void show_refusal(const BoxRefusal& refusal);
    void enter_line();
    void sort_by(bool pressure);
    void load(bool add);
    void toggle_marked();

    mdiQUOM& frame_;
    ExpInputUnits units_;
    bool loaded_ = false;  // the file was loaded here
};

}  // namespace quom

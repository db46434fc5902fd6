// The editor of experimental data: its controls and where they stand.
#include <QAbstractButton>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "ui/main/mdiQUOM.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmTpRhoEdit.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

constexpr const char* NoFitting = "not yet available: the fitting module is not there yet";

}  // namespace

void frmTpRhoEdit::make_controls() {
    for (std::size_t i = 0; i < exp_columns; ++i) {
        const auto numbered = [i](const char* name) {
            return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i).toLatin1();
        };
        y[i] = named(new NumberBox(14, this), numbered("y"));
        lblY[i] = named(new TrimmedLabel(shown(exp_column_table[i].name), this), numbered("lblY"));
        lblUnit[i] = named(new TrimmedLabel(shown(exp_column_table[i].unit), this), numbered("lblUnit"));
    }
    lblDensity = named(new TrimmedLabel(QString(), this), "lblDensity");
    make_options(this, "opt_T_unit", opt_T_unit, {"K", "°C"});
    make_options(this, "opt_p_Unit", opt_p_Unit, {"kPa", "atm", "Torr"});
    make_options(this, "opt_Rho_Unit", opt_Rho_Unit, {"rho", " V = M n / rho "});
    opt_Rho_Unit[0]->setToolTip(QStringLiteral(" direct transfer of the input values to the list "));
    txtMol = named(new NumberBox(8, this), "txtMol");
    txtMol->setText(QStringLiteral("1"));
    lblMolHint = named(hint_label({}, this), "lblMolHint");
    make_options(this, "optInputMode", optInputMode, {"add line", "edit line"});
    lblZeile = named(new TrimmedLabel(QString(), this), "lblZeile");
    OKinput = data_button(this, "OKinput", "Send input data to the list <+>");

    cmdBatchLoad = data_button(this, "cmdBatchLoad", "Load *.BAQ ...", "Load data file (with preview)");
    cmdBatchAdd = data_button(this, "cmdBatchAdd", "Join *.BAQ ...", "Join data from a file (with preview)");
    cmdBatchSave =
        data_button(this, "cmdBatchSave", "Save as *.BAQ ...", "Save exper. data as text file *.BAQ");
    txtComment = named(new QLineEdit(this), "txtComment");
    notice = named(new NoticeStrip(this), "notice");
    grid = named(new DataGrid(*this, this), "grid", QStringLiteral("Experimental data"));
    TSort = data_button(this, "TSort", "Sort by T", "table is sorted by ascending temperature");
    pSort = data_button(this, "pSort", "Sort by p", "table is sorted by ascending pressure");
    cmdAus =
        data_button(this, "cmdAus", "Line active/inactive", "...excluding that line from graph and fitting");
    cmdErase = data_button(this, "cmdErase", "Remove marked lines");
    cmdClipEinfuegen =
        data_button(this, "cmdClipEinfuegen", "Insert clipboard content", "...at the marked position");
    cmdImport = data_button(this, "cmdImport", "Import...", "points from any text or table");

    make_options(this, "optFitFunction", optFitFunction, {"p", "rho(L)", "rho(V)", "delta(LV)h", "cp"}, 1);
    cmdGraphFunction = data_button(this, "cmdGraphFunction", "Kontroll-Grafik   y=f(T)");
    cmdlogGraf = data_button(this, "cmdlogGraf", "Graph of T-p points   ln{p} = f(1/T)");
    cmdFitting = data_button(this, "cmdFitting", "    to Fitting");
    cmdSaveXY = data_button(this, "cmdSaveXY", "Save as *.XY", "Save T-y data as ...");
    switch_off(cmdFitting, NoFitting);
    cmdPrintTpVListe = data_button(this, "cmdPrintTpVListe", "Print table");
    cmdClose = data_button(this, "cmdClose", "Close <Esc>");
    cmdHelp = help_button("cmdHelp", QStringLiteral("experimental data"), this);
}

QWidget* frmTpRhoEdit::make_input_group() {
    auto* group = new QGroupBox(QStringLiteral("Input of a point"));
    auto* rows = new QGridLayout(group);
    int row = 0;
    for (std::size_t i = 0; i < exp_columns; ++i) {
        add_form_row(rows, row, lblY[i], y[i]);
        rows->addWidget(lblUnit[i], row, 2);
        add_refusal_line(rows, row + 1, y[i], lblUnit[i]);
        row += 2;
    }
    auto* mode = control_row({optInputMode[0], optInputMode[1]});
    mode->addWidget(lblZeile);
    rows->addLayout(mode, row, 0, 1, 3);
    rows->addWidget(OKinput, row + 1, 0, 1, 3);
    return group;
}

QWidget* frmTpRhoEdit::make_unit_group() {
    auto* group = new QGroupBox(QStringLiteral("Units of the input"));
    auto* rows = new QGridLayout(group);
    rows->setVerticalSpacing(4);
    const auto add = [rows](int row, QWidget* caption, QBoxLayout* options) {
        rows->addWidget(caption, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        rows->addLayout(options, row, 1);
    };
    add(0, new QLabel(QStringLiteral("T")), control_row({opt_T_unit[0], opt_T_unit[1]}));
    add(1, new QLabel(QStringLiteral("p")), control_row({opt_p_Unit[0], opt_p_Unit[1], opt_p_Unit[2]}));
    add(2, lblDensity, control_row({opt_Rho_Unit[0], opt_Rho_Unit[1]}));
    auto* amount = new TrimmedLabel(QStringLiteral("n/kmol ="));
    caption_for(amount, txtMol);
    add(3, amount, control_row({txtMol}));
    add_refusal_line(rows, 4, txtMol);
    rows->addWidget(lblMolHint, 5, 0, 1, 2);
    rows->setColumnStretch(1, 1);
    return group;
}

QWidget* frmTpRhoEdit::make_function_group() {
    auto* group = new QGroupBox(QStringLiteral("y of the pairs T-y"));
    auto* rows = new QVBoxLayout(group);
    rows->addLayout(control_row(
        {optFitFunction[0], optFitFunction[1], optFitFunction[2], optFitFunction[3], optFitFunction[4]}));
    rows->addLayout(control_row({cmdSaveXY, cmdGraphFunction, cmdlogGraf, cmdFitting}));
    return group;
}

void frmTpRhoEdit::build_layout() {
    auto* left = new QVBoxLayout;
    left->addWidget(make_input_group());
    left->addWidget(make_unit_group());
    left->addStretch();

    auto* file = control_row({cmdBatchLoad, cmdBatchAdd, cmdBatchSave, cmdImport});
    auto* comment = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("Comment of the file:"));
    caption_for(caption, txtComment);
    comment->addWidget(caption);
    comment->addWidget(txtComment, 1);
    auto* right = new QVBoxLayout;
    right->addLayout(file);
    right->addLayout(comment);
    right->addWidget(notice);
    right->addWidget(grid, 1);
    right->addLayout(control_row({TSort, pSort, cmdAus, cmdErase, cmdClipEinfuegen}));
    right->addWidget(make_function_group());

    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdPrintTpVListe);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    buttons->addWidget(cmdHelp);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(rule(this));
    layout->addLayout(buttons);
}

void frmTpRhoEdit::set_tab_order() {
    std::vector<QWidget*> order;
    order.insert(order.end(), std::begin(y), std::end(y));
    order.insert(order.end(), {optInputMode[0], optInputMode[1], OKinput});
    order.insert(order.end(), std::begin(opt_T_unit), std::end(opt_T_unit));
    order.insert(order.end(), std::begin(opt_p_Unit), std::end(opt_p_Unit));
    order.insert(order.end(), std::begin(opt_Rho_Unit), std::end(opt_Rho_Unit));
    order.insert(order.end(), {txtMol, cmdBatchLoad, cmdBatchAdd, cmdBatchSave, cmdImport, txtComment, grid,
                               TSort, pSort, cmdAus, cmdErase, cmdClipEinfuegen});
    order.insert(order.end(), std::begin(optFitFunction), std::end(optFitFunction));
    order.insert(order.end(),
                 {cmdSaveXY, cmdGraphFunction, cmdlogGraf, cmdFitting, cmdPrintTpVListe, cmdClose, cmdHelp});
    quom::set_tab_order(order);
}

}  // namespace quom

// The editor of X-Y data: its controls and where they stand.
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
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/input_window.h"

namespace quom {

void frmQXYEdit::make_controls() {
    txtX = named(new NumberBox(14, this), "txtX");
    txtY = named(new NumberBox(14, this), "txtY");
    make_options(this, "optInputMode", optInputMode, {"add line", "edit line"});
    lblZeile = named(new TrimmedLabel(QString(), this), "lblZeile");
    OKinput = data_button(this, "OKinput", " Transfer input values to the list <+>");

    cmdManip =
        data_button(this, "cmdManip", "Convert table values", "...by addition, multiplication, ln(y),1/y");
    const auto& captions = xy_conversion_captions;
    make_options(this, "optManip", optManip,
                 {captions[0].data(), captions[1].data(), captions[2].data(), captions[3].data(),
                  captions[4].data(), captions[5].data()});
    txtW = named(new NumberBox(14, this), "txtW");
    cmdExecManip = data_button(this, "cmdExecManip", "execute conversion");
    cmdCloseManip = data_button(this, "cmdCloseManip", "Close conversions");

    cmdLoad = data_button(this, "cmdLoad", "Load *.XY ...", "Load points from file");
    cmdSave = data_button(this, "cmdSave", "Save as *.XY ...", "(Curve)Points save as ... ");
    cmdImport = data_button(this, "cmdImport", "Import...", "points from any text or table");
    txtComment = named(new QLineEdit(this), "txtComment");
    notice = named(new NoticeStrip(this), "notice");
    grid = named(new DataGrid(*this, this), "grid", QStringLiteral("Points x, y"));
    XSort = data_button(this, "XSort", "Sort by x");
    YSort = data_button(this, "YSort", "Sort by y");
    cmdChangeXY = data_button(this, "cmdChangeXY", "x <-> y", " interchanging x- and y-column ");
    cmdAus = data_button(this, "cmdAus", "Line active/inactive",
                         " excludes point from drawing, manipulating, saving and printing ");
    cmdErase = data_button(this, "cmdErase", "remove marked lines");
    cmdClipEinfuegen =
        data_button(this, "cmdClipEinfuegen", "Add clipboard content",
                    " corresponds to <Ctrl><V>; suitable for the import from MS-Excel/Origin  ");

    make_options(this, "optIsPoints", optIsPoints, {"as points", "as curve"});
    cmdDrawXY = data_button(this, "cmdDrawXY", "Draw");
    cmdFitting = data_button(this, "cmdFitting", "Data to fitting module");
    switch_off(cmdFitting, "not yet available: the fitting module is not there yet");
    lblStatus = named(hint_label({}, this), "lblStatus");
    lblStatus->setWordWrap(false);
    cmdPrint = data_button(this, "cmdPrint", "Print list");
    cmdClose = data_button(this, "cmdClose", "Close <Esc>");
    cmdHelp = help_button("cmdHelp", QStringLiteral("X-Y data"), this);
}

QWidget* frmQXYEdit::make_input_group() {
    auto* group = new QGroupBox(QStringLiteral("Input of a point"));
    auto* rows = new QGridLayout(group);
    add_form_row(rows, 0, new TrimmedLabel(QStringLiteral("x")), txtX);
    add_refusal_line(rows, 1, txtX);
    add_form_row(rows, 2, new TrimmedLabel(QStringLiteral("y")), txtY);
    add_refusal_line(rows, 3, txtY);
    rows->addLayout(control_row({optInputMode[0], optInputMode[1]}), 4, 0, 1, 2);
    rows->addWidget(lblZeile, 5, 0, 1, 2);
    rows->addWidget(OKinput, 6, 0, 1, 2);
    return group;
}

QWidget* frmQXYEdit::make_conversion_group() {
    fraManip = named(new QGroupBox(QStringLiteral("Conversion of all active points")), "fraManip",
                     QStringLiteral("Conversion"));
    auto* rows = new QGridLayout(fraManip);
    for (int i = 0; i < 6; ++i) rows->addWidget(optManip[i], i % 3, i / 3);
    auto* factor = new QHBoxLayout;
    factor->setSpacing(8);
    auto* caption = new TrimmedLabel(QStringLiteral("W = "));
    caption_for(caption, txtW);
    factor->addWidget(caption);
    factor->addWidget(txtW);
    factor->addStretch();
    rows->addLayout(factor, 3, 0, 1, 2);
    auto* line = new RefusalLine(txtW, nullptr, fraManip);
    line->setObjectName(QStringLiteral("txtW_refusal"));
    rows->addWidget(line, 4, 0, 1, 2);
    rows->addWidget(cmdExecManip, 5, 0, 1, 2);
    rows->addWidget(cmdCloseManip, 6, 0, 1, 2);
    fraManip->hide();
    return fraManip;
}

QWidget* frmQXYEdit::make_drawing_group() {
    auto* group = new QGroupBox(QStringLiteral("Drawing and fitting"));
    auto* rows = new QVBoxLayout(group);
    rows->addLayout(control_row({optIsPoints[0], optIsPoints[1]}));
    rows->addWidget(cmdDrawXY);
    rows->addWidget(cmdFitting);
    return group;
}

void frmQXYEdit::build_layout() {
    auto* left = new QVBoxLayout;
    left->addWidget(make_input_group());
    left->addWidget(cmdManip);
    left->addWidget(make_conversion_group());
    left->addWidget(make_drawing_group());
    left->addStretch();

    auto* file = control_row({cmdLoad, cmdSave, cmdImport});
    file->insertWidget(2, lblStatus);
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
    right->addLayout(control_row({XSort, YSort, cmdChangeXY}));
    right->addLayout(control_row({cmdAus, cmdErase, cmdClipEinfuegen}));

    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdPrint);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    buttons->addWidget(cmdHelp);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(rule(this));
    layout->addLayout(buttons);

    set_tab_order(
        {txtX,        txtY,         optInputMode[0], optInputMode[1], OKinput,        cmdManip,
         optManip[0], optManip[1],  optManip[2],     optManip[3],     optManip[4],    optManip[5],
         txtW,        cmdExecManip, cmdCloseManip,   optIsPoints[0],  optIsPoints[1], cmdDrawXY,
         cmdFitting,  cmdLoad,      cmdSave,         cmdImport,       txtComment,     grid,
         XSort,       YSort,        cmdChangeXY,     cmdAus,          cmdErase,       cmdClipEinfuegen,
         cmdPrint,    cmdClose,     cmdHelp});
}

}  // namespace quom

#include "ui/windows/frmTpVSInputBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/diagram_form.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmQGraph2D.h"

namespace quom {

frmTpVSInputBox* frmTpVSInputBox::open(mdiQUOM& frame) {
    auto* box = frame.find_or_make<frmTpVSInputBox>();
    box->show_offer();
    frame.open_child(box, frame.child(frmQGraph2D::Name));
    box->txtParameter->setFocus();
    box->txtParameter->selectAll();
    return box;
}

frmTpVSInputBox::frmTpVSInputBox(mdiQUOM& frame)
    : lblSection(named(head_label(QString(), this), "lblSection")),
      lblParameter(named(new TrimmedLabel(QString(), this), "lblParameter")),
      lblHint(named(hint_label(shown(parameter_hint), this), "lblHint")),
      txtParameter(named(new NumberBox(14, this), "txtParameter")),
      frame_(frame) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(shown(parameter_title));
    cmdOK = data_button(this, "cmdOK", "Apply and Close");
    cmdAbbrechen = data_button(this, "cmdAbbrechen", "Close <Esc>");
    cmdAbbrechen->setAccessibleName(QStringLiteral("Close"));
    cmdOKAndDraw = data_button(this, "cmdOKAndDraw", "Draw curve and close");
    cmdOKAndDraw->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblSection);
    auto* grid = new QGridLayout;
    add_form_row(grid, 0, lblParameter, txtParameter);
    add_refusal_line(grid, 1, txtParameter);
    grid->setColumnStretch(2, 1);
    layout->addLayout(grid);
    layout->addWidget(lblHint);
    layout->addWidget(rule(this));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdAbbrechen);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdOKAndDraw);
    layout->addLayout(buttons);
    set_tab_order({txtParameter, cmdAbbrechen, cmdOK, cmdOKAndDraw});
    txtParameter->press_on_enter(cmdOKAndDraw);
    leave_by(cmdAbbrechen);
    connect(this, &InputWindow::left, this, [this] { frame_.unload(Name); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { take(false); });
    connect(cmdOKAndDraw, &QPushButton::clicked, this, [this] { take(true); });
    // Another equation of state has another v(cr), other units another number.
    connect(&frame_.bench(), &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.fluid() || changes.units) show_offer();
    });
    show_offer();
}

void frmTpVSInputBox::show_offer() {
    const ParameterBox box = parameter_box(frame_.session());
    lblSection->setText(shown(box.caption));
    lblSection->setVisible(!box.caption.empty());
    lblParameter->setText(shown(box.label));
    caption_for(lblParameter, txtParameter);
    txtParameter->setText(shown(box.text));
}

void frmTpVSInputBox::take(bool draw) {
    const ParameterTaken taken =
        take_parameter(frame_.session(), txtParameter->typed(), frame_.bench().messages());
    if (!taken.fault.empty()) return txtParameter->refuse(taken.fault);
    if (!taken.taken) {
        txtParameter->setFocus();
        txtParameter->selectAll();
        return;
    }
    mdiQUOM& frame = frame_;
    finish();
    frame.unload(Name);
    if (draw) draw_next_curve(frame);
}

}  // namespace quom

#include "ui/windows/frmTpVSInputBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "forms/diagram_form.h"
#include "forms/refusal.h"
#include "ui/charts/sheet_view.h"
#include "ui/look/look.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmQGraph2D.h"

namespace quom {

namespace {

constexpr int SmallStep = 2, LargeStep = 50;  // of the slider, by keys; a notch of the wheel is three small

}  // namespace

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
      lblReason(named(new QLabel(this), "lblReason")),
      txtParameter(named(new NumberBox(14, this), "txtParameter")),
      sldParameter(named(new QSlider(Qt::Horizontal, this), "sldParameter",
                         QStringLiteral("Parameter; the curve follows"))),
      frame_(frame) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(shown(parameter_title));
    cmdOK = data_button(this, "cmdOK", "Apply and Close");
    cmdAbbrechen = data_button(this, "cmdAbbrechen", "Close <Esc>");
    cmdAbbrechen->setAccessibleName(QStringLiteral("Close"));
    cmdOKAndDraw = data_button(this, "cmdOKAndDraw", "Draw curve and close");
    cmdOKAndDraw->setDefault(true);
    sldParameter->setRange(0, ParameterScale::Steps);
    sldParameter->setSingleStep(SmallStep);
    sldParameter->setPageStep(LargeStep);
    build_layout();

    txtParameter->press_on_enter(cmdOKAndDraw);
    txtParameter->installEventFilter(this);
    leave_by(cmdAbbrechen);
    connect(this, &InputWindow::left, this, [this] {
        drop_curve();
        frame_.unload(Name);
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] { take(false); });
    connect(cmdOKAndDraw, &QPushButton::clicked, this, [this] { take(true); });
    connect(sldParameter, &QSlider::valueChanged, this, &frmTpVSInputBox::slide);
    connect(txtParameter, &NumberBox::textEdited, this, &frmTpVSInputBox::typed);
    // Another equation of state has another v(cr), other units another number.
    connect(&frame_.bench(), &Workbench::changed, this, [this](const Changes& changes) {
        if (!changes.fluid() && !changes.units) return;
        drop_curve();
        show_offer();
    });
    show_offer();
}

void frmTpVSInputBox::build_layout() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblSection);
    auto* grid = new QGridLayout;
    add_form_row(grid, 0, lblParameter, txtParameter);
    add_refusal_line(grid, 1, txtParameter);
    grid->setColumnStretch(2, 1);
    layout->addLayout(grid);
    layout->addWidget(sldParameter);
    layout->addWidget(lblHint);
    layout->addWidget(lblReason);
    layout->addWidget(cmdOKAndDraw);
    layout->addWidget(cmdOK);
    layout->addWidget(rule(this));
    layout->addWidget(cmdAbbrechen);
    set_tab_order({txtParameter, sldParameter, cmdOKAndDraw, cmdOK, cmdAbbrechen});
    // Room for a reason, so that nothing moves under the mouse.
    lblReason->setMinimumHeight(2 * lblReason->fontMetrics().lineSpacing());
    lblReason->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblReason->setWordWrap(true);
    lblReason->setTextFormat(Qt::PlainText);
}

void frmTpVSInputBox::show_offer() {
    const ParameterBox box = parameter_box(frame_.session());
    lblSection->setText(shown(box.caption));
    lblSection->setVisible(!box.caption.empty());
    lblParameter->setText(shown(box.label));
    caption_for(lblParameter, txtParameter);
    txtParameter->setText(shown(box.text));
    scale_ = parameter_scale(frame_.session());
    sldParameter->setEnabled(scale_.has_value());
    typed();
}

// The slider goes where the number is; a curve in hand follows it.
void frmTpVSInputBox::typed() {
    const auto number = box_number(txtParameter->typed());
    if (scale_ && number) {
        const QSignalBlocker quiet(sldParameter);
        sldParameter->setValue(position_of(*scale_, *number));
    }
    if (live_.slot > 0) follow();
}

void frmTpVSInputBox::slide(int position) {
    if (!scale_) return;
    txtParameter->setText(QString::fromStdString(value_at(*scale_, position)));
    follow();
}

void frmTpVSInputBox::follow() {
    const LiveMove move = move_live_curve(frame_.session(), live_, txtParameter->typed());
    lblReason->setText(QString::fromStdString(move.told).simplified());
    QPalette colours = palette();
    if (!move.drawn) colours.setColor(QPalette::WindowText, look_colour(LookColour::ErrorText));
    lblReason->setPalette(colours);
    lblReason->setAccessibleName(lblReason->text());
    if (auto* diagram = move.drawn ? frame_.child<frmQGraph2D>() : nullptr) diagram->chart->follow();
}

void frmTpVSInputBox::recolour_curve() {
    if (live_.slot > 0) follow();
}

void frmTpVSInputBox::drop_curve() {
    lblReason->clear();
    if (live_.slot == 0) return;
    drop_live_curve(frame_.session(), live_);
    if (auto* diagram = frame_.child<frmQGraph2D>()) diagram->refresh();
}

void frmTpVSInputBox::settle() {
    if (live_.slot == 0) return;
    SilentMessages nobody;  // a curve in hand was not refused
    take_parameter(frame_.session(), txtParameter->typed(), nobody);
    drop_curve();
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
    drop_curve();
    finish();
    frame.unload(Name);
    if (draw) draw_next_curve(frame);
}

// A wheel over the box in focus turns the slider.
bool frmTpVSInputBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtParameter || event->type() != QEvent::Wheel || !txtParameter->hasFocus() || !scale_)
        return InputWindow::eventFilter(watched, event);
    const int turned = static_cast<QWheelEvent*>(event)->angleDelta().y();
    const int notches = turned / 120 != 0 ? turned / 120 : (turned > 0) - (turned < 0);
    sldParameter->setValue(sldParameter->value() + 3 * SmallStep * notches);
    return true;
}

}  // namespace quom

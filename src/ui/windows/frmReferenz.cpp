#include "ui/windows/frmReferenz.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/number_text.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/widgets/value_box.h"
#include "ui/widgets/wrapped_button.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

void fill(NumberBox* box, double x) { box->setText(QString::fromStdString(genNum(x))); }
void fill(NumberBox* box, float x) { box->setText(QString::fromStdString(genNum(x))); }
QString single(double x) { return QString::fromStdString(genNum(static_cast<float>(x))); }

QLabel* caption(std::string_view text) { return new TrimmedLabel(shown(text)); }
int caption_width(std::string_view text) { return TrimmedLabel(shown(text)).sizeHint().width(); }

}  // namespace

frmReferenz::frmReferenz(Workbench& bench, QWidget* parent)
    : QDialog(parent), bench_(bench), boxes_(reference_boxes(bench.document())) {
    setObjectName(QStringLiteral("frmReferenz"));
    setWindowTitle(shown(reference_caption));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(named(head_label(shown(reference_heading)), "lblHeading"));
    layout->addWidget(make_options());
    layout->addWidget(make_state());
    layout->addWidget(make_environment());
    OK = named(new QPushButton(QStringLiteral("OK")), "OK", QStringLiteral("OK"));
    cancel = named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cancel", QStringLiteral("Cancel <Esc>"));
    add_end_row(layout, cancel, OK);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    set_tab_order({opt_HNull[0], opt_HNull[1], opt_HNull[2], TRef0, pRef0, hOffset, sOffset, h0, s0, TEnv,
                   pEnv, cancel, OK});
    pEnv->press_on_enter(OK);
    connect(OK, &QPushButton::clicked, this, &frmReferenz::take);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.reference || changes.units || changes.substance) show_document();
    });
    show_document();
    opt_HNull[static_cast<std::size_t>(boxes_.option)]->setFocus();
}

// Boxes and their units as the document has them.
void frmReferenz::show_document() {
    boxes_ = reference_boxes(bench_.document());
    const Units& units = bench_.document().units;
    for (QLabel* label : findChildren<QLabel*>()) {
        if (label->buddy() == hOffset) label->setText(shown(reference_h_label(units)));
        if (label->buddy() == sOffset) label->setText(shown(reference_s_label(units)));
    }
    fill(hOffset, boxes_.h);
    fill(sOffset, boxes_.s);
    fill(TRef0, static_cast<float>(boxes_.T0));
    fill(pRef0, static_cast<float>(boxes_.p0));
    fill(TEnv, boxes_.TEnv);
    fill(pEnv, boxes_.pEnv);
    show_option(boxes_.option);
}

QWidget* frmReferenz::make_options() {
    auto* group = new QWidget;
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    for (std::size_t i = 0; i < opt_HNull.size(); ++i) {
        const QString text = shown(reference_options[i].text);
        opt_HNull[i] =
            named(new WrappedOption(text, 68), "opt_HNull_" + QByteArray::number(static_cast<int>(i)), text);
        column->addWidget(opt_HNull[i]);
        connect(opt_HNull[i], &QRadioButton::clicked, this, [this, i] { choose(static_cast<int>(i)); });
    }
    return group;
}

// A box with its caption and, in the row below, what is wrong with it.
void frmReferenz::add_input(QGridLayout* grid, int row, std::string_view label, Quantity quantity,
                            NumberBox* box, std::string_view note) {
    add_form_row(grid, row, caption(label), box, shown(note));
    add_refusal_line(grid, row + 1, box);
    box->set_unit(quantity, caption_parts(label).unit,
                  static_cast<double>(bench_.document().substance.constants.MolMass));
}

QWidget* frmReferenz::make_state() {
    auto* group = new QGroupBox(QStringLiteral("Reference state"));
    auto* grid = new QGridLayout(group);
    TRef0 = named(new NumberBox(16), "TRef0");
    pRef0 = named(new NumberBox(16), "pRef0");
    hOffset = named(new NumberBox(16), "hOffset");
    sOffset = named(new NumberBox(16), "sOffset");
    add_input(grid, 0, reference_T_label, Quantity::T, TRef0);
    add_input(grid, 2, reference_p_label, Quantity::p, pRef0);
    QLabel* hint = caption(reference_p_hint);
    hint->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(hint, 4, 0, 1, 3, Qt::AlignRight);
    const Units& units = bench_.document().units;
    add_input(grid, 5, reference_h_label(units), Quantity::h, hOffset, reference_state_note);
    add_input(grid, 7, reference_s_label(units), Quantity::s, sOffset, reference_state_note);
    h0 = named(new ValueBox(nullptr, 14), "h0");
    s0 = named(new ValueBox(nullptr, 14), "s0");
    add_form_row(grid, 9, caption("from the substance data:  h0 ="), h0);
    add_form_row(grid, 10, caption("s0 ="), s0);
    h0->setAccessibleName(QStringLiteral("h0 from the substance data"));
    s0->setAccessibleName(QStringLiteral("s0 from the substance data"));
    return group;
}

QWidget* frmReferenz::make_environment() {
    auto* group = new QGroupBox(shown(environment_heading));
    auto* grid = new QGridLayout(group);
    TEnv = named(new NumberBox(16), "TEnv");
    pEnv = named(new NumberBox(16), "pEnv");
    // Under the boxes of the other group.
    grid->setColumnMinimumWidth(2, caption_width(reference_state_note) + 8);
    add_input(grid, 0, environment_T_label, Quantity::T, TEnv);
    add_input(grid, 2, environment_p_label, Quantity::p, pEnv);
    return group;
}

// The option, what it takes from the substance, and whether its point can be typed.
void frmReferenz::show_option(int option) {
    const auto index = static_cast<std::size_t>(option);
    opt_HNull[index]->setChecked(true);
    const bool fixed = reference_options[index].fixed_point;
    TRef0->setEnabled(!fixed);
    pRef0->setEnabled(!fixed);
    const ReferenceValues values = reference_values(bench_.document(), option);
    h0->show_text(single(values.h0));
    s0->show_text(single(values.s0));
}

void frmReferenz::choose(int option) {
    choose_reference_option(boxes_, option);
    if (reference_options[static_cast<std::size_t>(option)].fixed_point) {
        fill(TRef0, static_cast<float>(boxes_.T0));
        fill(pRef0, static_cast<float>(boxes_.p0));
        fill(hOffset, boxes_.h);
        fill(sOffset, boxes_.s);
    }
    show_option(option);
}

void frmReferenz::take() {
    NumberBox* const boxes[] = {TRef0, pRef0, hOffset, sOffset, TEnv, pEnv};  // as ReferenceBox
    ReferenceTexts texts;
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = boxes[i]->typed();
    Document document = bench_.document();
    const ReferenceRefusal refusal = take_reference(document, boxes_.option, texts);
    if (refusal.box) return boxes[refusal.box->box]->refuse(refusal.box->rule);
    if (refusal.message) {
        bench_.tell(*refusal.message);
        return;
    }
    bench_.commit(std::move(document));
    accept();
}

}  // namespace quom

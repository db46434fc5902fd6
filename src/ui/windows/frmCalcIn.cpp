#include "ui/windows/frmCalcIn.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/calculation_form.h"
#include "ui/look/look.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/result_list.h"

namespace quom {

namespace {

constexpr int text_digits = 78;  // width of the texts
constexpr int reference_lines = 6;

// A text over several lines with room for so many of them.
QLabel* text_label(const char* name, int lines) {
    auto* label = named(new QLabel, name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMinimumSize(text_width(*label, text_digits), label->fontMetrics().lineSpacing() * lines + 2);
    return label;
}

QRadioButton* option(const char* name, int index, const QString& text) {
    return named(new QRadioButton(text), QByteArray(name) + '_' + QByteArray::number(index), text);
}

}  // namespace

frmCalcIn::frmCalcIn(Workbench& bench, Mode mode, const CalcSetup& setup, bool diagram_pending,
                     QWidget* parent)
    : InputWindow(parent),
      bench_(bench),
      selection_(OpenPartial(bench.fluid(), mode, setup, diagram_pending)) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(shown(partial_caption));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(make_situation());
    layout->addWidget(make_density());
    layout->addWidget(make_reference());
    lblStatus = text_label("lblStatus", 2);
    layout->addWidget(lblStatus);
    OK = named(new QPushButton(QStringLiteral("Continue >")), "OK", QStringLiteral("Continue >"));
    cancel = named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cancel", QStringLiteral("Cancel <Esc>"));
    add_end_row(layout, cancel, OK);

    leave_by(cancel);
    set_tab_order({opt_glob[0], opt_glob[1], optPartialBenson[0], optPartialBenson[1], Ref_opt[0], Ref_opt[1],
                   Ref_opt[2], txtRef, cancel, OK});
    connect(OK, &QPushButton::clicked, this, [this] {
        const bool direct = is_direct(bench_.document(), selection_.mode);
        const PartialContinue next = ContinuePartial(bench_.fluid(), selection_, direct);
        finish();
        emit continued(next);
    });
    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.fluid()) follow();
    });
    show_view();
    focus_first();
}

// Other constants or models: what can be chosen and what is proposed follow from them; the choice between
// GLOBAL and PARTIAL stays where it can.
void frmCalcIn::follow() {
    if (input_open_) {
        emit reference_input(false);
        input_open_ = false;
    }
    const bool global = selection_.view.GlobalCalc;
    selection_ = OpenPartial(bench_.fluid(), selection_.mode, selection_.setup, selection_.diagram_pending);
    if (selection_.view.opt_glob_enabled && selection_.view.GlobalCalc != global)
        ChooseConcept(bench_.fluid(), selection_, global);
    show_view();
}

void frmCalcIn::focus_first() {
    const PartialView& view = selection_.view;
    (view.opt_glob_enabled ? static_cast<QWidget*>(opt_glob[view.GlobalCalc ? 0 : 1]) : OK)->setFocus();
}

QWidget* frmCalcIn::make_situation() {
    fraSituation = named(new QGroupBox(QStringLiteral("GLOBAL or PARTIAL calculation")), "fraSituation");
    auto* column = new QVBoxLayout(fraSituation);
    lblAssumption = text_label("lblAssumption", 3);
    column->addWidget(lblAssumption);
    auto* row = new QHBoxLayout;
    opt_glob = {option("opt_glob", 0, QStringLiteral("GLOBAL calculation")),
                option("opt_glob", 1, QStringLiteral("PARTIAL calculation"))};
    for (QRadioButton* button : opt_glob) row->addWidget(button);
    row->addStretch();
    column->addLayout(row);
    connect(opt_glob[0], &QRadioButton::clicked, this, [this] { choose_concept(true); });
    connect(opt_glob[1], &QRadioButton::clicked, this, [this] { choose_concept(false); });
    return fraSituation;
}

QWidget* frmCalcIn::make_density() {
    fraPartial = named(new QGroupBox(QStringLiteral("L-density of the PARTIAL calculation")), "fraPartial");
    auto* column = new QVBoxLayout(fraPartial);
    column->setSpacing(4);
    optPartialBenson = {option("optPartialBenson", 0, QStringLiteral("BENSON's method (Mathias/Cailletet)")),
                        option("optPartialBenson", 1, QStringLiteral("database equation rho(L) = Fu(T)"))};
    lblRange = named(new QLabel, "lblRange");
    lblMethod = named(new QLabel, "lblMethod");
    column->addWidget(optPartialBenson[0]);
    auto* row = new QHBoxLayout;
    row->addWidget(optPartialBenson[1]);
    row->addWidget(lblRange);
    row->addStretch();
    column->addLayout(row);
    column->addWidget(lblMethod);
    for (int i : {0, 1}) {
        connect(optPartialBenson[static_cast<std::size_t>(i)], &QRadioButton::clicked, this, [this, i] {
            ChooseDensity(bench_.fluid(), selection_, i == 0);
            show_view();
        });
    }
    return fraPartial;
}

QWidget* frmCalcIn::make_reference() {
    fraRef = named(new QGroupBox(shown(partial_reference_title)), "fraRef");
    auto* column = new QVBoxLayout(fraRef);
    column->setSpacing(4);
    const char* texts[] = {"Proposed reference data",
                           "BENSON's approximation for RhoL(ref) at the normal boiling point",
                           "Manual input of reference data"};
    for (int i = 0; i < 3; ++i) {
        auto*& button = Ref_opt[static_cast<std::size_t>(i)];
        button = option("Ref_opt", i, QString::fromLatin1(texts[i]));
        column->addWidget(button);
        connect(button, &QRadioButton::clicked, this, [this, i] { choose_reference(i); });
    }
    lblRefHead = named(new QLabel, "lblRefHead");
    column->addSpacing(4);
    column->addWidget(lblRefHead);
    txtRef = named(new ResultList, "txtRef", shown(partial_reference_title));
    txtRef->set_lines(reference_lines);
    column->addWidget(txtRef);
    return fraRef;
}

void frmCalcIn::show_view() {
    const PartialView& view = selection_.view;
    fraSituation->setTitle(view.second_title.empty() ? QStringLiteral("GLOBAL or PARTIAL calculation")
                                                     : shown(view.second_title));
    fraSituation->setAccessibleName(fraSituation->title());
    lblAssumption->setText(shown(view.assumption));
    for (QRadioButton* button : opt_glob) {
        // The text of the whole group in place of the choice, where the concept of the models decides.
        button->setVisible(view.situation != PartialSituation::partial_concept);
        // With an EOS of the V-phase alone GLOBAL can be pressed, and says why it cannot be had.
        button->setEnabled(view.opt_glob_enabled || bench_.fluid().VPhaseOnly);
    }
    opt_glob[view.GlobalCalc ? 0 : 1]->setChecked(true);
    optPartialBenson[view.BensonRhoL ? 0 : 1]->setChecked(true);
    Ref_opt[static_cast<std::size_t>(view.Ref_opt)]->setChecked(true);
    // A group that the chosen way does not use cannot be changed.
    fraPartial->setEnabled(!view.GlobalCalc);
    for (QRadioButton* button : optPartialBenson) button->setEnabled(view.optPartialBenson_enabled);
    fraRef->setEnabled(!view.GlobalCalc && view.BensonRhoL);
    lblMethod->setText(shown(view.method));
    lblRange->setText(QString::fromStdString(view.range));
    lblRefHead->setText(QString::fromStdString(view.heading));
    txtRef->show_text(view.reference_text);
    lblStatus->setText(QString::fromStdString(view.status));
    OK->setEnabled(view.OK_enabled);
}

void frmCalcIn::choose_concept(bool global) {
    const auto refusal = ChooseConcept(bench_.fluid(), selection_, global);
    if (refusal) bench_.tell(*refusal);
    show_view();
}

void frmCalcIn::choose_reference(int option) {
    const bool manual = option == ref_manual;
    if (manual && !input_open_) proposed_ = selection_;
    input_open_ = manual;
    ChooseReference(bench_.fluid(), selection_, option);
    show_view();
    emit reference_input(manual);
}

void frmCalcIn::reference_taken(const BensonReference& point) {
    input_open_ = false;
    ReferenceTaken(bench_.fluid(), selection_, point);
    show_view();
    OK->setFocus();
}

void frmCalcIn::reference_left() {
    input_open_ = false;
    selection_ = proposed_;
    show_view();
    Ref_opt[static_cast<std::size_t>(selection_.view.Ref_opt)]->setFocus();
}

}  // namespace quom

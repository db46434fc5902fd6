#include "ui/windows/frmIsoCalc.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "base/number_text.h"
#include "report/result_list.h"
#include "ui/main/beside.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/stale_line.h"
#include "ui/widgets/value_box.h"

namespace quom {

namespace {

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QRadioButton* option(const char* array, int index, const QString& caption, QWidget* parent) {
    return named(new QRadioButton(caption, parent), qPrintable(QStringLiteral("%1_%2").arg(array).arg(index)),
                 caption);
}

QPushButton* button(const char* name, const char* caption, QWidget* parent) {
    return named(new QPushButton(QLatin1String(caption), parent), name, QLatin1String(caption));
}

}  // namespace

frmIsoCalc::frmIsoCalc(Workbench& bench, IsoCalculator calculator, QWidget* parent)
    : QWidget(parent),
      optIsoTp{option("optIsoTp", 0, QStringLiteral("&Temperat."), this),
               option("optIsoTp", 1, QStringLiteral("&Pressure"), this)},
      optIsoPhase{option("optIsoPhase", 0, QStringLiteral("&L-phase"), this),
                  option("optIsoPhase", 1, QStringLiteral("&V-phase"), this)},
      lblTpVorgabe(named(new TrimmedLabel(QString(), this), "lblTpVorgabe")),
      lblFuConst(named(new TrimmedLabel(QString(), this), "lblFuConst")),
      lblTpCalc(named(new TrimmedLabel(QString(), this), "lblTpCalc")),
      txtTpVorgabe(named(new NumberBox(18, this), "txtTpVorgabe")),
      txtFuConst(named(new NumberBox(18, this), "txtFuConst")),
      txtTpCalc(named(new ValueBox(this, 18), "txtTpCalc")),
      Liste(named(new ResultList(this), "Liste", QStringLiteral("State found"))),
      cmdCalc(button("cmdCalc", "C&alculation", this)),
      cmdReset(button("cmdReset", "&Reset Last", this)),
      cmdShowManuInput(button("cmdShowManuInput", "Curve &input", this)),
      cmdEsc(button("cmdEsc", "Close", this)),
      cmdIsoHelp(help_button("cmdIsoHelp", QStringLiteral("Iso Calculator"), this)),
      bench_(bench),
      calculator_(std::move(calculator)),
      lblFuUnit(named(new TrimmedLabel(QString(), this), "lblFuUnit")) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(QStringLiteral("Iso Calculator"));
    for (int i = 0; i < 8; ++i)
        OptIsoFu[i] = option("OptIsoFu", i, text_of(iso_captions[static_cast<std::size_t>(i)].caption), this);
    txtFuConst->setToolTip(QStringLiteral("manual input possible; for unit see \"Options\""));
    cmdReset->setToolTip(QStringLiteral("Reset to last successful calculation"));
    txtTpCalc->setAccessibleName(QStringLiteral("Result"));
    cmdCalc->setDefault(true);
    cmdCalc->setMinimumWidth(96);
    not_yet_available(cmdShowManuInput);
    build_layout();
    connect_controls();
    shown_ = state_in_force();
    show_calculator();
    // A window that is put into the area gets the focus with its first control: after that.
    QMetaObject::invokeMethod(
        this,
        [this] {
            txtFuConst->setFocus();
            txtFuConst->selectAll();
        },
        Qt::QueuedConnection);
}

void frmIsoCalc::build_layout() {
    const auto group = [this](const char* title, auto& options, int columns) {
        auto* box = new QGroupBox(QLatin1String(title), this);
        auto* rows = new QGridLayout(box);
        rows->setVerticalSpacing(4);
        auto* exclusive = new QButtonGroup(box);
        int i = 0;
        for (QRadioButton* button : options) {
            rows->addWidget(button, i / columns, i % columns);
            exclusive->addButton(button);
            ++i;
        }
        rows->setRowStretch(i / columns + 1, 1);
        return box;
    };
    auto* choices = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(group("Given", optIsoTp, 1));
    left->addWidget(group("Phase", optIsoPhase, 1), 1);
    choices->addLayout(left);
    choices->addWidget(group("Function held constant", OptIsoFu, 2), 1);

    auto* form = new QGridLayout;
    add_form_row(form, 0, lblTpVorgabe, txtTpVorgabe);
    add_form_row(form, 2, lblFuConst, txtFuConst);
    for (const auto& [box, row] : {std::pair{txtTpVorgabe, 1}, {txtFuConst, 3}}) {
        auto* line = new RefusalLine(box, nullptr, this);
        line->setObjectName(box->objectName() + QStringLiteral("_refusal"));
        form->addWidget(line, row, 1, 1, 3, Qt::AlignLeft);
    }
    form->addWidget(lblFuUnit, 2, 2);
    form->addWidget(hint_label(QStringLiteral("manual input possible; for unit see \"Options\""), this), 2,
                    3);
    lblTpCalc->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblTpCalc->setBuddy(txtTpCalc);
    form->addWidget(lblTpCalc, 4, 0);
    form->addWidget(txtTpCalc, 4, 1, 1, 3, Qt::AlignLeft);
    form->setColumnStretch(0, 0);
    form->setColumnStretch(3, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdIsoHelp);
    buttons->addWidget(cmdShowManuInput);
    buttons->addStretch();
    buttons->addWidget(cmdEsc);
    buttons->addWidget(cmdReset);
    buttons->addWidget(cmdCalc);

    stale = new StaleLine({txtTpVorgabe, txtFuConst, txtTpCalc, Liste}, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(stale);
    layout->addLayout(choices);
    layout->addLayout(form);
    layout->addWidget(Liste, 1);
    layout->addWidget(rule(this));
    layout->addLayout(buttons);

    QWidget* before = optIsoTp[0];
    const auto next = [&before](QWidget* widget) {
        QWidget::setTabOrder(before, widget);
        before = widget;
    };
    next(optIsoTp[1]);
    for (QRadioButton* choice : optIsoPhase) next(choice);
    for (QRadioButton* choice : OptIsoFu) next(choice);
    for (QWidget* widget :
         {static_cast<QWidget*>(txtTpVorgabe), static_cast<QWidget*>(txtFuConst),
          static_cast<QWidget*>(txtTpCalc), static_cast<QWidget*>(Liste), static_cast<QWidget*>(cmdIsoHelp),
          static_cast<QWidget*>(cmdShowManuInput), static_cast<QWidget*>(cmdEsc),
          static_cast<QWidget*>(cmdReset), static_cast<QWidget*>(cmdCalc)})
        next(widget);
}

void frmIsoCalc::connect_controls() {
    for (auto* choice : optIsoTp) connect(choice, &QRadioButton::clicked, this, [this] { choose(); });
    for (auto* choice : OptIsoFu) connect(choice, &QRadioButton::clicked, this, [this] { choose(); });
    for (auto* choice : optIsoPhase) connect(choice, &QRadioButton::clicked, this, [this] { choose(); });
    connect(cmdCalc, &QPushButton::clicked, this, [this] { calculate(); });
    connect(cmdReset, &QPushButton::clicked, this, [this] { reset(); });
    connect(cmdEsc, &QPushButton::clicked, this, [this] { drop_window(this); });
    connect(cmdIsoHelp, &QAbstractButton::clicked, this, [this] { show_help_of(this); });
    txtFuConst->press_on_enter(cmdCalc);
    connect(&bench_, &Workbench::changed, this, &frmIsoCalc::document_changed);
}

// Data point 0 as mode 8 would calculate it.
ShownResult frmIsoCalc::state_in_force() const {
    ShownResult state = result_in_force(bench_.session);
    Document document = bench_.document();
    document.calc = {};
    document.calc.CalcMode = Mode::functions;
    state.input = state_input(document, 0);
    state.ShowFunctions = false;
    state.ExtLevel = 1;
    state.direct = true;
    return state;
}

// Values of a former unit, reference state, model or state give way to those in force, and so does what was
// found last with them.
void frmIsoCalc::document_changed() {
    if (own_change_) return;
    const bool confirmed = bench_.session.shell.ModelsConfirmed;
    const auto words = confirmed ? std::nullopt : why_stale(bench_.session, shown_);
    stale->show_reason(words ? QString::fromStdString(words->changed) : QString());
    cmdCalc->setEnabled(confirmed);
    cmdReset->setEnabled(confirmed);
    const ShownResult now = state_in_force();
    if (!confirmed || now == shown_) return;
    if (now.fluid != shown_.fluid || now.units != shown_.units) calculator_.last.reset();
    shown_ = now;
    Liste->show_text({});
    choose();
}

void frmIsoCalc::read_options() {
    calculator_.IsoIn = optIsoTp[0]->isChecked() ? iso_find_p : iso_find_T;
    for (int i = 0; i < 8; ++i)
        if (OptIsoFu[i]->isChecked()) calculator_.IsoFu = i;
    calculator_.optIsoPhase = optIsoPhase[0]->isChecked() ? 0 : 1;
}

void frmIsoCalc::choose() {
    read_options();
    show_current_state(bench_.session, calculator_);
    show_calculator();
}

void frmIsoCalc::calculate() {
    read_options();
    if (const auto refusal = take_iso_boxes(calculator_, txtTpVorgabe->typed(), txtFuConst->typed()))
        return (refusal->box == 0 ? txtTpVorgabe : txtFuConst)->refuse(refusal->rule);
    const auto changes = iso_calculate(bench_.session, calculator_);
    show_calculator();
    if (changes)
        show_state(*changes);
    else
        Liste->show_text({});
    txtFuConst->setFocus();
    txtFuConst->selectAll();
}

void frmIsoCalc::reset() {
    const Changes changes = iso_reset(bench_.session, calculator_);
    show_calculator();
    if (calculator_.last) show_state(changes);
}

// The state in force, and everybody hears of it.
void frmIsoCalc::show_state(const Changes& changes) {
    show_found_state();
    {
        const QScopedValueRollback own(own_change_, true);
        bench_.announce(changes);
    }
    shown_ = state_in_force();
}

void frmIsoCalc::show_calculator() {
    const auto M = static_cast<double>(bench_.document().substance.constants.MolMass);
    const CaptionParts given = caption_parts(iso_given_label(calculator_));
    txtTpVorgabe->set_unit(calculator_.IsoIn == iso_find_p ? Quantity::T : Quantity::p, given.unit, M);
    txtFuConst->set_unit(iso_quantity(calculator_), iso_unit(bench_.session, calculator_), M);
    txtTpVorgabe->take_back_refusal();
    txtFuConst->take_back_refusal();
    optIsoTp[calculator_.IsoIn]->setChecked(true);
    OptIsoFu[calculator_.IsoFu]->setChecked(true);
    optIsoPhase[calculator_.optIsoPhase]->setChecked(true);
    lblTpVorgabe->setText(text_of(iso_given_label(calculator_)));
    caption_for(lblTpVorgabe, txtTpVorgabe);
    txtTpVorgabe->set_value(calculator_.txtTpVorgabe);
    const QString unit = text_of(iso_unit(bench_.session, calculator_));
    lblFuConst->setText(text_of(iso_captions[static_cast<std::size_t>(calculator_.IsoFu)].label));
    caption_for(lblFuConst, txtFuConst, unit);
    lblFuUnit->setText(unit);
    txtFuConst->set_value(calculator_.txtFuConst);
    lblTpCalc->setText(QString::fromStdString(calculator_.result_label));
    txtTpCalc->setAccessibleName(spoken(lblTpCalc->text()));
    const bool fault = calculator_.txtTpCalc.starts_with("No solution");
    txtTpCalc->show_text(QString::fromStdString(calculator_.txtTpCalc),
                         fault ? QColor(128, 0, 0) : Qt::black);
}

void frmIsoCalc::show_found_state() {
    const Document& document = bench_.document();
    const OutputView view = make_result_list(bench_.fluid(), iso_state(bench_.session),
                                             {.units = document.units, .setup = document.calc.setup});
    const std::string head = view.par1.text + "    " + view.par2.text + '\n';
    Liste->show_text(head + std::string(head.size() - 1, '=') + '\n' + view.Liste.text,
                     view.Liste.colour == colour_red);
}

void frmIsoCalc::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return cmdEsc->click();
    QWidget::keyPressEvent(event);
}

}  // namespace quom

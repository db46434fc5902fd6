#include "ui/windows/frmIsoCalc.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/number_text.h"
#include "report/result_list.h"
#include "ui/main/beside.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
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
    show_calculator();
    txtFuConst->setFocus();
    txtFuConst->selectAll();
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
    add_form_row(form, 1, lblFuConst, txtFuConst);
    form->addWidget(lblFuUnit, 1, 2);
    form->addWidget(hint_label(QStringLiteral("manual input possible; for unit see \"Options\""), this), 1,
                    3);
    lblTpCalc->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblTpCalc->setBuddy(txtTpCalc);
    form->addWidget(lblTpCalc, 2, 0);
    form->addWidget(txtTpCalc, 2, 1, 1, 3, Qt::AlignLeft);
    form->setColumnStretch(0, 0);
    form->setColumnStretch(3, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdIsoHelp);
    buttons->addWidget(cmdShowManuInput);
    buttons->addStretch();
    buttons->addWidget(cmdEsc);
    buttons->addWidget(cmdReset);
    buttons->addWidget(cmdCalc);

    auto* layout = new QVBoxLayout(this);
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
    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        // The value of the function would be one of the former unit or reference state.
        if (changes.substance || changes.models || !(changes.units || changes.reference)) return;
        calculator_.last.reset();
        Liste->show_text({});
        choose();
    });
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
    calculator_.txtTpVorgabe = txtTpVorgabe->value();
    calculator_.txtFuConst = txtFuConst->value();
    const bool found = iso_calculate(bench_.session, calculator_);
    show_calculator();
    if (!found) {
        Liste->show_text({});
        return;
    }
    show_found_state();
    emit state_changed();
}

void frmIsoCalc::reset() {
    iso_reset(bench_.session, calculator_);
    show_calculator();
    if (!calculator_.last) return;
    show_found_state();
    emit state_changed();
}

void frmIsoCalc::show_calculator() {
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

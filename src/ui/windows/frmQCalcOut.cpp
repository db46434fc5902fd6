#include "ui/windows/frmQCalcOut.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <iterator>

#include "base/number_text.h"
#include "forms/calculation_form.h"
#include "forms/iso_form.h"
#include "report/outcome_messages.h"
#include "report/titles.h"
#include "ui/look/look.h"
#include "ui/main/beside.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/value_box.h"
#include "ui/widgets/view_label.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmPictureSuperCrit.h"

namespace quom {

namespace {

template <class Button>
Button* captioned(const char* name, const char* caption, QWidget* parent) {
    const QString text = QString::fromUtf8(caption);
    return named(new Button(text, parent), name, text);
}

// A widget keeps its place while it is hidden, so that the rows below do not jump from result to result.
void keep_place(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

QFont value_font() {
    QFont font = fixed_font();
    font.setPointSizeF(font.pointSizeF() + 2);
    font.setBold(true);
    return font;
}

}  // namespace

frmQCalcOut::frmQCalcOut(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      fraBatchVorgabe(named(new QGroupBox(this), "fraBatchVorgabe")),
      par1(named(new ValueBox(this), "par1", QStringLiteral("Specified value 1"))),
      par2(named(new ValueBox(this), "par2", QStringLiteral("Specified value 2"))),
      cmdRueck(captioned<QPushButton>("cmdRueck", "Set &backward", this)),
      cmdVor(captioned<QPushButton>("cmdVor", "Set &forward", this)),
      co1(named(new ViewLabel(this), "co1", QStringLiteral("State"))),
      Bezeichnung2(named(new ViewLabel(this), "Bezeichnung2")),
      lblGleich(named(new ViewLabel(this), "lblGleich")),
      txtco2(named(new ValueBox(this), "txtco2", QStringLiteral("Value"))),
      Liste(named(new ResultList(this), "Liste", QStringLiteral("Result list"))),
      chkUHS(captioned<QCheckBox>("chkUHS", "thermod. f&unctions h, s, g, u, a ...", this)),
      ResPlus{
          captioned<QCheckBox>("ResPlus_0", "diff. &Joule-Thomson, fugacity, mechanical coefficients", this),
          captioned<QCheckBox>("ResPlus_1", "&derivatives with respect to T, p, v", this)},
      cmdInfoSuperCrit(captioned<QPushButton>("cmdInfoSuperCrit", "Info &Pict.", this)),
      cmdCEOSDiagnose(captioned<QPushButton>("cmdCEOSDiagnose", "Diagnosis of cubic &EOS", this)),
      cmdIsoCalc(captioned<QPushButton>("cmdIsoCalc", "&Iso Calculator", this)),
      cmdShowManuInput(captioned<QPushButton>("cmdShowManuInput", "&X-Y Editor", this)),
      cmdProtokoll(captioned<QPushButton>("cmdProtokoll", "&Write", this)),
      cmdOpenNew(captioned<QPushButton>("cmdOpenNew",
                                        "Close file / Open new file and paste record in clipboard", this)),
      lblProtText2(named(new ValueBox(this), "lblProtText2", QStringLiteral("File of the record"))),
      optResultPrint{captioned<QRadioButton>("optResultPrint_0", "&none", this),
                     captioned<QRadioButton>("optResultPrint_1", "P&rinter", this),
                     captioned<QRadioButton>("optResultPrint_2", "Fi&le", this)},
      chkFuncPrint(captioned<QCheckBox>("chkFuncPrint", "with extended calculation", this)),
      cmdCalc_OK(captioned<QPushButton>("cmdCalc_OK", "&Close", this)),
      bench_(bench),
      direct_(is_direct(bench.document(), bench.document().calc.CalcMode)),
      heads_(new ColumnHeads(Liste, this)) {
    setObjectName(QLatin1String(Name));
    lblLphase = named(heads_->L, "lblLphase");
    lblVphase = named(heads_->V, "lblVphase");
    txtco2->setFont(value_font());
    if (!direct_) {
        cmdCalc_OK->setText(QStringLiteral("Exit (+ data output)"));
        cmdCalc_OK->setAccessibleName(cmdCalc_OK->text());
    }
    build_layout();
    connect_controls();
    load();
}

void frmQCalcOut::build_layout() {
    auto* layout = new QVBoxLayout(this);
    auto* given = new QHBoxLayout(fraBatchVorgabe);
    given->addWidget(par1);
    given->addWidget(par2);
    given->addStretch();
    given->addWidget(cmdRueck);
    given->addWidget(cmdVor);
    keep_place(fraBatchVorgabe);
    layout->addWidget(fraBatchVorgabe);
    build_state(layout);
    build_outputs(layout);

    QWidget* const order[] = {chkUHS,
                              ResPlus[0],
                              ResPlus[1],
                              cmdRueck,
                              cmdVor,
                              optResultPrint[0],
                              chkFuncPrint,
                              par1,
                              par2,
                              txtco2,
                              Liste,
                              lblProtText2,
                              cmdInfoSuperCrit,
                              cmdCEOSDiagnose,
                              cmdIsoCalc,
                              cmdProtokoll,
                              cmdOpenNew,
                              cmdShowManuInput,
                              cmdCalc_OK};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmQCalcOut::build_state(QVBoxLayout* layout) {
    auto* state = new QHBoxLayout;
    state->addWidget(co1);
    state->addWidget(Bezeichnung2);
    state->addStretch();
    state->addWidget(cmdInfoSuperCrit);
    keep_place(cmdInfoSuperCrit);
    layout->addLayout(state);
    auto* value = new QHBoxLayout;
    value->addWidget(txtco2);
    value->addWidget(lblGleich);
    value->addStretch();
    value->addStrut(std::max(txtco2->sizeHint().height(), lblGleich->sizeHint().height()));
    layout->addLayout(value);

    auto* list = new QVBoxLayout;
    list->setSpacing(2);
    list->addWidget(heads_);
    list->addWidget(Liste, 1);
    layout->addLayout(list, 1);
}

void frmQCalcOut::build_outputs(QVBoxLayout* layout) {
    auto* extended = new QGridLayout;
    extended->setVerticalSpacing(4);
    extended->addWidget(chkUHS, 0, 0);
    extended->addWidget(ResPlus[0], 0, 1);
    extended->addWidget(ResPlus[1], 1, 0);
    extended->setColumnStretch(1, 1);
    auto* tools = new QHBoxLayout;
    tools->addLayout(extended, 1);
    auto* more = new QVBoxLayout;
    more->addWidget(cmdCEOSDiagnose);
    more->addWidget(cmdIsoCalc);
    tools->addLayout(more);
    layout->addLayout(tools);
    layout->addWidget(rule(this));

    auto* record = new QGroupBox(QStringLiteral("Calculation record"), this);
    auto* rows = new QGridLayout(record);
    rows->addWidget(cmdProtokoll, 0, 0);
    rows->addWidget(lblProtText2, 0, 1);
    rows->addWidget(cmdOpenNew, 1, 0, 1, 2);
    rows->setColumnStretch(1, 1);
    auto* output = new QGroupBox(QStringLiteral("Output"), this);
    auto* choice = new QGridLayout(output);
    for (int i = 0; i < 3; ++i) choice->addWidget(optResultPrint[i], 0, i);
    choice->addWidget(chkFuncPrint, 1, 0, 1, 3);
    auto* ends = new QVBoxLayout;
    ends->addStretch();
    ends->addWidget(cmdShowManuInput);
    ends->addWidget(cmdCalc_OK);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(record, 1);
    bottom->addWidget(output);
    bottom->addLayout(ends);
    layout->addLayout(bottom);

    optResultPrint[0]->setChecked(true);
    chkFuncPrint->setEnabled(false);
    for (QWidget* control :
         {static_cast<QWidget*>(cmdProtokoll), static_cast<QWidget*>(cmdOpenNew),
          static_cast<QWidget*>(optResultPrint[1]), static_cast<QWidget*>(optResultPrint[2]),
          static_cast<QWidget*>(cmdShowManuInput)})
        not_yet_available(control);
    cmdCalc_OK->setMinimumWidth(96);
}

void frmQCalcOut::connect_controls() {
    connect(cmdVor, &QPushButton::clicked, this, [this] { step(1); });
    connect(cmdRueck, &QPushButton::clicked, this, [this] { step(-1); });
    connect(chkUHS, &QCheckBox::toggled, this, [this](bool shown) {
        Document document = bench_.document();
        document.calc.ShowFunctions = shown;
        bench_.commit(std::move(document));
        calculate(false);
    });
    for (QCheckBox* box : ResPlus) connect(box, &QCheckBox::toggled, this, [this] { set_extended(); });
    connect(cmdIsoCalc, &QPushButton::clicked, this, [this] { open_iso_calculator_window(); });
    connect(cmdCEOSDiagnose, &QPushButton::clicked, this, [this] { open_diagnosis(); });
    connect(cmdInfoSuperCrit, &QPushButton::clicked, this, [this] { open_picture(); });
    connect(cmdCalc_OK, &QPushButton::clicked, this, [this] { end_calculation(); });
    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        // Another substance or other models close the window.
        if (changes.substance || changes.models || !(changes.units || changes.reference)) return;
        outcome_ = quom::calculate(bench_.session, bench_.document().calc.CurrentPoint);
        show_outcome();
    });
}

void frmQCalcOut::load() {
    Document document = bench_.document();
    document.calc.ExtLevel = 1;
    document.calc.CurrentPoint = direct_ ? 0 : first_active_point(document.exp);
    const int point = document.calc.CurrentPoint;
    bench_.commit(std::move(document));
    {
        const QSignalBlocker quiet(chkUHS);
        chkUHS->setChecked(bench_.document().calc.ShowFunctions);
    }
    cmdVor->setEnabled(!direct_);
    cmdRueck->setEnabled(!direct_);
    const bool has_point = direct_ || point > 0;
    if (!has_point)
        bench_.tell({.title = "Execution not possible",
                     .text = "all data points are marked as deleted",
                     .kind = MessageKind::warning});
    show_point_text("Specificated value(s) from data point #");
    loaded_ = has_point && calculate(true);
}

void frmQCalcOut::show_point_text(const char* head) {
    const QString text = direct_ ? QStringLiteral("Specificated value(s) from direct input")
                                 : QLatin1String(head) + QString::number(bench_.document().calc.CurrentPoint);
    fraBatchVorgabe->setTitle(text);
    fraBatchVorgabe->setAccessibleName(text);
}

bool frmQCalcOut::refresh() {
    if (direct_) choose_point(0);
    return calculate(true);
}

bool frmQCalcOut::calculate(bool warn_triple) {
    outcome_ = quom::calculate(bench_.session, bench_.document().calc.CurrentPoint);
    for (const Message& message : outcome_messages(bench_.fluid(), outcome_, warn_triple))
        bench_.tell(message);
    show_outcome();
    return view_.Text != "EXIT";
}

void frmQCalcOut::show_outcome() {
    const CalculationInput& calc = bench_.document().calc;
    view_ = make_result_list(bench_.fluid(), outcome_,
                             {.units = bench_.document().units,
                              .setup = calc.setup,
                              .ExtLevel = calc.ExtLevel,
                              .ShowFunctions = calc.ShowFunctions});
    setWindowTitle(QString::fromStdString(CalcCaption(calc.CalcMode, calc.setup)));
    show_view();
    if (diagnosis_) diagnosis_->show_outcome(outcome_);
    if (picture_) picture_->show_state(outcome_.T.value_or(0.0), outcome_.p.value_or(0.0));
}

void frmQCalcOut::show_view() {
    const OutputView& view = view_;
    fraBatchVorgabe->setVisible(view.fraBatchVorgabe);
    show_in_box(par1, view.par1);
    show_in_box(par2, view.par2);
    co1->show_text(view.co1);
    Bezeichnung2->show_text(view.Bezeichnung2);
    lblGleich->show_text(view.lblGleich);
    show_in_box(txtco2, view.txtco2);
    const auto show_head = [](QLabel* label, const ViewText& text) {
        label->setText(text.visible ? QString::fromStdString(text.text) : QString());
    };
    show_head(lblLphase, view.lblLphase);
    show_head(lblVphase, view.lblVphase);
    Liste->show_text(view.Liste.text, view.Liste.colour == colour_red);
    Liste->setVisible(view.Liste.visible);
    cmdInfoSuperCrit->setVisible(view.cmdInfoSuperCrit);
    show_diagnosis_button();
}

void frmQCalcOut::show_diagnosis_button() {
    const OutputView& view = view_;
    cmdCEOSDiagnose->setEnabled(view.cmdCEOSDiagnose);
    QPalette palette;
    if (view.cmdCEOSDiagnose && view.cmdCEOSDiagnose_colour != colour_button) {
        palette.setColor(QPalette::Button, QColor(static_cast<QRgb>(view.cmdCEOSDiagnose_colour)));
        palette.setColor(QPalette::ButtonText, QColor(0x1B1F24));
    }
    cmdCEOSDiagnose->setPalette(palette);
}

void frmQCalcOut::choose_point(int point) {
    Document document = bench_.document();
    document.calc.CurrentPoint = point;
    bench_.commit(std::move(document));
}

void frmQCalcOut::step(int direction) {
    const Document& document = bench_.document();
    const int next = stepped_point(document.exp, document.calc.CurrentPoint, direction);
    if (next == document.calc.CurrentPoint) return;
    choose_point(next);
    show_point_text("Specificated values from data point ");
    calculate(true);
}

void frmQCalcOut::set_extended() {
    Document document = bench_.document();
    document.calc.ExtLevel = 1 + (ResPlus[0]->isChecked() ? 1 : 0) + (ResPlus[1]->isChecked() ? 2 : 0);
    const CalculationInput& calc = document.calc;
    chkFuncPrint->setEnabled(calc.ExtLevel > 1 && calc.CalcMode < Mode::vaporization_T);
    bench_.commit(std::move(document));
    calculate(false);
}

void frmQCalcOut::open_iso_calculator_window() {
    IsoOpened opened = open_iso_calculator(bench_.session);
    if (opened.refusal) {
        bench_.tell(*opened.refusal);
        return;
    }
    drop_window(iso_);
    iso_ = new frmIsoCalc(bench_, std::move(opened.calculator));
    connect(iso_, &frmIsoCalc::state_changed, this, [this] {
        // T and p of the direct input are those of the state found.
        const Mode mode = bench_.document().calc.CalcMode;
        if (direct_ && (mode == Mode::T_p || mode == Mode::functions)) calculate(false);
    });
    open_beside(this, iso_, iso_->sizeHint(), Sizing::free);
}

void frmQCalcOut::open_diagnosis() {
    drop_window(diagnosis_);
    diagnosis_ = new frmCEOSDiagnose(bench_);
    diagnosis_->show_outcome(outcome_);
    open_beside(this, diagnosis_, diagnosis_->sizeHint(), Sizing::free);
}

void frmQCalcOut::open_picture() {
    drop_window(picture_);
    picture_ = new frmPictureSuperCrit(bench_);
    picture_->show_state(outcome_.T.value_or(0.0), outcome_.p.value_or(0.0));
    open_beside(this, picture_, picture_->sizeHint(), Sizing::free);
}

void frmQCalcOut::end_calculation() {
    emit calculation_ended();
    if (mdiQUOM* frame = frame_of(this))
        frame->unload_calculation_windows();
    else
        close();
}

void frmQCalcOut::closeEvent(QCloseEvent* event) {
    for (QWidget* window :
         {static_cast<QWidget*>(iso_), static_cast<QWidget*>(diagnosis_), static_cast<QWidget*>(picture_)})
        drop_window(window);
    event->accept();
}

void frmQCalcOut::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) show_diagnosis_button();
}

}  // namespace quom

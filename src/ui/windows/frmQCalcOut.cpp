#include "ui/windows/frmQCalcOut.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTabWidget>

#include "forms/calculation_form.h"
#include "forms/iso_form.h"
#include "report/basis_line.h"
#include "report/outcome_messages.h"
#include "report/titles.h"
#include "ui/main/beside.h"
#include "ui/main/data_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/footer_line.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/result_table.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/widgets/view_label.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/points_page.h"

namespace quom {

namespace {

const QString TabKey = QStringLiteral("result/tab"), FunctionsKey = QStringLiteral("result/functions"),
              ExtendedKey = QStringLiteral("result/extended");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// Presses a button of another window that is open. False: there is none to press.
bool press_in(QWidget* from, const char* window, const char* button) {
    const mdiQUOM* frame = frame_of(from);
    QWidget* other = frame ? frame->child(window) : nullptr;
    auto* found = other ? other->findChild<QPushButton*>(QLatin1String(button)) : nullptr;
    if (!found || !found->isEnabled()) return false;
    found->click();
    return true;
}

}  // namespace

void frmQCalcOut::connect_controls() {
    connect(cmdVor, &QPushButton::clicked, this, [this] { step(1); });
    connect(cmdRueck, &QPushButton::clicked, this, [this] { step(-1); });
    connect(chkUHS, &QCheckBox::toggled, this, [this] { set_extended(); });
    for (QCheckBox* box : ResPlus) connect(box, &QCheckBox::toggled, this, [this] { set_extended(); });
    connect(cmdIsoCalc, &QPushButton::clicked, this, [this] { open_iso_calculator_window(); });
    connect(cmdShowManuInput, &QPushButton::clicked, this, [this] {
        if (mdiQUOM* frame = frame_of(this)) edit_xy_data(*frame, 0);
    });
    connect(cmdCEOSDiagnose, &QPushButton::clicked, this, [this] { open_diagnosis(); });
    connect(cmdInfoSuperCrit, &QPushButton::clicked, this, [this] { open_picture(); });
    connect(cmdCalc_OK, &QPushButton::clicked, this, [this] { end_calculation(); });
    connect(strip, &StateStrip::calculate_again, this, [this] { calculate_again(); });
    const auto show_tab = [this] { table->corner()->setVisible(tabs->currentWidget() == table); };
    connect(tabs, &QTabWidget::currentChanged, this, [this, show_tab](int tab) {
        bench_.memory.set(TabKey, tab);
        show_tab();
    });
    show_tab();
    connect(&bench_, &Workbench::changed, this, [this] { document_changed(); });
    connect_output();
    connect(&bench_, &Workbench::typed, this, [this] { document_changed(); });
}

void frmQCalcOut::load() {
    {
        const QScopedValueRollback own(own_change_, true);
        direct_ = is_direct(bench_.document(), bench_.document().calc.CalcMode);
        Document document = bench_.document();
        CalculationInput& calc = document.calc;
        calc.ExtLevel = bench_.memory.value(ExtendedKey, 1).toInt();
        if (calc.ExtLevel < 1 || calc.ExtLevel > 4) calc.ExtLevel = 1;
        calc.ShowFunctions = bench_.memory.value(FunctionsKey, calc.ShowFunctions).toBool();
        calc.CurrentPoint = direct_ ? 0 : first_active_point(document.exp);
        bench_.commit(std::move(document));
        bench_.session.batch.clear();
    }
    show_batch_controls();
    const int tab = bench_.memory.value(TabKey, 0).toInt();
    tabs->setCurrentIndex(tabs->isTabVisible(tab) ? tab : 0);
    const bool has_point = direct_ || bench_.document().calc.CurrentPoint > 0;
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
    if (const auto message = outcome_message(bench_.fluid(), outcome_, warn_triple)) bench_.tell(*message);
    show_outcome();
    if (!direct_) points->show_point(bench_.document().calc.CurrentPoint);
    if (const auto stale = why_stale(bench_.session, shown_)) show_stale(*stale);
    return view_.Text != "EXIT";
}

// Calculates anew without a word; what needs the user first is told in the strip.
void frmQCalcOut::document_changed() {
    if (own_change_) return;
    if (const auto stale = why_stale(bench_.session, shown_)) return show_stale(*stale);
    const QString& typed = bench_.typed_boxes();
    if (strip->is_stale() || result_in_force(bench_.session) != shown_) {
        outcome_ = quom::calculate(bench_.session, bench_.document().calc.CurrentPoint);
        show_outcome();
    }
    if (!direct_) points->refresh();
    if (typed.isEmpty()) return;
    const QString values = QStringList{par1->text(), par2->text()}.join(QLatin1Char(' ')).simplified();
    show_stale(typed_words(typed.toStdString(), values.toStdString()));
}

// What the user would do: take the boxes, confirm the models, go to the values that count now.
void frmQCalcOut::calculate_again() {
    if (!bench_.typed_boxes().isEmpty() && press_in(this, "frmParinput", "cmdParameter_OK")) return;
    if (!bench_.session.shell.ModelsConfirmed) {
        press_in(this, "frmQModell", "cmdOKModell");
        return;
    }
    if (is_direct(bench_.document(), bench_.document().calc.CalcMode) != direct_)
        load();
    else
        refresh();
}

void frmQCalcOut::show_outcome() {
    const CalculationInput& calc = bench_.document().calc;
    shown_ = result_in_force(bench_.session);
    view_ = make_result_list(bench_.fluid(), outcome_,
                             {.units = bench_.document().units,
                              .setup = calc.setup,
                              .ExtLevel = calc.ExtLevel,
                              .ShowFunctions = calc.ShowFunctions});
    setWindowTitle(text_of(CalcCaption(calc.CalcMode, calc.setup)));
    grey(false);
    strip->show_outcome(bench_.fluid(), outcome_);
    footer->show_text(text_of(basis_line(bench_.fluid())));
    show_boxes();
    show_view();
    table->show_outcome(bench_.fluid(), outcome_, calc.setup);
    if (diagnosis_) diagnosis_->show_outcome(outcome_);
    if (picture_) picture_->show_state(outcome_.T.value_or(0.0), outcome_.p.value_or(0.0));
}

void frmQCalcOut::show_stale(const StaleWords& words) {
    const QString changed = text_of(words.changed);
    strip->show_stale(changed, text_of(words.shown));
    grey(true);
    show_record();
    if (diagnosis_) diagnosis_->show_stale(changed);
    if (picture_) picture_->show_stale(changed);
}

void frmQCalcOut::grey(bool stale) {
    for (ValueBox* box : {par1, par2, txtco2}) box->set_stale(stale);
    for (ViewLabel* label : {co1, Bezeichnung2, lblGleich}) label->set_stale(stale);
    Liste->set_stale(stale);
    heads_->set_stale(stale);
    table->set_stale(stale);
    show_diagnosis_button();
    cmdInfoSuperCrit->setEnabled(!stale);
}

// The check boxes as the document has them.
void frmQCalcOut::show_boxes() {
    const CalculationInput& calc = bench_.document().calc;
    const bool extended[] = {calc.ExtLevel == 2 || calc.ExtLevel == 4,
                             calc.ExtLevel == 3 || calc.ExtLevel == 4};
    const auto show = [](QCheckBox* box, bool checked) {
        const QSignalBlocker quiet(box);
        box->setChecked(checked);
    };
    show(chkUHS, calc.ShowFunctions);
    for (int i = 0; i < 2; ++i) show(ResPlus[i], extended[i]);
    chkFuncPrint->setEnabled(calc.ExtLevel > 1 && calc.CalcMode < Mode::vaporization_T);
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
        label->setText(text.visible ? text_of(text.text) : QString());
    };
    show_head(lblLphase, view.lblLphase);
    show_head(lblVphase, view.lblVphase);
    // The next result of a mode is read at the same place of the list.
    QScrollBar *down = Liste->verticalScrollBar(), *across = Liste->horizontalScrollBar();
    const bool same_mode = bench_.document().calc.CalcMode == shown_mode_;
    const int line = same_mode ? down->value() : 0, column = same_mode ? across->value() : 0;
    Liste->show_text(view.Liste.text, view.Liste.colour == colour_red);
    down->setValue(line);
    across->setValue(column);
    shown_mode_ = bench_.document().calc.CalcMode;
    Liste->setVisible(view.Liste.visible);
    cmdInfoSuperCrit->setVisible(view.cmdInfoSuperCrit);
    show_diagnosis_button();
    show_record();
}

void frmQCalcOut::show_diagnosis_button() {
    const bool usable = view_.cmdCEOSDiagnose && !strip->is_stale();
    cmdCEOSDiagnose->setEnabled(usable);
    QPalette palette;
    if (usable && view_.cmdCEOSDiagnose_colour != colour_button) {
        palette.setColor(QPalette::Button, QColor(static_cast<QRgb>(view_.cmdCEOSDiagnose_colour)));
        palette.setColor(QPalette::ButtonText, QColor(0x1B1F24));
    }
    cmdCEOSDiagnose->setPalette(palette);
}

void frmQCalcOut::choose_point(int point) {
    const QScopedValueRollback own(own_change_, true);
    Document document = bench_.document();
    document.calc.CurrentPoint = point;
    bench_.commit(std::move(document));
}

void frmQCalcOut::step(int direction) {
    const Document& document = bench_.document();
    const int next = stepped_point(document.exp, document.calc.CurrentPoint, direction);
    if (next != document.calc.CurrentPoint) go_to_point(next);
}

void frmQCalcOut::go_to_point(int point) {
    choose_point(point);
    show_point_text("Specificated values from data point ");
    calculate(true);
}

void frmQCalcOut::set_extended() {
    {
        const QScopedValueRollback own(own_change_, true);
        Document document = bench_.document();
        document.calc.ExtLevel = 1 + (ResPlus[0]->isChecked() ? 1 : 0) + (ResPlus[1]->isChecked() ? 2 : 0);
        document.calc.ShowFunctions = chkUHS->isChecked();
        bench_.memory.set(ExtendedKey, document.calc.ExtLevel);
        bench_.memory.set(FunctionsKey, document.calc.ShowFunctions);
        bench_.commit(std::move(document));
    }
    // What is not up to date stays so until it is calculated again.
    if (!strip->is_stale()) calculate(false);
}

void frmQCalcOut::open_iso_calculator_window() {
    IsoOpened opened = open_iso_calculator(bench_.session);
    if (opened.refusal) {
        bench_.tell(*opened.refusal);
        return;
    }
    drop_window(iso_);
    iso_ = new frmIsoCalc(bench_, std::move(opened.calculator));
    open_beside(this, iso_);
}

void frmQCalcOut::open_diagnosis() {
    drop_window(diagnosis_);
    diagnosis_ = new frmCEOSDiagnose(bench_);
    diagnosis_->show_outcome(outcome_);
    open_beside(this, diagnosis_);
}

void frmQCalcOut::open_picture() {
    drop_window(picture_);
    picture_ = new frmPictureSuperCrit(bench_);
    picture_->show_state(outcome_.T.value_or(0.0), outcome_.p.value_or(0.0));
    open_beside(this, picture_);
}

void frmQCalcOut::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) show_diagnosis_button();
}

}  // namespace quom

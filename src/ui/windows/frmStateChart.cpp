#include "ui/windows/frmStateChart.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QTimer>

#include "diagrams/chart_texts.h"
#include "ui/charts/state_chart_view.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/end_row.h"
#include "ui/widgets/labels.h"
#include "ui/windows/data_controls.h"

namespace quom {

namespace {

constexpr int AfterResize = 60;  // of the last change of size until the chart is made for it [ms]
constexpr double ButtonZoom = 0.7;
const QString Hint = QStringLiteral(
    "drag: zoom in   Shift + drag: move   wheel: zoom   click: copy the state   right click: pictures, data");

const QString MemoryKeys[] = {QStringLiteral("chart/T"), QStringLiteral("chart/p"),
                              QStringLiteral("chart/basis"), QStringLiteral("chart/reference"),
                              QStringLiteral("chart/black")};

QComboBox* choice(QWidget* parent, const char* name, const char* spoken_name,
                  std::span<const std::string_view> entries) {
    auto* box = named(new QComboBox(parent), name, QLatin1String(spoken_name));
    for (const std::string_view text : entries)
        box->addItem(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    return box;
}

}  // namespace

void open_state_chart(mdiQUOM& frame, int kind) { frmStateChart::open(frame, static_cast<ChartKind>(kind)); }

frmStateChart* frmStateChart::open(mdiQUOM& frame, ChartKind kind) {
    auto* window = frame.find_or_make<frmStateChart>();
    frame.open_child(window);
    if (window->form_.kind != kind) {
        window->form_.kind = kind;
        window->form_.window.reset();
    }
    window->show_choices();
    window->show_chart();
    window->chart->setFocus();
    return window;
}

frmStateChart::frmStateChart(mdiQUOM& frame) : frame_(frame), resized_(new QTimer(this)) {
    setObjectName(QLatin1String(Name));
    const UiMemory& memory = frame_.bench().memory;
    int* const kept[] = {&form_.T_unit, &form_.p_unit, &form_.basis, &form_.reference};
    for (std::size_t i = 0; i < std::size(kept); ++i) *kept[i] = memory.value(MemoryKeys[i], 0).toInt();
    form_.black = memory.value(MemoryKeys[4], false).toBool();
    make_controls();
    make_menu();
    build_layout();
    connect_controls();
    show_choices();
}

void frmStateChart::make_controls() {
    cboKind = choice(this, "cboKind", "Kind of chart", chart_kind_entries());
    cboT = choice(this, "cboT", "Unit of T", chart_T_entries());
    cboP = choice(this, "cboP", "Unit of p", chart_p_entries());
    cboBasis = choice(this, "cboBasis", "Unit of h", chart_basis_entries());
    cboReference = choice(this, "cboReference", "Zero point of h and s", chart_reference_entries());
    cboReference->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboReference->setMinimumContentsLength(20);
    chkBlack = named(new QCheckBox(QStringLiteral("Black"), this), "chkBlack", QStringLiteral("Black sheet"));
    cmdZoomIn = data_button(this, "cmdZoomIn", "+", " closer <+> ");
    cmdZoomIn->setAccessibleName(QStringLiteral("Zoom in"));
    cmdZoomOut = data_button(this, "cmdZoomOut", "\u2212", " farther <-> ");
    cmdZoomOut->setText(QStringLiteral("\u2212"));
    cmdZoomOut->setAccessibleName(QStringLiteral("Zoom out"));
    cmdZoomReset = data_button(this, "cmdZoomReset", "Reset", " the whole chart <0> ");
    cmdChart = data_button(this, "cmdChart", "Diagram ...", " pictures and data ");
    cmdClose = data_button(this, "cmdClose", "Close <Esc>");
    for (QPushButton* small : {cmdZoomIn, cmdZoomOut})
        small->setFixedWidth(small->fontMetrics().averageCharWidth() * 6);
    chart = named(new StateChartView(this), "chart");
    chart->setFocusProxy(chart->findChild<QWidget*>(QStringLiteral("plot")));
    lblRefusal = named(hint_label(QString(), this), "lblRefusal");
    lblRefusal->setAlignment(Qt::AlignCenter);
    lblHint = named(hint_label(Hint, this), "lblHint");
    lblHint->setWordWrap(false);
    lblHint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    resized_->setSingleShot(true);
    resized_->setInterval(AfterResize);
}

void frmStateChart::build_layout() {
    auto* commands = new QHBoxLayout;
    commands->setSpacing(6);
    for (QWidget* box : {cboKind, cboT, cboP, cboBasis, cboReference}) commands->addWidget(box);
    commands->addWidget(chkBlack);
    commands->addStretch();
    for (QWidget* button : {cmdZoomIn, cmdZoomOut, cmdZoomReset, cmdChart}) commands->addWidget(button);
    auto* end = new QHBoxLayout;
    end->addWidget(lblHint, 1);
    end->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(commands);
    layout->addWidget(chart, 1);
    layout->addWidget(lblRefusal, 1);
    layout->addLayout(end);
    set_tab_order({cboKind, cboT, cboP, cboBasis, cboReference, chkBlack, cmdZoomIn, cmdZoomOut, cmdZoomReset,
                   cmdChart, chart, cmdClose});
}

void frmStateChart::make_menu() {
    mnuChart = named(new QMenu(this), "mnuChartData");
    const auto add = [this](const char* name, const QString& caption, void (frmStateChart::*run)()) {
        mnuChart->addAction(caption, this, run)->setObjectName(QLatin1String(name));
    };
    add("mnuChart_copy", QStringLiteral("... to the Clipboard"), &frmStateChart::copy_picture);
    add("mnuChart_save", QStringLiteral("... Save as image file"), &frmStateChart::save_picture);
    add("mnuChart_print", QStringLiteral("... to the Printer"), &frmStateChart::print);
    mnuChart->addSeparator();
    add("mnuChart_copyData", QStringLiteral("Copy data"), &frmStateChart::copy_data);
    add("mnuChart_saveData", QStringLiteral("Save data"), &frmStateChart::save_data);
}

void frmStateChart::connect_controls() {
    for (QComboBox* box : {cboKind, cboT, cboP, cboBasis, cboReference})
        connect(box, &QComboBox::currentIndexChanged, this, &frmStateChart::choose);
    connect(chkBlack, &QCheckBox::toggled, this, &frmStateChart::choose);
    connect(cmdZoomIn, &QPushButton::clicked, this, [this] { zoom(0.5, 0.5, ButtonZoom); });
    connect(cmdZoomOut, &QPushButton::clicked, this, [this] { zoom(0.5, 0.5, 1 / ButtonZoom); });
    connect(cmdZoomReset, &QPushButton::clicked, this, [this] { set_window(std::nullopt); });
    connect(cmdChart, &QPushButton::clicked, this,
            [this] { mnuChart->popup(cmdChart->mapToGlobal(QPoint(0, cmdChart->height()))); });
    connect(cmdClose, &QPushButton::clicked, this, [this] { frame_.unload(Name); });
    connect(chart, &StateChartView::zoom_wanted, this, &frmStateChart::zoom);
    connect(chart, &StateChartView::whole_wanted, this, [this] { set_window(std::nullopt); });
    connect(chart, &StateChartView::band_drawn, this, [this](double X1, double Y1, double X2, double Y2) {
        if (const auto window = zoomed_window(chart->chart(), X1, Y1, X2, Y2)) set_window(window);
    });
    connect(chart, &StateChartView::move_wanted, this, [this](double dX, double dY) {
        set_window(form_.window ? moved_window(chart->chart(), whole_, dX, dY) : std::nullopt);
    });
    connect(chart, &StateChartView::menu_wanted, this, [this](const QPoint& at) { mnuChart->popup(at); });
    connect(chart, &StateChartView::pointed_at, this, &frmStateChart::tell_pointed);
    connect(chart, &StateChartView::picked, this, [this](const ChartState& state) {
        QGuiApplication::clipboard()->setText(
            QString::fromStdString(state_for_clipboard(chart->chart(), state)));
        say(QStringLiteral("copied to the clipboard: the state at the cross"));
    });
    connect(chart, &StateChartView::area_changed, resized_, qOverload<>(&QTimer::start));
    connect(resized_, &QTimer::timeout, this, &frmStateChart::show_chart);
    connect(&frame_.bench(), &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.substance) form_.window.reset();
        if (changes.fluid()) show_chart();
    });
    // What is calculated after a change, or after boxes were typed, is there when those are done.
    connect(&frame_.bench(), &Workbench::changed, this, &frmStateChart::show_calculated,
            Qt::QueuedConnection);
    connect(&frame_.bench(), &Workbench::typed, this, &frmStateChart::show_calculated, Qt::QueuedConnection);
}

// Another unit, reference state or kind is another chart: its zoom goes.
void frmStateChart::choose() {
    StateChartForm next = form_;
    next.kind = static_cast<ChartKind>(cboKind->currentIndex());
    next.T_unit = cboT->currentIndex();
    next.p_unit = cboP->currentIndex();
    next.basis = cboBasis->currentIndex();
    next.reference = cboReference->currentIndex();
    next.black = chkBlack->isChecked();
    if (next == form_) return;
    StateChartForm same_sheet = next;
    same_sheet.black = form_.black;
    if (same_sheet != form_) next.window.reset();
    form_ = next;
    UiMemory& memory = frame_.bench().memory;
    const int kept[] = {form_.T_unit, form_.p_unit, form_.basis, form_.reference};
    for (std::size_t i = 0; i < std::size(kept); ++i) memory.set(MemoryKeys[i], kept[i]);
    memory.set(MemoryKeys[4], form_.black);
    show_chart();
}

void frmStateChart::show_choices() {
    const std::pair<QComboBox*, int> shown_choices[] = {{cboKind, static_cast<int>(form_.kind)},
                                                        {cboT, form_.T_unit},
                                                        {cboP, form_.p_unit},
                                                        {cboBasis, form_.basis},
                                                        {cboReference, form_.reference}};
    for (const auto& [box, index] : shown_choices) {
        const QSignalBlocker quiet(box);
        box->setCurrentIndex(index);
    }
    const QSignalBlocker quiet(chkBlack);
    chkBlack->setChecked(form_.black);
}

void frmStateChart::show_chart() {
    resized_->stop();
    const Session& session = frame_.session();
    setWindowTitle(QString::fromStdString(chart_caption(session, form_.kind)));
    const QRectF area = chart->area();
    SessionChart made = area.width() > 100 && area.height() > 100
                            ? session_chart(session, form_, area.width(), area.height())
                            : session_chart(session, form_);
    whole_ = made.whole;
    const bool there = made.chart.exists();
    chart->setVisible(there);
    lblRefusal->setVisible(!there);
    lblRefusal->setText(there ? QString()
                              : QStringLiteral("No chart: ") + QString::fromStdString(made.chart.fault));
    for (QWidget* control : {cmdZoomIn, cmdZoomOut, cmdZoomReset, cmdChart}) control->setEnabled(there);
    say({});
    if (there) chart->show_chart(made.chart, form_.black, calculated_states(session, made.chart));
}

void frmStateChart::show_calculated() {
    if (chart->chart().exists() && chart->isVisibleTo(this))
        chart->mark(calculated_states(frame_.session(), chart->chart()));
}

void frmStateChart::set_window(const std::optional<ChartWindow>& window) {
    form_.window = window;
    show_chart();
}

void frmStateChart::zoom(double X, double Y, double factor) {
    if (chart->chart().exists()) set_window(zoomed_window(chart->chart(), whole_, X, Y, factor));
}

void frmStateChart::say(const QString& text) { lblHint->setText(text.isEmpty() ? Hint : text); }

// What the cross shows is also what a screen reader tells.
void frmStateChart::tell_pointed(const ChartState& state) {
    QStringList lines;
    for (const std::string& line : state_lines(chart->chart(), state)) lines << QString::fromStdString(line);
    chart->focusProxy()->setAccessibleDescription(lines.join(QStringLiteral(", ")));
}

}  // namespace quom

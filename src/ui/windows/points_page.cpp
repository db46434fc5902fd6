#include "ui/windows/points_page.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>
#include <utility>

#include "base/number_text.h"
#include "report/basis_line.h"
#include "report/point_comparison.h"
#include "ui/main/workbench.h"
#include "ui/widgets/background_run.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/point_table.h"
#include "ui/widgets/table_copy.h"
#include "ui/widgets/table_view.h"

namespace quom {

namespace {

constexpr int points_at_once = 500;  // are calculated before a hand is off the mouse

QString means_text(const DeviationMeans& means) {
    QStringList parts;
    for (std::size_t q = 0; q < compared_count; ++q) {
        const auto mean = means.mean(q);
        if (!mean || !(*mean > compared_least)) continue;
        const std::string text = std::string(compared_name(q)) + " " + formatMask(*mean, "0.00") + " % (" +
                                 std::to_string(means.count[q]) + ")";
        parts += QString::fromStdString(text);
    }
    return parts.isEmpty() ? QString()
                           : QStringLiteral("Mean |deviation|: ") + parts.join(QStringLiteral(", "));
}

}  // namespace

PointsPage::PointsPage(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      tblPoints(named(new TableView(this), "tblPoints", QStringLiteral("Data points"))),
      cmdCalculateAll(new QPushButton(QStringLiteral("Calc&ulate all"), this)),
      cmdCancel(new QPushButton(QStringLiteral("Canc&el"), this)),
      cmdCopy(new QPushButton(QStringLiteral("Copy"), this)),
      cmdSaveTable(new QPushButton(QStringLiteral("Save as..."), this)),
      progress(named(new QProgressBar(this), "progress", QStringLiteral("Progress"))),
      lblPoints(named(new QLabel(this), "lblPoints")),
      lblMeans(named(new QLabel(this), "lblMeans", QStringLiteral("Mean deviations"))),
      bench_(bench),
      model_(new PointTable(bench.session, this)),
      run_(new BackgroundRun(this)) {
    named(cmdCalculateAll, "cmdCalculateAll", cmdCalculateAll->text());
    named(cmdCancel, "cmdCancel", cmdCancel->text());
    named(cmdCopy, "cmdCopy", QStringLiteral("Copy the table of points"));
    named(cmdSaveTable, "cmdSaveTable", QStringLiteral("Save the table of points as..."));
    tblPoints->setModel(model_);
    tblPoints->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblPoints->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblPoints->setTabKeyNavigation(false);
    tblPoints->setWordWrap(false);
    build_layout();
    show_running(false);
    const auto choose = [this](const QModelIndex& index) {
        const auto point = static_cast<std::size_t>(index.row()) + 1;
        const auto& points = bench_.document().exp.points;
        if (point < points.size() && points[point].Aus == 0 && !is_running())
            emit point_chosen(static_cast<int>(point));
    };
    connect(tblPoints, &QTableView::clicked, this, choose);
    connect(tblPoints, &QTableView::activated, this, choose);
    connect(cmdCalculateAll, &QPushButton::clicked, this, [this] { calculate(false, nullptr); });
    connect(cmdCopy, &QPushButton::clicked, this, [this] { copy_table(table()); });
    connect(cmdSaveTable, &QPushButton::clicked, this,
            [this] { save_table(this, table(), QStringLiteral("points")); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { run_->cancel(); });
    connect(run_, &BackgroundRun::progressed, this, [this](double fraction, const QString& text) {
        progress->setValue(static_cast<int>(fraction * 1000));
        lblPoints->setText(text);
    });
}

void PointsPage::build_layout() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 8, 0, 0);
    layout->addWidget(tblPoints, 1);
    lblMeans->setWordWrap(true);
    lblMeans->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(lblMeans);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdCalculateAll);
    row->addWidget(cmdCancel);
    row->addWidget(progress, 1);
    row->addWidget(lblPoints);
    row->addStretch();
    row->addWidget(cmdCopy);
    row->addWidget(cmdSaveTable);
    layout->addLayout(row);
    progress->setRange(0, 1000);
    progress->setTextVisible(false);
}

// As it is seen, with what it was calculated from.
ExportTable PointsPage::table() const {
    ExportTable table = table_of(*model_);
    table.title = {basis_line(bench_.fluid())};
    if (!lblMeans->text().isEmpty()) table.title.push_back(lblMeans->text().toStdString());
    return table;
}

bool PointsPage::is_running() const { return run_->is_running(); }

void PointsPage::show_running(bool running) {
    cmdCalculateAll->setEnabled(!running);
    cmdCancel->setEnabled(running);
    progress->setVisible(running);
    progress->setValue(0);
}

void PointsPage::show_texts() {
    const SharedVector<TpRhoPoint>& list = bench_.document().exp.points;
    int active = 0;
    for (std::size_t i = 1; i < list.size(); ++i) active += list[i].Aus == 0 ? 1 : 0;
    lblPoints->setText(
        QStringLiteral("%1 of %2 points calculated").arg(active - open_points(bench_.session)).arg(active));
    const QString means = means_text(model_->means());
    lblMeans->setText(means);
    lblMeans->setVisible(!means.isEmpty());
}

void PointsPage::refresh() {
    model_->refresh();
    tblPoints->resizeColumnsToContents();
    if (!is_running()) show_texts();
}

void PointsPage::show_point(int point) {
    model_->refresh_point(point);
    tblPoints->selectRow(point - 1);
    if (!is_running()) show_texts();
}

void PointsPage::run(bool at_once, std::function<void(const Progress&)> work, std::function<void()> then) {
    if (is_running()) return;
    if (at_once) {
        work(nullptr);
        then();
        return;
    }
    show_running(true);
    emit running_changed(true);
    run_->start(std::move(work), [this, then = std::move(then)] {
        show_running(false);
        emit running_changed(false);
        then();
    });
}

void PointsPage::calculate(bool missing, std::function<void(bool)> then) {
    const auto job = std::make_shared<const BatchJob>(batch_job(bench_.session, missing));
    const auto found = std::make_shared<BatchRun>();
    const auto end = [this, job, found, then = std::move(then)] {
        const bool kept = keep_results(bench_.session, *job, *found);
        refresh();
        if (then) then(kept && !found->cancelled);
    };
    run(
        job->wanted_count() <= points_at_once,
        [job, found](const Progress& told) { *found = run_batch(*job, told); }, end);
}

}  // namespace quom

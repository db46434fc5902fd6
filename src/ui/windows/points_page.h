// The page of the result window for a batch: all points, "Calculate all", mean deviations.
#pragma once
#include <QWidget>
#include <functional>

#include "report/table_export.h"
#include "session/batch_run.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace quom {

class BackgroundRun;
class PointTable;
class TableView;
class Workbench;

class PointsPage : public QWidget {
    Q_OBJECT
 public:
    explicit PointsPage(Workbench& bench, QWidget* parent = nullptr);

    // Shows the point in force and what was calculated.
    void refresh();
    void show_point(int point);
    // Calculates the active points, or those of them that are not calculated; then calls `then` with whether
    // all are. A few points are calculated at once, many in the background.
    void calculate(bool missing, std::function<void(bool all)> then);
    // Work in the background for this page; `then` follows. While it runs there is no other.
    void run(bool at_once, std::function<void(const Progress&)> work, std::function<void()> then);
    bool is_running() const;

    TableView* tblPoints;
    QPushButton *cmdCalculateAll, *cmdCancel, *cmdCopy, *cmdSaveTable;
    QProgressBar* progress;
    QLabel *lblPoints, *lblMeans;

 signals:
    void point_chosen(int point);
    void running_changed(bool running);

 private:
    void build_layout();
    ExportTable table() const;
    void show_running(bool running);
    void show_texts();
    Workbench& bench_;
    PointTable* model_;
    BackgroundRun* run_;
};

}  // namespace quom

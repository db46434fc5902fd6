// The tab "Table" of a result: every quantity with its unit, L, V and mixture side by side, in sections that
// fold; digits, folding and copying in a widget for the corner of the tabs.
#pragma once
#include <QWidget>

#include "report/result_table.h"
#include "ui/widgets/result_table_model.h"

class QComboBox;
class QLabel;
class QPushButton;
class QStackedLayout;

namespace quom {

class ResultTableView;
class Workbench;

class ResultTable : public QWidget {
    Q_OBJECT
 public:
    explicit ResultTable(Workbench& bench, QWidget* parent = nullptr);

    // Shows the values of an outcome; without a result as show_refused.
    void show_outcome(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup);
    void show_refused();
    // The values shown are not up to date: grey, units and digits stay as they are.
    void set_stale(bool stale);
    // Digits, "Fold all", "Copy", "Save as...": for the corner of the tabs, which takes it over. Hidden until
    // it is shown.
    QWidget* corner() const { return corner_; }

    ResultTableView* view() const { return view_; }
    ResultTableModel* model() { return &model_; }

 private:
    void build_corner();
    void show_values();
    void show_controls();
    void remember_folding();
    void choose_unit(const QModelIndex& row, const QString& name, bool for_all);
    int digits() const;

    Workbench& bench_;
    ResultTableModel model_;
    ResultValues values_;
    ChosenUnits units_;
    bool shows_values_ = false, stale_ = false, folding_ = false;
    ResultTableView* view_;
    QLabel* refused_;
    QStackedLayout* pages_;
    QWidget* corner_;
    QComboBox* digits_;
    QPushButton *fold_, *copy_, *save_;
};

}  // namespace quom

// The grid of a data set: a line a point, numbers edited in place, a check box for lines that are off, cells
// and lines exchanged with spreadsheets. It keeps no data: what it shows and changes is asked of its
// GridLines.
#pragma once
#include <QAbstractTableModel>
#include <QTableView>
#include <optional>
#include <string>
#include <vector>

namespace quom {

struct GridNumber {
    int line, column;  // from 0
    double value;
};

// Lines from first to last, from 0.
struct GridRange {
    int first, last;
};

// What a grid shows and changes; lines and columns count from 0. A change is one step of the document, after
// which DataGrid::refresh is to be called.
class GridLines {
 public:
    virtual ~GridLines() = default;
    virtual QStringList heads() const = 0;  // of the columns of numbers
    virtual QString off_hint() const = 0;   // what it means that a line is off
    virtual int count() const = 0;
    virtual QString text(int line, int column) const = 0;
    virtual bool off(int line) const = 0;
    // The rule that a number breaks in a column; empty: it can be taken.
    virtual std::string broken_rule_of(int column, double value) const = 0;

    // Numbers of lines that are there, or that follow the last one.
    virtual void write(const std::vector<GridNumber>& numbers) = 0;
    virtual void toggle(GridRange lines) = 0;
    // The clipboard as lines of their own before the marked line, at the end without one.
    virtual void insert_clipboard() = 0;
    // Removes the marked lines after a question.
    virtual void remove_marked() = 0;
};

class DataGridModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    DataGridModel(GridLines& lines, QObject* parent);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& at, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& at) const override;
    bool setData(const QModelIndex& at, const QVariant& value, int role) override;
    // Shows what the lines are now; places and marks stay.
    void refresh();

 signals:
    void refused(const QString& why);

 private:
    GridLines& lines_;
    QStringList heads_;
    int shown_;
};

class DataGrid : public QTableView {
    Q_OBJECT
 public:
    explicit DataGrid(GridLines& lines, QWidget* parent = nullptr);

    void refresh();
    // The marked lines, in one piece; none when no cell is marked.
    std::optional<GridRange> marked() const;
    void mark(GridRange lines);
    void copy() const;  // marked cells, columns parted by a tab, rows by a line end
    // The clipboard over the cells from the first marked one on; at the end lines are added.
    void paste();
    void clear_marked();  // 0 in the marked cells
    QSize sizeHint() const override;

 signals:
    void marked_changed();
    void refused(const QString& why);  // what was typed or pasted cannot be taken; empty: it was taken

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
    void set_sizes();
    int least_width(int column) const;
    GridLines& lines_;
    DataGridModel* rows_;
};

}  // namespace quom

#include "ui/widgets/data_grid.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <variant>

#include "forms/refusal.h"
#include "ui/look/look.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"

namespace quom {

namespace {

constexpr int NumberDigits = 9;  // width of a column of numbers

// The number of a cell, or why it has none.
std::variant<double, QString> number_of(const GridLines& lines, int column, const QString& text) {
    const auto number = box_number(text.toStdString());
    if (!number) return text.simplified() + QStringLiteral(" is no number.");
    const std::string rule = lines.broken_rule_of(column, *number);
    if (rule.empty()) return *number;
    return QString::fromStdString(rule);
}

// The lines of a clipboard text; an end of the last one begins no line.
QStringList clipboard_lines() {
    QString text = QApplication::clipboard()->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

// Edits in the cell by the box for numbers; what cannot be taken keeps the box open.
class NumberDelegate : public QStyledItemDelegate {
 public:
    NumberDelegate(const GridLines& lines, QObject* parent) : QStyledItemDelegate(parent), lines_(lines) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& at) const override {
        auto* box = named(new NumberBox(NumberDigits, parent), "cell",
                          at.model()->headerData(at.column(), Qt::Horizontal).toString());
        box->on_enter([] {});  // the grid goes on
        box->setProperty("column", at.column());
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& at) const override {
        static_cast<NumberBox*>(editor)->setText(at.data(Qt::EditRole).toString());
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& at) const override {
        model->setData(at, static_cast<NumberBox*>(editor)->text(), Qt::EditRole);
    }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* box = qobject_cast<NumberBox*>(watched);
        if (box && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab)
                if (const auto number = number_of(lines_, box->property("column").toInt(), box->text());
                    const QString* why = std::get_if<QString>(&number)) {
                    box->refuse(why->toStdString());
                    emit static_cast<DataGrid*>(parent())->refused(*why);
                    return true;
                }
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }

 private:
    const GridLines& lines_;
};

}  // namespace

DataGridModel::DataGridModel(GridLines& lines, QObject* parent)
    : QAbstractTableModel(parent), lines_(lines), heads_(lines.heads()), shown_(lines.count()) {}

int DataGridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shown_; }

int DataGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(heads_.size()) + 1;
}

QVariant DataGridModel::data(const QModelIndex& at, int role) const {
    if (!at.isValid() || at.row() >= std::min(shown_, lines_.count())) return {};
    const bool number = at.column() < heads_.size();
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return number ? QVariant(lines_.text(at.row(), at.column())) : QVariant();
        case Qt::TextAlignmentRole:
            return int(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::CheckStateRole:
            if (number) return {};
            return lines_.off(at.row()) ? Qt::Checked : Qt::Unchecked;
        case Qt::ForegroundRole:
            if (!lines_.off(at.row())) return {};
            return QApplication::palette().brush(QPalette::PlaceholderText);
        case Qt::ToolTipRole:
            return number ? QVariant() : QVariant(lines_.off_hint());
        case Qt::AccessibleDescriptionRole:
            return lines_.off(at.row()) ? QVariant(QStringLiteral("inactive")) : QVariant();
        default:
            return {};
    }
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole && orientation == Qt::Vertical)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    return section < heads_.size() ? heads_[section] : QStringLiteral("off");
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& at) const {
    const Qt::ItemFlags common = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return common | (at.column() < heads_.size() ? Qt::ItemIsEditable : Qt::ItemIsUserCheckable);
}

bool DataGridModel::setData(const QModelIndex& at, const QVariant& value, int role) {
    if (!at.isValid() || at.row() >= lines_.count()) return false;
    if (at.column() >= heads_.size()) {
        if (role == Qt::CheckStateRole) lines_.toggle({at.row(), at.row()});
        return role == Qt::CheckStateRole;
    }
    if (role != Qt::EditRole) return false;
    const QString text = value.toString();
    if (text == data(at, Qt::EditRole).toString()) return true;  // as it is shown: the digits behind stay
    const auto number = number_of(lines_, at.column(), text);
    if (const QString* why = std::get_if<QString>(&number)) {
        emit refused(*why);
        return false;
    }
    emit refused({});
    lines_.write({{at.row(), at.column(), std::get<double>(number)}});
    return true;
}

void DataGridModel::refresh() {
    const int count = lines_.count();
    if (count > shown_) {
        beginInsertRows({}, shown_, count - 1);
        shown_ = count;
        endInsertRows();
    } else if (count < shown_) {
        beginRemoveRows({}, count, shown_ - 1);
        shown_ = count;
        endRemoveRows();
    }
    if (shown_ > 0) emit dataChanged(index(0, 0), index(shown_ - 1, columnCount() - 1));
}

DataGrid::DataGrid(GridLines& lines, QWidget* parent)
    : QTableView(parent), lines_(lines), rows_(new DataGridModel(lines, this)) {
    setModel(rows_);
    setItemDelegate(new NumberDelegate(lines, this));
    setAlternatingRowColors(true);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(24);
    named(horizontalHeader(), "heads", QStringLiteral("Columns"));
    named(verticalHeader(), "lines", QStringLiteral("Lines"));
    connect(rows_, &DataGridModel::refused, this, &DataGrid::refused);
    set_sizes();
    refresh();
}

// One height for all lines, one width for all numbers: nothing is measured line by line. The numbers share
// what the view is wider than it needs to be.
void DataGrid::set_sizes() {
    const int height = fontMetrics().height() + 4;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    const int last = rows_->columnCount() - 1;
    const int off = std::max(36, horizontalHeader()->sectionSizeHint(last) + 4);
    for (int column = 0; column < last; ++column)
        setColumnWidth(column, std::max(least_width(column), (viewport()->width() - off) / last));
    setColumnWidth(last, off);
}

int DataGrid::least_width(int column) const {
    return std::max(text_width(*this, NumberDigits) + 16, horizontalHeader()->sectionSizeHint(column) + 4);
}

void DataGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    set_sizes();
}

QSize DataGrid::sizeHint() const {
    const int lines = text_width(*this, 6) + 12;  // 100,000 of them
    int columns = columnWidth(rows_->columnCount() - 1);
    for (int column = 0; column + 1 < rows_->columnCount(); ++column) columns += least_width(column);
    const int width =
        columns + lines + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth() + 4;
    return {width, QTableView::sizeHint().height()};
}

void DataGrid::refresh() {
    rows_->refresh();
    setAccessibleDescription(lines_.count() == 0 ? QStringLiteral("empty list") : QString());
    viewport()->update();
    emit marked_changed();
}

std::optional<GridRange> DataGrid::marked() const {
    std::optional<GridRange> lines;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (!lines) lines = GridRange{range.top(), range.bottom()};
        lines->first = std::min(lines->first, range.top());
        lines->last = std::max(lines->last, range.bottom());
    }
    return lines;
}

void DataGrid::mark(GridRange lines) {
    const int last = std::min(lines.last, rows_->rowCount() - 1);
    if (lines.first < 0 || lines.first > last) return clearSelection();
    const int column = std::max(0, currentIndex().column());
    selectionModel()->setCurrentIndex(rows_->index(lines.first, column), QItemSelectionModel::NoUpdate);
    selectionModel()->select(
        QItemSelection(rows_->index(lines.first, 0), rows_->index(last, rows_->columnCount() - 1)),
        QItemSelectionModel::ClearAndSelect);
    scrollTo(rows_->index(lines.first, column));
}

void DataGrid::copy() const {
    const auto lines = marked();
    if (!lines) return;
    const QItemSelectionRange range = selectionModel()->selection().first();
    const int right = std::min(range.right(), rows_->columnCount() - 2);
    QString text;
    for (int line = lines->first; line <= lines->last; ++line) {
        for (int column = range.left(); column <= right; ++column) {
            if (column > range.left()) text += QLatin1Char('\t');
            text += lines_.text(line, column);
        }
        text += QLatin1Char('\n');
    }
    QApplication::clipboard()->setText(text);
}

void DataGrid::paste() {
    const auto lines = marked();
    const int top = lines ? lines->first : rows_->rowCount();
    const int left = lines ? selectionModel()->selection().first().left() : 0;
    std::vector<GridNumber> numbers;
    int line = top;
    for (const QString& row : clipboard_lines()) {
        int column = left;
        for (const QString& cell : row.split(QLatin1Char('\t'))) {
            if (column >= rows_->columnCount() - 1) break;
            const auto number = number_of(lines_, column, cell);
            if (const QString* why = std::get_if<QString>(&number)) {
                emit refused(QStringLiteral("Nothing was pasted. Line %1 of the clipboard: %2")
                                 .arg(line - top + 1)
                                 .arg(*why));
                return;
            }
            numbers.push_back({line, column++, std::get<double>(number)});
        }
        ++line;
    }
    if (numbers.empty()) return;
    emit refused({});
    lines_.write(numbers);
    mark({top, line - 1});
}

void DataGrid::clear_marked() {
    const auto lines = marked();
    if (!lines) return;
    std::vector<GridNumber> numbers;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int line = range.top(); line <= range.bottom(); ++line)
            for (int column = range.left(); column <= std::min(range.right(), rows_->columnCount() - 2);
                 ++column)
                numbers.push_back({line, column, 0});
    if (!numbers.empty()) lines_.write(numbers);
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copy();
    if (event->matches(QKeySequence::Paste)) return lines_.insert_clipboard();
    if (event->key() == Qt::Key_V && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        return paste();
    if (event->key() == Qt::Key_Delete)
        return event->modifiers() & Qt::ControlModifier ? lines_.remove_marked() : clear_marked();
    if (event->key() == Qt::Key_Plus) return event->ignore();  // the window's
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        edit(currentIndex());
        return event->accept();
    }
    QTableView::keyPressEvent(event);
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuEdit1"));
    const bool any = marked().has_value();
    const auto add = [&menu](const char* caption, const char* keys, bool possible, auto run) {
        QAction* action = menu.addAction(QLatin1String(caption), std::move(run));
        action->setShortcut(QKeySequence(QLatin1String(keys)));
        action->setEnabled(possible);
    };
    add("copy", "Ctrl+C", any, [this] { copy(); });
    add("paste", "Ctrl+Shift+V", true, [this] { paste(); });
    add("delete", "Del", any, [this] { clear_marked(); });
    add("marked cell(s) => 0", "", any, [this] { clear_marked(); });
    add("remove marked line(s)", "Ctrl+Del", any, [this] { lines_.remove_marked(); });
    menu.exec(event->globalPos());
}

void DataGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (lines_.count() > 0) return;
    QPainter painter(viewport());
    painter.setPen(look_colour(LookColour::Hint));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, QStringLiteral("empty list"));
}

void DataGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && rows_) set_sizes();
}

void DataGrid::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
    QTableView::selectionChanged(now, before);
    emit marked_changed();
}

// Enter takes the number and goes one line down, as in a spreadsheet.
void DataGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, hint);
    if (hint == QAbstractItemDelegate::SubmitModelCache && currentIndex().row() + 1 < rows_->rowCount())
        setCurrentIndex(currentIndex().siblingAtRow(currentIndex().row() + 1));
}

}  // namespace quom

#include "ui/widgets/result_table_view.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QtMath>
#include <numeric>

#include "ui/look/look.h"
#include "ui/widgets/table_copy.h"

namespace quom {

namespace {

using Model = ResultTableModel;
constexpr int Inset = ResultTableDelegate::Inset;
constexpr int NumberMargin = 16;   // of a column of numbers, both sides together
constexpr int LeastMargin = 6;     // where room is missing
constexpr int QuantityDigits = 9;  // of a quantity that has given way

// Heads that stand over their texts: the base class knows one margin for all.
class Heads : public QHeaderView {
 public:
    explicit Heads(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
        setSectionsMovable(false);
        setSectionsClickable(false);
        setHighlightSections(false);
        setStretchLastSection(false);
        setMinimumSectionSize(1);
    }

 protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override {
        QHeaderView::initStyleOptionForIndex(option, column);
        option->text.clear();
    }
    void paintSection(QPainter* painter, const QRect& rect, int column) const override {
        painter->save();
        QHeaderView::paintSection(painter, rect, column);
        painter->restore();
        const int left = column == Model::Quantity    ? ResultTableDelegate::Indent
                         : column < Model::FirstValue ? Inset
                                                      : 0;
        const auto alignment =
            model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
        painter->setPen(palette().color(QPalette::ButtonText));
        painter->drawText(rect.adjusted(left, 0, 0, 0), static_cast<int>(alignment) | Qt::TextSingleLine,
                          model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    }
};

}  // namespace

ResultTableView::ResultTableView(ResultTableModel& model, QWidget* parent)
    : QTreeView(parent), model_(model), delegate_(new ResultTableDelegate(model, this)) {
    setHeader(new Heads(this));
    setModel(&model);
    setItemDelegate(delegate_);
    setIndentation(0);
    setRootIsDecorated(false);
    setExpandsOnDoubleClick(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectItems);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setAutoScroll(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    measure_rows();
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (!(QApplication::keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier))) use_cell(index);
    });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const bool many = selectionModel()->selectedIndexes().size() > 1;
        if (many != delegate_->many_marked) viewport()->update();
        delegate_->many_marked = many;
    });
    for (const auto signal : {&QTreeView::expanded, &QTreeView::collapsed})
        connect(this, signal, this, [this] {
            lay_out_columns();
            emit folding_changed();
        });
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        for (int s = 0; s < model_.rowCount(); ++s) setFirstColumnSpanned(s, {}, true);
        lay_out_columns();
    });
    connect(&model, &QAbstractItemModel::headerDataChanged, this, [this] { lay_out_columns(); });
}

void ResultTableView::measure_rows() {
    header()->setFixedHeight(std::max(24, fontMetrics().height() + 8));
    setMinimumWidth(text_width(*this, 44));
    setMinimumHeight(6 * (fontMetrics().height() + 6));
}

void ResultTableView::set_stale(bool stale) {
    delegate_->stale = stale;
    setAccessibleDescription(stale ? QStringLiteral("not up to date") : QString());
    viewport()->update();
}

bool ResultTableView::any_unfolded() const {
    for (int s = 0; s < model_.rowCount(); ++s)
        if (isExpanded(model_.index(s, 0))) return true;
    return false;
}

QStringList ResultTableView::folded() const {
    QStringList keys;
    for (int s = 0; s < model_.rowCount(); ++s)
        if (!isExpanded(model_.index(s, 0)))
            keys.push_back(QString::fromStdString(model_.values().sections[static_cast<std::size_t>(s)].key));
    return keys;
}

void ResultTableView::fold(const QStringList& keys) {
    for (int s = 0; s < model_.rowCount(); ++s) {
        const std::string& key = model_.values().sections[static_cast<std::size_t>(s)].key;
        setExpanded(model_.index(s, 0), !keys.contains(QString::fromStdString(key)));
    }
}

QString ResultTableView::marked_text() const {
    QModelIndexList marked = selectionModel()->selectedIndexes();
    marked.removeIf([this](const QModelIndex& cell) { return isColumnHidden(cell.column()); });
    return marked.isEmpty() ? model_.text() : model_.text_of(marked);
}

void ResultTableView::copy() const { QApplication::clipboard()->setText(marked_text()); }
void ResultTableView::copy_all() const { copy_table(model_.table()); }
void ResultTableView::save_all() { save_table(this, model_.table(), QStringLiteral("result")); }

double ResultTableView::point_of(const QModelIndex& index) const {
    const std::size_t section = model_.section_of(index);
    if (index.column() < Model::FirstValue || section >= delegate_->blocks.size()) return 0;
    const auto column = static_cast<std::size_t>(index.column() - Model::FirstValue);
    return delegate_->blocks[section][column].point_in(QRectF(visualRect(index)));
}

void ResultTableView::measure_points() {
    const QFontMetricsF metrics(font());
    delegate_->blocks.assign(static_cast<std::size_t>(model_.rowCount()), {});
    for (int s = 0; s < model_.rowCount(); ++s) {
        const QModelIndex section = model_.index(s, 0);
        for (int row = 0; row < model_.rowCount(section); ++row)
            for (std::size_t k = 0; k < result_columns; ++k) {
                const QModelIndex cell = model_.index(row, Model::FirstValue + static_cast<int>(k), section);
                delegate_->blocks[static_cast<std::size_t>(s)][k].take(cut_at_point(cell.data().toString()),
                                                                       metrics);
            }
    }
}

int ResultTableView::Wanted::sum() const { return std::accumulate(widths.begin(), widths.end(), 0); }

void ResultTableView::Wanted::give_way(int column, int least_width, int& missing) {
    int& width = widths[static_cast<std::size_t>(column)];
    const int given = std::clamp(width - least_width, 0, std::max(0, missing));
    width -= given;
    missing -= given;
}

// What the columns want over all sections, or over those that are unfolded.
ResultTableView::Wanted ResultTableView::wanted_widths(bool all_sections) const {
    const QFontMetricsF metrics(font());
    const auto wide = [&metrics](const QString& text) { return qCeil(metrics.horizontalAdvance(text)); };
    Wanted wanted;
    const auto want = [](Widths& widths, int column, int width) {
        int& widest = widths[static_cast<std::size_t>(column)];
        widest = std::max(widest, width);
    };
    for (int c = 0; c < Model::ColumnCount; ++c) {
        if (!model_.has_column(c)) continue;
        const int head = wide(model_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
        want(wanted.widths, c, head + (c < Model::FirstValue ? 2 * Inset : NumberMargin));
        want(wanted.least, c, head + LeastMargin);
    }
    for (int s = 0; s < model_.rowCount(); ++s) {
        const QModelIndex section = model_.index(s, 0);
        if (!all_sections && !isExpanded(section)) continue;
        for (int row = 0; row < model_.rowCount(section); ++row) {
            const auto width_of = [&](int column) {
                return wide(model_.index(row, column, section).data().toString());
            };
            const bool choice = model_.has_choice(model_.index(row, Model::Unit, section));
            want(wanted.widths, Model::Quantity,
                 ResultTableDelegate::Indent + width_of(Model::Quantity) + Inset);
            want(wanted.widths, Model::Symbol, Inset + width_of(Model::Symbol) + Inset);
            want(wanted.widths, Model::Unit,
                 2 * Inset + width_of(Model::Unit) + (choice ? 2 * Inset + ResultTableDelegate::Chevron : 0));
            for (int c = Model::FirstValue; c < Model::ColumnCount; ++c)
                if (model_.has_column(c)) want(wanted.least, c, width_of(c) + LeastMargin);
        }
        for (std::size_t k = 0; k < result_columns; ++k) {
            const int column = Model::FirstValue + static_cast<int>(k);
            const double block = delegate_->blocks[static_cast<std::size_t>(s)][k].width();
            if (model_.has_column(column)) want(wanted.widths, column, qCeil(block) + NumberMargin);
        }
    }
    return wanted;
}

// The first step that fits: all sections, the unfolded ones, the same without symbols. Then the quantity
// gives way, then the points, in the end numbers are elided. What is left goes to the columns of numbers.
void ResultTableView::lay_out_columns() {
    measure_points();
    const int room = viewport()->width();
    Wanted wanted;
    bool symbol = true;
    for (const auto& [with_symbol, all] :
         {std::pair(true, true), {true, false}, {false, true}, {false, false}}) {
        wanted = wanted_widths(all);
        symbol = with_symbol;
        if (!symbol) wanted.widths[Model::Symbol] = 0;
        if (wanted.sum() <= room) break;
    }
    int missing = wanted.sum() - room;
    wanted.give_way(Model::Quantity, ResultTableDelegate::Indent + text_width(*this, QuantityDigits),
                    missing);
    for (int c = Model::FirstValue; c < Model::ColumnCount; ++c)
        wanted.give_way(c, wanted.least[static_cast<std::size_t>(c)], missing);
    int left = room - wanted.sum();
    int numbers = std::accumulate(wanted.widths.begin() + Model::FirstValue, wanted.widths.end(), 0);
    for (int c = Model::FirstValue; c < Model::ColumnCount && numbers > 0; ++c) {
        int& width = wanted.widths[static_cast<std::size_t>(c)];
        const int share = left * width / numbers;
        numbers -= width;
        left -= share;
        width = std::max(0, width + share);
    }
    delegate_->symbol_shown = symbol;
    for (int c = 0; c < Model::ColumnCount; ++c) {
        setColumnHidden(c, !model_.has_column(c) || (c == Model::Symbol && !symbol));
        header()->resizeSection(c, wanted.widths[static_cast<std::size_t>(c)]);
    }
    viewport()->update();
}

QModelIndex ResultTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex from = currentIndex();
    if (!from.isValid() || (action != MoveLeft && action != MoveRight))
        return QTreeView::moveCursor(action, modifiers);
    const int step = action == MoveLeft ? -1 : 1;
    if (model_.is_section(from)) {
        setExpanded(from.siblingAtColumn(0), step > 0);
        return from;
    }
    int column = from.column() + step;
    while (column >= 0 && column < Model::ColumnCount && isColumnHidden(column)) column += step;
    return column >= 0 && column < Model::ColumnCount ? from.siblingAtColumn(column) : from;
}

void ResultTableView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex at = currentIndex();
    const bool opens = event->key() == Qt::Key_F4 || event->key() == Qt::Key_Space ||
                       (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
    if (event->matches(QKeySequence::Copy)) return copy();
    if (event->key() == Qt::Key_Asterisk) return fold({});
    if (opens && at.isValid() && (model_.is_section(at) ? event->key() == Qt::Key_Space : true))
        return use_cell(at);
    QTreeView::keyPressEvent(event);
}

// The second click of two is a click.
void ResultTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && model_.is_section(index)) return use_cell(index);
    QTreeView::mouseDoubleClickEvent(event);
}

void ResultTableView::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* marked = menu->addAction(QStringLiteral("copy"), this, &ResultTableView::copy);
    marked->setEnabled(selectionModel()->hasSelection());
    menu->addAction(QStringLiteral("copy all"), this, &ResultTableView::copy_all);
    menu->addAction(QStringLiteral("save as..."), this, &ResultTableView::save_all);
    menu->popup(event->globalPos());
}

void ResultTableView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    row.font = font();
    if (!model_.is_section(index)) {
        painter->fillRect(option.rect,
                          palette().color(index.row() % 2 == 0 ? QPalette::Base : QPalette::AlternateBase));
        return QTreeView::drawRow(painter, row, index);
    }
    row.state.setFlag(QStyle::State_HasFocus,
                      hasFocus() && currentIndex().siblingAtColumn(0) == index.siblingAtColumn(0));
    delegate_->paint_section(painter, row, index.siblingAtColumn(0), isExpanded(index.siblingAtColumn(0)));
}

void ResultTableView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    lay_out_columns();
}

void ResultTableView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    measure_rows();
    doItemsLayout();
    lay_out_columns();
}

// A section folds and unfolds, a unit opens its menu.
void ResultTableView::use_cell(const QModelIndex& index) {
    if (model_.is_section(index)) {
        const QModelIndex section = index.siblingAtColumn(0);
        setExpanded(section, !isExpanded(section));
    } else if (model_.has_choice(index) && !delegate_->stale) {
        open_units(index);
    }
}

void ResultTableView::open_units(const QModelIndex& index) {
    const ResultRow& row = *model_.row_of(index);
    const std::string now = model_.unit(index).name;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(QStringLiteral("unit_menu"));
    menu->setAccessibleName(QStringLiteral("Unit of ") + QString::fromStdString(row.quantity));
    auto* units = new QActionGroup(menu);
    const QPersistentModelIndex at(index);
    QAction* in_force = nullptr;
    for (const UnitChoice& choice : unit_choices(model_.values(), row)) {
        QAction* action = menu->addAction(QString::fromStdString(choice.text), this,
                                          [this, at, name = QString::fromStdString(choice.name)] {
                                              if (at.isValid()) emit unit_chosen(at, name);
                                          });
        action->setCheckable(true);
        units->addAction(action);
        if (choice.name != now) continue;
        action->setChecked(true);
        in_force = action;
    }
    if (rows_alike(model_.values(), row).size() > 1) {
        menu->addSeparator();
        menu->addAction(
            QStringLiteral("this unit for ") + QString::fromStdString(symbols_alike(model_.values(), row)),
            this, [this, at] {
                if (at.isValid()) emit unit_for_all(at);
            });
    }
    const QRect cell = visualRect(index);
    menu->setMinimumWidth(cell.width());
    menu->popup(viewport()->mapToGlobal(cell.bottomLeft() + QPoint(0, 1)));
    menu->setActiveAction(in_force);
}

}  // namespace quom

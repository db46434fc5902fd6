#include "ui/widgets/result_table_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/look/look.h"
#include "ui/widgets/result_table_model.h"

namespace quom {

namespace {

constexpr double ChevronPen = 1.5, RingPen = 2.0;

// Two strokes in a square of this size: down, or to the right.
void draw_chevron(QPainter* painter, const QPointF& centre, double size, bool down, const QColor& colour) {
    const double a = size / 2, b = size / 4;
    const QPolygonF strokes =
        down ? QPolygonF({centre + QPointF(-a, -b), centre + QPointF(0, b), centre + QPointF(a, -b)})
             : QPolygonF({centre + QPointF(-b, -a), centre + QPointF(b, 0), centre + QPointF(-b, a)});
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, ChevronPen, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(strokes);
    painter->setRenderHint(QPainter::Antialiasing, false);
}

void draw_ring(QPainter* painter, const QRect& rect) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(look_colour(LookColour::Accent), RingPen));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), 2.5, 2.5);
    painter->setRenderHint(QPainter::Antialiasing, false);
}

QColor hint_colour() { return look_colour(LookColour::Hint); }

double baseline(const QRect& rect, const QFontMetricsF& metrics) {
    return rect.top() + (rect.height() - metrics.height()) / 2 + metrics.ascent();
}

}  // namespace

NumberParts cut_at_point(const QString& number) {
    qsizetype at = number.indexOf(QLatin1Char('.'));
    if (at < 0) at = number.indexOf(QLatin1Char('E'));
    if (at < 0) at = number.size();
    return {number.left(at), number.mid(at)};
}

void PointBlock::take(const NumberParts& parts, const QFontMetricsF& metrics) {
    left = std::max(left, metrics.horizontalAdvance(parts.left));
    right = std::max(right, metrics.horizontalAdvance(parts.right));
}

QSize ResultTableDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return {0, option.fontMetrics.height() + (model_.is_section(index) ? 9 : 6)};
}

QColor ResultTableDelegate::text_colour(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    if (many_marked && (option.state & QStyle::State_Selected))
        return option.palette.color(group, QPalette::HighlightedText);
    if (stale) return option.palette.color(QPalette::PlaceholderText);
    return index.column() == ResultTableModel::Symbol ? hint_colour()
                                                      : option.palette.color(group, QPalette::Text);
}

void ResultTableDelegate::paint_number(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const std::size_t section = model_.section_of(index);
    if (section >= blocks.size()) return;
    const auto column = static_cast<std::size_t>(index.column() - ResultTableModel::FirstValue);
    const QFontMetricsF metrics(option.font);
    const QString number = index.data().toString();
    const PointBlock& block = blocks[section][column];
    if (block.width() > option.rect.width()) {  // whole numbers before points, and never half of one
        painter->drawText(option.rect.adjusted(0, 0, -3, 0),
                          Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(number, Qt::ElideRight, option.rect.width() - 3));
        return;
    }
    const NumberParts parts = cut_at_point(number);
    const double point = block.point_in(QRectF(option.rect));
    const double y = baseline(option.rect, metrics);
    painter->drawText(QPointF(point - metrics.horizontalAdvance(parts.left), y), parts.left);
    painter->drawText(QPointF(point, y), parts.right);
}

void ResultTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    if (model_.is_section(index)) return;  // paint_section
    painter->save();
    painter->setClipRect(option.rect);
    painter->setFont(option.font);
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    if (many_marked && (option.state & QStyle::State_Selected))
        painter->fillRect(option.rect, option.palette.color(group, QPalette::Highlight));
    const QColor colour = text_colour(option, index);
    painter->setPen(colour);
    const int column = index.column();
    if (column >= ResultTableModel::FirstValue) {
        paint_number(painter, option, index);
    } else {
        const bool choice = model_.has_choice(index) && !stale;
        const int left = column == ResultTableModel::Quantity ? Indent : Inset;
        const QRect text = option.rect.adjusted(left, 0, choice ? -(Chevron + 2 * Inset) : -2, 0);
        painter->drawText(
            text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, text.width()));
        if (choice) {
            const double x = option.rect.right() + 1 - Inset - Chevron / 2.0;
            const bool marked = many_marked && (option.state & QStyle::State_Selected);
            draw_chevron(painter, QPointF(x, option.rect.center().y() + 0.5), Chevron, true,
                         marked ? colour : hint_colour());
        }
    }
    if (option.state & QStyle::State_HasFocus) draw_ring(painter, option.rect);
    painter->restore();
}

void ResultTableDelegate::paint_section(QPainter* painter, const QStyleOptionViewItem& option,
                                        const QModelIndex& index, bool unfolded) const {
    painter->save();
    const QRect& rect = option.rect;
    painter->fillRect(rect, option.palette.color(QPalette::Window));
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1),
                      look_colour(LookColour::GroupFrame));
    const QColor colour =
        stale ? option.palette.color(QPalette::PlaceholderText) : look_colour(LookColour::SectionHead);
    draw_chevron(painter, QPointF(rect.left() + Indent / 2.0 + 1, rect.center().y() + 0.5), 9, unfolded,
                 option.palette.color(QPalette::Text));
    const QFont head = head_font();
    const QFontMetricsF metrics(head);
    painter->setFont(head);
    painter->setPen(colour);
    const QString title = index.data().toString();
    const double y = baseline(rect, metrics);
    painter->drawText(QPointF(rect.left() + Indent, y), title);
    if (!unfolded) {
        painter->setFont(option.font);
        painter->setPen(hint_colour());
        painter->drawText(QPointF(rect.left() + Indent + metrics.horizontalAdvance(title) + 12, y),
                          QStringLiteral("%1 rows").arg(model_.rowCount(index)));
    }
    if (option.state & QStyle::State_HasFocus) draw_ring(painter, rect);
    painter->restore();
}

// What the table cannot show whole is told.
bool ResultTableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    const ResultRow* const row = model_.row_of(index);
    if (event->type() != QEvent::ToolTip || !row)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data().toString();
    const bool quantity = index.column() == ResultTableModel::Quantity;
    const int room = view->visualRect(index).width() - (quantity ? Indent + 2 : 0);
    const bool whole = option.fontMetrics.horizontalAdvance(text) <= room && (symbol_shown || !quantity);
    const QString symbol = QString::fromStdString(row->symbol);
    if (whole)
        QToolTip::hideText();
    else
        QToolTip::showText(event->globalPos(), quantity ? text + QStringLiteral(", ") + symbol : text, view);
    return true;
}

}  // namespace quom

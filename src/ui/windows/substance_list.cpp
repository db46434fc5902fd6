#include "ui/windows/substance_list.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <utility>

#include "base/code_page.h"
#include "substance/search.h"
#include "ui/look/look.h"

namespace quom {

namespace {

constexpr int Inset = 5;       // of both ends of a row
constexpr int Bar = 3;         // at the left edge of the marked row
constexpr int Apart = 12;      // line and found text
constexpr double Most = 0.42;  // of the width, for the found text

using Range = QTextLayout::FormatRange;

// One line of text with its ranges, laid out in the font.
class StyledLine {
 public:
    StyledLine(const QString& text, const QFont& font, const QList<Range>& ranges) : layout_(text, font) {
        layout_.setFormats(ranges);
        layout_.beginLayout();
        QTextLine line = layout_.createLine();
        if (line.isValid()) line.setLineWidth(1e6);
        layout_.endLayout();
    }
    double width() const { return layout_.lineCount() > 0 ? layout_.lineAt(0).naturalTextWidth() : 0; }
    void draw(QPainter* painter, double left, const QRect& row) const {
        const double height = layout_.lineCount() > 0 ? layout_.lineAt(0).height() : 0;
        layout_.draw(painter, QPointF(left, row.top() + (row.height() - height) / 2));
    }

 private:
    QTextLayout layout_;
};

Range coloured(int start, int length, const QColor& colour) {
    Range range{start, length, {}};
    range.format.setForeground(colour);
    return range;
}

Range bold(int start, int length, const QColor& colour) {
    Range range = coloured(start, length, colour);
    range.format.setFontWeight(QFont::Bold);
    return range;
}

// Characters of the bytes before a place.
int characters(const std::string& text, std::size_t bytes) {
    return static_cast<int>(
        QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min(bytes, text.size()))).size());
}

// The found text, cut at the end that has no match where it is wider than there is room.
struct Cut {
    QString text;
    int begin = 0, length = 0;  // of the match
};
Cut cut_found(const FoundSubstance& found, const QFont& font, int room) {
    Cut cut{QString::fromStdString(found.found), characters(found.found, found.found_part.begin), 0};
    cut.length = characters(found.found, found.found_part.begin + found.found_part.length) - cut.begin;
    QFont heavy = font;
    heavy.setBold(true);
    const QFontMetrics metrics(heavy);
    if (metrics.horizontalAdvance(cut.text) <= room) return cut;
    const bool at_the_end =
        metrics.horizontalAdvance(cut.text.left(cut.begin + cut.length) + QChar(0x2026)) > room;
    const QString shorter = metrics.elidedText(cut.text, at_the_end ? Qt::ElideLeft : Qt::ElideRight, room);
    if (at_the_end) cut.begin -= static_cast<int>(cut.text.size() - shorter.size());
    if (cut.begin < 0) cut.length = std::max(0, cut.length + cut.begin);
    cut.begin = std::max(0, cut.begin);
    cut.text = shorter;
    return cut;
}

struct RowColours {
    QColor ground, text, hint, match;
};

// A marked row has one ink for all its texts; a match is told by its weight alone.
RowColours row_colours(const QPalette& palette, bool marked, bool focus) {
    const QPalette::ColorGroup group = focus ? QPalette::Active : QPalette::Inactive;
    if (!marked)
        return {{},
                palette.color(QPalette::Text),
                look_colour(LookColour::Hint),
                look_colour(LookColour::SectionHead)};
    const QColor ink = palette.color(group, QPalette::HighlightedText);
    return {palette.color(group, QPalette::Highlight), ink, ink, ink};
}

}  // namespace

void SubstanceList::show(SubstanceSearch search) {
    beginResetModel();
    search_ = std::move(search);
    endResetModel();
}

int SubstanceList::index_of(const QModelIndex& at) const {
    return at.isValid() && at.row() < rowCount() ? found(at.row()).index : 0;
}

QModelIndex SubstanceList::at_index(int index) const {
    const auto at = std::ranges::find(search_.rows, index, &FoundSubstance::index);
    return at == search_.rows.end() ? QModelIndex()
                                    : this->index(static_cast<int>(at - search_.rows.begin()));
}

std::string SubstanceList::line(int row) const {
    const int index = found(row).index;
    const auto& rows = session_.database.rows;
    if (index < 1 || static_cast<std::size_t>(index) > rows.size()) return {};
    return std::string(trim_right(substance_list_line(index, rows[static_cast<std::size_t>(index) - 1])));
}

ExportTable SubstanceList::table() const {
    ExportTable table{.title = {}, .heads = {"ser. #", "Formula", "Name of substance"}};
    for (const FoundSubstance& found : search_.rows) {
        const SubstanceRow& row = session_.database.rows[static_cast<std::size_t>(found.index) - 1];
        table.rows.push_back({ExportCell(std::to_string(found.index), true),
                              std::string(trim_right(row.SubstanceFormula)),
                              std::string(trim_right(row.SubstanceName))});
    }
    return table;
}

int SubstanceList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(search_.rows.size());
}

QVariant SubstanceList::data(const QModelIndex& at, int role) const {
    if (!at.isValid() || at.row() >= rowCount()) return {};
    const FoundSubstance& row = found(at.row());
    const auto with_found = [&](const char* between) {
        QString text = QString::fromStdString(line(at.row()));
        if (!row.found.empty())
            text += QLatin1String(between) + QString::fromStdString(row.kind + "  " + row.found);
        return text;
    };
    switch (role) {
        case Qt::DisplayRole:
            return QString::fromStdString(line(at.row()));
        case Qt::ToolTipRole:
            return search_.filtered ? with_found("\n") : QVariant();
        case Qt::AccessibleTextRole:
            return with_found(", ").simplified();
        case Qt::SizeHintRole:
            return QSize(0, QFontMetrics(fixed_font()).height() + 4);
        default:
            return {};
    }
}

void SubstanceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& at) const {
    const FoundSubstance& found = list_.found(at.row());
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    const bool marked = option.state & QStyle::State_Selected;
    const RowColours colours = row_colours(option.palette, marked, view && view->hasFocus());
    painter->save();
    if (marked) {
        painter->fillRect(option.rect, colours.ground);
        const QRect& r = option.rect;
        painter->fillRect(QRect(r.left(), r.top(), Bar, r.height()), look_colour(LookColour::Accent));
    }
    const QRect inside = option.rect.adjusted(Inset, 0, -Inset, 0);
    int room = inside.width();
    if (!found.found.empty()) {
        const QFont font = QApplication::font(view);
        const QString kind = QString::fromStdString(found.kind) + QStringLiteral("  ");
        const int kind_width = QFontMetrics(font).horizontalAdvance(kind);
        const Cut cut = cut_found(found, font, static_cast<int>(Most * inside.width()) - kind_width);
        const int from = static_cast<int>(kind.size());
        const StyledLine right(
            kind + cut.text, font,
            {coloured(0, from, colours.hint), coloured(from, static_cast<int>(cut.text.size()), colours.text),
             bold(from + cut.begin, cut.length, colours.match)});
        const double left = inside.right() + 1 - right.width();
        right.draw(painter, left, option.rect);
        room = static_cast<int>(left) - Apart - inside.left();
    }
    const std::string line = list_.line(at.row());
    const int begin = characters(line, found.part.begin);
    const int length = characters(line, found.part.begin + found.part.length) - begin;
    const QString shown =
        QFontMetrics(option.font).elidedText(QString::fromStdString(line), Qt::ElideRight, room);
    const int number = static_cast<int>(line.find(' '));
    const int all = static_cast<int>(shown.size());
    QList<Range> ranges{coloured(0, std::min(number, all), colours.hint),
                        coloured(std::min(number, all), std::max(0, all - number), colours.text)};
    if (begin < all) ranges.append(bold(begin, std::min(length, all - begin), colours.match));
    StyledLine(shown, option.font, ranges).draw(painter, inside.left(), option.rect);
    painter->restore();
}

}  // namespace quom

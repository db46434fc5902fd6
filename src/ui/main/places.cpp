#include "ui/main/places.h"

#include <algorithm>
#include <cmath>

namespace quom {

namespace {

constexpr int g = place_gap;
constexpr int widest_result = 900;
constexpr int cascade_step = 26;
constexpr int rolled_width = 220;
// The input may cover so much of the bottom of the models.
constexpr int models_give_way = 40;

// Width of a column with the gap before it; nothing for a window that is not there.
int column(const QSize& size) { return size.isEmpty() ? 0 : size.width() + g; }
int row(const QSize& size) { return size.isEmpty() ? 0 : size.height() + g; }

QRect placed(int x, int y, const QSize& size) { return size.isEmpty() ? QRect() : QRect(QPoint(x, y), size); }

// The result right of x, over the whole height.
QRect result_from(const QSize& area, const QSize& least, int x) {
    const int widest = std::max(widest_result, least.width());
    return {x, g, std::min(widest, area.width() - g - x), area.height() - 2 * g};
}

bool whole(const QSize& area, const QRect& frame) { return QRect(QPoint(0, 0), area).contains(frame); }

}  // namespace

QRect strip_of(const QRect& result, const PlaceSizes& sizes) {
    return result.isNull() ? QRect() : QRect(result.topLeft(), QSize(result.width(), sizes.strip));
}

Places places(const QSize& area, const PlaceSizes& sizes) {
    const int W = area.width(), H = area.height();
    const QSize &M = sizes.models, &I = sizes.input, &R = sizes.result;
    const int left = std::max(column(M), column(I));
    Places p;
    if (column(M) + column(I) + R.width() + 2 * g <= W) {
        p.rule = 1;
        p.models = placed(g, g, M);
        p.input = placed(g + column(M), g, I);
        p.result = result_from(area, R, g + column(M) + column(I));
    } else if (left + R.width() + 2 * g <= W && row(M) + row(I) + g <= H + models_give_way) {
        p.rule = 2;
        p.models = placed(g, g, M);
        p.input = placed(g, std::min(g + row(M), H - g - I.height()), I);
        p.result = result_from(area, R, g + left);
    } else if (column(I) + R.width() + 2 * g <= W) {
        p.rule = 3;
        p.models_rolled = !M.isEmpty();
        p.input = placed(g, g, I);
        p.result = result_from(area, R, g + column(I));
        if (p.models_rolled && I.isEmpty()) {
            // Without a column beside the result: below it.
            p.result.setBottom(p.result.bottom() - g - sizes.title);
            p.models = {g, H - g - sizes.title, std::min(M.width(), W - 2 * g), sizes.title};
        } else if (p.models_rolled) {
            p.models = {g, g + row(I), I.width(), sizes.title};
        }
    } else if (R.height() + row(I) + 2 * g <= H) {
        p.rule = 4;
        p.models_rolled = !M.isEmpty();
        const int bottom = row(I.isEmpty() && p.models_rolled ? QSize(1, sizes.title) : I);
        p.result = {g, g, std::min(widest_result, W - 2 * g), H - bottom - 2 * g};
        p.input = placed(g, H - g - I.height(), I);
        const int x = g + column(I);
        if (p.models_rolled)
            p.models = {x, p.result.bottom() + 1 + g, std::min(M.width(), std::max(W - g - x, rolled_width)),
                        sizes.title};
    } else {
        p.rule = 5;
        p.result = QRect(QPoint(0, 0), area.expandedTo(R));
        p.models = placed(g, g, M);
        p.input = placed(std::max(0, W - g - I.width()), std::max(sizes.strip, H - g - I.height()), I);
    }
    return p;
}

Places with_kept(const QSize& area, const PlaceSizes& sizes, const Places& by_rule, const KeptPlaces& kept) {
    Places taken = by_rule;
    struct Choice {
        bool result, input;
    };
    for (const auto& [result, input] : {Choice{true, true}, {true, false}, {false, true}}) {
        if ((result && (kept.result.isNull() || by_rule.result.isNull())) ||
            (input && (kept.input.isNull() || by_rule.input.isNull())))
            continue;
        const QRect r = result ? kept.result : by_rule.result;
        const QRect i = input ? kept.input : by_rule.input;
        if (result && (!whole(area, r) || r.intersects(i))) continue;
        if (input && (!whole(area, i) || i.intersects(strip_of(r, sizes)))) continue;
        taken.result = r;
        taken.input = i;
        break;
    }
    const QRect& m = kept.models;
    if (!m.isNull() && !by_rule.models.isNull() && whole(area, m) && !m.intersects(taken.result) &&
        !m.intersects(taken.input)) {
        taken.models = m;
        taken.models_rolled = false;
    } else if (taken.models_rolled && (taken.models.intersects(taken.input) ||
                                       taken.models.intersects(strip_of(taken.result, sizes)))) {
        taken.models.moveTo(rolled_row(area, 1, sizes.title).front().topLeft());
    }
    return taken;
}

QRect place_beside(const QSize& area, const PlaceSizes& sizes, const Places& taken, const QSize& wanted,
                   const QSize& least) {
    const QRect& result = taken.result;
    // The column below the input, then that below input and models.
    const int below_input = taken.input.isNull() ? g : taken.input.bottom() + 1 + g;
    const int below_both = std::max(below_input, taken.models.isNull() ? g : taken.models.bottom() + 1 + g);
    const int right = result.left() - g;
    const QRect columns[] = {
        QRect(QPoint(std::max(g, taken.input.left()), below_input), QPoint(right - 1, area.height() - g - 1)),
        QRect(QPoint(g, below_both), QPoint(right - 1, area.height() - g - 1))};
    for (const QRect& column : columns) {
        if (column.width() < least.width() || column.height() < least.height()) continue;
        if (column.top() < below_both && column.intersects(taken.models)) continue;
        return {column.topLeft(), wanted.boundedTo(column.size()).expandedTo(least)};
    }
    const int room = result.bottom() + 1 - result.top() - sizes.tabs;
    const QSize size = wanted.boundedTo({result.width(), std::max(0, room)}).expandedTo(least);
    const int lowest = std::max(0, area.height() - size.height());
    const int bottom = std::min(result.bottom() + 1 - size.height(), lowest);
    return {
        QPoint(std::max(0, result.right() + 1 - size.width()), std::max(result.top() + sizes.strip, bottom)),
        size};
}

QRect moved_in(const QSize& area, const QRect& frame, const QSize& least) {
    const QSize size = frame.size().boundedTo(area).expandedTo(least.boundedTo(frame.size()));
    return {QPoint(std::max(0, std::min(frame.x(), area.width() - size.width())),
                   std::max(0, std::min(frame.y(), area.height() - size.height()))),
            size};
}

namespace {

// The first `count` windows in so many columns, filled one after the other; empty when they have no room.
std::vector<std::optional<QRect>> in_columns(const QSize& area, const std::vector<SizeRange>& windows,
                                             std::size_t count, std::size_t columns) {
    std::vector<std::optional<QRect>> places(windows.size());
    const std::size_t rows = (count + columns - 1) / columns;
    struct Column {
        std::size_t first, end;
        int width = 0, height = 0;
    };
    std::vector<Column> all;
    int width = 0;
    for (std::size_t first = 0; first < count; first += rows) {
        Column c{first, std::min(first + rows, count)};
        for (std::size_t i = c.first; i < c.end; ++i) {
            c.width = std::max(c.width, windows[i].least.width());
            c.height += windows[i].least.height();
        }
        if (c.height > area.height()) return {};
        width += c.width;
        all.push_back(c);
    }
    if (width > area.width()) return {};
    int x = 0;
    for (const Column& c : all) {
        const int wide = c.width + (area.width() - width) / static_cast<int>(all.size());
        const int more = (area.height() - c.height) / static_cast<int>(c.end - c.first);
        int y = 0;
        for (std::size_t i = c.first; i < c.end; ++i) {
            const QSize cell(wide, windows[i].least.height() + more);
            places[i] = QRect(QPoint(x, y), cell.boundedTo(windows[i].most));
            y += cell.height();
        }
        x += wide;
    }
    return places;
}

QSize without_row(const QSize& area, bool rolled, int title) {
    return rolled ? QSize(area.width(), area.height() - title) : area;
}

}  // namespace

std::vector<std::optional<QRect>> tiled(const QSize& area, const std::vector<SizeRange>& windows, int title) {
    for (std::size_t count = windows.size(); count > 0; --count) {
        const QSize room = without_row(area, count < windows.size(), title);
        const auto square = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(count))));
        // As many columns as rows when that has room, else fewer or more.
        for (std::size_t off = 0; off < count; ++off)
            for (const std::size_t columns : {square + off, square > off ? square - off : 0})
                if (columns >= 1 && columns <= count)
                    if (auto places = in_columns(room, windows, count, columns); !places.empty())
                        return places;
    }
    return std::vector<std::optional<QRect>>(windows.size());
}

std::vector<std::optional<QRect>> cascaded(const QSize& area, const std::vector<SizeRange>& windows,
                                           int title) {
    std::vector<std::optional<QRect>> places(windows.size());
    for (std::size_t count = windows.size(); count > 0; --count) {
        const QSize room = without_row(area, count < windows.size(), title);
        bool fit = true;
        // The most wanted one lies on top, so it is the last one of the steps.
        for (std::size_t i = 0; i < count && fit; ++i) {
            const int step = cascade_step * static_cast<int>(count - 1 - i);
            const QSize left(room.width() - step, room.height() - step);
            fit = windows[i].least.width() <= left.width() && windows[i].least.height() <= left.height();
            places[i] = QRect(QPoint(step, step), left.boundedTo(windows[i].most));
        }
        if (fit) return places;
        places[count - 1].reset();
    }
    return places;
}

std::vector<QRect> rolled_row(const QSize& area, int count, int title) {
    std::vector<QRect> places;
    const int width = std::min(rolled_width, area.width() / std::max(1, count));
    for (int i = 0; i < count; ++i) places.emplace_back(i * width, area.height() - title, width, title);
    return places;
}

}  // namespace quom

// Where the windows of a calculation stand in the area of windows: rectangles alone, no windows. All sizes
// are those of whole frames in pixels, the area begins at (0, 0).
#pragma once
#include <QRect>
#include <optional>
#include <vector>

namespace quom {

inline constexpr int place_gap = 10;

struct PlaceSizes {
    QSize models, input;  // as they want to be; empty: not there
    QSize result;         // least size
    int title = 0;        // height of a window rolled up to its title
    int strip = 0;        // of the result: from its top to the end of its state line
    int tabs = 0;         // ... to the end of its row of tabs
};

struct Places {
    int rule = 0;                 // 1 to 5
    QRect models, input, result;  // null where there is no window
    bool models_rolled = false;   // up to its title
};

// The first arrangement that has room: the three side by side; models over input at the left; models rolled
// up; the result above; the result over the whole area. Nothing lies over the state line.
Places places(const QSize& area, const PlaceSizes& sizes);

// Places that the user gave to the windows in an area of the same size; null: none.
struct KeptPlaces {
    QRect models, input, result;
};
// Takes up the kept places that lie whole in the area, under none of the other windows and clear of the state
// line.
Places with_kept(const QSize& area, const PlaceSizes& sizes, const Places& by_rule, const KeptPlaces& kept);

// State line of a result in this place.
QRect strip_of(const QRect& result, const PlaceSizes& sizes);

// Place of one more window: below the input at the left of the result where its least size fits, else over
// the lower right of the result, below its tabs or at least below its state line.
QRect place_beside(const QSize& area, const PlaceSizes& sizes, const Places& taken, const QSize& wanted,
                   const QSize& least);

// A frame whole in the area: made smaller as far as its least size allows, then moved.
QRect moved_in(const QSize& area, const QRect& frame, const QSize& least);

// Sizes between which a window of a tiling or a cascade may be.
struct SizeRange {
    QSize least, most;
};
// Rectangles of windows beside each other, or one behind the other, each within its sizes; the first ones are
// the most wanted. Where there is no room for all of them the last ones have none: they are to be rolled up,
// in a row of titles at the bottom that the others leave free.
std::vector<std::optional<QRect>> tiled(const QSize& area, const std::vector<SizeRange>& windows, int title);
std::vector<std::optional<QRect>> cascaded(const QSize& area, const std::vector<SizeRange>& windows,
                                           int title);
// The same row: place of each rolled-up window.
std::vector<QRect> rolled_row(const QSize& area, int count, int title);

}  // namespace quom

// Places of labels on lines, so that none covers another, a blocked box or a line that must stay whole.
//
// Everything is in pixels, y downwards. No fonts: the sizes of texts come in through a function. No random
// numbers: equal input gives equal places.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quom {

struct PixelPoint {
    double x = 0, y = 0;
};

// A box around its centre, turned by an angle [degrees, clockwise on the screen, -90 to 90].
struct LabelBox {
    PixelPoint centre;
    double width = 0, height = 0;
    double angle = 0;
};
// Whether two boxes come nearer than a gap [px] (separating axes).
bool boxes_meet(const LabelBox& a, const LabelBox& b, double gap);
// Whether a piece of a line runs through a box.
bool box_meets_piece(const LabelBox& box, PixelPoint a, PixelPoint b);

// Where on its line a label is wanted: weight |place - target| by the place in the area (X to the right, Y
// upwards, 0 to 1) or by the vapor fraction along the line; a fixed cost in the dome or outside of it where
// one is given.
struct PlaceRule {
    enum class Along { X, Y, fraction } along = Along::Y;
    double weight = 0, target = 0.5;
    double in_dome = -1, outside = -1;  // below 0: by the rule
};

// A line that labels stand on or have to respect.
struct LabelLine {
    int family = 0;                  // lines of one family are labelled in one form
    bool keep_clear = false;         // no label may touch it (dome, triple line, process lines)
    std::vector<PixelPoint> points;  // NaN: a gap
    std::vector<double> fraction;    // of each point; below 0: one phase
    std::string text, long_text;     // no text: no label; one line of a family takes the long one
    bool beside = false;             // the short text stands beside the line, not on it (a leading minus)
    PlaceRule rule;
};

struct TextSize {
    double width = 0, height = 0;
};
using TextMeasure = std::function<TextSize(const std::string&)>;

struct LabelInput {
    double width = 0, height = 0;  // of the area; its corner is 0, 0
    std::vector<LabelLine> lines;
    std::vector<LabelBox> blocked;  // critical point, points of states, tables
    TextMeasure measure;
};

struct PlacedLineLabel {
    std::size_t line = 0;
    std::string text;
    LabelBox box;
    bool beside = false;  // without ground, beside the line
    double cost = 0;
};

// The labels that found a place, in the order of the lines.
std::vector<PlacedLineLabel> place_labels(const LabelInput& input);

// Corner of a free place for a box of a size (table, legend, read-out), where it covers least of the lines
// and is near a corner of the area; none where it does not fit.
std::optional<PixelPoint> place_box(const LabelInput& input, TextSize size);

// Length of a line that lies in the area [px].
double visible_length(const LabelLine& line);

}  // namespace quom

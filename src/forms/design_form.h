// frmQGraph2D_Gestaltung: the controls of a sheet's design in tables, with what each shows and sets. A change
// is on the sheet at once; nothing is calculated anew.
#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "diagrams/graph_document.h"
#include "forms/sheet_form.h"

namespace quom {

enum class DesignPage { sheet, curves, points, x_axis, y_axis, y2_axis, texts, legend };
inline constexpr std::size_t DesignPages = 8;
struct DesignPageInfo {
    DesignPage page;
    std::string_view name, caption;  // object name and head of the tab
};
std::span<const DesignPageInfo> design_pages();

// A text that stands on the sheet by itself. Titles of the axes are those shown.
enum class DesignText { header, footer, text, x_title, y_title, curve_label, points_label, mark_label };
struct TextRef {
    DesignText part = DesignText::header;
    int number = 0;  // of an additional text, from 0; slot, set or mark of a label
    bool operator==(const TextRef&) const = default;
};
struct TextEntry {
    TextRef ref;
    std::string caption;  // "Additional text 1: isotherms of propane"
};
std::vector<TextEntry> design_texts(const GraphDocument& sheet);
bool has_text(const GraphDocument& sheet, const TextRef& ref);

// What the controls of a page are about.
struct DesignTarget {
    int number = 0;  // slot of a curve, number of a set of points
    DesignPage axis = DesignPage::x_axis;
    TextRef text{};
};

// The title of the window: "Design Header".
std::string design_title(DesignPage page, const TextRef& text);

enum class ControlType {
    flag,     // bool
    choice,   // int, index of the entries
    options,  // the same, all entries in sight
    color,
    line,    // std::string
    text,    // std::string of several lines, with its end mark
    number,  // std::string as typed; empty: no value
    font,
    action  // pressed; no value
};
using DesignValue = std::variant<bool, int, Color, std::string, Font>;

// What became of a value. With a fault, the rule that the text of a number box breaks, or with a refusal the
// sheet is as it was.
struct DesignAnswer {
    std::string fault{};
    std::optional<Message> message{};  // a refusal, or a note to what was set
};

struct DesignControl {
    std::string name;  // object name; in rows with the number of the row behind it
    std::string_view group, caption;
    ControlType type;
    std::vector<std::string> (*entries)();
    DesignValue (*shown)(const GraphDocument&, const DesignTarget&);
    DesignAnswer (*set)(GraphDocument&, const DesignTarget&, const DesignValue&);
    bool (*enabled)(const GraphDocument&, const DesignTarget&);
};
// In the order in which they stand; of the curves and the points those of a row.
std::vector<DesignControl> design_controls(DesignPage page);

// cmdCoord_OK and cmdTabCoord_OK: limits of the axes as shown, refused in the words of the place. A limit
// whose text is the one shown stays as it is. Of a logarithmic axis the upper limit is above 0; where the
// lower one is not, a note tells where the axis begins.
CoordinatesRefused take_design_limits(GraphDocument& sheet, const CoordinateTexts& texts, LimitsIn where);
// That note; none where the axes are shown from their lower limits on.
std::optional<Message> log_note(const GraphDocument& sheet);

// By the mouse: heading, footer or text to shares of the width and the height of the sheet, a label by so
// many pixels, the legend to shares of the area of the axes.
void place_text(GraphDocument& sheet, const TextRef& ref, double x, double y);
void shift_label(GraphDocument& sheet, const TextRef& ref, double by_x, double by_y);
void place_legend(GraphDocument& sheet, double x, double y);

// What restricts the design of the axes while they are interchanged; empty while they are not.
std::string_view axes_hint(const GraphDocument& sheet);

}  // namespace quom

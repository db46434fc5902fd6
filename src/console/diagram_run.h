// A sheet drawn on the command line, by the same steps as in the windows: the diagram of a kind, its curves,
// overlays, marks, measured points, design.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "console/curve_list.h"
#include "console/diagram_arguments.h"
#include "forms/sheet_form.h"

namespace quom {

struct DiagramRequest {
    Kind kind = Kind::none;
    CurveList curves;                   // none: one curve of a kind without a parameter
    std::vector<Insertion> insertions;  // overlays and marks, in the order in which they are drawn
    std::string points;                 // file of measured points
    std::optional<TypedRange> x, y;
    CurveOptions options;
    bool log_x = false, log_y = false, interchange = false, black = false, legend = false;
    std::optional<std::string> title;
};

// The word of an insertion on the command line: "tie-line", "crit-calc"; none: there is no such mark.
struct InsertionWord {
    Insertion what;
    std::string_view word, name;  // --coexistence or an entry of --marks; "the coexistence curve"
    bool overlay;
};
std::span<const InsertionWord> insertion_words();

// What the kind does not take: status_usage.
Refused check_request(const DiagramRequest& request);

// Draws the sheet of the session, whose substance and models are chosen. What the user is told goes to the
// messages. Refused where nothing is on the sheet; what alone could not be drawn is told.
Refused draw_sheet(Session& session, const DiagramRequest& request, Messages& messages);

}  // namespace quom

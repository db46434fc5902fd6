// What the menus of a sheet do: insertions, deletions, limits of the axes, data of the editors, files.
#pragma once
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "forms/refusal.h"
#include "session/session.h"

namespace quom {

// Entries of mnuInsert.
enum class Insertion {
    T,
    p,
    v,
    b,
    crit_measured,
    crit_calculated,
    coexistence,
    isohygric,
    inversion,
    loop,
    tie_line,
    bisector,
    legend,
    labels,
    text,          // asked for by the window
    process_line,  // not yet there
    measured_points,
    xy_data,
};
struct InsertEntry {
    Insertion what;
    std::string_view name;     // object name; empty: a separator
    std::string_view caption;  // as it stands in the menu
};
std::span<const InsertEntry> insert_entries();
// Whether the sheet of the session takes it; whether the data are there.
bool can_insert(const Session& session, Insertion what);
// Puts it onto the sheet. xy_curve: X-Y data as a curve, else as points.
void insert(Session& session, Insertion what, bool xy_curve, Messages& messages);
// mnuAddText: a text of the user's; the texts are put one below the other until they are moved.
void insert_text(GraphDocument& sheet, const std::string& text);

// Entries of mnuDelete that there are: those of what is on the sheet.
enum class Deletion {
    total,
    marks,
    mark_labels,
    crit_measured,
    crit_calculated,
    legend,
    labels,
    points,
    curve,
    point_set
};
struct DeleteEntry {
    Deletion what;
    int number = 0;  // of the curve, or of the set of points
    std::string name, caption;
};
std::vector<DeleteEntry> delete_entries(const GraphDocument& sheet);
void remove_from(GraphDocument& sheet, const DeleteEntry& entry);

// The limits of the axes as shown: mnuCoord.
inline constexpr std::string_view coordinates_title = "Coordinate range";
enum CoordinateBox : std::size_t { coord_x_min, coord_x_max, coord_y_min, coord_y_max };
using CoordinateTexts = std::array<std::string, 4>;  // as CoordinateBox
CoordinateTexts coordinate_texts(const GraphDocument& sheet);
struct CoordinatesRefused {
    std::optional<BoxRefusal> box{};   // no number
    std::optional<Message> message{};  // no range
    bool any() const { return box || message; }
};
// Takes the limits that are typed; refused ones change nothing.
CoordinatesRefused take_coordinates(GraphDocument& sheet, const CoordinateTexts& texts);

// Control graphs of the data editors on a sheet of their own: points y(T), ln{p} over 1/T, X-Y data. A sheet
// with something else on it goes after a question. False: there is nothing to draw, or the user wants to keep
// the sheet.
enum class ControlGraph { y_T, ln_p, xy_points, xy_curve };
bool show_control_graph(Session& session, ControlGraph graph, Messages& messages);

// Files of sheets. Asked, and told, before the name of the file is.
bool may_save_sheet(const Session& session, Messages& messages);
void tell_before_loading(Session& session, Messages& messages);
// False, and the user is told why: nothing was written; the sheet is as it was.
bool save_sheet(Session& session, const std::string& path, Messages& messages);
bool load_sheet(Session& session, const std::string& path, Messages& messages);

}  // namespace quom

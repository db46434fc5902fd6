#include <algorithm>
#include <array>
#include <iterator>

#include "diagrams/curve_generator.h"

namespace quom {
namespace {

using S = CurveStatus;

struct StatusText {
    CurveStatus status;
    std::string_view title, text;
    bool cubic_only = false;
};
constexpr StatusText status_texts[] = {
    {S::below_triple, "WARNING", "Calculated partially at T < T(triple)!\n(=> Options)", true},
    {S::no_critical_density, "Execution not possible", "No critical density available"},
    {S::no_tie_line, "WARNING",
     "Tie lines only possible for T < T(cr), p < p(cr)\n"
     "and for v <> v(cr)"},
    {S::line_aborted, "WARNING",
     "The calculation of the curve was aborted.\n"
     "possibly the V-L coexistence curve was reached\n"
     "Check it by inserting the coexistence curve."},
    {S::outside, "WARNING", "Curve outside the present coordinates\nEnlarge the coordinates"},
    {S::no_result, "Aborted", "no result with these input data"},
};

constexpr std::string_view outside_text =
    "curve outside range of diagram coordinates\n"
    "Enlarge the coordinates area.\n"
    "(Right-click on the diagramm or use the \"Coordinate area\" button)";

Message warning(std::string_view title, std::string text) {
    return {.title = std::string(title), .text = std::move(text), .kind = MessageKind::warning};
}

// The others say themselves why there is no point inside.
bool tells_outside(CurveStatus status) {
    return status == S::done || status == S::below_triple || status == S::line_aborted;
}

}  // namespace

std::vector<Message> curve_messages(const Fluid& fluid, const CurveResult& result) {
    std::vector<Message> messages;
    if (result.Outside && tells_outside(result.Status))
        messages.push_back(warning("WARNING", std::string(outside_text)));
    if (result.Status == S::failed) {
        const std::string text = "Critical error occured:\n" + result.Msg;
        for (const char* title : {"ERROR", "Aborted"}) {
            messages.push_back(warning(title, text));
            messages.back().kind = MessageKind::stop;
        }
        return messages;
    }
    const StatusText* const row = std::ranges::find(status_texts, result.Status, &StatusText::status);
    if (row == std::end(status_texts) || (row->cubic_only && fluid.VPhaseOnly)) return messages;
    messages.push_back(warning(row->title, std::string(row->text)));
    return messages;
}

bool keeps_curve(const CurveResult& result) {
    constexpr std::array dropped = {S::failed, S::no_result, S::no_critical_density};
    return std::ranges::find(dropped, result.Status) == dropped.end() && !result.curve.points.empty();
}

}  // namespace quom

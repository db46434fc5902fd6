#include "report/outcome_messages.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"

namespace quom {

namespace {

Message warning(std::string title, std::string text) {
    return {.title = std::move(title), .text = std::move(text), .kind = MessageKind::warning};
}
Message refusal(std::string text) {
    return {.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::stop};
}

std::string range_text(double low, double high) { return genNum(low) + " ... " + genNum(high); }

// The offset of a vapor pressure equation that was asked from p stands without a leading blank.
std::string evp_text(const Outcome& outcome, const Warning& w) {
    const bool from_p = !(mode_info(outcome.mode).specified & (spec_T | spec_tank));
    return (from_p ? "Temperature " + genNum(w.offset) : " Temperature" + strNum(w.offset)) +
           " K outside parameter validity\n(cf. Data/Parameters vapor pressure equ.)";
}

// Adds the box of a reservation; those that need no box add none.
void add_warning(std::vector<Message>& boxes, const Outcome& outcome, const Warning& w, bool WarnTriple) {
    const bool tank = mode_info(outcome.mode).family == ModeFamily::tank;
    switch (w.kind) {
        case WarningKind::below_triple_point:
            if (WarnTriple) boxes.push_back(warning(tank ? "WARNING" : "Remark", "T < T(TP) (Triple Point)"));
            break;
        case WarningKind::evp_range:
            boxes.push_back(warning("Warning concerning vapor pressure equation", evp_text(outcome, w)));
            break;
        case WarningKind::rhoL_range:
            boxes.push_back(
                warning("Warning concerning the equation rho(L) = Fu(T)",
                        " Temperature" + strNum(w.offset) +
                            " K outside parameter validity\n(for temperature range cf. window \"Models\")"));
            break;
        case WarningKind::rhoS_range:
            boxes.push_back(warning("Warning concerning the equ. rho(S) = Fu(T)",
                                    " Temperature" + strNum(w.offset) +
                                        " K outside T-range of the parameters\n(range of validity: " +
                                        range_text(w.low, w.high) + " K)"));
            break;
        case WarningKind::hlv_range:
            boxes.push_back(
                warning("Warning concerning equation delta(LV)h = Fu(T)",
                        "Temperature " + genNum(w.offset) +
                            " K outside parameter validity\n(cf. Data/Parameters delta(LV)h = Fu(T))"));
            break;
        case WarningKind::function_range:
            boxes.push_back(
                warning("WARNING", "T more than 10 K outside the T limits of the equation\n(T/K = " +
                                       genNum(w.value) + "; " + range_text(w.low, w.high) + ")"));
            break;
        default:
            break;
    }
}

std::string no_reference_text(const SubstanceConstants& substance) {
    std::string text = "no reference data for PARTIAL method calculable";
    if (substance.Tnb == 0.0f) {
        text += "\n\nFor " + substance.StoffName +
                "\nno normal boiling temperature is available in the database!"
                "\n\nUse the GLOBAL calculation concept (=> \"Models\").";
    }
    return text;
}

}  // namespace

std::vector<Message> outcome_messages(const Fluid& fluid, const Outcome& outcome, bool WarnTriple) {
    std::vector<Message> boxes;
    const ModeInfo& mode = mode_info(outcome.mode);
    for (const Warning& w : outcome.warnings) {
        // delta(LV)h by rho(L) = Fu(T) has no box of its own for the range of rho(L).
        if (w.kind == WarningKind::rhoL_range && mode.family == ModeFamily::vaporization) continue;
        add_warning(boxes, outcome, w, WarnTriple);
    }
    switch (outcome.failure.reason) {
        case Reason::partial_above_critical:
            boxes.push_back(refusal(
                "\"PARTIAL Calculation\" - to use only for phase equilibria, i.e. T < T(cr)\n(T(cr)/K =" +
                strNum(fluid.substance.Tcr) + ")"));
            break;
        case Reason::no_reference_point:
            boxes.push_back(refusal(no_reference_text(fluid.substance)));
            break;
        case Reason::none:
        case Reason::no_T_given:
        case Reason::no_function:
            break;
        default:
            if (mode.family != ModeFamily::database) break;
            boxes.push_back(
                refusal("error occured during the calculation\n" + failure_text(outcome.failure)));
    }
    return boxes;
}

std::optional<Message> outcome_message(const Fluid& fluid, const Outcome& outcome, bool WarnTriple) {
    std::vector<Message> boxes = outcome_messages(fluid, outcome, WarnTriple);
    if (boxes.empty()) return std::nullopt;
    if (boxes.size() == 1) return std::move(boxes.front());
    // A refusal gives its title and its kind; the others are said under theirs.
    const auto refused = std::ranges::find(boxes, MessageKind::stop, &Message::kind);
    Message all = warning("WARNING", {});
    if (refused != boxes.end()) {
        all = std::move(*refused);
        boxes.erase(refused);
    }
    for (const Message& box : boxes) {
        if (!all.text.empty()) all.text += "\n\n";
        all.text += box.title == all.title ? box.text : box.title + ":\n" + box.text;
    }
    return all;
}

}  // namespace quom

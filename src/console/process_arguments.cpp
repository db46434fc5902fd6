#include "console/process_arguments.h"

#include <algorithm>
#include <iterator>

namespace quom {
namespace {

// What a line takes besides its start point.
enum class End { p, T, either, coordinates };
struct LineRow {
    std::string_view name;
    ProcessKind kind;
    End end;
    bool two_phase = false;  // it exists between the saturated states
};
constexpr LineRow lines[] = {
    {"straight", ProcessKind::straight, End::coordinates},
    {"isotherm", ProcessKind::isotherm, End::p},
    {"isobar", ProcessKind::isobar, End::T},
    {"isochore", ProcessKind::isochore, End::either, true},
    {"isentrope", ProcessKind::isentrope, End::either, true},
    {"isenthalpe", ProcessKind::isenthalpe, End::either, true},
};

const LineRow* row_of(std::string_view name) {
    const LineRow* const row = std::ranges::find(lines, name, &LineRow::name);
    return row == std::end(lines) ? nullptr : row;
}

Fault wrong(std::string message) { return {status_usage, std::move(message)}; }

Refused check_straight(const ProcessArguments& a) {
    if (!a.x1 || !a.y1 || !a.x2 || !a.y2)
        return wrong("--process straight goes from --x1 --y1 to --x2 --y2.");
    if (a.T1 || a.p1 || a.T2 || a.p2)
        return wrong("--process straight takes coordinates of the diagram, no --T1, --p1, --T2, --p2.");
    return {};
}

Refused check_ends(const ProcessArguments& a, const LineRow& row) {
    const std::string line = "--process " + a.process;
    if (a.x1 || a.y1 || a.x2 || a.y2) return wrong("--x1, --y1, --x2, --y2 belong to --process straight.");
    if (row.end == End::p && (!a.p2 || a.T2)) return wrong(line + " runs to --p2.");
    if (row.end == End::T && (!a.T2 || a.p2)) return wrong(line + " runs to --T2.");
    if (!a.T2 == !a.p2) return wrong(line + " runs to one of --T2 and --p2.");
    if (!a.two_phase && (!a.T1 || !a.p1)) return wrong(line + " begins at --T1 and --p1.");
    if (!a.two_phase) return {};
    const bool over_T = a.T2.has_value();
    if (over_T ? !a.T1 || a.p1 : !a.p1 || a.T1)
        return wrong("between the saturated states the line goes from --T1 to --T2 or from --p1 to --p2.");
    return {};
}

}  // namespace

void add_process_options(CLI::App& app, ProcessArguments& a) {
    constexpr const char* group = "Process line in the diagram";
    const auto grouped = [](CLI::Option* option) { option->group(group); };
    std::string names;
    for (const LineRow& row : lines) names += (names.empty() ? "" : "|") + std::string(row.name);
    grouped(app.add_option("--process", a.process, "The line in place of the curve: " + names)
                ->check([names](const std::string& name) {
                    return row_of(name) ? std::string() : "\"" + name + "\" is no line; " + names + " are.";
                })
                ->type_name("LINE"));
    struct State {
        const char* name;
        std::optional<double>& into;
        Quantity quantity;
        const char* help;
    };
    const State states[] = {{"--T1", a.T1, Quantity::T, "Temperature of the start"},
                            {"--p1", a.p1, Quantity::p, "Pressure of the start"},
                            {"--T2", a.T2, Quantity::T, "Temperature of the end"},
                            {"--p2", a.p2, Quantity::p, "or its pressure"}};
    for (const State& s : states)
        grouped(add_quantity(app, s.name, s.into, s.quantity, NumberRange::above_zero, s.help));
    const std::pair<const char*, std::optional<GivenValue>*> ends[] = {
        {"--x1", &a.x1}, {"--y1", &a.y1}, {"--x2", &a.x2}, {"--y2", &a.y2}};
    for (const auto& [name, into] : ends)
        grouped(
            add_quantity(app, name, *into, {}, NumberRange::any, "Of a straight line, in units of the axis"));
    grouped(
        app.add_option("--phase", a.phase, "Phase of the line, or of its start between saturated states (V)")
            ->check(CLI::IsMember({"L", "V"}))
            ->type_name("L|V"));
    grouped(app.add_flag("--two-phase", a.two_phase, "Between the saturated states"));
    grouped(app.add_flag("--ideal", a.ideal, "By the ideal gas in place of the equation of state"));
}

Refused check_process_arguments(const ProcessArguments& a) {
    const LineRow* const row = row_of(a.process);
    if (!row) {
        const bool any =
            a.T1 || a.p1 || a.T2 || a.p2 || a.x1 || a.y1 || a.x2 || a.y2 || a.two_phase || a.ideal;
        if (any)
            return wrong("--T1 to --y2, --two-phase and --ideal belong to a process line; add --process.");
        return {};
    }
    if (a.two_phase && (!row->two_phase || a.ideal))
        return wrong("--two-phase belongs to isochore, isentrope and isenthalpe of the equation of state.");
    return row->end == End::coordinates ? check_straight(a) : check_ends(a, *row);
}

Refused take_process(const ProcessArguments& a, const CurveColumns& columns, double M, ProcessRec& into) {
    const LineRow* const row = row_of(a.process);
    if (!row) return {};
    into.kind = row->kind;
    into.phase = a.phase == "L" ? phase_L : phase_V;
    into.Homogen = !a.two_phase;
    into.UseIdealEOS = a.ideal;
    into.ScanT = a.T2.has_value();
    into.T1 = a.T1.value_or(0.0);
    into.p1 = a.p1.value_or(0.0);
    into.T2 = a.T2.value_or(0.0);
    into.p2 = a.p2.value_or(0.0);
    if (row->end != End::coordinates) return {};
    struct Coordinate {
        const GivenValue& given;
        const CurveColumn& column;
        double& into;
    };
    const Coordinate coordinates[] = {{*a.x1, columns[0], into.T1},
                                      {*a.y1, columns[1], into.p1},
                                      {*a.x2, columns[0], into.T2},
                                      {*a.y2, columns[1], into.p2}};
    for (const Coordinate& c : coordinates) {
        const OwnValue value = axis_limit(c.given, c.column, M);
        if (!value.fault.empty()) return wrong("--x1 to --y2: " + value.fault + ".");
        c.into = value.value;
    }
    return {};
}

}  // namespace quom

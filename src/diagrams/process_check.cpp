#include "diagrams/process_check.h"

#include <array>
#include <cmath>
#include <span>

#include "base/number_text.h"
#include "engine/saturation.h"

namespace quom {
namespace {

constexpr double SmallestKappa = 1e-6;

constexpr std::string_view not_valid = "Input incomplete or not valid\nspecificated p and T have to be > 0";
constexpr std::string_view no_range = "specification of the range is not valid ";
constexpr std::string_view no_line = "A process line is not possible in this diagram.";

// How a kind of line is drawn and what of the record it reads.
struct ProcessRow {
    ProcessKind process;
    Kind line;                  // homogeneous
    Kind two_phase_line;        // between the saturated states; none: there is no such variant
    std::optional<bool> ScanT;  // the one running quantity it has
};
constexpr auto rows = std::to_array<ProcessRow>({
    {ProcessKind::straight, Kind::line_straight, Kind::none, {}},
    {ProcessKind::isotherm, Kind::line_isotherm, Kind::none, false},
    {ProcessKind::isobar, Kind::line_isobar, Kind::none, true},
    {ProcessKind::isochore, Kind::line_isochore, Kind::line_two_phase, {}},
    {ProcessKind::isentrope, Kind::line_isentrope, Kind::line_two_phase, {}},
    {ProcessKind::isenthalpe, Kind::line_isentrope, Kind::line_two_phase, {}},
    {ProcessKind::polytropic, Kind::none, Kind::none, {}},
    {ProcessKind::section, Kind::none, Kind::none, {}},
    {ProcessKind::vapor_fraction, Kind::none, Kind::none, {}},
});

const ProcessRow* row_of(ProcessKind kind) {
    for (const ProcessRow& row : rows)
        if (row.process == kind) return &row;
    return nullptr;
}

bool is_positive(double x) { return x > 0.0 && std::isfinite(x); }

void refuse(ProcessCheck& check, std::string_view text) {
    if (!check.refused())
        check.refusal = Message{.title = "Execution not possible", .text = std::string(text)};
}

// Any value that is not above 0, and a range of no length.
void check_values(ProcessCheck& check, std::initializer_list<double> values, double from, double to) {
    for (const double value : values)
        if (!is_positive(value)) return refuse(check, not_valid);
    if (from == to) refuse(check, no_range);
}

void check_straight(ProcessCheck& check) {
    const ProcessRec& line = check.input.process;
    for (const double x : {line.T1, line.p1, line.T2, line.p2})
        if (!std::isfinite(x)) return refuse(check, not_valid);
    if (line.T1 == line.T2 && line.p1 == line.p2) refuse(check, no_range);
}

// Between the saturated states: the ends lie on tie lines.
void check_two_phase(ProcessCheck& check, const Fluid& fluid) {
    ProcessRec& line = check.input.process;
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    const bool last_too_high = line.ScanT ? line.T2 > Tcr : line.p2 > pcr;
    const bool first_too_high = line.ScanT ? line.T1 > Tcr : line.p1 > pcr;
    if (last_too_high && !line.ScanT)
        refuse(check, "pressure for the final tie line has to be p <= p(cr) = " + genSingle(pcr) + " kPa");
    if (last_too_high)
        refuse(check, "temperature for the final tie line has to be <= T(cr) = " + genSingle(Tcr) + " K");
    if (first_too_high)
        refuse(check, "temperature for the initial tie line has to be <= T(cr) = " + genSingle(Tcr) + " K");
    if (check.refused()) return;
    if (!line.ScanT) {
        check_values(check, {line.p1, line.p2}, line.p1, line.p2);
        line.T1 = TLV_EOS(fluid, line.p1).T;
        line.T2 = TLV_EOS(fluid, line.p2).T;
    }
    check_values(check, {line.T1, line.T2}, line.T1, line.T2);
}

void check_homogeneous(ProcessCheck& check) {
    const ProcessRec& line = check.input.process;
    check_values(check, {line.T1, line.p1, line.To}, line.From, line.To);
}

void check_polytropic(ProcessCheck& check) {
    const ProcessRec& line = check.input.process;
    check.polytropic = true;
    if (line.nPoly == 1.0 && line.ScanT)
        refuse(check,
               "The condition of polytropic exp. n = 1 (=> isotherm) is in\n"
               "contradiction to your specification of \"T range\" ");
    if (!(line.kappa >= SmallestKappa))
        refuse(check,
               "not yet a valid kappa available\n\nInput your value or click on the\n"
               "ComboBox to apply one of the values offered.");
    check_homogeneous(check);
    constexpr std::array of_T_alone = {Kind::hLV_T, Kind::h_T, Kind::sat_h_T, Kind::bnd_u_T,
                                       Kind::u_T_isochore};
    for (const Kind kind : of_T_alone)
        if (line.nPoly == 1.0 && check.input.kind == kind)
            check.note = Message{.title = "Note",
                                 .text =
                                     "There is only one point drawn because this function is independent "
                                     "on pressure here."};
}

// The curve of the diagram itself, at T or p of the start point; those of function pairs have limits too.
void check_section(ProcessCheck& check, const KindInfo& kind) {
    ProcessRec& line = check.input.process;
    const bool pairs = kind.family == CurveFamily::isotherm_pairs || kind.family == CurveFamily::isobar_pairs;
    if (kind.section == Section::isothermal) {
        line.ScanT = false;
        check.input.T = line.T1;
        check.label = "T = " + genNum(line.T1) + " K";
    } else if (kind.section == Section::isobaric) {
        line.ScanT = true;
        check.input.p = line.p1;
        check.label = "p = " + genNum(line.p1) + " kPa";
    } else {
        return refuse(check, no_line);
    }
    const double parameter = line.ScanT ? line.p1 : line.T1;
    line.From = line.ScanT ? line.T1 : line.p1;
    line.To = line.ScanT ? line.T2 : line.p2;
    if (pairs) {
        check_values(check, {parameter, line.From, line.To}, line.From, line.To);
    } else {
        check_values(check, {parameter}, 0.0, 1.0);
    }
}

void check_vapor_fraction(ProcessCheck& check, const KindInfo& kind) {
    const double eta = check.input.process.VaporFraction;
    if (!(eta >= 0.0 && eta <= 1.0)) return refuse(check, "Input not in the valid range");
    if (kind.boundary == Kind::none) return refuse(check, no_line);
    check.input.kind = kind.boundary;
    check.input.VaporFraction = eta;
}

// Limits of the running quantity, and the parameter of an isotherm or isobar.
void take_limits(CurveInput& input, const ProcessRow& row) {
    ProcessRec& line = input.process;
    line.ScanT = row.ScanT.value_or(line.ScanT);
    line.From = line.ScanT ? line.T1 : line.p1;
    line.To = line.ScanT ? line.T2 : line.p2;
    if (row.process == ProcessKind::isotherm) input.T = line.T1;
    if (row.process == ProcessKind::isobar) input.p = line.p1;
}

}  // namespace

ProcessCheck check_process(const Fluid& fluid, const CurveInput& in) {
    ProcessCheck check{.input = in, .refusal = {}, .note = {}, .label = {}};
    const KindInfo& kind = kind_info(in.kind);
    const ProcessRow* const row = row_of(in.process.kind);
    if (!row) {
        refuse(check, no_line);
        return check;
    }
    check.input.line = row->line;
    if (row->process == ProcessKind::section) {
        check_section(check, kind);
    } else if (row->process == ProcessKind::vapor_fraction) {
        check_vapor_fraction(check, kind);
    } else if (kind.process_par == par_none) {
        refuse(check, no_line);
    } else if (row->process == ProcessKind::straight) {
        check_straight(check);
    } else {
        const bool between_saturated = row->two_phase_line != Kind::none && !in.process.Homogen;
        take_limits(check.input, *row);
        if (between_saturated) {
            check.input.line = row->two_phase_line;
            check_two_phase(check, fluid);
        } else if (row->process == ProcessKind::polytropic) {
            check_polytropic(check);
        } else {
            check_homogeneous(check);
        }
    }
    if (check.refused()) check.input = in;
    return check;
}

}  // namespace quom

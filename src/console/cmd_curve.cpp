// curve: the points of a curve of a diagram.
#include <algorithm>
#include <iterator>
#include <memory>

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/reference_point.h"
#include "console/diagram_arguments.h"
#include "console/process_arguments.h"
#include "diagrams/process_check.h"
#include "engine/eos_parameters.h"
#include "engine/unit_factors.h"

namespace quom {
namespace {

using F = CurveFamily;

struct CurveArguments {
    std::string substance;
    ModelOptions models;
    Kind kind = Kind::none;
    std::optional<double> T, p;          // parameter of the section [K], [kPa]
    std::optional<GivenValue> v;         // the same
    std::optional<GivenValue> from, to;  // limits of diagrams of function pairs
    std::optional<TypedRange> x, y;
    std::optional<double> vapor_fraction;
    int dens = CurveOptions{}.Dens;
    bool s_curve = false, tie_line = false;
    bool triple_rule = true;
    ProcessArguments process;
    bool is_line() const { return !process.process.empty(); }
};

Fault wrong(std::string message) { return {status_usage, std::move(message)}; }
Fault no_result(std::string message) { return {status_no_result, std::move(message)}; }

bool is_one_of(CurveFamily family, std::initializer_list<CurveFamily> list) {
    return std::ranges::find(list, family) != list.end();
}
bool has_limits(const KindInfo& kind) {
    return is_one_of(kind.family, {F::isotherm_pairs, F::isobar_pairs, F::boundary_pairs});
}
bool has_loop(const KindInfo& kind) {
    return is_one_of(kind.family,
                     {F::isotherm_v, F::isotherm_p, F::isotherm_functions_p, F::isotherm_functions_v,
                      F::isobar_volume, F::isobar_functions, F::isobar_cp, F::isobar_pairs});
}
// Arguments that the kind does not take, or lacks.
Refused check_parameter(const CurveArguments& a, const KindInfo& kind) {
    const SectionOption* const own = option_of(kind.section);
    const std::pair<bool, std::string_view> given[] = {
        {a.T.has_value(), "--T"}, {a.p.has_value(), "--p"}, {a.v.has_value(), "--v"}};
    for (const auto& [there, option] : given) {
        if (!there || (own && own->option == option)) continue;
        return wrong(kind_words(kind.kind) + " takes no " + std::string(option) + "; it is " +
                     (own ? std::string(own->name) + " and takes " + std::string(own->option)
                          : std::string("no section and takes no parameter")) +
                     ".");
    }
    const bool there = std::ranges::any_of(given, [](const auto& g) { return g.first; });
    if (own && !there && (a.s_curve || a.tie_line))
        return wrong("a loop or a tie line lies in the two-phase region; give " + std::string(own->option) +
                     ".");
    return {};
}

// A process line has its ends and its phase; what belongs to curves of the diagram itself stays out.
Refused check_line(const CurveArguments& a) {
    if (Refused refused = check_process_arguments(a.process)) return refused;
    if (a.T || a.p || a.v || a.from || a.to || a.vapor_fraction || a.s_curve || a.tie_line)
        return wrong("a process line takes its start and end by --T1, --p1, --T2, --p2 alone.");
    return {};
}

Refused check(const CurveArguments& a) {
    const KindInfo& kind = kind_info(a.kind);
    if (a.is_line()) return check_line(a);
    if (Refused refused = check_process_arguments(a.process)) return refused;
    if (Refused refused = check_parameter(a, kind)) return refused;
    if ((a.from || a.to) && !has_limits(kind))
        return wrong("--from and --to are the limits of diagrams of function pairs; " + kind_words(a.kind) +
                     " has its range by --x and --y.");
    if (!a.from != !a.to) return wrong("--from and --to belong together.");
    if (a.vapor_fraction && !has_vapor_fraction(kind))
        return wrong(kind_words(a.kind) + " has no vapor fraction; curves along the phase equilibrium do.");
    if (a.vapor_fraction && !(*a.vapor_fraction >= 0.0 && *a.vapor_fraction <= 1.0))
        return wrong("--vapor-fraction lies between 0 (liquid) and 1 (vapor).");
    if (a.s_curve && a.tie_line)
        return wrong("--s-curve and --tie-line are two curves; one of them is right.");
    if (a.s_curve && !has_loop(kind)) return wrong(kind_words(a.kind) + " has no loop; leave out --s-curve.");
    if (a.tie_line && !option_of(kind.section))
        return wrong(kind_words(a.kind) + " is no section and has no tie lines; leave out --tie-line.");
    return {};
}

// What a section, a loop and a tie line need of the state.
Refused check_state(const CurveArguments& a, const Fluid& fluid, const CurveInput& input) {
    if (a.v && !fluid.VPhaseOnly && input.v <= EOSParT(fluid, fluid.substance.Tcr).b)
        return no_result("Input v <= b not possible!");
    if (!a.s_curve && !a.tie_line) return {};
    const Section section = kind_info(a.kind).section;
    if (fluid.VPhaseOnly)
        return no_result(a.tie_line ? "Tie line V-L only possible using a cubic EOS"
                                    : "A loop is only possible using a cubic EOS");
    if (section == Section::isothermal && !(input.T < fluid.substance.Tcr))
        return no_result("only possible in two-phase area V-L (T < T(cr))");
    if (section == Section::isobaric && !(input.p < fluid.substance.pcr))
        return no_result("only possible in two-phase area V-L (p < p(cr))");
    return {};
}

// Limits From, To of a diagram of function pairs: as typed, else the pair of the table of ranges.
Refused take_limits(const CurveArguments& a, const Fluid& fluid, const Units& units, const RangeTable& ranges,
                    CurveInput& input) {
    const KindInfo& kind = kind_info(a.kind);
    if (!has_limits(kind)) return {};
    const bool over_T = kind.family == F::isobar_pairs;
    const UnitFactors f = unit_factors(fluid, units, input.T);
    const RangeLimits pair = ranges[over_T ? RangePair::T : RangePair::p];
    input.process.From = pair.min / (over_T ? f.TFactor : f.pFactor);
    input.process.To = pair.max / (over_T ? f.TFactor : f.pFactor);
    if (!a.from) return {};
    for (const auto& [given, into] :
         {std::pair(&*a.from, &input.process.From), std::pair(&*a.to, &input.process.To)}) {
        const OwnValue value = own_value(*given, over_T ? Quantity::T : Quantity::p, fluid.M);
        if (!value.fault.empty()) return wrong("--from, --to: " + value.fault + ".");
        if (!(value.value > 0.0)) return wrong("--from, --to: specificated p and T have to be > 0.");
        *into = value.value;
    }
    if (input.process.From == input.process.To)
        return wrong("--from, --to: specification of the range is not valid.");
    return {};
}

Refused take_parameters(const CurveArguments& a, const Fluid& fluid, const DiagramState& state,
                        CurveInput& input) {
    input.T = a.T.value_or(state.T);
    input.p = a.p.value_or(state.p);
    input.v = state.v;
    if (!a.v) return {};
    const OwnValue v = own_value(*a.v, Quantity::v, fluid.M);
    if (!v.fault.empty()) return no_result("--v: " + v.fault + ".");
    input.v = v.value;
    return {};
}

// The curve; the tie line of an isochore lies where the isochore met the phase boundary.
CurveResult calculate_curve(const Fluid& fluid, CurveInput input) {
    if (input.TieLine && kind_info(input.kind).section == Section::isochoric) {
        input.TieLine = false;
        input.isochore = CalcCurve(fluid, input).isochore;
        input.TieLine = true;
    }
    return CalcCurve(fluid, input);
}

// Why a curve has no points, as a sentence.
std::string why_no_curve(const CurveFacts& facts) {
    const CurveInput& input = facts.input;
    const double Ttr = static_cast<double>(facts.session.substance().Ttr);
    if (facts.rec.section == Section::isothermal && input.T < Ttr && input.options.chkCurveTpRestricted)
        return "T lies below the triple temperature; --triple-rule off draws there too.";
    const std::string why =
        facts.notes.empty() ? "The curve has no point in this range." : facts.notes.back();
    return why.ends_with('.') ? why : why + ".";
}

Report answer(Program& program, const CurveInput& input, const DiagramRec& rec, const std::string& line) {
    const Session& session = program.session;
    const Fluid& fluid = *session.fluid;
    CurveFacts facts{session, input, calculate_curve(fluid, input), rec, line, {}};
    for (const Message& message : curve_messages(fluid, facts.result))
        facts.notes.push_back(note_of(message));
    if (!keeps_curve(facts.result)) return refusal("curve", no_result(why_no_curve(facts)));
    if (!facts.result.Msg.empty()) facts.notes.push_back(in_one_line(facts.result.Msg));
    const CurveColumns columns = curve_columns(input.kind, facts.result.curve, fluid, session.document.units,
                                               program.output_units, input.T);
    Report report;
    if (!program.options.json) {
        for (const std::string& note : facts.notes)
            program.messages.ask({.title = "Note", .text = note, .kind = MessageKind::warning});
        program.out << curve_table(facts, columns);
        return report;
    }
    report.notes = facts.notes;
    add_heads(report, session);
    add_curve_sections(report, facts, columns);
    return report;
}

Report curve(Program& program, const CurveArguments& a) {
    if (const Refused refused = check(a)) return refusal("curve", *refused);
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("curve", *refused);
    const Fluid& fluid = *program.session.fluid;
    const Units& units = program.session.document.units;
    const SetupResult setup = DiagramSetup(fluid, units, {}, a.kind, false, false);
    if (setup.refusal) return refusal("curve", no_result(in_one_line(setup.refusal->text)));
    if (!setup.open_sheet)
        return refusal("curve", no_result("For this substance the critical temperature is missing."));

    CurveInput input;
    input.kind = a.kind;
    input.range = setup.state.rec.range;
    input.VaporFraction = a.vapor_fraction.value_or(0.0);
    input.SCurve = a.s_curve;
    input.TieLine = a.tie_line;
    input.options.Dens = a.dens;
    input.options.chkCurveTpRestricted = a.triple_rule;
    input.units = units;
    input.benson = ReferencePoint(fluid).reference();
    if (const Refused refused = take_parameters(a, fluid, setup.state, input))
        return refusal("curve", *refused);
    if (const Refused refused = take_limits(a, fluid, units, setup.state.ranges, input))
        return refusal("curve", *refused);
    if (const Refused refused = check_state(a, fluid, input)) return refusal("curve", *refused);
    const CurveColumns columns = curve_columns(a.kind, {}, fluid, units, program.output_units, input.T);
    CurveRange& r = input.range;
    if (const Refused refused = take_axis(a.x, "--x", columns[0], fluid.M, r.XMin, r.XMax))
        return refusal("curve", *refused);
    if (const Refused refused = take_axis(a.y, "--y", columns[1], fluid.M, r.YMin, r.YMax))
        return refusal("curve", *refused);
    if (!(r.XMin < r.XMax && r.YMin < r.YMax))
        return refusal("curve",
                       no_result("The substance gives no range of the axes; name it by --x and --y."));
    if (!a.is_line()) return answer(program, input, setup.state.rec, {});
    if (const Refused refused = take_process(a.process, columns, fluid.M, input.process))
        return refusal("curve", *refused);
    const ProcessCheck line = check_process(fluid, input);
    if (line.refusal) return refusal("curve", no_result(in_one_line(line.refusal->text)));
    return answer(program, line.input, setup.state.rec, a.process.process);
}

void add_shape(CLI::App& app, CurveArguments& a) {
    add_ranges(app, a.x, a.y);
    add_density(app, a.dens);
    add_number(app, "--vapor-fraction", a.vapor_fraction, NumberRange::any, "",
               "Of curves along the phase equilibrium: 0 liquid (default) to 1 vapor");
    app.add_flag("--s-curve", a.s_curve, "The metastable and unstable loop in place of the stable curve");
    app.add_flag("--tie-line", a.tie_line, "The tie line in place of the curve");
    add_triple_rule(app, a.triple_rule);
}

}  // namespace

Action declare_curve(CLI::App& app) {
    const auto a = std::make_shared<CurveArguments>();
    add_substance(app, a->substance);
    add_kind(app, a->kind);
    add_quantity(app, "--T", a->T, Quantity::T, NumberRange::above_zero, "Of an isotherm (default: T(cr))");
    add_quantity(app, "--p", a->p, Quantity::p, NumberRange::above_zero, "Of an isobar (default: p(cr))");
    add_quantity(app, "--v", a->v, Quantity::v, NumberRange::above_zero, "Of an isochore (default: v(cr))");
    add_quantity(app, "--from", a->from, {}, NumberRange::any,
                 "First p of an isotherm, first T of an isobar in diagrams of function pairs");
    add_quantity(app, "--to", a->to, {}, NumberRange::any, "Last p or T there");
    add_shape(app, *a);
    add_process_options(app, a->process);
    add_model_options(app, a->models);
    return [a](Program& program) { return curve(program, *a); };
}

}  // namespace quom

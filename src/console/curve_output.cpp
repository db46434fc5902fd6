#include "console/curve_output.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "base/code_page.h"
#include "console/shortest_number.h"
#include "diagrams/axis_texts.h"
#include "engine/unit_factors.h"
#include "report/selection_report.h"

namespace quom {
namespace {

using Q = AxisQuantity;

struct AxisUnit {
    Q axis;
    Quantity quantity;  // whose units the axis may have
};
constexpr AxisUnit axis_units[] = {
    {Q::v, Quantity::v},     {Q::rho, Quantity::rho},
    {Q::p, Quantity::p},     {Q::T, Quantity::T},
    {Q::hLV, Quantity::hLV}, {Q::u, Quantity::u},
    {Q::h, Quantity::h},     {Q::s, Quantity::s},
    {Q::g, Quantity::g},     {Q::a, Quantity::a},
    {Q::eH, Quantity::eH},   {Q::eU, Quantity::eU},
    {Q::cp, Quantity::cp},   {Q::joule_thomson, Quantity::delta},
    {Q::cV, Quantity::cV},
};

// What a pure number is divided by.
std::string_view divisor(Q axis, const Units& units) {
    const bool reduced = units.VolumeMode == reduced_volume;
    switch (axis) {
        case Q::T:
            return reduced ? "T(cr)" : "";
        case Q::p:
            return reduced ? "p(cr)" : "";
        case Q::v:
            return reduced ? "v(cr)" : "";
        case Q::pv:
            return reduced ? "(p(cr)*v(cr))" : "";
        default:
            break;
    }
    if (units.EnergyMode == energy_per_RT && axis_unit(axis, units).empty()) return "(R T)";
    return units.EnergyMode == energy_per_R && axis_unit(axis, units).empty() ? "R" : "";
}

std::string head_of(std::string_view symbol, std::string_view unit, std::string_view divided_by) {
    if (unit.empty()) return std::string(symbol) + (divided_by.empty() ? "" : "/" + std::string(divided_by));
    const bool compound = unit.find_first_of("/ *") != std::string_view::npos;
    return std::string(symbol) + "/" + (compound ? "(" + std::string(unit) + ")" : std::string(unit));
}

double axis_factor(Q axis, const UnitFactors& f) {
    switch (axis) {
        case Q::T:
            return f.TFactor;
        case Q::p:
            return f.pFactor;
        case Q::v:
            return f.vFactor;
        case Q::rho:
        case Q::joule_thomson:
            return 1.0;
        default:
            return f.uFactor;
    }
}

// Takes the unit that --units names for the quantity, where the column is in the workbench's own.
void take_unit(CurveColumn& column, const OutputUnits& output) {
    if (!column.quantity || column.unit != units_of(*column.quantity).front()) return;
    const auto asked = output.by_quantity.find(*column.quantity);
    if (asked == output.by_quantity.end()) return;
    column.unit = asked->second.name;
    column.conversion = asked->second.conversion;
    column.text = column.head = head_of(column.symbol, column.unit, "");
}

CurveColumn axis_column(const char* name, Q axis, std::string text, const Units& units,
                        const UnitFactors& factors, const OutputUnits& output) {
    CurveColumn column{.name = name, .symbol = std::string(axis_symbol(axis)), .text = std::move(text)};
    column.unit = axis_unit(axis, units);
    column.head = axis == Q::ln_p ? "ln(p/" + std::string(divisor(Q::p, units).empty() ? "kPa)" : "p(cr))")
                                  : head_of(column.symbol, column.unit, divisor(axis, units));
    const AxisUnit* const known = std::ranges::find(axis_units, axis, &AxisUnit::axis);
    if (known == std::end(axis_units)) return column;
    column.quantity = known->quantity;
    const UnitKind kind = quantity_info(known->quantity).kind;
    const bool running =
        units.EnergyMode == energy_per_RT && (kind == UnitKind::energy || kind == UnitKind::entropy);
    if (!running) column.to_axis = axis_factor(axis, factors);
    take_unit(column, output);
    return column;
}

CurveColumn hidden_column(const char* name, std::int16_t par, const OutputUnits& output) {
    struct Hidden {
        std::int16_t par;
        Quantity quantity;
    };
    constexpr Hidden hidden[] = {{par_T, Quantity::T}, {par_p, Quantity::p}, {par_v, Quantity::v}};
    CurveColumn column{.name = name};
    if (par == par_fraction) column.symbol = column.head = column.text = "eta(V)";
    const Hidden* const known = std::ranges::find(hidden, par, &Hidden::par);
    if (known == std::end(hidden)) return column;
    column.symbol = quantity_info(known->quantity).symbol;
    column.unit = units_of(known->quantity).front();
    column.text = column.head = head_of(column.symbol, column.unit, "");
    column.quantity = known->quantity;
    column.to_axis = 1.0;
    take_unit(column, output);
    return column;
}

// The number with the digits that a single has, in the unit of the column.
double value_of(float single, const CurveColumn& column) {
    char digits[number_space];
    const auto end = std::to_chars(digits, digits + sizeof digits, single).ptr;
    double value = 0.0;
    std::from_chars(digits, end, value);
    return column.conversion == UnitConversion{} ? value : column.conversion.from_own(value);
}

float member(const CurvePoint& point, std::size_t column) {
    const float values[] = {point.X, point.Y, point.Par, point.Tag};
    return values[column];
}

std::string_view parameter_name(Section section) {
    switch (section) {
        case Section::isothermal:
            return "T";
        case Section::isobaric:
            return "p";
        case Section::isochoric:
            return "v";
        default:
            return "";
    }
}

double parameter_of(const CurveFacts& facts) {
    const Section section = facts.rec.section;
    return section == Section::isothermal ? facts.input.T
           : section == Section::isobaric ? facts.input.p
                                          : facts.input.v;
}

void put_line(std::string& out, std::string_view name, std::string_view text) {
    out += "# " + std::string(name) + ": ";
    for (const char c : trim(text)) out += c == '\n' ? ' ' : c;
    out += '\n';
}

std::string drawn_text(const CurveFacts& facts) {
    const ProcessRec& line = facts.input.process;
    if (!facts.process.empty()) {
        return "process line " + facts.process + (line.Homogen ? "" : " between the saturated states") +
               (line.UseIdealEOS ? " of the ideal gas" : "");
    }
    if (facts.input.TieLine) return "tie line";
    return facts.input.SCurve ? "metastable and unstable loop" : "curve";
}

void put_number(std::string& out, double x) {
    char text[number_space];
    out.append(text, write_shortest(x, text));
}

}  // namespace

bool has_vapor_fraction(const KindInfo& kind) {
    using F = CurveFamily;
    constexpr F families[] = {F::dome_p_v,   F::dome_p,     F::dome_T,        F::boundary_p,
                              F::boundary_T, F::boundary_v, F::boundary_pairs};
    return std::ranges::find(families, kind.family) != std::end(families);
}

CurveColumns curve_columns(Kind kind, const CurvePoints& curve, const Fluid& fluid, const Units& units,
                           const OutputUnits& output, double T) {
    const KindInfo& info = kind_info(kind);
    const AxisTexts texts = axis_texts(kind, units);
    const UnitFactors factors = unit_factors(fluid, units, T);
    return {axis_column("x", info.x, texts.X, units, factors, output),
            axis_column("y", info.y, texts.Y, units, factors, output),
            hidden_column("par", curve.Par, output), hidden_column("tag", curve.Tag, output)};
}

OwnValue axis_limit(const GivenValue& given, const CurveColumn& column, double M) {
    if (given.unit.empty()) return {column.conversion.to_own(given.number), {}};
    if (!column.quantity || !column.to_axis)
        return {0.0, column.symbol + " takes no unit here; a number alone is right"};
    OwnValue value = own_value(given, *column.quantity, M);
    value.value *= *column.to_axis;
    return value;
}

std::string curve_table(const CurveFacts& facts, const CurveColumns& columns) {
    const Fluid& fluid = *facts.session.fluid;
    const Units& units = facts.session.document.units;
    std::string out;
    put_line(out, "diagram", std::to_string(static_cast<int>(facts.rec.kind)) + ", " + facts.rec.title);
    put_line(out, "substance", substance_head(fluid.substance));
    put_line(out, "models", models_text(fluid.models));
    put_line(out, "reference", reference_text(fluid));
    const std::string_view name = parameter_name(facts.rec.section);
    if (!name.empty() && facts.process.empty()) {
        put_line(out, "parameter",
                 std::string(name) + " = " +
                     parameter_text(facts.rec.section, parameter_of(facts), units,
                                    unit_factors(fluid, units, facts.input.T)));
    }
    if (has_vapor_fraction(kind_info(facts.rec.kind)) && facts.process.empty())
        put_line(out, "vapor fraction", shown(facts.input.VaporFraction));
    put_line(out, "drawn", drawn_text(facts));
    put_line(out, "x", columns[0].text);
    put_line(out, "y", columns[1].text);
    put_line(out, "points", std::to_string(facts.result.curve.points.size()));
    put_line(out, "status", std::to_string(static_cast<int>(facts.result.Status)));
    for (const std::string& note : facts.notes) put_line(out, "note", note);
    const char* separator = "";
    for (const CurveColumn& column : columns) {
        if (column.symbol.empty()) continue;
        out += separator + column.head;
        separator = ";";
    }
    out += '\n';
    for (const CurvePoint& point : facts.result.curve.points) {
        separator = "";
        for (std::size_t k = 0; k < columns.size(); ++k) {
            if (columns[k].symbol.empty()) continue;
            out += separator;
            put_number(out, value_of(member(point, k), columns[k]));
            separator = ";";
        }
        out += '\n';
    }
    return out;
}

void add_curve_sections(Report& report, const CurveFacts& facts, const CurveColumns& columns) {
    const CurveInput& input = facts.input;
    const CurveResult& result = facts.result;
    const Section section = facts.rec.section;
    const bool line = !facts.process.empty();
    const auto given = [&](Section of, double x) { return section == of && !line ? Value(x) : Value(); };
    report.sections.emplace_back(
        Block{"curve",
              "",
              {{"kind", "", static_cast<int>(facts.rec.kind), "", ""},
               {"title", "", facts.rec.title, "", ""},
               {"section", "", static_cast<int>(section), "", ""},
               {"T", "", given(Section::isothermal, input.T), "K", ""},
               {"p", "", given(Section::isobaric, input.p), "kPa", ""},
               {"v", "", given(Section::isochoric, input.v), "m^3/kmol", ""},
               {"vapor_fraction", "",
                has_vapor_fraction(kind_info(input.kind)) ? Value(input.VaporFraction) : Value(), "", ""},
               {"dens", "", input.options.Dens, "", ""},
               {"s_curve", "", input.SCurve, "", ""},
               {"tie_line", "", input.TieLine, "", ""},
               {"process", "", remark(facts.process), "", ""},
               {"T_end", "", if_known(result.LastProcessT), "K", ""},
               {"p_end", "", if_known(result.LastProcessP), "kPa", ""},
               {"triple_rule", "", input.options.chkCurveTpRestricted, "", ""},
               {"curve_status", "", static_cast<int>(result.Status), "", ""},
               {"outside", "", result.Outside, "", ""},
               {"DBTMin", "", if_known(static_cast<double>(result.DBTMin)), "K", ""},
               {"DBTMax", "", if_known(static_cast<double>(result.DBTMax)), "K", ""}},
              Layout::json});
    report.sections.emplace_back(Block{"header",
                                       "",
                                       {{"n", "", result.curve.points.size(), "", ""},
                                        {"Par", "", static_cast<int>(result.curve.Par), "", ""},
                                        {"Tag", "", static_cast<int>(result.curve.Tag), "", ""}},
                                       Layout::json});
    Table axes{"axes",
               "",
               {{"axis", "", ""}, {"quantity", "", ""}, {"text", "", ""}, {"unit", "", ""}},
               {},
               Layout::json};
    Table points{"points", "", {}, {}, Layout::json};
    for (const CurveColumn& column : columns) {
        axes.rows.push_back({column.name, remark(column.symbol), remark(column.text), remark(column.unit)});
        points.columns.push_back({column.name, "", column.unit});
    }
    for (const CurvePoint& point : result.curve.points) {
        std::vector<Value>& row = points.rows.emplace_back();
        for (std::size_t k = 0; k < columns.size(); ++k)
            row.push_back(columns[k].symbol.empty() ? Value()
                                                    : Value(value_of(member(point, k), columns[k])));
    }
    report.sections.emplace_back(std::move(axes));
    const CurveRange& r = input.range;
    report.sections.emplace_back(Block{"ranges",
                                       "",
                                       {{"XMin", "", value_of(r.XMin, columns[0]), columns[0].unit, ""},
                                        {"XMax", "", value_of(r.XMax, columns[0]), columns[0].unit, ""},
                                        {"YMin", "", value_of(r.YMin, columns[1]), columns[1].unit, ""},
                                        {"YMax", "", value_of(r.YMax, columns[1]), columns[1].unit, ""}},
                                       Layout::json});
    report.sections.emplace_back(std::move(points));
}

}  // namespace quom

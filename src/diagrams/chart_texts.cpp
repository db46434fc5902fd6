#include "diagrams/chart_texts.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "diagrams/ticks.h"
#include "engine/ideal_gas.h"

namespace quom {
namespace {

constexpr std::string_view Minus = "\u2212", ThinBlank = "\u2009", Gap = "   ";

// "-12345.5" with a true minus and thin blanks between the thousands of five digits and more.
std::string with_signs(std::string_view plain) {
    std::string out;
    if (plain.starts_with('-')) {
        out = Minus;
        plain.remove_prefix(1);
    }
    const std::size_t digits = std::min(plain.find('.'), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (digits > 4 && i > 0 && i < digits && (digits - i) % 3 == 0) out += ThinBlank;
        out += plain[i];
    }
    return out;
}

std::string raised(int exponent) {
    constexpr std::string_view digits[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string out = exponent < 0 ? "⁻" : "";
    for (const char c : std::to_string(std::abs(exponent))) out += digits[c - '0'];
    return out;
}

// Digits as they are needed, without a point at the end.
std::string plain(double x, std::string_view mask) {
    std::string text = formatMask(x, mask);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

// With so many digits behind the point.
std::string fixed(double x, int decimals) {
    std::string mask = "0";
    if (decimals > 0) mask += "." + std::string(static_cast<std::size_t>(decimals), '0');
    return with_signs(formatMask(x, mask));
}

// With so many significant digits, zeros at the end kept: "43.20".
std::string significant(double x, int digits) {
    const double size = std::fabs(x);
    if (size == 0.0) return "0";
    if (size < 1e-4 || size >= 1e6) return tick_number(Val(genNum(x, digits)));
    const int decade = static_cast<int>(std::floor(std::log10(size)));
    return fixed(x, std::max(0, digits - 1 - decade));
}

const ChartUnit& unit_of(const StateChart& chart, ChartQuantity quantity) {
    return chart.units[static_cast<std::size_t>(quantity)];
}

std::string with_unit(std::string number, const ChartUnit& unit) {
    return unit.unit.empty() ? number : std::move(number) + " " + unit.unit;
}

std::string shown_text(const StateChart& chart, ChartQuantity quantity, double own) {
    const ChartUnit& unit = unit_of(chart, quantity);
    return with_unit(tick_number(unit.conversion.from_own(own)), unit);
}

// A temperature of two decimals.
std::string T_text(const StateChart& chart, double T) {
    const ChartUnit& unit = unit_of(chart, ChartQuantity::T);
    return with_unit(with_signs(plain(unit.conversion.from_own(T), "0.##")), unit);
}

std::string equation_name(const Fluid& fluid) {
    std::string text(fluid.eos_row().text);
    text.erase(text.find_last_not_of(' ') + 1);
    if (text.starts_with("CEOS ")) text.erase(0, 5);
    for (std::size_t at = text.find(" / "); at != std::string::npos; at = text.find(" / "))
        text.replace(at, 3, "/");
    return text;
}

std::string session_reference(const StateChart& chart) {
    const Fluid& fluid = *chart.fluid;
    const ReferenceConstants zero = RefConst(fluid.substance, fluid.reference, 0.0);
    const double h = zero.h0 + fluid.reference.hOffset, s = zero.s0 + fluid.reference.sOffset;
    const auto text = [&](ChartQuantity q, double own) {
        return own == 0.0 ? std::string("0") : shown_text(chart, q, own);
    };
    return "h = " + text(ChartQuantity::h, h) + ", s = " + text(ChartQuantity::s, s) +
           " of the ideal gas at " + T_text(chart, static_cast<double>(zero.TRef0)) + ", " +
           shown_text(chart, ChartQuantity::p, static_cast<double>(zero.pRef0));
}

std::string reference_words(const StateChart& chart) {
    const std::string at = " of the saturated liquid at ";
    switch (chart.reference) {
        case ChartReference::session:
            return session_reference(chart);
        case ChartReference::liquid_0C:
            return "h = 200 kJ/kg, s = 1 kJ/(kg K)" + at + T_text(chart, chart.reference_T);
        case ChartReference::liquid_minus_40C:
            return "h = 0, s = 0" + at + T_text(chart, chart.reference_T);
        case ChartReference::normal_boiling_point:
            return "h = 0, s = 0" + at + shown_text(chart, ChartQuantity::p, pNorm) + ", " +
                   T_text(chart, chart.reference_T);
        case ChartReference::triple_point:
            return "u = 0, s = 0" + at + "the triple point, " + T_text(chart, chart.reference_T);
    }
    return {};
}

std::string cp_limits(const Fluid& fluid) {
    const SubstanceConstants& s = fluid.substance;
    const bool polynomial = fluid.models.cpKode == CpForm::polynomial;
    const int low = polynomial ? s.cpPolyTLo : s.cpDIPPRTLo, high = polynomial ? s.cpPolyTHi : s.cpDIPPRTHi;
    if (high <= low) return "cp(idG)";
    return "cp(idG) " + tick_number(low) + " to " + tick_number(high) + " K";
}

}  // namespace

std::string unit_sign(std::string_view unit) {
    std::string out;
    for (std::size_t i = 0; i < unit.size(); ++i) {
        const bool power = unit[i] == '^' && i + 1 < unit.size() && unit[i + 1] >= '0' && unit[i + 1] <= '9';
        if (!power) {
            out += unit[i];
            continue;
        }
        ++i;
        out += raised(unit[i] - '0');
    }
    return out;
}

std::string axis_text(const ChartUnit& unit) {
    const bool quotient = unit.unit.find('/') != std::string::npos;
    return std::string(unit.symbol) + " / " + (quotient ? "(" + unit.unit + ")" : unit.unit);
}

ChartQuantity quantity_of(ChartFamily family) {
    switch (family) {
        case ChartFamily::p:
            return ChartQuantity::p;
        case ChartFamily::v:
            return ChartQuantity::v;
        case ChartFamily::h:
            return ChartQuantity::h;
        case ChartFamily::s:
            return ChartQuantity::s;
        case ChartFamily::x:
        case ChartFamily::saturation:
            return ChartQuantity::x;
        case ChartFamily::T:
        case ChartFamily::limit:
            break;
    }
    return ChartQuantity::T;
}

LineLabel line_label(const StateChart& chart, ChartFamily family, double value) {
    if (family == ChartFamily::saturation) return {};
    const ChartUnit& unit = unit_of(chart, quantity_of(family));
    if (family == ChartFamily::limit) {
        const std::string text = (chart.span.triple ? "triple line, " : "lower limit, ") +
                                 T_text(chart, unit.conversion.to_own(value));
        return {text, {}};
    }
    const std::string number = tick_number(value);
    return {number, std::string(unit.symbol) + " = " + with_unit(number, unit)};
}

std::string chart_header(const Fluid& fluid, ChartKind kind) {
    constexpr std::string_view names[] = {"log p-h diagram", "T-s diagram", "h-s diagram"};
    return fluid.substance.StoffName + std::string(Gap) + std::string(names[static_cast<std::size_t>(kind)]) +
           std::string(Gap) + equation_name(fluid);
}

std::string chart_footer(const StateChart& chart) {
    const Fluid& fluid = *chart.fluid;
    const SubstanceConstants& s = fluid.substance;
    std::string text = s.StoffName;
    if (!s.StoffFormulaCompact.empty()) text += " " + s.StoffFormulaCompact;
    for (const std::string& part :
         {"M = " + tick_number(fluid.M) + " kg/kmol", "T(cr) = " + shown_text(chart, ChartQuantity::T, s.Tcr),
          "p(cr) = " + shown_text(chart, ChartQuantity::p, s.pcr), "Reference: " + reference_words(chart),
          cp_limits(fluid)}) {
        text += std::string(Gap) + part;
    }
    return text;
}

std::vector<LegendRow> chart_legend(const StateChart& chart) {
    std::vector<LegendRow> rows = {{ChartFamily::saturation, "saturation"}};
    for (const ChartFamily family :
         {ChartFamily::T, ChartFamily::p, ChartFamily::v, ChartFamily::s, ChartFamily::h, ChartFamily::x}) {
        const bool there = std::any_of(chart.lines.begin(), chart.lines.end(),
                                       [&](const ChartLine& line) { return line.family == family; });
        if (!there) continue;
        rows.push_back({family, family == ChartFamily::x ? "x, vapor fraction"
                                                         : axis_text(unit_of(chart, quantity_of(family)))});
    }
    return rows;
}

std::vector<std::string> state_lines(const StateChart& chart, const ChartState& state) {
    if (!state.exists()) return {};
    std::vector<std::string> lines;
    const auto add = [&](ChartQuantity q, std::string number) {
        const ChartUnit& unit = unit_of(chart, q);
        lines.push_back(std::string(unit.symbol) + " = " + with_unit(std::move(number), unit));
    };
    add(ChartQuantity::T, fixed(chart.shown(state, ChartQuantity::T), 2));
    for (const ChartQuantity q : {ChartQuantity::p, ChartQuantity::v, ChartQuantity::h, ChartQuantity::s})
        add(q, significant(chart.shown(state, q), 4));
    if (state.x >= 0.0) {
        lines.push_back("x = " + fixed(state.x, 3));
    } else if (state.T >= chart.critical.T && state.p >= chart.critical.p) {
        lines.emplace_back("supercritical");
    } else {
        const bool liquid = state.T < chart.critical.T && state.v < chart.critical.v;
        lines.emplace_back(liquid ? "liquid" : "vapor");
    }
    return lines;
}

}  // namespace quom

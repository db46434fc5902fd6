#include "diagrams/axis_texts.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/number_text.h"

namespace quom {
namespace {

using Q = AxisQuantity;

// What the text and the unit follow.
enum class By {
    reduced,  // the first, or the second where VolumeMode is reduced
    volume,   // VolumeMode
    energy,   // EnergyMode
};
struct AxisRow {
    Q quantity;
    By by;
    std::string_view symbol;
    std::array<std::string_view, 4> texts;
    std::array<std::string_view, 4> units;
};

constexpr std::array<std::string_view, 4> energies = {"kJ/kmol", "K", "", "kJ/kg"};
constexpr std::array<std::string_view, 4> entropies = {"kJ/(kmol K)", "", "1/K", "kJ/(kg K)"};

// clang-format off
constexpr AxisRow rows[] = {
    {Q::none, By::reduced, "", {}, {}},
    {Q::v, By::volume, "v", {"v / (m^3/kmol)", "v / (m^3/kg)", "V(red)"}, {"m^3/kmol", "m^3/kg", ""}},
    {Q::rho, By::reduced, "rho", {"rho / (kg/m^3)", "rho / (kg/m^3)"}, {"kg/m^3", "kg/m^3"}},
    {Q::pv, By::volume, "pv", {"pv / (kPa*m^3/kmol)", "pv / (kPa*m^3/kg)", "p(red) * v(red)"},
     {"kPa*m^3/kmol", "kPa*m^3/kg", ""}},
    {Q::p, By::reduced, "p", {"p / kPa", "p / p(cr)"}, {"kPa", ""}},
    {Q::T, By::reduced, "T", {"T / K", "T / T(cr)"}, {"K", ""}},
    {Q::inverse_T, By::reduced, "1/T", {"1/T / (1/K) ", "1 / T(red)"}, {"1/K", ""}},
    {Q::ln_p, By::reduced, "ln(p)", {"ln(p/kPa) ", "ln (p/p(cr))"}, {"", ""}},
    {Q::slope, By::reduced, "dln(p)/d(1/T)", {"dln(p/kPa) / d(1/T) ", "dln(p/kPa) / d(1/T) "}, {"K", "K"}},
    {Q::hLV, By::energy, "delta(LV)h",
     {"delta(LV)h / (kJ/kmol) ", "delta(LV)h / K", "delta(LV)h / (R T)", "delta(LV)h / (kJ/kg) "}, energies},
    {Q::u, By::energy, "u", {"u / (kJ/kmol) ", "u / K", "u / (R T)", "u / (kJ/kg) "}, energies},
    {Q::h, By::energy, "h", {"h / (kJ/kmol) ", "h / K", "h / (R T)", "h / (kJ/kg) "}, energies},
    {Q::s, By::energy, "s", {"s / (kJ/kmol/K) ", "s / R ", "s / (1/K) ", "s / (kJ/kg/K)) "}, entropies},
    {Q::g, By::energy, "g", {"g / (kJ/kmol) ", "g / K", "g / (R T)", "g / (kJ/kg) "}, energies},
    {Q::a, By::energy, "a", {"a / (kJ/kmol) ", "a / K", "a / (R T)", "a / (kJ/kg) "}, energies},
    {Q::eH, By::energy, "eH", {"eH / (kJ/kmol) ", "eH / K", "eH / (R T)", "eH / (kJ/kg) "}, energies},
    {Q::eU, By::energy, "eU", {"eU / (kJ/kmol) ", "eU / K", "eU / (R T)", "eU / (kJ/kg) "}, energies},
    {Q::e, By::energy, "e", {"e / (kJ/kmol) ", "e / K", "e / (R T)", "e / (kJ/kg) "}, energies},
    {Q::TSurr_s, By::energy, "T(surr)*s",
     {"(T(surr) * s) / (kJ/kmol) ", "(T(surr) * s) / K ", "(T(surr) *s) / (R T) ", "T(surr) * s / (kJ/kg) "},
     energies},
    {Q::cp, By::energy, "cp", {"cp / (kJ/kmol/K) ", "cp / R ", "cp / (1/K) ", "cp / (kJ/kg/K)) "}, entropies},
    {Q::cV, By::energy, "cV", {"cV / (kJ/kmol/K) ", "cV / R ", "cV / (1/K) ", "cV / (kJ/kg/K)) "}, entropies},
    {Q::residual_s, By::energy, "delta s",
     {"delta s / (kJ/kmol/K) ", "delta s / R ", "delta s / (1/K) ", "delta s / (kJ/kg/K)) "}, entropies},
    {Q::residual_h, By::energy, "delta h",
     {"delta h / (kJ/kmol) ", "delta h / K", "delta h / (R T)", "delta h / (kJ/kg) "}, energies},
    {Q::residual_g, By::energy, "delta g",
     {"delta g / (kJ/kmol) ", "delta g / K", "delta g / (R T)", "delta g / (kJ/kg) "}, energies},
    {Q::residual_cp, By::energy, "delta cp",
     {"delta cp / (kJ/kmol/K) ", "delta cp / R ", "delta cp / (1/K) ", "delta cp /(kJ/ (kg K)) "}, entropies},
    {Q::joule_thomson, By::reduced, "delta", {"delta / (K/kPa)", "delta / (K/kPa)"}, {"K/kPa", "K/kPa"}},
};

// Kinds whose axes read otherwise: another quantity's text, or one text of their own.
struct OtherText {
    Kind kind;
    bool y;     // of the Y axis, else of X
    By by;
    int mode;   // 0 to 3; -1: in every mode
    Q quantity;               // whose texts stand there; none: this one
    std::string_view text{};
};
constexpr OtherText others[] = {
    {Kind::sat_eH_T, true, By::energy, -1, Q::e},
    {Kind::sat_eU_T, true, By::energy, -1, Q::e},
    {Kind::eH_h_isotherm, true, By::energy, -1, Q::e},
    {Kind::eH_h_isobar, true, By::energy, -1, Q::e},
    {Kind::eH_s_isotherm, true, By::energy, -1, Q::e},
    {Kind::eH_s_isobar, true, By::energy, -1, Q::e},
    {Kind::bnd_eH_h, true, By::energy, -1, Q::e},
    {Kind::bnd_eH_s, true, By::energy, -1, Q::e},
    {Kind::cV_T_isochore, true, By::energy, 1, Q::none, "cp / R "},
    {Kind::db_cpId_polynomial, true, By::energy, 3, Q::none, "cp / (kJ/kg/K) "},
    {Kind::db_cpId_sinh, true, By::energy, 3, Q::none, "cp / (kJ/kg/K) "},
    {Kind::db_cpL, true, By::energy, 3, Q::none, "cp / (kJ/kg/K) "},
    {Kind::db_cpS, true, By::energy, 3, Q::none, "cp / (kJ/kg/K) "},
    {Kind::db_vL, true, By::volume, 2, Q::none, "v / v(cr), calc."},
    {Kind::sat_slope_invT, false, By::reduced, 0, Q::none, "1/T / (1/K)"},
};
// clang-format on

const AxisRow& row_of(Q quantity) {
    const AxisRow* const row = std::ranges::find(rows, quantity, &AxisRow::quantity);
    return row == std::end(rows) ? rows[0] : *row;
}

std::size_t mode_of(By by, const Units& units) {
    const int mode = by == By::energy                     ? units.EnergyMode
                     : by == By::volume                   ? units.VolumeMode
                     : units.VolumeMode == reduced_volume ? 1
                                                          : 0;
    return static_cast<std::size_t>(std::clamp(mode, 0, 3));
}

std::string_view text_of(Q quantity, const Units& units) {
    const AxisRow& row = row_of(quantity);
    return row.texts[mode_of(row.by, units)];
}

std::string_view axis_text_of(Kind kind, bool y, Q quantity, const Units& units) {
    for (const OtherText& other : others) {
        if (other.kind != kind || other.y != y) continue;
        if (other.mode >= 0 && static_cast<std::size_t>(other.mode) != mode_of(other.by, units)) continue;
        return other.quantity == Q::none ? other.text : text_of(other.quantity, units);
    }
    return text_of(quantity, units);
}

}  // namespace

AxisTexts axis_texts(Kind kind, const Units& units) {
    const KindInfo& info = kind_info(kind);
    return {std::string(axis_text_of(kind, false, info.x, units)),
            std::string(axis_text_of(kind, true, info.y, units))};
}

std::string_view axis_unit(AxisQuantity quantity, const Units& units) {
    const AxisRow& row = row_of(quantity);
    return row.units[mode_of(row.by, units)];
}

std::string_view axis_symbol(AxisQuantity quantity) { return row_of(quantity).symbol; }

std::string kind_title(Kind kind, const Units& units) {
    constexpr std::array<std::string_view, 4> between = {"(kJ/kmol) ", "K ", "(R T) ", "(kJ/kg) "};
    const KindInfo& info = kind_info(kind);
    std::string title(info.title);
    if (info.title_end.empty()) return title;
    title += between[mode_of(By::energy, units)];
    return title + std::string(info.title_end);
}

std::string parameter_text(Section section, double value, const Units& units, const UnitFactors& factors) {
    struct Form {
        Section section;
        double factor;
        std::string_view mask, unit;
    };
    const Form forms[] = {{Section::isothermal, factors.TFactor, "###0.00", "K"},
                          {Section::isobaric, factors.pFactor, "####0.0##", "kPa"},
                          {Section::isochoric, factors.vFactor, "#0.0000##", VolumeName(units)}};
    const Form* const form = std::ranges::find(forms, section, &Form::section);
    if (form == std::end(forms)) return {};
    if (units.VolumeMode == reduced_volume) return formatMask(value * form->factor, "0.0###");
    return formatMask(value * form->factor, form->mask) + " " + std::string(form->unit);
}

}  // namespace quom

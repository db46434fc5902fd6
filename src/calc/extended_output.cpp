// Extended output: derivatives, fugacity and residual functions, mechanical coefficients, points of
// inflection.
#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/calc_titles.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

constexpr std::string_view signed_mask = " 0.0000E+00;-0.0000E+00";
constexpr std::string_view plain_mask = "0.0000E+00";

// Where a row comes from in the result arrays.
double row_value(const PhaseArrays& a, int phase, std::size_t row) {
    if (row < 6) return a.DerivA[phase][row + 1];
    if (row < 9) return a.CoefA[phase][row - 5];
    if (row < 14) return a.Deriv2A[phase][row - 8];
    return a.FuncA[phase][row - 14];
}

// Exponent of the volume unit in a derivative row.
int volume_power(std::size_t row) {
    switch (row) {
        case 0:
        case 4:
            return -1;  // (dp/dV), (dT/dV)
        case 2:
        case 3:
        case 12:
            return 1;  // (dV/dp), (dV/dT), d2V/dT2
        case 9:
        case 13:
            return -2;  // d2p/dV2, d2T/dV2
        default:
            return 0;
    }
}

// Both phases at once; a phase that does not exist has zeros.
struct Extended {
    CalcRun& run;
    bool has_L, has_V;
    PhaseArrays arrays{};
    double vFactor = 1.0;  // per kg instead of per kmol

    double value(std::size_t row, int phase) const {
        const double x = row_value(arrays, phase, row);
        switch (volume_power(row)) {
            case 1:
                return x * vFactor;
            case -1:
                return x / vFactor;
            case -2:
                return x / (vFactor * vFactor);
            default:
                return x;
        }
    }
    void print_values(std::string row, std::size_t number, std::string_view mask) {
        const double L = value(number, phase_L), V = value(number, phase_V);
        row += text_padded(has_L && L != 0.0 ? formatMask(L, mask) : std::string(), 20);
        if (has_V && V != 0.0) row += formatMask(V, mask);
        run.line(trim_right(row));
    }
    void print(std::size_t number, std::string_view mask) {
        print_values(text_padded(extended_label(number), 31) + " : ", number, mask);
    }
    void print_rows(std::initializer_list<std::size_t> numbers, std::string_view mask) {
        for (const std::size_t number : numbers) print(number, mask);
    }
    bool is_set(std::size_t number) const {
        return value(number, phase_L) != 0.0 || value(number, phase_V) != 0.0;
    }
};

void first_box(Extended& x) {
    CalcRun& run = x.run;
    run.line(" ");
    run.line(ruler(74, '*'));
    run.line("diff. Joule-Thomson coefficients; fugacity coeff.; residual functions");
    run.line(ruler(74, '*'));
    if (x.is_set(21)) {
        run.line(std::string(extended_label(21)) + " (Joule-Thomson coefficient [K/kPa]):");
        x.print_values(ruler(34, ' '), 21, signed_mask);
    }
    x.print_rows({14, 15, 16}, signed_mask);
    run.line("Residual functions:");
    x.print_rows({17, 18, 19, 20}, signed_mask);
    run.line(ruler(68, '*'));
    run.line("                    Mechanical coefficients");
    run.line(ruler(68, '*'));
    x.print_rows({6, 7, 8}, plain_mask);
}

void second_box(Extended& x) {
    CalcRun& run = x.run;
    run.line(ruler(68, '*'));
    run.line("                    derivatives with respect to T, p, v");
    run.line(ruler(68, '*'));
    run.line(x.vFactor == 1.0 ? "(molar)" : "(specif.)");
    x.print_rows({0, 1, 2, 3, 4, 5}, signed_mask);
    x.print_rows({9, 12, 13}, signed_mask);
    for (const std::size_t number : {std::size_t{22}, std::size_t{23}}) {
        if (x.is_set(number)) x.print(number, signed_mask);
    }
}

void inflection_lines(Extended& x) {
    CalcRun& run = x.run;
    Session& s = run.s;
    const Inflection points = InflectionV(s, run.T, x.has_V ? phase_V : phase_L);
    const bool specific = x.vFactor != 1.0;
    bool found = false;
    for (std::size_t k = 0; k < 2 && !points.err; ++k) {
        if (!(points.v[k] > 0.0)) continue;
        found = true;
        run.line(std::string(k == 0 ? "1st" : "2nd") +
                 " point of inflection p-v isoth.: v = " + formatMask(points.v[k] * x.vFactor, "#0.0000#") +
                 (specific ? " m^3/kg" : " m^3/kmol") + ", p = " + formatMask(points.pv[k], "#####0") +
                 " kPa (cf. 2nd deriv.= " + formatMask(points.d2[k], "0.0E+00") + ")");
    }
    if (!found) run.line("inflection point of p-v isoth.: No solution found");
}

}  // namespace

void extended_output(CalcRun& run) {
    Session& s = run.s;
    Extended x{.run = run,
               .has_L = run.out.IsL && run.vL > 0.0 && run.L_from_eos,
               .has_V = run.out.IsV && run.vV > 0.0};
    if (!(x.has_L || x.has_V) || !(run.T > 0.0) || !(run.p > 0.0)) return;
    for (const int phase : {phase_L, phase_V}) {
        const double v = phase == phase_L ? run.vL : run.vV;
        if (!(phase == phase_L ? x.has_L : x.has_V)) continue;
        ThermoFunc(s, phase, run.T, run.p, v, x.arrays);
        ExpansionKoeff(phase, run.p, v, x.arrays);
        const int first = phase == phase_L ? slot_alphaL : slot_alphaV;
        for (int k = coef_alpha; k <= coef_beta; ++k) {
            run.out.Result[first + k - 1] = x.arrays.CoefA[phase][k];
        }
        run.out.Result[first + 3] = x.arrays.FuncA[phase][fu_dTdp_h];
    }
    for (std::size_t row = 0; row < ExtendedRows; ++row) {
        run.record.Extended[row] = {single(x.value(row, phase_L)), single(x.value(row, phase_V))};
    }
    if (!run.text) return;
    const int level = s.calc.ExtLevel;
    if (s.units.VolumeMode == 1 && s.units.vFactor > 0.0) x.vFactor = s.units.vFactor;
    if (level == 2 || level == 4) first_box(x);
    if (level == 3 || level == 4) second_box(x);
    if (!s.models.VPhaseOnly) inflection_lines(x);
}

}  // namespace quom

#include "diagrams/curve_generator.h"

#include <array>
#include <exception>

#include "diagrams/curve_run.h"

namespace quom {
namespace {

struct Branch {
    CurveFamily family;
    void (*calculate)(CurveRun&);
};
using F = CurveFamily;
constexpr auto branches = std::to_array<Branch>({
    {F::isotherm_v, curve_isotherm_v},
    {F::isotherm_p, curve_isotherm_p},
    {F::isotherm_functions_p, curve_isotherm_functions_p},
    {F::isotherm_residual, curve_isotherm_residual},
    {F::isotherm_functions_v, curve_isotherm_functions_v},
    {F::isotherm_pairs, curve_isotherm_pairs},
    {F::isobar_volume, curve_isobar_volume},
    {F::isobar_functions, curve_isobar_functions},
    {F::isobar_cp, curve_isobar_cp},
    {F::isobar_residual, curve_isobar_residual},
    {F::joule_thomson, curve_joule_thomson},
    {F::isobar_pairs, curve_isobar_pairs},
    {F::isochore_p, curve_isochore_p},
    {F::isochore_functions, curve_isochore_functions},
    {F::vapor_pressure, curve_vapor_pressure},
    {F::vaporization, curve_vaporization},
    {F::dome_p_v, curve_dome_p_v},
    {F::dome_p, curve_dome_p},
    {F::dome_T, curve_dome_T},
    {F::densities_T, curve_densities_T},
    {F::bisector, curve_bisector},
    {F::boundary_p, curve_boundary_p},
    {F::boundary_T, curve_boundary_T},
    {F::boundary_v, curve_boundary_v},
    {F::boundary_pairs, curve_boundary_pairs},
    {F::inversion_T, curve_inversion_T},
    {F::inversion_p, curve_inversion_p},
    {F::database, curve_database},
    {F::process_line, curve_process_line},
});

}  // namespace

CurveResult CalcCurve(const Fluid& fluid, const CurveInput& input) {
    CurveRun run(fluid, input);
    run.out.curve.Par = run.kind.par;
    run.out.curve.Tag = run.kind.tag;
    if (run.dx == 0.0 || run.dy == 0.0) return run.out;
    if (input.TieLine) {
        tie_line_curve(run);
        return run.out;
    }
    const CurveFamily family = input.line == Kind::none ? run.kind.family : kind_info(input.line).family;
    for (const Branch& branch : branches)
        if (branch.family == family) branch.calculate(run);
    return run.out;
}

}  // namespace quom

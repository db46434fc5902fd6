#include "diagrams/diagram_kinds.h"

#include <algorithm>
#include <array>

namespace quom {
namespace {

using K = Kind;
using S = Section;
using Q = AxisQuantity;
using F = CurveFamily;

// clang-format off
constexpr auto kinds = std::to_array<KindInfo>({
    {K::p_v, "pv", S::isothermal, Q::v, Q::p, F::isotherm_v, K::sat_p_v, par_T, 1, par_T, par_none, ""},
    {K::pv_p, "qp", S::isothermal, Q::p, Q::pv, F::isotherm_p, K::sat_pv_p, par_T, 3, par_T, par_none, ""},
    {K::T_v, "Tv", S::isobaric, Q::v, Q::T, F::isobar_volume, K::sat_T_v, par_p, 4, par_p, par_none, ""},
    {K::T_rho, "Tr", S::isobaric, Q::rho, Q::T, F::isobar_volume, K::sat_T_rho, par_p, 5, par_p, par_none, ""},
    {K::p_T, "pT", S::isochoric, Q::T, Q::p, F::isochore_p, K::sat_p_T, par_v, 6, par_v, par_none, ""},
    {K::sat_p_v, "pv", S::projection, Q::v, Q::p, F::dome_p_v, K::sat_p_v, par_T, 1, par_T, par_none, ""},
    {K::sat_T_v, "Tv", S::projection, Q::v, Q::T, F::dome_T, K::sat_T_v, par_p, 4, par_p, par_none, ""},
    {K::sat_rho_T, "rT", S::projection, Q::T, Q::rho, F::densities_T, K::sat_rho_T, par_p, 0, par_p, par_none, ""},
    {K::sat_p_T, "pT", S::projection, Q::T, Q::p, F::vapor_pressure, K::sat_p_T, par_v, 6, par_none, par_none, ""},
    {K::sat_lnp_invT, "0T", S::projection, Q::inverse_T, Q::ln_p, F::vapor_pressure, K::none, par_none, 0, par_none, par_none, ""},
    {K::sat_slope_invT, "0T", S::projection, Q::inverse_T, Q::slope, F::vapor_pressure, K::none, par_none, 0, par_none, par_none, ""},
    {K::sat_T_rho, "Tr", S::projection, Q::rho, Q::T, F::dome_T, K::sat_T_rho, par_p, 5, par_p, par_none, ""},
    {K::hLV_T, "hT", S::projection, Q::T, Q::hLV, F::vaporization, K::none, par_p, 12, par_p, par_none, ""},
    {K::u_T, "hT", S::isobaric, Q::T, Q::u, F::isobar_functions, K::bnd_u_T, par_p, 10, par_p, par_none, ""},
    {K::h_T, "hT", S::isobaric, Q::T, Q::h, F::isobar_functions, K::sat_h_T, par_p, 12, par_p, par_none, ""},
    {K::s_T, "sT", S::isobaric, Q::T, Q::s, F::isobar_functions, K::sat_s_T, par_p, 13, par_p, par_none, ""},
    {K::g_T, "hT", S::isobaric, Q::T, Q::g, F::isobar_functions, K::sat_g_T, par_p, 14, par_p, par_none, ""},
    {K::eH_T, "hT", S::isobaric, Q::T, Q::eH, F::isobar_functions, K::sat_eH_T, par_p, 15, par_p, par_none, ""},
    {K::cp_T, "cT", S::isobaric, Q::T, Q::cp, F::isobar_cp, K::sat_cp_T, par_p, 11, par_p, par_none, ""},
    {K::eU_T, "hT", S::isobaric, Q::T, Q::eU, F::isobar_functions, K::sat_eU_T, par_p, 24, par_p, par_none, ""},
    {K::eH_h_isotherm, "hh", S::isothermal, Q::h, Q::eH, F::isotherm_pairs, K::bnd_eH_h, par_p, 53, par_p, par_T, ""},
    {K::eH_h_isobar, "hh", S::isobaric, Q::h, Q::eH, F::isobar_pairs, K::bnd_eH_h, par_T, 53, par_T, par_p, ""},
    {K::eH_s_isobar, "hh", S::isobaric, Q::TSurr_s, Q::eH, F::isobar_pairs, K::bnd_eH_s, par_T, 52, par_T, par_p, ""},
    {K::h_s_isobar, "hs", S::isobaric, Q::s, Q::h, F::isobar_pairs, K::bnd_h_s, par_T, 51, par_T, par_p, ""},
    {K::a_T, "hT", S::isobaric, Q::T, Q::a, F::isobar_functions, K::bnd_a_T, par_p, 0, par_p, par_none, ""},
    {K::rho_p, "rp", S::isothermal, Q::p, Q::rho, F::isotherm_p, K::sat_rho_p, par_T, 2, par_T, par_none, ""},
    {K::sat_rho_p, "rp", S::projection, Q::p, Q::rho, F::dome_p, K::sat_rho_p, par_T, 2, par_T, par_none, ""},
    {K::residual_s_T, "sT", S::isobaric, Q::T, Q::residual_s, F::isobar_residual, K::none, par_none, 0, par_p, par_none, ""},
    {K::residual_h_T, "hT", S::isobaric, Q::T, Q::residual_h, F::isobar_residual, K::none, par_none, 0, par_p, par_none, ""},
    {K::residual_g_T, "hT", S::isobaric, Q::T, Q::residual_g, F::isobar_residual, K::none, par_none, 0, par_p, par_none, ""},
    {K::residual_cp_T, "cT", S::isobaric, Q::T, Q::residual_cp, F::isobar_residual, K::none, par_none, 0, par_p, par_none, ""},
    {K::joule_thomson_T, "0T", S::isobaric, Q::T, Q::joule_thomson, F::joule_thomson, K::none, par_none, 0, par_p, par_none, ""},
    {K::residual_s_p, "sp", S::isothermal, Q::p, Q::residual_s, F::isotherm_residual, K::none, par_none, 0, par_T, par_none, ""},
    {K::residual_h_p, "hp", S::isothermal, Q::p, Q::residual_h, F::isotherm_residual, K::none, par_none, 0, par_T, par_none, ""},
    {K::residual_g_p, "hp", S::isothermal, Q::p, Q::residual_g, F::isotherm_residual, K::none, par_none, 0, par_T, par_none, ""},
    {K::residual_cp_p, "cp", S::isothermal, Q::p, Q::residual_cp, F::isotherm_residual, K::none, par_none, 0, par_T, par_none, ""},
    {K::bnd_a_p, "hp", S::projection, Q::p, Q::a, F::boundary_p, K::bnd_a_p, par_none, 0, par_T, par_none, ""},
    {K::bnd_u_p, "hp", S::projection, Q::p, Q::u, F::boundary_p, K::bnd_u_p, par_none, 0, par_T, par_none, ""},
    {K::bnd_h_p, "hp", S::projection, Q::p, Q::h, F::boundary_p, K::bnd_h_p, par_none, 31, par_T, par_none, ""},
    {K::bnd_s_p, "sp", S::projection, Q::p, Q::s, F::boundary_p, K::bnd_s_p, par_none, 32, par_T, par_none, ""},
    {K::bnd_cp_p, "cp", S::projection, Q::p, Q::cp, F::boundary_p, K::bnd_cp_p, par_none, 35, par_T, par_none, ""},
    {K::bnd_g_p, "hp", S::projection, Q::p, Q::g, F::boundary_p, K::bnd_g_p, par_none, 33, par_T, par_none, ""},
    {K::bnd_eH_p, "hp", S::projection, Q::p, Q::eH, F::boundary_p, K::bnd_eH_p, par_none, 34, par_T, par_none, ""},
    {K::bnd_eU_p, "hp", S::projection, Q::p, Q::eU, F::boundary_p, K::bnd_eU_p, par_none, 0, par_T, par_none, ""},
    {K::bisector, "rT", S::projection, Q::T, Q::rho, F::bisector, K::none, par_none, 0, par_p, par_none, ""},
    {K::bnd_cV_T, "cT", S::projection, Q::T, Q::cV, F::boundary_T, K::bnd_cV_T, par_none, 0, par_p, par_none, ""},
    {K::bnd_cV_v, "cv", S::projection, Q::v, Q::cV, F::boundary_v, K::bnd_cV_v, par_none, 0, par_T, par_none, ""},
    {K::sat_h_T, "hT", S::projection, Q::T, Q::h, F::boundary_T, K::sat_h_T, par_p, 12, par_p, par_none, ""},
    {K::sat_s_T, "sT", S::projection, Q::T, Q::s, F::boundary_T, K::sat_s_T, par_p, 13, par_p, par_none, ""},
    {K::sat_cp_T, "cT", S::projection, Q::T, Q::cp, F::boundary_T, K::sat_cp_T, par_p, 11, par_p, par_none, ""},
    {K::sat_g_T, "hT", S::projection, Q::T, Q::g, F::boundary_T, K::sat_g_T, par_p, 14, par_p, par_none, ""},
    {K::sat_eH_T, "hT", S::projection, Q::T, Q::eH, F::boundary_T, K::sat_eH_T, par_p, 15, par_p, par_none, ""},
    {K::sat_eU_T, "hT", S::projection, Q::T, Q::eU, F::boundary_T, K::sat_eU_T, par_p, 24, par_p, par_none, ""},
    {K::bnd_eH_h, "hh", S::projection, Q::h, Q::eH, F::boundary_pairs, K::bnd_eH_h, par_none, 0, par_p, par_none, ""},
    {K::bnd_a_v, "hv", S::projection, Q::v, Q::a, F::boundary_v, K::bnd_a_v, par_none, 0, par_T, par_none, ""},
    {K::bnd_a_T, "hT", S::projection, Q::T, Q::a, F::boundary_T, K::bnd_a_T, par_none, 23, par_p, par_none, ""},
    {K::bnd_u_T, "hT", S::projection, Q::T, Q::u, F::boundary_T, K::bnd_u_T, par_none, 21, par_p, par_none, ""},
    {K::bnd_u_v, "hv", S::projection, Q::v, Q::u, F::boundary_v, K::bnd_u_v, par_none, 0, par_T, par_none, ""},
    {K::bnd_s_v, "sv", S::projection, Q::v, Q::s, F::boundary_v, K::bnd_s_v, par_none, 0, par_T, par_none, ""},
    {K::bnd_eU_v, "hv", S::projection, Q::v, Q::eU, F::boundary_v, K::bnd_eU_v, par_none, 0, par_T, par_none, ""},
    {K::inversion_p_T, "pT", S::inversion, Q::T, Q::p, F::inversion_T, K::none, par_v, 0, par_v, par_none, ""},
    {K::sat_pv_p, "qp", S::projection, Q::p, Q::pv, F::dome_p, K::sat_pv_p, par_T, 3, par_T, par_none, ""},
    {K::h_s_isotherm, "hs", S::isothermal, Q::s, Q::h, F::isotherm_pairs, K::bnd_h_s, par_p, 51, par_p, par_T, ""},
    {K::eH_s_isotherm, "hh", S::isothermal, Q::TSurr_s, Q::eH, F::isotherm_pairs, K::bnd_eH_s, par_p, 52, par_p, par_T, ""},
    {K::bnd_h_s, "hs", S::projection, Q::s, Q::h, F::boundary_pairs, K::bnd_h_s, par_none, 0, par_p, par_none, ""},
    {K::bnd_eH_s, "hh", S::projection, Q::TSurr_s, Q::eH, F::boundary_pairs, K::bnd_eH_s, par_none, 0, par_p, par_none, ""},
    {K::a_p, "hp", S::isothermal, Q::p, Q::a, F::isotherm_functions_p, K::bnd_a_p, par_T, 0, par_T, par_none, ""},
    {K::u_p, "hp", S::isothermal, Q::p, Q::u, F::isotherm_functions_p, K::bnd_u_p, par_T, 0, par_T, par_none, ""},
    {K::h_p, "hp", S::isothermal, Q::p, Q::h, F::isotherm_functions_p, K::bnd_h_p, par_T, 31, par_T, par_none, ""},
    {K::s_p, "sp", S::isothermal, Q::p, Q::s, F::isotherm_functions_p, K::bnd_s_p, par_T, 32, par_T, par_none, ""},
    {K::g_p, "hp", S::isothermal, Q::p, Q::g, F::isotherm_functions_p, K::bnd_g_p, par_T, 33, par_T, par_none, ""},
    {K::eH_p, "hp", S::isothermal, Q::p, Q::eH, F::isotherm_functions_p, K::bnd_eH_p, par_T, 34, par_T, par_none, ""},
    {K::cp_p, "cp", S::isothermal, Q::p, Q::cp, F::isotherm_functions_p, K::bnd_cp_p, par_T, 35, par_T, par_none, ""},
    {K::eU_p, "hp", S::isothermal, Q::p, Q::eU, F::isotherm_functions_p, K::bnd_eU_p, par_T, 0, par_T, par_none, ""},
    {K::a_v, "hv", S::isothermal, Q::v, Q::a, F::isotherm_functions_v, K::bnd_a_v, par_p, 43, par_p, par_T, ""},
    {K::u_v, "hv", S::isothermal, Q::v, Q::u, F::isotherm_functions_v, K::bnd_u_v, par_p, 41, par_p, par_T, ""},
    {K::s_v, "sv", S::isothermal, Q::v, Q::s, F::isotherm_functions_v, K::bnd_s_v, par_p, 42, par_p, par_T, ""},
    {K::cV_v, "cv", S::isothermal, Q::v, Q::cV, F::isotherm_functions_v, K::bnd_cV_v, par_p, 45, par_p, par_T, ""},
    {K::eU_v, "hv", S::isothermal, Q::v, Q::eU, F::isotherm_functions_v, K::bnd_eU_v, par_p, 44, par_p, par_T, ""},
    {K::eH_T_isochore, "hT", S::isochoric, Q::T, Q::eH, F::isochore_functions, K::sat_eH_T, par_p, 0, par_v, par_none, ""},
    {K::eU_T_isochore, "hT", S::isochoric, Q::T, Q::eU, F::isochore_functions, K::sat_eU_T, par_p, 24, par_v, par_none, ""},
    {K::a_T_isochore, "hT", S::isochoric, Q::T, Q::a, F::isochore_functions, K::bnd_a_T, par_p, 23, par_v, par_none, ""},
    {K::u_T_isochore, "hT", S::isochoric, Q::T, Q::u, F::isochore_functions, K::bnd_u_T, par_p, 21, par_v, par_none, ""},
    {K::s_T_isochore, "sT", S::isochoric, Q::T, Q::s, F::isochore_functions, K::sat_s_T, par_p, 22, par_v, par_none, ""},
    {K::cV_T_isochore, "cT", S::isochoric, Q::T, Q::cV, F::isochore_functions, K::bnd_cV_T, par_p, 25, par_v, par_none, ""},
    {K::inversion_pv_p, "qp", S::inversion, Q::p, Q::pv, F::inversion_p, K::none, par_none, 0, par_T, par_none, ""},
    {K::line_straight, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::line_isotherm, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::line_isobar, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::line_isochore, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::line_isentrope, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::line_two_phase, "", S::none, Q::none, Q::none, F::process_line, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_rhoL, "rT", S::database, Q::T, Q::rho, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_vL, "vT", S::database, Q::T, Q::v, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_cpId_polynomial, "cT", S::database, Q::T, Q::cp, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_cpL, "cT", S::database, Q::T, Q::cp, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_cpS, "cT", S::database, Q::T, Q::cp, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_hLV, "hT", S::database, Q::T, Q::hLV, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_frost_kalkwarf, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_wagner, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_antoine_low, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_antoine_high, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_rhoS, "rT", S::database, Q::T, Q::rho, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_cpId_sinh, "cT", S::database, Q::T, Q::cp, F::database, K::none, par_none, 0, par_none, par_none, ""},
    {K::db_august, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_kfw, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_kfr, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
    {K::db_thompson, "pT", S::database, Q::T, Q::p, F::database, K::none, par_v, 0, par_none, par_none, ""},
});
// clang-format on

constexpr KindInfo no_kind{};

}  // namespace

const KindInfo& kind_info(Kind kind) {
    const auto* found = std::ranges::lower_bound(kinds, kind, {}, &KindInfo::kind);
    return found != kinds.end() && found->kind == kind ? *found : no_kind;
}

std::span<const KindInfo> kind_list() { return kinds; }

Kind kind_of(int number) {
    const auto* found =
        std::ranges::find(kinds, number, [](const KindInfo& k) { return static_cast<int>(k.kind); });
    return found != kinds.end() ? found->kind : Kind::none;
}

}  // namespace quom

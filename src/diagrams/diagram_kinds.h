// The kinds of diagrams, in one table: what the axes show, which section, which curve bounds the phases, how
// a process line runs through it. Menus, curves, marks, files and the console ask here; no other file
// compares kinds with numbers.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quom {

// Names: y_x, with "sat_" for a curve of the phase equilibrium, "_iso.." where one pair of axes has several
// sections, "bnd_" for boundaries that marks alone reach.
enum class Kind : std::int16_t {
    none = 0,
    p_v = 1,
    pv_p = 2,
    T_v = 3,
    T_rho = 4,
    p_T = 5,
    sat_p_v = 6,
    sat_T_v = 7,
    sat_rho_T = 8,
    sat_p_T = 9,
    sat_lnp_invT = 10,
    sat_slope_invT = 11,
    sat_T_rho = 12,
    hLV_T = 13,
    u_T = 14,
    h_T = 15,
    s_T = 16,
    g_T = 17,
    eH_T = 18,
    cp_T = 19,
    eU_T = 20,
    eH_h_isotherm = 21,
    eH_h_isobar = 22,
    eH_s_isobar = 23,
    h_s_isobar = 24,
    a_T = 25,
    rho_p = 26,
    sat_rho_p = 27,
    residual_s_T = 30,
    residual_h_T = 31,
    residual_g_T = 32,
    residual_cp_T = 33,
    joule_thomson_T = 34,
    residual_s_p = 40,
    residual_h_p = 41,
    residual_g_p = 42,
    residual_cp_p = 43,
    bnd_a_p = 68,
    bnd_u_p = 69,
    bnd_h_p = 70,
    bnd_s_p = 71,
    bnd_cp_p = 72,
    bnd_g_p = 73,
    bnd_eH_p = 74,
    bnd_eU_p = 75,
    bisector = 80,
    bnd_cV_T = 88,
    bnd_cV_v = 89,
    sat_h_T = 90,
    sat_s_T = 91,
    sat_cp_T = 92,
    sat_g_T = 93,
    sat_eH_T = 94,
    sat_eU_T = 95,
    bnd_eH_h = 96,
    bnd_a_v = 97,
    bnd_a_T = 98,
    bnd_u_T = 99,
    bnd_u_v = 100,
    bnd_s_v = 101,
    bnd_eU_v = 102,
    inversion_p_T = 105,
    sat_pv_p = 106,
    h_s_isotherm = 107,
    eH_s_isotherm = 109,
    bnd_h_s = 120,
    bnd_eH_s = 121,
    a_p = 148,
    u_p = 149,
    h_p = 150,
    s_p = 151,
    g_p = 152,
    eH_p = 153,
    cp_p = 154,
    eU_p = 155,
    a_v = 156,
    u_v = 157,
    s_v = 158,
    cV_v = 159,
    eU_v = 160,
    eH_T_isochore = 180,
    eU_T_isochore = 181,
    a_T_isochore = 182,
    u_T_isochore = 183,
    s_T_isochore = 184,
    cV_T_isochore = 185,
    inversion_pv_p = 190,
    line_straight = 201,
    line_isotherm = 202,
    line_isobar = 204,
    line_isochore = 206,
    line_isentrope = 210,  // and isenthalpe
    line_two_phase = 211,  // isochore, isentrope, isenthalpe between the saturated states
    db_rhoL = 300,
    db_vL = 301,
    db_cpId_polynomial = 302,
    db_cpL = 303,
    db_cpS = 304,
    db_hLV = 305,
    db_frost_kalkwarf = 306,
    db_wagner = 307,
    db_antoine_low = 308,
    db_antoine_high = 309,
    db_rhoS = 310,
    db_cpId_sinh = 311,
    db_august = 312,
    db_kfw = 313,
    db_kfr = 314,
    db_thompson = 315,
};

enum class Section : std::int16_t {
    none = 0,
    isothermal = 1,
    isobaric = 2,
    isochoric = 3,
    projection = 5,  // of the phase equilibrium; no parameter
    inversion = 6,
    database = 7,
};

// What an axis shows.
enum class AxisQuantity {
    none,
    v,
    rho,
    pv,
    p,
    T,
    inverse_T,
    ln_p,
    slope,
    hLV,
    u,
    h,
    s,
    g,
    a,
    eH,
    eU,
    e,
    TSurr_s,
    cp,
    cV,
    residual_s,
    residual_h,
    residual_g,
    residual_cp,
    joule_thomson,
};

// Pairs of limits that axes take from the table of ranges.
enum class RangePair {
    none,  // the range in force stays
    T,
    p,
    p_from_T,  // maximum of p; the minimum is that of T
    v,
    rho,
    pv,
    ln_p,
    inverse_T,
    slope,
    hLV,
    T_residual,  // maximum of its own; the minimum is that of T
    joule_thomson,
    a,
    s,
    h,
    cp,
    residual_s,
    residual_h,
    exergy,
    inversion_T,  // from 0
    inversion_p,  // from 0
    function,     // of a database function: its validity, its values there
};
inline constexpr std::size_t range_pair_count = 23;

// How a curve of the kind is computed.
enum class CurveFamily {
    none,
    isotherm_v,            // p over v
    isotherm_p,            // pv, rho over p
    isotherm_functions_p,  // a .. eU over p
    isotherm_residual,     // residual functions over p
    isotherm_functions_v,  // a .. eU over v
    isotherm_pairs,        // a function over another one, along p
    isobar_volume,         // T over v, rho
    isobar_functions,      // u .. a over T
    isobar_cp,
    isobar_residual,
    joule_thomson,
    isobar_pairs,  // a function over another one, along T
    isochore_p,
    isochore_functions,
    vapor_pressure,  // p(LV), ln p(LV), its slope by the concept
    vaporization,    // delta(LV)h
    dome_p_v,        // coexistence over v
    dome_p,          // coexistence, walked along p
    dome_T,          // coexistence, walked along T
    densities_T,     // both saturated densities over T
    bisector,
    boundary_p,  // functions of the saturated states over p
    boundary_T,
    boundary_v,
    boundary_pairs,
    inversion_T,  // Joule-Thomson inversion, p over T
    inversion_p,  // pv over p
    database,
    process_line,
};

// What the hidden value Par (or Tag) of a point is.
enum ParKind : std::int16_t { par_none = 0, par_T = -1, par_p = -2, par_v = -3, par_fraction = -4 };

struct KindInfo {
    Kind kind = Kind::none;
    std::string_view axis_code;  // family of the units of the axes, y before x; kinds with equal codes share
                                 // a sheet, those of "0T" only with themselves
    Section section = Section::none;
    AxisQuantity x = AxisQuantity::none, y = AxisQuantity::none;
    CurveFamily family = CurveFamily::none;
    Kind boundary = Kind::none;                   // coexistence curve of these axes; none without one
    std::int16_t process_par = par_none;          // Par of a homogeneous process line; none: it has none
    std::int16_t solver_code = 0;                 // of the external solver, 0 none
    std::int16_t par = par_none, tag = par_none;  // Par and Tag of the kind's own curve
    RangePair x_range = RangePair::none, y_range = RangePair::none;
    std::string_view title;
    std::string_view title_end{};  // of pairs of functions, behind the unit of energies: see kind_title
};
// Row of a kind; that of Kind::none for one without a row.
const KindInfo& kind_info(Kind kind);
std::span<const KindInfo> kind_list();  // ascending numbers
Kind kind_of(int number);               // Kind::none for a number without a row

}  // namespace quom

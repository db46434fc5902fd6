// Every point of every kind is a state that has what the axes show: checked against the single calls of the
// engine.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "diagrams/curve_support.h"
#include "diagrams/point_claims.h"
#include "engine/saturation.h"

namespace quom {
namespace {

using test::Setting;
using F = CurveFamily;
constexpr int Dens = 60;

// Fewest points of a curve at Dens 60: of the stable curve and of the loop, below and above the critical
// point; none: 0.
struct Fewest {
    F family;
    std::size_t stable, loop = 0;
};
constexpr Fewest fewest[] = {
    {F::isotherm_v, 12},
    {F::isotherm_p, 55, 20},
    {F::isotherm_functions_p, 55, 5},
    {F::isotherm_residual, 55},
    {F::isotherm_functions_v, 20, 5},
    {F::isotherm_pairs, 58},
    {F::isobar_volume, 40, 140},
    {F::isobar_functions, 40, 700},
    {F::isobar_cp, 40, 4},
    {F::isobar_residual, 40},
    {F::joule_thomson, 40},
    {F::isobar_pairs, 58, 700},
    {F::isochore_p, 30},
    {F::isochore_functions, 12},
    {F::vapor_pressure, 30},
    {F::vaporization, 30},
    {F::dome_p_v, 8},
    {F::dome_p, 40},
    {F::dome_T, 15},
    {F::densities_T, 40},
    {F::bisector, 8},
    {F::boundary_p, 25},
    {F::boundary_T, 25},
    {F::boundary_v, 15},
    {F::boundary_pairs, 100},
    {F::inversion_T, 30},
    {F::inversion_p, 10},
};
const Fewest& fewest_of(F family) { return *std::ranges::find(fewest, family, &Fewest::family); }

bool strictly_inside(float low, float value, float high) { return value > low && value < high; }

// Computes the curve and compares every point; tells the first three that are wrong. Number of points.
std::size_t check(const Setting& setting, const CurveInput& in, std::size_t at_least) {
    const CurveResult result = CalcCurve(*setting.fluid, in);
    const auto& points = result.curve.points;
    std::string what = setting.name + ", kind " + std::to_string(static_cast<int>(in.kind)) + ", line " +
                       std::to_string(static_cast<int>(in.line)) + ", units " +
                       std::to_string(in.units.EnergyMode) + std::to_string(in.units.VolumeMode) + ", T " +
                       std::to_string(in.T) + ", p " + std::to_string(in.p) + ", v " + std::to_string(in.v) +
                       ", fraction " + std::to_string(in.VaporFraction) + (in.SCurve ? ", loop" : "");
    EXPECT_GE(points.size(), at_least) << what;
    std::size_t wrong = 0;
    for (const CurvePoint& point : points) {
        const std::string broken = test::broken_claim(*setting.fluid, in, point);
        if (!broken.empty() && ++wrong <= 3) ADD_FAILURE() << what << ": " << broken;
    }
    EXPECT_EQ(wrong, 0u) << what << ", of " << points.size();
    const CurveRange& g = in.range;
    const auto both = [&](const CurvePoint& c) {
        return strictly_inside(g.XMin, c.X, g.XMax) && strictly_inside(g.YMin, c.Y, g.YMax);
    };
    if (std::ranges::any_of(points, both) && !in.SCurve) {
        EXPECT_FALSE(result.Outside) << what;
    }
    return points.size();
}

struct Cubic {
    const char* name;
    Eos code;
};
constexpr Cubic codes[] = {
    {"Berthelot", Eos::berthelot}, {"Soave", Eos::soave}, {"Peng/Robinson", Eos::peng_robinson}};
constexpr std::pair<const char*, std::string_view> substances[] = {{"propane", test::propane},
                                                                   {"water", test::water},
                                                                   {"methane", test::methane},
                                                                   {"benzene", test::benzene},
                                                                   {"ammonia", test::ammonia}};

std::vector<Setting> settings(bool cubic) {
    std::vector<Setting> all;
    for (const auto& [name, cas] : substances) {
        const SubstanceConstants substance = test::starter_substance(cas);
        const auto add = [&](const char* eos, std::shared_ptr<const Fluid> fluid, Units units) {
            all.push_back({std::string(name) + ", " + eos, std::move(fluid), units});
        };
        if (!cubic) {
            const auto fluid = test::starter_fluid(substance, Eos::virial_peng_robinson);
            for (const Units& units : {test::molar, test::specific}) add("virial", fluid, units);
            continue;
        }
        for (const Cubic& row : codes) {
            const auto fluid = test::starter_fluid(substance, row.code);
            for (const Units& units : {test::molar, test::specific, test::reduced})
                add(row.name, fluid, units);
        }
    }
    if (!cubic) return all;
    const EosInput typed{.JiP3 = 0.45, .JiP4 = 0.10, .JiP5 = 0.0, .JiZc = 0.290, .JiB1 = 0.0};
    const SubstanceConstants propane = test::starter_substance(test::propane);
    all.push_back(
        {"propane, Tovarn/Ji 1", test::starter_fluid(propane, Eos::tovarn_ji_1, typed), test::per_R});
    ModelSelection partial = test::starter_fluid(propane, Eos::peng_robinson)->models;
    partial.Konzept = false;
    partial.EVPKode = Evp::wagner;
    all.push_back({"propane, PARTIAL", make_fluid({propane, partial, {}, {}}), test::molar});
    return all;
}

struct Parameter {
    double T = 0, p = 0, v = 0;  // over the critical point
};
// Parameters of a section, those of its loop last.
std::vector<Parameter> parameters(Section section, bool loop) {
    switch (section) {
        case Section::isothermal:
            if (loop) return {{.T = 0.9}, {.T = 0.7}};
            return {{.T = 0.8}, {.T = 1.0}, {.T = 1.15}};
        case Section::isobaric:
            if (loop) return {{.p = 0.5}};
            return {{.p = 0.3}, {.p = 1.4}};
        case Section::isochoric:
            return {{.v = 0.45}, {.v = 1.0}, {.v = 4.0}};
        default:
            return {{}};
    }
}

void set(CurveInput& in, const Setting& s, const Parameter& at) {
    in.T = at.T * s.Tcr();
    in.p = at.p * s.pcr();
    in.v = at.v * s.vcr();
}

bool of_section(const KindInfo& kind) {
    return kind.section == Section::isothermal || kind.section == Section::isobaric ||
           kind.section == Section::isochoric;
}

TEST(EveryPoint, Sections) {
    std::size_t points = 0;
    for (const Setting& s : settings(true))
        for (const KindInfo& kind : kind_list()) {
            if (!of_section(kind)) continue;
            for (const Parameter& at : parameters(kind.section, false)) {
                CurveInput in = test::curve_input(s, kind.kind, Dens);
                set(in, s, at);
                points += check(s, in, fewest_of(kind.family).stable);
            }
        }
    EXPECT_GT(points, 47u * 90u * 40u);
}

// An equation of the V-phase only.
TEST(EveryPoint, SectionsOfTheVapor) {
    for (const Setting& s : settings(false))
        for (const KindInfo& kind : kind_list()) {
            if (!of_section(kind)) continue;
            for (Parameter at : parameters(kind.section, false)) {
                CurveInput in = test::curve_input(s, kind.kind, Dens);
                at.v *= 2.0;
                at.p *= 0.5;
                set(in, s, at);
                check(s, in, 20);
            }
        }
}

TEST(EveryPoint, Loops) {
    for (const Setting& s : settings(true))
        for (const KindInfo& kind : kind_list()) {
            if (!of_section(kind) || fewest_of(kind.family).loop == 0) continue;
            for (const Parameter& at : parameters(kind.section, true)) {
                CurveInput in = test::curve_input(s, kind.kind, Dens);
                set(in, s, at);
                in.SCurve = true;
                check(s, in, fewest_of(kind.family).loop);
            }
        }
}

TEST(EveryPoint, IsothermWithItsLoop) {
    for (const Setting& s : settings(true)) {
        CurveInput in = test::curve_input(s, Kind::p_v, Dens);
        in.T = 0.85 * s.Tcr();
        in.options.chkSKurveOhneKonnode = true;
        check(s, in, 50);
    }
}

TEST(EveryPoint, AlongThePhaseEquilibrium) {
    for (const Setting& s : settings(true))
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::projection && kind.section != Section::inversion) continue;
            const bool slope = kind.y == AxisQuantity::slope;  // of the vapor pressure equation alone
            if (slope && s.fluid->models.Konzept) continue;
            for (const double fraction : {0.0, 1.0, 0.3}) {
                CurveInput in = test::curve_input(s, kind.kind, Dens);
                in.VaporFraction = fraction;
                if (kind.section == Section::inversion) {  // it reaches from 0.7 to some 5 T(cr), 12 p(cr)
                    (kind.x == AxisQuantity::T ? in.range.XMax : in.range.YMax) *= 4.0f;
                    (kind.x == AxisQuantity::T ? in.range.YMax : in.range.XMax) *= 10.0f;
                }
                check(s, in, fewest_of(kind.family).stable);
            }
        }
}

// Each function of the database, wherever one of the substances has it.
TEST(EveryPoint, DatabaseFunctions) {
    std::map<Kind, std::size_t> most;
    for (const Setting& s : settings(true))
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::database) continue;
            CurveInput in = test::curve_input(s, kind.kind, Dens);
            in.range.XMax *= 0.75f;
            in.range.XMin *= kind.kind == Kind::db_rhoS || kind.kind == Kind::db_cpS ? 0.2f : 1.0f;
            most[kind.kind] = std::max(most[kind.kind], check(s, in, 0));
        }
    for (const auto& [kind, points] : most) EXPECT_GE(points, 55u) << static_cast<int>(kind);
}

struct Line {
    Kind line;
    ProcessKind process;
    bool ScanT;
    Phase phase;
    double T1, p1, To;  // over the critical point; To a T or a p
    std::vector<Kind> diagrams;
    bool Homogen = true;
};
const std::vector<Line>& lines() {
    using K = Kind;
    using P = ProcessKind;
    static const std::vector<Line> all{
        {K::line_isotherm,
         P::isotherm,
         false,
         phase_V,
         1.1,
         0.1,
         1.3,
         {K::p_v, K::pv_p, K::rho_p, K::h_p, K::s_p, K::eH_p, K::cp_p, K::h_s_isotherm, K::eH_h_isotherm,
          K::u_v}},
        {K::line_isotherm,
         P::isotherm,
         false,
         phase_V,
         0.85,
         0.3,
         0.05,
         {K::p_v, K::pv_p, K::h_p, K::g_p, K::eU_p}},
        {K::line_isotherm,
         P::isotherm,
         false,
         phase_L,
         0.85,
         1.3,
         0.5,
         {K::p_v, K::rho_p, K::h_p, K::a_p, K::u_p}},
        {K::line_isobar,
         P::isobar,
         true,
         phase_V,
         0.9,
         0.1,
         1.2,
         {K::T_v, K::T_rho, K::h_T, K::s_T, K::g_T, K::eH_T, K::eU_T, K::u_T, K::a_T, K::cp_T,
          K::cV_T_isochore, K::h_s_isobar, K::eH_s_isobar, K::eH_h_isobar}},
        {K::line_isobar, P::isobar, true, phase_L, 0.8, 1.3, 0.6, {K::T_v, K::T_rho, K::h_T, K::cp_T}},
        {K::line_isochore,
         P::isochore,
         true,
         phase_V,
         0.9,
         0.1,
         1.2,
         {K::p_T, K::u_T_isochore, K::s_T_isochore, K::h_T}},
        {K::line_isochore, P::isochore, false, phase_V, 0.9, 0.1, 0.2, {K::p_T, K::u_T_isochore, K::h_p}},
        {K::line_isentrope,
         P::isentrope,
         false,
         phase_V,
         1.1,
         0.1,
         0.5,
         {K::p_T, K::h_p, K::T_v, K::p_v, K::pv_p, K::s_p, K::h_T, K::s_T}},
        {K::line_isentrope, P::isentrope, true, phase_V, 1.1, 0.1, 1.2, {K::p_T, K::h_p, K::T_v, K::s_T}},
        {K::line_isentrope, P::isentrope, false, phase_L, 0.7, 0.5, 1.4, {K::p_T, K::rho_p, K::s_p}},
        {K::line_isentrope,
         P::isenthalpe,
         false,
         phase_V,
         1.2,
         1.0,
         0.1,
         {K::p_T, K::h_p, K::T_v, K::h_T, K::s_T}},
        {K::line_two_phase,
         P::isochore,
         true,
         phase_V,
         0.8,
         0.0,
         0.7,
         {K::p_T, K::T_v, K::h_T, K::u_T_isochore},
         false},
        {K::line_two_phase,
         P::isentrope,
         true,
         phase_V,
         0.85,
         0.0,
         0.6,
         {K::T_v, K::s_T, K::h_T, K::p_v, K::h_s_isobar},
         false},
        {K::line_two_phase,
         P::isentrope,
         true,
         phase_L,
         0.9,
         0.0,
         0.6,
         {K::T_v, K::s_T, K::h_T, K::h_p},
         false},
        {K::line_two_phase, P::isenthalpe, true, phase_L, 0.9, 0.0, 0.6, {K::T_rho, K::s_T, K::h_T}, false},
    };
    return all;
}

TEST(EveryPoint, ProcessLines) {
    for (const Setting& s : settings(true)) {
        if (s.fluid->eos_row().family != EosFamily::cubic) continue;
        for (const Line& line : lines())
            for (const Kind diagram : line.diagrams) {
                CurveInput in = test::curve_input(s, diagram, Dens);
                in.line = line.line;
                in.T = line.T1 * s.Tcr();
                in.p = line.Homogen ? line.p1 * s.pcr() : pLV_EOS(*s.fluid, in.T).p;
                in.process = {.kind = line.process,
                              .ScanT = line.ScanT,
                              .From = line.ScanT ? in.T : in.p,
                              .To = line.To * (line.ScanT ? s.Tcr() : s.pcr()),
                              .T1 = in.T,
                              .p1 = in.p,
                              .phase = line.phase,
                              .Homogen = line.Homogen};
                in.v = VolumeTp(*s.fluid, in.T, in.p).vV;
                check(s, in,
                      line.line == Kind::line_two_phase || line.line == Kind::line_isentrope ? 20 : 50);
            }
    }
}

TEST(EveryPoint, StraightLine) {
    const Setting s = settings(true).front();
    for (const auto& [x2, y2] : {std::pair{30.0, 4.0}, std::pair{-3.0, 400.0}}) {
        CurveInput in = test::curve_input(s, Kind::p_v, Dens);
        in.line = Kind::line_straight;
        in.process = {.kind = ProcessKind::straight, .T1 = 2.0, .p1 = 1.0, .T2 = x2, .p2 = y2};
        EXPECT_EQ(check(s, in, 51), 51u);
    }
}

}  // namespace
}  // namespace quom

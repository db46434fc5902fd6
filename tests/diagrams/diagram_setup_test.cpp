// Kinds, ranges and the setting up of diagrams.
#include "diagrams/diagram_setup.h"

#include <gmock/gmock.h>

#include <cmath>

#include "diagrams/axis_texts.h"
#include "support/starter.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

constexpr Units molar{}, specific{.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass},
    reduced{.VolumeMode = reduced_volume};

std::shared_ptr<const Fluid> propane(Eos code = Eos::peng_robinson, int RefKode = reference_free) {
    const auto fluid = test::starter_fluid(test::propane, code);
    ReferenceState reference = fluid->reference;
    reference.RefKode = RefKode;
    return make_fluid({fluid->substance, fluid->models, fluid->eos_input, reference});
}

CurveRange range_of(const Fluid& fluid, int kind, const Units& units) {
    return DiagramSetup(fluid, units, {}, kind_of(kind), false, false).state.rec.range;
}

struct RangeCase {
    int kind;
    Units units;
    double XMin, YMin, XMax, YMax;
};
void expect_range(const Fluid& fluid, const RangeCase& c) {
    const CurveRange range = range_of(fluid, c.kind, c.units);
    const auto near = [&](float x, double right, const char* name) {
        EXPECT_NEAR(static_cast<double>(x), right, 1e-4 * std::max(std::fabs(right), 1e-5))
            << "kind " << c.kind << " in volume mode " << c.units.VolumeMode << ": " << name;
    };
    near(range.XMin, c.XMin, "XMin");
    near(range.YMin, c.YMin, "YMin");
    near(range.XMax, c.XMax, "XMax");
    near(range.YMax, c.YMax, "YMax");
}

// Propane: T(cr) 369.89 K, p(cr) 4251.2 kPa, T(tr) 85.525 K, M 44.0956 kg/kmol, rho(cr) 220.48 kg/m^3;
// Peng/Robinson z(cr) = 0.307401, so v(cr) = 0.222380 m^3/kmol. cp(idG) at T(cr) 88.00 kJ/(kmol K).
TEST(Ranges, of_propane) {
    constexpr double T0 = 80.525, T1 = 406.879, p1 = 6376.8, v1 = 1.55666, rho1 = 694.02, cp1 = 264.0;
    const RangeCase cases[] = {
        {1, molar, 0, 0.001, v1, p1},
        {6, molar, 0, 0.001, v1, p1},
        {2, molar, 0.001, 0, p1, 6617.7},
        {190, molar, 0.001, 0, p1, 6617.7},
        {26, molar, 0.001, 0, p1, rho1},
        {3, molar, 0, T0, v1, T1},
        {4, molar, 0, T0, rho1, T1},
        {5, molar, T0, 0.001, T1, p1},
        {105, molar, 0, 0, 700, 70000},
        {8, molar, T0, 0, T1, rho1},
        {10, molar, 1 / 379.89, -5, 1 / T0, 9.190452},
        {11, molar, 1 / 379.89, -6000, 1 / T0, -500},
        {13, molar, T0, 0, T1, 50000},
        {19, molar, T0, -10, T1, cp1},
        {154, molar, 0.001, -10, p1, cp1},
        {159, molar, 0, -10, v1, cp1},
        {15, molar, T0, -80000, T1, 80000},
        {25, molar, T0, -10000, T1, 10000},
        {18, molar, T0, -1000, T1, 50000},
        {180, molar, T0, -1000, T1, 33333.33},
        {153, molar, T0, -1000, p1, 50000},
        {149, molar, 0.001, -80000, p1, 80000},
        {148, molar, 0.001, -10000, p1, 10000},
        {160, molar, 0, -80000, v1, 80000},
        {158, molar, 0, -250, v1, 250},
        {16, molar, T0, -250, T1, 250},
        {30, molar, T0, -498.8706, T1, 20},
        {32, molar, T0, -49887.06, T1, 1000},
        {34, molar, T0, -0.005, T1, 0.04},
        {41, molar, T0, -49887.06, p1, 1000},
        {43, molar, T0, -10, p1, cp1},
        {107, molar, -250, -80000, 250, 80000},
        {22, molar, -80000, -80000, 80000, 80000},
        {1, specific, 0, 0.001, v1 / 44.0956, p1},
        {15, specific, T0, -1814.24, T1, 1814.24},
        {18, specific, T0, -1000, T1, 50000},
        {25, specific, T0, -10000, T1, 10000},
        {3, reduced, 0, T0 / 369.89, 7, 1.1},
        {2, reduced, 0.001 / 4251.2, 0, 1.5, 7},
        {4, reduced, 0, T0 / 369.89, rho1, 1.1},
        {10, reduced, 369.89 / 379.89, -5, 369.89 / T0, 0.5},
        {105, reduced, 0, 0, 700 / 369.89, 70000 / 4251.2},
        // rho(L) from 86 K to 369 K: 730.76 and 274.16 kg/m^3; the falling function begins at 0.
        {300, molar, 71.85, -36.538, 383.15, 767.30},
        {301, molar, 71.85, 0.055317, 383.15, 0.165865},
        {301, reduced, 71.85 / 369.89, 0.055317 / 0.22238, 383.15 / 369.89, 0.165865 / 0.22238},
    };
    const auto global = propane();
    ModelSelection models = global->models;
    models.Konzept = false;
    models.EVPKode = Evp::wagner;
    const auto partial = with_models(*global, models);
    for (const RangeCase& c : cases) expect_range(c.kind == 11 ? *partial : *global, c);
}

TEST(Ranges, of_an_equation_of_the_vapor_alone) {
    const auto fluid = propane(Eos::pitzer_curl);
    expect_range(*fluid, {1, molar, 0, 0.001, 7 * 0.1999982, 6376.8});
    expect_range(*fluid, {26, molar, 0.001, 0, 6376.8, 3.5 * 220.48});
    expect_range(*fluid, {3, molar, 0, 0.3 * 85.525, 1.399987, 406.879});
}

TEST(Ranges, of_reference_states_and_odd_substances) {
    for (const int code : {2, 10}) {
        const auto fluid = propane(Eos::peng_robinson, code);
        expect_range(*fluid, {15, molar, 80.525, -300000, 406.879, 0});
        expect_range(*fluid, {16, molar, 80.525, -250, 406.879, 200});
    }
    SubstanceConstants light = test::starter_substance(test::propane);
    light.Ttr = 5.5f;  // T(tr) - 5 below 1 K: no pole of 1/T
    expect_range(*test::starter_fluid(light, Eos::peng_robinson),
                 {10, molar, 1 / 379.89, -5, 2.3 / 369.89, 9.190452});
    light.Ttr = 3.0f;
    expect_range(*test::starter_fluid(light, Eos::peng_robinson), {13, molar, 0.01, 0, 406.879, 50000});
    light.Ttr = 0.0f;
    expect_range(*test::starter_fluid(light, Eos::peng_robinson), {13, molar, 369.89 / 2, 0, 406.879, 50000});
    const double exergies[][2] = {{149, 30000}, {319, 40000}, {549, 50000}, {619, 70000}, {621, 120000}};
    for (const auto& [Tcr, exergy] : exergies) {
        light.Tcr = Tcr;
        const auto fluid = test::starter_fluid(light, Eos::peng_robinson);
        EXPECT_EQ(DiagramDefaults(*fluid, molar)[RangePair::exergy].max, exergy) << Tcr;
    }
    light.Tcr = 250;  // 1.1 T(cr) lies below 300 K
    EXPECT_EQ(range_of(*test::starter_fluid(light, Eos::peng_robinson), 30, molar).XMax, 300.0f);
    light.pcr = 0.05;
    EXPECT_EQ(DiagramDefaults(*test::starter_fluid(light, Eos::peng_robinson), molar)[RangePair::T],
              RangeLimits{});
}

TEST(Ranges, lower_above_upper_gives_0_to_lower) {
    const auto fluid = propane();
    RangeTable table = DiagramDefaults(*fluid, molar);
    table[RangePair::hLV] = {30000, 10000};
    const CurveRange range = DiagramRanges(table, Kind::hLV_T, *fluid, molar);
    EXPECT_EQ(range.YMin, 0.0f);
    EXPECT_EQ(range.YMax, 30000.0f);
    const CurveRange now{1, 2, 3, 4};
    EXPECT_EQ(DiagramRanges(table, Kind::line_isotherm, *fluid, molar, now), now);
}

// A vapor pressure equation whose upper limit lies above its T(cr): the range still reaches the curve's top.
TEST(Ranges, of_functions_that_end_inside_their_validity) {
    SubstanceConstants k = test::starter_substance(test::propane);
    k.WagnerTHi = 370;
    const CurveRange range = range_of(*test::starter_fluid(k, Eos::peng_robinson), 307, molar);
    EXPECT_NEAR(static_cast<double>(range.YMax), 1.05 * 4251.2, 0.06 * 4251.2);
    EXPECT_LT(range.YMin, 0.0f);
    EXPECT_NEAR(static_cast<double>(range_of(*propane(), 306, molar).YMax), 1.05 * 4183, 25);
}

TEST(Kinds, all_have_title_axes_and_ranges) {
    const Units modes[] = {
        molar, specific, reduced, {.EnergyMode = energy_per_RT}, {.EnergyMode = energy_per_R}};
    for (const auto substance : {test::propane, test::water, test::helium, test::decane}) {
        const auto global = test::starter_fluid(substance, Eos::peng_robinson);
        ModelSelection models = global->models;
        models.Konzept = false;
        const auto partial = with_models(*global, models);
        for (const KindInfo& kind : kind_list()) {
            EXPECT_FALSE(kind.title.empty()) << static_cast<int>(kind.kind);
            if (kind.x == AxisQuantity::none) continue;  // process lines
            for (const Units& units : modes) {
                const Fluid& fluid = kind.kind == Kind::sat_slope_invT ? *partial : *global;
                const SetupResult result = DiagramSetup(fluid, units, {}, kind.kind, false, false);
                if (result.refusal && kind.section == Section::database) continue;
                ASSERT_FALSE(result.refusal) << static_cast<int>(kind.kind) << result.refusal->text;
                const DiagramRec& rec = result.state.rec;
                EXPECT_TRUE(rec.range.XMin < rec.range.XMax && rec.range.YMin < rec.range.YMax)
                    << substance << " kind " << static_cast<int>(kind.kind) << " mode " << units.EnergyMode;
                EXPECT_EQ(rec.range, rec.initial);
                EXPECT_FALSE(rec.XTitle.empty() || rec.YTitle.empty()) << static_cast<int>(kind.kind);
                EXPECT_EQ(rec.section, kind.section);
            }
        }
    }
}

// The coexistence curve of a diagram has the diagram's own axes.
TEST(Kinds, boundaries_lie_in_the_same_plane) {
    for (const KindInfo& kind : kind_list()) {
        if (kind.boundary == Kind::none) continue;
        const KindInfo& boundary = kind_info(kind.boundary);
        EXPECT_EQ(boundary.x, kind.x) << static_cast<int>(kind.kind);
        EXPECT_EQ(boundary.y, kind.y) << static_cast<int>(kind.kind);
        EXPECT_EQ(boundary.axis_code, kind.axis_code) << static_cast<int>(kind.kind);
        EXPECT_EQ(boundary.section, Section::projection) << static_cast<int>(kind.kind);
    }
}

struct Refusal {
    int kind;
    const char* says;  // nullptr: none
};
void expect_refusals(const Fluid& fluid, const Units& units, std::initializer_list<Refusal> cases) {
    for (const Refusal& c : cases) {
        const SetupResult result = DiagramSetup(fluid, units, {}, kind_of(c.kind), false, false);
        EXPECT_EQ(result.refusal.has_value(), c.says != nullptr) << c.kind;
        EXPECT_NE(result.refusal.has_value(), result.open_sheet) << c.kind;
        if (!result.refusal || !c.says) continue;
        EXPECT_EQ(result.refusal->title, "Execution not possible");
        EXPECT_THAT(result.refusal->text, HasSubstr(c.says)) << c.kind;
    }
}

TEST(Setup, refuses_what_models_and_record_lack) {
    const char* const equilibria = "Phase equlilibria calculations are only possible using a cubic EOS";
    const auto cubic = propane();
    expect_refusals(*propane(Eos::pitzer_curl), molar,
                    {{6, equilibria},
                     {7, equilibria},
                     {8, equilibria},
                     {9, equilibria},
                     {12, equilibria},
                     {27, equilibria},
                     {90, equilibria},
                     {92, equilibria},
                     {94, equilibria},
                     {106, equilibria},
                     {95, equilibria},
                     {1, nullptr},
                     {15, nullptr},
                     {306, nullptr},
                     {105, "Inversion curve only possible with cubic EOS"}});
    expect_refusals(
        *cubic, molar,
        {{11, "change to PARTIAL concept under \"Models\""}, {10, nullptr}, {9, nullptr}, {1, nullptr}});
    SubstanceConstants bare = cubic->substance;
    bare.havePoly = bare.haveSinh = bare.HasCpL = bare.HasCpS = false;
    bare.KFTLo = 0;
    bare.KFDB = {};
    ModelSelection models = cubic->models;
    models.cpKode = CpForm::none;
    const auto without = make_fluid({bare, models, {}, {}});
    expect_refusals(*without, molar,
                    {{19, "No cp(idGas) parameters available"},
                     {302, "no polynomial function cpIdG)= Fu(T) available for this substance."},
                     {311, "no sinh/cosh function cpIdG)= Fu(T) available for this substance."},
                     {303, "for this substance no function cp(L)=Fu(T)available "},
                     {304, "for this substance no function cp(S)=Fu(T) available "},
                     {306, "no such vapor pressure equation"},
                     {300, nullptr},
                     {307, nullptr}});
    const SetupResult no_volume =
        DiagramSetup(*propane(Eos::pitzer_curl), reduced, {}, Kind::p_v, false, false);
    ASSERT_TRUE(no_volume.refusal);
    EXPECT_TRUE(no_volume.to_molar_volumes);
    EXPECT_EQ(no_volume.refusal->text,
              "The selected EOS does not provide V(cr) (critical molar volume).\n"
              "The desired option \"reduced quantities for T, p, v\" is thus not possible.");
}

TEST(Setup, asks_before_axes_are_mixed) {
    const auto fluid = propane();
    const auto set_up = [&](Kind shown, Kind chosen, bool mix) {
        const DiagramState state = DiagramSetup(*fluid, molar, {}, shown, mix, false).state;
        return DiagramSetup(*fluid, molar, state, chosen, mix, true);
    };
    const SetupResult adds = set_up(Kind::h_T, Kind::g_T, true);
    EXPECT_TRUE(!adds.question && adds.open_sheet && !adds.unload_sheet);
    EXPECT_EQ(adds.state.rec.kind, Kind::g_T);
    const SetupResult asks = set_up(Kind::h_T, Kind::s_T, true);
    ASSERT_TRUE(asks.question);
    EXPECT_EQ(asks.question->title, "WARNING");
    EXPECT_EQ(asks.question->text,
              "The units of the diagram axes do not fit together.\n\nDelete the existing diagram?");
    EXPECT_EQ(asks.question->buttons, Buttons::yes_no);
    EXPECT_EQ(asks.state.rec.kind, Kind::h_T);
    EXPECT_EQ(asks.state.rec.AxisCode, "hT");
    EXPECT_FALSE(asks.open_sheet || asks.unload_sheet);
    EXPECT_TRUE(set_up(Kind::sat_lnp_invT, Kind::joule_thomson_T, true).question);  // 1/T and T
    EXPECT_FALSE(set_up(Kind::joule_thomson_T, Kind::joule_thomson_T, true).question);
    const SetupResult replaces = set_up(Kind::h_T, Kind::g_T, false);
    EXPECT_TRUE(!replaces.question && replaces.unload_sheet && replaces.open_sheet);
    EXPECT_FALSE(set_up(Kind::h_T, Kind::h_T, false).unload_sheet);
    EXPECT_TRUE(share_sheet(Kind::eH_h_isotherm, Kind::eH_s_isobar));  // both "hh"
}

TEST(Setup, tells_what_is_entered_where) {
    const auto fluid = propane();
    const std::pair<Kind, ParameterInput> cases[] = {
        {Kind::p_v, ParameterInput::parameter_box},
        {Kind::h_T, ParameterInput::parameter_box},
        {Kind::p_T, ParameterInput::parameter_box},
        {Kind::sat_p_v, ParameterInput::none},
        {Kind::inversion_p_T, ParameterInput::none},
        {Kind::db_rhoL, ParameterInput::none},
        {Kind::h_s_isotherm, ParameterInput::process_line_form},
        {Kind::eH_s_isobar, ParameterInput::process_line_form},
    };
    for (const auto& [kind, input] : cases) {
        const SetupResult result = DiagramSetup(*fluid, molar, {}, kind, false, false);
        EXPECT_EQ(result.input, input) << static_cast<int>(kind);
        EXPECT_EQ(result.database_marks, kind == Kind::db_rhoL);
    }
    EXPECT_EQ(DiagramSetup(*fluid, molar, {}, Kind::p_v, false, false).state.rec.TitleSuffix,
              ",  CEOS Peng / Robinson");
    ModelSelection models = fluid->models;
    models.Konzept = false;
    models.EVPKode = Evp::wagner;
    const auto partial = with_models(*fluid, models);
    for (const Kind kind : {Kind::sat_lnp_invT, Kind::sat_slope_invT})
        EXPECT_THAT(DiagramSetup(*partial, molar, {}, kind, false, false).state.rec.TitleSuffix,
                    HasSubstr("Wagner"));
    const SetupResult nothing = DiagramSetup(*make_fluid({}), molar, {}, Kind::p_v, false, false);
    EXPECT_FALSE(nothing.open_sheet || nothing.refusal || nothing.question);
}

TEST(Setup, begins_anew_with_a_substance_and_with_units) {
    const auto fluid = propane();
    const auto top = [&](const DiagramState& state, Kind kind, const Units& units) {
        return DiagramSetup(*fluid, units, state, kind, false, false).state;
    };
    DiagramState state = top({}, Kind::p_v, molar);
    EXPECT_FALSE(state.new_substance);
    EXPECT_FLOAT_EQ(state.rec.range.YMax, 1.5f * 4251.2f);
    EXPECT_NEAR(state.T, 369.89, 1e-4);
    EXPECT_NEAR(state.p, 4251.2, 1e-3);
    EXPECT_NEAR(state.v, 0.22238, 1e-5);
    state.v = 1.25;  // entered by the user
    state = top(state, Kind::p_T, molar);
    EXPECT_EQ(state.v, 1.25);
    EXPECT_FLOAT_EQ(state.rec.range.YMax, 1.5f * 4251.2f);
    // A database function first: the upper limits stay those of the table.
    state = top({}, Kind::db_rhoL, molar);
    EXPECT_FALSE(state.new_substance);
    EXPECT_FLOAT_EQ(top(state, Kind::p_v, molar).rec.range.YMax, 1.4f * 4251.2f);
    // Limits in other units are not kept.
    EXPECT_FLOAT_EQ(top(top({}, Kind::p_v, molar), Kind::p_v, reduced).rec.range.XMax, 7.0f);
    // An equation without v(cr), a record with and without it.
    EXPECT_NEAR(DiagramSetup(*propane(Eos::pitzer_curl), molar, {}, Kind::p_T, false, false).state.v, 0.2,
                1e-5);
    SubstanceConstants k = fluid->substance;
    k.vcrDB = k.rhocrDB = 0;
    const DiagramState any =
        DiagramSetup(*test::starter_fluid(k, Eos::pitzer_curl), molar, {}, Kind::p_v, false, false).state;
    EXPECT_EQ(any.v, 2.0);
    EXPECT_LT(any.rec.range.XMin, any.rec.range.XMax);
    EXPECT_EQ(any.ranges[RangePair::pv].max, 1.5);
}

}  // namespace
}  // namespace quom

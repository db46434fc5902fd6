// The table of a result: values in their places, units converted by hand, texts for copying.
#include "report/result_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>

#include "calc/calc_run.h"
#include "report/sample_outcome.h"
#include "support/starter.h"

namespace quom::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::Not;

using Values = std::array<std::optional<double>, result_columns>;
constexpr std::nullopt_t none = std::nullopt;

const ResultRow& row(const ResultValues& values, std::string_view key) {
    for (const ResultSection& section : values.sections)
        for (const ResultRow& row : section.rows)
            if (row.key == key) return row;
    throw std::runtime_error("no row " + std::string(key));
}

// A fluid with a molar mass that is easy to divide by; its record is that of propane.
std::shared_ptr<const Fluid> round_fluid() {
    SubstanceConstants substance = starter_substance(propane);
    substance.MolMass = 50;
    return starter_fluid(substance, Eos::peng_robinson);
}

std::vector<std::string> names(const std::vector<UnitChoice>& choices) {
    std::vector<std::string> list;
    for (const UnitChoice& choice : choices) list.push_back(choice.name);
    return list;
}

std::string shown_in(const ResultValues& values, std::string_view key, const char* unit, int digits = 10) {
    const ResultRow& r = row(values, key);
    const UnitChoice choice = unit_of(values, r, {{r.key, unit}}, {});
    EXPECT_EQ(choice.name, unit) << key;
    const auto value = std::ranges::find_if(r.values, [](const auto& x) { return x.has_value(); });
    return value == r.values.end() ? std::string() : cell_text(*value, choice.conversion, digits);
}

TEST(ResultTable, puts_every_value_into_the_column_of_its_phase) {
    const auto fluid = round_fluid();
    const ResultValues two = make_result_values(*fluid, sample_outcome(Mode::T_rho, PhaseWord::VL, true), {});
    EXPECT_THAT(two.heads, ElementsAre("liquid L", "vapor V", "mixture"));
    const struct {
        const char* key;
        Values values;
    } rows[] = {{"T", {none, none, 300}},      {"p", {none, none, 500}},       {"rho", {1011, 2011, 3011}},
                {"v", {1000, 2000, 3000}},     {"x", {none, none, 0.25}},      {"h", {1001, 2001, 3001}},
                {"u", {1004, 2004, 3004}},     {"s", {1002, 2002, 3002}},      {"g", {1003, 2003, 3003}},
                {"a", {1005, 2005, 3005}},     {"eH", {1006, 2006, 3006}},     {"eU", {1007, 2007, 3007}},
                {"cp", {1008, 2008, 3008}},    {"cV", {1009, 2009, 3009}},     {"cpId", {1012, 2012, none}},
                {"w", {1010, 2010, none}},     {"dpdv_T", {1102, 2102, none}}, {"d2pdv2", {1109, 2109, none}},
                {"alpha", {1115, 2115, none}}, {"lnphi", {1118, 2118, none}},  {"delta", {1125, 2125, none}}};
    for (const auto& expected : rows)
        EXPECT_EQ(row(two, expected.key).values, expected.values) << expected.key;
    // z = p v/(R T) of the mixture: 500 kPa 3000 m^3/kmol/(8.31451 kJ/(kmol K) 300 K).
    EXPECT_NEAR(*row(two, "z").values[column_both], 601.358, 1e-3);

    for (const PhaseWord word : {PhaseWord::L, PhaseWord::V}) {
        const ResultValues one = make_result_values(*fluid, sample_outcome(Mode::T_p, word), {});
        EXPECT_THAT(one.heads, ElementsAre("liquid L", "vapor V", ""));
        const std::size_t there = word == PhaseWord::L ? column_L : column_V, other = 1 - there;
        for (const char* key : {"T", "p", "rho", "h", "w", "x"}) {
            EXPECT_TRUE(row(one, key).values[there]) << key;
            EXPECT_FALSE(row(one, key).values[other]) << key;
            EXPECT_FALSE(row(one, key).values[column_both]) << key;
        }
    }
}

TEST(ResultTable, zero_is_a_value_and_absent_is_empty) {
    Outcome outcome = sample_outcome(Mode::T_p, PhaseWord::V, true);
    outcome.V->h = -0.0;
    outcome.V->s.reset();
    outcome.V->arrays->FuncA[fu_lnphi] = 0.0;
    outcome.V->arrays->FuncA[fu_h_res] = std::numeric_limits<double>::quiet_NaN();
    const ResultValues values = make_result_values(*round_fluid(), outcome, {});
    EXPECT_EQ(shown_in(values, "h", "kJ/kmol"), "0");
    EXPECT_EQ(shown_in(values, "s", "kJ/(kmol K)"), "");
    EXPECT_EQ(*row(values, "lnphi").values[column_V], 0.0);
    EXPECT_FALSE(row(values, "h_res").values[column_V]);

    Outcome refused = sample_outcome(Mode::T_p, PhaseWord::V);
    refused.failure = {Reason::no_root_above_b, 300, 500};
    for (const ResultSection& section : make_result_values(*round_fluid(), refused, {}).sections)
        for (const ResultRow& r : section.rows) EXPECT_THAT(r.values, ElementsAre(none, none, none)) << r.key;
}

TEST(ResultTable, states_of_a_fluid_have_their_heads_and_all_sections) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const struct {
        double T, p;
        const char *L, *V;
        std::size_t column;
        bool saturation;
    } cases[] = {{300, 500, "liquid L", "vapor V", column_V, true},
                 {300, 2000, "liquid L", "vapor V", column_L, true},
                 {300, 6000, "liquid L", "vapor V", column_L, true},
                 {400, 500, "liquid L", "vapor V", column_V, false},
                 {400, 6000, "liquid L", "fluid (L = V)", column_V, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.T);
        StateInput input{.mode = Mode::T_p, .T = c.T, .p = c.p};
        const Outcome outcome = CalcBatch(*fluid, input);
        const ResultValues values = make_result_values(*fluid, outcome, input.setup);
        EXPECT_THAT(values.heads, ElementsAre(c.L, c.V, ""));
        EXPECT_EQ(values.state_column, c.column);
        EXPECT_EQ(row(values, "pLV").values[c.column].has_value(), c.saturation);
        EXPECT_EQ(row(values, "x").values[c.column].has_value(), c.p < 5000 && c.T < 369);
        std::vector<std::string> titles;
        for (const ResultSection& section : values.sections) titles.push_back(section.title);
        EXPECT_THAT(titles,
                    ElementsAre("State", "Thermodynamic functions", "Saturation at T",
                                "Fugacity and residual functions", "Derivatives", "Expansion coefficients"));
        // The extended values are there without the check boxes, the same as with them.
        input.coefficients = true;
        const ResultValues extended = make_result_values(*fluid, CalcBatch(*fluid, input), input.setup);
        for (const char* key : {"lnphi", "delta", "dpdv_T", "d2Tdv2", "alpha", "chi", "beta"}) {
            EXPECT_TRUE(row(values, key).values[c.column]) << key;
            EXPECT_EQ(row(values, key).values, row(extended, key).values) << key;
        }
        // An ideal gas has alpha T = beta T = 1; chi p = 1.
        if (c.column == column_V && c.p < 1000) {
            EXPECT_NEAR(*row(values, "alpha").values[column_V] * c.T, 1.0, 0.4);
            EXPECT_NEAR(*row(values, "chi").values[column_V] * c.p, 1.0, 0.2);
        }
    }
}

TEST(ResultTable, saturation_stands_beside_a_state_of_one_phase) {
    // Propane at 300 K: p(LV) 998 kPa, rho(L) 489.5, rho(V) 21.6 kg/m^3, delta(LV)h 334 kJ/kg (Lemmon,
    // McLinden, Wagner 2009); rho(L) is the weak side of the equation.
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const StateInput input{.mode = Mode::T_p, .T = 300, .p = 500};
    const ResultValues values = make_result_values(*fluid, CalcBatch(*fluid, input), input.setup);
    EXPECT_NEAR(*row(values, "pLV").values[column_V], 998, 10);
    EXPECT_NEAR(*row(values, "rhoLV").values[column_V], 21.6, 0.2);
    EXPECT_NEAR(*row(values, "rhoLV").values[column_L], 489.5, 25);
    EXPECT_NEAR(std::stod(shown_in(values, "hLV", "kJ/kg")), 334, 8);
    EXPECT_NEAR(*row(values, "sLV").values[column_V], *row(values, "hLV").values[column_V] / 300, 1e-9);
    EXPECT_FALSE(row(values, "rho").values[column_L]);
    // By the vapor pressure equation in the PARTIAL concept: water has 101.325 kPa at 373.124 K (IAPWS-95).
    const auto steam = starter_fluid(water, Eos::peng_robinson);
    ModelSelection partial = steam->models;
    partial.Konzept = false;
    const CalcSetup setup{.GlobalCalc = false};
    const auto by_evp = with_models(*steam, partial);
    const Outcome outcome = CalcBatch(*by_evp, {.mode = Mode::T_p, .T = 373.124, .p = 50, .setup = setup});
    EXPECT_NEAR(*row(make_result_values(*by_evp, outcome, setup), "pLV").values[column_V], 101.325, 0.5);
}

TEST(ResultTable, values_of_the_database_stand_in_the_column_of_their_phase) {
    const auto fluid = starter_fluid(benzene, Eos::peng_robinson);
    const struct {
        Mode mode;
        const char* key;
        std::size_t column;
        const char* third;
        double value, bound;
    } cases[] = {// Benzene at 300 K: rho(L) 872 kg/m^3, cp(L) 136.5, cp(idG) 83.0 kJ/(kmol K), 33.7 MJ/kmol
                 {Mode::fn_rhoL, "rho", column_L, "", 872, 5},
                 {Mode::fn_cpL, "cp", column_L, "", 136.5, 2},
                 {Mode::fn_cpIdG, "cpId", column_V, "", 83, 1},
                 {Mode::fn_hLV, "hLV", column_both, "mixture", 33.75e3, 300}};
    for (const auto& c : cases) {
        const Outcome outcome = CalcBatch(*fluid, {.mode = c.mode, .T = 300});
        const ResultValues values = make_result_values(*fluid, outcome, {});
        EXPECT_EQ(values.heads[column_both], c.third);
        ASSERT_TRUE(row(values, c.key).values[c.column]) << c.key;
        EXPECT_NEAR(*row(values, c.key).values[c.column], c.value, c.bound) << c.key;
        EXPECT_EQ(row(values, "T").values[c.column], 300);
    }
}

TEST(ResultTable, tank_tells_its_contents) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const StateInput input{.mode = Mode::tank_global, .T = 300, .m = 100, .V = 1};
    const ResultValues values = make_result_values(*fluid, CalcBatch(*fluid, input), input.setup);
    const Values m = row(values, "m").values, V = row(values, "V").values;
    EXPECT_NEAR(*m[column_both], 100, 1e-9);
    EXPECT_NEAR(*V[column_both], 1, 1e-9);
    EXPECT_NEAR(*m[column_L] / *V[column_L], *row(values, "rho").values[column_L], 1e-6);
    EXPECT_NEAR(*row(values, "fill").values[column_both], *V[column_L] * 100, 1e-9);
    EXPECT_NEAR(*row(values, "n").values[column_both], 100 / fluid->M, 1e-9);
}

TEST(ResultTable, units_convert_the_doubles) {
    // By hand from 300 K, 500 kPa, 1011 kg/m^3, 1001 kJ/kmol, 1002 kJ/(kmol K) and 50 kg/kmol.
    const ResultValues values =
        make_result_values(*round_fluid(), sample_outcome(Mode::T_p, PhaseWord::L), {});
    const struct {
        const char *key, *unit, *text;
    } cases[] = {{"T", "°C", "26.85"},
                 {"T", "°F", "80.33"},
                 {"p", "bar", "5"},
                 {"p", "MPa", "0.5"},
                 {"p", "psi", "72.51886887"},  // 500/6.894757293
                 {"rho", "g/cm^3", "1.011"},
                 {"rho", "kmol/m^3", "20.22"},
                 {"v", "m^3/kg", "20"},
                 {"v", "cm^3/mol", "1E+06"},
                 {"h", "kJ/kg", "20.02"},
                 {"h", "BTU/lb", "8.607050731"},  // 20.02/2.326
                 {"h", "R K", "120.3919413"},     // 1001/8.31451
                 {"h", "R T", "0.4013064711"},
                 {"s", "R", "120.512213"},
                 {"s", "kJ/(kg K)", "20.04"},
                 {"w", "km/h", "3636"}};
    for (const auto& c : cases) EXPECT_EQ(shown_in(values, c.key, c.unit), c.text) << c.key << ' ' << c.unit;
    EXPECT_EQ(shown_in(values, "p", "psi", 5), "72.519");

    EXPECT_THAT(names(unit_choices(values, row(values, "v"))), Not(Contains("kg/m^3")));
    EXPECT_EQ(unit_choices(values, row(values, "h")).front().name, "kJ/kmol");
    EXPECT_EQ(unit_of(values, row(values, "eH"), {{"eH", "R K"}}, {}).text, "e(h)/R in K");
    EXPECT_EQ(unit_of(values, row(values, "h"), {{"h", "furlong"}}, {}).name, "kJ/kmol");
    EXPECT_EQ(unit_choices(values, row(values, "h_res")).size(), 1U);  // a difference is no temperature
}

TEST(ResultTable, units_that_need_a_molar_mass_or_T_are_left_out_without) {
    ResultValues values = make_result_values(*round_fluid(), sample_outcome(Mode::T_p, PhaseWord::L), {});
    values.M = 0;
    values.T = 0;
    EXPECT_THAT(names(unit_choices(values, row(values, "h"))),
                ::testing::AllOf(Contains("J/mol"), Not(Contains("kJ/kg")), Not(Contains("R T"))));
    EXPECT_EQ(unit_of(values, row(values, "h"), {{"h", "kJ/kg"}}, {}).name, "kJ/kmol");
}

TEST(ResultTable, units_of_the_options_hold_until_one_is_chosen) {
    const ResultValues values =
        make_result_values(*round_fluid(), sample_outcome(Mode::T_p, PhaseWord::L), {});
    const Units per_mass{.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass};
    const struct {
        const char *key, *unit;
    } cases[] = {{"h", "kJ/kg"}, {"s", "kJ/(kg K)"}, {"v", "m^3/kg"}, {"p", "kPa"}, {"w", "m/s"}};
    for (const auto& c : cases) EXPECT_EQ(unit_of(values, row(values, c.key), {}, per_mass).name, c.unit);
    EXPECT_EQ(unit_of(values, row(values, "h"), {{"h", "J/mol"}}, per_mass).name, "J/mol");
    EXPECT_EQ(unit_of(values, row(values, "u"), {}, {.EnergyMode = energy_per_R}).text, "u/R in K");
}

TEST(ResultTable, one_unit_for_all_of_a_dimension) {
    const ResultValues values =
        make_result_values(*round_fluid(), sample_outcome(Mode::T_p, PhaseWord::L), {});
    EXPECT_EQ(symbols_alike(values, row(values, "h")), "h, u, g, a, e");
    EXPECT_EQ(symbols_alike(values, row(values, "cp")), "s, cp, cV");
    EXPECT_THAT(rows_alike(values, row(values, "u")), IsSupersetOf({"h", "u", "g", "a", "eH", "eU", "hLV"}));
    EXPECT_THAT(rows_alike(values, row(values, "T")), ElementsAre("T"));
    EXPECT_THAT(rows_alike(values, row(values, "rho")), Not(Contains("v")));
}

TEST(ResultTable, text_has_heads_basis_and_every_row) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const StateInput input{.mode = Mode::T_rho, .T = 300, .rho = 100};
    const ResultValues values = make_result_values(*fluid, CalcBatch(*fluid, input), input.setup);
    std::istringstream text(result_table_text(values, {{"T", "°C"}}, {}, 7));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    std::size_t rows = 0;
    for (const ResultSection& section : values.sections) rows += section.rows.size() + 1;
    ASSERT_EQ(lines.size(), 5 + rows);
    EXPECT_THAT(lines[1], ::testing::AllOf(::testing::HasSubstr("Propane"), ::testing::HasSubstr("C3H8"),
                                           ::testing::HasSubstr("74-98-6")));
    EXPECT_THAT(lines[2], ::testing::HasSubstr("Peng / Robinson, GLOBAL concept"));
    EXPECT_THAT(lines[3], ::testing::HasSubstr("h = s = 0 of the ideal gas at 298.15 K, 101.325 kPa"));
    EXPECT_EQ(lines[4], "Quantity\tSymbol\tUnit\tliquid L\tvapor V\tmixture");
    EXPECT_EQ(lines[6], "temperature\tT\t°C\t\t\t26.85");
    EXPECT_EQ(lines[8].substr(0, 19), "density\trho\tkg/m^3\t");
    EXPECT_EQ(lines[8].substr(lines[8].size() - 4), "\t100");
    for (std::size_t i = 5; i < lines.size(); ++i) {
        const auto tabs = std::ranges::count(lines[i], '\t');
        EXPECT_TRUE(tabs == 0 || tabs == 5) << lines[i];
    }
}

}  // namespace
}  // namespace quom::test

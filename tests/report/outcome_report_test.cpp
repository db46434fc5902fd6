// The blocks of an outcome as JSON: keys, numbers to the last digit, null for what is absent, 0 for a zero.
#include "report/outcome_report.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "report/sample_outcome.h"
#include "support/starter.h"

namespace quom::test {
namespace {

const UnitFactors factors{.uFactor = 3, .vFactor = 7};

nlohmann::json json_of(const ReportSection& section) {
    Report report;
    report.sections.push_back(section);
    const nlohmann::json json = nlohmann::json::parse(to_json(report));
    return json[std::visit([](const auto& part) { return part.key; }, section)];
}

TEST(OutcomeReport, functions_of_both_phases_and_their_mean) {
    const Outcome outcome = sample_outcome(Mode::T_rho, PhaseWord::VL);
    const auto json = json_of(functions_grid(outcome, {}, factors));
    const struct {
        const char* key;
        double L, V, mean;  // 0: null
    } rows[] = {{"v", 7000, 14000, 21000}, {"h", 3003, 6003, 9003},  {"u", 3012, 6012, 9012},
                {"s", 3006, 6006, 9006},   {"g", 3009, 6009, 9009},  {"a", 3015, 6015, 9015},
                {"eH", 3018, 6018, 9018},  {"eU", 3021, 6021, 9021}, {"cp", 3024, 6024, 9024},
                {"cV", 3027, 6027, 9027},  {"cpId", 3036, 6036, 0},  {"w", 1010, 2010, 0}};
    EXPECT_EQ(json.size(), 3 * std::size(rows));
    for (const auto& row : rows) {
        const std::string key = row.key;
        EXPECT_EQ(json[key + "_L"], row.L) << key;
        EXPECT_EQ(json[key + "_V"], row.V) << key;
        if (row.mean != 0) {
            EXPECT_EQ(json[key + "_mean"], row.mean) << key;
        } else {
            EXPECT_TRUE(json[key + "_mean"].is_null()) << key;
        }
    }
}

TEST(OutcomeReport, absent_is_null_and_zero_is_0) {
    Outcome outcome = sample_outcome(Mode::T_p, PhaseWord::V, true);
    outcome.V->h = 0.0;
    outcome.V->s.reset();
    outcome.V->arrays->FuncA[fu_lnphi] = 0.0;
    outcome.V->arrays->FuncA[fu_dTdp_h] = std::numeric_limits<double>::quiet_NaN();
    const auto functions = json_of(functions_grid(outcome, {}, factors));
    EXPECT_EQ(functions["h_V"], 0.0);
    EXPECT_TRUE(functions["s_V"].is_null());
    EXPECT_TRUE(functions["h_L"].is_null());
    EXPECT_TRUE(functions["h_mean"].is_null());
    const auto arrays = json_of(array_grids(outcome).front());
    EXPECT_EQ(arrays["lnphi_V"], 0.0);
    EXPECT_TRUE(arrays["delta_V"].is_null());
    EXPECT_TRUE(arrays["lnphi_L"].is_null());
    const auto slots = json_of(slot_block(calc_result(outcome, factors), {}));
    EXPECT_EQ(slots["h_V"], 0.0);
    EXPECT_TRUE(slots["s_V"].is_null());
    EXPECT_TRUE(slots["hLV"].is_null());
    EXPECT_FALSE(slots.contains(""));
    EXPECT_EQ(slots.size(), std::size_t{slot_count - 2});
}

TEST(OutcomeReport, state_of_a_real_fluid) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const struct {
        double T, p;
        const char* phase;
        int region;
    } cases[] = {{300, 500, "V", 0},
                 {300, 2000, "L", 0},
                 {300, 5000, "L", 1},
                 {400, 5000, "V", 2},
                 {400, 500, "V", 3}};
    for (const auto& c : cases) {
        const Outcome outcome = state_at(*fluid, c.T, c.p, std::nullopt);
        const auto state = json_of(state_block(*fluid, outcome, {}));
        EXPECT_EQ(state["T"], c.T);
        EXPECT_EQ(state["p"], c.p);
        EXPECT_EQ(state["phase"], c.phase);
        EXPECT_EQ(state["PhaseRegion"], c.region);
        const bool liquid = outcome.phase == PhaseWord::L;
        EXPECT_EQ(state["rho_L"].is_null(), !liquid);
        EXPECT_EQ(state["rho_V"].is_null(), liquid);
        EXPECT_EQ(state[liquid ? "rho_L" : "rho_V"], *(liquid ? outcome.L : outcome.V)->rho);
        EXPECT_EQ(state["nRoots"], outcome.eos->roots.nRoots);
        EXPECT_EQ(state["VRoot1"], outcome.eos->roots.VRoot[0]);
        EXPECT_EQ(state["VRoot3"].is_null(), outcome.eos->roots.nRoots == 1);
        // The same answer from the calculation of a mode.
        const auto mode = json_of(mode_block(*fluid, outcome, {}, {}));
        for (const char* key : {"T", "p", "phase", "PhaseRegion", "y", "rho_L", "VRoot1", "VRoot2", "VRoot3"})
            EXPECT_EQ(mode[key], state[key]) << key;
        EXPECT_TRUE(mode["LPercent"].is_null());
    }
}

TEST(OutcomeReport, tank_and_contents) {
    Outcome outcome = sample_outcome(Mode::tank_partial, PhaseWord::VL);
    outcome.tank =
        TankContents{.y = 0.25, .VL = 61, .VV = 62, .mL = 63, .mV = 64, .nL = 65, .nV = 0, .fill = 0.42};
    const auto tank = json_of(tank_block(outcome));
    EXPECT_EQ(tank["phase"], "V+L");
    EXPECT_EQ(tank["rho"], 77);
    EXPECT_EQ(tank["y"], 0.25);
    EXPECT_EQ(tank["LPercent"], 42);
    const auto contents = json_of(contents_grid(*outcome.tank));
    EXPECT_EQ(contents["V_L"], 61);
    EXPECT_EQ(contents["m_V"], 64);
    EXPECT_EQ(contents["n_L"], 65);
    EXPECT_EQ(contents["n_V"], 0);
    outcome.p.reset();
    EXPECT_TRUE(json_of(tank_block(outcome))["p"].is_null());
}

TEST(OutcomeReport, warnings_and_validity) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    StateInput input;
    input.mode = Mode::equilibrium_T;
    input.T = 70;
    input.setup = {.GlobalCalc = false, .BensonRhoL = false, .RhoLWanted = true};
    const Outcome outcome = CalcBatch(*fluid, input);
    Report report;
    add_reservations(report, *fluid, outcome);
    const auto json = nlohmann::json::parse(to_json(report));
    ASSERT_EQ(json["warnings"].size(), outcome.warnings.size());
    std::string names;
    for (const auto& warning : json["warnings"]) names += warning["name"].get<std::string>() + " ";
    EXPECT_EQ(names, "evp_range rhoL_range hlv_range below_triple_point ");
    EXPECT_EQ(json["warnings"][0]["value"], 70);
    EXPECT_EQ(json["warnings"][0]["low"], 86);
    EXPECT_EQ(json["warnings"][0]["high"], 369);
    EXPECT_EQ(json["warnings"][0]["offset"], -16);
    EXPECT_TRUE(json["warnings"][3]["high"].is_null());
    EXPECT_EQ(json["notes"].size(), outcome.warnings.size());
    std::string ranges;
    for (const auto& range : json["validity"])
        ranges += range["name"].get<std::string>() + " " + range["TLo"].dump() + " ";
    EXPECT_EQ(ranges, "EVP 86 rhoL 86 HLV 86 cpId 250 ");
    EXPECT_TRUE(json["message"].is_null());
    EXPECT_TRUE(json["reason"].is_null());
}

// h0 and s0 are what the ideal gas has at the reference point; the line that ends a text tells them.
TEST(OutcomeReport, reference_state) {
    const auto plain = starter_fluid(propane, Eos::ideal_gas);
    EXPECT_EQ(json_of(reference_block(*plain))["h0"], 0.0);
    EXPECT_NE(footer_of(*plain, {}).basis.find("h = s = 0 of the ideal gas at 298.15 K, 101.325 kPa"),
              std::string::npos);
    FluidInput input{.substance = plain->substance,
                     .models = plain->models,
                     .eos_input = {},
                     .reference = {.RefKode = reference_formation, .hOffset = 1000.0, .sOffset = -5.0}};
    const auto fluid = make_fluid(input);
    const auto reference = json_of(reference_block(*fluid));
    const Outcome outcome =
        state_at(*fluid, reference["TRef0"].get<double>(), reference["pRef0"].get<double>(), std::nullopt);
    EXPECT_NEAR(reference["h0"].get<double>(), *outcome.V->h, 1e-6);
    EXPECT_NEAR(reference["s0"].get<double>(), *outcome.V->s, 1e-9);
    EXPECT_NEAR(reference["h0"].get<double>(), fluid->substance.dfH0 + 1000.0, 1e-9);
    const Footer footer = footer_of(*fluid, {.EnergyMode = energy_per_RT, .VolumeMode = volume_per_mass});
    EXPECT_NE(footer.basis.find("h = " + shown(reference["h0"].get<double>()) + " kJ/kmol"),
              std::string::npos);
    EXPECT_EQ(footer.quantities[0].unit, "R T");
    EXPECT_EQ(footer.quantities[2].unit, "m^3/kg");
}

TEST(OutcomeReport, a_failure_has_sentence_and_name) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const Outcome outcome = state_at(*fluid, 300.0, std::nullopt, 2000.0);
    Report report;
    add_reservations(report, *fluid, outcome);
    EXPECT_EQ(report.status, status_no_result);
    const auto json = nlohmann::json::parse(to_json(report));
    EXPECT_EQ(json["reason"], "volume_below_b");
    EXPECT_EQ(json["message"], failure_text(outcome.failure));
    EXPECT_TRUE(json["warnings"].empty());
}

}  // namespace
}  // namespace quom::test

// Fitted parameters in a substance: its database functions give the fitted curve.
#include "fitting/transfer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "fitting/fit_data.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

FitInput on_curve(const test::KnownFit& known) {
    FitInput input;
    input.model = known.model;
    input.constants = known.constants;
    input.UseLnFit = true;
    for (int i = 0; i < 20; ++i) {
        const double T = known.from + (known.to - known.from) * i / 19;
        input.points.push_back({T, fitted_value(input, known.par, T).value()});
    }
    input.points.push_back({known.from - 50.25, 1, false});
    return input;
}

// The substance's own function of a model.
double database_value(const SubstanceConstants& s, FitModel model, CpPhase phase, double T) {
    switch (fit_model(model).quantity) {
        case FitQuantity::vapor_pressure:
            return pLV_EVP(s, T,
                           model == FitModel::antoine  ? Evp::antoine_low
                           : model == FitModel::wagner ? Evp::wagner
                                                       : Evp::frost_kalkwarf)
                .value;
        case FitQuantity::liquid_density:
            return rhoL_Fu(s, static_cast<float>(T)).rho;
        case FitQuantity::vaporization_enthalpy:
            return hLV_Fu(s, T).value;
        default:
            if (phase == CpPhase::liquid) return cpL_Fu(s, T);
            if (phase == CpPhase::solid) return cpS_Fu(s, T);
            return cpIdG(s, T, model == FitModel::dippr_cp ? CpForm::sinh_cosh : CpForm::polynomial).cp;
    }
}

TEST(TransferTest, database_functions_give_the_fitted_curve) {
    for (const test::KnownFit& known : test::known_fits()) {
        const FitModelRow& row = fit_model(known.model);
        if (row.quantity == FitQuantity::general || known.model == FitModel::august_rankine) continue;
        const FitInput input = on_curve(known);
        const FitResult result = fit(input);
        ASSERT_EQ(result.end, FitEnd::converged) << row.name;
        for (const CpPhase phase : {CpPhase::ideal_gas, CpPhase::liquid, CpPhase::solid}) {
            const Transfer transfer = apply_fit({}, input, result, phase);
            ASSERT_TRUE(transfer.applied) << row.name << ": " << transfer.message.text;
            EXPECT_EQ(transfer.message.title, "Parameters successfully applied");
            // An ln fit says that it was converted.
            const bool converted = transfer.message.text.find("to lg)") != std::string::npos;
            EXPECT_EQ(converted, row.has_lg_form() && !known.constants.UseLg) << row.name;
            for (const FitPoint& point : input.points) {
                if (!point.active) continue;
                const float T = static_cast<float>(point.x);
                const double y = fitted_value(input, result.values(), T).value();
                EXPECT_NEAR(database_value(transfer.substance, known.model, phase, T), y, 2e-5 * y)
                    << known.name << ", " << row.name << " at " << T;
            }
        }
    }
}

TEST(TransferTest, slots_and_limits) {
    FitInput input;
    FitResult result;
    result.end = FitEnd::converged;
    result.parameters = {{1}, {2}, {3}, {4}, {5}};
    input.points = {{250.9, 1}, {399.99, 1}, {100, 1, false}};
    input.constants = {true, 500, 4000};
    const auto cells = [&](FitModel model) {
        input.model = model;
        return apply_fit({}, input, result, CpPhase::ideal_gas).substance;
    };
    SubstanceConstants s = cells(FitModel::majer);
    EXPECT_EQ(s.HLV, (std::array<float, 6>{1, 3, 0, 0, 0, 2}));
    EXPECT_EQ(s.HLVTcr, 500);
    EXPECT_EQ(s.HLVTLo, 250);
    EXPECT_EQ(s.HLVTHi, 399);
    EXPECT_EQ(cells(FitModel::wagner).Wagner, (std::array<float, 8>{1, 2, 3, 3, 4, 6, 0, 0}));
    EXPECT_EQ(cells(FitModel::dippr_pressure).KFDB, (std::array<float, 9>{1, 2, 273.15f, 3, 0, 0, 0, 4, 5}));
    EXPECT_EQ(cells(FitModel::leuna).RhoL, (std::array<float, 7>{1, 2, 3, 4, 0, 0, 5}));
    EXPECT_EQ(cells(FitModel::rackett).RhoL, (std::array<float, 7>{0, 1, 2, 3, 0, 0, 0}));
    s = cells(FitModel::cp_polynomial);
    EXPECT_EQ(s.cpPoly, (std::array<float, 5>{1, 2, 3, 4, 0}));
    EXPECT_TRUE(s.havePoly);
    input.constants.UseLg = false;
    EXPECT_NEAR(cells(FitModel::antoine).AntLo[1], 2 / std::log(10.0), 1e-7);
    EXPECT_EQ(cells(FitModel::antoine).AntLo[2], 3);
}

TEST(TransferTest, refusals) {
    struct Case {
        FitModel model;
        std::vector<double> par;
        CpPhase phase;
        const char* text;  // empty: applied
    };
    const Case cases[] = {
        {FitModel::august_rankine, {1, 2, 3}, CpPhase::ideal_gas, "chooce ANTOINE C-fixed = 273.15"},
        {FitModel::polynomial, {1, 2, 3, 4, 5, 6}, CpPhase::ideal_gas, "no parameters of an equation"},
        {FitModel::shomate, {1, 2, 3, 4, 0.9}, CpPhase::ideal_gas, "T^4"},
        {FitModel::shomate, {1, 2, 3, 4, -5}, CpPhase::ideal_gas, ""},
        {FitModel::shomate, {1, 2, 3, 4, -5}, CpPhase::liquid, "T^4"},
        {FitModel::shomate, {1, 2, 3, 4, -15}, CpPhase::solid, ""},
        {FitModel::dippr_cp, {1, 2, 99, 4, 5}, CpPhase::liquid, "polynomial"},
        {FitModel::dippr_cp, {1, 2, 99, 4, 5}, CpPhase::ideal_gas, ""},
        {FitModel::dippr_cp, {1, 2, -101, 4, 5}, CpPhase::solid, ""},
        {FitModel::cp_polynomial, {1, 2, 101, 4, 0}, CpPhase::solid, "DIPPR"},
        {FitModel::cp_polynomial, {0, 2, 3, 4, 0}, CpPhase::liquid, "without it"},
        {FitModel::leuna, {0, 2, 3, 4, 5}, CpPhase::ideal_gas, "RACKETT"},
        {FitModel::majer, {1e300, 2, 3}, CpPhase::ideal_gas, "too large"},
    };
    for (const Case& c : cases) {
        FitInput input;
        input.model = c.model;
        input.points = {{300, 1}};
        FitResult result;
        result.end = FitEnd::converged;
        for (const double p : c.par) result.parameters.push_back({p});
        const Transfer transfer = apply_fit({}, input, result, c.phase);
        EXPECT_EQ(transfer.applied, *c.text == 0) << c.text;
        EXPECT_THAT(transfer.message.text, HasSubstr(c.text));
        if (!transfer.applied) {
            EXPECT_EQ(transfer.substance, SubstanceConstants{}) << c.text;
        }
    }
}

}  // namespace
}  // namespace quom

// One fluid shared by eight threads gives the numbers that one thread gets. Small enough for the thread
// sanitizer.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "calc/outcome.h"
#include "engine/saturation.h"
#include "engine/state_columns.h"
#include "engine/thermo_functions.h"
#include "support/starter.h"

namespace quom {
namespace {

void add(std::vector<double>& to, const std::vector<double>& from) {
    to.insert(to.end(), from.begin(), from.end());
}

// Numbers of every kind of evaluation, in one row.
std::vector<double> evaluations(const Fluid& fluid) {
    std::vector<double> row, T, p;
    for (int i = 0; i < 100; ++i) {
        T.push_back(180.0 + 3.0 * i);
        p.push_back(20.0 + 97.0 * (i % 53));
    }
    StateColumns c;
    states_at(fluid, T, p, c);
    for (const auto* column : {&c.v, &c.h, &c.s, &c.cp, &c.w, &c.lnphi}) add(row, *column);
    states_on(*make_isotherm(fluid, 300.0), p, c);
    add(row, c.g);
    SaturationColumns sat;
    saturation_at(fluid, T, sat);
    add(row, sat.p);
    add(row, sat.V.h);
    for (std::size_t i = 0; i < T.size(); ++i) {
        const VolumeResult r = VolumeTp(fluid, T[i], p[i]);
        const double v = r.VFlag ? r.vV : r.vL;
        row.push_back(v);
        row.push_back(ThermoState(fluid, T[i], p[i], v).eH);
        row.push_back(pLV_EOS(fluid, T[i]).p);
        row.push_back(TLV_EOS(fluid, p[i]).T);
        row.push_back(TpV(fluid, p[i], fluid.M / v, false).T);
        const Outcome outcome = CalcBatch(fluid, {.mode = Mode::T_p, .T = T[i], .p = p[i]});
        for (const auto& phase : {outcome.L, outcome.V}) row.push_back(phase ? phase->h.value_or(0.0) : 0.0);
    }
    return row;
}

TEST(Threads, ShareAFluid) {
    for (const Eos code : {Eos::peng_robinson, Eos::tovarn_ji_2, Eos::virial_soave}) {
        const EosInput typed{.JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 0.2, .JiZc = 0.31, .JiB1 = 0.02};
        const std::shared_ptr<const Fluid> fluid = test::starter_fluid(test::propane, code, typed);
        std::vector<std::vector<double>> rows(8);
        {
            std::vector<std::jthread> threads;
            for (auto& row : rows) threads.emplace_back([&row, fluid] { row = evaluations(*fluid); });
        }
        const std::vector<double> alone = evaluations(*fluid);
        for (const auto& row : rows) {
            ASSERT_EQ(row.size(), alone.size());
            // Bit by bit: an absent number is the same as itself
            EXPECT_EQ(std::memcmp(row.data(), alone.data(), alone.size() * sizeof(double)), 0);
        }
    }
}

}  // namespace
}  // namespace quom

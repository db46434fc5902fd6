#include "calc/isotherm_points.h"

#include <algorithm>

#include "calc/batch_points.h"
#include "calc/calc_fixture.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

struct State {
    const char* what;
    int eos;
    double T, p;
    std::size_t stretches, roots;
};
constexpr State states[] = {
    {"vapor", eos_peng_robinson, 300.0, 500.0, 5, 3},
    {"compressed liquid", eos_soave, 300.0, 20000.0, 5, 1},
    {"cold, minimum far below zero", eos_redlich_kwong, 150.0, 0.5, 5, 3},
    {"near T(cr)", eos_van_der_waals, 360.0, 3800.0, 5, 3},
    {"above T(cr)", eos_peng_robinson, 400.0, 6000.0, 1, 1},
};

// Every point lies on p(T, v) of the engine, neighbours meet, and the ends of the stretches are what they are
// called: saturation at p(LV), spinodals with a slope of zero.
TEST(IsothermPoints, lie_on_the_equation_in_force) {
    for (const State& at : states) {
        SCOPED_TRACE(at.what);
        Bench b(propane, at.eos);
        b.specific_units();
        b.run(3, at.T, at.p);
        const Scratch before = b.s.scratch;
        const IsothermPicture picture = diagnosis_picture(b.s);
        EXPECT_EQ(b.s.scratch.VRoot, before.VRoot);
        EXPECT_EQ(b.s.scratch.aT, before.aT);
        ASSERT_TRUE(picture.available);
        EXPECT_EQ(picture.v_unit, "m^3/kg");
        ASSERT_EQ(picture.isotherm.size(), at.stretches);
        ASSERT_EQ(picture.marks.size(), at.roots);
        EXPECT_LT(picture.p_low, picture.p_high);
        const double M = static_cast<double>(b.s.substance.MolMass);
        const double T = picture.T;
        const auto p = [&](double v) { return EOSParT(b.s, T), pTv(b.s, T, v * M).p; };
        const VpPoint* last = nullptr;
        for (const IsothermStretch& stretch : picture.isotherm) {
            ASSERT_GE(stretch.points.size(), 2u);
            if (last) {
                EXPECT_EQ(stretch.points.front().v, last->v);
            }
            for (const VpPoint& point : stretch.points) {
                EXPECT_NEAR(point.p, p(point.v), 1e-9 * (std::abs(point.p) + picture.p_high));
                EXPECT_GE(point.v, last ? last->v : 0.0);
                last = &point;
            }
        }
        EXPECT_LT(picture.isotherm.front().points.front().v, picture.marks.front().at.v);
        EXPECT_GT(last->v, picture.marks.back().at.v);
        for (const VpPoint& extreme : picture.spinodals) {
            const double h = 1e-4 * extreme.v;
            const double curvature = std::abs(p(extreme.v + h) - 2.0 * p(extreme.v) + p(extreme.v - h));
            EXPECT_LE(std::abs(p(extreme.v + h) - p(extreme.v - h)), 0.1 * curvature);
        }
        if (at.stretches != 5) continue;
        EXPECT_DOUBLE_EQ(picture.pLV, pLV_EOS(b.s, T).value);
        EXPECT_NEAR(picture.isotherm[0].points.back().p, picture.pLV, 1e-5 * picture.p_high);
        EXPECT_NEAR(picture.isotherm[4].points.front().p, picture.pLV, 1e-5 * picture.p_high);
    }
}

TEST(IsothermPoints, need_a_cubic_equation_and_a_state) {
    Bench b;
    EXPECT_FALSE(diagnosis_picture(b.s).available);
    b.set_eos(eos_ideal_gas);
    b.run(3, 300.0, 500.0);
    EXPECT_FALSE(diagnosis_picture(b.s).available);
    EXPECT_FALSE(region_picture(b.s, 400.0, 6000.0).available);
}

TEST(IsothermPoints, regions_about_the_critical_point) {
    Bench b;
    const double Tcr = b.s.substance.Tcr, pcr = b.s.substance.pcr;
    const struct {
        double T, p;
        int region;
        bool log_p, isotherm, mark;
    } cases[] = {
        {400.0, 6000.0, 2, false, true, true}, {300.0, 6000.0, 1, false, true, true},
        {400.0, 1000.0, 3, false, true, true}, {400.0, 0.1, 3, true, true, true},
        {400.0, 90000.0, 2, true, true, true}, {Tcr, pcr, 4, false, true, true},
        {400.0, 0.0, 3, false, true, false},   {0.0, 6000.0, 1, false, false, false},
    };
    for (const auto& at : cases) {
        SCOPED_TRACE(at.T);
        const IsothermPicture picture = region_picture(b.s, at.T, at.p);
        ASSERT_TRUE(picture.available);
        EXPECT_EQ(picture.region, at.region);
        EXPECT_EQ(picture.log_p, at.log_p);
        EXPECT_EQ(!picture.isotherm.empty(), at.isotherm);
        EXPECT_EQ(picture.marks.size(), at.mark ? 1u : 0u);
        for (const IsothermMark& mark : picture.marks) {
            EXPECT_GT(mark.at.v, picture.v_low);
            EXPECT_LT(mark.at.v, picture.v_high);
        }
        // The critical isotherm goes through the critical point, which is the top of the coexistence curve.
        const auto top = std::max_element(picture.coexistence.begin(), picture.coexistence.end(),
                                          [](const VpPoint& x, const VpPoint& y) { return x.p < y.p; });
        EXPECT_NEAR(top->p, pcr, 1e-9 * pcr);
        EXPECT_NEAR(top->v, picture.vcr, 1e-4 * picture.vcr);
        EXPECT_TRUE(std::is_sorted(picture.coexistence.begin(), picture.coexistence.end(),
                                   [](const VpPoint& x, const VpPoint& y) { return x.v < y.v; }));
    }
}

TEST(BatchPoints, steps_skip_one_deleted_point) {
    Session s;
    EXPECT_EQ(first_active_point(s), 0);
    s.exp.points.resize(7);
    for (const std::size_t deleted : {1u, 3u, 5u, 6u}) s.exp.points[deleted].Aus = -1;
    EXPECT_EQ(first_active_point(s), 2);
    const int expected[][3] = {{2, 1, 4}, {4, 1, 6}, {2, -1, 2}, {4, -1, 2}, {6, 1, 6}, {6, -1, 4}};
    for (const auto& e : expected) EXPECT_EQ(stepped_point(s, e[0], e[1]), e[2]) << e[0] << ' ' << e[1];
    clear_results(s);
    EXPECT_EQ(s.calc.BatchResults.size(), 7u);
    EXPECT_FALSE(s.calc.BatchResults[2].has_result());
}

}  // namespace
}  // namespace quom::test

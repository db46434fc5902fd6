// The same curve by several equations: what is offered, what is drawn, and deviations against values that are
// computed directly and against published ones.
#include "forms/compare_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "base/files.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "forms/diagram_form.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class CompareForm : public ::testing::Test {
 protected:
    // An empty sheet of the kind, with the parameter that was typed.
    void sheet_of(Kind kind, const char* parameter = nullptr) {
        unload_sheet(session.diagram);
        ASSERT_TRUE(choose_diagram(session, kind, user).open);
        if (parameter) {
            ASSERT_TRUE(take_parameter(session, parameter, user).taken);
        }
        user.take();
    }
    GraphDocument& sheet() { return *session.diagram.sheet; }
    const SubstanceConstants& substance() { return session.substance(); }

    // The choices with these keys, in this order.
    std::vector<CompareChoice> choose(std::initializer_list<const char*> keys) {
        const std::vector<CompareChoice> offered = compare_choices(session);
        std::vector<CompareChoice> chosen;
        for (const char* key : keys) {
            const auto at = std::ranges::find(offered, key, &CompareChoice::key);
            EXPECT_NE(at, offered.end()) << key;
            if (at != offered.end()) chosen.push_back(*at);
        }
        return chosen;
    }
    CurveComparison compare(std::initializer_list<const char*> keys, std::size_t reference = 0) {
        return compare_curves(compare_input(session, choose(keys), reference));
    }
    DrawnComparison draw(std::initializer_list<const char*> keys, std::size_t reference = 0) {
        return draw_comparison(session, choose(keys), reference, user);
    }
    double p_eos(Eos code, double T) { return pLV_EOS(*with_eos(*session.fluid, code), T).p; }
    std::vector<std::string> keys(Kind kind) {
        std::vector<std::string> all;
        for (const CompareChoice& choice : compare_choices(*session.fluid, session.document.units, kind))
            all.push_back(choice.key);
        return all;
    }

    Session session = sample::propane();
    QueuedMessages user;
};

TEST_F(CompareForm, offers_what_the_substance_has_and_the_diagram_takes) {
    // No fit of Tovarn/Ji, no typed virial equation; equations of the V-phase have no phase equilibrium.
    EXPECT_THAT(keys(Kind::sat_p_v), ElementsAre("eos_2", "eos_3", "eos_4", "eos_5", "eos_6"));
    EXPECT_THAT(keys(Kind::rho_p), ElementsAre("eos_0", "eos_2", "eos_3", "eos_4", "eos_5", "eos_6", "eos_16",
                                               "eos_11", "eos_12", "eos_13", "eos_14", "eos_15"));
    EXPECT_THAT(keys(Kind::sat_p_T),
                ElementsAre("eos_2", "eos_3", "eos_4", "eos_5", "eos_6", "evp_5", "evp_6", "evp_7", "evp_8"));
    EXPECT_THAT(keys(Kind::sat_slope_invT), ElementsAre("evp_5", "evp_6", "evp_7", "evp_8"));
    EXPECT_THAT(keys(Kind::db_kfw), ElementsAre("evp_6", "evp_7", "evp_8"));
    EXPECT_THAT(keys(Kind::hLV_T), ElementsAre("hlv_2", "hlv_3", "hlv_6", "hlv_7"));
    EXPECT_THAT(keys(Kind::db_cpId_sinh), ElementsAre("cp_2"));
    EXPECT_TRUE(keys(Kind::db_rhoL).empty());
}

// p(LV) of both equations and of a correlated one, each by its own routine.
TEST_F(CompareForm, deviations_are_those_of_values_computed_directly) {
    sheet_of(Kind::sat_p_T);
    const DrawnComparison drawn = draw({"eos_6", "eos_5", "evp_7"});
    ASSERT_THAT(drawn.curve_slots, ElementsAre(1, 2, 3));
    ASSERT_GE(drawn.table.rows.size(), 15u);
    double sum = 0.0, size = 0.0, largest = 0.0, largest_T = 0.0;
    for (const ComparedRow& row : drawn.table.rows) {
        const double T = row.x, PR = p_eos(Eos::peng_robinson, T), SRK = p_eos(Eos::soave, T);
        EXPECT_NEAR(*row.y[0], PR, 1e-9 * PR);
        EXPECT_NEAR(*row.y[1], SRK, 1e-9 * SRK);
        const double kfr = pLV_EVP(session.fluid->substance, T, Evp::kfr).value;
        EXPECT_NEAR(*row.y[2], kfr, 1e-9 * kfr);
        EXPECT_NEAR(*deviation(drawn.table, row, 1), SRK - PR, 1e-8 * PR);
        const double percent = 100.0 * (SRK / PR - 1.0);
        EXPECT_NEAR(*deviation_percent(drawn.table, row, 1), percent, 1e-6);
        sum += percent;
        size += std::fabs(percent);
        if (std::fabs(percent) > std::fabs(largest)) {
            largest = percent;
            largest_T = T;
        }
    }
    const DeviationSummary& SRK = drawn.table.curves[1];
    const auto n = static_cast<double>(drawn.table.rows.size());
    EXPECT_EQ(SRK.count, static_cast<int>(n));
    EXPECT_NEAR(*SRK.mean_size_percent, size / n, 1e-6);
    EXPECT_NEAR(*SRK.mean_percent, sum / n, 1e-6);
    EXPECT_NEAR(*SRK.largest_percent, largest, 1e-6);
    EXPECT_EQ(SRK.largest_percent_x, largest_T);
    EXPECT_NEAR(*drawn.table.curves[0].largest, 0.0, 0.0);
    // Both equations are made for p(LV): they agree within some per cent from T(nb) up.
    for (const ComparedRow& row : drawn.table.rows) {
        if (row.x < 231.0) continue;
        EXPECT_LT(std::fabs(*deviation_percent(drawn.table, row, 1)), 3.0) << row.x;
    }
    const char* names[] = {"Peng / Robinson", "Soave / Redlich / Kwong", "Fro/Kalk (Redl./Kwong correlated)"};
    for (int i = 0; i < 3; ++i) {
        EXPECT_THAT(sheet().curve(i + 1).series.label.text, HasSubstr(names[i]));
        EXPECT_THAT(sheet().curve(i + 1).series.legend, HasSubstr(names[i]));
    }
    EXPECT_TRUE(user.take().empty());
}

TEST_F(CompareForm, another_reference_turns_the_signs) {
    sheet_of(Kind::rho_p, "320");
    const CurveComparison a = compare({"eos_6", "eos_5"}), b = compare({"eos_6", "eos_5"}, 1);
    ASSERT_EQ(a.rows.size(), b.rows.size());
    for (std::size_t i = 0; i < a.rows.size(); ++i)
        EXPECT_EQ(*deviation(a, a.rows[i], 1), -*deviation(b, b.rows[i], 0));
    EXPECT_EQ(a.curves[1].mean, -*b.curves[0].mean);
    EXPECT_EQ(*b.curves[1].largest, 0.0);
}

// Between the vapor pressures of two equations one is a vapor and the other a liquid.
TEST_F(CompareForm, phases_are_compared_with_their_like) {
    sheet_of(Kind::h_p, "320");
    const double p1 = p_eos(Eos::peng_robinson, 320), p2 = p_eos(Eos::van_der_waals, 320);
    ASSERT_GT(p2 / p1, 1.2);
    const CurveComparison table = compare({"eos_6", "eos_2", "eos_0"});
    int liquid = 0, vapor = 0;
    for (const ComparedRow& row : table.rows) {
        if (row.part == CurvePart::liquid) {
            ++liquid;
            EXPECT_GT(row.x, p2);
            EXPECT_FALSE(row.y[2]);
        } else {
            ++vapor;
            EXPECT_EQ(row.part, CurvePart::vapor);
            EXPECT_LE(row.x, p1 * (1.0 + 1e-12));
            EXPECT_TRUE(row.y[2]);
        }
    }
    EXPECT_GT(liquid, 10);
    EXPECT_GT(vapor, 10);
    EXPECT_THAT(table.notes, Contains("liquid: Idealgas EOS has no value in the range."));
    EXPECT_FALSE(table.percent);  // h has no zero of its own
    EXPECT_FALSE(table.curves[1].mean_percent);
}

// Above T(cr) there is one phase; the ideal gas is its own formula.
TEST_F(CompareForm, one_phase_and_the_ideal_gas) {
    sheet_of(Kind::rho_p, "450");
    const CurveComparison table = compare({"eos_0", "eos_6"});
    ASSERT_GE(table.rows.size(), 15u);
    for (const ComparedRow& row : table.rows) {
        const double ideal = row.x * session.fluid->M / (RGas * 450.0);
        EXPECT_NEAR(*row.y[0], ideal, 1e-6 * ideal);
    }
}

TEST_F(CompareForm, a_dome_has_both_of_its_branches) {
    sheet_of(Kind::sat_T_rho);
    const DrawnComparison drawn = draw({"eos_6", "eos_5"});
    EXPECT_THAT(drawn.curve_slots, ElementsAre(1, 2, 3, 4));
    int liquid = 0, vapor = 0;
    for (const ComparedRow& row : drawn.table.rows) {
        const Saturation at = pLV_EOS(*with_eos(*session.fluid, Eos::soave), *row.y[1]);
        (row.part == CurvePart::liquid ? liquid : vapor) += 1;
        const double v = row.part == CurvePart::liquid ? at.vL : at.vV;
        EXPECT_NEAR(session.fluid->M / v, row.x, 1e-5 * row.x);
    }
    EXPECT_GT(liquid, 10);
    EXPECT_GT(vapor, 10);
}

// The Wagner equation ends at its T(cr); the line of August goes on.
TEST_F(CompareForm, an_equation_that_fails_in_part_of_the_range) {
    session = test::substance_session(test::water, Eos::peng_robinson);
    sheet_of(Kind::db_wagner);
    const double Tcr = substance().Tcr;
    sheet().diagram.range.XMax = static_cast<float>(1.2 * Tcr);
    sheet().diagram.range.YMax = 1e6F;
    const DrawnComparison drawn = draw({"evp_3", "evp_4"});
    ASSERT_TRUE(drawn.drawn);
    ASSERT_FALSE(drawn.table.rows.empty());
    EXPECT_LE(drawn.table.rows.back().x, Tcr);
    EXPECT_GT(drawn.table.rows.back().x, 0.95 * Tcr);
    for (const ComparedRow& row : drawn.table.rows) EXPECT_TRUE(row.y[0] && row.y[1]);
    EXPECT_EQ(drawn.table.curves[1].missing, 0);
}

TEST_F(CompareForm, refused_where_slots_or_equations_do_not_suffice) {
    sheet_of(Kind::rho_p, "450");
    while (CurveCount(sheet()) < 23) ASSERT_GT(draw_curve(session, user), 0);
    user.take();
    const GraphDocument before = sheet();
    EXPECT_FALSE(draw({"eos_6", "eos_5"}).drawn);
    EXPECT_EQ(user.take()[0].second, "Maximum 24 curves possible\n\nDelete existing curves");
    EXPECT_EQ(sheet(), before);
    delete_curve(sheet(), 7);
    EXPECT_THAT(draw({"eos_6", "eos_5"}).curve_slots, ElementsAre(7, 24));
    delete_all(sheet());
    EXPECT_FALSE(draw({"eos_6"}).drawn);
    EXPECT_FALSE(draw({"eos_6", "eos_5"}, 2).drawn);
    EXPECT_EQ(user.take().size(), 2u);
    EXPECT_EQ(CurveCount(sheet()), 0);
}

struct Published {
    double T, p;
};
std::vector<Published> published_water() {
    std::ifstream file(test::test_data() + "/data/water_vapor_pressure.csv");
    std::vector<Published> points;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream cells(line);
        Published point{};
        char comma = 0;
        if (cells >> point.T >> comma >> point.p) points.push_back(point);
    }
    return points;
}

TEST_F(CompareForm, published_vapor_pressures_of_water) {
    session = test::substance_session(test::water, Eos::peng_robinson);
    const std::vector<Published> published = published_water();
    ASSERT_EQ(published.size(), 6u);
    test::change(session, [&](Document& d) {
        std::vector<TpRhoPoint> points(1);
        for (const Published& at : published) points.push_back({.T = at.T, .p = at.p});
        points.push_back({.Aus = -1, .T = 400.0, .p = 1.0});  // taken out by the user
        d.exp.points = std::move(points);
    });
    sheet_of(Kind::sat_p_T);
    const CurveComparison table = compare({"evp_4", "evp_1", "eos_6"});
    ASSERT_EQ(table.measured_rows.size(), 6u);
    const struct {
        Evp code;
        double most;  // AAD [%]
    } equations[] = {{Evp::wagner, 0.1}, {Evp::antoine_low, 3.0}};
    for (std::size_t i = 0; i < 2; ++i) {
        double size = 0.0, sum = 0.0;
        for (const Published& at : published) {
            const double percent = 100.0 * (pLV_EVP(substance(), at.T, equations[i].code).value / at.p - 1.0);
            size += std::fabs(percent) / 6.0;
            sum += percent / 6.0;
        }
        EXPECT_EQ(table.points[i].count, 6);
        EXPECT_NEAR(*table.points[i].mean_size_percent, size, 1e-9);
        EXPECT_NEAR(*table.points[i].mean_percent, sum, 1e-9);
        EXPECT_LT(size, equations[i].most) << i;
    }
    EXPECT_GT(*table.points[2].mean_size_percent, *table.points[0].mean_size_percent);
}

// In a section only points with its parameter, and each with the phase of its density.
TEST_F(CompareForm, measured_points_of_a_section) {
    const double T = 320.0;
    const Saturation sat = pLV_EOS(*session.fluid, T);
    const auto rho = [&](double v) { return static_cast<float>(session.fluid->M / v); };
    test::change(session, [&](Document& d) {
        std::vector<TpRhoPoint> points(1);
        points.push_back({.T = T, .p = 0.9 * sat.p, .rhoV = rho(1.02 * sat.vV)});
        points.push_back({.T = T, .p = 1.1 * sat.p, .rhoL = rho(1.01 * sat.vL)});
        points.push_back({.T = T, .p = 0.8 * sat.p, .rhoL = rho(sat.vL)});  // a vapor by both
        points.push_back({.T = 330.0, .p = sat.p, .rhoL = rho(sat.vL)});
        d.exp.points = std::move(points);
    });
    sheet_of(Kind::rho_p, "320");
    const CurveComparison table = compare({"eos_6", "eos_0"});
    ASSERT_EQ(table.measured_rows.size(), 3u);
    EXPECT_EQ(table.points[0].count, 2);
    EXPECT_EQ(table.points[0].missing, 1);
    EXPECT_EQ(table.points[1].count, 1);  // the ideal gas is a vapor
    EXPECT_NEAR(table.measured_rows[1].x, 0.9 * sat.p, 1e-9 * sat.p);
    const double measured = session.fluid->M / (1.02 * sat.vV);
    const double ideal = 0.9 * sat.p * session.fluid->M / (RGas * T);
    EXPECT_NEAR(*deviation_percent(table, table.measured_rows[1], 1), 100.0 * (ideal / measured - 1.0), 1e-4);
}

TEST_F(CompareForm, report_for_people_and_programs) {
    sheet_of(Kind::rho_p, "320");
    const std::vector<CompareChoice> choices = choose({"eos_6", "eos_5"});
    const CompareInput input = compare_input(session, choices);
    const Report report = comparison_report(session, input, compare_curves(input));
    const std::string text = to_text(report), json = to_json(report);
    for (const char* part :
         {"Peng / Robinson", "Soave / Redlich / Kwong", "320.00 K", "liquid", "vapor", "AAD"})
        EXPECT_THAT(text, HasSubstr(part));
    for (const char* key : {"\"eos_6\"", "\"eos_5\"", "\"eos_5_deviation\"", "\"eos_5_percent\"", "\"aad\""})
        EXPECT_THAT(json, HasSubstr(key));
}

}  // namespace
}  // namespace quom

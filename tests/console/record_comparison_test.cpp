// What the record says beside the states of the equation of state, as every command shows it.
#include <gmock/gmock.h>

#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

constexpr const char* title = "The record beside the equation of state, both saturated at T = 300 K";

// Water at 300 K: 847.6 kg/m^3 by Peng/Robinson, 996.5 by tables, p(LV) 3.537 kPa.
TEST(Comparison, the_same_beside_every_state_of_water_at_300_K) {
    for (const char* line :
         {"state water --T 300 --p 101.325", "state water --T 300 --p 1", "saturation water --T 300",
          "saturation water --T 300 --concept partial", "calc water --mode 4 --T 300",
          "calc water --mode 3 --T 300 --p 5000", "tank water --T 300 --V 1 --m 5",
          "iso water --T 300 --hold v --value 0.0212 --phase L"}) {
        const Json answer = found(line);
        const Json& c = answer["comparison"];
        EXPECT_EQ(c["T"], 300) << line;
        EXPECT_NEAR(at(c, "/rho_L"), 847.6, 0.1) << line;
        EXPECT_NEAR(at(c, "/rho_L_record"), 996.5, 1.0) << line;
        EXPECT_NEAR(at(c, "/rho_L_difference"), -14.95, 0.05) << line;
        EXPECT_NEAR(at(c, "/p_record"), 3.537, 0.005) << line;
        EXPECT_NEAR(at(c, "/p_difference"), 100 * (at(c, "/p") / at(c, "/p_record") - 1), 1e-9) << line;
        EXPECT_EQ(c["evp"], 4) << line;
        EXPECT_EQ(answer["units"]["rho_L_difference"], "%") << line;
        const std::string text = quomc(line).out;
        EXPECT_THAT(text, HasSubstr(title)) << line;
        EXPECT_THAT(text, HasSubstr("847.59")) << line;
        EXPECT_THAT(text, HasSubstr("-14.9")) << line;
    }
    // delta(LV)h in the unit of the answer: 43.9 kJ/mol over R, and the same difference.
    const Json molar = found("saturation water --T 300")["comparison"];
    const Json reduced = found("saturation water --T 300 --energy 1")["comparison"];
    EXPECT_NEAR(at(reduced, "/hLV_record") * 8.31451, at(molar, "/hLV_record"), 1e-6);
    EXPECT_NEAR(at(reduced, "/hLV_difference"), at(molar, "/hLV_difference"), 1e-9);
}

TEST(Comparison, no_line_where_nothing_can_be_compared) {
    for (const char* line : {"state water --T 700 --p 101.325", "state water --T 300 --p 1 --eos 14",
                             "calc water --mode 4 --T 300 --concept partial", "calc water --mode 14 --T 300",
                             "tank water --T 300 --V 1 --m 5 --concept partial"}) {
        const Json c = found(line)["comparison"];
        ASSERT_TRUE(c.is_object()) << line;
        for (const auto& [key, value] : c.items()) EXPECT_TRUE(value.is_null()) << line << " " << key;
        EXPECT_THAT(quomc(line).out, Not(HasSubstr("The record beside"))) << line;
    }
}

// The result list of calc stays as it is: the comparison stands below it.
TEST(Comparison, stands_below_the_result_list) {
    const std::string text = quomc("calc water --mode 4 --T 300").out;
    const std::size_t list = text.find("Paramet. of the generalized cub. EOS"), below = text.find(title);
    ASSERT_NE(below, std::string::npos);
    EXPECT_LT(list, below);
    EXPECT_EQ(text.substr(below - 2, 2), "\n\n");
}

}  // namespace
}  // namespace quom

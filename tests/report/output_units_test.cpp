// Reports in chosen units: what is converted and what stays.
#include "report/output_units.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quom {
namespace {

constexpr double M = 44.0;

TEST(InUnits, converts_by_key_and_unit) {
    Report report;
    report.sections.emplace_back(Block{"state",
                                       "",
                                       {{"T", "T", 300.0, "K", ""},
                                        {"T_0", "T0", Value(), "K", ""},             // absent
                                        {"dT", "outside", 9.0, "K", ""},             // a difference
                                        {"h_V", "h(V)", 8800.0, "kJ/kmol", ""},      // 8800/44
                                        {"h_res", "(h - h_idG)/R", -70.0, "K", ""},  // of R
                                        {"delta(LV)h", "delta(LV)h", 440.0, "kJ/kmol", ""},
                                        {"delta_V", "delta(V)", 0.5, "K/kPa", ""},
                                        {"u", "u", 100.0, "kJ/kg", ""},        // converted by other means
                                        {"v_L", "v(L)", 0.0, "m^3/kmol", ""},  // has no density
                                        {"target", "s", 88.0, "kJ/(kmol K)", "", Quantity::s},
                                        {"y", "vapor fraction", 0.5, "", ""}},
                                       Layout::list});
    report.sections.emplace_back(Table{"validity", "", {{"name", "", ""}, {"TLo", "", "K"}}, {{"cp", 273}}});
    report.sections.emplace_back(
        Grid{"functions", "", {"L", "V"}, {{"cp", "cp", "kJ/(kmol K)", {44.0, Value()}}}});
    const OutputUnits units =
        parse_units("T=C,h=kJ/kg,hLV=kJ/kg,s=kJ/(kg K),cp=J/(g K),u=kJ/kg,v=kg/m3,delta=K/bar", M);
    ASSERT_EQ(units.fault, "");
    const Report converted = in_units(report, units);

    const struct {
        const char* key;
        double value;  // NaN: absent
        const char* unit;
    } fields[] = {{"T", 26.85, "°C"},         {"T_0", NAN, "°C"},  {"dT", 9, "K"},
                  {"h_V", 200, "kJ/kg"},      {"h_res", -70, "K"}, {"delta(LV)h", 10, "kJ/kg"},
                  {"delta_V", 50, "K/bar"},   {"u", 100, "kJ/kg"}, {"v_L", NAN, "kg/m^3"},
                  {"target", 2, "kJ/(kg K)"}, {"y", 0.5, ""}};
    const Block& block = std::get<Block>(converted.sections[0]);
    for (std::size_t k = 0; k < std::size(fields); ++k) {
        const Field& field = block.fields[k];
        EXPECT_EQ(field.key, fields[k].key);
        EXPECT_EQ(field.unit, fields[k].unit) << field.key;
        EXPECT_EQ(field.value.absent(), std::isnan(fields[k].value)) << field.key;
        if (!field.value.absent()) {
            EXPECT_NEAR(field.value.number, fields[k].value, 1e-12) << field.key;
        }
    }
    const Table& table = std::get<Table>(converted.sections[1]);
    EXPECT_EQ(table.columns[1].unit, "°C");
    EXPECT_NEAR(table.rows[0][1].number, -0.15, 1e-12);  // a whole number before
    EXPECT_EQ(table.rows[0][0].text, "cp");
    const GridRow& cp = std::get<Grid>(converted.sections[2]).rows[0];
    EXPECT_EQ(cp.unit, "J/(g K)");
    EXPECT_NEAR(cp.values[0].number, 1.0, 1e-12);
    EXPECT_TRUE(cp.values[1].absent());
}

}  // namespace
}  // namespace quom

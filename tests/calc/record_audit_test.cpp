// The audit of a record: water of the starter database contradicts itself nowhere; every wrong digit that is
// put into its record is found by the check that it is meant for.
#include "calc/record_audit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "substance/record.h"
#include "support/starter.h"

namespace quom {
namespace {

using enum AuditCheck;
using test::starter_database;

const RecordLayout& layout() { return *record_layout(7); }

std::string record_of(std::string_view cas) {
    const DatabaseFile file = starter_database();
    std::string record(layout().length, '\0');
    EXPECT_TRUE(file.handle.read_at(layout().length * static_cast<std::size_t>(FindCAS(file, cas)), record));
    return record;
}

int cell_of(std::string_view field) {
    for (const CellField& known : cell_fields())
        if (known.name == field) return known.cell;
    ADD_FAILURE() << "no field " << field;
    return 0;
}

// One cell of a field, counted from its first.
struct Change {
    const char* field;
    int place;
    float value;
};
std::vector<Doubt> audited(std::string record, const std::vector<Change>& changes) {
    for (const Change& change : changes)
        set_record_cell(record, layout(), cell_of(change.field) + change.place, change.value);
    return audit_record(record, layout());
}

std::string listed(const std::vector<Doubt>& doubts) {
    std::string text;
    for (const Doubt& d : doubts) text += std::string(audit_rule(d.check).name) + ": " + d.what + "\n";
    return text;
}

bool has(const std::vector<Doubt>& doubts, AuditCheck check) {
    return std::ranges::any_of(doubts, [&](const Doubt& d) { return d.check == check; });
}

struct Case {
    AuditCheck check;
    Change wrong;
    Change beside{"", 0, 0.0f};  // limits that leave the check alone with its range
};
const Case cases[] = {
    {limits_crossed, {"WagnerTHi", 0, 264}},                          // 647
    {limits_critical, {"KFTHi", 0, 674}},                             // 647
    {limits_triple, {"AntLoTLo", 0, 214}},                            // 274
    {limits_triple, {"RhoSTHi", 0, 283}},                             // 273: ice above its melting point
    {boiling_triple, {"Ttr", 0, 376.13f}},                            // 273.16
    {boiling_triple, {"ptr", 0, 611.655f}},                           // 0.611655: Pa for kPa
    {boiling_critical, {"Tnb", 0, 733.12f}},                          // 373.12
    {critical_T_of_set, {"HLVTcr", 0, 641.096f}},                     // 647.096
    {critical_p_of_set, {"Wagnerpcr", 0, 22604}},                     // 22064
    {critical_p, {"pcr", 0, 22604}},                                  // 22064
    {critical_p_from_evp, {"pcr", 0, 29064}},                         // 22064
    {critical_Z, {"rhocrDB", 0, 232}},                                // 322
    {boiling_p, {"Tnb", 0, 372.12f}},                                 // 373.12
    {triple_p, {"ptr", 0, 0.661655f}},                                // 0.611655, above 0.5 kPa
    {triple_p_low, {"ptr", 0, 0.311655f}},                            // the same below
    {omega, {"omega", 0, 0.3643f}},                                   // 0.3443
    {evp_pair, {"KFDB", 0, 29.0053543f}},                             // 28.9853543: 4.7 %
    {evp_pair_low, {"AntLo", 0, 7.15564f}, {"AntLoTHi", 0, 310}},     // 7.11564: 10 %
    {evp_pair_lowest, {"AntLo", 0, 7.21564f}, {"AntLoTHi", 0, 276}},  // 26 %
    {evp_slope, {"Wagner", 2, 2.30339826f}},                          // -2.30339826
    {evp_value, {"AntHi", 1, -1687.537f}},                            // a sign lost: p falls with T
    {clapeyron, {"HLV", 0, 58053}},                                   // 52053
    {clapeyron_high, {"HLV", 0, 62053}},                              // 52053
    {heat_point, {"WatsonHLV", 0, 49380}},                            // 43980, at 298.15 K
    {rhoL_falling, {"RhoL", 1, 5.14638f}},                            // -5.14638
    {rhoL_critical, {"rhocrDB", 0, 223}, {"RhoLTHi", 0, 647}},        // 322
    {rhoL_benson, {"rhocrDB", 0, 232}},                               // 322
    {cpId_pair, {"cpPoly", 0, 35.6422715f}},                          // 36.5422715
    {cpL_above_ideal, {"cpL", 0, 226.37f}},                           // 276.37
    {formation, {"S0abs", 0, 188.3f}},                                // 188.8: 149 kJ/kmol
};

TEST(RecordAudit, no_doubt_on_water) {
    EXPECT_EQ(listed(audit_record(record_of(test::water), layout())), "");
}

TEST(RecordAudit, finds_every_wrong_digit) {
    const std::string water = record_of(test::water);
    std::set<AuditCheck> tried;
    for (const Case& c : cases) {
        std::vector<Change> changes{c.wrong};
        if (*c.beside.field) changes.push_back(c.beside);
        const std::vector<Doubt> doubts = audited(water, changes);
        EXPECT_TRUE(has(doubts, c.check))
            << audit_rule(c.check).name << " with " << c.wrong.field << " = " << c.wrong.value << "\n"
            << listed(doubts);
        for (const Doubt& d : doubts) {
            EXPECT_EQ(d.what.empty(), false);
            EXPECT_GT(std::fabs(d.difference()), audit_rule(d.check).tolerance) << d.what;
        }
        tried.insert(c.check);
    }
    for (const AuditRule& rule : audit_rules()) {
        EXPECT_EQ(&audit_rule(rule.check), &rule) << "the rows stand in the order of the checks";
        EXPECT_TRUE(tried.contains(rule.check)) << rule.name;
    }
}

// The two figures by hand: Z(cr) = 22064 x (18.0153/232)/(8.31451 x 647.096) = 0.3184, omega 0.3643 against
// 0.344 of steam tables (p(LV) at 452.97 K = 0.9977 MPa), S0 wrong by 0.5 is 298.15 x 0.5 = 149 kJ/kmol.
TEST(RecordAudit, figures_by_hand) {
    const std::string water = record_of(test::water);
    const auto only = [&](AuditCheck check, const Change& change) {
        for (const Doubt& d : audited(water, {change}))
            if (d.check == check) return d;
        ADD_FAILURE() << audit_rule(check).name;
        return Doubt{};
    };
    EXPECT_NEAR(only(critical_Z, {"rhocrDB", 0, 232}).value, 0.3184, 1e-4);
    EXPECT_NEAR(only(omega, {"omega", 0, 0.3643f}).difference(), 0.020, 0.001);
    EXPECT_NEAR(only(formation, {"S0abs", 0, 188.3f}).difference(), -149.0, 10.0);
    const Doubt boiling = only(boiling_p, {"Tnb", 0, 372.12f});
    EXPECT_NEAR(boiling.value, 97.74, 0.1) << "steam tables, 98.97 C";
    EXPECT_EQ(boiling.reference, 101.325);
}

// What a record does not have is not compared, and no numbers are no end.
TEST(RecordAudit, empty_and_senseless_records) {
    std::string record = record_of(test::water);
    for (int cell = 1; cell < CellCount; ++cell) set_record_cell(record, layout(), cell, 0.0f);
    EXPECT_EQ(listed(audit_record(record, layout())), "");
    for (const float value : {-1.0f, 1e30f, 3e4f, std::numeric_limits<float>::quiet_NaN()}) {
        for (int cell = 0; cell < CellCount; ++cell) set_record_cell(record, layout(), cell, value);
        for (const Doubt& d : audit_record(record, layout())) EXPECT_FALSE(d.what.empty());
    }
}

}  // namespace
}  // namespace quom

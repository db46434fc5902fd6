#include "substance/record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <vector>

#include "base/constants.h"
#include "substance_support.h"

namespace quom {
namespace {

using C = SubstanceConstants;

std::string record_of(int kind, int index) {
    const RecordLayout& layout = *record_layout(kind);
    return test::bytes_of(test::golden(kind == 7 ? "two_substances.q07" : "two_substances.q06"))
        .substr(static_cast<std::size_t>(index) * layout.length, layout.length);
}

// In substance 1 of the golden files cell k holds 100 + k, so every field tells which cell it came from.
TEST(Record, every_field_comes_from_its_cell) {
    struct Run {
        const char* name;
        int cell;
        std::function<std::vector<double>(const C&)> values;
    };
    const auto all = [](const auto& array) { return std::vector<double>(array.begin(), array.end()); };
    const auto pair = [](double TLo, double THi) { return std::vector<double>{TLo, THi}; };
    const Run runs[] = {
        {"M", 0, [](const C& c) { return std::vector<double>{c.MolMass}; }},
        {"critical, Tnb", 6,
         [](const C& c) {
             return std::vector<double>{c.Tcr, c.pcr, c.rhocrDB, c.omega, c.Tnb};
         }},
        {"RhoL", 13, [&](const C& c) { return all(c.RhoL); }},
        {"RhoL T", 20,
         [](const C& c) {
             return std::vector<double>{c.RhoLTcr, double(c.RhoLTLo), double(c.RhoLTHi)};
         }},
        {"KF", 24, [&](const C& c) { return all(c.KFDB); }},
        {"KF T", 33, [&](const C& c) { return pair(c.KFTLo, c.KFTHi); }},
        {"AntLo", 36, [&](const C& c) { return all(c.AntLo); }},
        {"AntLo T", 39, [&](const C& c) { return pair(c.AntLoTLo, c.AntLoTHi); }},
        {"AntHi", 42, [&](const C& c) { return all(c.AntHi); }},
        {"AntHi T", 45, [&](const C& c) { return pair(c.AntHiTLo, c.AntHiTHi); }},
        {"Wagner", 48, [&](const C& c) { return all(c.Wagner); }},
        {"Wagner crit", 56, [&](const C& c) { return pair(c.WagnerTcr, c.Wagnerpcr); }},
        {"Wagner T", 58, [&](const C& c) { return pair(c.WagnerTLo, c.WagnerTHi); }},
        {"cpPoly", 61, [&](const C& c) { return all(c.cpPoly); }},
        {"cpPoly T", 66, [&](const C& c) { return pair(c.cpPolyTLo, c.cpPolyTHi); }},
        {"cpDIPPR", 69, [&](const C& c) { return all(c.cpDIPPR); }},
        {"cpDIPPR T", 74, [&](const C& c) { return pair(c.cpDIPPRTLo, c.cpDIPPRTHi); }},
        {"cpL", 77, [&](const C& c) { return all(c.cpL); }},
        {"cpL T", 82, [&](const C& c) { return pair(c.cpLTLo, c.cpLTHi); }},
        {"dfH", 85, [](const C& c) { return std::vector<double>{c.dfH0}; }},
        {"dfG", 87, [](const C& c) { return std::vector<double>{c.dfG0}; }},
        {"S0", 89, [](const C& c) { return std::vector<double>{c.S0abs}; }},
        {"melting", 91,
         [](const C& c) {
             return std::vector<double>{c.Ttr, c.ptr, c.SecondMeltingT};
         }},
        {"HLV", 96, [&](const C& c) { return all(c.HLV); }},
        {"HLV T", 102,
         [](const C& c) {
             return std::vector<double>{c.HLVTcr, double(c.HLVTLo), double(c.HLVTHi)};
         }},
        {"Watson", 105, [&](const C& c) { return pair(c.WatsonHLV, c.WatsonT); }},
        {"cpS", 110, [&](const C& c) { return all(c.cpS); }},
        {"cpS T", 115, [&](const C& c) { return pair(c.cpSTLo, c.cpSTHi); }},
        {"RhoS", 118, [&](const C& c) { return all(c.RhoS); }},
        {"RhoS T", 122, [&](const C& c) { return pair(c.RhoSTLo, c.RhoSTHi); }},
    };
    for (const int kind : {6, 7}) {
        const UnpackedRecord unpacked = unpack_record(record_of(kind, 1), *record_layout(kind), true);
        EXPECT_EQ(unpacked.err, 0);
        for (const Run& run : runs) {
            double expected = 100.0 + run.cell;
            for (const double value : run.values(unpacked.constants))
                EXPECT_EQ(value, expected++) << run.name << " kind " << kind;
        }
    }
}

TEST(Record, texts) {
    const UnpackedRecord english = unpack_record(record_of(7, 1), *record_layout(7), true);
    EXPECT_EQ(english.constants.StoffName, " Ramp  substance");
    EXPECT_EQ(english.constants.StoffFormula, " C1234567890");  // 12 of 16 characters
    EXPECT_EQ(english.constants.StoffStructure, "ramp");
    EXPECT_EQ(english.constants.StoffCAS, "00-00-0");
    EXPECT_EQ(unpack_record(record_of(7, 1), *record_layout(7), false).constants.StoffName, "Rampe");
    EXPECT_EQ(unpack_record(record_of(6, 2), *record_layout(6), false).constants.StoffName, "Ethanol");
    EXPECT_EQ(unpack_record(record_of(6, 2), *record_layout(6), true).constants.StoffStructure, "");

    std::string record = record_of(7, 2);
    EXPECT_EQ(record_text(record, record_layout(7)->Text2), "second € text");
    EXPECT_EQ(record_text(record, record_layout(7)->NameD), "Ethanol; Äthanol; Weingeist");
    set_record_text(record, record_layout(7)->NameE, ";no main name");
    EXPECT_EQ(unpack_record(record, *record_layout(7), true).constants.StoffName, "");
}

// The write-back of an unpacked record changes no byte but those of cell 93, which takes cell 91, the rounded
// limit of substance 2 and its Watson pair; cells without a reader hold NaN patterns and stay bit-true.
TEST(Record, write_back_is_bit_true) {
    for (const int kind : {6, 7})
        for (const int index : {1, 2}) {
            const RecordLayout& layout = *record_layout(kind);
            const std::string before = record_of(kind, index);
            const C constants = unpack_record(before, layout, true).constants;
            std::string after = before;
            pack_cells(constants, layout, after);
            std::set<std::size_t> changed;
            for (std::size_t k = 0; k < before.size(); ++k)
                if (before[k] != after[k]) changed.insert((k - layout.F) / 4);
            // Ethanol: C2 is kept positive, cell 93 := 91, the second Watson pair is the one in use.
            EXPECT_EQ(changed,
                      index == 1 ? std::set<std::size_t>{} : (std::set<std::size_t>{71, 93, 105, 106}));
        }
}

TEST(Record, every_cell_has_at_most_one_field_and_the_named_ones_are_not_written) {
    std::set<int> seen, unwritten;
    for (const CellField& field : cell_fields()) {
        const std::size_t count = std::visit(
            [](auto place) -> std::size_t {
                using Value = std::remove_cvref_t<decltype(C{}.*place)>;
                if constexpr (std::is_arithmetic_v<Value>)
                    return 1;
                else
                    return std::tuple_size_v<Value>;
            },
            field.place);
        for (std::size_t k = 0; k < count; ++k) {
            EXPECT_TRUE(seen.insert(field.cell + static_cast<int>(k)).second) << field.name;
            if (!field.written) unwritten.insert(field.cell + static_cast<int>(k));
        }
    }
    for (int k = 0; k < CellCount; ++k)
        if (!seen.contains(k)) unwritten.insert(k);
    std::set<int> expected{11, 12, 23, 35, 41, 47, 60,  68,  76,  84, 86,
                           88, 89, 90, 92, 94, 95, 107, 108, 109, 117};
    for (int k = 1; k <= 5; ++k) expected.insert(k);
    for (int k = 124; k <= 140; ++k) expected.insert(k);
    EXPECT_EQ(unwritten, expected);
}

// One record of zeros but for the cells given.
UnpackedRecord unpack_cells(const std::vector<std::pair<int, float>>& cells) {
    const RecordLayout& layout = *record_layout(7);
    std::string record(layout.length, '\0');
    for (const auto& [cell, value] : cells) set_record_cell(record, layout, cell, value);
    return unpack_record(record, layout, true);
}

TEST(Record, rules_of_unpacking) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        const char* what;
        std::vector<std::pair<int, float>> cells;
        std::function<double(const UnpackedRecord&)> value;
        double expected;
    };
    const auto err = [](const UnpackedRecord& r) { return double(r.err); };
    const auto watson = [](const UnpackedRecord& r) { return double(r.constants.WatsonHLV); };
    const auto second_melting = [](const UnpackedRecord& r) { return double(r.constants.SecondMeltingT); };
    const auto C2 = [](const UnpackedRecord& r) { return double(r.constants.cpDIPPR[2]); };
    const auto sinh_flag = [](const UnpackedRecord& r) { return double(r.constants.haveSinh); };
    const auto cpL_flag = [](const UnpackedRecord& r) { return double(r.constants.HasCpL); };
    const auto dFs = [](const UnpackedRecord& r) { return r.constants.dFs; };
    const auto A = [](const UnpackedRecord& r) { return double(r.constants.AugustA); };
    const auto TLo = [](const UnpackedRecord& r) { return double(r.constants.RhoLTLo); };
    const Case cases[] = {
        {"no T(cr)", {{7, 5000.0f}}, err, -1},
        {"no p(cr)", {{6, 500.0f}}, err, -1},
        {"both", {{6, 500.0f}, {7, 5000.0f}}, err, 0},
        {"M to 4 decimals",
         {{0, 18.01528f}},
         [](const auto& r) { return double(r.constants.MolMass); },
         double(18.0153f)},
        {"T(cr) to 4 decimals", {{6, 647.096f}}, [](const auto& r) { return r.constants.Tcr; }, 647.096},
        {"v(cr)", {{0, 18.0f}, {8, 300.0f}}, [](const auto& r) { return r.constants.vcrDB; }, 0.06},
        {"no rho(cr)", {{0, 18.0f}}, [](const auto& r) { return r.constants.vcrDB; }, 0},
        {"limit half to even", {{21, 270.5f}}, TLo, 270},
        {"limit half to even", {{21, 271.5f}}, TLo, 272},
        {"limit out of 16 bits", {{21, 40000.0f}}, TLo, 0},
        {"limit no number", {{21, nan}}, TLo, 0},
        {"cell no number", {{9, nan}}, [](const auto& r) { return r.constants.omega; }, 0},
        {"melting T follows", {{91, 150.0f}}, second_melting, 150},
        {"melting T of its own", {{91, 150.0f}, {93, 140.0f}}, second_melting, 140},
        {"Watson 1.99 K off", {{10, 300.0f}, {105, 1.0f}, {107, 2.0f}, {108, 301.99f}}, watson, 2},
        {"Watson 2 K off", {{10, 300.0f}, {105, 1.0f}, {107, 2.0f}, {108, 302.0f}}, watson, 1},
        {"Watson without both T", {{105, 1.0f}, {106, 298.0f}}, watson, 0},
        {"C2 repaired", {{69, 33.0f}, {74, 100.0f}}, C2, double(0.1f)},
        {"C2 negative", {{69, 33.0f}, {71, -1600.0f}}, C2, 1600},
        {"C2 of no function", {{70, 1.0f}}, C2, 0},
        {"sinh without limit", {{69, 33.0f}}, sinh_flag, 0},
        {"sinh", {{69, 33.0f}, {74, 100.0f}}, sinh_flag, 1},
        {"cp(L) by C1 alone", {{78, 0.1f}, {82, 200.0f}, {83, 300.0f}}, cpL_flag, 1},
        {"cp(L) without THi", {{77, 75.0f}, {82, 200.0f}}, cpL_flag, 0},
        {"formation entropy", {{85, -298150.0f}, {87, -149075.0f}}, dFs, -500},
        {"formation of an element", {{85, TrueZero}, {87, TrueZero}}, dFs, 0},
        {"August at Tnb = Tcr", {{6, 373.124f}, {7, 5000.0f}, {10, 373.124f}}, A, 0},
        {"August without p(cr)", {{6, 500.0f}, {10, 300.0f}}, A, 0},
        {"August without Tnb", {{6, 500.0f}, {7, 1000.0f}}, A, double(std::log(1000.0f))},
    };
    for (const Case& c : cases) EXPECT_DOUBLE_EQ(c.value(unpack_cells(c.cells)), c.expected) << c.what;
}

// The line goes through the normal boiling and the critical point.
TEST(Record, august_line) {
    const C c = unpack_record(record_of(7, 2), *record_layout(7), true).constants;
    const auto p = [&](double T) { return std::exp(double(c.AugustA) + double(c.AugustB) / T); };
    EXPECT_NEAR(p(double(c.Tnb)), 101.325, 1e-4);
    EXPECT_NEAR(p(c.Tcr), 6148.0, 0.01);
}

TEST(Record, default_vapor_pressure_equation) {
    struct Case {
        std::vector<std::pair<int, float>> cells;
        const char* tag;
    };
    const Case cases[] = {{{}, "<> "},
                          {{{6, 500.0f}, {7, 5000.0f}, {10, 350.0f}}, "AUG"},
                          {{{6, 500.0f}, {7, 5000.0f}, {10, 350.0f}, {45, 300.0f}}, "AHP"},
                          {{{45, 300.0f}, {39, 200.0f}}, "ALP"},
                          {{{45, 300.0f}, {39, 200.0f}, {58, 100.0f}}, "WAG"},
                          {{{58, 100.0f}, {33, 90.0f}}, "FRO"},
                          {{{33, -5.0f}}, "FRO"},
                          {{{33, 0.4f}}, "<> "}};
    for (const Case& c : cases) EXPECT_EQ(unpack_cells(c.cells).EVPTag, c.tag);
}

}  // namespace
}  // namespace quom

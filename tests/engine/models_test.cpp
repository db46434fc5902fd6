// The tables of models, reasons and warnings: codes and tags there and back, and that every row has its
// words.
#include "engine/models.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "engine/reason.h"

namespace quom {
namespace {

TEST(Models, CodesAndTagsThereAndBack) {
    const int order[] = {0, 2, 3, 4, 5, 6, 7, 8, 10, 16, 11, 12, 13, 14, 15};  // of the list of models
    ASSERT_EQ(eos_list().size(), std::size(order));
    for (std::size_t i = 0; i < std::size(order); ++i) {
        const EosInfo& row = eos_list()[i];
        EXPECT_EQ(number_of(row.code), order[i]);
        EXPECT_EQ(eos_of(order[i]), row.code);
        EXPECT_EQ(&eos_info(row.code), &row);
        EXPECT_GE(row.text.size(), 35u);
        EXPECT_NE(row.is_cubic(), row.is_vapor_only()) << row.text;
        // the cubic equation behind a virial one has it as its virial equation
        EXPECT_EQ(row.cubic == Eos::none, row.family != EosFamily::virial) << row.text;
        if (row.cubic != Eos::none) {
            EXPECT_EQ(eos_info(row.cubic).virial, row.code) << row.text;
        }
    }
    for (const int none : {-2, -1, 1, 9, 17, 32767}) {
        EXPECT_EQ(eos_of(none), Eos::none);
        EXPECT_EQ(eos_info(static_cast<Eos>(none)).family, EosFamily::none);
    }
    const struct {
        int code;
        const char* tag;
    } evps[] = {{3, "FRO"}, {4, "WAG"}, {1, "ALP"}, {2, "AHP"},
                {5, "AUG"}, {6, "KFW"}, {7, "KFR"}, {8, "THO"}};
    ASSERT_EQ(evp_list().size(), std::size(evps));
    for (std::size_t i = 0; i < std::size(evps); ++i) {
        const EvpInfo& row = evp_list()[i];
        EXPECT_EQ(number_of(row.code), evps[i].code);
        EXPECT_EQ(row.tag, evps[i].tag);
        EXPECT_EQ(evp_of_tag(evps[i].tag), row.code);
        EXPECT_EQ(evp_of(evps[i].code), row.code);
        EXPECT_EQ(row.correlated, evps[i].code >= 5);
    }
    for (const char* none : {"", "000", "<> ", "wag", "WAGN"}) EXPECT_EQ(evp_of_tag(none), Evp::none) << none;
    EXPECT_EQ(evp_info(Evp::none).tag, "000");
    for (int code = 1; code <= 7; ++code) EXPECT_EQ(number_of(hlv_info(hlv_of(code)).code), code);
    EXPECT_EQ(hlv_of(8), Hlv::none);
    EXPECT_EQ(cp_form_of(3), CpForm::none);
    EXPECT_EQ(cp_info(cp_form_of(2)).help_topic, 42);
}

TEST(Models, WhichEquationsNeedOmega) {
    const std::set<int> needs{5, 6, 14, 15, 16}, warns{5, 6, 7, 8, 14, 15, 16}, cubic{2, 3, 4, 5, 6, 7, 8};
    for (const EosInfo& row : eos_list()) {
        EXPECT_EQ(row.needs_omega, needs.contains(number_of(row.code))) << row.text;
        EXPECT_EQ(row.warns_omega, warns.contains(number_of(row.code))) << row.text;
        EXPECT_EQ(row.is_cubic(), cubic.contains(number_of(row.code))) << row.text;
        EXPECT_EQ(ModelSelection{.EOSKode = row.code}.VPhaseOnly(), !row.is_cubic());
    }
    EXPECT_TRUE(ModelSelection().VPhaseOnly());
}

TEST(Reasons, EveryReasonHasItsOwnWords) {
    std::set<std::string_view> names, texts;
    for (int i = 1; i <= static_cast<int>(Reason::no_phase); ++i) {
        const Reason reason = static_cast<Reason>(i);
        EXPECT_EQ(reason_text(reason).back(), '.') << reason_name(reason);
        EXPECT_TRUE(names.insert(reason_name(reason)).second) << reason_name(reason);
        EXPECT_TRUE(texts.insert(reason_text(reason)).second) << reason_name(reason);
        EXPECT_EQ(err_of(reason), -1);
    }
    EXPECT_EQ(reason_name(Reason::no_root_above_b), "no_root_above_b");
    EXPECT_EQ(reason_text(Reason::none), "");
    EXPECT_EQ(err_of(Reason::none), 0);
}

TEST(Reasons, WarningsWithTheirNumbers) {
    const struct {
        Warning warning;
        std::string text;
    } rows[] = {
        {{.kind = WarningKind::below_triple_point, .value = 80.0, .low = 85.47}, "T < T(TP) (Triple Point)"},
        {{.kind = WarningKind::evp_range, .value = 88.0, .low = 100.0, .high = 300.0, .offset = -12},
         "T = 88 K is 12 K outside the validity of the vapor pressure equation (100 ... 300 K)"},
        {{.kind = WarningKind::rhoL_range, .value = 310.5, .low = 100.0, .high = 300.0, .offset = 10},
         "T = 310.5 K is 10 K outside the validity of rho(L) = Fu(T) (100 ... 300 K)"},
    };
    for (const auto& row : rows) EXPECT_EQ(warning_text(row.warning), row.text);
    std::set<std::string_view> names;
    for (int i = 0; i <= static_cast<int>(WarningKind::several_solutions); ++i) {
        const WarningKind kind = static_cast<WarningKind>(i);
        EXPECT_TRUE(names.insert(warning_name(kind)).second);
        EXPECT_FALSE(warning_text({.kind = kind}).empty());
    }
}

}  // namespace
}  // namespace quom

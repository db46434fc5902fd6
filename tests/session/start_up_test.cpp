#include "session/start_up.h"

#include <gtest/gtest.h>

#include "engine/vapor_pressure.h"
#include "support/queued_messages.h"
#include "support/starter.h"

namespace quom {
namespace {

TEST(StartUpTest, reset_touches_what_belongs_to_a_substance_and_nothing_else) {
    Session s = test::substance_session(test::propane, 6);
    s.models.HLVKode = 4;
    s.models.Konzept = false;
    s.models.EVPKode = 3;
    s.reference = {
        .RefKode = 2, .TRef0 = 273, .pRef0 = 1, .hOffset = 5, .sOffset = 6, .TEnv = 280, .pEnv = 90};
    s.calc.CalcMode = 8;
    s.eos.JiZc = s.scratch.bT = 1;
    ResetSession(s);
    EXPECT_EQ(s.calc.CalcMode + s.models.HLVKode + s.database.StoffIndexAktiv, 0);
    EXPECT_TRUE(s.models.Konzept);
    EXPECT_EQ(s.eos.EOSb + s.eos.JiZc + s.eos.vcrEOS + s.eos.rhocrEOS + s.scratch.bT, 0);
    const ReferenceState kept{.RefKode = 2, .hOffset = 5, .sOffset = 6};  // the rest at its defaults
    EXPECT_EQ(s.reference, kept);
    EXPECT_EQ(s.models.EOSKode, 6);
    EXPECT_EQ(s.models.EVPKode, 3);
}

TEST(StartUpTest, confirming_a_substance) {
    for (const Answer answer : {Answer::yes, Answer::no}) {
        QueuedMessages user;
        user.answers.push_back(answer);
        Session s = test::starter_session();
        s.messages = &user;
        s.models.EVPKode = evp_thompson;
        s.exp.points.resize(3);
        EXPECT_EQ(confirm_substance(s, 0), 0);
        EXPECT_TRUE(user.asked.empty());
        EXPECT_EQ(confirm_substance(s, FindCAS(s, test::propane)), 0);
        ASSERT_EQ(user.asked.size(), 1u);
        EXPECT_EQ(user.asked[0].text, "New substance was chosen.\nDelete loaded exper. data now?");
        EXPECT_EQ(s.exp.points.size(), answer == Answer::yes ? 1u : 3u);
        EXPECT_EQ(s.units.TcrStart, s.substance.Tcr);
        // The correlated set is there, and goes through the normal boiling point by its making.
        EXPECT_NEAR(pLV_EVP(s, static_cast<double>(s.substance.Tnb), evp_thompson).value, 101.325, 0.1);
    }
}

}  // namespace
}  // namespace quom

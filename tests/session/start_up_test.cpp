#include "session/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/vapor_pressure.h"
#include "substance/substance_support.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::HasSubstr;

Session two_substances(int kind = 7) {
    Session session;
    const LoadResult load =
        LoadDatabase(session, kind, test::golden(kind == 7 ? "two_substances.q07" : "two_substances.q06"));
    EXPECT_EQ(load.err, 0) << load.fault;
    return session;
}

TEST(StartUp, a_database_that_cannot_be_taken_leaves_the_one_in_force) {
    const test::Folder folder;
    Session session = two_substances();
    ASSERT_EQ(SelectSubstance(session, 2), 0);
    const Document before = session.document;
    const auto fluid = session.fluid;
    const std::string good = test::bytes_of(test::golden("two_substances.q07"));
    EXPECT_EQ(LoadDatabase(session, 7, folder.write("cut.q07", good.substr(0, 2000))).err, -1);
    EXPECT_THAT(LoadDatabase(session, 7, folder.path("absent.q07")).fault, HasSubstr("absent.q07"));
    EXPECT_EQ(LoadDatabase(session, 8, test::golden("two_substances.q07")).err, -1);
    EXPECT_EQ(LoadDatabase(session, 7, "").err, -1);
    EXPECT_EQ(session.document, before);
    EXPECT_EQ(session.fluid, fluid);
    EXPECT_EQ(SelectSubstance(session, 1), 0);  // still read from the file in force
    EXPECT_EQ(session.substance().Tcr, 106);
}

TEST(StartUp, a_loaded_database_is_remembered_by_kind_and_has_no_substance_yet) {
    const test::Folder folder;
    Session session = two_substances(6);
    SelectSubstance(session, 2);
    session.ProgramPath = folder.path();
    folder.write("More.Q07", test::bytes_of(test::golden("two_substances.q07")));
    ASSERT_EQ(LoadDatabase(session, 7, "more.q07").err,
              0);  // from the program folder, in any case of letters
    EXPECT_EQ(session.document.DatabaseKind, 7);
    EXPECT_EQ(session.document.DatabasePath, session.database.PathQ07);
    EXPECT_EQ(session.database.PathQ06, test::golden("two_substances.q06"));
    EXPECT_EQ(session.document.substance, ChosenSubstance{});
    EXPECT_EQ(session.StoffIndex, 0);
    EXPECT_FALSE(session.fluid->has_eos());
}

TEST(StartUp, choosing_a_substance_leaves_nothing_of_the_one_before) {
    Session session = two_substances();
    change(session, [](Document& d) {
        d.models.EOSKode = Eos::peng_robinson;
        d.eos_input = {.b0 = 1, .JiZc = 0.3};
        d.calc.setup.benson = {300, 100, 500, 2};
    });
    ASSERT_EQ(SelectSubstance(session, 2), 0);
    EXPECT_EQ(session.substance().StoffName, "Ethanol");
    EXPECT_EQ(session.document.substance.StoffIndexAktiv, 2);
    EXPECT_EQ(session.StoffIndex, 2);
    EXPECT_EQ(session.document.eos_input, EosInput{});
    EXPECT_EQ(session.document.calc.setup.benson, BensonReference{});
    EXPECT_EQ(session.document.models.EOSKode, Eos::peng_robinson);
    // 0.0777961 R T(cr)/p(cr) of the new substance
    EXPECT_NEAR(session.fluid->eos.EOSb,
                0.0777961 * 8.31451 * session.substance().Tcr / session.substance().pcr, 1e-7);

    const Document before = session.document;
    EXPECT_EQ(SelectSubstance(session, 0), 0);  // "nothing chosen" changes nothing
    EXPECT_EQ(session.document, before);
    EXPECT_EQ(SelectSubstance(session, 3),
              -1);  // no such record: no constants that could be taken for another's
    EXPECT_EQ(session.document.substance, ChosenSubstance{});
    EXPECT_FALSE(session.fluid->has_eos());
}

TEST(StartUp, reset_touches_what_belongs_to_a_substance_and_nothing_else) {
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    change(session, [](Document& d) {
        d.models.HLVKode = Hlv::watson;
        d.models.Konzept = false;
        d.models.EVPKode = Evp::frost_kalkwarf;
        d.reference = {
            .RefKode = 2, .TRef0 = 273, .pRef0 = 1, .hOffset = 5, .sOffset = 6, .TEnv = 280, .pEnv = 90};
        d.calc.CalcMode = Mode::functions;
        d.options.Dens = 700;
        d.exp.points.edit()[0].T = 300;
    });
    calculate(session, 0);
    ResetSession(session);
    const Document& d = session.document;
    EXPECT_EQ(d.calc.CalcMode, Mode::none);
    EXPECT_EQ(d.models.HLVKode, Hlv::none);
    EXPECT_TRUE(d.models.Konzept);
    EXPECT_EQ(d.substance, ChosenSubstance{});
    const ReferenceState kept{.RefKode = 2, .hOffset = 5, .sOffset = 6};  // the rest at its defaults
    EXPECT_EQ(d.reference, kept);
    EXPECT_EQ(d.models.EOSKode, Eos::peng_robinson);
    EXPECT_EQ(d.models.EVPKode, Evp::frost_kalkwarf);
    EXPECT_EQ(d.options.Dens, 700);
    EXPECT_EQ(d.exp.points[0].T, 300);
    EXPECT_EQ(d.DatabaseKind, 7);
    EXPECT_FALSE(session.shell.ModelsConfirmed);
    EXPECT_EQ(current_outcome(session), nullptr);
}

TEST(StartUp, confirming_a_substance) {
    for (const Answer answer : {Answer::yes, Answer::no}) {
        QueuedMessages user;
        user.answers.push_back(answer);
        Session session = test::starter_session();
        change(session, [](Document& d) {
            d.models.EVPKode = Evp::thompson;
            d.exp.points.edit().resize(3);
            d.units.vcrStart = 1;
        });
        EXPECT_EQ(confirm_substance(session, 0, user), 0);
        EXPECT_TRUE(user.asked.empty());
        EXPECT_EQ(confirm_substance(session, FindCAS(session.database, test::propane), user), 0);
        ASSERT_EQ(user.asked.size(), 1u);
        EXPECT_EQ(user.asked[0].title, "exper. data");
        EXPECT_EQ(user.asked[0].text, "New substance was chosen.\nDelete loaded exper. data now?");
        EXPECT_EQ(data_point_count(session.document.exp), answer == Answer::yes ? 0 : 2);
        EXPECT_EQ(session.document.units.TcrStart, session.substance().Tcr);
        EXPECT_EQ(session.document.units.pcrStart, session.substance().pcr);
        EXPECT_EQ(session.document.units.vcrStart, 0.0) << "set by the OK of the models";
        // The correlated set is there, and goes through the normal boiling point by its making.
        const double Tnb = static_cast<double>(session.substance().Tnb);
        EXPECT_NEAR(pLV_EVP(session.fluid->substance, Tnb, Evp::thompson).value, 101.325, 0.1);
    }
}

TEST(StartUp, a_reference_state_without_its_data_gives_way_and_the_user_is_told) {
    Session session = test::starter_session();
    int with = 0;
    int without = 0;
    for (int index = 1; index <= session.database.StoffAnzahl(); ++index) {
        const bool has = unpack_substance(session.database, index, true).constants.S0abs != 0.0F;
        (has ? with : without) = index;
    }
    ASSERT_GT(with, 0);
    ASSERT_GT(without, 0);
    for (const int index : {with, without}) {
        change(session, [](Document& d) { d.reference.RefKode = 2; });
        QueuedMessages user;
        confirm_substance(session, index, user);
        EXPECT_EQ(session.document.reference.RefKode, index == with ? 2 : 1);
        EXPECT_EQ(user.asked.size(), index == with ? 0u : 1u);
    }
}

}  // namespace
}  // namespace quom

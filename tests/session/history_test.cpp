// Undo and redo over the document: the sentences of the steps, what comes back, what stays, the limits.
#include "session/history.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "support/starter_session.h"

namespace quom {
namespace {

namespace fs = std::filesystem;
using test::change;

std::vector<TpRhoPoint> some_points(int count) {
    std::vector<TpRhoPoint> points(static_cast<std::size_t>(count) + 1);
    for (int i = 1; i <= count; ++i)
        points[std::size_t(i)] = {.T = 300.0 + i, .p = 100.0 * i, .rhoL = 500.0F};
    return points;
}

// All that a step holds, and the numbers that follow from it.
void expect_same(const Session& a, const Session& b) {
    EXPECT_EQ(a.document, b.document);
    EXPECT_EQ(a.shell.ModelsConfirmed, b.shell.ModelsConfirmed);
    EXPECT_EQ(a.shell.ModelStatus, b.shell.ModelStatus);
    EXPECT_EQ(a.StoffIndex, b.StoffIndex);
    EXPECT_EQ(a.database.path, b.database.path);
    EXPECT_EQ(a.database.StoffAnzahl(), b.database.StoffAnzahl());
    const StateInput input{.mode = Mode::T_p, .T = 350.0, .p = 200.0};
    const Outcome left = CalcBatch(*a.fluid, input), right = CalcBatch(*b.fluid, input);
    EXPECT_EQ(left.phase, right.phase);
    ASSERT_EQ(left.V.has_value(), right.V.has_value());
    if (!left.V) return;
    EXPECT_EQ(left.V->v, right.V->v);
    EXPECT_EQ(left.V->h, right.V->h);
}

struct SentenceCase {
    const char* sentence;
    void (*make)(Document&);
};
class Sentences : public ::testing::TestWithParam<SentenceCase> {};

TEST_P(Sentences, tell_the_difference) {
    Document before = test::substance_session(test::propane, Eos::peng_robinson).document;
    before.exp.points = some_points(4);
    before.exp.file.ExpFile = "/data/old.BAQ";
    before.xy.points = {{1, 2, 0}, {2, 3, 0}};
    Document after = before;
    GetParam().make(after);
    EXPECT_EQ(step_sentence(before, after), GetParam().sentence);
    EXPECT_EQ(step_sentence(before, before), "");
}

INSTANTIATE_TEST_SUITE_P(
    documents, Sentences,
    ::testing::Values(
        SentenceCase{"Models: equation of state Peng / Robinson -> Soave / Redlich / Kwong",
                     [](Document& d) { d.models.EOSKode = Eos::soave; }},
        SentenceCase{"Models: concept GLOBAL -> PARTIAL, Watson exponent 0.38 -> 0.4",
                     [](Document& d) {
                         d.models.Konzept = false;
                         d.models.nWat = 0.4F;
                     }},
        SentenceCase{"Models: constants of the equation of state changed",
                     [](Document& d) { d.eos_input.b1 = 0.5; }},
        SentenceCase{"Reference state: zero point free input -> quantities of formation",
                     [](Document& d) { d.reference.RefKode = reference_formation; }},
        SentenceCase{"Reference state: T0 298.15 K -> 273.15 K, h0 0 kJ/kmol -> 200 kJ/kmol, ...",
                     [](Document& d) {
                         d.reference.TRef0 = 273.15F;
                         d.reference.hOffset = 200;
                         d.reference.sOffset = 1;
                     }},
        SentenceCase{"Units: energies kJ/kmol -> kJ/kg",
                     [](Document& d) { d.units.EnergyMode = energy_per_mass; }},
        SentenceCase{"Options: values direct input -> data points",
                     [](Document& d) { d.options.BatchMode = true; }},
        SentenceCase{"Options: CSV delimiter \";\" -> Tab", [](Document& d) { d.options.SepCSV = '\t'; }},
        SentenceCase{"Measured data: 20 lines inserted", [](Document& d) { d.exp.points.edit().resize(25); }},
        SentenceCase{"Measured data: 1 line deleted", [](Document& d) { d.exp.points.edit().pop_back(); }},
        SentenceCase{"Measured data: all 4 lines deleted",
                     [](Document& d) { d.exp.points.edit().resize(1); }},
        SentenceCase{"Measured data: 2 lines changed",
                     [](Document& d) { d.exp.points.edit()[1].Aus = d.exp.points.edit()[3].Aus = -1; }},
        SentenceCase{"Measured data: new.BAQ, 9 lines",
                     [](Document& d) {
                         d.exp.points = some_points(9);
                         d.exp.file.ExpFile = "/data/new.BAQ";
                     }},
        SentenceCase{"X-Y data: 1 line inserted", [](Document& d) { d.xy.points.edit().push_back({}); }},
        SentenceCase{"Measured data: 1 line deleted; Options: points per curve 500 -> 100",
                     [](Document& d) {
                         d.exp.points.edit().pop_back();
                         d.options.Dens = 100;
                     }},
        // What makes no step: the calculation in hand, start values, data that were saved.
        SentenceCase{"", [](Document& d) { d.calc.CalcMode = Mode::T_rho; }},
        SentenceCase{"", [](Document& d) { d.exp.points.edit()[0].T = 300; }},
        SentenceCase{"", [](Document& d) { d.units.vcrStart = 0.2; }},
        SentenceCase{"", [](Document& d) { d.exp.file.ExpFile = "/data/copy.BAQ"; }}));

// A substance and its models back and forth, with the database opened anew.
TEST(History, substance_and_database_come_back_with_their_confirmed_models) {
    Session session = test::starter_session();
    const std::string copy = fs::temp_directory_path() / "quom_history_test.q07";
    fs::copy_file(session.database.path, copy, fs::copy_options::overwrite_existing);
    test::select_substance(session, test::propane, Eos::peng_robinson);
    change(session, [](Document& d) {
        d.calc.CalcMode = Mode::T_p;
        d.exp.points.edit()[0] = {.T = 300, .p = 500};
    });
    History history;
    history.start(session);
    const Session propane = session;

    ASSERT_EQ(LoadDatabase(session, 7, copy).err, 0);
    ResetSession(session);
    EXPECT_TRUE(history.record(session));
    EXPECT_EQ(history.undo_sentence(session), "Database: quom.q07 -> quom_history_test.q07");
    test::select_substance(session, test::benzene, Eos::soave);
    history.record(session);
    EXPECT_EQ(history.undo_sentence(session), "Substance: none -> Benzene");
    const Session benzene = session;

    EXPECT_TRUE(history.undo(session).done);
    EXPECT_EQ(session.document.substance.StoffIndexAktiv, 0);
    EXPECT_FALSE(session.shell.ModelsConfirmed);
    EXPECT_TRUE(history.undo(session).done);
    expect_same(session, propane);
    EXPECT_TRUE(session.shell.ModelsConfirmed);
    EXPECT_FALSE(history.undo(session).done);
    EXPECT_TRUE(history.redo(session).done);
    EXPECT_TRUE(history.redo(session).done);
    expect_same(session, benzene);

    // The file is gone: refused, and nothing changes.
    EXPECT_TRUE(history.undo(session).done);
    EXPECT_TRUE(history.undo(session).done);
    fs::remove(copy);
    const History::Move refused = history.redo(session);
    EXPECT_FALSE(refused.done);
    EXPECT_EQ(refused.fault, "There is no database \"" + copy + "\" any more.");
    expect_same(session, propane);
    // Another file in its place, where the substance is another one.
    fs::copy_file(test::test_data() + "/data/two_substances.q07", copy);
    EXPECT_TRUE(history.redo(session).done);
    const History::Move other = history.redo(session);
    EXPECT_FALSE(other.done);
    EXPECT_EQ(other.fault, "The database \"" + copy + "\" does not have Benzene at its place any more.");
    EXPECT_TRUE(history.undo(session).done);
    fs::remove(copy);
    expect_same(session, propane);
}

TEST(History, another_database_in_the_place_of_the_file_is_refused) {
    Session session = test::starter_session();
    const std::string path = fs::temp_directory_path() / "quom_history_other.q07";
    fs::copy_file(session.database.path, path, fs::copy_options::overwrite_existing);
    ASSERT_EQ(LoadDatabase(session, 7, path).err, 0);
    test::select_substance(session, test::benzene, Eos::soave);
    History history;
    history.start(session);
    ASSERT_EQ(LoadDatabase(session, 7, "quom.q07").err, 0);
    test::select_substance(session, test::propane, Eos::soave);
    history.record(session);
    EXPECT_EQ(history.undo_sentence(session), "Substance: Benzene -> Propane");
    fs::copy_file(test::test_data() + "/data/two_substances.q07", path, fs::copy_options::overwrite_existing);
    const Session before = session;
    const History::Move move = history.undo(session);
    EXPECT_FALSE(move.done);
    EXPECT_NE(move.fault.find("does not have Benzene at its place any more."), std::string::npos)
        << move.fault;
    expect_same(session, before);
    fs::remove(path);
}

// What was typed since stays over a step that has not touched it.
TEST(History, the_calculation_in_hand_stays) {
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    History history;
    history.start(session);
    change(session, [](Document& d) { d.exp.points = some_points(20); });
    EXPECT_TRUE(history.record(session));
    change(session, [](Document& d) {
        d.calc.CalcMode = Mode::T_p;
        d.calc.CurrentPoint = 15;
        d.exp.points.edit()[0] = {.T = 340, .p = 500};
    });
    EXPECT_FALSE(history.record(session));
    const Session typed = session;
    EXPECT_TRUE(history.undo(session).done);
    EXPECT_EQ(session.document.exp.points[0].T, 340);
    EXPECT_EQ(session.document.calc.CalcMode, Mode::T_p);
    EXPECT_EQ(session.document.calc.CurrentPoint, 0) << "point 15 is gone";
    EXPECT_TRUE(history.redo(session).done);
    expect_same(session, typed);
    EXPECT_TRUE(history.undo(session).done);
    change(session, [](Document& d) { d.exp.points.edit()[0].T = 360; });
    EXPECT_TRUE(history.redo(session).done);
    EXPECT_EQ(session.document.exp.points[0].T, 360);
    EXPECT_EQ(data_point_count(session.document.exp), 20);
}

// Models that are chosen in the window and not confirmed go first.
TEST(History, a_choice_that_is_not_confirmed_is_taken_back_first) {
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    History history;
    history.start(session);
    const Session confirmed = session;
    unconfirm_models(session, "the equation of state was changed to Soave");
    EXPECT_FALSE(history.record(session));
    EXPECT_EQ(history.undo_sentence(session),
              "Models, not confirmed: the equation of state was changed to Soave");
    EXPECT_TRUE(history.undo(session).done);
    expect_same(session, confirmed);

    // Confirmed, it is a step; taken back, the models before are confirmed again.
    unconfirm_models(session, "the equation of state was changed to Soave");
    history.record(session);
    ModelForm form = open_model_form(session.document);
    EOSKombi_Click(form, Eos::soave);
    SilentMessages nobody;
    ASSERT_EQ(confirm_models(session, form, nobody).err, 0);
    EXPECT_TRUE(history.record(session));
    EXPECT_TRUE(history.undo(session).done);
    expect_same(session, confirmed);
}

// The mark "changed" tells whether the file has what is there now.
TEST(History, data_are_marked_as_changed_against_their_file) {
    Session session = test::starter_session();
    const auto commit_points = [&](int count, bool changed) {
        change(session, [&](Document& d) {
            if (data_point_count(d.exp) != count) d.exp.points = some_points(count);
            d.exp.file.ExpFile = "/data/a.BAQ";
            d.exp.ExpGeaendert = changed;
        });
    };
    commit_points(3, false);  // loaded
    History history;
    history.start(session);
    const auto record = [&](int count, bool changed) {
        commit_points(count, changed);
        return history.record(session);
    };
    const auto marked = [&] { return session.document.exp.ExpGeaendert; };
    EXPECT_TRUE(record(4, true));
    history.undo(session);
    EXPECT_FALSE(marked()) << "as it was loaded";
    history.redo(session);
    EXPECT_TRUE(marked());
    EXPECT_TRUE(record(5, true));
    EXPECT_FALSE(record(5, false)) << "saving is no step";
    for (const bool is_changed : {true, true}) {
        EXPECT_TRUE(history.undo(session).done);
        EXPECT_EQ(marked(), is_changed) << "the file has 5 lines";
    }
    history.redo(session);
    history.redo(session);
    EXPECT_FALSE(marked());
    EXPECT_EQ(data_point_count(session.document.exp), 5);
}

TEST(History, keeps_to_its_limits) {
    Session session = test::starter_session();
    History history;
    history.start(session);
    for (int i = 1; i <= 130; ++i) {
        change(session, [i](Document& d) { d.options.Dens = i; });
        history.record(session);
    }
    EXPECT_EQ(history.steps(), 100u);
    EXPECT_EQ(history.bytes(), 0u) << "lists that did not change are shared";

    constexpr std::size_t list = 10001 * sizeof(TpRhoPoint);
    History small({.steps = 100, .bytes = 5 * list});
    small.start(session);
    for (int i = 0; i < 20; ++i) {
        change(session, [i](Document& d) {
            d.exp.points.edit().resize(10001);
            d.exp.points.edit()[7].T = 300 + i;
        });
        small.record(session);
        change(session, [i](Document& d) { d.options.Dens = 200 + i; });
        small.record(session);
        EXPECT_LE(small.bytes(), 5 * list);
    }
    EXPECT_GT(small.steps(), 9u);
    while (small.undo(session).done) {
    }
    EXPECT_GT(session.document.exp.points[7].T, 310);
}

// Random sequences of commits, undo and redo: every state comes back as it was, with the same numbers.
TEST(History, gives_back_every_state) {
    constexpr Eos equations[] = {Eos::soave, Eos::redlich_kwong, Eos::peng_robinson, Eos::ideal_gas};
    constexpr std::string_view substances[] = {test::propane, test::methane, test::benzene, test::argon};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        Session session = test::starter_session();
        History history({.steps = 1000});
        history.start(session);
        std::vector<Session> states{session};  // after each step
        const auto act = [&] {
            switch (pick(6)) {
                case 0:
                    return test::select_substance(session, substances[pick(4)], equations[pick(4)]);
                case 1:
                    return void(change(session, [&](Document& d) { d.reference.hOffset = pick(1000); }));
                case 2:
                    return void(change(session, [&](Document& d) { d.exp.points = some_points(pick(30)); }));
                case 3:
                    return void(change(session, [&](Document& d) {
                        d.xy.points.edit().push_back({.x = 1.0F * static_cast<float>(pick(9)), .y = 2.0F});
                    }));
                case 4:
                    return void(change(session, [&](Document& d) { d.options.Dens = 100 + pick(300); }));
                default:
                    return void(change(session, [&](Document& d) { d.units.EnergyMode = pick(4); }));
            }
        };
        std::size_t at = 0;
        for (int i = 0; i < 60; ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", action " + std::to_string(i));
            const int what = pick(4);
            if (what == 0 && at > 0) {
                ASSERT_TRUE(history.undo(session).done);
                --at;
            } else if (what == 1 && at + 1 < states.size()) {
                ASSERT_TRUE(history.redo(session).done);
                ++at;
            } else {
                act();
                if (!history.record(session)) continue;
                states.resize(++at);
                states.push_back(session);
            }
            expect_same(session, states[at]);
            if (::testing::Test::HasFailure()) return;
        }
        while (history.undo(session).done) {
        }
        expect_same(session, states.front());
        while (history.redo(session).done) {
        }
        expect_same(session, states.back());
    }
}

}  // namespace
}  // namespace quom

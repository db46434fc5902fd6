// A batch over all points against the same points one by one; cancelling; what the session keeps.
#include "session/batch_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

#include "forms/sample_session.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;

// So many points about the two-phase region, some without a value, every tenth inactive.
Session with_points(Mode mode, int count) {
    SubstanceConstants x = sample::propane_constants();
    sample::add_liquid_density(x);
    Session session = sample::propane(Eos::peng_robinson, x);
    change(session, [&](Document& d) {
        d.calc.CalcMode = mode;
        auto& points = d.exp.points.edit();
        points.resize(static_cast<std::size_t>(count) + 1);
        for (int i = 1; i <= count; ++i) {
            TpRhoPoint& p = points[static_cast<std::size_t>(i)];
            p.T = 200.0 + i % 190;
            p.p = 20.0 + 37.0 * (i % 140);
            p.rhoV = 0.5F + 7.0F * static_cast<float>(i % 90);
            p.rhoL = 400.0F + static_cast<float>(i % 200);
            if (i % 7 == 0) p.T = 0;
            p.Aus = i % 10 == 0 ? -1 : 0;
        }
    });
    return session;
}

TEST(Batch, has_the_results_of_single_calculations) {
    for (const ModeInfo& mode : mode_list()) {
        for (const int ext : {1, 4}) {
            Session session = with_points(mode.mode, 400);
            change(session, [ext](Document& d) { d.calc.ExtLevel = ext; });
            const BatchJob job = batch_job(session);
            EXPECT_EQ(job.wanted_count(), 360);
            const BatchRun run = run_batch(job, nullptr, 3);
            EXPECT_FALSE(run.cancelled);
            ASSERT_TRUE(keep_results(session, job, run));
            EXPECT_EQ(open_points(session), 0);
            const std::vector<BatchResult> batch = session.batch;
            for (int i = 1; i <= 400; ++i) {
                const BatchResult& result = batch[static_cast<std::size_t>(i)];
                if (i % 10 == 0) {
                    EXPECT_EQ(result.state, PointState::open);
                    continue;
                }
                const Outcome& outcome = calculate(session, i);
                EXPECT_EQ(result.has_result(), outcome.has_result() && outcome.phase != PhaseWord::none);
                ASSERT_EQ(result, session.batch[static_cast<std::size_t>(i)])
                    << "mode " << number_of(mode.mode) << " point " << i << " ext " << ext;
            }
        }
    }
}

TEST(Batch, cancelled_keeps_what_is_done_and_goes_on_from_there) {
    Session session = with_points(Mode::equilibrium_T, 60000);
    const BatchJob job = batch_job(session);
    int told = 0;
    const BatchRun run = run_batch(job, [&told](double fraction, const std::string& text) {
        EXPECT_GT(fraction, 0.0);
        EXPECT_LT(fraction, 1.0);
        EXPECT_TRUE(text.ends_with(" of 54000 points")) << text;
        return ++told == 1;
    });
    ASSERT_TRUE(run.cancelled);
    EXPECT_EQ(told, 1);
    ASSERT_TRUE(keep_results(session, job, run));
    const int open = open_points(session);
    EXPECT_GT(open, 0);
    EXPECT_LT(open, 54000);
    const BatchJob rest = batch_job(session, true);
    EXPECT_EQ(rest.wanted_count(), open);
}

TEST(Batch, results_of_another_document_are_not_kept) {
    Session session = with_points(Mode::T_p, 20);
    const BatchJob job = batch_job(session);
    const BatchRun run = run_batch(job, nullptr);
    change(session, [](Document& d) { d.exp.points.edit()[3].T = 250; });
    EXPECT_FALSE(keep_results(session, job, run));
    EXPECT_EQ(open_points(session), 18);
    const BatchJob again = batch_job(session);
    ASSERT_TRUE(keep_results(session, again, run_batch(again, nullptr)));
    change(session, [](Document& d) { d.calc.CurrentPoint = 5; });
    EXPECT_EQ(open_points(session), 0) << "another point in force takes no result away";
    change(session, [](Document& d) { d.exp.points.edit()[3].p = 90; });
    EXPECT_EQ(open_points(session), 1);
    change(session, [](Document& d) { d.models.EOSKode = Eos::soave; });
    EXPECT_EQ(open_points(session), 18);
}

TEST(Batch, a_taker_gets_each_outcome_with_its_functions) {
    Session session = with_points(Mode::T_p, 300);
    std::atomic<int> taken{0}, with_functions{0};
    run_batch(batch_job(session), nullptr, 2, [&](std::size_t, const Outcome& outcome) {
        ++taken;
        if (outcome.V && outcome.V->h) ++with_functions;
    });
    EXPECT_EQ(taken, 270);
    EXPECT_GT(with_functions, 50);
}

}  // namespace
}  // namespace quom

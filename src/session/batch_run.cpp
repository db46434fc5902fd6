#include "session/batch_run.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "base/threads.h"

namespace quom {
namespace {

constexpr std::size_t points_at_a_time = 128;

// What the threads of a run share.
struct SharedRun {
    const BatchJob& job;
    const OutcomeTaker& take;
    std::vector<BatchResult>& results;
    std::atomic<std::size_t> next{1};
    std::atomic<std::size_t> done{0};
    std::atomic<bool> stopped{false};

    void calculate_point(std::size_t i) {
        StateInput input = state_input(job.calc, job.points[i]);
        input.inflection = false;
        input.functions = take || input.mode == Mode::functions;
        const Outcome outcome = CalcBatch(*job.fluid, input);
        const UnitFactors factors = unit_factors(job.units, job.fluid->M, outcome.T.value_or(0.0));
        results[i] = batch_result(outcome, factors);
        if (take) take(i, outcome);
    }
    // One portion; false when there is none left.
    bool calculate_portion() {
        const std::size_t first = next.fetch_add(points_at_a_time);
        if (stopped || first >= job.points.size()) return false;
        const std::size_t end = std::min(first + points_at_a_time, job.points.size());
        for (std::size_t i = first; i < end; ++i) {
            if (job.wanted[i] == 0) continue;
            calculate_point(i);
            ++done;
        }
        return true;
    }
};

std::string progress_text(std::size_t done, int wanted) {
    return std::to_string(done) + " of " + std::to_string(wanted) + " points";
}

// Calculates along with the other threads and tells of the progress of all; stops them when it is cancelled.
void work_and_tell(SharedRun& run, const Progress& progress, int wanted) {
    using Clock = std::chrono::steady_clock;
    constexpr auto pause = std::chrono::milliseconds(20);
    Clock::time_point told{};  // of the last word; the first follows the first portion
    while (run.calculate_portion()) {
        if (!progress || Clock::now() - told < pause) continue;
        told = Clock::now();
        const std::size_t done = run.done;
        if (progress(static_cast<double>(done) / std::max(wanted, 1), progress_text(done, wanted)))
            run.stopped = true;
    }
}

// Whether two calculations of points differ in no more than what is shown of them.
bool same_calculation(CalculationInput a, const CalculationInput& b) {
    a.CurrentPoint = b.CurrentPoint;
    a.ShowFunctions = b.ShowFunctions;
    a.tank = b.tank;
    a.ProcessForm = b.ProcessForm;
    a.ProcessT = b.ProcessT;
    a.ProcessP = b.ProcessP;
    return a == b;
}

}  // namespace

int BatchJob::wanted_count() const {
    return static_cast<int>(std::count(wanted.begin(), wanted.end(), std::uint8_t{1}));
}

BatchJob batch_job(const Session& session, bool missing) {
    const Document& document = session.document;
    BatchJob job{.fluid = session.fluid,
                 .calc = document.calc,
                 .units = document.units,
                 .points = document.exp.points.list(),
                 .wanted = {}};
    job.wanted.resize(job.points.size());
    for (std::size_t i = 1; i < job.points.size(); ++i) {
        const bool there = missing && i < session.batch.size() && session.batch[i].state != PointState::open;
        job.wanted[i] = job.points[i].Aus == 0 && !there;
    }
    return job;
}

BatchRun run_batch(const BatchJob& job, const Progress& progress, int threads, const OutcomeTaker& take) {
    BatchRun run;
    run.results.resize(job.points.size());
    SharedRun shared{.job = job, .take = take, .results = run.results};
    const int wanted = job.wanted_count();
    if (threads <= 0) threads = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const auto portions = static_cast<int>(job.points.size() / points_at_a_time);
    std::vector<std::thread> others = start_threads(std::min(threads - 1, portions), [&shared] {
        while (shared.calculate_portion()) {
        }
    });
    work_and_tell(shared, progress, wanted);
    for (std::thread& thread : others) thread.join();
    run.cancelled = shared.done < static_cast<std::size_t>(wanted);
    return run;
}

bool keep_results(Session& session, const BatchJob& job, const BatchRun& run) {
    const Document& document = session.document;
    const bool same = session.fluid == job.fluid && same_calculation(job.calc, document.calc) &&
                      session.document.units == job.units && document.exp.points.list() == job.points;
    if (!same) return false;
    session.batch.resize(job.points.size());
    for (std::size_t i = 1; i < run.results.size(); ++i) {
        if (run.results[i].state != PointState::open) session.batch[i] = run.results[i];
    }
    return true;
}

int open_points(const Session& session) {
    const SharedVector<TpRhoPoint>& points = session.document.exp.points;
    int count = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const bool open = i >= session.batch.size() || session.batch[i].state == PointState::open;
        count += points[i].Aus == 0 && open ? 1 : 0;
    }
    return count;
}

}  // namespace quom

// All measured points of a document calculated at once, on all cores.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/messages.h"
#include "calc/batch_result.h"
#include "session/session.h"

namespace quom {

// What a batch starts from: plain copies, so that it may run in another thread than the session.
struct BatchJob {
    std::shared_ptr<const Fluid> fluid;
    CalculationInput calc;
    Units units;
    std::vector<TpRhoPoint> points;    // [0] is not calculated
    std::vector<std::uint8_t> wanted;  // 1: is to be calculated; as many as points
    int wanted_count() const;
};
// The active measured points of the session's document; with `missing` only those without a calculation.
BatchJob batch_job(const Session& session, bool missing = false);

struct BatchRun {
    std::vector<BatchResult> results;  // as many as points; state open: not calculated
    bool cancelled = false;            // what had been calculated until then is kept
};
// Called with each outcome in the threads of the run, in no order.
using OutcomeTaker = std::function<void(std::size_t point, const Outcome& outcome)>;

// Calculates the wanted points with so many threads (0: as many as there are cores), the calling one among
// them, which alone calls progress. A taker gets every outcome with its functions; without one only what the
// results need is calculated. A point has the result that it would have alone.
BatchRun run_batch(const BatchJob& job, const Progress& progress, int threads = 0,
                   const OutcomeTaker& take = nullptr);

// Keeps the results of a job in the session. False, and nothing is kept: the session's document asks for
// other calculations by now.
bool keep_results(Session& session, const BatchJob& job, const BatchRun& run);

// How many active measured points are not calculated yet.
int open_points(const Session& session);

}  // namespace quom

// Rows of a sweep: values in, results out, by column.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "calc/state_rows.h"
#include "console/sweep_plan.h"
#include "console/sweep_rows.h"

namespace quom {

// What one worker needs to know.
struct SweepCalculation {
    Mode mode = Mode::none;
    CalcSetup setup{};
    Units units{};
    UnitFactors factors{};  // at a T that is not known; of energies per (R T) those of the row are taken
};

struct SweepTotals {
    std::uint64_t lines = 0;          // calculations, without blank lines
    std::uint64_t failed = 0;         // without a result
    std::uint64_t warned = 0;         // with a result and a warning
    std::uint64_t malformed = 0;      // that could not be read
    std::vector<Warning> warnings;    // of each kind the first that was met
    std::vector<std::string> faults;  // "line 17: ...", of the first malformed lines
    std::string broken;               // why the sweep ended early; empty when it did not
    std::string checksum;             // of all rows of a table that is written in chunks
    void add(const SweepTotals& part);
    void note(const Warning& warning);
    void note(const std::string& fault);
};

// Results of some rows.
struct SweepResults {
    // A row that is not good without a remark: blank, or failed with a reason alone.
    struct Remark {
        std::size_t row = 0;
        std::string warnings, message;
    };
    std::vector<std::vector<double>> numbers;  // by column of the plan; NaN is blank; empty for texts
    std::vector<PhaseWord> phase;
    std::vector<Reason> reason;           // none: there is a result, or the row is no calculation
    std::vector<std::uint32_t> warnings;  // bit k: WarningKind k
    std::vector<RowKind> kind;
    std::vector<Remark> remarks;  // in the order of rows
    std::size_t size() const { return kind.size(); }
};

// One worker's calculations, with buffers that keep their capacity, on a fluid that all workers share.
class SweepBlock {
 public:
    SweepBlock(std::shared_ptr<const Fluid> fluid, const SweepCalculation& calculation,
               const SweepPlan& plan);

    // Rows [begin, end) of rows. faults_before: malformed rows in front of begin.
    void run(const SweepRows& rows, std::size_t begin, std::size_t end, std::size_t faults_before);
    const SweepResults& results() const { return results_; }
    // Of all rows since the last call.
    SweepTotals take_totals();

 private:
    void put_batch(const SweepRows& rows, std::size_t begin);
    void put_single(const SweepRows& rows, std::size_t from, std::size_t i);
    void put_outcome(const Outcome& outcome, std::size_t i);
    void put_malformed(const std::string& fault, std::size_t i);
    void put_blank(std::size_t i);

    std::shared_ptr<const Fluid> fluid_;
    const SweepCalculation& calculation_;
    const SweepPlan& plan_;
    std::vector<SweepField> fields_;
    StateInput input_;
    bool batch_;
    StateRows states_;
    SweepResults results_;
    SweepTotals totals_;
};

}  // namespace quom

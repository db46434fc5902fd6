#include "console/sweep.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "console/sweep_line.h"

namespace quom {
namespace {

// Bytes of the input in a piece. The output is some twenty times as long, and two pieces a job are on their
// way: with many jobs the pieces get smaller, so that all of them stay below 100 MB.
std::size_t piece_bytes(int jobs) {
    constexpr std::size_t largest = 64 * 1024, smallest = 8 * 1024, together = 1280 * 1024;
    return std::clamp(together / (2 * static_cast<std::size_t>(jobs) + 2), smallest, largest);
}
constexpr std::size_t FaultsNamed = 20;

// A piece of the input that ends with a line, and what became of it.
struct Piece {
    std::string in;
    std::uint64_t first_line = 0;
    SweepRows rows;
    RowWriter out;
    SweepTotals totals;
};

void note_warning(SweepTotals& totals, const Warning& warning) {
    if (std::ranges::find(totals.warnings, warning.kind, &Warning::kind) == totals.warnings.end())
        totals.warnings.push_back(warning);
}

void add(SweepTotals& sum, const SweepTotals& part) {
    sum.lines += part.lines;
    sum.failed += part.failed;
    sum.warned += part.warned;
    sum.malformed += part.malformed;
    for (const Warning& warning : part.warnings) note_warning(sum, warning);
    for (const std::string& fault : part.faults) {
        if (sum.faults.size() < FaultsNamed) sum.faults.push_back(fault);
    }
}

void run_piece(SweepLine& worker, const SweepHead& head, const TableOptions& table, Piece& piece) {
    piece.out.clear();
    piece.totals = {};
    piece.rows.clear();
    SweepTotals& t = piece.totals;
    read_rows(piece.in, piece.first_line, head, table, piece.rows);
    for (std::size_t i = 0; i < piece.rows.size(); ++i) {
        const bool malformed = piece.rows.kind[i] == RowKind::malformed;
        const std::string_view fault = malformed ? std::string_view(piece.rows.faults[t.malformed]) : "";
        const LineKind kind = worker.run(piece.rows, i, fault, piece.out);
        if (kind == LineKind::blank) continue;
        ++t.lines;
        t.failed += kind == LineKind::failed;
        t.warned += kind == LineKind::warned;
        t.malformed += malformed;
        if (malformed && t.faults.size() < FaultsNamed) t.faults.emplace_back(fault);
        for (const Warning& warning : worker.warnings()) note_warning(t, warning);
    }
}

// Pieces go round: read, calculated by any worker, written in the order in which they were read.
class Conveyor {
 public:
    Conveyor(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings, const SweepHead& head,
             std::size_t slots)
        : pieces_(slots), state_(slots, State::free) {
        for (int i = 0; i < settings.jobs; ++i)
            threads_.emplace_back([this, &fluid, &settings, &head] {
                work(SweepLine(fluid, settings, head), head, settings.table);
            });
    }
    ~Conveyor() {
        {
            const std::lock_guard lock(mutex_);
            closing_ = true;
        }
        ready_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }
    Conveyor(const Conveyor&) = delete;
    Conveyor& operator=(const Conveyor&) = delete;

    std::size_t size() const { return pieces_.size(); }
    Piece& piece(std::uint64_t k) { return pieces_[k % size()]; }
    void submit(std::uint64_t k) {
        {
            const std::lock_guard lock(mutex_);
            state_[k % size()] = State::waiting;
            submitted_ = k + 1;
        }
        ready_.notify_one();
    }
    // Waits until piece k is calculated.
    void await(std::uint64_t k) {
        std::unique_lock lock(mutex_);
        done_.wait(lock, [&] { return state_[k % size()] == State::done; });
        state_[k % size()] = State::free;
    }

 private:
    enum class State { free, waiting, done };

    void work(SweepLine line, const SweepHead& head, const TableOptions& table) {
        for (;;) {
            std::uint64_t k;
            {
                std::unique_lock lock(mutex_);
                ready_.wait(lock, [&] { return taken_ < submitted_ || closing_; });
                if (taken_ == submitted_) return;
                k = taken_++;
            }
            run_piece(line, head, table, piece(k));
            {
                const std::lock_guard lock(mutex_);
                state_[k % size()] = State::done;
            }
            done_.notify_one();
        }
    }

    std::vector<Piece> pieces_;
    std::vector<State> state_;
    std::uint64_t submitted_ = 0, taken_ = 0;
    bool closing_ = false;
    std::mutex mutex_;
    std::condition_variable ready_, done_;
    std::vector<std::thread> threads_;
};

// Names of the columns before the results, with a delimiter behind each.
std::string front_names(const SweepSettings& settings, const SweepHead& head) {
    std::vector<std::string> names;
    if (settings.table.line_numbers) names.emplace_back("line");
    std::string text = settings.table.line_numbers ? std::string("line") + head.delimiter : "";
    for (const SweepColumn& column : sweep_columns(settings.mode, settings.functions))
        names.emplace_back(column.name);
    if (std::ranges::any_of(head.columns, &SweepHead::Column::kept))
        text += kept_names(head, names) + head.delimiter;
    return text;
}

}  // namespace

std::string sweep_head_line(Mode mode, bool functions, char delimiter) {
    std::string head;
    for (const SweepColumn& column : sweep_columns(mode, functions)) {
        if (!head.empty()) head += delimiter;
        head += column.name;
    }
    return head + "\n";
}

SweepTotals run_sweep(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings,
                      const SweepStreams& streams) {
    SweepTotals totals;
    const std::size_t bytes = piece_bytes(settings.jobs);
    TableInput input(streams.read, bytes);
    const SweepHead head = read_sweep_head(input, settings.mode, fluid->M, settings.table);
    if (!head.fault.empty()) {
        totals.broken = head.fault;
        return totals;
    }
    bool writable = streams.write(front_names(settings, head) +
                                  sweep_head_line(settings.mode, settings.functions, head.delimiter));
    {
        Conveyor conveyor(fluid, settings, head, 2 * static_cast<std::size_t>(settings.jobs) + 2);
        std::uint64_t read = 0, written = 0;
        bool more = true;
        while (writable && (more || written < read)) {
            while (more && read - written < conveyor.size()) {
                Piece& piece = conveyor.piece(read);
                piece.first_line = input.line();
                more = input.next(piece.in);
                if (!more) break;
                conveyor.submit(read++);
            }
            if (written == read) continue;
            conveyor.await(written);
            const Piece& piece = conveyor.piece(written++);
            writable = streams.write(piece.out.text());
            add(totals, piece.totals);
        }
        totals.broken = input.fault();
    }
    if (!writable) totals.broken = "the output could not be written";
    return totals;
}

}  // namespace quom

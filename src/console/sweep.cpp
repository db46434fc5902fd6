#include "console/sweep.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>

#include "base/threads.h"
#include "console/sweep_binary.h"
#include "console/sweep_text.h"

namespace quom {
namespace {

// Rows that a worker calculates at once: with all their columns they stay in the cache.
constexpr std::size_t block_rows = 512;

// Two parts a job are on their way: with many jobs the parts get smaller, so that all of them stay below 100
// MB.
std::size_t slots_of(int jobs) { return 2 * static_cast<std::size_t>(jobs) + 2; }
std::size_t part_rows(int jobs) {
    constexpr std::size_t largest = 8192, smallest = 64, together = 160 * 1024;
    return std::clamp(together / slots_of(jobs), smallest, largest);
}

// A part of the rows, and what became of it.
struct Piece {
    SweepPart part;
    TextBuffer text;
    BinaryColumns columns;
    SweepTotals totals;
};

// What all workers share and none of them changes.
struct SweepTask {
    const std::shared_ptr<const Fluid>& fluid;
    const SweepSettings& settings;
    const SweepGrid* grid = nullptr;
    SweepHead head{};
    SweepTextForm form{};
};

// One worker: parts in, bytes out.
class Worker {
 public:
    explicit Worker(const SweepTask& task)
        : task_(task), block_(task.fluid, task.settings.calculation, task.settings.plan) {}

    void run(Piece& piece) {
        const SweepSettings& settings = task_.settings;
        rows_.clear();
        if (task_.grid) {
            grid_rows(*task_.grid, piece.part.first_row, piece.part.rows, rows_);
        } else {
            read_rows(piece.part.text, piece.part.first_line, task_.head, settings.table, rows_);
        }
        piece.text.clear();
        for (std::vector<double>& column : piece.columns) column.clear();
        std::size_t faults = 0;
        for (std::size_t begin = 0; begin < rows_.size(); begin += block_rows) {
            const std::size_t end = std::min(begin + block_rows, rows_.size());
            block_.run(rows_, begin, end, faults);
            const std::vector<RowKind>& kind = block_.results().kind;
            faults += static_cast<std::size_t>(std::ranges::count(kind, RowKind::malformed));
            if (settings.format == SweepFormat::csv) {
                write_rows(settings.plan, task_.form, rows_, begin, block_.results(), piece.text);
            } else {
                append_binary(settings.plan, task_.form.line_numbers, rows_, begin, block_.results(),
                              piece.columns);
            }
        }
        piece.totals = block_.take_totals();
    }

 private:
    const SweepTask& task_;
    SweepBlock block_;
    SweepRows rows_;
};

// Writes pieces in their order and adds up what became of them.
class Delivery {
 public:
    Delivery(const SweepStreams& streams, SweepTotals& totals)
        : streams_(streams), totals_(totals), chunks_(streams.write) {}

    bool take(const Piece& piece) {
        totals_.add(piece.totals);
        good_ = good_ && streams_.write(piece.text.text()) && chunks_.take(piece.columns) &&
                (!streams_.part_written || streams_.part_written(piece.part));
        return good_;
    }
    bool head(std::string_view bytes) { return good_ = good_ && streams_.write(bytes); }
    bool finish() { return good_ = good_ && chunks_.finish(); }
    bool good() const { return good_; }

 private:
    const SweepStreams& streams_;
    SweepTotals& totals_;
    BinaryChunks chunks_;
    bool good_ = true;
};

// Pieces go round: filled by the thread that reads, calculated by any worker, and delivered, in the order in
// which they were read, by the worker whose piece is the next one.
class Conveyor {
 public:
    Conveyor(const SweepTask& task, Delivery& delivery, int jobs)
        : task_(task), delivery_(delivery), slots_(slots_of(jobs)) {
        threads_ = start_threads(jobs, [this] { work(); });
    }
    ~Conveyor() { close(); }
    Conveyor(const Conveyor&) = delete;
    Conveyor& operator=(const Conveyor&) = delete;

    bool has_workers() const { return !threads_.empty(); }
    // The piece to be filled next; null when the delivery has failed.
    Piece* next_free() {
        std::unique_lock lock(mutex_);
        freed_.wait(lock, [&] { return stopped_ || submitted_ - delivered_ < slots_.size(); });
        return stopped_ ? nullptr : &slot(submitted_).piece;
    }
    void submit() {
        {
            const std::lock_guard lock(mutex_);
            slot(submitted_++).calculated = false;
        }
        ready_.notify_one();
    }
    // Waits for all that was submitted; throws what a worker has thrown.
    void finish() {
        close();
        if (thrown_) std::rethrow_exception(thrown_);
    }

 private:
    struct Slot {
        Piece piece;
        bool calculated = false;
    };
    Slot& slot(std::uint64_t k) { return slots_[k % slots_.size()]; }

    void close() {
        {
            const std::lock_guard lock(mutex_);
            closing_ = true;
        }
        ready_.notify_all();
        for (std::thread& thread : threads_) thread.join();
        threads_.clear();
    }
    void work() {
        try {
            Worker worker(task_);
            for (std::uint64_t k = 0; take(k);) {
                worker.run(slot(k).piece);
                deliver(k);
            }
        } catch (...) {
            const std::lock_guard lock(mutex_);
            if (!thrown_) thrown_ = std::current_exception();
            stopped_ = true;
            ready_.notify_all();
            freed_.notify_all();
        }
    }
    bool take(std::uint64_t& k) {
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [&] { return stopped_ || taken_ < submitted_ || closing_; });
        if (stopped_ || taken_ == submitted_) return false;
        k = taken_++;
        return true;
    }
    // One worker at a time delivers, for all whose pieces are next; the others go on calculating.
    void deliver(std::uint64_t k) {
        std::unique_lock lock(mutex_);
        slot(k).calculated = true;
        if (delivering_) return;
        delivering_ = true;
        while (!stopped_ && delivered_ < taken_ && slot(delivered_).calculated) {
            const Piece& piece = slot(delivered_).piece;
            lock.unlock();
            const bool good = delivery_.take(piece);
            lock.lock();
            stopped_ = stopped_ || !good;
            slot(delivered_).calculated = false;
            ++delivered_;
            freed_.notify_one();
        }
        if (stopped_) ready_.notify_all();
        delivering_ = false;
    }

    const SweepTask& task_;
    Delivery& delivery_;
    std::vector<Slot> slots_;
    std::uint64_t submitted_ = 0, taken_ = 0, delivered_ = 0;
    bool closing_ = false, stopped_ = false, delivering_ = false;
    std::exception_ptr thrown_;
    std::mutex mutex_;
    std::condition_variable ready_, freed_;
    std::vector<std::thread> threads_;
};

// All in this thread: nothing waits for anything, and rows go out before the input is asked for more.
void run_alone(const SweepTask& task, SweepSource& source, Delivery& delivery) {
    Worker worker(task);
    for (Piece piece; source.next(piece.part);) {
        worker.run(piece);
        if (!delivery.take(piece)) return;
    }
}

// False when no worker could be started: then nothing was read.
bool run_together(const SweepTask& task, SweepSource& source, Delivery& delivery) {
    Conveyor conveyor(task, delivery, task.settings.jobs);
    if (!conveyor.has_workers()) return false;
    for (Piece* piece = conveyor.next_free(); piece && source.next(piece->part); piece = conveyor.next_free())
        conveyor.submit();
    conveyor.finish();
    return true;
}

// The head of the output, before the first row.
std::string head_of(const SweepTask& task) {
    const SweepSettings& settings = task.settings;
    if (settings.format == SweepFormat::bin)
        return binary_head(settings.plan, task.form.line_numbers, settings.rows, settings.about);
    const std::string kept = task.grid ? std::string() : kept_names(task.head, settings.plan.heads());
    return sweep_head_line(settings.plan, task.form, kept);
}

void run_rows(const SweepTask& task, SweepSource& source, const SweepStreams& streams, SweepTotals& totals) {
    const SweepSettings& settings = task.settings;
    Delivery delivery(streams, totals);
    if (settings.with_head && !delivery.head(head_of(task))) {
        totals.broken = "the output could not be written";
        return;
    }
    if (settings.jobs < 2 || !run_together(task, source, delivery)) run_alone(task, source, delivery);
    if (!source.fault().empty()) {
        totals.broken = source.fault();
    } else if (!delivery.finish()) {
        totals.broken = "the output could not be written";
    }
    totals.checksum = source.checksum();
}

}  // namespace

SweepTotals run_sweep(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings,
                      const SweepGrid* grid, const SweepStreams& streams) {
    SweepTotals totals;
    SweepTask task{.fluid = fluid, .settings = settings, .grid = grid};
    task.form = {
        .delimiter = ';', .decimal = settings.table.decimal, .line_numbers = settings.table.line_numbers};
    if (grid) {
        SweepSource source(*grid, settings.range, part_rows(settings.jobs));
        run_rows(task, source, streams, totals);
        return totals;
    }
    TableInput table(streams.read, table_piece_bytes);
    task.head = read_sweep_head(table, settings.calculation.mode, fluid->M, settings.table);
    if (!table.fault().empty() || !task.head.fault.empty()) {
        totals.broken = table.fault().empty() ? task.head.fault : table.fault();
        return totals;
    }
    task.form.delimiter = task.head.delimiter;
    task.form.kept = std::ranges::any_of(task.head.columns, &SweepHead::Column::kept);
    SweepSource source(table, task.head.from_first_line ? 1 : 0, settings.range, part_rows(settings.jobs));
    run_rows(task, source, streams, totals);
    return totals;
}

}  // namespace quom

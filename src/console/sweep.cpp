#include "console/sweep.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "base/code_page.h"
#include "base/threads.h"
#include "calc/mode_table.h"
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

struct FieldName {
    std::string_view name;
    SweepField field;
};
constexpr FieldName names[] = {{"T", field_T},        {"p", field_p},        {"rho", field_rho},
                               {"rho(V)", field_rho}, {"rho(L)", field_rho}, {"m", field_m},
                               {"V", field_V}};

// "T" of " \"T/K\" ".
std::string_view bare_name(std::string_view cell) {
    cell = trim(cell);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"')
        cell = trim(cell.substr(1, cell.size() - 2));
    return trim(cell.substr(0, cell.find_first_of("/[ ")));
}

std::vector<SweepField> needed_fields(unsigned specified) {
    std::vector<SweepField> fields;
    if (specified & spec_tank) return {field_T, field_m, field_V};
    if (specified & spec_T) fields.push_back(field_T);
    if (specified & spec_p) fields.push_back(field_p);
    if (specified & (spec_rhoV | spec_rhoL)) fields.push_back(field_rho);
    return fields;
}

std::string_view name_of(SweepField field) {
    for (const FieldName& known : names) {
        if (known.field == field) return known.name;
    }
    return {};
}

// A piece of the input that ends with a line, and what became of it.
struct Piece {
    std::string in;
    std::uint64_t first_line = 0;
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

void run_piece(SweepLine& worker, Piece& piece) {
    piece.out.clear();
    piece.totals = {};
    SweepTotals& t = piece.totals;
    std::uint64_t number = piece.first_line;
    const std::string_view in = piece.in;
    for (std::size_t begin = 0; begin < in.size(); ++number) {
        std::size_t end = in.find('\n', begin);
        if (end == std::string_view::npos) end = in.size();
        const LineKind kind = worker.run(in.substr(begin, end - begin), number, piece.out);
        begin = end + 1;
        if (kind == LineKind::empty) continue;
        ++t.lines;
        t.failed += kind == LineKind::failed;
        t.warned += kind == LineKind::warned;
        t.malformed += kind == LineKind::malformed;
        if (kind == LineKind::malformed && t.faults.size() < FaultsNamed) t.faults.push_back(worker.fault());
        for (const Warning& warning : worker.warnings()) note_warning(t, warning);
    }
}

// Cuts the input into pieces of whole lines.
class Reader {
 public:
    Reader(const SweepStreams& streams, std::size_t bytes) : streams_(streams), bytes_(bytes) {}

    // The next piece; false at the end, and when a line is longer than a piece (too_long tells).
    bool next(std::string& into) {
        into.swap(rest_);
        rest_.clear();
        while (!ended_) {
            const std::size_t have = into.size();
            into.resize(bytes_);
            const std::ptrdiff_t got = have < bytes_ ? streams_.read(into.data() + have, bytes_ - have) : 0;
            into.resize(have + static_cast<std::size_t>(std::max<std::ptrdiff_t>(got, 0)));
            if (got < 0) failed_ = true;
            if (got < 0 || (got == 0 && have < bytes_)) ended_ = true;
            const std::size_t last = into.rfind('\n');
            if (ended_ || (last != std::string::npos && into.size() == bytes_)) {
                if (ended_) break;
                rest_.assign(into, last + 1);
                into.resize(last + 1);
                break;
            }
            if (into.size() == bytes_) {
                too_long_ = true;
                return false;
            }
        }
        return !into.empty();
    }
    // The first line of the input, for the head.
    std::string first_line() {
        std::string piece;
        next(piece);
        const std::size_t end = piece.find('\n');
        std::string line = piece.substr(0, end);
        piece.erase(0, end == std::string::npos ? piece.size() : end + 1);
        rest_.insert(0, piece);
        if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
        if (line.ends_with('\r')) line.pop_back();
        return line;
    }
    bool too_long() const { return too_long_; }
    bool failed() const { return failed_; }

 private:
    const SweepStreams& streams_;
    std::size_t bytes_;
    std::string rest_;
    bool ended_ = false, too_long_ = false, failed_ = false;
};

// Pieces go round: read, calculated by any worker, written in the order in which they were read.
class Conveyor {
 public:
    Conveyor(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings, const SweepHead& head,
             std::size_t slots)
        : pieces_(slots), state_(slots, State::free) {
        threads_ = start_threads(settings.jobs, [this, &fluid, &settings, &head] {
            try {
                work(SweepLine(fluid, settings, head));
            } catch (...) {
                const std::lock_guard lock(mutex_);
                failure_ = std::current_exception();
            }
            done_.notify_all();
        });
        if (threads_.empty()) alone_ = std::make_unique<SweepLine>(fluid, settings, head);
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
    // Waits until piece k is calculated. Throws what ended a thread.
    void await(std::uint64_t k) {
        if (alone_) {
            run_piece(*alone_, piece(k));
            return;
        }
        std::unique_lock lock(mutex_);
        done_.wait(lock, [&] { return state_[k % size()] == State::done || failure_; });
        if (failure_) std::rethrow_exception(failure_);
        state_[k % size()] = State::free;
    }

 private:
    enum class State { free, waiting, done };

    void work(SweepLine line) {
        for (;;) {
            std::uint64_t k;
            {
                std::unique_lock lock(mutex_);
                ready_.wait(lock, [&] { return taken_ < submitted_ || closing_; });
                if (taken_ == submitted_) return;
                k = taken_++;
            }
            run_piece(line, piece(k));
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
    std::exception_ptr failure_;
    std::unique_ptr<SweepLine> alone_;  // of the calling thread, where no other could be started
    std::vector<std::thread> threads_;
};

}  // namespace

SweepHead read_sweep_head(std::string_view line, Mode mode) {
    SweepHead head;
    const std::size_t at = line.find_first_of(";\t,");
    if (at != std::string_view::npos) {
        head.delimiter = line.find(';') != std::string_view::npos    ? ';'
                         : line.find('\t') != std::string_view::npos ? '\t'
                                                                     : ',';
    }
    const std::vector<SweepField> needed = needed_fields(mode_info(mode).specified);
    std::array<int, field_count> seen{};
    for (std::size_t begin = 0; begin <= line.size();) {
        std::size_t end = line.find(head.delimiter, begin);
        if (end == std::string_view::npos) end = line.size();
        const std::string_view name = bare_name(line.substr(begin, end - begin));
        int field = -1;
        for (const FieldName& known : names) {
            const bool wanted = std::find(needed.begin(), needed.end(), known.field) != needed.end();
            if (known.name == name && wanted) field = known.field;
        }
        if (field >= 0 && ++seen[static_cast<std::size_t>(field)] > 1)
            head.fault =
                "the head line names " + std::string(name_of(static_cast<SweepField>(field))) + " twice";
        head.field_of_column.push_back(field);
        begin = end + 1;
    }
    std::string missing;
    for (const SweepField field : needed) {
        if (seen[static_cast<std::size_t>(field)] == 0)
            missing += (missing.empty() ? "" : ", ") + std::string(name_of(field));
    }
    if (!missing.empty()) {
        head.fault = "the head line has no column " + missing + "; it reads \"" +
                     std::string(line.substr(0, 60)) + "\", right is for example \"";
        for (const SweepField field : needed) {
            if (field != needed.front()) head.fault += ';';
            head.fault += name_of(field);
        }
        head.fault += '"';
    }
    return head;
}

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
    Reader reader(streams, bytes);
    const SweepHead head = read_sweep_head(reader.first_line(), settings.mode);
    if (!head.fault.empty()) {
        totals.broken = head.fault;
        return totals;
    }
    bool writable = streams.write(sweep_head_line(settings.mode, settings.functions, head.delimiter));
    {
        Conveyor conveyor(fluid, settings, head, 2 * static_cast<std::size_t>(settings.jobs) + 2);
        std::uint64_t read = 0, written = 0, line = 2;
        bool more = true;
        while (writable && (more || written < read)) {
            while (more && read - written < conveyor.size()) {
                Piece& piece = conveyor.piece(read);
                more = reader.next(piece.in);
                if (!more) break;
                piece.first_line = line;
                line += static_cast<std::uint64_t>(std::count(piece.in.begin(), piece.in.end(), '\n'));
                conveyor.submit(read++);
            }
            if (written == read) continue;
            conveyor.await(written);
            const Piece& piece = conveyor.piece(written++);
            writable = streams.write(piece.out.text());
            if (writable) add(totals, piece.totals);
        }
        if (reader.too_long())
            totals.broken =
                "line " + std::to_string(line) + " is longer than " + std::to_string(bytes) + " characters";
    }
    if (reader.failed()) totals.broken = "the input could not be read";
    if (!writable) totals.broken = "the output could not be written";
    return totals;
}

}  // namespace quom

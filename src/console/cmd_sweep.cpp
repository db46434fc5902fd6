// sweep: one calculation a row of a table or of a grid.
#include <algorithm>
#include <memory>
#include <thread>

#include "base/descriptor.h"
#include "base/input_file.h"
#include "base/output_file.h"
#include "console/calc_setup.h"
#include "console/interrupt.h"
#include "console/sweep_job.h"
#include "console/sweep_manifest.h"
#include "report/outcome_report.h"
#include "report/selection_report.h"

namespace quom {
namespace {

std::string plural(std::uint64_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

// What the rows without a result come to; empty when there are none.
std::string summary(const SweepTotals& t) {
    std::string text;
    if (t.failed)
        text += plural(t.failed, "line has", "lines have") + " no result (reason in the column reason). ";
    if (t.malformed) {
        text += plural(t.malformed, "line", "lines") + " could not be read: ";
        for (const std::string& fault : t.faults) text += (&fault == &t.faults.front() ? "" : "; ") + fault;
        if (t.malformed > t.faults.size()) text += "; ...";
        text += ".";
    }
    return text;
}

Block totals_block(const SweepTotals& totals) {
    const auto count = [](const char* key, const char* label, std::uint64_t n) {
        return Field{key, label, static_cast<std::size_t>(n), "", ""};
    };
    return {"sweep",
            "",
            {count("lines", "calculations", totals.lines), count("failed", "without result", totals.failed),
             count("warned", "with a warning", totals.warned),
             count("malformed", "not readable", totals.malformed)},
            Layout::list};
}

Report fault(ReportStatus status, std::string message) {
    return refusal("sweep", {status, std::move(message)});
}

Report finished(const Program& program, const SweepArguments& a, const SweepTotals& totals) {
    Report report;
    report.message = summary(totals);
    if (a.strict && totals.failed + totals.malformed > 0) report.status = status_no_result;
    if (a.out == "-") return report;
    add_heads(report, program.session);
    report.footer = footer_of(*program.session.fluid, program.session.document.units);
    report.sections.emplace_back(totals_block(totals));
    add_warnings(report, totals.warnings);
    return report;
}

InputFile open_input(Program& program, const std::string& path) {
    return path.empty() || path == "-" ? InputFile::of_stream(program.in) : InputFile::open(path);
}

TableInput::Read reader_of(InputFile& input) {
    return [&input](char* into, std::size_t space) { return input.read(into, space); };
}

// Rows that are on their way, for whoever ends the sweep early.
class Progress {
 public:
    explicit Progress(const std::string& out)
        : interruption_("sweep", out == "-" ? std::string() : in_quotes(out)) {}
    bool add(const SweepPart& part) {
        rows_ += part.rows;
        interruption_.at_line(rows_);
        return true;
    }
    // The first of what went wrong, as a sentence that says how far the sweep came; empty when nothing did.
    std::string fault(const InputFile& input, const std::string& output, const SweepTotals& totals) const {
        const std::string& first = !input.fault().empty() ? input.fault()
                                   : !output.empty()      ? output
                                                          : totals.broken;
        if (first.empty() || rows_ == 0) return first.empty() ? first : first + ".";
        return first + ", after " + plural(rows_, "line", "lines") + " of the table.";
    }

 private:
    Interruption interruption_;
    std::uint64_t rows_ = 0;
};

// Into one file, or to the standard output.
Report sweep_whole(Program& program, const SweepArguments& a, const SweepJob& job) {
    InputFile input = open_input(program, a.in);
    if (!input.fault().empty()) return fault(status_file, input.fault() + ".");
    Progress progress(a.out);
    OutputFile output = a.out == "-" ? OutputFile::append_to_stream(program.out) : OutputFile::open(a.out);
    if (!output.fault().empty()) return fault(status_file, output.fault() + ".");
    const SweepStreams streams{
        .read = reader_of(input),
        .write = [&output](std::string_view bytes) { return output.write(bytes); },
        .part_written = [&progress](const SweepPart& part) { return progress.add(part); }};
    const SweepTotals totals =
        run_sweep(program.session.fluid, job.settings, job.grid ? &*job.grid : nullptr, streams);
    std::string broken = progress.fault(input, output.fault(), totals);
    if (broken.empty() && !output.finish()) broken = progress.fault(input, output.fault(), totals);
    return broken.empty() ? finished(program, a, totals) : fault(status_file, std::move(broken));
}

// Whether the table is still the one that a whole sweep was made of; the fault when it is not.
std::string changed_table(Program& program, const SweepArguments& a, const SweepManifest& manifest) {
    if (!a.grid.empty() || manifest.chunks.empty()) return {};
    InputFile input = open_input(program, a.in);
    TableInput table(reader_of(input), table_piece_bytes);
    read_sweep_head(table, a.mode, program.session.fluid->M, a.table);
    if (a.shard.empty() && count_rows(table).checksum != manifest.chunks.back().input)
        return "the table is not the one that the chunks were calculated from";
    return input.fault();
}

// Into chunks with a manifest; with --resume behind those that are whole.
Report sweep_chunks(Program& program, const SweepArguments& a, SweepJob& job) {
    SweepManifest before = take_over(a.out, job.identity);
    const std::string name = manifest_name(a.out);
    if (!a.resume && read_manifest(name).settings.is_object())
        return fault(status_file,
                     "\"" + name + "\" is there already: --resume goes on with it; to begin anew remove it.");
    if (!before.fault.empty()) return fault(status_file, before.fault + ".");
    if (before.whole) {
        const std::string changed = changed_table(program, a, before);
        if (!changed.empty()) return fault(status_file, changed + ".");
        Report report = finished(program, a, {});
        report.message = "All " + plural(before.chunks.size(), "chunk", "chunks") + " of \"" + a.out +
                         "\" are whole: there was nothing to do.";
        return report;
    }
    SweepSettings& settings = job.settings;
    settings.range.first += before.rows();
    settings.with_head = settings.with_head && before.chunks.empty();
    if (!before.chunks.empty()) settings.range.checksum = before.chunks.back().input;
    InputFile input = open_input(program, a.in);
    if (!input.fault().empty()) return fault(status_file, input.fault() + ".");
    Progress progress(a.out);
    ChunkedOutput output(a.out, a.chunk, before);
    const SweepStreams streams{.read = reader_of(input),
                               .write = [&output](std::string_view bytes) { return output.write(bytes); },
                               .part_written =
                                   [&](const SweepPart& part) {
                                       const std::uint64_t last = part.first_row + part.rows - 1;
                                       return progress.add(part) &&
                                              output.rows_written(part.rows, last, part.checksum);
                                   }};
    const SweepTotals totals =
        run_sweep(program.session.fluid, settings, job.grid ? &*job.grid : nullptr, streams);
    std::string broken = progress.fault(input, output.fault(), totals);
    if (broken.empty() && !output.finish(totals.checksum))
        broken = progress.fault(input, output.fault(), totals);
    return broken.empty() ? finished(program, a, totals) : fault(status_file, std::move(broken));
}

Report sweep(Program& program, const SweepArguments& a) {
    if (a.out == "-" && program.options.json)
        return fault(status_usage,
                     "--json gives the summary as JSON; it needs the table in a file, --out FILE.");
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("sweep", *refused);
    if (const Refused refused = set_up_mode(program, a.mode)) return refusal("sweep", *refused);
    SweepJob job = make_sweep_job(program.session, a);
    if (job.refused) return refusal("sweep", *job.refused);
    return a.chunk > 0 ? sweep_chunks(program, a, job) : sweep_whole(program, a, job);
}

void add_output_options(CLI::App& app, SweepArguments& a) {
    app.add_option("--out", a.out, "Where the results go; - is the standard output")
        ->required()
        ->type_name("FILE|-");
    app.add_option(
           "--results", a.results,
           "Columns of the output by name, as h_V,rho_V,phase; the reason comes behind them (default: all)")
        ->type_name("NAMES");
    app.add_option("--format", a.format, "csv, or bin: doubles by column behind one line of JSON")
        ->check(CLI::IsMember({"csv", "bin"}))
        ->type_name("csv|bin");
    app.add_option("--shard", a.shard,
                   "Rows of the K-th of N equal parts; put one behind the other the parts are the whole, the "
                   "head stands in the first")
        ->type_name("K/N");
    app.add_option(
           "--chunk", a.chunk,
           "Files FILE.000001, FILE.000002 ... of so many rows, and FILE.manifest that tells which are whole")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1'000'000'000}))
        ->type_name("ROWS");
    app.add_flag("--resume", a.resume, "Goes on behind the chunks that are whole");
    app.add_flag("--strict", a.strict, "Exit status 1 where a line has no result");
}

}  // namespace

Action declare_sweep(CLI::App& app) {
    const auto a = std::make_shared<SweepArguments>();
    a->jobs = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, most_jobs);
    add_substance(app, a->substance);
    add_mode(app, a->mode);
    app.add_option("--in", a->in,
                   "Table with a head line of T, p, rho, m, V with their units; - is the standard input")
        ->type_name("FILE|-");
    app.add_option("--grid", a->grid,
                   "In place of a table: \"T=250:550:301 p=100:8000:80,log\", the last runs fastest")
        ->type_name("GRID");
    add_output_options(app, *a);
    add_table_options(app, a->table);
    app.add_option("--jobs", a->jobs, "Calculations side by side (default: the number of cores)")
        ->check(CLI::Range(1, most_jobs))
        ->type_name("N");
    app.add_flag("--functions", a->functions, "With h, s, g, u, a, exergies, cp, cV, w of both phases");
    add_model_options(app, a->models);
    return [a](Program& program) { return sweep(program, *a); };
}

}  // namespace quom

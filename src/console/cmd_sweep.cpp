// sweep: one calculation a line of a CSV table.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "console/calc_setup.h"
#include "console/sweep.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct SweepArguments {
    std::string substance;
    ModelOptions models;
    SweepSettings settings;
    std::string in, out;
};

// The output under a temporary name until it is complete; "-" is the standard output.
class Output {
 public:
    Output(const std::string& path, std::ostream& standard) : path_(path), standard_(standard) {
        if (path == "-") return;
        temporary_ = path + ".part" + std::to_string(::getpid());
        file_.open(temporary_, std::ios::binary | std::ios::trunc);
    }
    ~Output() {
        if (temporary_.empty()) return;
        file_.close();
        std::error_code ignored;
        std::filesystem::remove(temporary_, ignored);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    bool good() const { return temporary_.empty() || file_.is_open(); }
    bool write(std::string_view bytes) {
        std::ostream& out = temporary_.empty() ? standard_ : file_;
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return static_cast<bool>(out);
    }
    // Gives the file its name; false when that fails.
    bool finish() {
        if (temporary_.empty()) return static_cast<bool>(standard_.flush());
        file_.close();
        std::error_code fault;
        if (file_) std::filesystem::rename(temporary_, path_, fault);
        const bool done = file_ && !fault;
        if (done) temporary_.clear();
        return done;
    }

 private:
    std::string path_, temporary_;
    std::ostream& standard_;
    std::ofstream file_;
};

std::string plural(std::uint64_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

// What the lines without a result come to; empty when there are none.
std::string summary(const SweepTotals& t) {
    std::string text;
    if (t.failed)
        text += plural(t.failed, "line has", "lines have") + " no result (reason in the column message). ";
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

SweepSettings settings_of(const Session& session, const SweepArguments& a) {
    SweepSettings settings = a.settings;
    settings.setup = session.document.calc.setup;
    settings.units = session.document.units;
    settings.factors = session.factors();
    return settings;
}

Report sweep(Program& program, const SweepArguments& a) {
    const auto fault = [](ReportStatus status, std::string message) {
        return refusal("sweep", {status, std::move(message)});
    };
    if (a.out == "-" && program.options.json)
        return fault(status_usage,
                     "--json gives the summary as JSON; it needs the table in a file, --out FILE.");
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("sweep", *refused);
    if (const Refused refused = set_up_mode(program, a.settings.mode)) return refusal("sweep", *refused);

    std::ifstream file;
    if (a.in != "-") {
        file.open(a.in, std::ios::binary);
        if (!file.is_open()) return fault(status_file, "The table \"" + a.in + "\" cannot be read.");
    }
    std::istream& in = a.in == "-" ? program.in : file;
    Output output(a.out, program.out);
    if (!output.good()) return fault(status_file, "\"" + a.out + "\" cannot be written.");

    const SweepStreams streams{.read =
                                   [&in](char* into, std::size_t space) {
                                       in.read(into, static_cast<std::streamsize>(space));
                                       return static_cast<std::ptrdiff_t>(in.gcount());
                                   },
                               .write = [&output](std::string_view bytes) { return output.write(bytes); }};
    const SweepTotals totals = run_sweep(program.session.fluid, settings_of(program.session, a), streams);
    if (!totals.broken.empty()) return fault(status_file, totals.broken + ".");
    if (!output.finish()) return fault(status_file, "\"" + a.out + "\" cannot be written.");

    Report report;
    if (totals.failed + totals.malformed > 0) {
        report.status = status_no_result;
        report.message = summary(totals);
    }
    if (a.out == "-") return report;
    add_heads(report, program.session);
    report.sections.emplace_back(totals_block(totals));
    add_warnings(report, totals.warnings);
    return report;
}

}  // namespace

Action declare_sweep(CLI::App& app) {
    const auto a = std::make_shared<SweepArguments>();
    const int cores = static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1u, 64u));
    a->settings.jobs = cores;
    add_substance(app, a->substance);
    add_mode(app, a->settings.mode);
    app.add_option("--in", a->in, "Table with a head line of T, p, rho, m, V; - is the standard input")
        ->required()
        ->type_name("FILE|-");
    app.add_option("--out", a->out, "Where the results go; - is the standard output")
        ->required()
        ->type_name("FILE|-");
    app.add_option("--jobs", a->settings.jobs, "Calculations side by side (default: the number of cores)")
        ->check(CLI::Range(1, 64))
        ->type_name("N");
    app.add_flag("--functions", a->settings.functions,
                 "With h, s, g, u, a, exergies, cp, cV, w of both phases");
    add_table_options(app, a->settings.table);
    add_model_options(app, a->models);
    return [a](Program& program) { return sweep(program, *a); };
}

}  // namespace quom

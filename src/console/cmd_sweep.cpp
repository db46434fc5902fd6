// sweep: one calculation a line of a CSV table.
#include <algorithm>
#include <memory>
#include <thread>

#include "base/input_file.h"
#include "base/output_file.h"
#include "console/calc_setup.h"
#include "console/interrupt.h"
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

    InputFile input = a.in == "-" ? InputFile::of_stream(program.in) : InputFile::open(a.in);
    if (!input.fault().empty()) return fault(status_file, input.fault() + ".");
    Interruption interruption("sweep", a.out == "-" ? std::string() : in_quotes(a.out));
    OutputFile output = a.out == "-" ? OutputFile::append_to_stream(program.out) : OutputFile::open(a.out);
    if (!output.fault().empty()) return fault(status_file, output.fault() + ".");

    std::uint64_t lines = 0;
    const auto write = [&](std::string_view bytes) {
        if (!output.write(bytes)) return false;
        lines += static_cast<std::uint64_t>(std::ranges::count(bytes, '\n'));
        interruption.at_line(lines);
        return true;
    };
    const auto read = [&input](char* into, std::size_t space) { return input.read(into, space); };
    const SweepTotals totals =
        run_sweep(program.session.fluid, settings_of(program.session, a), {.read = read, .write = write});
    const auto ended = [&](const std::string& why) {
        return fault(status_file, lines == 0
                                      ? why + "."
                                      : why + ", after line " + std::to_string(lines) + " of the output.");
    };
    if (!input.fault().empty()) return ended(input.fault());
    if (!output.fault().empty()) return ended(output.fault());
    if (!totals.broken.empty()) return fault(status_file, totals.broken + ".");
    if (!output.finish()) return ended(output.fault());

    Report report;
    if (totals.failed + totals.malformed > 0) {
        report.status = status_no_result;
        report.message = summary(totals);
    }
    if (a.out == "-") return report;
    add_heads(report, program.session);
    report.footer = footer_of(*program.session.fluid, program.session.document.units);
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
    add_model_options(app, a->models);
    return [a](Program& program) { return sweep(program, *a); };
}

}  // namespace quom

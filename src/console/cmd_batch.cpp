// batch: all points of a data set in one mode, with the list of results and the record as files.
#include <memory>
#include <vector>

#include "base/dates.h"
#include "base/files.h"
#include "console/calc_setup.h"
#include "fitting/baq_file.h"
#include "report/lst_file.h"
#include "report/outcome_report.h"
#include "report/point_comparison.h"
#include "report/record_file.h"
#include "report/titles.h"
#include "session/batch_run.h"
#include "session/project_file.h"

namespace quom {
namespace {

constexpr std::size_t largest_data_file = std::size_t{256} << 20;

struct BatchArguments {
    std::string substance, project, data;
    ModelOptions models;
    Mode mode = Mode::none;
    int ext = 1;
    bool functions = false;
    std::string separator = ";", lst, csv;
};

bool names_models(const ModelOptions& m) {
    return m.eos || m.evp || m.hlv || m.cp || m.watson || m.global || m.benson || m.ref || m.tref || m.pref ||
           m.tenv || m.penv || m.href || m.sref || m.energy != 0 || m.volume != 0 || !m.ji.empty() || m.b0 ||
           m.b1 || m.b2;
}

// Which of the arguments do not go together; empty when all do.
std::string contradiction(const BatchArguments& a) {
    const bool by_project = !a.project.empty();
    if (by_project && (!a.substance.empty() || !a.data.empty()))
        return "--project FILE has substance and data; SUBSTANCE and --data are for a batch without one.";
    if (!by_project && (a.substance.empty() || a.data.empty()))
        return "either SUBSTANCE and --data FILE.BAQ, or --project FILE.QC6.";
    if (by_project && names_models(a.models))
        return "a project has its own models and units; the options for them need SUBSTANCE and --data.";
    if (mode_info(a.mode).specified & spec_tank)
        return "the tank of modes 9 and 10 has no data points; \"quomc tank\" calculates it.";
    if (a.separator.size() != 1 || a.separator == "\n" || a.separator == "\r" || a.separator == "\"")
        return "--sep takes one character, as ';' or a tab.";
    if (a.functions && a.ext < 2) return "--functions needs the extended output of --ext 2, 3 or 4.";
    return {};
}

Refused load_data(Program& program, const BatchArguments& a) {
    const FileBytes file = read_file(a.data, largest_data_file);
    if (!file.bytes) return Fault{status_file, file.fault + "."};
    BaqResult data = read_baq(*file.bytes, a.data);
    if (!data.file) return Fault{status_file, data.fault};
    if (!data.file->note.empty())
        program.messages.ask({.title = "exper. data", .text = data.file->note, .kind = MessageKind::warning});
    Document document = program.session.document;
    document.exp.points = std::move(data.file->points);
    document.exp.file = {.ExpFile = a.data,
                         .ExpTitle = name_part(a.data),
                         .ExpDate = data.file->date,
                         .ExpComment = data.file->comment,
                         .ExpCAS = data.file->CAS,
                         .ExpName = data.file->name};
    commit(program.session, std::move(document));
    return {};
}

// Substance, models and data of a project.
Refused load_project(Program& program, const BatchArguments& a) {
    if (const Refused refused = load_database(program)) return refused;
    if (!LoadProject(program.session, a.project, program.messages).success)
        return Fault{status_file, "the project " + a.project + " could not be loaded."};
    return {};
}

Refused set_up(Program& program, const BatchArguments& a) {
    if (!a.project.empty()) {
        if (const Refused refused = load_project(program, a)) return refused;
    } else {
        if (const Refused refused = prepare(program, a.substance, a.models)) return refused;
        if (const Refused refused = load_data(program, a)) return refused;
    }
    if (data_point_count(program.session.document.exp) == 0)
        return Fault{status_no_result, "there is no data point to calculate."};
    if (const Refused refused = set_up_mode(program, a.mode)) return refused;
    Document document = program.session.document;
    document.options.BatchMode = true;
    document.options.SepCSV = a.separator.front();
    document.calc.ExtLevel = a.ext;
    commit(program.session, std::move(document));
    return {};
}

// Points with and without a result. One without a phase, as of a database function, has a result all the
// same.
struct Counts {
    int points = 0, active = 0, done = 0, failed = 0;
};
Counts counts_of(const Session& session) {
    Counts counts;
    const SharedVector<TpRhoPoint>& points = session.document.exp.points;
    counts.points = data_point_count(session.document.exp);
    for (std::size_t i = 1; i < points.size(); ++i) {
        counts.active += points[i].Aus == 0 ? 1 : 0;
        counts.done += session.batch[i].state == PointState::done ? 1 : 0;
        counts.failed += session.batch[i].state == PointState::failed ? 1 : 0;
    }
    return counts;
}

Block batch_block(const Session& session, const Counts& counts) {
    const Document& document = session.document;
    Block block{.key = "batch", .title = "", .fields = {}};
    block.fields = {{"mode", "Mode", number_of(document.calc.CalcMode), "", ""},
                    {"GlobalCalc", "", document.calc.setup.GlobalCalc, "", ""},
                    {"data", "Data", remark(document.exp.file.ExpTitle), "", ""},
                    {"points", "Points", counts.points, "", ""},
                    {"active", "active", counts.active, "", ""},
                    {"calculated", "with a result", counts.done, "", ""},
                    {"failed", "without a result", counts.failed, "", ""}};
    return block;
}

Table means_table(const Session& session) {
    Table table{
        .key = "deviations",
        .title = "Calculated against measured",
        .columns = {{"quantity", "quantity", ""}, {"count", "points", ""}, {"mean", "mean |deviation|", "%"}},
        .rows = {}};
    const DeviationMeans means = deviation_means(session.document.exp.points.list(), session.batch);
    for (std::size_t q = 0; q < compared_count; ++q) {
        if (const auto mean = means.mean(q)) table.rows.push_back({compared_key(q), means.count[q], *mean});
    }
    return table;
}

// Rows of the record in the order of the points, without those that have no result.
class RecordTaker {
 public:
    explicit RecordTaker(const Session& session)
        : session_(session), rows_(session.document.exp.points.size()), taken_(rows_.size()) {}
    void take(std::size_t point, const Outcome& outcome) {
        if (!outcome.has_result()) return;
        rows_[point] = record_row(session_, outcome);
        taken_[point] = 1;
    }
    std::vector<RecordRow> rows() const {
        std::vector<RecordRow> rows;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (taken_[i]) rows.push_back(rows_[i]);
        }
        return rows;
    }

 private:
    const Session& session_;
    std::vector<RecordRow> rows_;
    std::vector<std::uint8_t> taken_;
};

std::string write_lists(Program& program, const BatchArguments& a, const RecordTaker& record) {
    const Session& session = program.session;
    if (!a.lst.empty()) {
        ResultList list = result_list_of(session, today_text());
        list.WithFunctions = a.functions;
        const std::string fault = write_file_atomic(a.lst, result_file_bytes(list));
        if (!fault.empty()) return fault;
    }
    if (a.csv.empty()) return {};
    const Options& options = session.document.options;
    if (const auto warning = comma_warning(options.SepCSV, options.DezimalKomma))
        program.messages.ask(*warning);
    return write_file_atomic(a.csv, record_bytes(record_head(session, today_text()), record.rows()));
}

Report batch(Program& program, const BatchArguments& a) {
    if (const std::string wrong = contradiction(a); !wrong.empty())
        return refusal("batch", {status_usage, wrong});
    if (!a.models.units.empty())
        return refusal("batch", {status_usage, "lists and records have the units of --energy and --volume."});
    if (const Refused refused = set_up(program, a)) return refusal("batch", *refused);
    Session& session = program.session;
    const BatchJob job = batch_job(session);
    RecordTaker record(session);
    OutcomeTaker take;
    if (!a.csv.empty())
        take = [&record](std::size_t point, const Outcome& outcome) { record.take(point, outcome); };
    keep_results(session, job, run_batch(job, nullptr, 0, take));
    session.batch.resize(job.points.size());
    if (const std::string fault = write_lists(program, a, record); !fault.empty())
        return refusal("batch", {status_file, fault + "."});
    Report report;
    add_heads(report, session);
    report.title = substance_head(session.substance()) + "\n" + models_head(session.fluid->models) + "\n" +
                   CalcTitle(a.mode, session.document.calc.setup);
    const Counts counts = counts_of(session);
    report.sections.emplace_back(batch_block(session, counts));
    report.sections.emplace_back(means_table(session));
    if (counts.done == 0) {
        report.status = status_no_result;
        report.message = "No point has a result.";
        report.reason = "no_result";
    }
    return report;
}

}  // namespace

Action declare_batch(CLI::App& app) {
    const auto a = std::make_shared<BatchArguments>();
    app.add_option("SUBSTANCE", a->substance, "CAS number, name, synonym, or '#index'");
    app.add_option("--project", a->project, "Project with substance, models and data (.QC6)");
    app.add_option("--data", a->data, "Measured points (.BAQ)");
    add_mode(app, a->mode);
    app.add_option("--ext", a->ext, "Extended output, as in calc")
        ->check(CLI::Range(1, 4))
        ->type_name("1..4");
    app.add_flag("--functions", a->functions, "With the section of functions in the list");
    app.add_option("--lst", a->lst, "List of results with deviations (.LST)");
    app.add_option("--csv", a->csv, "Record of all results (.CSV)");
    app.add_option("--sep", a->separator, "Separator of the record, ';' without it")->type_name("CHAR");
    add_model_options(app, a->models);
    return [a](Program& program) { return batch(program, *a); };
}

}  // namespace quom

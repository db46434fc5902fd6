// project: what a project file holds and what of it is missing; and a project made from arguments.
#include <memory>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "console/selection.h"
#include "engine/model_catalogue.h"
#include "forms/reference_form.h"
#include "session/data_files.h"
#include "session/project_file.h"

namespace quom {
namespace {

struct ProjectArguments {
    std::string what;  // project file, or with --save the substance
    bool info = false;
    std::string save, data, comment;
    ModelOptions models;
};

// What a value of a project stands for, and its unit.
struct Meaning {
    std::string_view name;
    std::string (*text)(const ProjectFile& project);
    const char* unit;
};
std::string model(std::string_view text, std::string_view none) {
    return std::string(trim(text.empty() ? none : text));
}
constexpr Meaning meanings[] = {
    {"TcrStart", nullptr, "K"},
    {"pcrStart", nullptr, "kPa"},
    {"vcrStart", nullptr, "m^3/kmol"},
    {"VolumeMode", [](const ProjectFile& p) { return std::string(VolumeName({.VolumeMode = p.VolumeMode})); },
     ""},
    {"EnergyMode",
     [](const ProjectFile& p) {
         constexpr const char* units[] = {"kJ/kmol", "per R", "per R T", "kJ/kg"};
         return std::string(units[p.EnergyMode]);
     },
     ""},
    {"SepCSV",
     [](const ProjectFile& p) {
         return std::string(p.SepCSV == ';' ? "semicolon" : p.SepCSV == ',' ? "comma" : "tab character");
     },
     ""},
    {"EVPKode", [](const ProjectFile& p) { return model(evp_info(evp_of(p.EVPKode)).text, "none"); }, ""},
    {"EOSKode", [](const ProjectFile& p) { return model(eos_info(eos_of(p.EOSKode)).text, "none"); }, ""},
    {"cpKode", [](const ProjectFile& p) { return model(cp_info(cp_form_of(p.cpKode)).text, "none"); }, ""},
    {"HLVKode", [](const ProjectFile& p) { return model(hlv_info(hlv_of(p.HLVKode)).text, "none"); }, ""},
    {"Konzept", [](const ProjectFile& p) { return std::string(p.Konzept ? "GLOBAL" : "PARTIAL"); }, ""},
    {"RefKode",
     [](const ProjectFile& p) {
         const auto option = static_cast<std::size_t>(reference_option_of(p.RefKode));
         return std::string(reference_options[option].text);
     },
     ""},
    {"hOffset", nullptr, "kJ/kmol"},
    {"sOffset", nullptr, "kJ/(kmol K)"},
    {"TRef0", nullptr, "K"},
    {"pRef0", nullptr, "kPa"},
    {"TEnv", nullptr, "K"},
    {"pEnv", nullptr, "kPa"},
};

Table values_table(const ProjectFile& project) {
    Table table{"values",
                "Values",
                {{"line", "line", ""},
                 {"name", "name", ""},
                 {"value", "value", ""},
                 {"unit", "", ""},
                 {"meaning", "", ""}},
                {}};
    for (const ProjectValue& value : project_values(project)) {
        std::string text, unit;
        for (const Meaning& meaning : meanings) {
            if (meaning.name != value.name) continue;
            if (meaning.text != nullptr) text = meaning.text(project);
            unit = meaning.unit;
        }
        table.rows.push_back({value.line, value.name, value.text, remark(unit), remark(text)});
    }
    return table;
}

Table replaced_table(const std::vector<ReplacedValue>& replaced) {
    Table table{"replaced",
                replaced.empty() ? "" : "Not possible, and taken in their place",
                {{"line", "line", ""}, {"name", "name", ""}, {"found", "found", ""}, {"taken", "taken", ""}},
                {},
                replaced.empty() ? Layout::json : Layout::list};
    for (const ReplacedValue& value : replaced)
        table.rows.push_back({value.line, value.name, value.found, value.taken});
    return table;
}

// What of a project is not there, a sentence each.
struct Missing {
    std::string what, text;
    bool stops = false;  // the project cannot be loaded
};
std::vector<Missing> missing_parts(const ProjectFile& project, const ProjectSources& sources,
                                   const Session& session) {
    std::vector<Missing> missing;
    const bool present = session.document.DatabaseKind != 0;
    if (sources.database.empty()) {
        std::string text = sources.database_fault.empty()
                               ? "Database " + project.database_path + " was not found."
                               : sources.database_fault;
        if (present) text += " The substance was looked for in " + session.database.path + ".";
        missing.push_back({"database", std::move(text), !present});
    }
    if (sources.index == 0)
        missing.push_back({"substance",
                           project.CAS.empty()
                               ? "The project names no substance."
                               : "No substance of the database has the CAS number " + project.CAS + ".",
                           true});
    if (!project.exp_file.empty() && sources.exp_file.empty())
        missing.push_back({"data",
                           "Data file " + project.exp_file +
                               " was found neither beside the project nor in the program folder.",
                           false});
    return missing;
}

Table missing_table(const std::vector<Missing>& missing) {
    Table table{"missing",
                missing.empty() ? "" : "Missing",
                {{"what", "what", ""}, {"text", "", ""}},
                {},
                missing.empty() ? Layout::json : Layout::list};
    for (const Missing& part : missing) table.rows.push_back({part.what, part.text});
    return table;
}

Block project_block(const std::string& path, const ProjectFile& project, const ProjectSources& sources) {
    const bool data = !project.exp_file.empty();
    return {"project",
            "",
            {{"file", "file", path, "", ""},
             {"date", "saved on", remark(project.date), "", ""},
             {"comment", "comment", remark(project.comment), "", ""},
             {"last_session", "", is_last_session(path), "", ""},
             {"database", "database", remark(project.database_path), "", ""},
             {"database_file", "found as", remark(sources.database), "", ""},
             {"StoffCAS", "CAS", remark(project.CAS), "", ""},
             {"StoffName", "substance", remark(sources.substance_name), "", ""},
             {"data", "experimental data", remark(project.exp_file), "", ""},
             {"data_file", "found as", remark(sources.exp_file), "", ""},
             {"points", "points", data ? Value(project.ExpAnzahl) : Value(), "", ""}},
            Layout::known};
}

// The report of a project file; what it names is looked for as loading it would.
Report info(const Session& session, const std::string& path) {
    const FileBytes file = read_file(path, LargestProject);
    if (!file.bytes) return refusal("project", {status_file, file.fault});
    const ReadProject read = read_project(*file.bytes, path);
    if (!read.project) return refusal("project", {status_file, read.fault});
    const ProjectSources sources = find_sources(*read.project, path, session);
    const std::vector<Missing> missing = missing_parts(*read.project, sources, session);
    Report report;
    report.title = "Project " + name_part(path);
    report.sections = {project_block(path, *read.project, sources), values_table(*read.project),
                       replaced_table(read.replaced), missing_table(missing)};
    for (const Missing& part : missing) {
        if (!part.stops) continue;
        report.status = status_no_result;
        report.message += (report.message.empty() ? "" : " ") + part.text;
    }
    return report;
}

// A database that is missing stops nothing here, unless it was asked for.
Report show(Program& program, const ProjectArguments& arguments) {
    const Refused refused = load_database(program);
    if (refused && (!program.options.db.empty() || program.session.ProgramPath.empty()))
        return refusal("project", *refused);
    const std::string here = find_in_folder(folder_part(arguments.what), name_part(arguments.what));
    if (!here.empty()) return info(program.session, absolute_path(here));
    return info(program.session, resolve_path(arguments.what, program.session.ProgramPath));
}

Refused load_data(Program& program, const std::string& data) {
    if (!upper_text(data).ends_with(".BAQ"))
        return Fault{status_usage, "--data: a file of experimental data is named *.BAQ."};
    if (LoadExpDataFile(program.session, absolute_path(data), false, program.messages)) return {};
    return Fault{status_file, "The data of " + in_quotes(data) + " were not loaded."};
}

Report save(Program& program, const ProjectArguments& arguments) {
    if (!upper_text(arguments.save).ends_with(".QC6"))
        return refusal("project", {status_usage, "--save: a project is named *.QC6."});
    if (const Refused refused = prepare(program, arguments.what, arguments.models))
        return refusal("project", *refused);
    Session& session = program.session;
    if (!arguments.data.empty()) {
        if (const Refused refused = load_data(program, arguments.data)) return refusal("project", *refused);
    }
    Document document = session.document;
    document.ProjectComment = arguments.comment;
    commit(session, std::move(document));
    const ProjectSave saved = SaveProject(session, absolute_path(arguments.save), {}, program.messages);
    if (!saved.success)
        return refusal("project",
                       {status_file, "The project " + in_quotes(arguments.save) + " was not written."});

    session.shell.ExpFolder = session.ProgramPath;  // where another start would look
    Report report = info(session, saved.path);
    if (const EosFamily family = session.fluid->eos_row().family;
        family == EosFamily::manual || family == EosFamily::tovarn_ji)
        report.notes.push_back(
            "The constants of this equation of state are not part of a project: they are given anew.");
    if (!arguments.models.units.empty())
        report.notes.push_back("--units is not part of a project; --energy and --volume are.");
    return report;
}

// An option that only --save takes; empty: none was given.
std::string option_of_save(const CLI::App& app) {
    for (const CLI::Option* option : app.get_options())
        if (option->count() > 0 && option->nonpositional() && option->get_name() != "--info" &&
            option->get_name() != "--save")
            return option->get_name();
    return {};
}

Report project(Program& program, const ProjectArguments& arguments, const CLI::App& app) {
    if (!arguments.save.empty()) {
        if (!arguments.info) return save(program, arguments);
        return refusal("project",
                       {status_usage, "--info looks at a project, --save makes one; one of them is right."});
    }
    if (const std::string option = option_of_save(app); !option.empty())
        return refusal("project", {status_usage, option + " belongs to --save FILE SUBSTANCE."});
    return show(program, arguments);
}

}  // namespace

Action declare_project(CLI::App& app) {
    const auto arguments = std::make_shared<ProjectArguments>();
    app.add_option("WHAT", arguments->what, "Project file *.QC6, or with --save the SUBSTANCE")->required();
    app.add_flag("--info", arguments->info, "What the project holds and what of it is missing (default)");
    app.add_option("--save", arguments->save, "Write a project of the substance and its models to this file");
    app.add_option("--data", arguments->data, "with --save: its file of experimental data, *.BAQ");
    app.add_option("--comment", arguments->comment, "with --save: its comment");
    add_model_options(app, arguments->models);
    return [arguments, &app](Program& program) { return project(program, *arguments, app); };
}

}  // namespace quom

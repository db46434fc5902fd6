#include "session/project_file.h"

#include <utility>

#include "base/constants.h"
#include "base/files.h"
#include "session/data_files.h"
#include "session/start_up.h"
#include "substance/database.h"
#include "substance/search.h"

namespace quom {
namespace {

Message stop(std::string text) {
    return {.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::stop};
}

// The existing file of a project; empty when there is none.
std::string existing_project(const Session& session, std::string_view path) {
    if (has_folder_part(path)) return find_in_folder(folder_part(path), name_part(path));
    std::string found = find_in_folder(session.ProgramPath, path);
    return found.empty() ? find_in_folder({}, path) : found;
}

std::string not_available(const std::string& CAS) {
    if (CAS.empty()) return "The project names no substance.";
    return CAS + " (substance is not available in the present database)";
}

// --- Loading ---

// Puts the database of the project in force, or tells why there is none. False: the project cannot be loaded.
bool load_project_database(Session& session, const ProjectFile& project, std::string_view project_path,
                           Messages& messages) {
    if (project.database_kind() <= 5) return true;  // it goes on with the one that is there
    const std::string path = resolve_path(project.database_path, session.ProgramPath, project_path);
    const LoadResult loaded = LoadDatabase(session, project.database_kind(), path);
    if (loaded.err == 0) return true;

    // A file that is there is no database: its fault tells more.
    const std::string why = FileExists(path, session.ProgramPath) ? "\n" + loaded.fault : "";
    const std::string name = "Database " + project.database_path + "\n";
    if (session.document.DatabaseKind == 0) {
        messages.ask(stop(name + "not found in the QUOM directory " + why));
        return false;
    }
    messages.ask({.title = "Note",
                  .text = name + " not found in the QUOM directory" + why +
                          "\nThe currently loaded database will continue to be used.",
                  .kind = MessageKind::info});
    return true;
}

bool select_project_substance(Session& session, const std::string& CAS, Messages& messages) {
    const int index = FindCAS(session.database, CAS);
    if (index == 0) {
        messages.ask(stop(not_available(CAS)));
        return false;
    }
    SelectSubstance(session, index);
    if (session.document.substance.StoffIndexAktiv == index) return true;
    messages.ask(stop("The record of " + CAS + " cannot be read from " + session.database.path + "."));
    return false;
}

// What the file holds beside database, substance and data. VPhaseOnly and the factors of the units follow.
void take_values(Document& document, const ProjectFile& p) {
    document.ProjectComment = p.comment;
    document.models = {.EOSKode = eos_of(p.EOSKode),
                       .EVPKode = evp_of(p.EVPKode),
                       .HLVKode = hlv_of(p.HLVKode),
                       .cpKode = cp_form_of(p.cpKode),
                       .nWat = p.nWat,
                       .Konzept = p.Konzept};
    document.reference = {.RefKode = p.RefKode,
                          .TRef0 = p.TRef0,
                          .pRef0 = p.pRef0,
                          .hOffset = p.hOffset,
                          .sOffset = p.sOffset,
                          .TEnv = p.TEnv,
                          .pEnv = p.pEnv};
    const SubstanceConstants& c = document.substance.constants;
    document.units = {.EnergyMode = p.EnergyMode,
                      .VolumeMode = p.VolumeMode,
                      .TcrStart = p.TcrStart > 0 ? p.TcrStart : c.Tcr,
                      .pcrStart = p.pcrStart > 0 ? p.pcrStart : c.pcr,
                      .vcrStart = p.vcrStart};
    document.options.chkCurveTpRestricted = p.chkCurveTpRestricted;
    document.options.Dens = p.Dens;
    document.options.SepCSV = p.SepCSV;
    document.options.ParSpeichern = p.ParSpeichern;
    document.calc.ProcessForm = p.ProcessForm;
    document.exp.optFitFunction = p.optFitFunction;
}

// Specific units of a substance without molar mass would be molar ones under another name.
void check_units(Document& document, Messages& messages) {
    Units& units = document.units;
    const bool specific = units.EnergyMode == energy_per_mass || units.VolumeMode == volume_per_mass;
    if (!specific || static_cast<double>(document.substance.constants.MolMass) >= TinyT) return;
    if (units.EnergyMode == energy_per_mass) units.EnergyMode = energy_molar;
    if (units.VolumeMode == volume_per_mass) units.VolumeMode = volume_molar;
    messages.ask({.title = "WARNING",
                  .text = "For this substance the molar mass is missing.\nMolar quantities are shown.",
                  .kind = MessageKind::warning});
}

void tell_replaced(const std::string& path, const std::vector<ReplacedValue>& replaced, Messages& messages) {
    if (replaced.empty()) return;
    std::string text = "The project file " + name_part(path) + " holds values that are not possible:";
    for (const ReplacedValue& value : replaced) text += "\n" + replaced_text(value);
    messages.ask({.title = "WARNING", .text = std::move(text), .kind = MessageKind::warning});
}

// The steps of LoadProjectFile on a session that is thrown away when they fail.
ProjectLoad load_into(Session& session, const std::string& path, Messages& messages) {
    const FileBytes file = read_file(path, LargestProject);
    ReadProject read;
    if (file.bytes) read = read_project(*file.bytes, name_part(path));
    if (!read.project) {
        messages.ask(stop(file.bytes ? read.fault : file.fault));
        return {};
    }
    const ProjectFile& project = *read.project;
    session.shell.LastSessionLoaded = is_last_session(path);
    if (!load_project_database(session, project, path, messages)) return {};
    if (!select_project_substance(session, project.CAS, messages)) return {};

    tell_replaced(path, read.replaced, messages);
    Document document = session.document;
    take_values(document, project);
    check_units(document, messages);
    check_reference(document, messages);
    commit(session, std::move(document));
    if (project.ParSpeichern) {
        DiagramState& state = session.diagram.state;
        state.T = project.TcrStart;
        state.p = project.pcrStart;
        state.v = project.vcrStart;
    }
    forget_results(session);
    session.shell.ModelChange.clear();
    return {.success = true, .exp_file = project.exp_file, .replaced = std::move(read.replaced)};
}

// A session to try something with; outcomes go with what is loaded.
Session copy_without_outcomes(const Session& session) {
    return {.document = session.document,
            .fluid = session.fluid,
            .database = session.database,
            .names = session.names,
            .ProgramPath = session.ProgramPath,
            .StoffIndex = session.StoffIndex,
            .outcome = {},
            .batch = {},
            .record = session.record,
            .shell = session.shell};
}

// --- The measured data of a project ---

void ask_to_preserve_data(Session& session, Messages& messages) {
    if (data_point_count(session.document.exp) == 0) return;
    const Answer answer = messages.ask({.title = "exper. data",
                                        .text = "Do you want to preserve the loaded exper. data?",
                                        .buttons = Buttons::yes_no,
                                        .default_button = Answer::yes,
                                        .kind = MessageKind::question});
    if (answer != Answer::no) return;
    Document document = session.document;
    document.exp.points.edit().resize(1);  // the direct input is no data
    document.exp.file = {};
    document.exp.ExpGeaendert = false;
    document.calc.CurrentPoint = 0;
    commit(session, std::move(document));
}

void load_project_data(Session& session, ProjectLoad& load, const std::string& project_path,
                       Messages& messages) {
    if (load.exp_file.empty()) {
        ask_to_preserve_data(session, messages);
        return;
    }
    if (!upper_text(load.exp_file).ends_with("BAQ")) {
        messages.ask(stop("file is not of the type .BAQ and cannot be loaded"));
        load.exp_file.clear();
        return;
    }
    std::string path = find_exp_file(session, load.exp_file, project_path);
    if (path.empty()) path = join_path(folder_part(project_path), name_part(load.exp_file));
    if (!LoadExpDataFile(session, path, false, messages)) ask_to_preserve_data(session, messages);
}

// Loads a project with its data; the places of the project in force are left to the caller.
ProjectLoad load_with_data(Session& session, const std::string& path, Messages& messages) {
    Session attempt = copy_without_outcomes(session);
    ProjectLoad load = load_into(attempt, path, messages);
    if (!load.success) return load;
    load_project_data(attempt, load, path, messages);
    session = std::move(attempt);
    return load;
}

// The path of a project to load, absolute; empty when the file is missing, which is told.
std::string project_to_load(const Session& session, std::string_view path, Messages& messages) {
    std::string found = existing_project(session, path);
    if (found.empty()) messages.ask(stop(std::string(path) + "\n not found in the QUOM directory"));
    return found.empty() ? found : absolute_path(found);
}

// --- Preview ---

void describe_data(ProjectPreview& preview) {
    preview.data_text = preview.exp_file.empty() ? "(none)"
                                                 : preview.exp_file + "  (" +
                                                       std::to_string(preview.ExpAnzahl) + " exper. points)";
}

}  // namespace

bool is_last_session(std::string_view path) {
    return upper_text(name_part(path)) == upper_text(LastSessionName);
}

ProjectLoad LoadProjectFile(Session& session, std::string_view path, Messages& messages) {
    const std::string file = project_to_load(session, path, messages);
    if (file.empty()) return {};
    Session attempt = copy_without_outcomes(session);
    ProjectLoad load = load_into(attempt, file, messages);
    if (load.success) session = std::move(attempt);
    return load;
}

ProjectLoad LoadProject(Session& session, std::string_view path, Messages& messages) {
    const std::string file = project_to_load(session, path, messages);
    if (file.empty()) return {};
    ProjectLoad load = load_with_data(session, file, messages);
    if (!load.success) return load;
    session.shell.ProjectPath = file;
    session.shell.ProjectFolder = folder_part(file);
    session.shell.ProjectTitle = name_part(file);
    return load;
}

ProjectLoad LoadLastSession(Session& session, Messages& messages) {
    const std::string file = find_in_folder(session.ProgramPath, LastSessionName);
    if (file.empty()) {
        messages.ask(
            stop(join_path(session.ProgramPath, LastSessionName) + "\n not found in the QUOM directory"));
        return {};
    }
    ProjectLoad load = load_with_data(session, file, messages);
    if (!load.success) return load;
    session.shell.ProjectPath.clear();
    session.shell.ProjectTitle.clear();
    return load;
}

std::string find_exp_file(const Session& session, std::string_view name, std::string_view project_path) {
    const std::string file = name_part(name);
    for (const std::string& folder :
         {folder_part(project_path), session.shell.ExpFolder, session.ProgramPath}) {
        if (folder.empty()) continue;
        if (std::string found = find_in_folder(folder, file); !found.empty()) return found;
    }
    return {};
}

ProjectSources find_sources(const ProjectFile& project, std::string_view project_path,
                            const Session& session) {
    ProjectSources sources;
    OpenedDatabase opened{.file = {}, .err = -1, .fault = {}};
    const std::string path = resolve_path(project.database_path, session.ProgramPath, project_path);
    if (project.database_kind() > 5 && FileExists(path, session.ProgramPath))
        opened = open_database(project.database_kind(), path, session.document.options.Englisch);
    if (opened.err == 0) sources.database = path;
    sources.database_fault = std::move(opened.fault);

    const DatabaseFile& database = opened.err == 0 ? opened.file : session.database;
    sources.substances = database.StoffAnzahl();
    sources.index = FindCAS(database, project.CAS);
    if (sources.index > 0)
        sources.substance_name =
            main_name(database.rows[static_cast<std::size_t>(sources.index - 1)].SubstanceName);
    if (!project.exp_file.empty()) sources.exp_file = find_exp_file(session, project.exp_file, project_path);
    return sources;
}

ProjectPreview preview_project(std::string_view path, const Session& session) {
    const auto refused = [](std::string text) {
        ProjectPreview nothing;
        nothing.refusal = stop(std::move(text));
        return nothing;
    };
    if (!path.ends_with('6')) return refused("Only *.QC6 projects are supported.");
    const std::string file = existing_project(session, path);
    const FileBytes bytes = read_file(file.empty() ? std::string(path) : file, LargestProject);
    if (!bytes.bytes) return refused(bytes.fault);
    const ReadProject read = read_project_head(*bytes.bytes, name_part(path));
    if (!read.project) return refused(read.fault);
    const ProjectFile& project = *read.project;
    if (project.database_kind() < 6)
        return refused(
            "Databases *.Q04 and *.Q05 are not longer supported.\n"
            "(Change the name to *.Q07 in the project file)");

    ProjectPreview preview;
    preview.date = project.date;
    preview.comment = project.comment;
    preview.database_path = project.database_path;
    preview.exp_file = project.exp_file;
    preview.ExpAnzahl = project.ExpAnzahl;
    preview.CAS = project.CAS;
    const ProjectSources sources = find_sources(project, file, session);
    preview.database_missing = sources.database.empty();
    preview.database_text = name_part(project.database_path) +
                            (preview.database_missing ? " not in the QUOM working directory" : "");
    preview.substance_name = sources.substance_name;
    preview.substance_text = sources.index == 0
                                 ? preview.CAS + " (substance is not available in the present database)"
                                 : preview.substance_name + "  (" + preview.CAS + ")";
    describe_data(preview);
    return preview;
}

}  // namespace quom

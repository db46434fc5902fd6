#include <utility>

#include "base/dates.h"
#include "base/files.h"
#include "session/project_file.h"
#include "substance/database.h"

namespace quom {
namespace {

void warn(const std::string& text, Messages& messages) {
    messages.ask({.title = "WARNING", .text = text, .kind = MessageKind::warning});
}

ProjectSave refuse(const std::string& why, Messages& messages) {
    messages.ask({.title = "Execution not possible", .text = why, .kind = MessageKind::stop});
    return {};
}

bool fits_code_page(std::string_view text) { return cp1252_from_utf8(text).replaced == 0; }

// The parameters of the curves drawn at constant T, p and v, where they are to be kept.
Units parameters_of(const Session& session) {
    if (!session.document.options.ParSpeichern) return {};
    Units start = session.document.units;
    const DiagramState& drawn = session.diagram.state;
    if (drawn.T > 0.0) start.TcrStart = drawn.T;
    if (drawn.p > 0.0) start.pcrStart = drawn.p;
    if (drawn.v > 0.0) start.vcrStart = drawn.v;
    return start;
}

// The lines of the session.
ProjectFile project_of(const Session& session) {
    const Document& d = session.document;
    const Units start = parameters_of(session);
    return {.date = today_text(),
            .comment = d.ProjectComment,
            .database_path = d.DatabasePath.empty() ? "" : absolute_path(d.DatabasePath),
            .exp_file = name_part(d.exp.file.ExpFile),
            .ExpAnzahl = data_point_count(d.exp),
            .CAS = d.substance.constants.StoffCAS,
            .TcrStart = start.TcrStart,
            .pcrStart = start.pcrStart,
            .vcrStart = start.vcrStart,
            .uFactor = session.factors().uFactor,
            .VolumeMode = d.units.VolumeMode,
            .EnergyMode = d.units.EnergyMode,
            .chkCurveTpRestricted = d.options.chkCurveTpRestricted,
            .Dens = d.options.Dens,
            .SepCSV = d.options.SepCSV,
            .EVPKode = number_of(d.models.EVPKode),
            .EOSKode = number_of(d.models.EOSKode),
            .cpKode = number_of(d.models.cpKode),
            .HLVKode = number_of(d.models.HLVKode),
            .nWat = d.models.nWat,
            .Konzept = d.models.Konzept,
            .RefKode = d.reference.RefKode,
            .hOffset = d.reference.hOffset,
            .sOffset = d.reference.sOffset,
            .TRef0 = d.reference.TRef0,
            .pRef0 = d.reference.pRef0,
            .TEnv = d.reference.TEnv,
            .pEnv = d.reference.pEnv,
            .ProcessForm = d.calc.ProcessForm,
            .optFitFunction = d.exp.optFitFunction,
            .ParSpeichern = d.options.ParSpeichern};
}

// A path of the database that the file cannot hold is written as its bare name, which is looked for beside
// the project and in the program folder. Returns why even that is not possible.
std::string encode_database_path(ProjectFile& project, const std::string& ProgramPath,
                                 const std::string& target) {
    const std::string path = project.database_path;
    if (path.find_first_of("\r\n") == std::string::npos && fits_code_page(path)) return {};
    const std::string name = name_part(path);
    project.database_path = name;
    const bool found_again = fits_code_page(name) && name.find_first_of("\r\n") == std::string::npos &&
                             absolute_path(resolve_path(name, ProgramPath, target)) == path;
    if (found_again) return {};
    return "The path of the database has characters that a project file cannot hold:\n" + path +
           "\nCopy the database to another folder, or beside the project, and open it from there.";
}

// What another start would not find as it is now.
void warn_of_losses(const Session& session, const ProjectFile& project, std::size_t replaced,
                    Messages& messages) {
    if (replaced > 0)
        warn("The project file holds \"?\" for " + std::to_string(replaced) +
                 (replaced == 1 ? " character" : " characters") + " that it cannot hold.",
             messages);
    const int index = session.document.substance.StoffIndexAktiv;
    if (index == 0 || FindCAS(session.database, project.CAS) == index) return;
    warn(project.CAS.empty() ? "The substance has no CAS number.\nThe project will not find it again."
                             : "Another substance of the database has the CAS number " + project.CAS +
                                   ", too.\nThe project will find that one.",
         messages);
}

struct Target {
    std::string path;
    bool last_session = false;
};
Target target_of(const Session& session, std::string_view path) {
    if (upper_text(path).ends_with(upper_text(LastSessionName)))
        return {join_path(session.ProgramPath, LastSessionName), true};
    if (has_folder_part(path)) return {std::string(path), false};
    return {join_path(session.shell.ProjectFolder, path), false};
}

}  // namespace

ProjectSave SaveProject(Session& session, std::string_view path, const AskComment& ask, Messages& messages) {
    const Target target = target_of(session, path);
    ProjectFile project = project_of(session);
    if (ask && !target.last_session)
        project.comment = ask({.title = " File comment (optional) ",
                               .prompt = "<Cancel> = No Comment",
                               .present = session.document.ProjectComment})
                              .value_or("");
    if (project.comment.empty()) project.comment = "<>";
    if (const std::string why = encode_database_path(project, session.ProgramPath, target.path); !why.empty())
        return refuse(why, messages);
    const Encoded encoded = project_bytes(project);
    if (const std::string fault = write_file_atomic(target.path, encoded.bytes); !fault.empty())
        return refuse(fault, messages);
    Document document = session.document;
    document.ProjectComment = project.comment;
    commit(session, std::move(document));
    if (!target.last_session) warn_of_losses(session, project, encoded.replaced, messages);
    return {.success = true, .path = target.path};
}

ProjectSave SaveProjectAs(Session& session, std::string_view path, const AskComment& ask,
                          Messages& messages) {
    ProjectSave save = SaveProject(session, path, ask, messages);
    if (!save.success) return save;
    session.shell.ProjectPath = absolute_path(save.path);
    session.shell.ProjectTitle = name_part(save.path);
    session.shell.ProjectFolder = folder_part(session.shell.ProjectPath);
    session.shell.LastSessionLoaded = is_last_session(save.path);
    return save;
}

ProjectSave SaveLastSession(Session& session, Messages& messages) {
    if (session.document.DatabaseKind == 0 || session.document.DatabasePath.empty())
        return {.success = true, .path = {}};
    return SaveProject(session, LastSessionName, {}, messages);
}

}  // namespace quom

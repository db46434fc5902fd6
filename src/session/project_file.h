// Projects: a session kept in a file (.QC6), loaded again, and looked at. The last session is a project of a
// fixed name in the program folder.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/project_lines.h"
#include "session/session.h"

namespace quom {

inline constexpr std::string_view LastSessionName = "QuomLastSession.QC6";
inline constexpr std::size_t LargestProject = 1024 * 1024;  // no project is larger [bytes]
// Does the name of the file, in any case of letters, make it the last session?
bool is_last_session(std::string_view path);

// Asks for the comment of a project; none: cancelled, which gives a project without comment.
struct CommentQuestion {
    std::string title, prompt, present;
};
using AskComment = std::function<std::optional<std::string>(const CommentQuestion&)>;

struct ProjectSave {
    bool success = false;
    std::string path;  // of the file that was written
};
// Writes the session as a project. A name without a folder goes into ProjectFolder; any path that ends with
// the name of the last session is that file in the program folder, for which no comment is asked (nor without
// ask). The comment that was given becomes that of the session, "<>" when empty. What cannot be written is
// told, and the file that was there stays. The user is told of what could not be found again: a database path
// outside Windows-1252, a CAS number that is missing or that another substance of the database has, too.
ProjectSave SaveProject(Session& session, std::string_view path, const AskComment& ask, Messages& messages);
// The same under a name that the user chose: it becomes the project in force.
ProjectSave SaveProjectAs(Session& session, std::string_view path, const AskComment& ask, Messages& messages);
// Keeps the session for the next start. Without a database in force there is nothing to keep: success.
ProjectSave SaveLastSession(Session& session, Messages& messages);

struct ProjectLoad {
    bool success = false;
    std::string exp_file;                 // name of the data file in the project; empty: none, or dropped
    std::vector<ReplacedValue> replaced;  // values that could not be
};
// Reads a project into the session: database, substance, models, reference state, options. Its models are not
// confirmed. A name without a folder is taken in the program folder, then in the current one. Every refusal
// is told and leaves the session as it was. A database that is missing is a refusal without a database in
// force; else the project goes on with that one.
ProjectLoad LoadProjectFile(Session& session, std::string_view path, Messages& messages);
// The same with the measured data of the project, which becomes the project in force. Loaded data of before
// may be preserved where the project brings none. Data that cannot be loaded are told; the project is loaded
// all the same.
ProjectLoad LoadProject(Session& session, std::string_view path, Messages& messages);
// The session that SaveLastSession kept; it is no project with a path.
ProjectLoad LoadLastSession(Session& session, Messages& messages);

// Where the data file of a project is: in the folder of the project, else in ExpFolder, else in the program
// folder; empty when it is in none of them.
std::string find_exp_file(const Session& session, std::string_view name, std::string_view project_path);

// What a project names, as far as it is there. The database is opened on a handle of its own.
struct ProjectSources {
    std::string database;        // path of the file that was opened, empty: missing
    std::string database_fault;  // why a file that is there is no database
    int substances = 0;          // in the database that counts: its own, else the one in force
    int index = 0;               // of the substance in it, 0: not there
    std::string substance_name;
    std::string exp_file;  // path of the data file, empty: none or missing
};
ProjectSources find_sources(const ProjectFile& project, std::string_view project_path,
                            const Session& session);

// What the dialog of files shows of a project. The session is only read.
struct ProjectPreview {
    std::optional<Message> refusal;  // no project that can be shown: all else is empty
    std::string date, comment;
    std::string database_path;      // as the file has it
    bool database_missing = false;  // it was not found, or cannot be opened
    std::string exp_file;           // empty: none
    int ExpAnzahl = 0;
    std::string CAS, substance_name;  // name empty: not in the database
    // Texts of the labels.
    std::string database_text, data_text, substance_text;
};
ProjectPreview preview_project(std::string_view path, const Session& session);

}  // namespace quom

// Any bytes as a project, loaded into a session with the starter database: loaded, or refused with a message
// and the session as it was. What was loaded is saved and read again.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/files.h"
#include "session/project_file.h"
#include "session/start_up.h"

namespace {

using namespace quom;

// Answers as by default and counts what was told.
class Listener final : public Messages {
 public:
    Answer ask(const Message& message) override {
        if (message.text.empty()) std::abort();
        ++told;
        return message.default_button;
    }
    int told = 0;
};

// A folder that nothing else is in: names that the input gives are looked for beside it.
class Folder {
 public:
    Folder() { std::filesystem::create_directories(path_); }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string file() const { return (path_ / "input.QC6").string(); }

 private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("quom_fuzz_" + std::to_string(getpid()));
};

Session starter_session() {
    Session session;
    start_session(session, QUOM_STARTER_DATA, false);
    if (LoadDatabase(session, 7, "quom.q07").err != 0) std::abort();
    SelectSubstance(session, 1);
    return session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Session before = starter_session();
    const Folder folder;
    const std::string path = folder.file();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    Listener user;
    preview_project(path, before);
    Session session = before;
    const bool loaded = LoadProject(session, path, user).success;
    if (!loaded) {
        if (user.told == 0 || session.document != before.document || session.fluid != before.fluid ||
            session.database.path != before.database.path || session.shell.ProjectPath != "")
            std::abort();
        return 0;
    }
    if (session.shell.ModelsConfirmed || session.document.substance.StoffIndexAktiv == 0) std::abort();
    // Its own project is read without a reservation and holds the same.
    if (SaveProject(session, path, {}, user).success) {
        const ReadProject read = read_project(*read_file(path).bytes, path);
        if (!read.project || !read.replaced.empty() ||
            read.project->EVPKode != number_of(session.document.models.EVPKode) ||
            read.project->Dens != session.document.options.Dens)
            std::abort();
    }
    return 0;
}

#include "session/starter_update.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "substance/database.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

// The last version that the user was asked about, in the program folder.
constexpr const char* AskedFile = "starter-offered.txt";

bool is_date(std::string_view text) {
    if (text.size() != 10) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool good = i == 4 || i == 7 ? text[i] == '-' : text[i] >= '0' && text[i] <= '9';
        if (!good) return false;
    }
    return true;
}

bool is_there(const std::string& path) {
    std::error_code fault;
    return std::filesystem::exists(std::filesystem::symlink_status(path, fault));
}

// "quom-2026-11-21.q07" for quom.q07
std::string versioned(const std::string& name, const std::string& version) {
    const std::size_t point = name.rfind('.');
    return name.substr(0, point) + "-" + version + name.substr(point);
}

std::string asked_path(const StarterUpdate& update) { return join_path(folder_part(update.own), AskedFile); }

std::string copy_file(const std::string& from, const std::string& to) {
    if (is_there(to)) return {};
    const FileBytes file = read_file(from);
    return file.bytes ? write_file_atomic(to, *file.bytes) : file.fault;
}

}  // namespace

std::string database_version(const std::string& path) {
    const RecordLayout& layout = *record_layout(7);
    std::string header(layout.length, '\0');
    if (!RandomFile::open(path).read_at(0, header)) return {};
    std::string date = record_text(header, layout.Formula);
    return is_date(date) ? date : std::string();
}

StarterUpdate find_starter_update(const ProgramPlaces& places, const std::string& ProgramPath) {
    StarterUpdate update;
    if (!ProgramPath.empty()) update.own = find_in_folder(ProgramPath, StarterDatabase);
    if (update.own.empty()) return update;
    update.own_version = database_version(update.own);
    for (const std::string& folder : places.installed) {
        std::string path = find_in_folder(folder, StarterDatabase);
        std::string version = path.empty() ? std::string() : database_version(path);
        if (version <= update.installed_version) continue;
        if (open_database(7, path, true).err != 0) continue;
        update.installed = std::move(path);
        update.installed_version = std::move(version);
    }
    // Without a date of its own the user's file is no copy of a starter database.
    update.newer = !update.own_version.empty() && update.installed_version > update.own_version;
    update.copy = join_path(ProgramPath, versioned(StarterDatabase, update.installed_version));
    update.copied = update.newer && is_there(update.copy);
    return update;
}

std::string copy_starter_update(const StarterUpdate& update) {
    if (!update.newer) return "There is no newer starter database.";
    const std::string synonyms = find_in_folder(folder_part(update.installed), SynonymFile);
    if (!synonyms.empty()) {
        const std::string name = versioned(SynonymFile, update.installed_version);
        if (std::string fault = copy_file(synonyms, join_path(folder_part(update.copy), name));
            !fault.empty())
            return fault;
    }
    return copy_file(update.installed, update.copy);
}

void offer_starter_update(const StarterUpdate& update, Messages& messages) {
    if (!update.offered()) return;
    const FileBytes asked = read_file(asked_path(update));
    if (asked.bytes && *asked.bytes >= update.installed_version) return;
    const Answer answer =
        messages.ask({.title = "Starter database",
                      .text = "A newer starter database is installed: " + update.installed_version +
                              ", yours is of " + update.own_version + ".\nCopy it beside yours as " +
                              name_part(update.copy) + "? Your own files stay as they are.",
                      .buttons = Buttons::yes_no,
                      .default_button = Answer::no,
                      .kind = MessageKind::question});
    if (answer == Answer::yes) {
        const std::string fault = copy_starter_update(update);
        messages.ask({.title = "Starter database",
                      .text = fault.empty() ? "The newer starter database is " + update.copy + "." : fault,
                      .kind = fault.empty() ? MessageKind::info : MessageKind::warning});
        if (!fault.empty()) return;
    }
    // Where this cannot be written the question comes again with the next start.
    static_cast<void>(write_file_atomic(asked_path(update), update.installed_version));
}

}  // namespace quom

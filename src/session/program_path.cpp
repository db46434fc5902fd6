#include "session/program_path.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/files.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool is_folder(const std::string& path) {
    std::error_code fault;
    return fs::is_directory(path, fault);
}

bool is_writable(const std::string& path) { return ::access(path.c_str(), W_OK | X_OK) == 0; }

bool has_starter_data(const std::string& folder) {
    return !folder.empty() && !find_in_folder(folder, StarterDatabase).empty();
}

std::string absolute(const std::string& path) {
    std::error_code fault;
    fs::path real = fs::absolute(path, fault).lexically_normal();
    if (fault) return path;
    if (!real.has_filename() && real.has_parent_path() && real != real.root_path()) real = real.parent_path();
    return real.string();
}

ProgramFolder named_folder(const std::string& path, const std::string& source) {
    if (is_folder(path)) return {.path = absolute(path), .fault = {}};
    return {.path = {}, .fault = "The program folder \"" + path + "\" of " + source + " is not a folder."};
}

// The folder "data" of the build tree around the executable; empty outside of one.
std::string build_data(const std::string& executable) {
    fs::path folder = executable;
    for (int level = 0; level < 4 && folder.has_relative_path(); ++level, folder = folder.parent_path()) {
        std::error_code fault;
        if (fs::exists(folder / "CMakeCache.txt", fault)) {
            const std::string data = (folder / "data").string();
            return has_starter_data(data) ? data : std::string();
        }
    }
    return {};
}

// Copies the files of a folder that the other lacks; returns the fault.
std::string fill_from(const std::string& from, const std::string& to) {
    std::error_code fault;
    for (fs::directory_iterator entry(from, fault), end; !fault && entry != end; entry.increment(fault)) {
        std::error_code other;
        const std::string name = entry->path().filename().string();
        if (!entry->is_regular_file(other) || !find_in_folder(to, name).empty()) continue;
        const FileBytes file = read_file(entry->path().string());
        if (!file.bytes) return file.fault;
        std::string unwritten = write_file_atomic(join_path(to, name), *file.bytes);
        if (!unwritten.empty()) return unwritten;
    }
    return {};
}

ProgramFolder user_folder(const ProgramPlaces& places) {
    if (places.user_data.empty()) {
        return {.path = {},
                .fault = "No program folder: HOME is not set; name one with --program-folder or QUOM_HOME."};
    }
    const std::string folder = join_path(places.user_data, "quom");
    std::error_code fault;
    fs::create_directories(folder, fault);
    if (fault || !is_folder(folder)) {
        return {.path = {}, .fault = "Cannot make the program folder \"" + folder + "\": " + fault.message()};
    }
    if (has_starter_data(folder)) return {.path = absolute(folder), .fault = {}};
    for (const std::string& installed : places.installed) {
        if (!has_starter_data(installed)) continue;
        std::string unfilled = fill_from(installed, folder);
        if (!unfilled.empty()) return {.path = {}, .fault = std::move(unfilled)};
        break;
    }
    return {.path = absolute(folder), .fault = {}};
}

// The absolute folders of a list separated by ":".
std::vector<std::string> folder_list(std::string_view list) {
    std::vector<std::string> folders;
    while (!list.empty()) {
        const std::size_t end = list.find(':');
        if (const std::string_view one = list.substr(0, end); one.starts_with('/')) folders.emplace_back(one);
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return folders;
}

}  // namespace

ProgramPlaces program_places(std::string option) {
    ProgramPlaces places{.option = std::move(option),
                         .home = environment("QUOM_HOME"),
                         .executable = {},
                         .user_data = environment("XDG_DATA_HOME"),
                         .installed = {}};
    std::error_code fault;
    const fs::path program = fs::read_symlink("/proc/self/exe", fault);
    if (!fault) places.executable = program.parent_path().string();

    const std::string home = environment("HOME");
    if (!places.user_data.starts_with('/')) {
        places.user_data = home.empty() ? std::string() : join_path(home, ".local/share");
    }
    if (!places.executable.empty()) {
        places.installed = {places.executable, absolute(join_path(places.executable, "../share/quom"))};
    }
    std::string shared = environment("XDG_DATA_DIRS");
    if (shared.empty()) shared = "/usr/local/share:/usr/share";
    for (const std::string& folder : folder_list(shared)) {
        places.installed.push_back(join_path(folder, "quom"));
    }
    return places;
}

ProgramFolder find_program_folder(const ProgramPlaces& places) {
    if (!places.option.empty()) return named_folder(places.option, "--program-folder");
    if (!places.home.empty()) return named_folder(places.home, "QUOM_HOME");
    if (!places.executable.empty()) {
        if (is_writable(places.executable) && has_starter_data(places.executable)) {
            return {.path = absolute(places.executable), .fault = {}};
        }
        std::string data = build_data(places.executable);
        if (!data.empty() && is_writable(data)) return {.path = absolute(data), .fault = {}};
    }
    return user_folder(places);
}

}  // namespace quom

#include "forms/open_form.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/code_page.h"
#include "base/files.h"
#include "forms/refusal.h"
#include "session/data_files.h"
#include "session/project_file.h"

namespace quom {

namespace {

namespace fs = std::filesystem;

std::string extension_of(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string() : upper_text(name.substr(point + 1));
}

FilePreview project_preview(const std::string& path, const Session& session) {
    ProjectPreview p = preview_project(path, session);
    if (p.refusal) return {.refusal = std::move(p.refusal)};
    return {.date = std::move(p.date),
            .comment = std::move(p.comment),
            .substance = std::move(p.substance_text),
            .database = std::move(p.database_text),
            .data = std::move(p.data_text)};
}

FilePreview data_preview(const std::string& path, const Session& session) {
    ExpDataHead head = ExpDataPreview(path, session);
    if (!head.fault.empty()) return {.refusal = refusal_message(std::move(head.fault))};
    return {.date = std::move(head.date),
            .comment = std::move(head.comment),
            .substance = std::move(head.substance_text),
            .data = std::move(head.data_text)};
}

// Names of the entries that are wanted, hidden ones left out, sorted.
template <class Wanted>
std::vector<std::string> names_in(const std::string& folder, Wanted wanted) {
    std::vector<std::string> names;
    std::error_code ec;
    fs::directory_iterator at(folder, fs::directory_options::skip_permission_denied, ec);
    for (; !ec && at != fs::directory_iterator(); at.increment(ec)) {
        std::string name = at->path().filename().string();
        std::error_code ignored;
        if (!name.starts_with('.') && wanted(*at, name, ignored)) names.push_back(std::move(name));
    }
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::string key = upper_text(name);
        keyed.emplace_back(std::move(key), std::move(name));
    }
    std::ranges::sort(keyed);
    names.clear();
    for (auto& entry : keyed) names.push_back(std::move(entry.second));
    return names;
}

std::string in_folder(const std::string& folder, std::string_view name) {
    return fs::path(name).is_absolute() ? std::string(name) : join_path(folder, name);
}

bool is_folder(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

// A file that is there, its name in any case of letters; empty: none.
std::string existing_file(const std::string& path) {
    std::error_code ignored;
    if (fs::is_regular_file(path, ignored)) return path;
    return find_in_folder(folder_part(path), name_part(path));
}

}  // namespace

bool is_project_name(std::string_view name) { return extension_of(name).starts_with("QC"); }
bool is_data_file_name(std::string_view name) { return extension_of(name) == "BAQ"; }
bool is_mask(std::string_view text) { return text.find_first_of("?*") != std::string_view::npos; }

std::string_view preview_title(std::string_view mask) {
    return is_data_file_name(mask) ? "File information" : "Project Information";
}

FilePreview file_preview(const std::string& path, const Session& session) {
    if (is_project_name(path)) return project_preview(path, session);
    if (is_data_file_name(path)) return data_preview(path, session);
    return {};
}

bool mask_matches(std::string_view mask, std::string_view name) {
    const std::string m = upper_text(mask), n = upper_text(name);
    std::size_t at = 0, in = 0, star = std::string::npos, resume = 0;
    while (in < n.size()) {
        if (at < m.size() && (m[at] == '?' || m[at] == n[in]) && m[at] != '*') {
            // "?" stands for a whole letter
            do {
                ++in;
            } while (m[at] == '?' && in < n.size() && (static_cast<unsigned char>(n[in]) & 0xC0) == 0x80);
            ++at;
        } else if (at < m.size() && m[at] == '*') {
            star = at++;
            resume = in;
        } else if (star != std::string::npos) {
            at = star + 1;
            in = ++resume;
        } else {
            return false;
        }
    }
    return m.find_first_not_of('*', at) == std::string::npos;
}

std::vector<std::string> folders_in(const std::string& folder) {
    return names_in(folder, [](const fs::directory_entry& entry, const std::string&, std::error_code& ec) {
        return entry.is_directory(ec);
    });
}

std::vector<std::string> files_in(const std::string& folder, std::string_view mask) {
    return names_in(folder,
                    [mask](const fs::directory_entry& entry, const std::string& name, std::error_code& ec) {
                        return mask_matches(mask, name) && entry.is_regular_file(ec);
                    });
}

TypedName typed_name(std::string_view text, const std::string& folder, std::string_view mask) {
    const std::string name(trim(text));
    if (name.empty()) return {};
    const std::string path = in_folder(folder, name);
    // A file may have such a sign in its name on some systems.
    if (std::string file = existing_file(path); !file.empty())
        return {TypedName::Kind::file, absolute_path(file), {}};
    if (is_mask(name_part(name)))
        return {TypedName::Kind::mask, name_part(name), absolute_path(folder_part(path))};
    if (is_folder(path)) return {TypedName::Kind::folder, absolute_path(path), {}};
    if (extension_of(name_part(name)).empty())
        if (std::string file =
                existing_file(path + std::string(mask.substr(std::min(mask.find('.'), mask.size()))));
            !file.empty())
            return {TypedName::Kind::file, absolute_path(file), {}};
    return {};
}

Message no_such_file() { return refusal_message("File not found in the QUOM directory"); }

Message delete_question(std::string_view name) {
    return {.title = "Confirm deleting",
            .text = "File " + std::string(name) + " really delete?",
            .buttons = Buttons::yes_no,
            .default_button = Answer::no,
            .kind = MessageKind::question};
}

std::string database_line(const Session& session) {
    const DatabaseFile& file = session.database;
    return "database active: " + (file.DatabaseKind != 0 ? name_part(file.path) : std::string(" none"));
}

}  // namespace quom

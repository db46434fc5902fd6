// The program's own dialog for opening projects and data files, without its window: folders, masks, and what
// is told of a file before it is opened.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// What the dialog shows of a file. Labels that a kind of file does not have are empty.
struct FilePreview {
    std::optional<Message> refusal{};  // it is none that can be opened: all else is empty
    std::string date{}, comment{}, substance{}, database{}, data{};
};
// Projects (*.QC...) and data files (*.BAQ) by their extension, in any case of letters; of others nothing is
// told. The session is only read.
FilePreview file_preview(const std::string& path, const Session& session);

bool is_project_name(std::string_view name);    // extension of projects, also of older ones
bool is_data_file_name(std::string_view name);  // .BAQ
bool is_mask(std::string_view text);            // holds "?" or "*"
// Title of the group of the preview.
std::string_view preview_title(std::string_view mask);

// Names in a folder, sorted without regard to case: folders, and files that a mask describes ("*.QC6").
// Hidden ones are left out; a folder that cannot be read is empty.
std::vector<std::string> folders_in(const std::string& folder);
std::vector<std::string> files_in(const std::string& folder, std::string_view mask);
// Does the mask describe the name? "*" stands for any text, "?" for one letter; in any case of letters.
bool mask_matches(std::string_view mask, std::string_view name);

// What is typed as a name, in this folder: a mask, a folder, a file that is there, or nothing of these. A
// name without extension gets that of the mask.
struct TypedName {
    enum class Kind { nothing, mask, folder, file } kind = Kind::nothing;
    std::string text;    // mask, or absolute path
    std::string folder;  // where a mask is to be looked for
};
TypedName typed_name(std::string_view text, const std::string& folder, std::string_view mask);

Message no_such_file();                             // "File not found in the QUOM directory"
Message delete_question(std::string_view name);     // before a file is deleted
std::string database_line(const Session& session);  // "database active: " and its name, or " none"

}  // namespace quom

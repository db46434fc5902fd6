// Pictures and data of a sheet for other programs: what the user chooses, what is refused, what files are
// called.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "forms/picture_size.h"
#include "forms/refusal.h"
#include "report/table_export.h"
#include "session/session.h"

namespace quom {

// The boxes of width, height and resolution as they are typed.
enum PictureBox : std::size_t { picture_width, picture_height, picture_dpi };
using PictureTexts = std::array<std::string, 3>;  // as PictureBox
PictureTexts picture_texts(const PictureSize& size);
struct PictureTaken {
    PictureSize size{};
    std::optional<BoxRefusal> refusal{};
};
// The resolution of a format without pixels is that of `before`, whatever is typed.
PictureTaken take_picture_size(const PictureTexts& texts, std::string_view format, const PictureSize& before);
// "1890 x 1299 pixels"; empty for a format without pixels.
std::string pixels_text(const PictureSize& size, std::string_view format);

// Texts of the choice for the clipboard.
inline constexpr std::string_view bitmap_choice = "Bitmap Image", vector_choice = "Vector Image";
inline constexpr std::string_view clipboard_remark =
    "Test wether the vector or the bitmap copy gives the better result for your case.";
inline constexpr std::string_view inkscape_note =
    "for further processing of a diagram (additional text, changing colours, etc.) => use the Open-Source "
    "progr. Inkscape";

// Proposed for a file of the sheet, without an ending: "Propane p-v".
std::string picture_name(const Session& session);
// A text as the name of a file: without signs that a file system refuses, never empty.
std::string file_name_of(std::string name);
// The path of a picture as it was typed. What has no ending of letters gets that of the format: "R 0.5"
// becomes "R 0.5.png".
std::string picture_path(const std::string& typed, std::string_view format);
// Asked before a file is replaced whose name was completed by picture_path.
Message replace_question(const std::string& path);

// What is told where the sheet has gone while the user was asked.
Message no_sheet_message();

// The data of the sheet as columns; a refusal while there are none.
struct SheetData {
    ExportTable table{};
    std::optional<Message> refusal{};
};
SheetData sheet_data(const Session& session);

}  // namespace quom

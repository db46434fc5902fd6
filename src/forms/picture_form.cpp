#include "forms/picture_form.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "diagrams/axis_texts.h"
#include "report/sheet_columns.h"

namespace quom {
namespace {

constexpr double LeastSide = 1, LargestSide = 5000, LeastDpi = 10, LargestDpi = 2400, MostPixels = 2e8;

bool within(double x, double least, double largest) { return x >= least && x <= largest; }

double pixels_of(double mm, double dpi) { return mm / 25.4 * dpi; }

// The ending of a name without its point; empty where it is none of letters.
std::string ending_of(const std::string& path) {
    const std::string name = name_part(path);
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos || point + 1 == name.size()) return {};
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    std::string ending = name.substr(point + 1);
    return ending.size() <= 4 && std::ranges::all_of(ending, letter) ? ending : std::string();
}

}  // namespace

bool has_pixels(std::string_view format) { return format == "png" || format == "bmp"; }

std::string size_fault(const PictureSize& size, bool pixels) {
    if (!within(size.width, LeastSide, LargestSide) || !within(size.height, LeastSide, LargestSide))
        return "Width and height of the picture must be from 1 to 5000 mm.";
    if (!pixels) return {};
    if (!within(size.dpi, LeastDpi, LargestDpi)) return "The resolution must be from 10 to 2400 dpi.";
    if (pixels_of(size.width, size.dpi) * pixels_of(size.height, size.dpi) > MostPixels)
        return "The picture has more than 200 million pixels.";
    return {};
}

PictureTexts picture_texts(const PictureSize& size) {
    return {genNum(size.width), genNum(size.height), genNum(size.dpi)};
}

PictureTaken take_picture_size(const PictureTexts& texts, std::string_view format,
                               const PictureSize& before) {
    constexpr std::string_view names[] = {"Width", "Height", "Resolution"};
    PictureTaken taken{.size = before};
    const bool pixels = has_pixels(format);
    double* const values[] = {&taken.size.width, &taken.size.height, &taken.size.dpi};
    for (std::size_t box = picture_width; box <= (pixels ? picture_dpi : picture_height); ++box) {
        const BoxNumber number = read_box(names[box], texts[box], NumberRule::above_zero);
        std::string fault = number.fault;
        *values[box] = number.value;
        if (fault.empty() && box != picture_dpi && !within(number.value, LeastSide, LargestSide))
            fault = std::string(names[box]) + " must be from 1 to 5000 mm.";
        if (fault.empty() && box == picture_dpi) fault = size_fault(taken.size, true);
        if (!fault.empty()) return {.size = before, .refusal = BoxRefusal{box, fault}};
    }
    return taken;
}

std::string pixels_text(const PictureSize& size, std::string_view format) {
    if (!has_pixels(format) || !size_fault(size, true).empty()) return {};
    const auto side = [&](double mm) { return genNum(std::max(1.0, std::round(pixels_of(mm, size.dpi)))); };
    return side(size.width) + " x " + side(size.height) + " pixels";
}

std::string picture_name(const Session& session) {
    std::string name(trim(session.substance().StoffName));
    if (session.diagram.sheet) {
        const DiagramRec& diagram = session.diagram.sheet->diagram;
        const KindInfo& kind = kind_info(diagram.kind);
        const bool axes = kind.x != AxisQuantity::none && kind.y != AxisQuantity::none;
        name += " " + (axes ? std::string(axis_symbol(kind.y)) + "-" + std::string(axis_symbol(kind.x))
                            : diagram.title);
    }
    return file_name_of(name);
}

std::string file_name_of(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < ' ' ||
            std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos)
            c = '_';
    name = trim(name);
    return name.empty() ? "diagram" : name;
}

std::string picture_path(const std::string& typed, std::string_view format) {
    if (typed.empty() || !ending_of(typed).empty()) return typed;
    return typed + (typed.ends_with('.') ? "" : ".") + std::string(format);
}

Message replace_question(const std::string& path) {
    return {.title = "WARNING",
            .text = name_part(path) + " already exists.\nDo you want to replace it?",
            .buttons = Buttons::yes_no,
            .default_button = Answer::no,
            .kind = MessageKind::warning};
}

Message no_sheet_message() {
    return refusal_message("The diagram is no longer there; nothing was copied, saved or printed.");
}

SheetData sheet_data(const Session& session) {
    const DiagramSession& d = session.diagram;
    if (!d.sheet) return {.refusal = no_sheet_message()};
    if (is_empty(*d.sheet))
        return {.refusal = refusal_message("The diagram has neither curves nor points nor marks.")};
    return {.table = sheet_columns(*d.sheet, *session.fluid, d.units, d.LastFile)};
}

}  // namespace quom

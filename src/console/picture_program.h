// Pictures of the console: drawn by the program quom, which lies beside quomc.
#pragma once
#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "console/selection.h"

namespace quom {

// Size of a picture in mm and its resolution; what is not given is as quom has it.
struct PictureArguments {
    std::string size;  // "160x110"
    std::optional<double> dpi;
};
void add_picture_options(CLI::App& app, PictureArguments& arguments);

// What a file of this name is: its extension in small letters without the point; empty without one.
std::string extension_of(std::string_view path);
// The extensions of pictures: svg, pdf, png, emf, wmf, bmp.
bool is_picture(std::string_view extension);

// Draws the bytes of a diagram file or a chart into a picture. They are kept in a file for as long as quom
// runs. quom's own sentence and status where it has one.
Refused draw_picture(std::string_view bytes, const std::string& path, const PictureArguments& arguments);

}  // namespace quom

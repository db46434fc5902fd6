// Sheets as pictures in files, on the clipboard and on paper: the drawing routine of the screen.
#pragma once
#include <string>

#include "diagrams/graph_document.h"
#include "ui/charts/picture_file.h"

class QPrinter;

namespace quom {

// The sheet as a file of the path's extension: emf, wmf, svg, pdf, png or bmp; see write_chart. Returns the
// fault, empty when good.
std::string sheet_picture(const GraphDocument& document, const std::string& path,
                          const PictureSize& size = {});
// The same as bytes, for the clipboard; format as in chart_bytes.
PictureBytes sheet_picture_bytes(const GraphDocument& document, const std::string& format,
                                 const PictureSize& size = {});
// The sheet on one page, as wide as its print area and at most so high; sets the resolution of the printer.
// False: the printer cannot be used.
bool print_sheet(const GraphDocument& document, QPrinter& printer);

}  // namespace quom

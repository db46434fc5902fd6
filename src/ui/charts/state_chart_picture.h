// State charts as pictures in files, on the clipboard and on paper: the drawing routine of the screen.
#pragma once
#include <string>

#include "diagrams/state_chart.h"
#include "ui/charts/picture_file.h"

class QPrinter;

namespace quom {

// As wide and high as the print area of an A4 page across.
inline constexpr PictureSize state_chart_size{.width = 277, .height = 190, .dpi = 300};

// The drawing of a chart at any size; the chart has to live as long. marked: states with a ring.
DrawChart state_chart_drawing(const StateChart& chart, bool black, std::vector<ChartState> marked = {});

// The chart as a file of the format "emf", "wmf", "svg", "pdf", "png" or "bmp"; see chart_bytes. A chart with
// a fault has no picture: its fault is that of the picture.
PictureBytes state_chart_bytes(const StateChart& chart, const std::string& format,
                               const PictureSize& size = state_chart_size, bool black = false);
// Writes it in the format of the path's extension. Returns the fault, empty when good.
std::string state_chart_picture(const StateChart& chart, const std::string& path,
                                const PictureSize& size = state_chart_size, bool black = false);
// The chart on one page; sets the resolution of the printer. False: the printer cannot be used.
bool print_state_chart(const StateChart& chart, QPrinter& printer, bool black = false);

}  // namespace quom

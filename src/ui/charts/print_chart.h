// Charts on paper.
#pragma once
#include "ui/charts/picture_file.h"

class QPrinter;

namespace quom {

// The chart on one page, as wide as its print area and at most so high; sets the resolution of the printer.
// False: the printer cannot be used.
bool print_chart(QPrinter& printer, const DrawChart& draw);

}  // namespace quom

// quom --draw FILE --out PICTURE: the picture of a diagram file or of the file of a state chart, without a
// display and without a session.
#pragma once
#include "ui/main/command_line.h"

namespace quom {

// Writes the picture. The status of the program: 0 written, 2 no such format or size of a picture, 3 a file
// that cannot be read or written; then a sentence on standard error tells why.
int draw_sheet(int argc, char** argv, const CommandLine& line);

}  // namespace quom

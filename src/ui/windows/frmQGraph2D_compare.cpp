// The comparison of equations on the sheet.
#include "ui/windows/frmCompare.h"
#include "ui/windows/frmQGraph2D.h"

namespace quom {

void frmQGraph2D::compare() {
    if (sheet()) frmCompare::open(frame_);
}

}  // namespace quom

// Pictures written to files: one drawing routine, any format.
#pragma once
#include <QByteArray>
#include <QSizeF>
#include <functional>
#include <string>

#include "forms/picture_size.h"

class QCPPainter;
class QPainter;

namespace quom {

// Draws into (0, 0, size) in pixels of 1/96 inch; fonts in points have their size.
using DrawPicture = std::function<void(QPainter&, QSizeF)>;
// ... with the painter of the chart library, for QCustomPlot::toPainter.
using DrawChart = std::function<void(QCPPainter&, QSizeF)>;

struct PictureBytes {
    QByteArray bytes;
    std::string fault;  // empty when good
};

// A picture as a file of the format "emf", "wmf", "svg", "png", "bmp" or "pdf" (in any case, with or without
// a point). Refused: another format, a size that size_fault refuses.
PictureBytes picture_bytes(const std::string& format, const PictureSize& size, const DrawPicture& draw);
PictureBytes chart_bytes(const std::string& format, const PictureSize& size, const DrawChart& draw);

// Writes the picture in the format of the path's extension; an old file stays whole until the new one is
// complete. Returns the fault, empty when good.
std::string write_picture(const std::string& path, const PictureSize& size, const DrawPicture& draw);
std::string write_chart(const std::string& path, const PictureSize& size, const DrawChart& draw);

}  // namespace quom

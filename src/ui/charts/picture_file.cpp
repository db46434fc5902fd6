#include "ui/charts/picture_file.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/files.h"
#include "ui/charts/vector_picture.h"

namespace quom {

namespace {

PictureBytes vector_bytes(VectorFormat format, const PictureSize& size, const DrawChart& draw) {
    VectorPicture picture(format, QSizeF(size.width, size.height));
    QCPPainter painter;
    painter.begin(&picture);
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    draw(painter, picture.size_px());
    painter.end();
    return {picture.bytes(), {}};
}

PictureBytes pdf_bytes(const PictureSize& size, const DrawChart& draw) {
    PictureBytes result;
    QBuffer buffer(&result.bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QStringLiteral("QUOM"));
    writer.setPageSize(
        QPageSize(QSizeF(size.width, size.height), QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setResolution(96);  // fonts in points have their size
    QCPPainter painter;
    if (!painter.begin(&writer)) return {{}, "The PDF file could not be made."};
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    draw(painter, QSizeF(size.width, size.height) * pixels_per_mm);
    painter.end();
    return result;
}

PictureBytes pixel_bytes(const char* format, const PictureSize& size, const DrawChart& draw) {
    if (const std::string fault = size_fault(size, true); !fault.empty()) return {{}, fault};
    const double width = size.width / 25.4 * size.dpi, height = size.height / 25.4 * size.dpi;
    QImage image(std::max(1, qRound(width)), std::max(1, qRound(height)), QImage::Format_RGB32);
    if (image.isNull()) return {{}, "There is not enough memory for the picture."};
    image.fill(Qt::white);
    QCPPainter painter(&image);
    painter.setModes(QCPPainter::pmNoCaching | QCPPainter::pmNonCosmetic);
    painter.scale(size.dpi / 96, size.dpi / 96);
    draw(painter, QSizeF(size.width, size.height) * pixels_per_mm);
    painter.end();
    const int dots_per_metre = qRound(size.dpi / 0.0254);  // only now: it would change the fonts
    image.setDotsPerMeterX(dots_per_metre);
    image.setDotsPerMeterY(dots_per_metre);
    PictureBytes result;
    QBuffer buffer(&result.bytes);
    if (!image.save(&buffer, format)) return {{}, "The picture could not be coded."};
    return result;
}

std::string extension_of(const std::string& path) {
    const std::string name = name_part(path);
    const std::size_t point = name.rfind('.');
    return point == std::string::npos ? std::string() : name.substr(point);
}

}  // namespace

PictureBytes chart_bytes(const std::string& format, const PictureSize& size, const DrawChart& draw) {
    if (const std::string fault = size_fault(size, false); !fault.empty()) return {{}, fault};
    QString name = QString::fromStdString(format).toLower();
    if (name.startsWith(QLatin1Char('.'))) name.remove(0, 1);
    if (name == QLatin1String("emf")) return vector_bytes(VectorFormat::emf, size, draw);
    if (name == QLatin1String("wmf")) return vector_bytes(VectorFormat::wmf, size, draw);
    if (name == QLatin1String("svg")) return vector_bytes(VectorFormat::svg, size, draw);
    if (name == QLatin1String("pdf")) return pdf_bytes(size, draw);
    if (name == QLatin1String("png")) return pixel_bytes("PNG", size, draw);
    if (name == QLatin1String("bmp")) return pixel_bytes("BMP", size, draw);
    return {{}, "Pictures are written as EMF, WMF, SVG, PDF, PNG or BMP, not as \"" + format + "\"."};
}

PictureBytes picture_bytes(const std::string& format, const PictureSize& size, const DrawPicture& draw) {
    return chart_bytes(format, size, [&draw](QCPPainter& painter, QSizeF px) { draw(painter, px); });
}

std::string write_chart(const std::string& path, const PictureSize& size, const DrawChart& draw) {
    const PictureBytes picture = chart_bytes(extension_of(path), size, draw);
    if (!picture.fault.empty()) return picture.fault;
    return write_file_atomic(path,
                             {picture.bytes.constData(), static_cast<std::size_t>(picture.bytes.size())});
}

std::string write_picture(const std::string& path, const PictureSize& size, const DrawPicture& draw) {
    return write_chart(path, size, [&draw](QCPPainter& painter, QSizeF px) { draw(painter, px); });
}

}  // namespace quom

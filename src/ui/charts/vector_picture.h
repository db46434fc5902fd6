// A picture as a vector file: paint on it, then take its bytes.
#pragma once
#include <QByteArray>
#include <QPaintDevice>
#include <QSizeF>
#include <memory>

#include "ui/charts/vector_sink.h"

namespace quom {

class VectorEngine;

inline constexpr double pixels_per_mm = 96 / 25.4;

// Painted in pixels of 1/96 inch, kept in units of 1/20 pixel (coarser in WMF pictures above 1600 pixels,
// whose numbers have 16 bits). Text stays text. Painted once, by one QPainter.
class VectorPicture : public QPaintDevice {
 public:
    // Sizes are held between 1 and 5000 mm.
    VectorPicture(VectorFormat format, QSizeF size_mm);
    ~VectorPicture() override;
    QSizeF size_px() const;
    // The file, after the painter has ended; nothing can be painted afterwards. Empty when called again.
    QByteArray bytes();
    QPaintEngine* paintEngine() const override;

 protected:
    int metric(PaintDeviceMetric which) const override;

 private:
    QSizeF size_mm_;
    std::unique_ptr<VectorSink> sink_;
    std::unique_ptr<VectorEngine> engine_;
};

}  // namespace quom

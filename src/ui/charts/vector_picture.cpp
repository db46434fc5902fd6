#include "ui/charts/vector_picture.h"

#include <algorithm>
#include <cmath>

#include "ui/charts/vector_engine.h"

namespace quom {

namespace {

constexpr double longest_wmf = 32000;  // [units]

double held(double mm) { return std::isfinite(mm) ? std::clamp(mm, 1.0, 5000.0) : 1.0; }

VectorFrame frame_of(VectorFormat format, const QSizeF& size_mm) {
    VectorFrame frame;
    if (format == VectorFormat::wmf) {
        // A whole number of units an inch.
        const double longest = std::max(size_mm.width(), size_mm.height()) / 25.4;
        frame.units_per_px = std::min(20.0, std::floor(longest_wmf / longest) / 96);
    }
    frame.size = (size_mm * frame.units_per_mm()).toSize();
    return frame;
}

std::unique_ptr<VectorSink> make_sink(VectorFormat format, const VectorFrame& frame) {
    switch (format) {
        case VectorFormat::emf:
            return make_emf_sink(frame);
        case VectorFormat::wmf:
            return make_wmf_sink(frame);
        case VectorFormat::svg:
            break;
    }
    return make_svg_sink(frame);
}

}  // namespace

VectorPicture::VectorPicture(VectorFormat format, QSizeF size_mm)
    : size_mm_(held(size_mm.width()), held(size_mm.height())) {
    const VectorFrame frame = frame_of(format, size_mm_);
    sink_ = make_sink(format, frame);
    engine_ = std::make_unique<VectorEngine>(*sink_, frame);
}

VectorPicture::~VectorPicture() = default;

QSizeF VectorPicture::size_px() const { return size_mm_ * pixels_per_mm; }

QByteArray VectorPicture::bytes() {
    if (paintingActive()) return {};
    const std::unique_ptr<VectorSink> sink = std::move(sink_);
    return sink ? sink->finish() : QByteArray();
}

QPaintEngine* VectorPicture::paintEngine() const { return sink_ ? engine_.get() : nullptr; }

int VectorPicture::metric(PaintDeviceMetric which) const {
    switch (which) {
        case PdmWidth:
            return qRound(size_px().width());
        case PdmHeight:
            return qRound(size_px().height());
        case PdmWidthMM:
            return qRound(size_mm_.width());
        case PdmHeightMM:
            return qRound(size_mm_.height());
        case PdmNumColors:
            return 1 << 24;
        case PdmDepth:
            return 24;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return qRound(devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(which);
    }
}

}  // namespace quom

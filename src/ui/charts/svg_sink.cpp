// Scalable vector graphics 1.1: opacity, clips of any outline and patterns of dashes are kept.
#include <QBuffer>
#include <cmath>
#include <map>

#include "base/number_text.h"
#include "ui/charts/vector_sink.h"

namespace quom {

namespace {

std::string escaped(const QString& text) { return text.toHtmlEscaped().toStdString(); }

// The generic family last, so that every machine has one of them.
std::string families(QString family) {
    family.remove(QLatin1Char('\'')).remove(QLatin1Char('\\'));
    const QString lower = family.toLower();
    const bool mono = lower.contains(QLatin1String("mono")) || lower.contains(QLatin1String("courier"));
    const bool serif = !lower.contains(QLatin1String("sans")) && lower.contains(QLatin1String("serif"));
    std::string list = "'";
    list += escaped(family);
    list += "', ";
    return list + (mono ? "monospace" : serif ? "serif" : "sans-serif");
}

// The lines of a hatched area in a square of 8 x 8.
const char* hatching(Qt::BrushStyle style) {
    switch (style) {
        case Qt::VerPattern:
            return "M4 0V8";
        case Qt::CrossPattern:
            return "M0 4H8M4 0V8";
        case Qt::FDiagPattern:
            return "M0 0L8 8";
        case Qt::BDiagPattern:
            return "M0 8L8 0";
        case Qt::DiagCrossPattern:
            return "M0 0L8 8M0 8L8 0";
        default:
            return "M0 4H8";
    }
}

class SvgSink : public VectorSink {
 public:
    explicit SvgSink(const VectorFrame& frame) : frame_(frame) {}

    bool keeps_opacity() const override { return true; }

    void clip(const VectorClip& clip) override {
        if (group_open_) body_ += "</g>\n";
        group_open_ = !clip.whole;
        if (clip.whole) return;
        const QRect& box = clip.box;
        std::string shape = "<rect" + box_attributes(box) + "/>";
        if (!clip.outline.empty()) {
            const char* rule = clip.rule == Qt::OddEvenFill ? " clip-rule=\"evenodd\"" : "";
            shape = "<path d=\"" + path(clip.outline) + "\"" + rule + "/>";
        }
        body_ += "<g clip-path=\"url(#" + defined("clipPath", "", shape) + ")\">\n";
    }

    void polyline(const UnitPoints& points, const VectorPen& pen) override {
        body_ += "<polyline points=\"";
        for (const QPoint& point : points) body_ += number(point.x()) + "," + number(point.y()) + " ";
        body_.back() = '"';
        body_ += " fill=\"none\"" + stroke(pen) + "/>\n";
    }

    void polygons(const UnitPolygons& polygons, const VectorPen& pen, const VectorBrush& brush,
                  Qt::FillRule rule) override {
        const char* fill_rule = rule == Qt::OddEvenFill ? " fill-rule=\"evenodd\"" : "";
        body_ += "<path d=\"" + path(polygons) + "\"" + fill(brush) + fill_rule + stroke(pen) + "/>\n";
    }

    void ellipse(const QRect& box, const VectorPen& pen, const VectorBrush& brush) override {
        const double rx = box.width() / 2.0, ry = box.height() / 2.0;
        body_ += "<ellipse cx=\"" + number(box.x() + rx) + "\" cy=\"" + number(box.y() + ry) + "\" rx=\"" +
                 number(rx) + "\" ry=\"" + number(ry) + "\"" + fill(brush) + stroke(pen) + "/>\n";
    }

    void text(const VectorText& text) override {
        double width = 0;
        for (const int advance : text.advances) width += advance;
        const std::string at = number(text.at.x()) + " " + number(text.at.y());
        body_ += "<text xml:space=\"preserve\" transform=\"translate(" + at + ")";
        if (text.angle != 0) body_ += " rotate(" + genNum(-text.angle, 7) + ")";
        body_ += "\" font-family=\"" + families(text.family) + "\" font-size=\"" + number(text.height) + "\"";
        if (text.font.weight() != QFont::Normal)
            body_ += " font-weight=\"" + std::to_string(text.font.weight()) + "\"";
        if (text.font.italic()) body_ += " font-style=\"italic\"";
        if (width > 0) body_ += " textLength=\"" + number(width) + "\" lengthAdjust=\"spacingAndGlyphs\"";
        body_ += paint("fill", text.color) + ">" + escaped(text.text) + "</text>\n";
    }

    void image(const QRect& where, const QImage& image) override {
        QByteArray png;
        QBuffer buffer(&png);
        image.save(&buffer, "PNG");
        body_ += "<image" + box_attributes(where) +
                 " preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64," +
                 png.toBase64().toStdString() + "\"/>\n";
    }

    QByteArray finish() override {
        clip(VectorClip());
        const auto mm = [this](int units) { return genNum(units / frame_.units_per_mm(), 7) + "mm"; };
        const QSize size = frame_.size;
        std::string file =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
            "xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\" width=\"" +
            mm(size.width()) + "\" height=\"" + mm(size.height()) + "\" viewBox=\"0 0 " +
            number(size.width()) + " " + number(size.height()) + "\">\n";
        if (!definitions_.empty()) file += "<defs>\n" + definitions_ + "</defs>\n";
        return QByteArray::fromStdString(file + body_ + "</svg>\n");
    }

 private:
    // Of pixels.
    std::string number(double units) const { return genNum(units / frame_.units_per_px, 9); }

    std::string box_attributes(const QRect& box) const {
        return " x=\"" + number(box.x()) + "\" y=\"" + number(box.y()) + "\" width=\"" + number(box.width()) +
               "\" height=\"" + number(box.height()) + "\"";
    }

    std::string path(const UnitPolygons& polygons) const {
        std::string text;
        for (const UnitPoints& points : polygons) {
            char step = 'M';
            for (const QPoint& point : points) {
                text += step;
                text += number(point.x()) + " " + number(point.y());
                step = 'L';
            }
            text += 'Z';
        }
        return text;
    }

    // The name of a definition, made when it is new.
    std::string defined(const std::string& element, const std::string& attributes,
                        const std::string& content) {
        const std::string key = element + attributes + content;
        if (const auto found = names_.find(key); found != names_.end()) return found->second;
        std::string name(1, 'd');
        name += std::to_string(names_.size() + 1);
        names_.emplace(key, name);
        definitions_.append("<").append(element).append(" id=\"").append(name).append("\"").append(
            attributes);
        definitions_.append(">").append(content).append("</").append(element).append(">\n");
        return name;
    }

    static std::string paint(const std::string& what, const QColor& color) {
        std::string text = " " + what + "=\"" + color.name(QColor::HexRgb).toStdString() + "\"";
        if (color.alpha() < 255) text += " " + what + "-opacity=\"" + genNum(color.alpha() / 255.0, 4) + "\"";
        return text;
    }

    std::string fill(const VectorBrush& brush) {
        if (!brush.drawn) return " fill=\"none\"";
        if (brush.style == Qt::SolidPattern) return paint("fill", brush.color);
        const std::string lines =
            std::string("<path d=\"") + hatching(brush.style) + "\"" + paint("stroke", brush.color) + "/>";
        return " fill=\"url(#" +
               defined("pattern", " patternUnits=\"userSpaceOnUse\" width=\"8\" height=\"8\"", lines) + ")\"";
    }

    std::string stroke(const VectorPen& pen) const {
        if (!pen.drawn) return {};
        std::string text = paint("stroke", pen.color) + " stroke-width=\"" + number(pen.width) + "\"";
        if (pen.cap != Qt::FlatCap)
            text +=
                std::string(" stroke-linecap=\"") + (pen.cap == Qt::SquareCap ? "square" : "round") + "\"";
        if (pen.join == Qt::RoundJoin || pen.join == Qt::BevelJoin)
            text +=
                std::string(" stroke-linejoin=\"") + (pen.join == Qt::RoundJoin ? "round" : "bevel") + "\"";
        if (pen.pattern.empty()) return text;
        text += " stroke-dasharray=\"";
        for (const double entry : pen.pattern) text += number(entry) + ",";
        text.back() = '"';
        if (pen.pattern_offset != 0) text += " stroke-dashoffset=\"" + number(pen.pattern_offset) + "\"";
        return text;
    }

    VectorFrame frame_;
    std::string body_, definitions_;
    std::map<std::string, std::string> names_;  // of definitions
    bool group_open_ = false;
};

}  // namespace

std::unique_ptr<VectorSink> make_svg_sink(const VectorFrame& frame) {
    return std::make_unique<SvgSink>(frame);
}

}  // namespace quom

// Windows metafiles with the placeable header: records of 16 bits.
#include <QPainterPath>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/code_page.h"
#include "ui/charts/metafile_sink.h"
#include "ui/charts/vector_cutting.h"
#include "ui/charts/wmf_text.h"

namespace quom {

namespace {

enum Record {
    EOF_ = 0x0000,
    SAVEDC = 0x001E,
    SETBKMODE = 0x0102,
    SETMAPMODE = 0x0103,
    SETPOLYFILLMODE = 0x0106,
    RESTOREDC = 0x0127,
    SELECTOBJECT = 0x012D,
    SETTEXTALIGN = 0x012E,
    DELETEOBJECT = 0x01F0,
    SETTEXTCOLOR = 0x0209,
    SETWINDOWORG = 0x020B,
    SETWINDOWEXT = 0x020C,
    CREATEPENINDIRECT = 0x02FA,
    CREATEFONTINDIRECT = 0x02FB,
    CREATEBRUSHINDIRECT = 0x02FC,
    POLYGON = 0x0324,
    POLYLINE = 0x0325,
    INTERSECTCLIPRECT = 0x0416,
    ELLIPSE = 0x0418,
    POLYPOLYGON = 0x0538,
    EXTTEXTOUT = 0x0A32,
    STRETCHDIB = 0x0F43,
};
constexpr std::size_t most_points = 16000;  // of a line or an area; below 2^15
constexpr double small_letters = 0.65;      // of raised and lowered text

std::int64_t words(const std::string& bytes) { return static_cast<std::int64_t>(bytes.size()) / 2; }

// Every second, third ... point where there are too many for a record.
UnitPoints thinned(const UnitPoints& points) {
    const std::size_t step = points.size() / most_points + 1;
    UnitPoints kept;
    for (std::size_t i = 0; i < points.size(); i += step) kept.push_back(points[i]);
    return kept;
}

// The point `along` the base line and `above` it.
QPointF from_base(const VectorText& text, double along, double above) {
    const double angle = text.angle * 3.14159265358979323846 / 180;
    const double c = std::cos(angle), s = std::sin(angle);
    return QPointF(text.at) + QPointF(along * c - above * s, -along * s - above * c);
}

class WmfSink : public MetafileSink {
 public:
    explicit WmfSink(const VectorFrame& frame) : frame_(frame) {
        record(SETMAPMODE, RecordBytes().u16(8));  // both axes by the extents
        record(SETWINDOWORG, RecordBytes().i16(0).i16(0));
        record(SETWINDOWEXT, RecordBytes().i16(frame.size.height()).i16(frame.size.width()));
        record(SETBKMODE, RecordBytes().u16(1));             // transparent
        record(SETTEXTALIGN, RecordBytes().u16(24).u16(0));  // left end of the base line
        record(SAVEDC, RecordBytes());
    }

    void clip(const VectorClip& clip) override {
        clip_ = clip;
        record(RESTOREDC, RecordBytes().i16(-1));
        record(SAVEDC, RecordBytes());
        nothing_selected();
        fill_rule_ = -1;
        text_color_ = QColor();
        if (!clip.whole) record(INTERSECTCLIPRECT, box_of(clip.box));
    }

    // The format knows clips of rectangles only: lines and areas are cut at others here.
    void polyline(const UnitPoints& points, const VectorPen& pen) override {
        use_pen(pen);
        if (clip_.outline.empty()) return line_records(points);
        QPolygonF line;
        for (const QPoint& point : points) line.append(point);
        for (const QPolygonF& part : line_inside(line, clip_.outline, clip_.rule))
            line_records(rounded_line(part));
    }

    void polygons(const UnitPolygons& polygons, const VectorPen& pen, const VectorBrush& brush,
                  Qt::FillRule rule) override {
        if (clip_.outline.empty()) return area_record(polygons, pen, brush, rule);
        if (brush.drawn)
            area_record(polygons_inside(polygons, rule, clip_.outline, clip_.rule), {}, brush,
                        Qt::OddEvenFill);
        if (!pen.drawn) return;
        for (UnitPoints points : polygons) {
            points.push_back(points.front());
            polyline(points, pen);
        }
    }

    void ellipse(const QRect& box, const VectorPen& pen, const VectorBrush& brush) override {
        use_pen(pen);
        use_brush(brush);
        record(ELLIPSE, box_of(box));
    }

    void text(const VectorText& text) override {
        for (const WmfRun& run : wmf_runs(text.text)) {
            const double along =
                std::accumulate(text.advances.begin(), text.advances.begin() + run.first, 0.0);
            if (run.letters == WmfLetters::outline)
                outline(text, run, along);
            else
                letters(text, run, along);
        }
    }

    void image(const QRect& where, const QImage& image) override {
        RecordBytes bytes;
        bytes.u32(0x00CC0020).u16(0).i16(image.height()).i16(image.width()).i16(0).i16(0);
        bytes.i16(where.height()).i16(where.width()).i16(where.y()).i16(where.x());
        record(STRETCHDIB, bytes.raw(bitmap_head(image)).raw(bitmap_rows(image)));
    }

    QByteArray finish() override {
        record(RESTOREDC, RecordBytes().i16(-1));
        record(EOF_, RecordBytes());
        RecordBytes file;
        file.u32(0x9AC6CDD7).u16(0).i16(0).i16(0).i16(frame_.size.width()).i16(frame_.size.height());
        file.u16(std::lround(frame_.units_per_px * 96)).u32(0);
        int check = 0;
        for (std::size_t i = 0; i + 1 < file.bytes().size(); i += 2)
            check ^= static_cast<unsigned char>(file.bytes()[i]) |
                     static_cast<unsigned char>(file.bytes()[i + 1]) << 8;
        file.u16(check);
        file.u16(1).u16(9).u16(0x300).u32(9 + words(body_)).u16(most_objects()).u32(longest_record_).u16(0);
        return QByteArray::fromStdString(file.bytes() + body_);
    }

 protected:
    void create(MetafileObject kind, int, const std::string& bytes) override {
        const Record records[] = {CREATEPENINDIRECT, CREATEBRUSHINDIRECT, CREATEFONTINDIRECT};
        record(records[static_cast<int>(kind)], RecordBytes().raw(bytes));
    }
    void select(int number) override { record(SELECTOBJECT, RecordBytes().u16(number)); }
    void remove(int number) override { record(DELETEOBJECT, RecordBytes().u16(number)); }

 private:
    void record(int type, const RecordBytes& bytes) {
        const std::string body = RecordBytes(bytes).fill_up(2).bytes();
        const std::int64_t size = words(body) + 3;
        body_ += RecordBytes().u32(size).u16(type).bytes() + body;
        longest_record_ = std::max(longest_record_, size);
    }

    static RecordBytes box_of(const QRect& box) {
        RecordBytes bytes;
        bytes.i16(box.top() + box.height()).i16(box.left() + box.width());
        return bytes.i16(box.top()).i16(box.left());
    }

    void line_records(const UnitPoints& points) {
        for (std::size_t first = 0; first + 1 < points.size(); first += most_points - 1) {
            const std::size_t end = std::min(points.size(), first + most_points);
            RecordBytes bytes;
            bytes.i16(static_cast<std::int64_t>(end - first));
            for (std::size_t i = first; i < end; ++i) bytes.i16(points[i].x()).i16(points[i].y());
            record(POLYLINE, bytes);
        }
    }

    void area_record(const UnitPolygons& polygons, const VectorPen& pen, const VectorBrush& brush,
                     Qt::FillRule rule) {
        if (polygons.empty()) return;
        use_pen(pen);
        use_brush(brush);
        if (fill_rule_ != rule) record(SETPOLYFILLMODE, RecordBytes().u16(rule == Qt::OddEvenFill ? 1 : 2));
        fill_rule_ = rule;
        const bool several = polygons.size() > 1;
        const std::size_t count = std::min(polygons.size(), most_points);
        RecordBytes bytes, all_points;
        if (several) bytes.u16(static_cast<std::int64_t>(count));
        for (std::size_t i = 0; i < count; ++i) {
            const UnitPoints points = thinned(polygons[i]);
            bytes.u16(static_cast<std::int64_t>(points.size()));
            for (const QPoint& point : points) all_points.i16(point.x()).i16(point.y());
        }
        record(several ? POLYPOLYGON : POLYGON, bytes.raw(all_points.bytes()));
    }

    void letters(const VectorText& text, const WmfRun& run, double along) {
        const bool raised = run.letters == WmfLetters::raised, lowered = run.letters == WmfLetters::lowered;
        const double above = raised ? 0.35 : lowered ? -0.15 : 0;
        const QPoint at = from_base(text, along, above * text.height).toPoint();
        if (at != QPoint(static_cast<std::int16_t>(at.x()), static_cast<std::int16_t>(at.y()))) return;
        use_font(text, run.letters == WmfLetters::symbol,
                 qRound(text.height * (raised || lowered ? small_letters : 1)));
        if (text_color_ != text.color) record(SETTEXTCOLOR, RecordBytes().color(text.color));
        text_color_ = text.color;
        RecordBytes bytes;
        bytes.i16(at.y()).i16(at.x()).i16(static_cast<std::int64_t>(run.bytes.size())).u16(0);
        bytes.raw(run.bytes).fill_up(2);
        for (int i = run.first; i < run.first + run.count; ++i)
            bytes.i16(text.advances[static_cast<std::size_t>(i)]);
        record(EXTTEXTOUT, bytes);
    }

    // Letters that no font of 8-bit characters has, as areas.
    void outline(const VectorText& text, const WmfRun& run, double along) {
        constexpr int drawn_size = 200;  // [px]
        QFont font = text.font;
        font.setPixelSize(drawn_size);
        QPainterPath path;
        path.addText(0, 0, font, text.text.mid(run.first, run.count));
        const QPointF at = from_base(text, along, 0);
        const double size = static_cast<double>(text.height) / drawn_size;
        QTransform place = QTransform::fromTranslate(at.x(), at.y());
        place.rotate(-text.angle).scale(size, size);
        UnitPolygons areas;
        for (const QPolygonF& polygon : path.toSubpathPolygons(place)) {
            UnitPoints points = rounded_polygon(polygon);
            if (!points.empty()) areas.push_back(std::move(points));
        }
        polygons(areas, {}, {true, text.color}, Qt::WindingFill);
    }

    void use_pen(const VectorPen& pen) {
        RecordBytes bytes;
        bytes.u16(pen_style_code(pen)).i16(std::max(pen.width, 1)).i16(0).color(pen.color);
        use(MetafileObject::pen, bytes.bytes());
    }

    void use_brush(const VectorBrush& brush) {
        RecordBytes bytes;
        bytes.u16(brush_style_code(brush)).color(brush.color).u16(hatch_code(brush));
        use(MetafileObject::brush, bytes.bytes());
    }

    void use_font(const VectorText& text, bool symbol, int height) {
        const int tenths = static_cast<int>(std::lround(text.angle * 10));
        const QString family = symbol ? QStringLiteral("Symbol") : text.family;
        RecordBytes bytes;
        bytes.i16(-height).i16(0).i16(tenths).i16(tenths).i16(text.font.weight());
        bytes.u8(text.font.italic()).u8(0).u8(0).u8(symbol ? 2 : 0).u8(0).u8(0).u8(0);
        bytes.u8(symbol ? 0x12 : font_family_code(text.font))
            .raw(cp1252_from_utf8(family.left(31).toStdString()).bytes);
        use(MetafileObject::font, bytes.u8(0).fill_up(2).bytes());
    }

    VectorFrame frame_;
    std::string body_;  // the records behind the headers
    std::int64_t longest_record_ = 0;
    VectorClip clip_;
    int fill_rule_ = -1;
    QColor text_color_;
};

}  // namespace

std::unique_ptr<VectorSink> make_wmf_sink(const VectorFrame& frame) {
    return std::make_unique<WmfSink>(frame);
}

}  // namespace quom

// Enhanced metafiles: records of 32 bits, text in UTF-16.
#include <cmath>

#include "ui/charts/metafile_sink.h"

namespace quom {

namespace {

enum Record {
    HEADER = 1,
    POLYLINE = 4,
    SETWINDOWEXTEX = 9,
    SETWINDOWORGEX = 10,
    SETVIEWPORTEXTEX = 11,
    SETVIEWPORTORGEX = 12,
    EOF_ = 14,
    SETMAPMODE = 17,
    SETBKMODE = 18,
    SETPOLYFILLMODE = 19,
    SETSTRETCHBLTMODE = 21,
    SETTEXTALIGN = 22,
    SETTEXTCOLOR = 24,
    INTERSECTCLIPRECT = 30,
    SAVEDC = 33,
    RESTOREDC = 34,
    SELECTOBJECT = 37,
    CREATEBRUSHINDIRECT = 39,
    DELETEOBJECT = 40,
    ELLIPSE = 42,
    BEGINPATH = 59,
    ENDPATH = 60,
    SELECTCLIPPATH = 67,
    STRETCHDIBITS = 81,
    EXTCREATEFONTINDIRECTW = 82,
    EXTTEXTOUTW = 84,
    POLYGON16 = 86,
    POLYLINE16 = 87,
    POLYPOLYGON16 = 91,
    EXTCREATEPEN = 95,
};
constexpr int POLYGON = 3, POLYPOLYGON = 8;
constexpr int header_size = 108;
constexpr double device_mm = 320;  // of the reference device

std::string utf16(const QString& text) {
    RecordBytes bytes;
    for (const QChar c : text) bytes.u16(c.unicode());
    return bytes.bytes();
}

// Left, top, right, bottom.
RecordBytes& put_box(RecordBytes& bytes, const QRect& box) {
    return bytes.i32(box.left()).i32(box.top()).i32(box.left() + box.width()).i32(box.top() + box.height());
}

QRect bounds_of(const UnitPolygons& polygons) {
    QRect bounds(polygons.front().front(), QSize(0, 0));
    for (const UnitPoints& points : polygons)
        for (const QPoint& point : points) {
            bounds.setLeft(std::min(bounds.left(), point.x()));
            bounds.setTop(std::min(bounds.top(), point.y()));
            bounds.setRight(std::max(bounds.right(), point.x()));
            bounds.setBottom(std::max(bounds.bottom(), point.y()));
        }
    return bounds;
}

bool is_short(const QRect& bounds) {
    return bounds.left() >= -0x8000 && bounds.top() >= -0x8000 && bounds.right() < 0x8000 &&
           bounds.bottom() < 0x8000;
}

class EmfSink : public MetafileSink {
 public:
    explicit EmfSink(const VectorFrame& frame) : frame_(frame) {
        const QSize size = frame.size;
        record(SETMAPMODE, RecordBytes().u32(8));  // both axes by the extents
        record(SETWINDOWORGEX, RecordBytes().i32(0).i32(0));
        record(SETWINDOWEXTEX, RecordBytes().i32(size.width()).i32(size.height()));
        record(SETVIEWPORTORGEX, RecordBytes().i32(0).i32(0));
        record(SETVIEWPORTEXTEX, RecordBytes().i32(size.width()).i32(size.height()));
        record(SETBKMODE, RecordBytes().u32(1));          // transparent
        record(SETTEXTALIGN, RecordBytes().u32(24));      // left end of the base line
        record(SETSTRETCHBLTMODE, RecordBytes().u32(3));  // pixels are left out, not mixed
        record(SAVEDC, RecordBytes());
    }

    void clip(const VectorClip& clip) override {
        record(RESTOREDC, RecordBytes().i32(-1));
        record(SAVEDC, RecordBytes());
        nothing_selected();
        fill_rule_ = -1;
        text_color_ = QColor();
        if (clip.whole) return;
        RecordBytes box;
        record(INTERSECTCLIPRECT, put_box(box, clip.box));
        if (clip.outline.empty()) return;
        set_fill_rule(clip.rule);
        record(BEGINPATH, RecordBytes());
        polygon_records(clip.outline);
        record(ENDPATH, RecordBytes());
        record(SELECTCLIPPATH, RecordBytes().u32(1));  // what both contain
    }

    void polyline(const UnitPoints& points, const VectorPen& pen) override {
        use_pen(pen);
        const QRect bounds = bounds_of({points});
        const bool narrow = is_short(bounds);
        RecordBytes bytes;
        put_bounds(bytes, bounds).u32(static_cast<std::int64_t>(points.size()));
        put_points(bytes, points, narrow);
        record(narrow ? POLYLINE16 : POLYLINE, bytes);
    }

    void polygons(const UnitPolygons& polygons, const VectorPen& pen, const VectorBrush& brush,
                  Qt::FillRule rule) override {
        use_pen(pen);
        use_brush(brush);
        set_fill_rule(rule);
        polygon_records(polygons);
    }

    void ellipse(const QRect& box, const VectorPen& pen, const VectorBrush& brush) override {
        use_pen(pen);
        use_brush(brush);
        RecordBytes bytes;
        record(ELLIPSE, put_box(bytes, box));
    }

    void text(const VectorText& text) override {
        use_font(text);
        if (text_color_ != text.color) {
            text_color_ = text.color;
            record(SETTEXTCOLOR, RecordBytes().color(text.color));
        }
        const float scale = static_cast<float>(100 / frame_.units_per_mm());
        const std::int64_t characters = text.text.size();
        const std::string letters = RecordBytes().raw(utf16(text.text)).fill_up(4).bytes();
        constexpr int start = 76;  // of the letters in the record
        RecordBytes bytes;
        bytes.i32(0).i32(0).i32(-1).i32(-1).u32(1).f32(scale).f32(scale);
        bytes.i32(text.at.x()).i32(text.at.y()).u32(characters).u32(start).u32(0);
        bytes.i32(0)
            .i32(0)
            .i32(-1)
            .i32(-1)
            .u32(start + static_cast<std::int64_t>(letters.size()))
            .raw(letters);
        for (const int advance : text.advances) bytes.u32(advance);
        record(EXTTEXTOUTW, bytes);
    }

    void image(const QRect& where, const QImage& image) override {
        const std::string rows = bitmap_rows(image);
        RecordBytes bytes;
        put_bounds(bytes, where);
        bytes.i32(where.x()).i32(where.y()).i32(0).i32(0).i32(image.width()).i32(image.height());
        bytes.u32(80).u32(40).u32(120).u32(static_cast<std::int64_t>(rows.size())).u32(0).u32(0x00CC0020);
        bytes.i32(where.width()).i32(where.height()).raw(bitmap_head(image)).raw(rows);
        record(STRETCHDIBITS, bytes);
    }

    QByteArray finish() override {
        record(RESTOREDC, RecordBytes().i32(-1));
        record(EOF_, RecordBytes().u32(0).u32(0).u32(20));
        const std::string head = header();
        return QByteArray::fromStdString(head + body_);
    }

 protected:
    void create(MetafileObject kind, int number, const std::string& bytes) override {
        const Record records[] = {EXTCREATEPEN, CREATEBRUSHINDIRECT, EXTCREATEFONTINDIRECTW};
        record(records[static_cast<int>(kind)], RecordBytes().u32(number + 1).raw(bytes));
    }
    void select(int number) override { record(SELECTOBJECT, RecordBytes().u32(number + 1)); }
    void remove(int number) override { record(DELETEOBJECT, RecordBytes().u32(number + 1)); }

 private:
    void record(int type, const RecordBytes& bytes) {
        const std::string body = RecordBytes(bytes).fill_up(4).bytes();
        RecordBytes head;
        head.u32(type).u32(static_cast<std::int64_t>(body.size()) + 8);
        body_ += head.bytes() + body;
        ++records_;
    }

    static RecordBytes& put_bounds(RecordBytes& bytes, const QRect& box) {
        return bytes.i32(box.left()).i32(box.top()).i32(box.right()).i32(box.bottom());
    }

    static void put_points(RecordBytes& bytes, const UnitPoints& points, bool narrow) {
        for (const QPoint& point : points)
            narrow ? bytes.i16(point.x()).i16(point.y()) : bytes.i32(point.x()).i32(point.y());
    }

    void polygon_records(const UnitPolygons& polygons) {
        const QRect bounds = bounds_of(polygons);
        const bool narrow = is_short(bounds), several = polygons.size() > 1;
        std::size_t all = 0;
        for (const UnitPoints& points : polygons) all += points.size();
        RecordBytes bytes;
        put_bounds(bytes, bounds);
        if (several) bytes.u32(static_cast<std::int64_t>(polygons.size()));
        bytes.u32(static_cast<std::int64_t>(all));
        if (several)
            for (const UnitPoints& points : polygons) bytes.u32(static_cast<std::int64_t>(points.size()));
        for (const UnitPoints& points : polygons) put_points(bytes, points, narrow);
        record(several ? (narrow ? POLYPOLYGON16 : POLYPOLYGON) : (narrow ? POLYGON16 : POLYGON), bytes);
    }

    void use_pen(const VectorPen& pen) {
        RecordBytes bytes;
        bytes.u32(0).u32(0).u32(0).u32(0);  // no bitmap
        const int geometric =
            pen.drawn ? 0x10000 : 0;  // some readers draw a geometric pen that should not be seen
        bytes.u32(geometric | pen_style_code(pen)).u32(std::max(pen.width, 1)).u32(0).color(pen.color);
        use(MetafileObject::pen, bytes.u32(0).u32(0).bytes());
    }

    // Some readers fill polygons with the last colour where a brush without one was made for the file.
    void use_brush(const VectorBrush& brush) {
        constexpr std::int64_t null_brush = 0x80000005;
        if (!brush.drawn) {
            if (takes_stock(MetafileObject::brush)) record(SELECTOBJECT, RecordBytes().u32(null_brush));
            return;
        }
        RecordBytes bytes;
        bytes.u32(brush_style_code(brush)).color(brush.color).u32(hatch_code(brush));
        use(MetafileObject::brush, bytes.bytes());
    }

    void use_font(const VectorText& text) {
        const int tenths = static_cast<int>(std::lround(text.angle * 10));
        RecordBytes bytes;
        bytes.i32(-text.height).i32(0).i32(tenths).i32(tenths).i32(text.font.weight());
        bytes.u8(text.font.italic()).u8(0).u8(0).u8(1);  // whatever character set
        bytes.u8(0).u8(0).u8(0).u8(font_family_code(text.font)).raw(utf16(text.family.left(31))).fill_to(92);
        use(MetafileObject::font, bytes.fill_to(320).bytes());
    }

    void set_fill_rule(Qt::FillRule rule) {
        if (fill_rule_ == rule) return;
        fill_rule_ = rule;
        record(SETPOLYFILLMODE, RecordBytes().u32(rule == Qt::OddEvenFill ? 1 : 2));
    }

    std::string header() const {
        const std::string maker = utf16(QStringLiteral("QUOM") + QChar(0) + QChar(0));
        const std::int64_t size = header_size + static_cast<std::int64_t>((maker.size() + 3) / 4 * 4);
        const double frame_unit = 100 / frame_.units_per_mm();  // 0.01 mm
        const int device = static_cast<int>(std::lround(device_mm * frame_.units_per_mm()));
        RecordBytes bytes;
        bytes.u32(HEADER).u32(size).i32(0).i32(0).i32(frame_.size.width() - 1).i32(frame_.size.height() - 1);
        bytes.i32(0).i32(0);
        bytes.i32(std::lround(frame_.size.width() * frame_unit));
        bytes.i32(std::lround(frame_.size.height() * frame_unit));
        bytes.raw(" EMF").u32(0x10000).u32(size + static_cast<std::int64_t>(body_.size())).u32(records_ + 1);
        bytes.u16(most_objects() + 1)
            .u16(0)
            .u32(static_cast<std::int64_t>(maker.size()) / 2)
            .u32(header_size);
        bytes.u32(0).i32(device).i32(device).i32(std::lround(device_mm)).i32(std::lround(device_mm));
        bytes.u32(0).u32(0).u32(0).i32(std::lround(device_mm * 1000)).i32(std::lround(device_mm * 1000));
        return bytes.raw(maker).fill_up(4).bytes();
    }

    VectorFrame frame_;
    std::string body_;  // the records behind the header
    std::int64_t records_ = 0;
    int fill_rule_ = -1;
    QColor text_color_;
};

}  // namespace

std::unique_ptr<VectorSink> make_emf_sink(const VectorFrame& frame) {
    return std::make_unique<EmfSink>(frame);
}

}  // namespace quom

#include "ui/metafile_reader.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace quom::test {

namespace {

// A record: numbers at offsets from its start; reading beyond its end is a test failure.
class Bytes {
 public:
    Bytes(const QByteArray& all, qsizetype start, qsizetype size) : part_(all.mid(start, size)) {
        EXPECT_EQ(part_.size(), size);
    }
    int i8(qsizetype at) const {
        return at < part_.size() ? static_cast<unsigned char>(part_[at]) : fail(at);
    }
    int u16(qsizetype at) const { return i8(at) | i8(at + 1) << 8; }
    int i16(qsizetype at) const { return static_cast<std::int16_t>(u16(at)); }
    std::int64_t u32(qsizetype at) const {
        return static_cast<std::int64_t>(u16(at)) | static_cast<std::int64_t>(u16(at + 2)) << 16;
    }
    int i32(qsizetype at) const { return static_cast<std::int32_t>(u32(at)); }
    QColor color(qsizetype at) const { return {i8(at), i8(at + 1), i8(at + 2)}; }
    qsizetype size() const { return part_.size(); }
    QByteArray text(qsizetype at, qsizetype count) const { return part_.mid(at, count); }

 private:
    static int fail(qsizetype at) {
        ADD_FAILURE() << "a record ends before " << at;
        return 0;
    }
    QByteArray part_;
};

// What is selected, and what SAVEDC keeps.
struct State {
    ReadPen pen;
    ReadBrush brush;
    ReadFont font;
    QColor text_color;
    QRect clip;
    int align = 0, fill_mode = 1;
};

struct Objects {
    std::map<int, ReadPen> pens;
    std::map<int, ReadBrush> brushes;
    std::map<int, ReadFont> fonts;
    int alive() const { return static_cast<int>(pens.size() + brushes.size() + fonts.size()); }
    void select(int number, State& state) const {
        if (pens.count(number))
            state.pen = pens.at(number);
        else if (brushes.count(number))
            state.brush = brushes.at(number);
        else if (fonts.count(number))
            state.font = fonts.at(number);
        else if (static_cast<std::uint32_t>(number) ==
                 0x80000005)  // the brush without a colour of every reader
            state.brush = {1, {}};
        else
            ADD_FAILURE() << "object " << number << " is selected and does not exist";
    }
    void remove(int number) {
        EXPECT_EQ(pens.erase(number) + brushes.erase(number) + fonts.erase(number), 1u) << number;
    }
    int lowest_free() const {
        int number = 0;
        while (pens.count(number) || brushes.count(number) || fonts.count(number)) ++number;
        return number;
    }
};

struct Reading {
    Metafile file;
    State state;
    std::vector<State> saved;
    Objects objects;
    int paths = 0;

    void save() { saved.push_back(state); }
    void restore() {
        ASSERT_FALSE(saved.empty());
        state = saved.back();
        saved.pop_back();
    }
    void clip(const QRect& box) {
        state.clip = state.clip.isValid() ? state.clip & box : box;
        file.clips.push_back(box);
    }
    void line(std::vector<QPoint> points) {
        file.lines.push_back({std::move(points), state.pen, state.clip});
    }
    void area(std::vector<std::vector<QPoint>> polygons) {
        file.areas.push_back({std::move(polygons), state.pen, state.brush, state.fill_mode});
    }
    void text(ReadText text) {
        EXPECT_EQ(state.align, 24) << "texts stand on their base line";
        text.font = state.font;
        text.color = state.text_color;
        file.texts.push_back(std::move(text));
    }
    void made() { file.most_alive = std::max(file.most_alive, objects.alive()); }
};

QRect box_of(int left, int top, int right, int bottom) { return {left, top, right - left, bottom - top}; }

std::vector<QPoint> points_of(const Bytes& r, qsizetype at, std::int64_t count, bool narrow) {
    std::vector<QPoint> points;
    for (std::int64_t i = 0; i < count; ++i, at += narrow ? 4 : 8)
        points.push_back(narrow ? QPoint(r.i16(at), r.i16(at + 2)) : QPoint(r.i32(at), r.i32(at + 4)));
    EXPECT_LE(at, r.size());
    return points;
}

QString utf16(const Bytes& r, qsizetype at, std::int64_t count) {
    QString text;
    for (std::int64_t i = 0; i < count; ++i) text += QChar(static_cast<char16_t>(r.u16(at + 2 * i)));
    return text;
}

void emf_area(Reading& reading, const Bytes& r, bool several, bool narrow) {
    std::vector<std::vector<QPoint>> polygons;
    if (!several) {
        polygons.push_back(points_of(r, 28, r.u32(24), narrow));
    } else {
        qsizetype at = 32 + 4 * r.u32(24);
        for (int i = 0; i < r.u32(24); ++i) {
            polygons.push_back(points_of(r, at, r.u32(32 + 4 * i), narrow));
            at += r.u32(32 + 4 * i) * (narrow ? 4 : 8);
        }
    }
    if (reading.paths == 0) reading.area(polygons);
}

void emf_text(Reading& reading, const Bytes& r) {
    ReadText text;
    text.at = {r.i32(36), r.i32(40)};
    text.text = utf16(r, r.u32(48), r.u32(44));
    for (int i = 0; i < r.u32(44); ++i) text.advances.push_back(r.i32(r.u32(72) + 4 * i));
    reading.text(text);
}

void emf_object(Reading& reading, int type, const Bytes& r) {
    const int number = r.i32(8);
    Objects& objects = reading.objects;
    if (type == 37) return objects.select(number, reading.state);
    if (type == 40) return objects.remove(number);
    EXPECT_GT(number, 0);
    if (type == 95) objects.pens[number] = {r.i32(28) & 0xF, r.i32(32), r.color(40)};
    if (type == 39) {
        objects.brushes[number] = {r.i32(12), r.color(16)};
        EXPECT_NE(r.i32(12), 1) << "some readers fill polygons of such a brush with the last colour";
    }
    if (type == 82)
        objects.fonts[number] = {r.i32(12), r.i32(20), r.i32(28), utf16(r, 40, 32).section(QChar(0), 0, 0)};
    reading.made();
}

void emf_record(Reading& reading, int type, const Bytes& r) {
    switch (type) {
        case 4:
        case 87:
            return reading.line(points_of(r, 28, r.u32(24), type == 87));
        case 3:
        case 86:
            return emf_area(reading, r, false, type == 86);
        case 8:
        case 91:
            return emf_area(reading, r, true, type == 91);
        case 9:
            reading.file.window = QSize(r.i32(8), r.i32(12));
            return;
        case 11:
            reading.file.viewport = QSize(r.i32(8), r.i32(12));
            return;
        case 19:
            reading.state.fill_mode = r.i32(8);
            return;
        case 22:
            reading.state.align = r.i32(8);
            return;
        case 24:
            reading.state.text_color = r.color(8);
            return;
        case 30:
            return reading.clip(box_of(r.i32(8), r.i32(12), r.i32(16), r.i32(20)));
        case 33:
            return reading.save();
        case 34:
            return reading.restore();
        case 42:
            reading.file.ellipses.push_back({{{{r.i32(8), r.i32(12)}, {r.i32(16), r.i32(20)}}},
                                             reading.state.pen,
                                             reading.state.brush,
                                             0});
            return;
        case 59:
            ++reading.paths;
            return;
        case 60:
            --reading.paths;
            return;
        case 67:
            ++reading.file.path_clips;
            return;
        case 81:
            EXPECT_EQ(r.size(), 120 + r.u32(60));
            reading.file.images.push_back(QRect(r.i32(24), r.i32(28), r.i32(72), r.i32(76)));
            return;
        case 84:
            return emf_text(reading, r);
        case 37:
        case 39:
        case 40:
        case 82:
        case 95:
            return emf_object(reading, type, r);
        default:
            return;
    }
}

std::vector<std::vector<QPoint>> wmf_polygons(const Bytes& r) {
    std::vector<std::vector<QPoint>> polygons;
    qsizetype at = 8 + 2 * r.u16(6);
    for (int i = 0; i < r.u16(6); ++i) {
        polygons.push_back(points_of(r, at, r.u16(8 + 2 * i), true));
        at += 4 * r.u16(8 + 2 * i);
    }
    EXPECT_EQ(at, r.size());
    return polygons;
}

void wmf_text(Reading& reading, const Bytes& r) {
    ReadText text;
    text.at = {r.i16(8), r.i16(6)};
    const int count = r.i16(10), padded = (count + 1) / 2 * 2;
    text.text = QString::fromLatin1(r.text(14, count));
    for (int i = 0; i < count; ++i) text.advances.push_back(r.i16(14 + padded + 2 * i));
    EXPECT_EQ(r.size(), 14 + padded + 2 * count);
    reading.text(text);
}

void wmf_record(Reading& reading, int type, const Bytes& r) {
    Objects& objects = reading.objects;
    switch (type) {
        case 0x0325:
            return reading.line(points_of(r, 8, r.i16(6), true));
        case 0x0324:
            return reading.area({points_of(r, 8, r.i16(6), true)});
        case 0x0538:
            return reading.area(wmf_polygons(r));
        case 0x020C:
            reading.file.window = QSize(r.i16(8), r.i16(6));
            return;
        case 0x012E:
            reading.state.align = r.u16(6);
            return;
        case 0x0106:
            reading.state.fill_mode = r.u16(6);
            return;
        case 0x0209:
            reading.state.text_color = r.color(6);
            return;
        case 0x0416:
            return reading.clip(box_of(r.i16(12), r.i16(10), r.i16(8), r.i16(6)));
        case 0x001E:
            return reading.save();
        case 0x0127:
            return reading.restore();
        case 0x0418:
            reading.file.ellipses.push_back({{{{r.i16(12), r.i16(10)}, {r.i16(8), r.i16(6)}}},
                                             reading.state.pen,
                                             reading.state.brush,
                                             0});
            return;
        case 0x0F43:
            reading.file.images.push_back(QRect(r.i16(26), r.i16(24), r.i16(22), r.i16(20)));
            return;
        case 0x0A32:
            return wmf_text(reading, r);
        case 0x02FA:
            objects.pens[objects.lowest_free()] = {r.u16(6) & 0xF, r.i16(8), r.color(12)};
            break;
        case 0x02FC:
            objects.brushes[objects.lowest_free()] = {r.u16(6), r.color(8)};
            break;
        case 0x02FB:
            objects.fonts[objects.lowest_free()] = {
                r.i16(6), r.i16(10), r.i16(14), QString::fromLatin1(r.text(24, 32)).section(QChar(0), 0, 0)};
            break;
        case 0x012D:
            return objects.select(r.u16(6), reading.state);
        case 0x01F0:
            return objects.remove(r.u16(6));
        default:
            return;
    }
    reading.made();
}

}  // namespace

std::vector<QString> Metafile::text_list() const {
    std::vector<QString> list;
    for (const ReadText& text : texts) list.push_back(text.text);
    return list;
}

Metafile read_emf(const QByteArray& bytes) {
    Reading reading;
    const Bytes head(bytes, 0, 108);
    EXPECT_EQ(bytes.mid(40, 4), " EMF");
    EXPECT_EQ(head.u32(0), 1);
    EXPECT_EQ(head.u32(48), bytes.size());
    std::int64_t records = 0;
    qsizetype at = 0;
    int type = 0;
    while (at + 8 <= bytes.size() && type != 14) {
        const Bytes start(bytes, at, 8);
        type = start.i32(0);
        const std::int64_t size = start.u32(4);
        EXPECT_EQ(size % 4, 0) << type;
        if (size < 8 || at + size > bytes.size()) {
            ADD_FAILURE() << "a record of " << size << " bytes at " << at;
            break;
        }
        if (type != 1) emf_record(reading, type, Bytes(bytes, at, size));
        at += size;
        ++records;
    }
    EXPECT_EQ(type, 14) << "the last record";
    EXPECT_EQ(at, bytes.size());
    EXPECT_EQ(head.u32(52), records);
    EXPECT_GT(head.u16(56), reading.file.most_alive);
    EXPECT_TRUE(reading.saved.empty());
    return reading.file;
}

Metafile read_wmf(const QByteArray& bytes) {
    Reading reading;
    const Bytes head(bytes, 0, 40);
    EXPECT_EQ(head.u32(0), 0x9AC6CDD7);
    int check = 0;
    for (int i = 0; i < 20; i += 2) check ^= head.u16(i);
    EXPECT_EQ(head.u16(20), check);
    EXPECT_EQ(head.u16(22), 1);
    EXPECT_EQ(head.u16(24), 9);
    EXPECT_EQ(head.u32(28), (bytes.size() - 22) / 2);
    std::int64_t longest = 0;
    qsizetype at = 40;
    int type = -1;
    while (at + 6 <= bytes.size() && type != 0) {
        const Bytes start(bytes, at, 6);
        const std::int64_t words = start.u32(0);
        type = start.u16(4);
        if (words < 3 || at + 2 * words > bytes.size()) {
            ADD_FAILURE() << "a record of " << words << " words at " << at;
            break;
        }
        longest = std::max(longest, words);
        wmf_record(reading, type, Bytes(bytes, at, 2 * words));
        at += 2 * words;
    }
    EXPECT_EQ(type, 0) << "the last record";
    EXPECT_EQ(at, bytes.size());
    EXPECT_EQ(head.u32(34), longest);
    EXPECT_GE(head.u16(32), reading.file.most_alive);
    EXPECT_TRUE(reading.saved.empty());
    return reading.file;
}

}  // namespace quom::test

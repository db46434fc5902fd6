#include "ui/charts/metafile_sink.h"

#include <QFontInfo>
#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace quom {

namespace {

constexpr std::size_t room = 120;  // objects at a time

template <class Number>
std::uint32_t held(std::int64_t value) {
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<Number>::min(),
                                                               std::numeric_limits<Number>::max()));
}

}  // namespace

RecordBytes& RecordBytes::put(std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes_.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    return *this;
}

RecordBytes& RecordBytes::u8(int value) { return put(held<std::uint8_t>(value), 1); }
RecordBytes& RecordBytes::i16(std::int64_t value) { return put(held<std::int16_t>(value), 2); }
RecordBytes& RecordBytes::u16(std::int64_t value) { return put(held<std::uint16_t>(value), 2); }
RecordBytes& RecordBytes::i32(std::int64_t value) { return put(held<std::int32_t>(value), 4); }
RecordBytes& RecordBytes::u32(std::int64_t value) { return put(held<std::uint32_t>(value), 4); }
RecordBytes& RecordBytes::f32(float value) { return put(std::bit_cast<std::uint32_t>(value), 4); }

RecordBytes& RecordBytes::raw(const std::string& bytes) {
    bytes_ += bytes;
    return *this;
}

RecordBytes& RecordBytes::color(const QColor& color) {
    return u8(color.red()).u8(color.green()).u8(color.blue()).u8(0);
}

RecordBytes& RecordBytes::fill_up(std::size_t multiple) {
    while (bytes_.size() % multiple != 0) bytes_.push_back('\0');
    return *this;
}

RecordBytes& RecordBytes::fill_to(std::size_t size) {
    bytes_.resize(size, '\0');
    return *this;
}

int pen_style_code(const VectorPen& pen) {
    if (!pen.drawn) return 5;
    // Other ends would close the gaps between dots.
    const bool flat = pen.cap == Qt::FlatCap || pen.dash != Dash::solid;
    const int cap = flat ? 0x200 : pen.cap == Qt::SquareCap ? 0x100 : 0;
    const int join = pen.join == Qt::RoundJoin ? 0 : pen.join == Qt::BevelJoin ? 0x1000 : 0x2000;
    return static_cast<int>(pen.dash) | cap | join;
}

int brush_style_code(const VectorBrush& brush) {
    if (!brush.drawn) return 1;
    return brush.style == Qt::SolidPattern ? 0 : 2;
}

int hatch_code(const VectorBrush& brush) {
    switch (brush.style) {
        case Qt::VerPattern:
            return 1;
        case Qt::FDiagPattern:
            return 2;
        case Qt::BDiagPattern:
            return 3;
        case Qt::CrossPattern:
            return 4;
        case Qt::DiagCrossPattern:
            return 5;
        default:
            return 0;
    }
}

int font_family_code(const QFont& font) {
    const QFontInfo info(font);
    if (info.fixedPitch()) return 0x31;
    const bool roman = info.styleHint() == QFont::Serif ||
                       (info.family().contains(QLatin1String("serif"), Qt::CaseInsensitive) &&
                        !info.family().contains(QLatin1String("sans"), Qt::CaseInsensitive));
    return roman ? 0x12 : 0x22;
}

std::string bitmap_head(const QImage& image) {
    RecordBytes head;
    head.u32(40).i32(image.width()).i32(image.height()).u16(1).u16(24).u32(0).u32(0).fill_to(40);
    return head.bytes();
}

std::string bitmap_rows(const QImage& image) {
    RecordBytes rows;
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            rows.u8(qBlue(pixel)).u8(qGreen(pixel)).u8(qRed(pixel));
        }
        rows.fill_up(4);
    }
    return rows.bytes();
}

void MetafileSink::nothing_selected() { selected_ = {}; }

void MetafileSink::use(MetafileObject kind, const std::string& bytes) {
    const std::string key = std::to_string(static_cast<int>(kind)) + bytes;
    std::string& selected = selected_[static_cast<std::size_t>(kind)];
    if (selected == key) return;
    const int number = number_of(kind, key, bytes);
    select(number);
    selected = key;
}

bool MetafileSink::takes_stock(MetafileObject kind) {
    return std::exchange(selected_[static_cast<std::size_t>(kind)], "stock") != "stock";
}

int MetafileSink::number_of(MetafileObject kind, const std::string& key, const std::string& bytes) {
    if (const auto found = numbers_.find(key); found != numbers_.end()) return found->second;
    int number = most_;
    if (made_.size() >= room) {
        // An object in use cannot be removed.
        const auto oldest = std::find_if(made_.begin(), made_.end(), [this](const Made& made) {
            return std::find(selected_.begin(), selected_.end(), made.key) == selected_.end();
        });
        number = oldest->number;
        remove(number);
        numbers_.erase(oldest->key);
        made_.erase(oldest);
    } else {
        ++most_;
    }
    create(kind, number, bytes);
    numbers_[key] = number;
    made_.push_back({key, number});
    return number;
}

}  // namespace quom

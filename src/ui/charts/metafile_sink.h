// What the writers of EMF and WMF share: little-endian records, and pens, brushes and fonts made once and
// selected by their numbers.
#pragma once
#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>

#include "ui/charts/vector_sink.h"

namespace quom {

// Numbers in the order of bytes of metafiles; what does not fit is held at the ends of the range.
class RecordBytes {
 public:
    RecordBytes& u8(int value);
    RecordBytes& i16(std::int64_t value);
    RecordBytes& u16(std::int64_t value);
    RecordBytes& i32(std::int64_t value);
    RecordBytes& u32(std::int64_t value);
    RecordBytes& f32(float value);
    RecordBytes& raw(const std::string& bytes);
    RecordBytes& color(const QColor& color);     // 00bbggrr
    RecordBytes& fill_up(std::size_t multiple);  // with zeros
    RecordBytes& fill_to(std::size_t size);
    const std::string& bytes() const { return bytes_; }

 private:
    RecordBytes& put(std::uint32_t value, int count);
    std::string bytes_;
};

// The codes of the graphics device interface.
int pen_style_code(const VectorPen& pen);
int brush_style_code(const VectorBrush& brush);
int hatch_code(const VectorBrush& brush);
// Pitch and family of letters, for readers without the font.
int font_family_code(const QFont& font);
// Heads, rows of 24 bits from the lowest up.
std::string bitmap_head(const QImage& image);
std::string bitmap_rows(const QImage& image);

enum class MetafileObject { pen, brush, font };

class MetafileSink : public VectorSink {
 protected:
    // Selects the object of these bytes; makes it when there is none. Of many objects the oldest go.
    void use(MetafileObject kind, const std::string& bytes);
    // An object that every reader has takes the place of those made here. False: it is selected already.
    bool takes_stock(MetafileObject kind);
    // After the graphics state was reset.
    void nothing_selected();
    int most_objects() const { return most_; }

    virtual void create(MetafileObject kind, int number, const std::string& bytes) = 0;
    virtual void select(int number) = 0;
    virtual void remove(int number) = 0;

 private:
    struct Made {
        std::string key;
        int number;
    };
    int number_of(MetafileObject kind, const std::string& key, const std::string& bytes);
    std::unordered_map<std::string, int> numbers_;
    std::deque<Made> made_;                  // the oldest first
    std::array<std::string, 3> selected_{};  // keys
    int most_ = 0;
};

}  // namespace quom

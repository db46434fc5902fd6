// Any bytes as free-format fields, numbers, masks and text of either code. The first byte says how the reader
// is driven, the first eight also make the number of the masks.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"

namespace {

using namespace quom;

void require(bool holds) {
    if (!holds) std::abort();
}

void read_fields(std::string_view text, unsigned pattern) {
    FieldReader in(text);
    std::size_t fields = 0;
    for (; !in.at_end(); ++fields, pattern = (pattern >> 1) | ((pattern & 1) << 7)) {
        if (pattern & 2) {
            in.number_field();
        } else if (pattern & 1) {
            require(in.whole_line().has_value());
        } else {
            require(in.text_field().has_value());
        }
        require(fields <= text.size());  // each field takes a character at least
    }
    require(static_cast<std::size_t>(in.line()) <= split_lines(text).size() + 1);
    require(!in.text_field() && !in.number_field() && !in.whole_line());
}

void read_number_and_back(std::string_view text) {
    const double x = Val(text);
    require(std::isfinite(x));
    if (const auto whole = read_number(text)) require(*whole == x);
    require(Val(exactNum(x)) == x);
    require(std::fabs(Val(printNum(x)) - x) <= std::fabs(x) * 1e-14);
}

void format(double x, std::string_view mask) {
    const std::string text = formatMask(x, mask);
    if (!std::isfinite(x)) {
        require(text == "(Error)");
        return;
    }
    require(text.size() <= mask.size() + 330);  // 308 digits, sign, point, exponent
}

void convert(std::string_view text) {
    require(cp1252_from_utf8(utf8_from_1252(text)).bytes == text);
    const Encoded bytes = cp1252_from_utf8(text);
    require(bytes.bytes.size() == text_length(text) && bytes.replaced <= text.size());
    require(text_length(upper_text(text)) == text_length(text));
    require(text_length(text_padded(text, 12)) == 12);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    double x = 0.0;
    std::memcpy(&x, data, size < sizeof x ? size : sizeof x);
    read_fields(text, size > 0 ? data[0] : 0u);
    read_number_and_back(text);
    format(x, text.substr(size < sizeof x ? size : sizeof x));
    convert(text);
    return 0;
}

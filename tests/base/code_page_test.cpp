#include "base/code_page.h"

#include <gtest/gtest.h>

namespace quom {
namespace {

TEST(CodePage, every_byte_survives_the_round_trip) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    const Encoded back = cp1252_from_utf8(utf8_from_1252(bytes));
    EXPECT_EQ(back.bytes, bytes);
    EXPECT_EQ(back.replaced, 0u);
    EXPECT_EQ(text_length(utf8_from_1252(bytes)), 256u);
}

TEST(CodePage, characters_and_bytes) {
    const struct {
        const char *utf8, *bytes;
    } cases[] = {{"m\u00b2", "m\xb2"},         {"\u00c4\u00d6\u00dc\u00df", "\xc4\xd6\xdc\xdf"},
                 {"\u20ac", "\x80"},           {"\u2013\u2022", "\x96\x95"},
                 {"\u0160\u017d", "\x8a\x8e"}, {"\u00ad", "\xad"}};
    for (const auto& c : cases) {
        EXPECT_EQ(cp1252_from_utf8(c.utf8).bytes, c.bytes);
        EXPECT_EQ(utf8_from_1252(c.bytes), c.utf8);
    }
}

TEST(CodePage, what_has_no_byte_is_replaced_and_counted) {
    const struct {
        const char *utf8, *bytes;
        std::size_t replaced;
    } cases[] = {
        {"\u03c1 = 1", "? = 1", 1},      // Greek
        {"a\U0001F600b", "a?b", 1},      // beyond the basic plane
        {"a\xff", "a?", 1},              // no UTF-8 at all
        {"\xc3", "?", 1},                // cut off
        {"\xc0\xaf", "??", 2},           // not the shortest form
        {"\xed\xa0\x80", "???", 3},      // surrogate
        {"\xf5\x80\x80\x80", "????", 4}  // beyond Unicode
    };
    for (const auto& c : cases) {
        const Encoded e = cp1252_from_utf8(c.utf8);
        EXPECT_EQ(e.bytes, c.bytes);
        EXPECT_EQ(e.replaced, c.replaced);
        EXPECT_EQ(text_length(c.utf8), e.bytes.size());
    }
}

TEST(CodePage, upper_case_by_the_code_page) {
    EXPECT_EQ(upper_text("propane 2-methyl"), "PROPANE 2-METHYL");
    EXPECT_EQ(upper_text("äöüéþ"), "ÄÖÜÉÞ");
    EXPECT_EQ(upper_text("šœž"), "ŠŒŽ");
    EXPECT_EQ(upper_text("ß÷ÿµρ"), "ß÷ÿµρ");
}

TEST(CodePage, cutting_and_padding_count_characters) {
    EXPECT_EQ(text_left("Öl²x", 3), "Öl²");
    EXPECT_EQ(text_left("Öl", 9), "Öl");
    EXPECT_EQ(text_padded("Öl", 4), "Öl  ");
    EXPECT_EQ(text_padded("Ölöl", 2), "Öl");
    EXPECT_EQ(trim("  a b\t "), "a b\t");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim_left("  a "), "a ");
    EXPECT_EQ(trim_right("  a "), "  a");
}

}  // namespace
}  // namespace quom

#include "report/table_export.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/csv_rows.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

ExportCell number(const char* text) { return {text, true}; }

ExportTable sample() {
    return {.title = {"Acetone; \"pure\""},
            .heads = {"T", "p", "remark"},
            .units = {"°C", "kPa", ""},
            .rows = {{std::string("Measured")},
                     {number("-5.5"), number("7.2"), std::string("a.b, <c> & \"d\"")},
                     {number("20"), ExportCell(), std::string("two\nlines\tand a tab")}}};
}

TEST(TableExport, writes_csv_by_delimiter_and_decimal_sign) {
    EXPECT_EQ(to_csv(sample(), ';', ','),
              "\"Acetone; \"\"pure\"\"\"\r\n"
              "T;p;remark\r\n"
              "°C;kPa;\r\n"
              "Measured\r\n"
              "-5,5;7,2;\"a.b, <c> & \"\"d\"\"\"\r\n"
              "20;;\"two\nlines\tand a tab\"\r\n");
    // The delimiter is also the decimal sign.
    EXPECT_THAT(to_csv(sample(), ',', ','), HasSubstr("\"-5,5\",\"7,2\",\"a.b, <c> & \"\"d\"\"\"\r\n"));
    const std::vector<CsvRow> rows = csv_rows(to_csv(sample(), ',', '.'));
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_THAT(rows[4].fields, ElementsAre("-5.5", "7.2", "a.b, <c> & \"d\""));
}

TEST(TableExport, writes_tabs_for_spreadsheets) {
    EXPECT_EQ(to_tsv(sample()),
              "Acetone; \"pure\"\nT\tp\tremark\n°C\tkPa\t\nMeasured\n-5.5\t7.2\ta.b, <c> & \"d\"\n"
              "20\t\ttwo lines and a tab\n");
    EXPECT_THAT(to_tsv(sample(), ','), HasSubstr("\n-5,5\t7,2\ta.b,"));
    EXPECT_EQ(to_tsv({}), "");
}

// Every tag that opens is closed in its order, and no sign is left that would open another.
void expect_well_formed(const std::string& html) {
    std::vector<std::string> open;
    for (std::size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
        const std::size_t end = html.find('>', at);
        ASSERT_NE(end, std::string::npos);
        const std::string tag = html.substr(at + 1, end - at - 1);
        if (tag.starts_with('!') || tag.ends_with('/')) continue;
        if (tag.starts_with('/')) {
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(tag.substr(1), open.back());
            open.pop_back();
        } else {
            open.push_back(tag.substr(0, tag.find(' ')));
        }
    }
    EXPECT_TRUE(open.empty());
    for (std::size_t at = html.find('&'); at != std::string::npos; at = html.find('&', at + 1))
        EXPECT_LT(html.find(';', at), at + 7);
}

TEST(TableExport, writes_well_formed_pages) {
    const std::string html = to_html(sample());
    expect_well_formed(html);
    EXPECT_THAT(html, HasSubstr("<tr><th colspan=\"3\">Measured</th></tr>"));
    EXPECT_THAT(html, HasSubstr("<tr><td align=\"right\">-5.5</td><td align=\"right\">7.2</td>"
                                "<td>a.b, &lt;c&gt; &amp; &quot;d&quot;</td></tr>"));
    EXPECT_THAT(html, HasSubstr("two<br/>lines and a tab"));
    ExportTable hostile = sample();
    hostile.title = {"</title><script>", std::string("\0\x01", 2)};
    expect_well_formed(to_html(hostile));
    expect_well_formed(to_html({}));
}

}  // namespace
}  // namespace quom

#include "forms/text_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <random>

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr double M = 58.08;  // acetone [kg/kmol]

TextImport read(std::string_view bytes, ImportOptions options = {}) {
    options.M = options.M == 0 ? M : options.M;
    return import_text(bytes, options);
}

// "T p rho(L)" of the columns; "-" for one that is not used.
std::string quantities(const TextImport& import) {
    std::string text;
    for (const ImportColumn& column : import.columns) {
        text += text.empty() ? "" : " ";
        text += column.quantity == ImportQuantity::skip ? "-" : import_name(column.quantity);
    }
    return text;
}
std::string units(const TextImport& import) {
    std::string text;
    for (const ImportColumn& column : import.columns) text += "|" + column.unit;
    return text.substr(1);
}
std::vector<std::string> bad(const TextImport& import) {
    std::vector<std::string> rows;
    for (const BadRow& row : import.bad_rows) rows.push_back(std::to_string(row.line) + ": " + row.fault);
    return rows;
}

struct Text {
    const char* name;
    std::string text;
    TableDelimiter delimiter;
    char decimal;
    const char *quantities, *units;
    std::vector<TpRhoPoint> points;  // by hand
};
TpRhoPoint point(double T, double p = 0, double rhoV = 0, double rhoL = 0, double HLV = 0, double cp = 0) {
    return {0,
            T,
            p,
            static_cast<float>(rhoV),
            static_cast<float>(rhoL),
            static_cast<float>(HLV),
            static_cast<float>(cp)};
}

// By hand: 0 °C = 273.15 K, 1 bar = 100 kPa, 1 g/cm^3 = 1000 kg/m^3, 1 MPa = 1000 kPa, 32 °F = 273.15 K, 212
// °F = 373.15 K, 1 atm = 101.325 kPa; molar from mass by M = 58.08 kg/kmol: 500 kJ/kg = 29040 kJ/kmol, 2
// kJ/(kg K) = 116.16 kJ/(kmol K), 0.05 m^3/kmol = 1161.6 kg/m^3.
const Text texts[] = {
    {"spreadsheet with decimal commas",
     "T / °C\tDampfdruck / kPa\r\n20,5\t24,7\r\n56,1\t1.013,25\r\n",
     TableDelimiter::tab,
     ',',
     "T p",
     "°C|kPa",
     {point(293.65, 24.7), point(329.25, 1013.25)}},
    {"CSV with quotes",
     "\"Temperature, °C\",\"p [bar]\",\"rhoL (g/cm3)\",\"remark\"\n"
     "\"20.0\",\"1,234.5\",0.79,\"first, in the \"\"morning\"\"\"\n"
     "100,3.7,0.69,\n",
     TableDelimiter::comma,
     '.',
     "T p rho(L) -",
     "°C|bar|g/cm^3|",
     {point(293.15, 123450, 0, 790), point(373.15, 370, 0, 690)}},
    {"logger with comments and blanks",
     "# logger 7, run 12\n# started 2024-05-03 12:00\nT_degC   p_mbar\n-10.0    5.3e1\n\n   0.0  9.1E+01\n"
     "# sensor changed\n  10     150\n",
     TableDelimiter::blanks,
     '.',
     "T p",
     "°C|mbar",
     {point(263.15, 5.3), point(273.15, 9.1), point(283.15, 15)}},
    {"head in a comment",
     "# T/K  p/MPa  rho(V)/(kg/m^3)\n300 0.03 0.7\n350 0.2 4.2\n",
     TableDelimiter::blanks,
     '.',
     "T p rho(V)",
     "K|MPa|kg/m^3",
     {point(300, 30, 0.7), point(350, 200, 4.2)}},
    {"units in a second line",
     "Messreihe 3;;;\nT;p;delta(LV)h;cp\n[K];[atm];[kJ/kg];[kJ/(kg K)]\n300;0,5;500;2\n310;1;;2\n",
     TableDelimiter::semicolon,
     ',',
     "T p delta(LV)h cp",
     "K|atm|kJ/kg|kJ/(kg K)",
     {point(300, 50.6625, 0, 0, 29040, 116.16), point(310, 101.325, 0, 0, 0, 116.16)}},
    {"blanks in the head and between groups of digits",
     "T / °F   p / (psi)\n32.0   1.0\n212    14.0\n",
     TableDelimiter::blanks,
     '.',
     "T p",
     "°F|psi",
     {point(273.15, 6.894757293168361), point(373.15, 14 * 6.894757293168361)}},
    {"drawn table",
     "+------+-------+\n| T/K  | p/kPa |\n|------|-------|\n| 300  | 33,5  |\n| 310  | 1 013,25 "
     "|\n+------+-------+\n",
     TableDelimiter::bar,
     ',',
     "- T p -",
     "|K|kPa|",
     {point(300, 33.5), point(310, 1013.25)}},
    {"units behind the values",
     "Zeit;T;Druck\n12:00:01;20,0 °C;1,5 bar\n12:00:02;300 K;200 kPa\n",
     TableDelimiter::semicolon,
     ',',
     "- T p",
     "|K|kPa",
     {point(293.15, 150), point(300, 200)}},
    {"volumes, and what a data set does not hold",
     "t/s;T/K;vL/(m^3/kmol);h/(kJ/kmol)\n1;300;0.05;7\n2;310;0.06;8\n",
     TableDelimiter::semicolon,
     '.',
     "- T rho(L) -",
     "|K|m^3/kmol|",
     {point(300, 0, 0, 1161.6), point(310, 0, 0, 968)}},
    {"two lines in a cell, and the line of a spreadsheet",
     "sep=;\n\"T\nin K\";\"Druck\n(kPa)\"\n300;33\n",
     TableDelimiter::semicolon,
     '.',
     "T p",
     "K|kPa",
     {point(300, 33)}},
    {"typed minus signs, gaps",
     "T [°C];p [kPa];rhoV\n\u221210,5;5,1;-\n\u20130,5;n/a;0,7\n",
     TableDelimiter::semicolon,
     ',',
     "T p rho(V)",
     "°C|kPa|kg/m^3",
     {point(262.65, 5.1), point(272.65, 0, 0.7)}},
    {"values alone, in the order of the list",
     "300\t33\n310\t50\n",
     TableDelimiter::tab,
     '.',
     "T p",
     "K|kPa",
     {point(300, 33), point(310, 50)}},
};

void expect_points(const TextImport& import, const std::vector<TpRhoPoint>& expected) {
    ASSERT_EQ(import.points.size(), expected.size()) << import.fault;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const TpRhoPoint &got = import.points[i], &want = expected[i];
        EXPECT_NEAR(got.T, want.T, 1e-10) << i;
        EXPECT_NEAR(got.p, want.p, 1e-12 * want.p) << i;
        EXPECT_FLOAT_EQ(got.rhoV, want.rhoV) << i;
        EXPECT_FLOAT_EQ(got.rhoL, want.rhoL) << i;
        EXPECT_FLOAT_EQ(got.HLV, want.HLV) << i;
        EXPECT_FLOAT_EQ(got.cp, want.cp) << i;
    }
}

TEST(TextImport, takes_tables_as_people_write_them) {
    for (const Text& t : texts) {
        SCOPED_TRACE(t.name);
        const TextImport import = read(t.text);
        EXPECT_EQ(import.fault, "");
        EXPECT_EQ(import.delimiter, t.delimiter);
        EXPECT_EQ(import.decimal, t.decimal);
        EXPECT_EQ(quantities(import), t.quantities);
        EXPECT_EQ(units(import), t.units);
        EXPECT_THAT(bad(import), IsEmpty());
        expect_points(import, t.points);
        for (const ImportColumn& column : import.columns) EXPECT_NE(column.reason, "");
    }
}

std::string utf16(std::string_view ascii_or_degree, bool little_endian) {
    std::string bytes = little_endian ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : utf8_from_1252(cp1252_from_utf8(ascii_or_degree).bytes) == ascii_or_degree
                            ? cp1252_from_utf8(ascii_or_degree).bytes
                            : std::string()) {
        bytes += little_endian ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return bytes;
}

TEST(TextImport, reads_every_encoding_and_line_end) {
    const std::string text = "T / °C;p / kPa\n20;24,7\n";
    struct Case {
        std::string bytes, encoding;
    };
    for (const Case& c : {Case{text, "UTF-8"},
                          {"\xEF\xBB\xBF" + text, "UTF-8"},
                          {cp1252_from_utf8(text).bytes, "Windows-1252"},
                          {utf16(text, true), "UTF-16"},
                          {utf16(text, false), "UTF-16"},
                          {"T / °C;p / kPa\r\n20;24,7", "UTF-8"},
                          {"T / °C;p / kPa\r20;24,7\r", "UTF-8"}}) {
        const TextImport import = read(c.bytes);
        EXPECT_EQ(import.encoding, c.encoding);
        expect_points(import, {point(293.15, 24.7)});
    }
    EXPECT_THAT(read(std::string("T;p\n1;\0", 7)).fault, HasSubstr("no text"));
}

TEST(TextImport, lists_each_bad_row_with_its_line) {
    const TextImport import = read(
        "T / °C;p / kPa\n"
        "20;24,7\n"
        "30;abc\n"
        "\n"
        "-300;1\n"
        "# sensor changed\n"
        "40;-5,5\n"
        ";50\n"
        "50;\n"
        "60;115;9\n"
        "70;1.5\n"
        "80;1e99\n"
        "90;300\n");
    EXPECT_THAT(bad(import),
                ElementsAre("3: p: \"abc\" is no number.",                                   //
                            "5: T must be above -273.15 °C; here it is \"-300\".",           //
                            "7: p must be above 0; here it is \"-5,5\".",                    //
                            "8: T is missing.",                                              //
                            "9: There is no value in this row.",                             //
                            "10: 3 cells in a table of 2 columns.",                          //
                            "11: p: \"1.5\" has the decimal sign \".\" in place of \",\".",  //
                            "12: p is too large; here it is \"1e99\"."));
    EXPECT_EQ(import_summary(import),
              "2 of 10 rows will be taken, 1 head line, 1 empty line, 1 comment line");
    expect_points(import, {point(293.15, 24.7), point(363.15, 300)});
    // The preview says the same of the same lines.
    ASSERT_EQ(import.preview.size(), 13u);
    EXPECT_EQ(import.preview[0].kind, ImportLine::Kind::head);
    EXPECT_EQ(import.preview[2].kind, ImportLine::Kind::bad);
    EXPECT_EQ(import.preview[2].column, 1);
    EXPECT_EQ(import.preview[3].kind, ImportLine::Kind::empty);
    EXPECT_EQ(import.preview[12].kind, ImportLine::Kind::good);
    // Infinite numbers and words for them are none.
    EXPECT_THAT(bad(read("T/K;p/kPa\n300;inf\n310;NaN\n320;1e400\n330;1\n")),
                ElementsAre("2: p: \"inf\" is no number.", "3: p: \"NaN\" is no number.",
                            "4: p: \"1e400\" is no number."));
    // Where blanks delimit, nobody knows which cell is missing.
    EXPECT_THAT(bad(read("T/K p/kPa rhoL\n300 33 780\n310 50\n")),
                ElementsAre("3: 2 cells in a table of 3 columns."));
}

TEST(TextImport, says_what_is_ambiguous_and_how_it_is_read) {
    struct Case {
        const char *text, *warning;
        double p;
    };
    for (const Case& c :
         {Case{"T/K;p/kPa\n300;1,234\n", "\"1,234\" may be 1.234 or 1234; it is read as 1.234.", 1.234},
          {"T/K;p/kPa\n300;1.234\n", "\"1.234\" may be 1.234 or 1234; it is read as 1.234.", 1.234},
          {"T/K;p/kPa\n300.5;1,234\n", "\"1,234\" is 1234.", 1234},
          {"T/K;p/kPa\n300,5;1.234\n", "\"1.234\" is 1234.", 1234},
          {"T;p/kPa\n300;5\n", "No unit is given for T: K is taken.", 5},
          {"300;5\n", "the columns are proposed as T, p,", 5},
          {"T/K;p/kPa;density\n300;5;780\n", "names no phase: rho(L) is proposed", 5}}) {
        const TextImport import = read(c.text);
        EXPECT_THAT(import.warnings, Contains(HasSubstr(c.warning))) << c.text;
        ASSERT_EQ(import.points.size(), 1u) << c.text;
        EXPECT_DOUBLE_EQ(import.points[0].p, c.p) << c.text;
    }
    // What is clear is not asked.
    for (const char* text : {"T/K;p/kPa\n300;1.234,5\n", "T/K;p/kPa\n300;1,5\n", "T/K;p/kPa\n300;0.125\n",
                             "T/K;p/kPa\n300;1e3\n", "T/K;p/kPa\n300,5;1,234\n"})
        EXPECT_THAT(read(text).warnings, IsEmpty()) << text;
    // Each row may be one number.
    ImportOptions xy{.target = ImportTarget::xy};
    EXPECT_THAT(read("1,5\n2,5\n", xy).warnings, Contains(HasSubstr("one number with a decimal comma")));
    // Degrees below 0 are no kelvins.
    const TextImport celsius = read("T;p/kPa\n-10;5\n300;6\n");
    EXPECT_EQ(units(celsius), "°C|kPa");
    EXPECT_THAT(celsius.warnings, Contains("No unit is given for T: °C is taken."));
}

TEST(TextImport, follows_the_corrections) {
    const std::string text = "a;b\n300;1,234\n310;2,5\n";
    ImportOptions options;
    options.decimal = '.';
    options.columns[0] = {ImportQuantity::T, "°C"};
    options.columns[1] = {ImportQuantity::p, "bar"};
    TextImport import = read(text, options);
    expect_points(import, {point(573.15, 123400)});
    EXPECT_THAT(bad(import), ElementsAre(HasSubstr("3: p: \"2,5\" has the decimal sign")));
    options.head_lines = 2;
    EXPECT_EQ(read(text, options).rows(), 1);
    options.head_lines = 0;
    EXPECT_THAT(bad(read(text, options)), Contains("1: T: \"a\" is no number."));
    options.delimiter = TableDelimiter::comma;
    EXPECT_EQ(read(text, options).delimiter, TableDelimiter::comma);

    struct Case {
        ColumnChoices columns;
        double M;
        const char* fault;
    };
    const ColumnChoice h{ImportQuantity::hLV, "kJ/kg"};
    for (const Case& c :
         {Case{{{0, {ImportQuantity::T, {}}}, {1, {ImportQuantity::T, {}}}}, M, "T is both"},
          {{{0, {ImportQuantity::skip, {}}}, {1, {ImportQuantity::skip, {}}}}, M, "No column"},
          {{{0, {ImportQuantity::T, {}}}, {1, h}}, -1, "needs the molar mass"},
          {{{0, {ImportQuantity::T, "bar"}}}, M, "T has no unit \"bar\""}}) {
        ImportOptions wrong;
        wrong.columns = c.columns;
        wrong.M = c.M;
        const TextImport refused = read("a;b\n300;500\n", wrong);
        EXPECT_THAT(refused.fault, HasSubstr(c.fault));
        EXPECT_FALSE(refused.can_be_taken());
        EXPECT_THAT(refused.points, IsEmpty());
    }
    for (const char* nothing : {"", "\n\n", "# only a comment\n", "T;p\nK;kPa\n", "words and words\n"})
        EXPECT_NE(read(nothing).fault, "") << nothing;
}

TEST(TextImport, makes_pairs) {
    ImportOptions xy{.target = ImportTarget::xy};
    const TextImport import = read("x;note;y\n0;a;1,5\n-2;b;-1e3\n3;c;\n4;d;1e39\n", xy);
    EXPECT_EQ(quantities(import), "x - y");
    ASSERT_EQ(import.xy.size(), 2u);
    EXPECT_EQ(import.xy[0], (XYPoint{0, 1.5f, 0}));
    EXPECT_EQ(import.xy[1], (XYPoint{-2, -1000, 0}));
    EXPECT_THAT(bad(import), ElementsAre("4: y is missing.", "5: y is too large."));
    EXPECT_EQ(quantities(read("Zeit Wert\n1 2\n3 4\n", xy)), "x y");
}

TEST(TextImport, is_taken_into_the_document) {
    const TextImport import = read("T/K;p/kPa\n300;33\n310;50\n");
    Document document;
    document.exp.points = SharedVector<TpRhoPoint>{point(1), point(290, 20)};
    document.exp.file.ExpFile = "/data/a.BAQ";
    document.calc.CurrentPoint = 1;
    Document longer = document, other = document;
    ASSERT_TRUE(take_import(longer, import, ImportTarget::data_points, false));
    EXPECT_THAT(longer.exp.points.list(),
                ElementsAre(point(1), point(290, 20), point(300, 33), point(310, 50)));
    EXPECT_TRUE(longer.exp.ExpGeaendert);
    EXPECT_EQ(longer.exp.file.ExpFile, "/data/a.BAQ");
    ASSERT_TRUE(take_import(other, import, ImportTarget::data_points, true));
    EXPECT_THAT(other.exp.points.list(), ElementsAre(point(1), point(300, 33), point(310, 50)));
    EXPECT_EQ(other.exp.file.ExpFile, "");
    EXPECT_EQ(other.calc.CurrentPoint, 0);
    Document same = document;
    EXPECT_FALSE(take_import(same, read("T\nabc\n"), ImportTarget::data_points, true));
    EXPECT_EQ(same, document);
}

// ---- Tables in any dialect, written and read back

struct Dialect {
    TableDelimiter delimiter;
    char decimal;
    bool quoted, groups, exponents;
};

std::string written(double x, const Dialect& dialect) {
    std::string text = dialect.exponents ? formatMask(x, "0.00000E+00") : formatMask(x, "0.0####");
    if (text.ends_with('.')) text += '0';
    const std::size_t sign = text.find('.');
    if (dialect.groups && !dialect.exponents) {
        for (std::size_t at = sign; at > 3; at -= 3) text.insert(at - 3, 1, '_');
    }
    for (char& c : text) {
        if (c == '.') c = dialect.decimal;
        if (c == '_') c = dialect.decimal == ',' ? '.' : ',';
    }
    return dialect.quoted ? '"' + text + '"' : text;
}

TEST(TextImport, reads_back_tables_in_any_dialect) {
    std::mt19937 random(20240501);
    const auto up_to = [&](int n) { return std::uniform_int_distribution<int>(0, n)(random); };
    constexpr TableDelimiter delimiters[] = {TableDelimiter::tab, TableDelimiter::semicolon,
                                             TableDelimiter::bar, TableDelimiter::comma,
                                             TableDelimiter::blanks};
    constexpr std::string_view heads[] = {
        "T/K", "p/kPa", "rho(V)/(kg/m^3)", "rho(L)/(kg/m^3)", "delta(LV)h/(kJ/kmol)", "cp/(kJ/(kmol K))"};
    for (int round = 0; round < 400; ++round) {
        Dialect dialect{delimiters[up_to(4)], up_to(1) ? ',' : '.', up_to(3) == 0, up_to(2) == 0,
                        up_to(3) == 0};
        if (dialect.delimiter == TableDelimiter::comma && (dialect.decimal == ',' || dialect.groups))
            dialect.quoted = true;
        std::vector<int> order = {0, 1, 2, 3, 4, 5};
        std::shuffle(order.begin(), order.end(), random);
        order.resize(static_cast<std::size_t>(2 + up_to(4)));
        if (std::ranges::find(order, 0) == order.end()) order[0] = 0;
        const std::string delimiter(
            static_cast<std::size_t>(dialect.delimiter == TableDelimiter::blanks ? 2 : 1),
            delimiter_sign(dialect.delimiter));
        std::string text;
        for (const int c : order) text += (text.empty() ? "" : delimiter) + '"' + std::string(heads[c]) + '"';
        text += '\n';
        std::vector<TpRhoPoint> expected;
        for (int row = 1 + up_to(20); row > 0; --row) {
            TpRhoPoint x;
            std::string line;
            for (const int c : order) {
                // Never three digits behind the decimal sign alone, which could be thousands.
                const double value = 0.5 + up_to(4'000'000) + 0.00025 * up_to(3);
                const std::string cell = written(value, dialect);
                line += (line.empty() ? "" : delimiter) + cell;
                const double kept = dialect.exponents ? Val(formatMask(value, "0.00000E+00")) : value;
                if (c == 0) x.T = kept;
                if (c == 1) x.p = kept;
                if (c == 2) x.rhoV = static_cast<float>(kept);
                if (c == 3) x.rhoL = static_cast<float>(kept);
                if (c == 4) x.HLV = static_cast<float>(kept);
                if (c == 5) x.cp = static_cast<float>(kept);
            }
            expected.push_back(x);
            text += line + (up_to(1) ? "\r\n" : "\n");
        }
        const TextImport import = read(text);
        ASSERT_EQ(import.fault, "") << text;
        ASSERT_TRUE(import.points == expected) << text << ::testing::PrintToString(import.warnings);
    }
}

// Time of the processor [s], whatever else runs on the machine.
double processor_time(const std::string& text, int& good_rows) {
    const std::clock_t begin = std::clock();
    good_rows = read(text).good_rows;
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST(TextImport, takes_hundred_thousand_rows_at_once) {
    std::string text = "T / °C;p / kPa;rhoL / (g/cm3);remark\n", bad_rows = text, open_quotes = text;
    for (int i = 0; i < 100'000; ++i) {
        text += std::to_string(20 + i % 100) + ",25;" + std::to_string(100 + i) + ",5;0,79;row\n";
        bad_rows += "a;b;c\n";
        open_quotes += "\"a;b\n";
    }
    int good_rows = 0;
    EXPECT_LT(processor_time(text, good_rows), 1.0);
    EXPECT_EQ(good_rows, 100'000);
    // One line of many cells, quotes that do not close, no line end at all: nothing takes longer.
    for (const std::string& hostile :
         {bad_rows, open_quotes, std::string(1'000'000, ','), std::string(1'000'000, '"'),
          std::string(1'000'000, '\n'), std::string(1'000'000, '1'), std::string(1'000'000, ' ')})
        EXPECT_LT(processor_time(hostile, good_rows), 1.0) << hostile.substr(0, 60);
}

}  // namespace
}  // namespace quom

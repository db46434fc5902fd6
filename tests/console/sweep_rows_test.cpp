// Tables as people and programs write them: bytes in, rows out.
#include "console/sweep_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <random>

#include "base/number_text.h"
#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

constexpr double M = 44;  // [kg/kmol]

// A source that gives at most `most` bytes a read.
TableInput::Read bytes_of(std::string_view& bytes, std::size_t most) {
    return [&bytes, most](char* into, std::size_t space) {
        const std::size_t n = std::min({space, most, bytes.size()});
        bytes.copy(into, n);
        bytes.remove_prefix(n);
        return static_cast<std::ptrdiff_t>(n);
    };
}

// "300 500 kept;cells", "-" of a blank row, "line 3: ..." of a malformed one.
std::string row_text(const SweepRows& rows, std::size_t i, std::size_t& faults) {
    const std::string kept = rows.kept[i].empty() ? "" : "<" + std::string(rows.kept[i]) + ">";
    for (const auto& column : rows.value) {
        EXPECT_EQ(column.size(), rows.size());
        EXPECT_TRUE(rows.kind[i] == RowKind::good || std::isnan(column[i]));
    }
    if (rows.kind[i] == RowKind::blank) return "-" + kept;
    if (rows.kind[i] == RowKind::malformed) return rows.faults[faults++] + kept;
    std::string text;
    for (const auto& column : rows.value) {
        if (!std::isnan(column[i])) text += (text.empty() ? "" : " ") + genNum(column[i]);
    }
    return text + kept;
}

// The head's fault alone, or the rows; behind them the input's fault.
Lines read_table(std::string_view bytes, Mode mode, const TableOptions& options, std::size_t read = 1 << 20,
                 std::size_t piece_bytes = 4096) {
    TableInput input(bytes_of(bytes, read), piece_bytes);
    const SweepHead head = read_sweep_head(input, mode, M, options);
    if (!head.fault.empty()) return {head.fault};
    Lines lines;
    std::string piece;
    for (std::uint64_t line = input.line(); input.next(piece); line = input.line()) {
        SweepRows rows;
        read_rows(piece, line, head, options, rows);
        EXPECT_EQ(line + rows.size(), input.line());
        std::size_t faults = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows.line[i], line + i);
            lines.push_back(row_text(rows, i, faults));
        }
        EXPECT_EQ(rows.faults.size(), faults);
    }
    if (!input.fault().empty()) lines.push_back(input.fault());
    return lines;
}

std::string utf16(std::u16string_view text, bool little) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        bytes += little ? low : high;
        bytes += little ? high : low;
    }
    return bytes;
}

struct Case {
    std::string bytes;
    Lines rows;
    TableOptions options{};
    Mode mode = Mode::T_p;
};

const TableOptions comma{.decimal = ','}, all{.keep = "all"};

// 20 °C = 68 °F = 293.15 K; 1 atm = 101.325 kPa; rho = M/v.
TEST(SweepTable, units_in_the_head_are_converted) {
    const Case cases[] = {
        {"T/C;p\n20;5\n", {"293.15 5"}},
        {"T/°C;p/bar\n20;5\n", {"293.15 500"}},
        {"T [°C];p (bar)\n20;5\n", {"293.15 500"}},
        {"\"T, °F\";p in MPa\n68;5\n", {"293.15 5000"}},
        {"T [\xB0"
         "C]\tp/[atm]\n20\t2\n",
         {"293.15 202.65"}},  // Windows-1252
        {"p(Pa),T K\n100000,300\n", {"300 100"}},
        {"T/K;p/psi\n300;1\n", {"300 6.89475729316836"}},
        {"T/C;p/kPa;T(nb)/K;p/furlong;T ambient\n20;5;1;2;3\n", {"293.15 5"}},
        {"T;rho/(g/cm^3)\n300;0.5\n", {"300 500"}, {}, Mode::T_rho},
        {"T;rho in mol/l\n300;2\n", {"300 88"}, {}, Mode::T_rho},
        {"T;v\n300;2\n", {"300 22"}, {}, Mode::T_rho},
        {"T;v [m^3/kg]\n300;0.5\n", {"300 2"}, {}, Mode::T_rho},
        {"T;v\n300;0\n", {"line 2: rho has no finite value in its own unit: \"0\""}, {}, Mode::T_rho},
        {"m [g];V/l;V(L);T\n500;2;7;300\n", {"300 0.5 0.002"}, {}, Mode::tank_global},
        // rho, then the phase of the mode, then volumes, then the other phase.
        {"T;v(V);rho(L);rho(V);rho\n300;1;2;3;4\n", {"300 4"}, {}, Mode::T_rho},
        {"T;v(V);rho(L);rho(V)\n300;1;2;3\n", {"300 3"}, {}, Mode::T_rho},
        {"T;v(V);rho(L);rho(V)\n300;1;2;3\n", {"300 2"}, {}, Mode::T_rhoL},
        {"T;v(V);rho(L)\n300;1;2\n", {"300 44"}, {}, Mode::T_rho},
        {"T;rho(L)\n300;2\n", {"300 2"}, {}, Mode::T_rho},
    };
    for (const Case& c : cases) EXPECT_EQ(read_table(c.bytes, c.mode, c.options), c.rows) << c.bytes;
}

TEST(SweepTable, heads_are_refused_with_the_reason) {
    struct Refusal {
        const char* line;
        const char* reason;
        TableOptions options{};
        Mode mode = Mode::T_p;
    };
    const Refusal cases[] = {
        {"T/furlong;p", "no column T that can be read: T has no unit \"furlong\"; it may be K"},
        {"T/C;p/T", "p has no unit \"T\""},
        {"T/;p", "T has no unit \"\""},
        {"T/C;T/K;p", "names T twice"},
        {"", "no column T, p; it reads \"\""},
        {"T,p", "with --decimal , the columns are delimited by ;", comma},
        {"300;5", "--columns has no column p", {.columns = "T"}},
        {"T;p;note", "no column \"id\"; there are \"T\", \"p\", \"note\"", {.keep = "note,id"}},
        {"\"T;p", "the quotes of \"T;p\" are not closed"},
    };
    for (const Refusal& c : cases)
        EXPECT_THAT(read_sweep_head(c.line, c.mode, M, c.options).fault, HasSubstr(c.reason)) << c.line;
    EXPECT_THAT(read_sweep_head("T;rho/(mol/l)", Mode::T_rho, 0, {}).fault, HasSubstr("molar mass"));
    EXPECT_THAT(read_table(utf16(u"T;p\n", true), Mode::T_p, {})[0], HasSubstr("UTF-16 with a mark"));
}

TEST(SweepTable, cells_and_numbers_as_programs_write_them) {
    const Case cases[] = {
        {"\"T\";\"p\";\"note\"\n\"300\";\"500\";\"a;\"\"b\"\n", {"300 500"}},
        {"T;p;\n300;500;\n300;500\n300;500;x\n300;500;;;\n", {"300 500", "300 500", "300 500", "300 500"}},
        {"T;p\n300;500;;;\n 300 ;\t+5e2\n3D2;.5E3\n", {"300 500", "300 500", "300 500"}},
        {"T;p\n\n300;500\n  \t\n;\n", {"-", "300 500", "-", "line 5: T is missing"}},
        {"T;p\n\"300\" ; \"500\"\n\"300;500\n\"300\"0;500\n",
         {"300 500", "line 3: column 1: quotes are not closed in the line",
          "line 4: column 1: characters stand behind the closing quote"}},
        {"T,p\n20,5,3,7\n", {"line 2: more columns than the head"}},
        {"x;T;p;y\n1;300\n1;2;3\n",
         {"line 2: only 2 of 4 columns; p is missing", "line 3: only 3 of 4 columns"}},
        {"T;p\n20,5;1\n1,200.5;1\n1 200;1\n1'200;1\n1e999;1\n+-5;1\n0x10;1\ninf;1\n1e;1\n",
         {"line 2: T is no number: \"20,5\" (decimal commas are read with --decimal ,)",
          "line 3: T is no number: \"1,200.5\" (thousands separators are not read)",
          "line 4: T is no number: \"1 200\" (thousands separators are not read)",
          "line 5: T is no number: \"1'200\" (thousands separators are not read)",
          "line 6: T is no number: \"1e999\"", "line 7: T is no number: \"+-5\"",
          "line 8: T is no number: \"0x10\"", "line 9: T is no number: \"inf\"",
          "line 10: T is no number: \"1e\""}},
        {"T;p\n20,5;+1e2\n20.5;1\n1.200,5;1\n1,2,3;1\n",
         {"20.5 100", "line 3: T is no number: \"20.5\" (the decimal sign is a comma)",
          "line 4: T is no number: \"1.200,5\" (thousands separators are not read)",
          "line 5: T is no number: \"1,2,3\""},
         comma},
        // No head: the first row shows the delimiter.
        {"20,5\n30,6\n", {"293.15 500", "303.15 600"}, {.columns = "T/C,p/bar"}},
        {"x\t20\t5\n", {"293.15 500"}, {.columns = ",T/C,p/bar"}},
        {"20,5;5\n", {"293.65 5"}, {.decimal = ',', .columns = "T/C,p"}},
    };
    for (const Case& c : cases) EXPECT_EQ(read_table(c.bytes, c.mode, c.options), c.rows) << c.bytes;
}

TEST(SweepTable, kept_cells_stay_cells) {
    const Case cases[] = {
        {"id;T;p\n7;300;500\n\nx\n",
         {"300 500<7;300;500>", "-<;;>",
          "line 4: only 1 of 3 columns; T is "
          "missing, p is missing<x;;>"},
         all},
        {"T;p;id;\n300;500; a ;\n", {"300 500<300;500; a >"}, all},
        {"id;T;p;note\n5\" pipe;300;500;\"a;b\"\n", {"300 500<\"5\"\" pipe\";\"a;b\">"}, {.keep = "note,id"}},
        {"T/C;p;a\n20;500;\"x\"\"\" \n", {"293.15 500<20;\"x\"\"\">"}, {.keep = "T,a"}},
        {"a;T;p\n\"open;300;500\n",
         {"line 2: column 1: quotes are not closed in the line<\"\"\"open;300;500\">"},
         {.keep = "a"}},
    };
    for (const Case& c : cases) EXPECT_EQ(read_table(c.bytes, c.mode, c.options), c.rows) << c.bytes;

    const std::vector<std::string> results{"line", "T/K", "p", "h(V)/(kJ/kg)"};
    const SweepHead head = read_sweep_head("line;\"a;\"\"b\";T/C;h;p [bar]", Mode::T_p, M, all);
    EXPECT_EQ(kept_names(head, results), "line (in);\"a;\"\"b\";T/C (in);h;p [bar] (in)");
    // Read back, the results are the values.
    const SweepHead back = read_sweep_head(kept_names(head, results) + ";T/K;p", Mode::T_p, M, {});
    EXPECT_EQ(back.fault, "");
    EXPECT_EQ(back.columns[2].field, -1);
    EXPECT_EQ(back.columns[5].field, field_T);
    EXPECT_EQ(back.columns[6].field, field_p);

    // Rows of several pieces: what points into kept_text moves with it.
    SweepRows rows;
    const std::string piece = "5\" a;b;300;500\n";
    const TableOptions ab{.keep = "a,b"};
    const SweepHead two = read_sweep_head("a;b;T;p", Mode::T_p, M, ab);
    for (int i = 0; i < 200; ++i) read_rows(piece, 2, two, ab, rows);
    EXPECT_EQ(rows.size(), 200u);
    for (const std::string_view kept : rows.kept) EXPECT_EQ(kept, "\"5\"\" a\";b");
}

// However a table is coded, ends its lines and comes in, its rows are the same.
TEST(SweepTable, any_bytes_in_any_pieces) {
    const Lines expected{"293.15 500<\xC3\xA4 1>", "-", "line 4: p is no number: \"x\"<\xE2\x82\xAC>",
                         "294.15 600<\"5\"\" \xF0\x9F\x98\x80\">"};
    const TableOptions note{.keep = "note"};
    const std::u16string lines[] = {u"T/°C;p/bar;note", u"20;5;ä 1", u"", u"1;x;€", u"21;6;5\" 😀"};
    const auto joined = [&](std::u16string_view end, bool last) {
        std::u16string text;
        for (const std::u16string& line : lines) text += line + std::u16string(end);
        if (!last) text.resize(text.size() - end.size());
        return text;
    };
    const auto utf8 = [](std::u16string_view text) {
        std::string bytes;  // through the reader of UTF-16 itself, which the cases below check
        std::string_view in;
        const std::string coded = "\xFF\xFE" + utf16(text, true);
        in = coded;
        TableInput input(bytes_of(in, 4096), 4096);
        for (std::string piece; input.next(piece);) bytes += piece;
        return bytes;
    };
    std::vector<std::string> tables;
    for (const std::u16string_view end : {u"\n", u"\r\n", u"\r"}) {
        for (const bool last : {true, false}) {
            const std::u16string text = joined(end, last);
            tables.push_back(utf8(text));
            tables.push_back("\xEF\xBB\xBF" + utf8(text));
            tables.push_back("\xFF\xFE" + utf16(text, true));
            tables.push_back("\xFE\xFF" + utf16(text, false));
        }
    }
    tables.push_back("T/°C;p/bar;note\r20;5;ä 1\n\r\n1;x;€\r\n21;6;5\" 😀\r");
    tables.push_back(
        "T/\xB0"
        "C;p/bar;note\n20;5;\xE4 1\n\n1;x;\x80\n21;6;5\" 😀\n");  // line by line
    for (const std::string& table : tables) {
        for (std::size_t read = 1; read <= table.size(); ++read)
            ASSERT_EQ(read_table(table, Mode::T_p, note, read, 64), expected) << table << read;
    }
}

TEST(SweepTable, ends_with_the_line_that_it_cannot_have) {
    const std::string long_line(64, '1');
    EXPECT_EQ(read_table("T;p\n1;2\n" + long_line + "\n3;4\n", Mode::T_p, {}, 1, 64),
              (Lines{"1 2", "line 3 is longer than 64 characters"}));
    EXPECT_EQ(read_table(long_line, Mode::T_p, {}, 100, 64), (Lines{"line 1 is longer than 64 characters"}));
    EXPECT_EQ(read_table("\xFF\xFE" + utf16(u"T;p\n1;2\n3", true) + "x", Mode::T_p, {}),
              (Lines{"1 2", "the table ends within a character"}));
    int reads = 0;
    const auto failing = [&reads](char* into, std::size_t) -> std::ptrdiff_t {
        if (++reads > 1) return -1;
        std::memcpy(into, "T;p\n1;2\n3;", 10);
        return 10;
    };
    TableInput input(failing, 4096);
    EXPECT_EQ(input.first_line(), "T;p");
    std::string piece;
    EXPECT_TRUE(input.next(piece));  // what is whole comes out, and before the next read
    EXPECT_EQ(piece, "1;2\n");
    EXPECT_EQ(reads, 1);
    EXPECT_FALSE(input.next(piece));
    EXPECT_EQ(input.fault(), "line 3 could not be read");
}

// Bytes from the signs that matter: every table is read to its end, and each row has one fate.
TEST(SweepTable, random_bytes_are_rows_or_refusals) {
    constexpr char signs[] =
        "\";,\t\r\n 01.eE+-TpxC/[(\xC3\xA4\xFF\xFE\xEF\xBB\xBF";  // its end, a NUL, is one too
    std::mt19937 random(7);
    const TableOptions kinds[] = {{}, comma, all, {.columns = "T,p,", .keep = "all"}};
    for (int i = 0; i < 10000; ++i) {
        std::string table = i % 3 ? "T;p;x\n" : "";
        for (auto n = random() % 80; n > 0; --n) table += signs[random() % sizeof signs];
        const TableOptions& options = kinds[random() % std::size(kinds)];
        const Lines at_once = read_table(table, Mode::T_p, options, 1 << 20, 128);
        ASSERT_EQ(read_table(table, Mode::T_p, options, 1 + random() % 9, 128), at_once) << table;
    }
}

// With every column passed through, the front of the output is the table again.
TEST(SweepTable, the_command_reads_and_keeps) {
    const std::string folder = ::testing::TempDir(), in = folder + "rows_in.csv",
                      out = folder + "rows_out.csv";
    std::ofstream(in, std::ios::binary) << "id;T [\xB0"
                                           "C];p/bar\r\"a;b\";20,5;5\r\rc;x;1\r";
    const CommandRun run = quomc(
        "sweep propane --mode 3 --strict --decimal , --keep id --line-numbers --in " + in + " --out " + out);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("line 4: T is no number"));
    std::ifstream file(out);
    Lines written;
    for (std::string line; std::getline(file, line);) written.push_back(line.substr(0, 17));
    EXPECT_EQ(written.at(0).substr(0, 8), "line;id;");
    EXPECT_EQ(written.at(1), "2;\"a;b\";293,65;50");
    EXPECT_EQ(written.at(2), "");
    EXPECT_EQ(written.at(3).substr(0, 5), "4;c;;");
}

}  // namespace
}  // namespace quom

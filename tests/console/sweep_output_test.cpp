// What a sweep writes: columns and units that were asked for, digits, binary tables, parts and chunks that
// are, put together, the bytes of the whole.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "base/code_page.h"
#include "base/files.h"
#include "console/shortest_number.h"
#include "console/sweep_manifest.h"
#include "console/sweep_source.h"
#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string grid = " --grid \"T=250:550:61~p=100:8000:79,log\"";

// The arguments with quotes of a shell, which the driver of the tests does not know.
CommandRun sweep(std::string line, const std::string& input = {}) {
    std::erase(line, '"');
    return quomc("sweep propane --mode 3 " + line, input);
}
std::string bytes_of(const std::string& path) { return read_file(path).bytes.value_or("no such file"); }

// A folder of its own for each test.
class SweepFiles : public ::testing::Test {
 protected:
    void SetUp() override {
        folder_ = ::testing::TempDir() + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
        std::string table = "T/C;p/bar\n";
        for (int i = 0; i < 10000; ++i)
            table += std::to_string(i % 250) + ";" + std::to_string(1 + i % 90) + (i % 40 ? "\n" : "\r\n");
        std::ofstream(file("in.csv"), std::ios::binary) << table;
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string file(const std::string& name) const { return folder_ + "/" + name; }

 private:
    std::string folder_;
};

// The text of std::to_chars for every double: random bits, sizes and whole numbers, and where its form turns.
TEST(ShortestNumber, is_what_the_standard_writes) {
    std::mt19937_64 random(20260713);
    std::uniform_real_distribution<> exponent(-7, 18), unit(-1, 1);
    char text[number_space], expected[64];
    int faults = 0;
    const auto check = [&](double x) {
        if (!std::isfinite(x) || faults > 10) return;
        const std::string_view is(text, static_cast<std::size_t>(write_shortest(x, text) - text));
        const std::string_view right(
            expected,
            static_cast<std::size_t>(std::to_chars(expected, expected + 64, x + 0.0).ptr - expected));
        if (is != right && ++faults) ADD_FAILURE() << is << " is not " << right;
    };
    for (int i = 0; i < 500000; ++i) {
        const double x = unit(random) * std::pow(10.0, exponent(random));
        const auto whole = static_cast<double>(static_cast<std::int64_t>(random() % 4000001) - 2000000);
        for (const double y : {x, std::round(x), std::bit_cast<double>(random()), whole,
                               static_cast<double>(static_cast<float>(x)),
                               whole * std::pow(10.0, static_cast<double>(i % 36) - 18.0)})
            check(y);
    }
    for (const double x : {0.0, -0.0, 5e-324, 1.7976931348623157e308, 9007199254740991.0, 9007199254740992.0,
                           1e15, 1e16, 123456789012345.6, 0.1 + 0.2})
        check(x);
}

// A value that cannot be is not taken for a missing one.
TEST(SweepOutput, tells_a_missing_value_from_one_that_cannot_be) {
    const CommandRun run =
        sweep("--results reason --in - --out -", "T/C;p/bar\n-300;5\n-273.15;5\n20;-1\n20;0\n");
    EXPECT_EQ(run.out, "reason\nT_not_positive\nno_T_given\np_not_positive\nno_p_given\n");
}

// Beyond the range of single precision a reason still names the number.
TEST(SweepOutput, a_reason_names_numbers_of_any_size) {
    const CommandRun run =
        quomc("sweep propane --mode 4 --results reason,message --in - --out -", "T\n1e300\n-1e-300\n4e2\n");
    EXPECT_THAT(run.out, HasSubstr("above_critical_T;1E+300 K is not below T(cr) = 369.89 K"));
    EXPECT_THAT(run.out, HasSubstr("above_critical_T;400 K is not below T(cr) = 369.89 K"));
}

// Units by definition: 0 C = 273.15 K, 1 bar = 100 kPa; h by mass is h/M, M = 44.097 kg/kmol.
TEST(SweepOutput, has_the_units_and_columns_that_were_asked_for) {
    const CommandRun own = sweep("--functions --in - --out -", "T;p\n300;500\n");
    EXPECT_THAT(own.out,
                StartsWith("T/K;p/kPa;phase;region;rho(V)/(kg/m^3);rho(L)/(kg/m^3);v(V)/(m^3/kmol)"));
    const CommandRun run =
        sweep("--results h_V,T,p,w_V,cp(V) --units h=kJ/kg,T=C,p=bar --in - --out -", "T/C;p/bar\n26.85;5\n");
    const std::vector<std::string_view> lines = split_lines(run.out);
    ASSERT_EQ(lines.size(), 2u) << run.err;
    EXPECT_EQ(lines[0], "h(V)/(kJ/kg);T/°C;p/bar;sound speed(V)/(m/s);cp(V)/(kJ/(kmol K));reason");
    const auto single = found("state propane --T 300 --p 500");
    std::vector<double> numbers;
    for (std::size_t at = 0; at < lines[1].size(); at = lines[1].find(';', at) + 1) {
        double x = 0;
        if (std::from_chars(lines[1].data() + at, lines[1].data() + lines[1].size(), x).ec == std::errc())
            numbers.push_back(x);
        if (lines[1].find(';', at) == std::string_view::npos) break;
    }
    ASSERT_EQ(numbers.size(), 5u) << lines[1];
    EXPECT_NEAR(numbers[0], at(single, "/functions/h_V") / 44.097, 1e-3 * std::fabs(numbers[0]));
    EXPECT_NEAR(numbers[1], 26.85, 1e-12);
    EXPECT_NEAR(numbers[2], 5.0, 1e-14);
    EXPECT_NEAR(numbers[3], at(single, "/functions/w_V"), 1e-9);
    EXPECT_NEAR(numbers[4], at(single, "/functions/cp_V"), 1e-9);

    EXPECT_EQ(sweep("--results h_X --in - --out -", "T;p\n").status, 2);
    EXPECT_THAT(sweep("--results h_X --in - --out -", "T;p\n").err, HasSubstr("h_V, s_V"));
    EXPECT_THAT(sweep("--units T=furlong --in - --out -", "T;p\n").err, HasSubstr("furlong"));
}

// The output is a table that can come in: T and p are found under their names, messages are quoted.
TEST(SweepOutput, reads_back_as_an_input) {
    const std::string table = "T;p\n300;500\n-3;500\nx;7\n300;2000\n";
    const CommandRun first = sweep("--units T=C,p=MPa --in - --out -", table);
    const CommandRun again = sweep("--units T=C,p=MPa --in - --out -", first.out);
    const std::vector<std::string_view> one = split_lines(first.out), two = split_lines(again.out);
    ASSERT_EQ(one.size(), 5u);
    ASSERT_EQ(two.size(), 5u);
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{4}}) EXPECT_EQ(one[i], two[i]);
    EXPECT_THAT(std::string(two[3]), HasSubstr("line 4"));
}

// Every N ranges follow one another without gap or overlap, on the edges of the unit.
TEST(SweepOutput, parts_cover_the_rows) {
    for (const std::uint64_t rows : {0ULL, 1ULL, 7ULL, 4096ULL, 4097ULL, 1000000ULL, 1ULL << 60}) {
        for (const std::uint64_t n : {1ULL, 2ULL, 3ULL, 40ULL, 999ULL}) {
            for (const std::uint64_t unit : {1ULL, 4096ULL}) {
                std::uint64_t next = 1;
                for (std::uint64_t k = 1; k <= n; ++k) {
                    const RowRange range = shard_of(rows, k, n, unit);
                    ASSERT_EQ(range.first, next) << rows << " " << n << " " << k;
                    ASSERT_LE(range.last + 1 - range.first, rows / n + unit + 1);
                    ASSERT_TRUE(range.last == rows || range.last % unit == 0);
                    next = range.last + 1;
                }
                ASSERT_EQ(next, rows + 1);
            }
        }
    }
}

TEST_F(SweepFiles, of_parts_are_the_whole) {
    const std::string table = " --in " + file("in.csv");
    struct Case {
        std::string rows, format;
    };
    for (const Case& c :
         {Case{grid, "csv"}, Case{table, "csv"}, Case{table + " --keep all --line-numbers", "csv"},
          Case{grid, "bin"}, Case{table + " --line-numbers", "bin"}}) {
        const std::string line = "--format " + c.format + " --functions" + c.rows;
        const CommandRun whole = sweep(line + " --jobs 1 --out -");
        ASSERT_EQ(whole.status, 0) << whole.err;
        EXPECT_TRUE(sweep(line + " --jobs 3 --out -").out == whole.out) << line;
        for (const int n : {1, 2, 7}) {
            std::string together;
            for (int k = 1; k <= n; ++k) {
                const CommandRun part =
                    sweep(line + " --jobs 2 --out - --shard " + std::to_string(k) + "/" + std::to_string(n));
                EXPECT_EQ(part.status, 0) << part.err;
                together += part.out;
            }
            EXPECT_TRUE(together == whole.out) << line << " in " << n;
        }
    }
    EXPECT_EQ(sweep("--shard 3/2 --out -" + grid).status, 2);
    EXPECT_EQ(sweep("--shard 0/2 --out -" + grid).status, 2);
    EXPECT_THAT(sweep("--shard 1/2 --out - --in -", "T;p\n").err, HasSubstr("needs a table in a file"));
    EXPECT_EQ(sweep("--out - --in -" + grid).status, 2);
}

// Read as the documentation says, the binary table has the numbers of the text.
TEST_F(SweepFiles, in_doubles_are_those_in_text) {
    const std::string rows = " --functions --in " + file("in.csv");
    const CommandRun text = sweep(rows + " --out -"), binary = sweep(rows + " --format bin --out -");
    const std::size_t head_size = binary.out.find('\n') + 1;
    ASSERT_EQ(head_size % 8, 0u);
    const auto head = nlohmann::json::parse(binary.out.substr(0, head_size));
    ASSERT_EQ(head["rows"], 10000);
    const std::size_t columns = head["names"].size(), chunk = head["chunk_rows"], n = head["rows"];
    ASSERT_EQ(binary.out.size(), head_size + 8 * columns * n);
    const auto value = [&](std::size_t column, std::size_t row) {
        const std::size_t first = row / chunk * chunk, count = std::min(chunk, n - first);
        double x = 0;
        std::memcpy(&x, binary.out.data() + head_size + 8 * (first * columns + column * count + row - first),
                    8);
        return x;
    };
    const std::vector<std::string_view> lines = split_lines(text.out);
    for (const std::size_t row : {0, 1, 4095, 4096, 8191, 8192, 9999}) {
        std::string_view rest = lines[row + 1];
        for (std::size_t c = 0; c < columns; ++c) {
            const std::string cell(rest.substr(0, rest.find(';')));
            rest.remove_prefix(std::min(rest.size(), cell.size() + 1));
            const std::string name = head["names"][c];
            const double x = value(c, row);
            if (name == "phase" || name == "reason") {
                EXPECT_EQ(head[name][static_cast<std::size_t>(x)], cell);
            } else if (name == "warnings") {
                EXPECT_EQ(x == 0.0, cell.empty());
            } else if (cell.empty()) {
                EXPECT_TRUE(std::isnan(x)) << name;
            } else {
                EXPECT_EQ(std::strtod(cell.c_str(), nullptr), x) << name;
            }
        }
    }
}

std::string chunks_of(const std::string& out) {
    std::string together;
    for (std::uint64_t k = 1; std::filesystem::exists(chunk_name(out, k)); ++k)
        together += bytes_of(chunk_name(out, k));
    return together;
}

// Whatever is lost of chunks and manifest is calculated again, and nothing else.
TEST_F(SweepFiles, go_on_behind_the_chunks_that_are_whole) {
    const std::string out = file("out.csv"), rows = " --in " + file("in.csv");
    const std::string line = rows + " --chunk 1500 --jobs 2 --out " + out;
    const std::string whole = sweep(rows + " --out -").out;
    ASSERT_EQ(sweep(line).status, 0);
    EXPECT_TRUE(chunks_of(out) == whole);
    EXPECT_TRUE(std::filesystem::exists(chunk_name(out, 7)));
    EXPECT_EQ(sweep(line).status, 3) << "the manifest is there";
    const std::string manifest = bytes_of(manifest_name(out));
    const auto cut_manifest = [&](std::size_t size) {
        std::ofstream(manifest_name(out), std::ios::binary) << manifest.substr(0, size);
    };
    const auto untouched = [&] { return std::filesystem::last_write_time(chunk_name(out, 1)); };
    const auto time = untouched();

    std::filesystem::remove(chunk_name(out, 5));
    EXPECT_EQ(sweep(line + " --resume").status, 0);
    EXPECT_TRUE(chunks_of(out) == whole);
    std::filesystem::resize_file(chunk_name(out, 3), 1000);
    EXPECT_EQ(sweep(line + " --resume").status, 0);
    EXPECT_TRUE(chunks_of(out) == whole);
    for (const std::size_t lost : {std::size_t{5}, std::size_t{30}, std::size_t{400}}) {
        cut_manifest(manifest.size() - lost);
        EXPECT_EQ(sweep(line + " --resume").status, 0) << lost;
        EXPECT_TRUE(chunks_of(out) == whole) << lost;
        EXPECT_EQ(bytes_of(manifest_name(out)), manifest);
    }
    EXPECT_EQ(untouched(), time);
    EXPECT_THAT(sweep(line + " --resume").err, HasSubstr("nothing to do"));

    EXPECT_THAT(sweep(line + " --resume --functions").err, HasSubstr("other settings: columns"));
    EXPECT_THAT(sweep(line + " --resume --eos 5").err, HasSubstr("other settings: models"));
    std::ofstream(file("in.csv"), std::ios::app) << "1;1\n";
    EXPECT_THAT(sweep(line + " --resume").err, HasSubstr("is not the one"));
    std::string changed = bytes_of(file("in.csv"));
    changed[12] = '7';
    std::ofstream(file("in.csv"), std::ios::binary) << changed;
    cut_manifest(manifest.size() - 400);
    EXPECT_THAT(sweep(line + " --resume").err, HasSubstr("are not those of before"));
    EXPECT_EQ(sweep("--resume --out " + out + grid).status, 2);
}

TEST_F(SweepFiles, of_grids_and_parts_go_on_too) {
    const std::string out = file("out.bin"), line = "--format bin --functions" + grid;
    std::string together;
    for (const std::string shard : {"1/2", "2/2"}) {
        const std::string part = out + shard.substr(0, 1);
        const std::string chunks = line + " --shard " + shard + " --chunk 4096 --out " + part;
        ASSERT_EQ(sweep(chunks).status, 0);
        std::filesystem::remove(chunk_name(part, 1));
        EXPECT_EQ(sweep(chunks + " --resume").status, 0);
        together += chunks_of(part);
    }
    EXPECT_TRUE(together == sweep(line + " --out -").out);
    EXPECT_EQ(sweep(line + " --chunk 1000 --out " + out).status, 2);
}

}  // namespace
}  // namespace quom

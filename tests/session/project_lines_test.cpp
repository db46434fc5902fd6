#include "session/project_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "base/files.h"
#include "base/number_text.h"
#include "engine/models.h"
#include "substance/substance_support.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// What tests/data/ethanol.QC6 holds, line by line.
ProjectFile ethanol() {
    return {.date = "22.11.2026",
            .comment = "Prüfung, 5 µm – Reihe \"B\"",
            .database_path = "C:\\QUOM\\DATEN\\two_substances.q07",
            .exp_file = "Messwerte.BAQ",
            .ExpAnzahl = 12,
            .CAS = "64-17-5",
            .TcrStart = 300.5,
            .pcrStart = 101.325,
            .vcrStart = 0.168,
            .uFactor = 0.0217063919322713,
            .VolumeMode = 1,
            .EnergyMode = 3,
            .chkCurveTpRestricted = false,
            .Dens = 250,
            .SepCSV = ',',
            .EVPKode = 6,
            .EOSKode = 5,
            .cpKode = 2,
            .HLVKode = 4,
            .nWat = 0.38f,
            .Konzept = false,
            .RefKode = 1,
            .hOffset = -1234.5,
            .sOffset = 0.00025,
            .TRef0 = 273.15f,
            .pRef0 = 101.325f,
            .TEnv = 288.15,
            .pEnv = 98.0665,
            .ProcessForm = 3,
            .optFitFunction = 2,
            .ParSpeichern = true};
}

// The golden file with a line, counted from 1, replaced by others.
std::string with_line(std::size_t line, const std::string& text, const std::string& end = "\r\n") {
    std::string bytes;
    std::size_t n = 0;
    const std::string file = test::bytes_of(test::golden("ethanol.QC6"));
    for (const std::string_view each : split_lines(file)) {
        bytes += ++n == line ? text : std::string(each);
        bytes += end;
    }
    return bytes;
}
std::string lines_up_to(std::size_t last) {
    std::string bytes;
    const std::string file = test::bytes_of(test::golden("ethanol.QC6"));
    const std::vector<std::string_view> lines = split_lines(file);
    for (std::size_t i = 0; i < last; ++i) bytes += std::string(lines[i]) + "\r\n";
    return bytes;
}

ProjectFile read_good(const std::string& bytes) {
    const ReadProject read = read_project(bytes, "x.QC6");
    EXPECT_EQ(read.fault, "");
    EXPECT_THAT(read.replaced, IsEmpty());
    return read.project.value_or(ProjectFile{});
}

TEST(ProjectLines, the_hand_made_file_is_read_and_written_byte_by_byte) {
    const std::string bytes = test::bytes_of(test::golden("ethanol.QC6"));
    EXPECT_EQ(read_good(bytes), ethanol());
    EXPECT_EQ(ethanol().database_kind(), 7);
    const Encoded written = project_bytes(ethanol());
    EXPECT_EQ(written.bytes, bytes);
    EXPECT_EQ(written.replaced, 0u);
}

TEST(ProjectLines, other_forms_of_the_same_values) {
    const ProjectFile project = ethanol();
    EXPECT_EQ(read_good(with_line(0, "", "\n")), project);
    std::string no_end = test::bytes_of(test::golden("ethanol.QC6"));
    no_end.resize(no_end.size() - 2);
    EXPECT_EQ(read_good(no_end), project);
    EXPECT_EQ(read_good(lines_up_to(31)), project);  // the reserved values are dropped anyway
    EXPECT_EQ(read_good(no_end + "\r\n\r\n\x1a"), project);
    const std::pair<std::size_t, const char*> forms[] = {
        {5, "12"},      {7, "  3.005E+02 "}, {9, "0.168"},      {10, ".0217063919322713"},
        {13, "False"},  {13, "#FALSE#"},     {15, "  \",\"  "}, {16, " 6 "},
        {20, "0.3800"}, {31, "#TRUE#"},      {31, "True"},      {34, "1"},
        {6, "64-17-5"}, {21, " 0 "},         {23, "-1.2345E3"}, {26, "101.3250"},
    };
    for (const auto& [line, text] : forms)
        EXPECT_EQ(read_good(with_line(line, text)), project) << line << text;
    // Fields may share a line.
    std::string joined = lines_up_to(7);
    joined.resize(joined.size() - 2);
    EXPECT_EQ(
        read_good(joined + ", " + test::bytes_of(test::golden("ethanol.QC6")).substr(joined.size() + 2)),
        project);
}

TEST(ProjectLines, text_lines_keep_commas_and_blanks) {
    EXPECT_EQ(read_good(with_line(2, "a, \"b\", c")).comment, "a, \"b\", c");
    EXPECT_EQ(read_good(with_line(2, "<>")).comment, "<>");
    EXPECT_EQ(read_good(with_line(1, "anything, 12")).date, "anything, 12");
    EXPECT_EQ(read_good(with_line(3, "/data, old/x.q06  ")).database_kind(), 6);
    const ProjectFile no_data = read_good(with_line(4, ""));
    EXPECT_EQ(no_data.exp_file, "");
    EXPECT_EQ(no_data.ExpAnzahl, 0);  // the count of no file is dropped
    EXPECT_EQ(read_good(with_line(6, "            ")).CAS, "");
    for (const auto& [text, sign] : {std::pair{"\"\t\"", '\t'}, {"\"\"", ';'}, {"", ';'}, {"\";\"", ';'}})
        EXPECT_EQ(read_good(with_line(15, text)).SepCSV, sign) << text;
}

TEST(ProjectLines, values_that_cannot_be_are_replaced_and_named) {
    struct Case {
        std::size_t line;
        const char* text;
        std::function<double(const ProjectFile&)> value;
        double taken;
    };
    const auto of = [](auto member) {
        return [member](const ProjectFile& p) { return static_cast<double>(p.*member); };
    };
    const Case cases[] = {
        {7, "-1", of(&ProjectFile::TcrStart), 0},        {8, "1E+39", of(&ProjectFile::pcrStart), 0},
        {11, "3", of(&ProjectFile::VolumeMode), 0},      {12, "4", of(&ProjectFile::EnergyMode), 0},
        {12, "-1", of(&ProjectFile::EnergyMode), 0},     {13, "1", of(&ProjectFile::chkCurveTpRestricted), 0},
        {14, "0", of(&ProjectFile::Dens), 500},          {14, "40000", of(&ProjectFile::Dens), 500},
        {15, "\"x\"", of(&ProjectFile::SepCSV), ';'},    {16, "9", of(&ProjectFile::EVPKode), 0},
        {17, "1", of(&ProjectFile::EOSKode), 0},         {17, "9", of(&ProjectFile::EOSKode), 0},
        {17, "17", of(&ProjectFile::EOSKode), 0},        {17, "-2", of(&ProjectFile::EOSKode), 0},
        {18, "3", of(&ProjectFile::cpKode), 0},          {19, "8", of(&ProjectFile::HLVKode), 0},
        {20, "0", of(&ProjectFile::nWat), 0.38f},        {20, "10", of(&ProjectFile::nWat), 0.38f},
        {22, "3", of(&ProjectFile::RefKode), 1},         {25, "0", of(&ProjectFile::TRef0), 298.15f},
        {25, "1E-50", of(&ProjectFile::TRef0), 298.15f}, {26, "-5", of(&ProjectFile::pRef0), 0},
        {27, "-1", of(&ProjectFile::TEnv), 298.15},      {28, "-1", of(&ProjectFile::pEnv), 101.325},
        {29, "-3", of(&ProjectFile::ProcessForm), 0},    {30, "6", of(&ProjectFile::optFitFunction), 1},
        {30, "0", of(&ProjectFile::optFitFunction), 1},
    };
    for (const Case& c : cases) {
        const ReadProject read = read_project(with_line(c.line, c.text), "x.QC6");
        ASSERT_TRUE(read.project) << c.line << " " << c.text << read.fault;
        EXPECT_EQ(c.value(*read.project), c.taken) << c.line << " " << c.text;
        ASSERT_EQ(read.replaced.size(), 1u) << c.line << " " << c.text;
        EXPECT_EQ(read.replaced[0].line, static_cast<int>(c.line));
    }
    const ReadProject read = read_project(with_line(14, "0"), "x.QC6");
    EXPECT_EQ(replaced_text(read.replaced.at(0)), "line 14 (Dens): 0 is not possible, 500 is taken");
    // "No equation" comes back as the ideal gas; all other codes as they are.
    for (const int code : {-1, 0, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16})
        EXPECT_EQ(read_good(with_line(17, std::to_string(code))).EOSKode, std::max(code, 0));
}

TEST(ProjectLines, what_is_no_project_is_refused_with_file_and_line) {
    const auto fault = [](const std::string& bytes) {
        const ReadProject read = read_project(bytes, "x.QC6");
        EXPECT_FALSE(read.project);
        EXPECT_THAT(read.replaced, IsEmpty());
        return read.fault;
    };
    EXPECT_EQ(fault(""), "Cannot read \"x.QC6\": it ends before line 1 (date); a project has 34 lines");
    EXPECT_EQ(fault(lines_up_to(5)),
              "Cannot read \"x.QC6\": it ends before line 6 (CAS number); a project has 34 lines");
    EXPECT_EQ(fault(lines_up_to(30)),
              "Cannot read \"x.QC6\": it ends before line 31 (ParSpeichern); a project has 34 lines");
    EXPECT_EQ(fault(with_line(17, "Soave")),
              "Cannot read \"x.QC6\": line 17 (EOSKode) is \"Soave\", not a number");
    EXPECT_THAT(fault(with_line(17, "")), HasSubstr("line 17 (EOSKode) is \"\""));
    EXPECT_THAT(fault(with_line(23, "1E+999")), HasSubstr("line 23 (hOffset)"));
    EXPECT_THAT(fault(with_line(5, std::string(100000, 'x'))), HasSubstr("line 5 (number of points)"));
    EXPECT_LT(fault(with_line(5, std::string(100000, 'x'))).size(), 200u);
    EXPECT_THAT(fault(with_line(3, std::string("a\0b.q07", 7))), HasSubstr("line 3 (database)"));
    // A decimal comma would shift every value behind it by one.
    EXPECT_THAT(fault(with_line(20, "0,38")), HasSubstr("decimal numbers need a point"));
    EXPECT_THAT(fault(with_line(34, "0\r\n7")), HasSubstr("line 35 has \"7\""));
}

TEST(ProjectLines, line_ends_and_foreign_letters_in_texts_break_no_line) {
    ProjectFile project = ethanol();
    project.comment = "one\r\ntwo ≤ 水";
    const Encoded written = project_bytes(project);
    EXPECT_EQ(written.replaced, 2u);
    EXPECT_EQ(read_good(written.bytes).comment, "one  two ? ?");
}

TEST(ProjectLines, tags_of_vapor_pressure_equations_are_those_of_the_codes) {
    const std::string tags = "ALP.AHP.FRO.WAG.AUG.KFW.KFR.THO";
    for (std::size_t n = 1; n <= 8; ++n)
        EXPECT_EQ(evp_info(evp_of(static_cast<int>(n))).tag, tags.substr(4 * n - 4, 3)) << n;
}

// Values that a line holds: singles of up to 6 digits, doubles of up to 15.
class Random {
 public:
    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    double decimal(int digits, int low_exponent, int high_exponent) {
        std::string text = std::to_string(whole(1, 9)) + ".";
        for (int i = 1; i < digits; ++i) text += static_cast<char>('0' + whole(0, 9));
        return Val(text + "E" + std::to_string(whole(low_exponent, high_exponent)));
    }
    // A start value is written as the single that it is nearest to.
    double start() {
        if (whole(0, 3) == 0) return 0.0;
        for (;;) {
            const double x = decimal(6, -6, 6);
            if (Val(writeNum(static_cast<float>(x))) == x) return x;
        }
    }
    double offset() { return whole(0, 3) == 0 ? 0.0 : (whole(0, 1) ? 1 : -1) * decimal(15, -12, 12); }
    std::string text(bool with_comma) {
        static const std::vector<std::string> letters = {"a", "Z", "0",  " ", "ä", "Ö",  "ß", "µ",
                                                         "€", "–", "\"", "'", ";", "\\", "/", "<>"};
        std::string text = "x";
        for (int i = whole(0, 30); i > 0; --i)
            text += letters[static_cast<std::size_t>(whole(0, static_cast<int>(letters.size()) - 1))];
        if (with_comma) text += ",\tz";
        return text + "7";
    }
    template <class T>
    T one_of(std::initializer_list<T> list) {
        return list.begin()[whole(0, static_cast<int>(list.size()) - 1)];
    }
    ProjectFile project();

 private:
    std::mt19937 engine_{20261122};
};

ProjectFile Random::project() {
    ProjectFile p;
    p.date = text(true);
    p.comment = text(true);
    p.database_path = text(false);
    p.exp_file = whole(0, 1) ? text(false) : "";
    p.ExpAnzahl = p.exp_file.empty() ? 0 : whole(0, 200000);
    p.CAS = std::to_string(whole(1, 9999999)) + "-" + std::to_string(whole(10, 99));
    p.TcrStart = start();
    p.pcrStart = start();
    p.vcrStart = start();
    p.uFactor = decimal(15, -6, 0);
    p.VolumeMode = whole(0, 2);
    p.EnergyMode = whole(0, 3);
    p.chkCurveTpRestricted = whole(0, 1) != 0;
    p.Dens = whole(1, 32767);
    p.SepCSV = one_of({';', ',', '\t'});
    p.EVPKode = whole(0, 8);
    p.EOSKode = one_of({0, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16});
    p.cpKode = whole(0, 2);
    p.HLVKode = whole(0, 7);
    p.nWat = static_cast<float>(decimal(6, -3, 0));
    p.Konzept = whole(0, 1) != 0;
    p.RefKode = one_of({1, 2, 10});
    p.hOffset = offset();
    p.sOffset = offset();
    p.TRef0 = static_cast<float>(decimal(6, 0, 3));
    p.pRef0 = static_cast<float>(start());
    p.TEnv = decimal(15, 0, 3);
    p.pEnv = decimal(15, -3, 5);
    p.ProcessForm = whole(0, 8);
    p.optFitFunction = whole(1, 5);
    p.ParSpeichern = whole(0, 1) != 0;
    return p;
}

TEST(ProjectLines, every_value_survives_the_file) {
    Random random;
    for (int i = 0; i < 3000; ++i) {
        const ProjectFile project = random.project();
        const Encoded written = project_bytes(project);
        ASSERT_EQ(written.replaced, 0u) << project.comment;
        const ReadProject read = read_project(written.bytes, "random");
        ASSERT_TRUE(read.project) << read.fault;
        ASSERT_EQ(*read.project, project) << written.bytes;
        ASSERT_THAT(read.replaced, IsEmpty());
        ASSERT_EQ(split_lines(written.bytes).size(), 34u);
        ASSERT_EQ(project_bytes(*read.project).bytes, written.bytes);
    }
}

}  // namespace
}  // namespace quom

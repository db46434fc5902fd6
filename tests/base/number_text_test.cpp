#include "base/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace quom {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(NumberText, short_form_of_a_single) {
    const struct {
        float x;
        const char* text;
    } cases[] = {{0.0f, "0"},
                 {-0.0f, "0"},
                 {0.5f, ".5"},
                 {-5.0f, "-5"},
                 {8.31451f, "8.31451"},
                 {1234567.0f, "1234567"},
                 {9999999.0f, "9999999"},
                 {1e7f, "1E+07"},
                 {12345678.0f, "1.234568E+07"},
                 {9.9999999e6f, "1E+07"},   // the single nearest to it is 10000000
                 {999999.95f, "999999.9"},  // the single is 999999.9375
                 {1e-7f, ".0000001"},
                 {1.5e-7f, "1.5E-07"},
                 {0.001234567f, "1.234567E-03"},
                 {0.0123456f, ".0123456"},
                 {0.1f, ".1"},
                 {1e-37f, "1E-37"},
                 {-3.402823466e38f, "-3.402823E+38"},
                 {1e-45f, "1.401298E-45"}};  // the smallest single
    for (const auto& c : cases) EXPECT_EQ(writeNum(c.x), c.text);
}

TEST(NumberText, form_with_chosen_digits) {
    const struct {
        double x;
        int digits;
        const char* text;
    } cases[] = {{0.0, 7, "0"},
                 {-0.0, 7, "0"},
                 {100.0, 7, "100"},
                 {3122.209487, 7, "3122.209"},
                 {3122.209487, 5, "3122.2"},
                 {-13671.62, 5, "-13672"},
                 {123456.7, 5, "123460"},
                 {0.001, 7, "0.001"},
                 {0.00099999, 7, "9.9999E-04"},
                 {0.00099999, 3, "0.001"},  // as it is rounded
                 {8.633932e-4, 7, "8.633932E-04"},
                 {999999.0, 7, "999999"},
                 {999999.96, 7, "1E+06"},
                 {-1.25e6, 7, "-1.25E+06"},
                 {1.0 / 3.0, 15, "0.333333333333333"},
                 {0.1 + 0.2, 15, "0.3"},
                 {2.5e-100, 10, "2.5E-100"},
                 {kInf, 7, "(Error)"},
                 {1.25, 0, "1"},
                 {1.0 / 3.0, 99, "0.333333333333333"}};
    for (const auto& c : cases) EXPECT_EQ(digitsNum(c.x, c.digits), c.text) << c.x;
}

TEST(NumberText, short_form_of_a_double) {
    const struct {
        double x;
        const char* text;
    } cases[] = {{0.0, "0"},
                 {-0.0, "0"},
                 {1.0 / 3.0, ".333333333333333"},
                 {2.0 / 3.0, ".666666666666667"},
                 {0.1 + 0.2, ".3"},
                 {101.325, "101.325"},
                 {-273.15, "-273.15"},
                 {123456789012345.0, "123456789012345"},
                 {999999999999999.0, "999999999999999"},
                 {999999999999999.9, "1E+15"},
                 {1e15, "1E+15"},
                 {6.02e23, "6.02E+23"},
                 {1e-15, ".000000000000001"},
                 {1.25e-15, "1.25E-15"},
                 {1e-16, "1E-16"},
                 {1e30, "1E+30"},
                 {-1.5e-100, "-1.5E-100"},
                 {1e308, "1E+308"},
                 {static_cast<double>(0.1f), ".100000001490116"}};
    for (const auto& c : cases) EXPECT_EQ(writeNum(c.x), c.text);
}

TEST(NumberText, forms_of_the_callers) {
    const struct {
        double x;
        const char *str, *print, *write, *gen;
    } cases[] = {{0.0, " 0", " 0 ", "0", "0"},
                 {-0.0, " 0", " 0 ", "0", "0"},
                 {0.5, " .5", " .5 ", ".5", "0.5"},
                 {-0.5, "-.5", "-.5 ", "-.5", "-0.5"},
                 {-5.0, "-5", "-5 ", "-5", "-5"},
                 {1e20, " 1E+20", " 1E+20 ", "1E+20", "1E+20"},
                 {-1e-20, "-1E-20", "-1E-20 ", "-1E-20", "-1E-20"},
                 {kInf, "(Error)", "(Error) ", "(Error)", "(Error)"},
                 {-kInf, "(Error)", "(Error) ", "(Error)", "(Error)"},
                 {kNaN, "(Error)", "(Error) ", "(Error)", "(Error)"}};
    for (const auto& c : cases) {
        EXPECT_EQ(strNum(c.x), c.str);
        EXPECT_EQ(printNum(c.x), c.print);
        EXPECT_EQ(writeNum(c.x), c.write);
        EXPECT_EQ(genNum(c.x), c.gen);
    }
    EXPECT_EQ(writeNum(true), "-1");
    EXPECT_EQ(writeNum(false), "0");
    EXPECT_EQ(printNum(17), " 17 ");
    EXPECT_EQ(genNum(0.1f), "0.1");
    EXPECT_EQ(exactNum(0.1), "0.1");
    EXPECT_EQ(exactNum(kNaN), "(Error)");
}

TEST(NumberText, masks) {
    const struct {
        double x;
        const char *mask, *text;
    } cases[] = {
        // the point of the mask stays, "#" only where it is significant
        {300.0, "####.##", "300."},
        {0.0, "####.##", "."},
        {0.5, "####.##", ".5"},
        {0.2, "####.0", ".2"},
        {0.05, "#####.00", ".05"},
        {0.5, "#####.000", ".500"},
        {0.125, "##0.00", "0.13"},
        {1.0, "0.0#######", "1.0"},
        {1.25, "0.0#######", "1.25"},
        {1234567.8906, "####0.000", "1234567.891"},
        {7.0, "000", "007"},
        {0.4, "#", ""},
        {1e20, "0.0", "100000000000000000000.0"},
        // half away from zero on the decimal value, not on the binary one
        {0.005, "0.00", "0.01"},
        {1.005, "0.00", "1.01"},
        {2.675, "0.00", "2.68"},
        {-1.005, "0.00", "-1.01"},
        {2.5, "0", "3"},
        {0.5, "0", "1"},
        {0.49999999999999994, "0", "1"},  // 15 digits: 0.5
        {99.995, "##0.00", "100.00"},
        {9.995, "0.00", "10.00"},
        {0.0049, "0.00", "0.00"},
        // no minus before zeros only
        {-0.001, "0.00", "0.00"},
        {-0.0, "0.00", "0.00"},
        {-0.001, "0.00;-0.00", "0.00"},
        {-0.004, "0.0;(0.0);none", "none"},
        // sections, literals
        {-2.5, "0.00", "-2.50"},
        {-2.5, "0.0;(0.0)", "(2.5)"},
        {0.0, "0.0;-0.0;zero", "zero"},
        {2.5, " 0.0;-0.0", " 2.5"},
        {300.15, "###0.000 K", "300.150 K"},
        {101.325, "######0.000 kPa", "101.325 kPa"},
        {0.0246, "#0.0000# m^3/kmol", "0.0246 m^3/kmol"},
        {99.5, "0.0### %", "99.5 %"},
        {-5.0, "x = 0.0", "-x = 5.0"},
        {-1.0, "0;;", "-1"},
        // exponent masks
        {0.0, "0.0000E+00", "0.0000E+00"},
        {1234.5, "0.0000E+00", "1.2345E+03"},
        {-1234.5, " 0.0000E+00;-0.0000E+00", "-1.2345E+03"},
        {1234.5, " 0.0000E+00;-0.0000E+00", " 1.2345E+03"},
        {1.25e-5, "0.0E+00", "1.3E-05"},
        {9.99999995, "0.0000000E+00", "1.0000000E+01"},
        {1.5e-120, "0.0E+00", "1.5E-120"},
        {190.564, ".00000000E+00", "1.90564000E+02"},
        {123.45678, ".0000000E+00", "1.2345678E+02"},
        {-0.5, ".0000000E+00", "-5.0000000E-01"},
        // what is no number, and no mask
        {kNaN, "0.00", "(Error)"},
        {kInf, "0.0E+00", "(Error)"},
        {0.5, "", "0.5"},
    };
    for (const auto& c : cases) EXPECT_EQ(formatMask(c.x, c.mask), c.text) << c.x << " by " << c.mask;
}

TEST(NumberText, Val_takes_the_longest_leading_number) {
    const struct {
        const char* text;
        double x;
    } cases[] = {{"", 0.0},          {"   ", 0.0},        {"<>", 0.0},    {"7440-59-7", 7440.0},
                 {"  12.5 K", 12.5}, {"-.5", -0.5},       {"+3", 3.0},    {"+-3", 0.0},
                 {"5.", 5.0},        {".", 0.0},          {"-", 0.0},     {"E5", 0.0},
                 {".E5", 0.0},       {"1E", 1.0},         {"1E+", 1.0},   {"1.E2", 100.0},
                 {"1D+5", 1e5},      {"2.5d-3x", 2.5e-3}, {"1e+07", 1e7}, {"1,5", 1.0},
                 {"1.2.3", 1.2},     {"nan", 0.0},        {"inf", 0.0},   {"0x10", 0.0},
                 {"1E400", 0.0},     {"-1E999", 0.0},     {"1E-400", 0.0}};
    for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.x) << c.text;

    EXPECT_EQ(read_number(" 1D+5 "), 1e5);
    for (const char* text : {"", " ", "12 K", "7440-59-7", "1E400", "1 2", "-"})
        EXPECT_FALSE(read_number(text));
}

TEST(NumberText, whole_numbers_are_half_to_even) {
    const struct {
        double x, whole;
        std::int16_t i16;
        std::int32_t i32;
    } cases[] = {{0.5, 0, 0, 0},
                 {1.5, 2, 2, 2},
                 {2.5, 2, 2, 2},
                 {-0.5, 0, 0, 0},
                 {-1.5, -2, -2, -2},
                 {32767.5, 32768, 0, 32768},
                 {32767.4, 32767, 32767, 32767},
                 {-32768.5, -32768, -32768, -32768},
                 {-32769, -32769, 0, -32769},
                 {2147483647.4, 2147483647, 0, 2147483647},
                 {2147483647.5, 2147483648, 0, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(round_half_even(c.x), c.whole);
        EXPECT_EQ(to_i16(c.x), c.i16);
        EXPECT_EQ(to_i32(c.x), c.i32);
    }
    EXPECT_EQ(to_i16(kNaN), 0);
    EXPECT_EQ(to_i32(kInf), 0);
}

// Every form, read back, is the value to its digits, whatever the size of the number.
TEST(NumberText, forms_read_back) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0), exponent(-30.0, 30.0);
    for (int i = 0; i < 20000; ++i) {
        const double x = mantissa(random) * std::pow(10.0, exponent(random));
        const float f = static_cast<float>(x);
        for (const std::string& text : {strNum(x), printNum(x), writeNum(x), genNum(x)}) {
            ASSERT_NEAR(Val(text), x, std::fabs(x) * 1e-14) << text;
        }
        ASSERT_NEAR(Val(genNum(f)), f, std::fabs(f) * 0.51e-6) << genNum(f);
        ASSERT_NEAR(Val(formatMask(x, "0.0000000E+00")), x, std::fabs(x) * 0.51e-7);
        ASSERT_NEAR(Val(formatMask(x, "###0.000")), x, 0.0005000001 + std::fabs(x) * 1e-14);
        ASSERT_EQ(Val(exactNum(x)), x);
    }
}

// A volume of 2.6E+39 m^3/kmol is a number, though no float holds it.
TEST(NumberText, singles_beyond_the_range_of_floats) {
    EXPECT_EQ(genSingle(0.1), "0.1");
    EXPECT_EQ(strSingle(1.0 / 3.0), " .3333333");
    EXPECT_EQ(genSingle(2.5876543219e39), "2.587654E+39");
    EXPECT_EQ(genSingle(-6.9620191e-39), "-6.962019E-39");
    EXPECT_EQ(strSingle(0.0), strNum(0.0f));
    EXPECT_EQ(genSingle(1e-50), genNum(1e-50));
    EXPECT_EQ(genSingle(HUGE_VAL), "(Error)");
}

}  // namespace
}  // namespace quom

// The result list to the character: what stands at which column, what is left out, the means.
#include "report/lst_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "base/files.h"
#include "forms/sample_session.h"
#include "session/batch_run.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::HasSubstr;
using ::testing::Not;

BatchResult result(const char* phase, float T, float p, float rhoV, float rhoL, float hLV) {
    BatchResult r{.TCalc = T, .pCalc = p, .rhoVCalc = rhoV, .rhoLCalc = rhoL, .hLVCalc = hLV};
    r.Phase = {phase[0], phase[1], phase[2]};
    r.state = PointState::done;
    return r;
}

// Three points of mode 4, the second without a result.
struct ThreePoints {
    std::vector<TpRhoPoint> points = {{},
                                      {.T = 300, .p = 500, .rhoV = 10.5F, .rhoL = 590, .HLV = 21000},
                                      {.T = 400, .p = 600},
                                      {.T = 310, .p = 10}};
    std::vector<BatchResult> results = {
        {}, result("V+L", 300, 505, 10.75F, 580.5F, 21100), {}, result(" V ", 310, 62, 1.25F, 0, 20000)};
    ResultList list() const {
        return {.date = "2026-11-22",
                .substance = "Propane",
                .title = " T => p(LV) (GLOBAL calculation)",
                .model = "CEOS Peng / Robinson (GLOBAL concept)",
                .evp = "Wagner",
                .batch_file = "points.BAQ",
                .mode = Mode::equilibrium_T,
                .M = 44.0956,
                .points = points,
                .results = results};
    }
};

std::string with_crlf(std::string_view lines) {
    std::string text;
    for (const char c : lines) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return text;
}

// The line of the means breaks behind 13 blanks at column 9; two bare line feeds stand in the last line.
TEST(ResultFile, golden_bytes) {
    const std::string expected = with_crlf(
                                     R"(                                                          2026-11-22
                   QUOM Results of Calculation

  Substance            : Propane
  Calculation          :  T => p(LV) (GLOBAL calculation)
                         Enthalpy of Vaporization (using EOS)
  model                : CEOS Peng / Robinson (GLOBAL concept)
  Number of Data Sets  :  3 
  Name of Batchfile    : points.BAQ
======================================================================
#       T(exp)     p(exp)      rhoV(exp)     rhoL(exp)    delta(LV)h(exp)
  phase T(calc)    p(calc)     rhoV(calc)    rhoL(calc)   delta(LV)h(calc)
        delta T    delta p     delta rhoV    delta rhoL   delta(LV)h
----------------------------------------------------------------------
          K         kPa           kg/m^3        kg/m^3      kJ/kmol
======================================================================
1        300        500         10.5          590           21000 
   V+L   300        505         10.75         580.5         21100 
                    5           .25          -9.5           100 
                   (1. %)      (2.38 %)      (-1.61 %)     (.48 %)
----------------------------------------------------------------------
3        310        10          0             0             0 
    V    310        62          1.25                        20000 
                    52 
                   (dev.> 500%!)
======================================================================
arithmet. mean of ABS(%-deviations):
                     
                    260.5 %     2.38 %        1.61 %        .48 %
)") + "\n\n\r\n";
    const ThreePoints three;
    EXPECT_EQ(result_file_bytes(three.list()), expected);
}

TEST(ResultFile, lines_of_the_head) {
    const ThreePoints three;
    const auto with = [&three](auto edit) {
        ResultList list = three.list();
        edit(list);
        return result_file_bytes(list);
    };
    const std::string benson = "\r\n                         (BENSON's method)\r\n",
                      evp = "\r\n  Vapor Pressure Equation Wagner\r\n";
    std::string text = with([](ResultList& l) { l.GlobalCalc = false; });
    EXPECT_THAT(text, HasSubstr(benson));
    EXPECT_THAT(text, HasSubstr(evp));
    EXPECT_THAT(text, HasSubstr("\r\n  model                : "));
    text = with([](ResultList& l) { l.has_eos = false; });
    EXPECT_THAT(text, HasSubstr(evp));
    EXPECT_THAT(text, Not(HasSubstr("model   ")));
    text = with([](ResultList& l) {
        l.mode = Mode::T_p;
        l.batch_file.clear();
        l.substance = "\xC3\xB6l \xE2\x82\xAC \xCE\xB1";  // ö, €, and α, which the code page has not
    });
    EXPECT_THAT(text, Not(HasSubstr("BENSON")));
    EXPECT_THAT(text, Not(HasSubstr("Enthalpy of Vap")));
    EXPECT_THAT(text, Not(HasSubstr("Batchfile")));
    EXPECT_THAT(text, HasSubstr(": \xF6l \x80 ?\r\n"));
}

// A value that is too long for its column drives the next one to the next line.
TEST(TabLine, a_passed_column_is_on_the_next_line) {
    TabLine line("|");
    line.at(3, "abc").at(6, "d").at(5, "e").put("f").at(7, "g").end();
    EXPECT_EQ(line.text(), "  abcd|    efg|");
}

TEST(ResultFile, deviations_at_the_limit_and_means_without_points) {
    std::vector<TpRhoPoint> points(2);
    std::vector<BatchResult> results(2);
    const auto line_below = [&](float measured, float calculated) {
        points[1] = {.T = 300, .p = static_cast<double>(measured)};
        results[1] = result(" V ", 300, calculated, 0, 0, 0);
        const std::string text =
            result_file_bytes({.date = "", .mode = Mode::T_rho, .points = points, .results = results});
        const std::size_t at = text.find("\r\n                   (");
        return at == std::string::npos ? "" : text.substr(at + 21, text.find("\r\n", at + 21) - at - 21);
    };
    EXPECT_EQ(line_below(10, 59.5F), "(495. %)");
    EXPECT_EQ(line_below(10, 60), "(dev.> 500%!)");
    EXPECT_EQ(line_below(1000, 1), "(-99.9 %)");
    EXPECT_EQ(line_below(1000, 1000.03F), "(. %)");
    EXPECT_EQ(line_below(1000, 1000), "");
    EXPECT_EQ(line_below(0, 1000), "");
    // No mean at all: 13 blanks at each column, which pass the next one twice.
    const std::string text =
        result_file_bytes({.date = "", .mode = Mode::T_rho, .points = points, .results = results});
    const std::string b13(13, ' ');
    EXPECT_THAT(text, ::testing::EndsWith("deviations):\r\n        " + b13 + "\r\n                   " + b13 +
                                          "\r\n                               " + b13 + " " + b13 + " " +
                                          b13 + "\r\n\n\n\r\n"));
}

TEST(ResultFile, section_of_functions) {
    ThreePoints three;
    for (std::size_t row = 0; row < ExtendedRows; ++row)
        three.results[1].Extended[row] = {.L = static_cast<float>(row) + 0.5F,
                                          .V = -static_cast<float>(row) - 1.0F};
    three.results[3].Extended[7].V = 1e-7F;
    ResultList list = three.list();
    list.WithFunctions = true;
    const std::string bytes = result_file_bytes(list);
    const std::size_t at = bytes.find("\n\n\r\n\n\n\n\r\n");
    ASSERT_NE(at, std::string::npos);
    const std::string line70(70, '-');
    const std::string expected = with_crlf(R"(T -, p -, v - derivatives and thermodynamic functions
)" + std::string(53, '\xC4') + R"(

----------------------------------------------------------------------
                         L-phase                   V-phase
----------------------------------------------------------------------
for data set 1
T/K = 300        p/kPa = 505       v/m^3/kmol = 4.101916 
     (dp/dV) at T:    .5                       -1 
     (dp/dT) at v:    1.5                      -2 
     (dV/dp) at T:    2.5                      -3 
     (dV/dT) at p:    3.5                      -4 
     (dT/dV) at p:    4.5                      -5 
     (dT/dp) at v:    5.5                      -6 
           d2p/dV2:   9.5                      -10 
           d2V/dT2:   12.5                     -13 
           d2T/dV2:   13.5                     -14 
----------------------------------------------------------------------
     (dT/dp) at H:    21.5                     -22 
     cp/kJ/kmol/K :   23.5                     -24 
     cv/kJ/kmol/K :   22.5                     -23 
        dln phi/dT:   15.5                     -16 
      d2ln phi/dT2:   16.5                     -17 
       (s-s_idG)/R:   17.5                     -18 
       (h-h_idG)/R:   18.5                     -19 
       (g-g_idG)/R:   19.5                     -20 
     (cp-cp_idG)/R:   20.5                     -21 
----------------------------------------------------------------------
     alpha/(1/K)  :   6.5                      -7 
       chi/(1/kPa):   7.5                      -8 
      beta/(1/K)  :   8.5                      -9 
for data set 3
)");
    const std::string section = bytes.substr(at + 9);
    EXPECT_EQ(section.substr(0, expected.size()), expected);
    // 44.0956/10.75 = 4.10191..., 44.0956/1.25 = 35.27648; the third point has only its V-phase.
    EXPECT_THAT(section, HasSubstr("T/K = 310        p/kPa = 62        v/m^3/kmol = 35.27648 \r\n"));
    EXPECT_THAT(section, HasSubstr("       chi/(1/kPa):                             .0000001 \r\n"));
    EXPECT_THAT(section, Not(HasSubstr("ln (phi")));
    EXPECT_THAT(section, Not(HasSubstr("data set 2")));
}

// Mode 8 ends behind its rows: no means, no functions.
TEST(ResultFile, functions_of_mode_8) {
    ThreePoints three;
    three.results.resize(2);
    three.results[1].h = -1520.25F;
    three.results[1].s = 12.5F;
    three.results[1].eU = 0.5F;
    ResultList list = three.list();
    list.mode = Mode::functions;
    list.WithFunctions = true;
    EXPECT_THAT(result_file_bytes(list),
                ::testing::EndsWith(with_crlf(
                    R"(1        300        500         10.5          590           21000 
   V+L

         Enthalpy        h/kJ/kmol     =-1520.25 
         Entropy         s/kJ/(kmol*K) = 12.5 
         Gibbs Enthalpy  g/kJ/kmol     = 0 
         Exergy of H     e/kJ/kmol     = 0 
         Exergy of U     e/kJ/kmol     = .5 
)")));
}

TEST(ResultPrint, words_and_columns_of_the_printer) {
    ThreePoints three;
    three.results[1].Extended[9].L = 2;
    ResultList list = three.list();
    list.WithFunctions = true;
    const std::string text = result_print_text(list);
    const auto line = [&text](std::size_t n) { return std::string(split_lines(text).at(n)); };
    EXPECT_EQ(line(1), std::string(31, ' ') + "QUOM: Results of Calculation");
    EXPECT_EQ(line(3), "            Substance                 : Propane");
    EXPECT_EQ(line(5), std::string(41, ' ') + "Enthalpy of Vaporization del(LV)h calc. using EOS");
    EXPECT_EQ(line(9), std::string(9, ' ') + std::string(70, 'X'));
    EXPECT_EQ(line(10),
              "         No.      T(exp)     p(exp)      rhoV(exp)       rhoL(exp)    delta(LV)h(exp)");
    EXPECT_EQ(line(14), "                    K         kPa           kg/m^3        kg/m^3      kJ/kmol");
    EXPECT_THAT(text, HasSubstr("arithmetic mean of ABS(%-deviations):\n"));
    EXPECT_THAT(text, HasSubstr("d2p/dV\xC2\xB2:"));
    EXPECT_THAT(text, Not(HasSubstr("=====")));
}

TEST(ResultFilePath, follows_the_name) {
    EXPECT_EQ(result_file_path("list", "/data"), "/data/list.LST");
    EXPECT_EQ(result_file_path("list.txt", "/data"), "/data/list.txt");
    EXPECT_EQ(result_file_path("longername", "/data"), "/data/longername");
    EXPECT_EQ(result_file_path("/other/list.LST", "/data"), "/other/list.LST");
    EXPECT_EQ(result_file_path("lpt1:", "/data"), "");
}

// A number of a list as the tests write it: seven digits, no zero before the point, a blank on both sides;
// with an exponent where it would take more than seven decimals.
std::string listed(double x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6e", std::fabs(x));
    std::string digits = {text[0]};
    digits.append(text + 2, 6);
    const int exponent = std::atoi(text + 9);
    while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
    const int decimals = std::max(0, static_cast<int>(digits.size()) - 1 - exponent);
    std::string number;
    if (decimals > 7) {
        std::snprintf(text, sizeof text, "E-%02d", -exponent);
        number = digits.substr(0, 1) + "." + digits.substr(1) + text;
    } else {
        std::snprintf(text, sizeof text, "%.*f", decimals, std::fabs(x));
        number = text;
        if (number.starts_with("0.")) number.erase(0, 1);
    }
    return (x < 0 ? "-" : " ") + number + " ";
}
std::string at_columns(std::vector<std::pair<std::size_t, std::string>> items) {
    std::string line;
    for (const auto& [column, item] : items) {
        line.resize(column - 1, ' ');
        line += item;
    }
    return line + "\r\n";
}

struct ModeCase {
    int mode;
    TpRhoPoint point;
    const char* phase;
};
// Propane at states whose digits make plain numbers; what is measured differs from what is calculated.
const ModeCase mode_cases[] = {
    {1, {.T = 300, .p = 480, .rhoV = 9.5F}, " V "}, {2, {.T = 300, .p = 2000, .rhoL = 515}, " L "},
    {3, {.T = 300, .p = 500, .rhoV = 9.7F}, " V "}, {4, {.T = 300, .p = 990, .rhoV = 21, .rhoL = 490}, "V+L"},
    {5, {.T = 301, .p = 1000, .rhoL = 490}, "V+L"}, {6, {.T = 300, .HLV = 15000}, "V+L"},
    {7, {.p = 1000, .HLV = 15000}, "V+L"},          {13, {.T = 301, .p = 500, .rhoV = 9.7F}, " V "},
};

// Every line of a point from the numbers of a single calculation.
TEST(ResultFile, points_of_each_mode) {
    for (const ModeCase& c : mode_cases) {
        SCOPED_TRACE(c.mode);
        Session session = sample::propane();
        change(session, [&c](Document& d) {
            d.calc.CalcMode = mode_of(c.mode);
            d.exp.points.edit().push_back(c.point);
        });
        const BatchJob job = batch_job(session);
        ASSERT_TRUE(keep_results(session, job, run_batch(job, nullptr)));
        const Outcome single = CalcBatch(*session.fluid, state_input(session.document, 1));
        ASSERT_TRUE(single.has_result());
        const auto as_single = [](double x) { return static_cast<double>(static_cast<float>(x)); };
        const bool told_V = std::string_view(c.phase) != " L ", told_L = std::string_view(c.phase) != " V ";
        const double calculated[] = {as_single(single.T.value_or(0)), as_single(single.p.value_or(0)),
                                     told_V && single.V ? as_single(single.V->rho.value_or(0)) : 0.0,
                                     told_L && single.L ? as_single(single.L->rho.value_or(0)) : 0.0,
                                     c.mode >= 4 && c.mode <= 7 ? single.vaporization->hLV.value_or(0) : 0.0};
        const double measured[] = {c.point.T, c.point.p, static_cast<double>(c.point.rhoV),
                                   static_cast<double>(c.point.rhoL), static_cast<double>(c.point.HLV)};
        const std::size_t columns[] = {9, 20, 32, 46, 60};
        std::vector<std::pair<std::size_t, std::string>> lines[4] = {{{1, "1"}}, {{4, c.phase}}, {}, {}};
        for (int q = 0; q < 5; ++q) {
            lines[0].push_back({columns[q], listed(measured[q])});
            if (calculated[q] == 0.0) continue;
            lines[1].push_back({columns[q], listed(calculated[q])});
            const double difference = calculated[q] - as_single(measured[q]);
            if (measured[q] == 0.0 || difference == 0.0) continue;
            lines[2].push_back({columns[q], listed(difference)});
            char percent[32];
            std::snprintf(percent, sizeof percent, "%.2f", difference / as_single(measured[q]) * 100.0);
            std::string digits = percent;
            while (digits.back() == '0') digits.pop_back();
            if (const std::size_t zero = digits.find("0."); zero == 0 || (zero == 1 && digits[0] == '-'))
                digits.erase(zero, 1);
            lines[3].push_back({columns[q], "(" + digits + " %)"});
        }
        std::string expected;
        for (auto& line : lines) expected += at_columns(std::move(line));
        const std::string text = result_file_bytes(result_list_of(session, "2026-11-22"));
        EXPECT_THAT(text, HasSubstr("=\r\n" + expected + std::string(70, '=')));
    }
}

}  // namespace
}  // namespace quom

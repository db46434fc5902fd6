// The texts of every mode against golden files: tests/golden/calc_NN.txt holds the cases of mode NN, each
// headed by
// "=== name". Words are compared letter by letter, numbers to 1e-5 of their value.
#include <cctype>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "base/number_text.h"
#include "calc/calc_batch.h"
#include "calc/calc_fixture.h"
#include "calc/calc_titles.h"

namespace quom::test {
namespace {

struct TextCase {
    int mode;
    const char* name;
    double T, p, rho;
    std::function<void(Bench&)> prepare;
    std::string_view cas = propane;
};

void partial(Bench& b) { b.s.calc.GlobalCalc = false, b.s.calc.RhoLWanted = true; }
void partial_database(Bench& b) { partial(b), b.s.calc.BensonRhoL = false; }
void benson_reference(Bench& b) {
    b.s.benson = {.TRefL = 231.04f, .pLVRef = 101.3f, .rhoLRef = 581.0f, .rhoVRef = 2.4f};
}
void partial_benson(Bench& b) { partial(b), benson_reference(b); }
void functions(Bench& b) { b.s.calc.ShowFunctions = true; }
void extended(Bench& b) { b.s.calc.ExtLevel = 4; }
void specific(Bench& b) { b.specific_units(); }
void virial(Bench& b) { b.set_eos(15); }
std::function<void(Bench&)> tank(float m, float V, float T, bool global = true) {
    return [=](Bench& b) {
        b.s.calc.tank = {.m = m, .V = V, .T = T};
        b.s.calc.GlobalCalc = global;
        benson_reference(b);
    };
}
std::function<void(Bench&)> hlv(int code) {
    return [=](Bench& b) { b.s.models.HLVKode = code, benson_reference(b); };
}

// What each case proves stands behind it.
const std::vector<TextCase> cases = {
    {1, "two-phase", 300, 0, 100, nullptr},  // fraction, mixture block, enthalpy block, both columns
    {1, "two-phase, specific", 300, 0, 100, specific},     // units and factors of all of these
    {1, "vapor", 300, 0, 10, nullptr},                     // one column, no mixture
    {1, "above T(cr), below p(cr)", 400, 0, 20, nullptr},  // head of region 3
    {1, "supercritical", 400, 0, 200, nullptr},            // head of region 2
    {1, "virial", 300, 0, 5, virial},                      // p with unit, B instead of A to D
    {1, "below the covolume", 300, 0, 2000, nullptr},      // red message
    {2, "liquid", 300, 0, 500, nullptr},                   // L column alone, region 0
    {2, "compressed liquid", 300, 0, 540, nullptr},        // head of region 1
    {2, "refused", 300, 0, 0, nullptr},
    {3, "vapor", 300, 500, 0, nullptr},
    {3, "liquid", 300, 2000, 0, nullptr},
    {3, "low pressure", 300, 0.001, 0, nullptr},  // single-precision forms
    {3, "supercritical", 400, 6000, 0, nullptr},  // both columns identical
    {3, "near the critical point", 369.93, 4251.2, 0, nullptr},
    {3, "virial", 300, 500, 0, virial},
    {3, "assumed equilibrium", 300, 998, 0, [](Bench& b) { partial_benson(b), b.s.calc.VLEAssumed = true; }},
    {3, "functions", 300, 500, 0, functions},
    {3, "extended", 300, 500, 0, extended},
    {3, "refused", 300, 0, 0, nullptr},
    {4, "global", 300, 0, 0, nullptr},
    {4, "partial, Benson", 300, 0, 0, partial_benson},
    {4, "partial, database", 300, 0, 0, partial_database},
    {4, "partial, data set", 300, 990, 0, [](Bench& b) { partial(b), b.s.models.EVPKode = 0; }},
    {4, "global without a cubic concept", 300, 0, 0, [](Bench& b) { b.s.models.Konzept = false; }},
    {4, "above T(cr)", 400, 0, 0, nullptr},
    {5, "global", 0, 1000, 0, nullptr},
    {5, "partial, database", 0, 1000, 0, partial_database},
    {5, "above p(cr)", 0, 5000, 0, nullptr},
    {6, "EOS", 300, 0, 0, hlv(hlv_eos)},
    {6, "equation", 300, 0, 0, hlv(hlv_equation)},
    {6, "compressibility, Benson", 300, 0, 0, hlv(hlv_evp_benson)},
    {6, "above T(cr)", 400, 0, 0, nullptr},
    {7, "EOS", 0, 1000, 0, hlv(hlv_eos)},
    {7, "Watson, specific", 0, 1000, 0, [](Bench& b) { hlv(hlv_watson)(b), specific(b); }},
    {8, "vapor", 300, 500, 0, nullptr},
    {8, "supercritical", 400, 6000, 0, nullptr},
    {8, "liquid, specific", 300, 2000, 0, specific},
    {8, "refused", 0, 500, 0, nullptr},
    {9, "two-phase", 0, 0, 0, tank(10, 0.1f, 300)},
    {9, "full of liquid", 0, 0, 0, tank(52, 0.1f, 300)},
    {9, "below the covolume", 0, 0, 0, tank(300, 0.1f, 300)},
    {10, "two-phase", 0, 0, 0, tank(10, 0.1f, 300, false)},
    {10, "full of liquid", 0, 0, 0, tank(52, 0.1f, 300, false)},
    {11, "comparison", 300, 0, 0, nullptr},
    {12, "process", 0, 0, 0, [](Bench& b) { b.s.calc.ProcessT = 300, b.s.calc.ProcessP = 500; }},
    {13, "two-phase", 0, 1000, 100, nullptr},
    {13, "above T(cr)", 0, 500, 5, nullptr},
    {14, "rho(L)", 300, 0, 0, nullptr},
    {15, "delta(LV)h", 300, 0, 0, nullptr},
    {15, "delta(LV)h, specific", 300, 0, 0, specific},
    {16, "cp(idG)", 300, 0, 0, nullptr},
    {17, "cp(L)", 300, 0, 0, nullptr, water},
    {18, "cp(S)", 250, 0, 0, nullptr, water},
    {19, "Frost/Kalkwarf", 373.15, 0, 0, nullptr, water},
    {20, "Wagner", 373.15, 0, 0, nullptr, water},
    {21, "Antoine, low p", 300, 0, 0, nullptr, water},
    {22, "Antoine, high p", 450, 0, 0, nullptr, water},
    {23, "empty", 300, 0, 0, nullptr},
    {24, "rho(S)", 250, 0, 0, nullptr, water},
};

void add_text(std::string& out, const char* name, const ViewText& view) {
    if (view.text.empty() || !view.visible) return;
    out += std::string(name) + ": [" + view.text + "]";
    if (view.colour != colour_black) out += view.colour == colour_red ? " red" : " region";
    out += "\n";
}

std::string render(const TextCase& c) {
    Bench b(c.cas);
    if (c.prepare) c.prepare(b);
    const CalcBatchResult r = b.run(c.mode, c.T, c.p, c.rho);
    std::string out = CalcCaption(b.s, c.mode) + "\n";
    add_text(out, "par1", r.view.par1);
    add_text(out, "par2", r.view.par2);
    add_text(out, "co1", r.view.co1);
    add_text(out, "txtco2", r.view.txtco2);
    add_text(out, "lblLphase", r.view.lblLphase);
    add_text(out, "lblVphase", r.view.lblVphase);
    add_text(out, "lblGleich", r.view.lblGleich);
    add_text(out, "Bezeichnung2", r.view.Bezeichnung2);
    for (const Message& m : b.listener.asked) out += "box: [" + m.title + "] " + m.text + "\n";
    if (!r.Text.empty()) out += "Text: " + r.Text + "\n";
    if (r.view.Liste.colour == colour_red) out += "red list:\n";
    out += r.view.Liste.text;
    return out;
}

std::map<std::string, std::string> golden_cases(int mode) {
    std::string name = "/golden/calc_" + std::to_string(mode) + ".txt";
    std::ifstream file(QUOM_TEST_DATA + name);
    EXPECT_TRUE(file.good()) << name;
    std::map<std::string, std::string> found;
    std::string line, current;
    while (std::getline(file, line)) {
        if (line.starts_with("=== ")) {
            current = line.substr(4);
        } else {
            found[current] += line + "\n";
        }
    }
    return found;
}

// The next number at a place where one starts, else none: a digit or a point with a digit behind it.
std::size_t number_length(const std::string& text, std::size_t at) {
    const auto digit = [&](std::size_t i) {
        return i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
    };
    std::size_t i = at + (at < text.size() && text[at] == '-' ? 1 : 0);
    if (!digit(i) && !(i < text.size() && text[i] == '.' && digit(i + 1))) return 0;
    while (digit(i) || (i < text.size() && text[i] == '.')) ++i;
    if (i + 2 < text.size() && text[i] == 'E' && (text[i + 1] == '-' || text[i + 1] == '+') && digit(i + 2)) {
        for (i += 2; digit(i);) ++i;
    }
    return i - at;
}

// Equal words, near numbers. The curvature at a point of inflection is the rest of a search for 0 and is not
// compared.
bool agrees(const std::string& actual, const std::string& golden) {
    std::size_t i = 0, k = 0;
    while (i < actual.size() && k < golden.size()) {
        const std::size_t n = number_length(actual, i), m = number_length(golden, k);
        if (n > 0 && m > 0) {
            const double x = Val(actual.substr(i, n)), y = Val(golden.substr(k, m));
            const bool rest = golden.rfind("2nd deriv.= ", k) + 12 == k;
            if (!rest && std::fabs(x - y) > 1e-5 * std::fabs(y) + 1e-9) return false;
            i += n, k += m;
        } else if (actual[i] == golden[k]) {
            ++i, ++k;
        } else {
            return false;
        }
        if (n != m) {  // a number of another length shifts the blanks behind it
            while (i < actual.size() && actual[i] == ' ') ++i;
            while (k < golden.size() && golden[k] == ' ') ++k;
        }
    }
    return i == actual.size() && k == golden.size();
}

class Texts : public ::testing::TestWithParam<int> {};

TEST_P(Texts, are_those_of_the_golden_file) {
    const auto golden = golden_cases(GetParam());
    std::size_t n = 0;
    for (const TextCase& c : cases) {
        if (c.mode != GetParam()) continue;
        ++n;
        const std::string actual = render(c);
        const auto it = golden.find(c.name);
        const std::string expected = it == golden.end() ? "" : it->second;
        EXPECT_TRUE(agrees(actual, expected)) << "=== " << c.name << "\n"
                                              << actual << "--- golden:\n"
                                              << expected;
    }
    EXPECT_EQ(n, golden.size());
}
INSTANTIATE_TEST_SUITE_P(Modes, Texts, ::testing::Range(1, 25));

}  // namespace
}  // namespace quom::test

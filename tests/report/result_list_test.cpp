// The texts of every mode against golden files: tests/golden/calc_NN.txt holds the cases of mode NN, each
// headed by
// "=== name". Every letter, blank and point is compared; numbers may differ by two units of their last
// printed digit.
#include "report/result_list.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>

#include "base/number_text.h"
#include "report/outcome_messages.h"
#include "report/titles.h"
#include "support/starter.h"
#include "support/test_paths.h"

namespace quom::test {
namespace {

// One calculation as the window asks for it.
struct Bench {
    FluidInput fluid;
    StateInput input;
    ListSettings settings;

    Bench(std::string_view cas, Mode mode) {
        fluid.substance = starter_substance(cas);
        fluid.models = {.EOSKode = Eos::peng_robinson, .EVPKode = Evp::wagner, .HLVKode = Hlv::eos};
        fluid.models.cpKode = fluid.substance.haveSinh ? CpForm::sinh_cosh : CpForm::polynomial;
        input.mode = mode;
    }
};

struct TextCase {
    int mode;
    const char* name;
    double T, p, rho;
    std::function<void(Bench&)> prepare;
    std::string_view cas = propane;
};

void partial(Bench& b) {
    b.input.setup.GlobalCalc = false;
    b.input.setup.RhoLWanted = true;
}
void partial_database(Bench& b) {
    partial(b);
    b.input.setup.BensonRhoL = false;
}
void benson_reference(Bench& b) {
    b.input.setup.benson = {.TRefL = 231.04f, .pLVRef = 101.3f, .rhoLRef = 581.0f, .rhoVRef = 2.4f};
}
void partial_benson(Bench& b) {
    partial(b);
    benson_reference(b);
}
void assumed_equilibrium(Bench& b) {
    partial_benson(b);
    b.input.setup.VLEAssumed = true;
}
void data_set(Bench& b) {
    partial(b);
    b.fluid.models.EVPKode = Evp::none;
}
void functions(Bench& b) { b.settings.ShowFunctions = true; }
void extended(Bench& b) {
    b.settings.ExtLevel = 4;
    b.input.coefficients = true;
    b.input.inflection = true;
}
void specific(Bench& b) { b.settings.units = {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass}; }
void extended_specific(Bench& b) {
    extended(b);
    specific(b);
}
void equation(Bench& b, Eos code) {
    b.fluid.models.EOSKode = code;
    b.fluid.models.Konzept = !b.fluid.models.VPhaseOnly();
    b.input.setup.GlobalCalc = b.fluid.models.Konzept;
}
void virial(Bench& b) { equation(b, Eos::virial_peng_robinson); }
void ideal_gas(Bench& b) {
    equation(b, Eos::ideal_gas);
    extended(b);
    b.settings.ShowFunctions = true;
}
void no_cp(Bench& b) {
    b.fluid.models.cpKode = CpForm::none;
    b.settings.ShowFunctions = true;
}
std::function<void(Bench&)> tank(double m, double V, double T, bool global = true) {
    return [=](Bench& b) {
        b.input.m = m;
        b.input.V = V;
        b.input.T = T;
        b.input.setup.GlobalCalc = global;
        benson_reference(b);
    };
}
std::function<void(Bench&)> hlv(Hlv code) {
    return [=](Bench& b) {
        b.fluid.models.HLVKode = code;
        benson_reference(b);
    };
}
void watson_specific(Bench& b) {
    hlv(Hlv::watson)(b);
    specific(b);
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
    {3, "assumed equilibrium", 300, 998, 0, assumed_equilibrium},
    {3, "functions", 300, 500, 0, functions},
    {3, "extended", 300, 500, 0, extended},
    {3, "extended, specific", 300, 500, 0, extended_specific},  // 1/v^2 of the second derivatives per kg
    {3, "ideal gas", 300, 500, 0, ideal_gas},                   // residual rows and ln phi are 0, not blank
    {3, "no cp(idG)", 300, 500, 0, no_cp},
    {3, "virial beyond p(LV)", 300, 1200, 0, virial},
    {3, "refused", 300, 0, 0, nullptr},
    {4, "global", 300, 0, 0, nullptr},
    {4, "partial, Benson", 300, 0, 0, partial_benson},
    {4, "partial, database", 300, 0, 0, partial_database},
    {4, "partial, data set", 300, 990, 0, data_set},
    {4, "global without a cubic concept", 300, 0, 0, [](Bench& b) { b.fluid.models.Konzept = false; }},
    {4, "above T(cr)", 400, 0, 0, nullptr},
    {5, "global", 0, 1000, 0, nullptr},
    {5, "partial, database", 0, 1000, 0, partial_database},
    {5, "above p(cr)", 0, 5000, 0, nullptr},
    {6, "EOS", 300, 0, 0, hlv(Hlv::eos)},
    {6, "equation", 300, 0, 0, hlv(Hlv::equation)},
    {6, "compressibility, Benson", 300, 0, 0, hlv(Hlv::evp_benson)},
    {6, "above T(cr)", 400, 0, 0, nullptr},
    {7, "EOS", 0, 1000, 0, hlv(Hlv::eos)},
    {7, "Watson, specific", 0, 1000, 0, watson_specific},
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
    {12, "process", 300, 500, 0, nullptr},
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
    const Mode mode = mode_of(c.mode);
    Bench b(c.cas, mode);
    const auto given = [](double x) { return x != 0.0 ? std::optional<double>(x) : std::nullopt; };
    b.input.T = given(c.T);
    b.input.p = given(c.p);
    b.input.rho = given(c.rho);
    if (c.prepare) c.prepare(b);
    b.settings.setup = b.input.setup;
    const auto fluid = make_fluid(b.fluid);
    const Outcome outcome = CalcBatch(*fluid, b.input);
    const OutputView view = make_result_list(*fluid, outcome, b.settings);
    std::string out = CalcCaption(mode, b.settings.setup) + "\n";
    add_text(out, "par1", view.par1);
    add_text(out, "par2", view.par2);
    add_text(out, "co1", view.co1);
    add_text(out, "txtco2", view.txtco2);
    add_text(out, "lblLphase", view.lblLphase);
    add_text(out, "lblVphase", view.lblVphase);
    add_text(out, "lblGleich", view.lblGleich);
    add_text(out, "Bezeichnung2", view.Bezeichnung2);
    for (const Message& m : outcome_messages(*fluid, outcome, false))
        out += "box: [" + m.title + "] " + m.text + "\n";
    if (!view.Text.empty()) out += "Text: " + view.Text + "\n";
    if (view.Liste.colour == colour_red) out += "red list:\n";
    return out + view.Liste.text;
}

// The cases of a golden file; what stands before the first one says where its figures come from.
std::map<std::string, std::string> golden_cases(int mode) {
    const std::string path = test::test_data() + "/golden/calc_" + std::to_string(mode) + ".txt";
    std::ifstream file(path);
    EXPECT_TRUE(file.good()) << path;
    std::map<std::string, std::string> found;
    std::string line, current;
    while (std::getline(file, line)) {
        if (line.starts_with("=== ")) {
            current = line.substr(4);
        } else if (!current.empty()) {
            found[current] += line + "\n";
        } else {
            EXPECT_TRUE(line.starts_with("# ")) << path;
        }
    }
    return found;
}

// A number as it stands in a text: how long it is and what its last digit is worth.
struct Printed {
    std::size_t length = 0;  // 0: no number starts here
    double value = 0, unit = 0;
    bool has_exponent = false, starts_with_point = false, ends_with_point = false;
    bool same_form(const Printed& other) const {
        return has_exponent == other.has_exponent && starts_with_point == other.starts_with_point &&
               ends_with_point == other.ends_with_point;
    }
};
Printed printed_at(const std::string& text, std::size_t at) {
    const auto digit = [&](std::size_t i) {
        return i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
    };
    std::size_t i = at + (at < text.size() && text[at] == '-' ? 1 : 0);
    if (!digit(i) && !(i < text.size() && text[i] == '.' && digit(i + 1))) return {};
    int decimals = 0;
    for (bool point = false; digit(i) || (i < text.size() && text[i] == '.' && !point); ++i) {
        decimals += point ? 1 : 0;
        point = point || text[i] == '.';
    }
    Printed p;
    int exponent = 0;
    if (i + 2 < text.size() && text[i] == 'E' && (text[i + 1] == '-' || text[i + 1] == '+') && digit(i + 2)) {
        std::size_t end = i + 2;
        while (digit(end)) ++end;
        exponent = static_cast<int>(Val(text.substr(i + 1, end - i - 1)));
        i = end;
        p.has_exponent = true;
    }
    p.length = i - at;
    p.starts_with_point = text[at] == '.' || text.compare(at, 2, "-.") == 0;
    p.ends_with_point = text[i - 1] == '.';
    p.value = Val(text.substr(at, p.length));
    p.unit = std::pow(10.0, exponent - decimals);
    return p;
}

// Two numbers that are the same but for the last digits: two units of the last one, of 15 digits the last
// two. A shorter one has lost zeros at its end.
bool near(const Printed& x, const Printed& y) {
    const double allowed = std::max(2.001 * std::min(x.unit, y.unit), 1e-13 * std::fabs(y.value));
    return x.same_form(y) && std::fabs(x.value - y.value) <= allowed;
}

// Where two texts first differ, or npos. The curvature at a point of inflection is the rest of a search for
// 0: only its form is compared.
std::size_t first_difference(const std::string& actual, const std::string& golden) {
    std::size_t i = 0, k = 0;
    while (i < actual.size() && k < golden.size()) {
        const Printed x = printed_at(actual, i), y = printed_at(golden, k);
        if (x.length > 0 && y.length > 0) {
            const bool rest = k >= 12 && golden.compare(k - 12, 12, "2nd deriv.= ") == 0;
            if (!rest && !near(x, y)) return i;
            i += x.length;
            k += y.length;
            // A column starts at its place whatever stands before it.
            for (std::size_t n = x.length; n < y.length && i < actual.size() && actual[i] == ' '; ++n) ++i;
            for (std::size_t n = y.length; n < x.length && k < golden.size() && golden[k] == ' '; ++n) ++k;
        } else if (actual[i] == golden[k]) {
            ++i;
            ++k;
        } else {
            return i;
        }
    }
    return i == actual.size() && k == golden.size() ? std::string::npos : i;
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
        const std::size_t at = first_difference(actual, expected);
        EXPECT_EQ(at, std::string::npos) << "=== " << c.name << "\n"
                                         << actual << "--- differs at \""
                                         << actual.substr(std::min(at, actual.size()), 20) << "\", golden:\n"
                                         << expected;
    }
    EXPECT_EQ(n, golden.size());
}
INSTANTIATE_TEST_SUITE_P(Modes, Texts, ::testing::Range(1, 25));

// The comparison itself: what it must not let pass.
TEST(Comparison, keeps_the_shape) {
    const struct {
        const char* actual;
        const char* golden;
        bool same;
    } pairs[] = {{"a =  508.6512            21.6", "a =  508.6513            21.6", true},
                 {"a =  508.65              21.6", "a =  508.6501            21.6", true},
                 {"a =  508.6512            21.6", "a =  508.6522            21.6", false},
                 {"a =  508.6512           21.6", "a =  508.6512            21.6", false},
                 {"a =  .5", "a =  0.5", false},
                 {"a = 5", "a =  5", false},
                 {"p = 0.001 kPa", "p = 1E-03 kPa", false},
                 {"p = 997.429 kPa", "p = 997.4 kPa", false},
                 {"p = 997.429", "p = 997.429 kPa", false},
                 {"p = 997", "p = 997.", false}};
    for (const auto& pair : pairs)
        EXPECT_EQ(first_difference(pair.actual, pair.golden) == std::string::npos, pair.same)
            << pair.actual << " | " << pair.golden;
}

}  // namespace
}  // namespace quom::test

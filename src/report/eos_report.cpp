#include "report/eos_report.h"

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {
namespace {

struct Row {
    std::string_view name;
    double value;
    std::string_view unit;
};

// A line for each constant; exponents of zero say nothing and are left out.
std::string rows_of(std::initializer_list<Row> rows) {
    std::string text;
    for (const Row& row : rows) {
        if (row.value == 0.0 && row.name.starts_with("n")) continue;
        text += text_padded(row.name, 6) + "=" + strNum(row.value);
        if (!row.unit.empty()) text.append("  ").append(row.unit);
        text += '\n';
    }
    return text;
}

std::string cubic_constants(const EosBlock& e) {
    std::string text;
    if (e.AlphaForm == 2) {
        text = "a(T) = a (1 + m (1 - sqrt(T/T(cr))))^2\n\n";
        text += rows_of({{"a", e.EOSa, "kPa m^6/kmol^2"}, {"m", e.EOSna, ""}});
    } else {
        text = "a(T) = a T^n(a), the same for b, c, d\n\n";
        text += rows_of({{"a", e.EOSa, "kPa m^6/kmol^2 K^-n(a)"}, {"n(a)", e.EOSna, ""}});
    }
    return text + rows_of({{"b", e.EOSb, "m^3/kmol"},
                           {"n(b)", e.EOSnb, ""},
                           {"c", e.EOSc, "m^3/kmol"},
                           {"n(c)", e.EOSnc, ""},
                           {"d", e.EOSd, "m^3/kmol"},
                           {"n(d)", e.EOSnd, ""}});
}

std::string ji_constants(const EosBlock& e) {
    return rows_of({{"a(cr)", e.JiAc, "kPa m^6/kmol^2"},
                    {"B1", e.JiB1, ""},
                    {"Z(cr)", e.JiZc, ""},
                    {"P3", e.JiP3, ""},
                    {"P4", e.JiP4, ""},
                    {"P5", e.JiP5, ""},
                    {"Oa", e.JiOa, ""},
                    {"Ob", e.JiOb, ""},
                    {"Cd", e.JiCd, ""}});
}

std::string critical_volume(const EosBlock& e) {
    if (!(e.vcrEOS > TinyT)) return {};
    return "\ncrit. volume calculated fromT(cr) and p(cr):\n" +
           rows_of({{"v(cr)", e.vcrEOS, "m^3/kmol"}, {"rho", e.rhocrEOS, "kg/m^3"}});
}

}  // namespace

EosReport eos_report(const Fluid& fluid) {
    const EosInfo& row = fluid.eos_row();
    const EosBlock& e = fluid.eos;
    const std::string name(trim(row.text));
    const std::string cubic_law = "\np = R T/(v - b) - a/((v + c)(v + d))";
    switch (row.family) {
        case EosFamily::ideal_gas:
            return {"Selected: Ideal gas equation", "v = R T/p\n"};
        case EosFamily::cubic:
            return {name + cubic_law, cubic_constants(e) + critical_volume(e)};
        case EosFamily::tovarn_ji:
            return {name + cubic_law, ji_constants(e) + critical_volume(e)};
        case EosFamily::virial:
            return {name + "\nv = R T/p + B(T),  B = b - a(T)/(R T)",
                    cubic_constants(e) + critical_volume(e)};
        case EosFamily::manual:
            return {name + "\nv = R T/p + B(T),  B = b0 - b1/T^b2",
                    rows_of({{"b0", e.EOSb, "m^3/kmol"}, {"b1", e.EOSnb, ""}, {"b2", e.EOSm, ""}})};
        case EosFamily::pitzer_curl:
            return {name + "\nv = R T/p + B(T),  B = (f0 + omega f1) R T(cr)/p(cr)",
                    rows_of({{"omega", fluid.substance.omega, ""}})};
        case EosFamily::none:
            break;
    }
    return {};
}

}  // namespace quom

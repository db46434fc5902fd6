#include "engine/eos_report.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"

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

EosReport eos_report(const Session& s) {
    const int code = s.models.EOSKode;
    const EosBlock& e = s.eos;
    if (code < 0) return {};
    if (code == eos_ideal_gas) return {.head = "Selected: Ideal gas equation", .text = "v = R T/p\n"};
    EosReport r{.head = std::string(trim(eos_name(code))), .text = {}};
    if (code == eos_virial_manual) {
        r.head += "\nv = R T/p + B(T),  B = b0 - b1/T^b2";
        r.text = rows_of({{"b0", e.EOSb, "m^3/kmol"}, {"b1", e.EOSnb, ""}, {"b2", e.EOSm, ""}});
    } else if (code == eos_pitzer_curl) {
        r.head += "\nv = R T/p + B(T),  B = (f0 + omega f1) R T(cr)/p(cr)";
        r.text = rows_of({{"omega", s.substance.omega, ""}});
    } else if (code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2) {
        r.head += "\np = R T/(v - b) - a/((v + c)(v + d))";
        r.text = ji_constants(e) + critical_volume(e);
    } else {
        r.head += is_cubic(code) ? "\np = R T/(v - b) - a/((v + c)(v + d))"
                                 : "\nv = R T/p + B(T),  B = b - a(T)/(R T)";
        r.text = cubic_constants(e) + critical_volume(e);
    }
    return r;
}

}  // namespace quom

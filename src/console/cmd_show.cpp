// show: all constants of a substance with units and validity ranges.
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "console/selection.h"
#include "report/outcome_report.h"
#include "session/substance_marks.h"
#include "substance/record.h"

namespace quom {
namespace {

// A stored value: 0 is none, the mark of a true zero is 0.
Value cell(float x) {
    if (x == 0.0f) return {};
    return std::fabs(x) <= 1.01f * TrueZero ? Value(0.0) : Value(x);
}
Value cell(double x) { return cell(static_cast<float>(x)).absent() ? Value() : Value(x); }

Field value(const char* key, const char* label, Value x, const char* unit) {
    return {key, label, std::move(x), unit, ""};
}

// Coefficients of one equation of the record; absent as a whole when it is not there.
struct Equation {
    const char* key;
    const char* name;
    std::string formula;
    bool present;
    std::vector<Field> fields;
    int TLo = 0, THi = 0;
};

Field coefficient(std::string name, float x, const char* unit = "") {
    // A true zero and a coefficient that is not used count the same in an equation that is there.
    const Value shown_value = std::fabs(x) <= 1.01f * TrueZero ? Value(0.0) : Value(x);
    return {name, name, shown_value, unit, ""};
}

template <std::size_t N>
std::vector<Field> coefficients(const std::array<float, N>& values,
                                std::initializer_list<const char*> names) {
    std::vector<Field> fields;
    std::size_t k = 0;
    for (const char* name : names) fields.push_back(coefficient(name, values[k++]));
    return fields;
}

std::vector<Field> with(std::vector<Field> fields, std::vector<Field> more) {
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

const char* cp_formula(const std::array<float, 5>& k, float inverse_square_from) {
    if (std::fabs(k[0]) < 1e-8f) return "C1 + C2 T + C3 T^2 + C4/T^2";
    return std::fabs(k[4]) < inverse_square_from ? "C0 + C1 T + C2 T^2 + C3 T^3 + C4 T^4"
                                                 : "C0 + C1 T + C2 T^2 + C3 T^3 + C4/T^2";
}

constexpr const char* sinh_formula = "C0 + C1 (x/sinh x)^2 + C3 (y/cosh y)^2, x = C2/T, y = C4/T";

std::string condensed_cp_formula(const SubstanceConstants& k, const std::array<float, 5>& c) {
    const float limit = k.StoffCAS.starts_with("7440-59-7") ? 500.0f : 100.0f;
    return std::fabs(c[2]) < limit ? cp_formula(c, 10.0f) : sinh_formula;
}

std::string rhoL_formula(const SubstanceConstants& k) {
    if (k.RhoLTLo == 0 && k.RhoL[0] > 1e-6f && k.RhoL[2] > 1e-6f) return "A + B (T - C)";
    if (std::fabs(k.RhoL[0]) > 1e-6f) return "A + B T + C T^2 + D T^3 + E/(F + T) + G (1 - T/Tcr)^(1/3)";
    return "B/C^(1 + (1 - T/Tcr)^D)";
}

std::vector<Equation> phase_equations(const SubstanceConstants& k) {
    return {
        {"RhoL", "rho(L) [kg/m^3]", rhoL_formula(k), k.RhoL[0] != 0.0f || k.RhoL[1] != 0.0f,
         with(coefficients(k.RhoL, {"A", "B", "C", "D", "E", "F", "G"}),
              {coefficient("Tcr", k.RhoLTcr, "K")}),
         k.RhoLTLo, k.RhoLTHi},
        {"RhoS", "rho(S) [kg/m^3]", k.RhoSTLo > 0 ? "A + B T + C T^2 + D T^3" : "A + B (T - C)",
         k.RhoS[0] != 0.0f || k.RhoS[1] != 0.0f, coefficients(k.RhoS, {"A", "B", "C", "D"}), k.RhoSTLo,
         k.RhoSTHi},
        {"HLV", "delta(LV)h [kJ/kmol]", "A exp(-alpha t) (1 - t)^(beta + C t + D t^2 + E t^3), t = T/Tcr",
         k.HLVTLo > 0,
         with(coefficients(k.HLV, {"A", "beta", "C", "D", "E", "alpha"}),
              {coefficient("Tcr", k.HLVTcr, "K")}),
         k.HLVTLo, k.HLVTHi},
    };
}

std::vector<Equation> vapor_pressure_equations(const SubstanceConstants& k) {
    const auto antoine = "log10 p = A - B/(C + T - 273.15)";
    return {
        {"KFDB", "Frost/Kalkwarf (EVP 3)",
         "log10 p = A + B/(C - 273.15 + T) + D log10 T + E p/T^(F + 2) + G T + H T^I", k.KFTLo != 0,
         coefficients(k.KFDB, {"A", "B", "C", "D", "E", "F", "G", "H", "I"}), k.KFTLo, k.KFTHi},
        {"Wagner", "Wagner (EVP 4)",
         "ln(p/pcr) = (Tcr/T) (a1 u + a2 u^1.5 + a3 u^e3 + a4 u^e4 + a5 u^e5), u = 1 - T/Tcr",
         k.WagnerTLo > 0,
         with(coefficients(k.Wagner, {"a1", "a2", "a3", "e3", "a4", "e4", "a5", "e5"}),
              {coefficient("Tcr", k.WagnerTcr, "K"), coefficient("pcr", k.Wagnerpcr, "kPa")}),
         k.WagnerTLo, k.WagnerTHi},
        {"AntLo", "Antoine, low pressure (EVP 1)", antoine, k.AntLo[0] != 0.0f,
         coefficients(k.AntLo, {"A", "B", "C"}), k.AntLoTLo, k.AntLoTHi},
        {"AntHi", "Antoine, high pressure (EVP 2)", antoine, k.AntHi[0] != 0.0f,
         coefficients(k.AntHi, {"A", "B", "C"}), k.AntHiTLo, k.AntHiTHi},
        {"August",
         "August, through T(nb) and the critical point (EVP 5)",
         "ln p = A + B/T",
         k.AugustA != 0.0f,
         {coefficient("A", k.AugustA), coefficient("B", k.AugustB)},
         0,
         0},
    };
}

std::vector<Equation> heat_capacity_equations(const SubstanceConstants& k) {
    const auto names = {"C0", "C1", "C2", "C3", "C4"};
    return {
        {"cpPoly", "cp(idG) [kJ/(kmol K)] (cp 1)", cp_formula(k.cpPoly, 1.0f), k.havePoly,
         coefficients(k.cpPoly, names), k.cpPolyTLo, k.cpPolyTHi},
        {"cpDIPPR", "cp(idG) [kJ/(kmol K)] (cp 2)", sinh_formula, k.haveSinh, coefficients(k.cpDIPPR, names),
         k.cpDIPPRTLo, k.cpDIPPRTHi},
        {"cpL", "cp(L) [kJ/(kmol K)]", condensed_cp_formula(k, k.cpL), k.HasCpL, coefficients(k.cpL, names),
         k.cpLTLo, k.cpLTHi},
        {"cpS", "cp(S) [kJ/(kmol K)]", condensed_cp_formula(k, k.cpS), k.HasCpS, coefficients(k.cpS, names),
         k.cpSTLo, k.cpSTHi},
    };
}

// The mark on a field of the constants: "estimate", "fit", "extrapolated", or nothing.
std::string_view mark_on(const SubstanceMarks& marks, std::string_view field) {
    const auto found = std::ranges::find(marks.marks, field, [](const SetMark& m) { return m.set->field; });
    return found == marks.marks.end() ? std::string_view() : mark_word(found->kind);
}

Block block_of(const Equation& e, const SubstanceMarks& marks) {
    Block block{e.key, e.name, e.fields, Layout::flow};
    if (e.TLo != 0 || e.THi != 0)
        block.title += ", T = " + std::to_string(e.TLo) + " ... " + std::to_string(e.THi) + " K";
    const std::string mark(mark_on(marks, e.key));
    if (!mark.empty()) block.title += ", " + mark;
    block.title += "\n  " + e.formula;
    const bool ranged = e.TLo != 0 || e.THi != 0;
    block.fields.push_back({"TLo", "", ranged ? Value(e.TLo) : Value(), "K", ""});
    block.fields.push_back({"THi", "", ranged ? Value(e.THi) : Value(), "K", ""});
    block.fields.push_back({"mark", "", remark(mark), "", ""});
    if (e.present) return block;
    for (Field& field : block.fields) field.value = {};
    block.layout = Layout::json;
    return block;
}

Block identity(const Session& session) {
    const SubstanceConstants& k = session.substance();
    const DatabaseFile& file = session.database;
    const int index = session.document.substance.StoffIndexAktiv;
    const RecordLayout& layout = *record_layout(file.DatabaseKind);
    std::string record(layout.length, '\0');
    file.handle.read_at(layout.length * static_cast<std::size_t>(index), record);
    const std::string english = record_text(record, layout.NameE);
    const std::string german = record_text(record, layout.NameD);
    const auto text = [](std::string_view x) { return trim(x).empty() ? Value() : Value(trim(x)); };
    return {"substance",
            "",
            {value("StoffName", "name", text(k.StoffName), ""), value("NameE", "English", text(english), ""),
             value("NameD", "German", text(german), ""),
             value("StoffFormula", "formula", text(k.StoffFormulaCompact), ""),
             value("StoffStructure", "structure", text(k.StoffStructure), ""),
             value("StoffCAS", "CAS", text(k.StoffCAS), ""), value("index", "#", index, ""),
             value("SystemNo", "system number", record_i16(record, layout.SystemNo), ""),
             value("database", "database", name_part(file.path), "")},
            Layout::list};
}

Block constants(const SubstanceConstants& k, const SubstanceMarks& marks) {
    Block block{"constants",
                "Constants",
                {value("MolMass", "molar mass M", cell(k.MolMass), "kg/kmol"),
                 value("Tcr", "critical temperature", cell(k.Tcr), "K"),
                 value("pcr", "critical pressure", cell(k.pcr), "kPa"),
                 value("rhocrDB", "critical density", cell(k.rhocrDB), "kg/m^3"),
                 value("vcrDB", "critical volume M/rho(cr)", cell(k.vcrDB), "m^3/kmol"),
                 value("omega", "acentric factor", cell(k.omega), ""),
                 value("Tnb", "normal boiling temperature", cell(k.Tnb), "K"),
                 value("Ttr", "triple point temperature", cell(k.Ttr), "K"),
                 value("ptr", "triple point pressure", cell(k.ptr), "kPa"),
                 value("dfH0", "delta(F)h, ideal gas, 298.15 K", cell(k.dfH0), "kJ/kmol"),
                 value("dfG0", "delta(F)g, ideal gas, 298.15 K", cell(k.dfG0), "kJ/kmol"),
                 value("S0abs", "conventional entropy, 298.15 K", cell(k.S0abs), "kJ/(kmol K)"),
                 value("WatsonHLV", "delta(LV)h of the Watson rule", cell(k.WatsonHLV), "kJ/kmol"),
                 value("WatsonT", "its temperature", cell(k.WatsonT), "K")},
                Layout::list};
    for (Field& field : block.fields) field.note = mark_on(marks, field.key);
    return block;
}

// Where the marked data come from; people read it in the notes.
Table marks_table(const SubstanceMarks& marks) {
    Table table{"marks",
                "",
                {{"set", "", ""}, {"name", "", ""}, {"mark", "", ""}, {"source", "", ""}},
                {},
                Layout::json};
    for (const SetMark& m : marks.marks)
        table.rows.push_back({m.set->field, m.set->label, mark_word(m.kind), m.source});
    return table;
}

Report show(Program& program, const std::string& substance) {
    if (const Refused refused = load_database(program)) return refusal("show", *refused);
    Session& session = program.session;
    if (const Refused refused = choose_substance(program, substance)) return refusal("show", *refused);
    const SubstanceConstants& k = session.substance();
    const SubstanceMarks marks = substance_marks(session.ProgramPath, k);
    Report report;
    report.title = substance_head(k);
    report.sections.emplace_back(identity(session));
    report.sections.emplace_back(constants(k, marks));
    std::string absent;
    for (const auto& equations :
         {vapor_pressure_equations(k), phase_equations(k), heat_capacity_equations(k)}) {
        for (const Equation& e : equations) {
            report.sections.emplace_back(block_of(e, marks));
            if (!e.present) absent += (absent.empty() ? "" : "; ") + std::string(e.name);
        }
    }
    report.sections.emplace_back(marks_table(marks));
    for (std::string& sentence : sentences(marks)) report.notes.push_back(std::move(sentence));
    if (!absent.empty()) report.notes.push_back("Not in the record: " + absent + ".");
    report.notes.push_back("p in kPa, T in K in all equations.");
    return report;
}

}  // namespace

Action declare_show(CLI::App& app) {
    const auto substance = std::make_shared<std::string>();
    add_substance(app, *substance);
    return [substance](Program& program) { return show(program, *substance); };
}

}  // namespace quom

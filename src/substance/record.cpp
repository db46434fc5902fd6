#include "substance/record.h"

#include <array>
#include <bit>
#include <cmath>
#include <type_traits>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr RecordLayout layout7{.extension = "*.Q07",
                               .length = 950,
                               .Formula = {0, 16},
                               .Structure = {16, 107},
                               .NameE = {123, 60},
                               .NameD = {183, 107},
                               .CASRN = {290, 12},
                               .Text1 = {302, 41},
                               .Text2 = {343, 41},
                               .SystemNo = 384,
                               .F = 386};
constexpr RecordLayout layout6{.extension = "*.Q06",
                               .length = 776,
                               .Formula = {0, 16},
                               .Structure = {0, 0},
                               .NameE = {16, 50},
                               .NameD = {66, 50},
                               .CASRN = {116, 12},
                               .Text1 = {128, 41},
                               .Text2 = {169, 41},
                               .SystemNo = 210,
                               .F = 212};

using S = SubstanceConstants;
constexpr CellForm limit = CellForm::limit;
constexpr CellForm rounded4 = CellForm::rounded4;
constexpr CellForm plain = CellForm::plain;

// Cells that are not here have no reader; they pass through the program untouched.
constexpr CellField fields[] = {
    {"MolMass", 0, &S::MolMass, rounded4},
    {"Tcr", 6, &S::Tcr, rounded4},
    {"pcr", 7, &S::pcr, rounded4},
    {"rhocrDB", 8, &S::rhocrDB},
    {"omega", 9, &S::omega},
    {"Tnb", 10, &S::Tnb},
    {"RhoL", 13, &S::RhoL},
    {"RhoLTcr", 20, &S::RhoLTcr},
    {"RhoLTLo", 21, &S::RhoLTLo, limit},
    {"RhoLTHi", 22, &S::RhoLTHi, limit},
    {"KFDB", 24, &S::KFDB},
    {"KFTLo", 33, &S::KFTLo, limit},
    {"KFTHi", 34, &S::KFTHi, limit},
    {"AntLo", 36, &S::AntLo},
    {"AntLoTLo", 39, &S::AntLoTLo, limit},
    {"AntLoTHi", 40, &S::AntLoTHi, limit},
    {"AntHi", 42, &S::AntHi},
    {"AntHiTLo", 45, &S::AntHiTLo, limit},
    {"AntHiTHi", 46, &S::AntHiTHi, limit},
    {"Wagner", 48, &S::Wagner},
    {"WagnerTcr", 56, &S::WagnerTcr},
    {"Wagnerpcr", 57, &S::Wagnerpcr},
    {"WagnerTLo", 58, &S::WagnerTLo, limit},
    {"WagnerTHi", 59, &S::WagnerTHi, limit},
    {"cpPoly", 61, &S::cpPoly},
    {"cpPolyTLo", 66, &S::cpPolyTLo, limit},
    {"cpPolyTHi", 67, &S::cpPolyTHi, limit},
    {"cpDIPPR", 69, &S::cpDIPPR},
    {"cpDIPPRTLo", 74, &S::cpDIPPRTLo, limit},
    {"cpDIPPRTHi", 75, &S::cpDIPPRTHi, limit},
    {"cpL", 77, &S::cpL},
    {"cpLTLo", 82, &S::cpLTLo, limit},
    {"cpLTHi", 83, &S::cpLTHi, limit},
    {"dfH0", 85, &S::dfH0},
    {"dfG0", 87, &S::dfG0},
    {"S0abs", 89, &S::S0abs, plain, false},
    {"Ttr", 91, &S::Ttr},
    {"ptr", cell_TriplePressure, &S::ptr, plain, false},
    {"SecondMeltingT", 93, &S::SecondMeltingT},
    {"HLV", 96, &S::HLV},
    {"HLVTcr", 102, &S::HLVTcr},
    {"HLVTLo", 103, &S::HLVTLo, limit},
    {"HLVTHi", 104, &S::HLVTHi, limit},
    {"WatsonHLV", 105, &S::WatsonHLV},
    {"WatsonT", 106, &S::WatsonT},
    {"cpS", 110, &S::cpS},
    {"cpSTLo", 115, &S::cpSTLo, limit},
    {"cpSTHi", 116, &S::cpSTHi, limit},
    {"RhoS", 118, &S::RhoS},
    {"RhoSTLo", 122, &S::RhoSTLo, limit},
    {"RhoSTHi", 123, &S::RhoSTHi, limit},
};

double given(double x, CellForm form) {
    if (!std::isfinite(x)) return 0.0;
    return form == CellForm::rounded4 ? std::floor(x * 10000.0 + 0.5) / 10000.0 : x;
}

// One value in memory from a cell.
template <class Value>
Value from_cell(float cell, CellForm form) {
    if constexpr (std::is_same_v<Value, std::int16_t>)
        return to_i16(static_cast<double>(cell));
    else
        return static_cast<Value>(given(static_cast<double>(cell), form));
}

// Calls visit(cell, value&) for every cell of a field.
template <class Constants, class Visit>
void for_each_cell(const CellField& field, Constants& constants, Visit visit) {
    std::visit(
        [&](auto place) {
            auto& value = constants.*place;
            if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(value)>>) {
                visit(field.cell, value);
            } else {
                int cell = field.cell;
                for (auto& each : value) visit(cell++, each);
            }
        },
        field.place);
}

void take_second_watson_pair(std::string_view record, const RecordLayout& layout, S& c) {
    const float T2 = from_cell<float>(record_cell(record, layout, cell_Watson2T), plain);
    if (std::abs(static_cast<double>(c.Tnb) - static_cast<double>(T2)) >= 2.0) return;
    c.WatsonHLV = from_cell<float>(record_cell(record, layout, cell_Watson2HLV), plain);
    c.WatsonT = T2;
}

bool is_given(double x) { return x > TinyT; }

bool has_cp(const std::array<float, 5>& C, std::int16_t TLo, std::int16_t THi) {
    return (is_given(std::abs(C[0])) || is_given(std::abs(C[1]))) && TLo > 0 && THi > 0;
}

}  // namespace

const RecordLayout* record_layout(int kind) { return kind == 7 ? &layout7 : kind == 6 ? &layout6 : nullptr; }

std::span<const CellField> cell_fields() { return fields; }

std::string record_text(std::string_view record, TextField field) {
    std::string bytes(record.substr(field.offset, field.width));
    for (char& c : bytes)
        if (c == '\0') c = ' ';
    return utf8_from_1252(trim_right(bytes));
}

std::size_t set_record_text(std::string& record, TextField field, std::string_view utf8) {
    Encoded text = cp1252_from_utf8(utf8);
    text.bytes.resize(field.width, ' ');
    record.replace(field.offset, field.width, text.bytes);
    return text.replaced;
}

std::int16_t record_i16(std::string_view record, std::size_t offset) {
    const auto low = static_cast<unsigned char>(record[offset]);
    const auto high = static_cast<unsigned char>(record[offset + 1]);
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(low | high << 8));
}

void set_record_i16(std::string& record, std::size_t offset, std::int16_t value) {
    const auto bits = static_cast<std::uint16_t>(value);
    record[offset] = static_cast<char>(bits & 0xFF);
    record[offset + 1] = static_cast<char>(bits >> 8);
}

float record_cell(std::string_view record, const RecordLayout& layout, int cell) {
    const std::size_t at = layout.F + 4 * static_cast<std::size_t>(cell);
    std::uint32_t bits = 0;
    for (std::size_t k = 4; k-- > 0;) bits = bits << 8 | static_cast<unsigned char>(record[at + k]);
    return std::bit_cast<float>(bits);
}

void set_record_cell(std::string& record, const RecordLayout& layout, int cell, float value) {
    const std::size_t at = layout.F + 4 * static_cast<std::size_t>(cell);
    auto bits = std::bit_cast<std::uint32_t>(value);
    for (std::size_t k = 0; k < 4; ++k, bits >>= 8) record[at + k] = static_cast<char>(bits & 0xFF);
}

UnpackedRecord unpack_record(std::string_view record, const RecordLayout& layout, bool Englisch) {
    UnpackedRecord result;
    S& c = result.constants;
    c.StoffFormula = trim_right(text_left(record_text(record, layout.Formula), 12));
    c.StoffFormulaCompact = c.StoffFormula;
    std::erase(c.StoffFormulaCompact, ' ');
    c.StoffStructure = record_text(record, layout.Structure);
    const std::string name = record_text(record, layout.Name(Englisch));
    c.StoffName = trim_right(std::string_view(name).substr(0, name.find(';')));
    c.StoffCAS = record_text(record, layout.CASRN);

    for (const CellField& field : fields)
        for_each_cell(field, c, [&](int cell, auto& value) {
            value = from_cell<std::remove_cvref_t<decltype(value)>>(record_cell(record, layout, cell),
                                                                    field.form);
        });

    if (!is_given(c.SecondMeltingT)) c.SecondMeltingT = c.Ttr;
    c.cpDIPPR[2] = std::abs(c.cpDIPPR[2]);
    c.vcrDB = is_given(c.rhocrDB) ? static_cast<double>(c.MolMass) / c.rhocrDB : 0.0;
    if (std::abs(static_cast<double>(c.dfH0) * static_cast<double>(c.dfG0)) > TinyT)
        c.dFs = (static_cast<double>(c.dfH0) - static_cast<double>(c.dfG0)) / TNorm;
    take_second_watson_pair(record, layout, c);
    set_august(c);
    set_presence_flags(c);
    result.EVPTag = default_evp_tag(c);
    if (!is_given(c.Tcr) || !is_given(c.pcr)) result.err = -1;
    return result;
}

void pack_cells(const SubstanceConstants& constants, const RecordLayout& layout, std::string& record) {
    for (const CellField& field : fields)
        if (field.written)
            for_each_cell(field, constants, [&](int cell, const auto& value) {
                set_record_cell(record, layout, cell, static_cast<float>(value));
            });
}

void set_august(SubstanceConstants& c) {
    c.AugustA = 0.0f;
    c.AugustB = 0.0f;
    // T(cr) is a double of four decimals, T(nb) a single: equal ones differ in their last digits.
    if (!is_given(c.Tcr) || !is_given(c.pcr) || c.Tnb == static_cast<float>(c.Tcr)) return;
    const double Tnb = static_cast<double>(c.Tnb);
    const double B = Tnb * c.Tcr * std::log(c.pcr / pNorm) / (Tnb - c.Tcr);
    c.AugustB = static_cast<float>(B);
    c.AugustA = static_cast<float>(std::log(c.pcr) - B / c.Tcr);
}

std::string default_evp_tag(const SubstanceConstants& c) {
    std::string tag = "<> ";
    if (is_given(c.AugustA)) tag = "AUG";
    if (c.AntHiTLo > 0) tag = "AHP";
    if (c.AntLoTLo > 0) tag = "ALP";
    if (c.WagnerTLo > 0) tag = "WAG";
    if (c.KFTLo != 0) tag = "FRO";
    return tag;
}

void set_presence_flags(SubstanceConstants& c) {
    c.havePoly = c.cpPolyTLo > 0;
    if (is_given(std::abs(c.cpDIPPR[0])) && !(std::abs(c.cpDIPPR[2]) >= static_cast<float>(TinyT)))
        c.cpDIPPR[2] = 0.1f;
    c.haveSinh = is_given(std::abs(static_cast<double>(c.cpDIPPRTLo) * static_cast<double>(c.cpDIPPR[0])));
    c.HasCpL = has_cp(c.cpL, c.cpLTLo, c.cpLTHi);
    c.HasCpS = has_cp(c.cpS, c.cpSTLo, c.cpSTHi);
}

}  // namespace quom

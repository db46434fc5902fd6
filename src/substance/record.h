// One record of a substance database: text fields, system number and 141 value cells, unpacked and written
// back.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "substance/substance_constants.h"

namespace quom {

inline constexpr int CellCount = 141;

// Cells that are read by their number; all others are reached through the table of fields.
inline constexpr int cell_TriplePressure = 92;
inline constexpr int cell_Watson2HLV = 107;  // second Watson pair, at the normal boiling point
inline constexpr int cell_Watson2T = 108;

struct TextField {
    std::size_t offset = 0, width = 0;  // bytes of Windows-1252 text, padded with blanks
};

// Where the fields of one kind of record lie. Numbers are little-endian.
struct RecordLayout {
    const char* extension = nullptr;  // "*.Q07"
    std::size_t length = 0;           // bytes
    TextField Formula, Structure, NameE, NameD, CASRN, Text1, Text2;
    std::size_t SystemNo = 0;  // signed 16 bits: system number, in the header the count of substances
    std::size_t F = 0;         // 141 singles
    TextField Name(bool Englisch) const { return Englisch ? NameE : NameD; }
};

// The layout of kind 7 (*.Q07, 950 bytes) or 6 (*.Q06, 776 bytes, no Structure); nullptr for any other kind.
const RecordLayout* record_layout(int kind);

// What a cell becomes in memory.
enum class CellForm {
    plain,     // the number; one that is not finite reads as 0
    rounded4,  // rounded to four decimals
    limit,     // a temperature limit [K], rounded half to even to 16 bits, written back as a whole number
};

// One field of the constants and the run of cells it comes from: the one table that unpacking and write-back
// walk.
struct CellField {
    using Constants = SubstanceConstants;
    using Place = std::variant<float Constants::*, double Constants::*, std::int16_t Constants::*,
                               std::array<float, 3> Constants::*, std::array<float, 4> Constants::*,
                               std::array<float, 5> Constants::*, std::array<float, 6> Constants::*,
                               std::array<float, 7> Constants::*, std::array<float, 8> Constants::*,
                               std::array<float, 9> Constants::*>;
    const char* name;
    int cell;  // the first one
    Place place;
    CellForm form = CellForm::plain;
    bool written = true;  // false: the write-back leaves the cell as the source record has it
};
std::span<const CellField> cell_fields();

// Text of a field as UTF-8, NUL bytes as blanks, blanks at its end dropped; "" for a field of width 0.
std::string record_text(std::string_view record, TextField field);
// Writes a field, cut or padded to its width; returns the number of characters that became "?".
std::size_t set_record_text(std::string& record, TextField field, std::string_view utf8);

std::int16_t record_i16(std::string_view record, std::size_t offset);
void set_record_i16(std::string& record, std::size_t offset, std::int16_t value);
float record_cell(std::string_view record, const RecordLayout& layout, int cell);
void set_record_cell(std::string& record, const RecordLayout& layout, int cell, float value);

// A record unpacked.
struct UnpackedRecord {
    SubstanceConstants constants;  // without the correlated sets
    std::string EVPTag = "<> ";    // tag of the default vapor pressure equation, "<> " when there is none
    std::int16_t err = 0;          // -1: T(cr) or p(cr) is missing; everything else is unpacked all the same
    bool readable = true;          // the record was read
};
// Unpacks a record of at least layout.length bytes, with the name in the language asked for.
UnpackedRecord unpack_record(std::string_view record, const RecordLayout& layout, bool Englisch);

// Writes the fields marked "written" into the cells; all other bytes stay as they are.
void pack_cells(const SubstanceConstants& constants, const RecordLayout& layout, std::string& record);

// AugustA, AugustB of ln(p/kPa) = A + B/T through Tnb and the critical point (August 1828):
//     B = Tnb Tcr ln(pcr/101.325)/(Tnb - Tcr),  A = ln pcr - B/Tcr.
// Both 0 without T(cr) or p(cr), or when Tnb equals Tcr in single precision.
void set_august(SubstanceConstants& constants);

// Tag of the default vapor pressure equation: the last that is there of AUG, AHP, ALP, WAG, FRO; else "<> ".
std::string default_evp_tag(const SubstanceConstants& constants);

// havePoly, haveSinh, HasCpL, HasCpS from the cells; a missing C2 of a sinh/cosh function becomes 0.1, so
// that it never divides by zero.
void set_presence_flags(SubstanceConstants& constants);

}  // namespace quom

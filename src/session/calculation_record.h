// The calculation record: one row of the result vector for each "Write", and the file it goes to.
#pragma once
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quom {

inline constexpr std::size_t RecordColumns = 42;  // the slots of the result vector
using RecordRow = std::array<float, RecordColumns>;

struct CalculationRecord {
    std::string ProtocolFile;              // name of the file, in the program folder
    std::vector<RecordRow> ProtocolTable;  // in displayed units
    bool ProtocolOpen = false;             // rows wait to be written
};

// The next free name of a record in the program folder: "yyMMdd01.CSV", counted on to 99 and with three
// digits to 999, which is taken even if it exists. date: "2026-11-21".
std::string NewProtocolName(std::string_view program_path, std::string_view date);

}  // namespace quom

#include "substance/database.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"

namespace quom {
namespace {

std::string quoted_name(const std::string& path) { return "\"" + name_part(path) + "\""; }

// Bytes that a header count of substances asks for.
std::uint64_t needed_bytes(int count, const RecordLayout& layout) {
    return (static_cast<std::uint64_t>(count) + 1) * layout.length;
}

bool is_whole(std::uint64_t size, const RecordLayout& layout) { return size % layout.length == 0; }

constexpr int MostSubstances = 32767;  // the count of the header is a signed 16-bit number

// What is wrong with a file of this length and header count; empty when it fits. Records behind the counted
// ones and bytes behind the last whole record, an end mark for example, are no part of the list.
std::string length_fault(const std::string& path, std::uint64_t size, int count, int kind,
                         const RecordLayout& layout) {
    const std::string name = quoted_name(path);
    const std::string has = "the file has " + std::to_string(size) + " bytes";
    const RecordLayout& other = *record_layout(13 - kind);
    const std::string hint = !is_whole(size, layout) && is_whole(size, other)
                                 ? std::string(" Its length fits a database ") + other.extension + "."
                                 : std::string();
    if (size < layout.length)
        return name + " is no database " + layout.extension + ": a record takes " +
               std::to_string(layout.length) + " bytes, " + has + "." + hint;
    if (count < 1 && size > needed_bytes(MostSubstances, layout))
        return name + " has " + std::to_string(size / layout.length - 1) +
               " records of substances: a database " + layout.extension + " ends at " +
               std::to_string(MostSubstances) + "." + hint;
    if (count < 1)
        return name + " holds no substance: its header counts " + std::to_string(count) + ", a database " +
               layout.extension + " counts at least 1." + hint;
    if (size < needed_bytes(count, layout))
        return name + " is cut off: its header counts " + std::to_string(count) + " substances, which take " +
               std::to_string(needed_bytes(count, layout)) + " bytes, " + has + "." + hint;
    if (!hint.empty())
        return name + " is no database " + layout.extension + ": its records take " +
               std::to_string(layout.length) + " bytes each, " + has + ", which is no multiple." + hint;
    return {};
}

SubstanceRow unpack_row(std::string_view record, const RecordLayout& layout, bool Englisch) {
    SubstanceRow row;
    row.SubstanceNo = record_i16(record, layout.SystemNo);
    row.SubstanceFormula = trim_right(text_left(record_text(record, layout.Formula), 12));
    row.SubstanceName = trim(record_text(record, layout.Name(Englisch)));
    row.OtherName = trim(record_text(record, layout.Name(!Englisch)));
    row.SubstanceCAS = record_text(record, layout.CASRN);
    return row;
}

OpenedDatabase refuse(std::string fault) { return {.file = {}, .err = -1, .fault = std::move(fault)}; }

// Bytes of record index + 1; empty when there is none.
std::string read_substance_record(const DatabaseFile& file, int index) {
    const RecordLayout* layout = record_layout(file.DatabaseKind);
    if (layout == nullptr || index < 1 || index > file.StoffAnzahl()) return {};
    std::string record(layout->length, '\0');
    if (!file.handle.read_at(needed_bytes(index - 1, *layout), record)) return {};
    return record;
}

bool same_file(const std::string& a, const std::string& b) {
    std::error_code ec;
    return std::filesystem::equivalent(a, b, ec) && !ec;
}

}  // namespace

OpenedDatabase open_database(int kind, const std::string& path, bool Englisch) {
    const RecordLayout* layout = record_layout(kind);
    if (layout == nullptr)
        return refuse("A database is of kind 6 (*.Q06) or 7 (*.Q07), not " + std::to_string(kind) + ".");
    const RandomFile handle = RandomFile::open(path);
    if (!handle.is_open()) return refuse(quoted_name(path) + " cannot be opened.");

    std::string header(layout->length, '\0');
    const int count = handle.read_at(0, header) ? record_i16(header, layout->SystemNo) : 0;
    const std::string fault = length_fault(path, handle.size(), count, kind, *layout);
    if (!fault.empty()) return refuse(fault);

    // One read for the whole list.
    std::string records(needed_bytes(count, *layout) - layout->length, '\0');
    if (!handle.read_at(layout->length, records)) return refuse(quoted_name(path) + " cannot be read.");

    OpenedDatabase opened;
    opened.file.handle = handle;
    opened.file.DatabaseKind = kind;
    opened.file.path = path;
    (kind == 7 ? opened.file.PathQ07 : opened.file.PathQ06) = path;
    opened.file.rows.reserve(static_cast<std::size_t>(count));
    for (std::size_t at = 0; at < records.size(); at += layout->length)
        opened.file.rows.push_back(
            unpack_row(std::string_view(records).substr(at, layout->length), *layout, Englisch));
    return opened;
}

SubstanceHead read_substance_head(const DatabaseFile& file, int index) {
    const std::string record = read_substance_record(file, index);
    if (record.empty()) return {};
    const RecordLayout& layout = *record_layout(file.DatabaseKind);
    return {.CASRN = std::string(trim(record_text(record, layout.CASRN))),
            .Structure = record_text(record, layout.Structure)};
}

UnpackedRecord unpack_substance(const DatabaseFile& file, int index, bool Englisch) {
    const std::string record = read_substance_record(file, index);
    if (!record.empty()) return unpack_record(record, *record_layout(file.DatabaseKind), Englisch);
    UnpackedRecord nothing;
    nothing.err = -1;
    nothing.readable = false;
    return nothing;
}

int FindSystemNo(const DatabaseFile& file, int number) {
    const auto hit = std::ranges::find(file.rows, number, &SubstanceRow::SubstanceNo);
    return hit == file.rows.end() ? 0 : static_cast<int>(hit - file.rows.begin()) + 1;
}

int FindCAS(const DatabaseFile& file, std::string_view casrn) {
    const std::string_view wanted = trim_right(casrn);
    if (wanted.empty()) return 0;
    const auto hit = std::ranges::find(file.rows, wanted, &SubstanceRow::SubstanceCAS);
    return hit == file.rows.end() ? 0 : static_cast<int>(hit - file.rows.begin()) + 1;
}

WriteResult WriteDataBaseQ07(const DatabaseFile& file, int index, const SubstanceConstants& constants,
                             const PrivateDatabase& target) {
    const RecordLayout* layout = record_layout(target.kind);
    if (layout == nullptr || target.kind != file.DatabaseKind)
        return {.fault = "A substance is written as a database of the kind it was read from."};
    std::string data = read_substance_record(file, index);
    if (data.empty()) return {.fault = "There is no substance in force whose record could be read."};
    const std::string path =
        has_folder_part(target.path) ? target.path : join_path(target.ProgramPath, target.path);
    if (same_file(path, file.path))
        return {.fault =
                    quoted_name(path) + " is the database in force; it would be lost. Choose another name."};

    // The header keeps the rest of the record, apart from date, names and count.
    WriteResult result;
    std::string header = data;
    result.replaced += set_record_text(header, layout->Formula, target.date);
    set_record_text(header, layout->NameE, "");
    set_record_text(header, layout->NameD, "");
    set_record_i16(header, layout->SystemNo, 1);

    result.replaced += set_record_text(data, layout->Formula, constants.StoffFormula);
    result.replaced += set_record_text(data, layout->Name(target.Englisch), trim(constants.StoffName));
    result.replaced += set_record_text(data, layout->CASRN, constants.StoffCAS);
    if (target.kind == 7) set_record_i16(data, layout->SystemNo, 1);
    pack_cells(constants, *layout, data);

    result.fault = write_file_atomic(path, header + data);
    return result;
}

}  // namespace quom

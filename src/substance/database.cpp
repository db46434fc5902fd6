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

// What is wrong with a file of this length and header count; empty when it fits. Records behind the counted
// ones are allowed: they are no part of the list.
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
    if (count < 1)
        return name + " holds no substance: its header counts " + std::to_string(count) + ", a database " +
               layout.extension + " counts at least 1." + hint;
    if (size < needed_bytes(count, layout))
        return name + " is cut off: its header counts " + std::to_string(count) + " substances, which take " +
               std::to_string(needed_bytes(count, layout)) + " bytes, " + has + "." + hint;
    if (!is_whole(size, layout))
        return name + " is no database " + layout.extension + ": its records take " +
               std::to_string(layout.length) + " bytes each, " + has + ", which is no multiple." + hint;
    return {};
}

SubstanceRow unpack_row(std::string_view record, const RecordLayout& layout, bool Englisch) {
    SubstanceRow row;
    row.SubstanceNo = record_i16(record, layout.SystemNo);
    row.SubstanceFormula = trim_right(text_left(record_text(record, layout.Formula), 12));
    row.SubstanceName = trim(record_text(record, layout.Name(Englisch)));
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
    opened.file.record = records.substr(records.size() - layout->length);
    return opened;
}

LoadResult LoadDatabase(Session& s, int kind, std::string_view path) {
    if (!FileExists(path, s.database.ProgramPath))
        return {.err = -1, .fault = "There is no database \"" + std::string(path) + "\"."};
    OpenedDatabase opened =
        open_database(kind, resolve_path(path, s.database.ProgramPath), s.options.Englisch);
    if (opened.err != 0) return {.err = opened.err, .fault = std::move(opened.fault)};

    DatabaseFile& file = s.database.file;
    (kind == 7 ? opened.file.PathQ06 : opened.file.PathQ07) = kind == 7 ? file.PathQ06 : file.PathQ07;
    file = std::move(opened.file);
    s.database.StoffIndex = s.database.StoffIndexAktiv = 0;
    return {};
}

SubstanceHead read_substance_head(const Session& s, int index) {
    const std::string record = read_substance_record(s.database.file, index);
    if (record.empty()) return {};
    const RecordLayout& layout = *record_layout(s.database.file.DatabaseKind);
    return {.CASRN = std::string(trim(record_text(record, layout.CASRN))),
            .Structure = record_text(record, layout.Structure)};
}

std::int16_t UnpackSubstance(Session& s, int index) {
    DatabaseFile& file = s.database.file;
    UnpackedRecord unpacked{.constants = {}, .EVPTag = default_evp_tag({}), .err = -1};
    std::string record = read_substance_record(file, index);
    if (!record.empty()) {
        unpacked = unpack_record(record, *record_layout(file.DatabaseKind), s.options.Englisch);
        file.record = std::move(record);
    }
    s.substance = std::move(unpacked.constants);
    s.models.EVPTag = std::move(unpacked.EVPTag);
    return unpacked.err;
}

void drop_derived_state(Session& s) {
    const std::int16_t AlphaForm = s.eos.AlphaForm;
    s.eos = {};
    s.eos.AlphaForm = AlphaForm;
    s.scratch = {};
    s.benson = {};
    s.environment = {};
    s.calc.state = {};
    s.calc.BatchResults.clear();
}

std::int16_t SelectSubstance(Session& s, int index) {
    if (index == 0) return 0;
    const bool readable = !read_substance_record(s.database.file, index).empty();
    const std::int16_t err = UnpackSubstance(s, index);
    s.database.StoffIndex = s.database.StoffIndexAktiv = readable ? index : 0;
    s.substance.StoffFormulaCompact = s.substance.StoffFormula;
    std::erase(s.substance.StoffFormulaCompact, ' ');
    drop_derived_state(s);
    return err;
}

int FindSystemNo(const Session& s, int number) {
    const auto& rows = s.database.file.rows;
    const auto hit = std::find_if(rows.begin(), rows.end(),
                                  [&](const SubstanceRow& row) { return row.SubstanceNo == number; });
    return hit == rows.end() ? 0 : static_cast<int>(hit - rows.begin()) + 1;
}

int FindCAS(const Session& s, std::string_view casrn) {
    const std::string_view wanted = trim_right(casrn);
    if (wanted.empty()) return 0;
    const auto& rows = s.database.file.rows;
    const auto hit = std::find_if(rows.begin(), rows.end(),
                                  [&](const SubstanceRow& row) { return row.SubstanceCAS == wanted; });
    return hit == rows.end() ? 0 : static_cast<int>(hit - rows.begin()) + 1;
}

WriteResult WriteDataBaseQ07(Session& s, int kind, std::string_view path, std::string_view date) {
    DatabaseFile& file = s.database.file;
    const RecordLayout* layout = record_layout(kind);
    if (layout == nullptr || kind != file.DatabaseKind)
        return {.fault = "A substance is written as a database of the kind it was read from."};
    std::string data = read_substance_record(file, s.database.StoffIndexAktiv);
    if (data.empty()) return {.fault = "There is no substance in force whose record could be read."};
    const std::string target =
        has_folder_part(path) ? std::string(path) : join_path(s.database.ProgramPath, path);
    if (same_file(target, file.path))
        return {.fault = quoted_name(target) +
                         " is the database in force; it would be lost. Choose another name."};

    // The header keeps what the buffer held, apart from date, names and count.
    WriteResult result;
    std::string header = file.record;
    header.resize(layout->length, '\0');
    result.replaced += set_record_text(header, layout->Formula, date);
    set_record_text(header, layout->NameE, "");
    set_record_text(header, layout->NameD, "");
    set_record_i16(header, layout->SystemNo, 1);

    const SubstanceConstants& c = s.substance;
    result.replaced += set_record_text(data, layout->Formula, c.StoffFormula);
    result.replaced += set_record_text(data, layout->Name(s.options.Englisch), trim(c.StoffName));
    result.replaced += set_record_text(data, layout->CASRN, c.StoffCAS);
    if (kind == 7) set_record_i16(data, layout->SystemNo, 1);
    pack_cells(c, *layout, data);

    result.fault = write_file_atomic(target, header + data);
    if (result.fault.empty()) file.record = std::move(data);
    return result;
}

}  // namespace quom

#include "substance/starter_database.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/csv_rows.h"
#include "base/number_text.h"
#include "substance/identity.h"
#include "substance/record.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

// Columns that lie in neighbouring cells, by their names without the prefix.
struct ColumnGroup {
    std::string_view prefix, columns;
    int cell;
    bool whole = false;          // given completely or not at all
    bool zero_is_given = false;  // a written 0 becomes the mark of a true zero
};
constexpr ColumnGroup groups[] = {
    {"", "M", 0},
    {"", "Tcr pcr rhocr omega Tnb", 6},
    {"rhoL_", "A B C D E F G Tcr TLo THi", 13, true},
    {"kf_", "A B C D E F G H I TLo THi", 24, true},
    {"antlo_", "A B C TLo THi", 36, true},
    {"anthi_", "A B C TLo THi", 42, true},
    {"wagner_", "a1 a2 a3 e3 a4 e4 a5 e5 Tcr pcr TLo THi", 48, true},
    {"cppoly_", "C0 C1 C2 C3 C4 TLo THi", 61, true},
    {"cpsinh_", "C0 C1 C2 C3 C4 TLo THi", 69, true},
    {"cpL_", "C0 C1 C2 C3 C4 TLo THi", 77, true},
    {"", "dfH", 85, false, true},
    {"", "dfG", 87, false, true},
    {"", "S0", 89},
    {"", "Ttr ptr", 91},
    {"hlv_", "A beta C D E alpha Tcr TLo THi", 96, true},
    {"watson_", "h T", 105, true},
    {"watson2_", "h T", cell_Watson2HLV, true},
    {"cpS_", "C0 C1 C2 C3 C4 TLo THi", 110, true},
    {"rhoS_", "A B C D TLo THi", 118, true},
};

struct TextColumn {
    const char* name;
    TextField field;
    std::size_t longest;
};

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

// A table with a header row: fields by the name of their column.
class Table {
 public:
    Table(std::string_view name, std::string_view text) : name_(name), rows_(csv_rows(text)) {
        if (rows_.empty()) return;
        for (std::size_t k = 0; k < rows_.front().fields.size(); ++k) columns_[rows_.front().fields[k]] = k;
    }
    std::span<const CsvRow> rows() const {
        return rows_.empty() ? std::span<const CsvRow>() : std::span(rows_).subspan(1);
    }
    bool has(const std::string& column) const { return columns_.contains(column); }
    std::string_view at(const CsvRow& row, const std::string& column) const {
        const auto found = columns_.find(column);
        return found == columns_.end() || found->second >= row.fields.size()
                   ? std::string_view()
                   : std::string_view(row.fields[found->second]);
    }
    std::size_t width() const { return columns_.size(); }
    std::string place(const CsvRow& row) const {
        return name_ + ", line " + std::to_string(row.line) + " (" + std::string(at(row, "cas")) + "): ";
    }

 private:
    std::string name_;
    std::vector<CsvRow> rows_;
    std::map<std::string, std::size_t> columns_;
};

class Builder {
 public:
    explicit Builder(const StarterTables& tables)
        : substances_("substances", tables.substances),
          synonyms_("synonyms", tables.synonyms),
          date_(tables.date) {}

    StarterDatabase build() {
        if (check_columns()) {
            read_synonyms();
            for (const CsvRow& row : substances_.rows()) add_substance(row);
            for (const auto& [cas, row] : names_)
                if (!blocks_by_cas_.contains(cas))
                    fault(synonyms_, *row, "names a substance that the table of substances lacks");
            const std::size_t count = substances_.rows().size();
            if (count < 1 || count > 32767)
                faults_.push_back("substances: 1 to 32767 rows are needed, there are " +
                                  std::to_string(count));
        }
        if (!faults_.empty()) return {.database = {}, .synonyms = {}, .faults = std::move(faults_)};
        return {.database = header() + records_,
                .synonyms = cp1252_from_utf8(synonym_file_text(blocks_)).bytes,
                .faults = {}};
    }

 private:
    void fault(const Table& table, const CsvRow& row, const std::string& reason) {
        faults_.push_back(table.place(row) + reason);
    }

    bool check_columns() {
        const auto need = [&](const Table& table, const std::string& of, const std::string& column) {
            if (!table.has(column)) faults_.push_back(of + ": column \"" + column + "\" is missing");
        };
        for (const TextColumn& column : texts_) need(substances_, "substances", column.name);
        for (const ColumnGroup& group : groups)
            for (const std::string_view column : split(group.columns, ' '))
                need(substances_, "substances", std::string(group.prefix).append(column));
        need(synonyms_, "synonyms", "cas");
        need(synonyms_, "synonyms", "synonyms");
        return faults_.empty();
    }

    void read_synonyms() {
        for (const CsvRow& row : synonyms_.rows())
            if (!names_.emplace(synonyms_.at(row, "cas"), &row).second)
                fault(synonyms_, row, "this CAS number has a row already");
    }

    std::string header() const {
        std::string record = blank_record();
        set_record_text(record, layout_.Formula, date_);
        set_record_i16(record, layout_.SystemNo, static_cast<std::int16_t>(substances_.rows().size()));
        return record;
    }

    std::string blank_record() const {
        return std::string(layout_.SystemNo, ' ') + std::string(layout_.length - layout_.SystemNo, '\0');
    }

    void add_substance(const CsvRow& row) {
        std::string record = blank_record();
        if (row.fields.size() != substances_.width())
            fault(substances_, row,
                  "has " + std::to_string(row.fields.size()) + " fields, the header " +
                      std::to_string(substances_.width()));
        add_texts(row, record);
        for (const ColumnGroup& group : groups) add_cells(row, group, record);
        check_formula(row, record_cell(record, layout_, 0));
        check_melting(row, record);
        set_record_i16(record, layout_.SystemNo, static_cast<std::int16_t>(blocks_.size() + 1));
        records_ += record;
        add_names(row);
    }

    void add_texts(const CsvRow& row, std::string& record) {
        for (const TextColumn& column : texts_) {
            const std::string_view text = substances_.at(row, column.name);
            const std::string what = std::string(column.name) + " \"" + std::string(text) + "\" ";
            if (trim(text).empty()) fault(substances_, row, std::string(column.name) + " is missing");
            if (text_length(text) > column.longest)
                fault(substances_, row,
                      what + "is longer than " + std::to_string(column.longest) + " characters");
            if (has_control_character(text)) fault(substances_, row, what + "has a control character");
            if (set_record_text(record, column.field, text) != 0)
                fault(substances_, row, what + "has a character outside Windows-1252");
        }
        const std::string cas(substances_.at(row, "cas"));
        if (!is_cas_number(cas))
            fault(substances_, row, "CAS number is malformed or its check digit is wrong");
        if (!blocks_by_cas_.emplace(cas, row.line).second)
            fault(substances_, row,
                  "the CAS number stands in line " + std::to_string(blocks_by_cas_[cas]) + " already");
    }

    static bool has_control_character(std::string_view text) {
        return std::any_of(text.begin(), text.end(),
                           [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    }

    void add_cells(const CsvRow& row, const ColumnGroup& group, std::string& record) {
        const auto columns = split(group.columns, ' ');
        std::size_t given = 0;
        int cell = group.cell;
        float TLo = 0.0f, THi = 0.0f;
        for (const std::string_view column : columns) {
            const std::string name = std::string(group.prefix).append(column);
            const std::string_view text = substances_.at(row, name);
            if (!text.empty()) ++given;
            float value = text.empty() ? 0.0f : number(row, name, text);
            if (column == "TLo" || column == "THi") {
                (column == "TLo" ? TLo : THi) = value;
                if (!text.empty()) check_limit(row, name, value);
            }
            if (group.zero_is_given && !text.empty() && value == 0.0f) value = TrueZero;
            set_record_cell(record, layout_, cell++, value);
        }
        if (given == 0) return;
        if (group.whole && given != columns.size())
            fault(substances_, row, "the set " + std::string(group.prefix) + ".. is not complete");
        if (group.columns.ends_with("THi") && !(TLo < THi))
            fault(substances_, row,
                  std::string(group.prefix) + "TLo " + genNum(TLo) + " is not below THi " + genNum(THi));
    }

    float number(const CsvRow& row, const std::string& column, std::string_view text) {
        float value = 0.0f;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
            fault(substances_, row,
                  column + " \"" + std::string(text) + "\" is no number of single precision");
            return 0.0f;
        }
        return value;
    }

    void check_limit(const CsvRow& row, const std::string& column, float value) {
        if (value != std::round(value) || value < 1.0f || value > 32767.0f)
            fault(substances_, row, column + " " + genNum(value) + " is not a whole number from 1 to 32767");
    }

    void check_formula(const CsvRow& row, float M) {
        const std::string formula(substances_.at(row, "formula"));
        const std::optional<double> mass = molar_mass(formula);
        if (!(M > 0.0f))
            fault(substances_, row, "M is missing");
        else if (!mass)
            fault(substances_, row, "formula " + formula + " cannot be read");
        else if (std::abs(*mass - static_cast<double>(M)) > 0.05)
            fault(substances_, row,
                  "M " + genNum(M) + " does not agree with " + genNum(*mass) + " of formula " + formula);
    }

    // A melting point that belongs to another compound shows against the boiling point and the liquid
    // equations.
    void check_melting(const CsvRow& row, const std::string& record) {
        const float Tnb = record_cell(record, layout_, 10), Ttr = record_cell(record, layout_, 91);
        const float rhoLTLo = record_cell(record, layout_, 21);
        if (Tnb > 0.0f && Ttr >= Tnb && substances_.at(row, "tnb_mark") != "sublimation")
            fault(substances_, row, "Ttr " + genNum(Ttr) + " is not below Tnb " + genNum(Tnb));
        if (rhoLTLo > 0.0f && rhoLTLo < Ttr - 100.0f)
            fault(substances_, row,
                  "rhoL_TLo " + genNum(rhoLTLo) + " lies more than 100 K below Ttr " + genNum(Ttr));
    }

    // One block of the synonym file: main names first, then what follows the ";", then the table of synonyms.
    void add_names(const CsvRow& row) {
        const std::string cas(substances_.at(row, "cas"));
        const auto english = split(substances_.at(row, "name_en"), ';');
        const auto german = split(substances_.at(row, "name_de"), ';');
        std::vector<std::string_view> names{english.front(), german.front()};
        names.insert(names.end(), english.begin() + 1, english.end());
        names.insert(names.end(), german.begin() + 1, german.end());
        if (const auto found = names_.find(cas); found != names_.end())
            for (const std::string_view name : split(synonyms_.at(*found->second, "synonyms"), '|'))
                if (!trim(name).empty()) names.push_back(name);

        SynonymBlock block{.casrn = cas,
                           .head = "#" + std::string(trim(english.front())) + "_(" +
                                   std::string(trim(german.front())) + ")_" +
                                   std::string(substances_.at(row, "formula")),
                           .synonyms = {}};
        if (std::count(block.head.begin(), block.head.end(), '_') != 2)
            fault(substances_, row,
                  "a main name has a \"_\", which separates the fields of the synonym file");
        for (const std::string_view name : names) add_name(row, name, block);
        blocks_.push_back(std::move(block));
    }

    void add_name(const CsvRow& row, std::string_view name, SynonymBlock& block) {
        std::string line(trim(name));
        NormalizeName(line);
        line = normal_spelling(std::move(line));
        const std::string key = without_marks(line);
        const std::string what = "the name \"" + std::string(trim(name)) + "\" ";
        if (key.empty() || line == "END" || is_cas_number(line))
            fault(substances_, row, what + "cannot stand in a file of synonyms");
        if (has_control_character(line) || cp1252_from_utf8(line).replaced != 0)
            fault(substances_, row, what + "has a character outside Windows-1252");
        const auto [owner, is_new] = owners_.emplace(key, block.casrn);
        if (is_new)
            block.synonyms.push_back(std::move(line));
        else if (owner->second != block.casrn)
            fault(substances_, row, what + "leads to " + owner->second + " too");
    }

    const RecordLayout& layout_ = *record_layout(7);
    // A formula is cut to 12 characters in the list of substances.
    const std::vector<TextColumn> texts_{{"cas", layout_.CASRN, layout_.CASRN.width},
                                         {"formula", layout_.Formula, 12},
                                         {"name_en", layout_.NameE, layout_.NameE.width},
                                         {"name_de", layout_.NameD, layout_.NameD.width},
                                         {"structure", layout_.Structure, layout_.Structure.width}};
    const Table substances_, synonyms_;
    const std::string date_;
    std::map<std::string, const CsvRow*, std::less<>> names_;  // rows of synonyms by CAS number
    std::map<std::string, int> blocks_by_cas_;                 // lines of substances by CAS number
    std::map<std::string, std::string> owners_;                // CAS number by key of a name
    std::vector<SynonymBlock> blocks_;
    std::string records_;
    std::vector<std::string> faults_;
};

}  // namespace

StarterDatabase build_starter_database(const StarterTables& tables) { return Builder(tables).build(); }

}  // namespace quom

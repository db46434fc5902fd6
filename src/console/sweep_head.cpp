#include "console/sweep_head.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>

#include "base/code_page.h"
#include "console/sweep_cells.h"

namespace quom {
namespace {

constexpr std::size_t ShownCharacters = 60;

struct FieldInfo {
    std::string_view name;
    Quantity quantity;
};
constexpr FieldInfo fields[field_count] = {{"T", Quantity::T},
                                           {"p", Quantity::p},
                                           {"rho", Quantity::rho},
                                           {"m", Quantity::mass},
                                           {"V", Quantity::tank_volume}};

// A name in a head. Where a table has several for one field, the lowest rank is read; it may depend on
// whether the mode specifies the density of the vapor or of the liquid.
struct FieldName {
    std::string_view name;  // longer ones first where one begins with another
    SweepField field;
    int rank = 0, rank_liquid = 0;
    std::string_view unit{};  // without one behind the name; empty: the workbench's own
};
constexpr std::string_view molar_volume = "m^3/kmol";
constexpr FieldName field_names[] = {{"T", field_T},
                                     {"p", field_p},
                                     {"rho(V)", field_rho, 1, 4},
                                     {"rho(L)", field_rho, 4, 1},
                                     {"rho", field_rho},
                                     {"v(V)", field_rho, 3, 5, molar_volume},
                                     {"v(L)", field_rho, 5, 3, molar_volume},
                                     {"v", field_rho, 2, 2, molar_volume},
                                     {"m", field_m},
                                     {"V", field_V}};

// A column that may be the one of a field, and the unit that it names.
struct Candidate {
    const FieldName* name = nullptr;
    std::optional<std::string_view> unit{};
};

// "kg/m^3" of "/(kg/m^3)", " [kg/m^3]", " in kg/m^3", ", kg/m^3".
std::string_view unit_behind_name(std::string_view text) {
    text = trim(text);
    if (text.starts_with('/') || text.starts_with(',')) text = trim(text.substr(1));
    if (text.starts_with("in ")) text = trim(text.substr(3));
    const bool round = text.starts_with('(') && text.find(')') == text.size() - 1;
    const bool square = text.starts_with('[') && text.find(']') == text.size() - 1;
    return round || square ? trim(text.substr(1, text.size() - 2)) : text;
}

Candidate candidate_of(std::string_view column) {
    for (const FieldName& known : field_names) {
        if (!column.starts_with(known.name)) continue;
        const std::string_view rest = column.substr(known.name.size());
        if (rest.empty()) return {&known, known.unit.empty() ? std::nullopt : std::optional(known.unit)};
        if (std::string_view(" /[(,").find(rest.front()) == std::string_view::npos) continue;
        if (rest == "(L)" || rest == "(V)") continue;  // V(L), m(V) are of a phase
        return {&known, unit_behind_name(rest)};
    }
    return {};
}

UnitMatch conversion_of(const Candidate& c, double M) {
    return c.unit ? find_unit(field_quantity(c.name->field), *c.unit, M) : UnitMatch{};
}

// "T" of "T/C", "T [C]", "T (in C)".
std::string_view bare_name(std::string_view name) {
    for (const std::string_view sign : {"/", "[", " (", " in "}) name = name.substr(0, name.find(sign));
    return trim(name);
}

std::string in_quotes(std::string_view text) { return '"' + std::string(text) + '"'; }

// Cuts a line into the names of its columns; the fault of a cell that cannot be read.
std::string cut_names(std::string_view line, char delimiter, std::vector<std::string>& names) {
    const char* const end = line.data() + line.size();
    for (const char* at = line.data(); at;) {
        Cell cell;
        at = cut_cell(at, end, delimiter, cell);
        if (cell.fault == CellFault::not_closed)
            return "the quotes of " + in_quotes(cell.text) + " are not closed";
        if (cell.fault != CellFault::none)
            return "characters stand behind the quotes of " + in_quotes(cell.text);
        names.emplace_back(trim(cell_content(cell)));
    }
    return {};
}

class HeadReader {
 public:
    HeadReader(Mode mode, double M, const TableOptions& options)
        : mode_(mode), M_(M), options_(options), needed_(needed_fields(mode)) {}

    SweepHead read(std::string_view line) {
        head_.from_first_line = options_.columns.empty();
        const bool comma = options_.decimal != ',';
        const std::string_view text = head_.from_first_line ? line : std::string_view(options_.columns);
        const char own = delimiter_of(text, true, ';');
        head_.delimiter = delimiter_of(line, comma, own == ',' && !comma ? ';' : own);
        if (text.find('\0') != std::string_view::npos) {
            head_.fault = "the table is no text in UTF-8, or in UTF-16 with a mark";
            return std::move(head_);
        }
        std::vector<std::string> names;
        const std::string fault = cut_names(text, head_.from_first_line ? head_.delimiter : own, names);
        if (!fault.empty()) head_.fault = place() + ": " + fault;
        for (std::string& name : names) head_.columns.emplace_back().name = std::move(name);
        for (const SweepField field : needed_) {
            if (head_.fault.empty()) find_column(field);
        }
        if (head_.fault.empty() && !missing_.empty()) head_.fault = missing_columns(text);
        if (head_.fault.empty()) keep_columns();
        return std::move(head_);
    }

 private:
    std::string place() const { return head_.from_first_line ? "the head line" : "--columns"; }

    // Marks the column of a field: the one of lowest rank whose unit is known.
    void find_column(SweepField field) {
        const bool liquid = mode_info(mode_).specified & spec_rhoL;
        SweepHead::Column* best = nullptr;
        int best_rank = 0;
        bool twice = false;
        for (SweepHead::Column& column : head_.columns) {
            const Candidate c = candidate_of(column.name);
            if (!c.name || c.name->field != field) continue;
            const UnitMatch unit = conversion_of(c, M_);
            if (!unit.fault.empty()) {
                unknown_units_ += (unknown_units_.empty() ? "" : "; ") + unit.fault;
                continue;
            }
            const int rank = liquid ? c.name->rank_liquid : c.name->rank;
            if (best && rank > best_rank) continue;
            twice = best && rank == best_rank;
            best = &column;
            best_rank = rank;
            column.unit = unit.conversion;
        }
        if (twice) head_.fault = place() + " names " + std::string(field_name(field)) + " twice";
        if (!best) missing_ += (missing_.empty() ? "" : ", ") + std::string(field_name(field));
        if (best) best->field = field;
    }

    std::string missing_columns(std::string_view text) const {
        std::string fault = place() + " has no column " + missing_;
        if (!unknown_units_.empty()) return fault + " that can be read: " + unknown_units_;
        fault += "; it reads " + in_quotes(text_left(text, ShownCharacters)) + ", right is for example \"";
        for (const SweepField field : needed_) {
            if (field != needed_.front()) fault += ';';
            fault += field_name(field);
        }
        fault += '"';
        if (options_.decimal == ',' && head_.from_first_line && text.find(',') != std::string_view::npos)
            fault += " (with --decimal , the columns are delimited by ; or tabs)";
        return fault;
    }

    // Marks the columns of --keep: by their whole names, or else without the unit; all: up to the last that
    // has a name.
    void keep_columns() {
        if (options_.keep.empty()) return;
        if (options_.keep == "all") {
            bool from_here = false;
            for (auto column = head_.columns.rbegin(); column != head_.columns.rend(); ++column) {
                from_here = from_here || !column->name.empty();
                column->kept = from_here;
            }
            return;
        }
        std::vector<std::string> names;
        std::string fault = cut_names(options_.keep, ',', names);
        for (const std::string& name : names) {
            bool found = false;
            const auto mark = [&](auto has_name) {
                for (SweepHead::Column& column : head_.columns) {
                    if (!has_name(column.name)) continue;
                    column.kept = true;
                    found = true;
                }
            };
            mark([&](const std::string& column) { return column == name; });
            if (!found) mark([&](const std::string& column) { return bare_name(column) == name; });
            if (!found && fault.empty()) fault = place() + " has no column " + in_quotes(name);
        }
        if (fault.empty()) return;
        head_.fault = "--keep: " + fault + "; there are ";
        for (const SweepHead::Column& column : head_.columns)
            head_.fault += (&column == &head_.columns.front() ? "" : ", ") + in_quotes(column.name);
    }

    Mode mode_;
    double M_;
    const TableOptions& options_;
    std::vector<SweepField> needed_;
    SweepHead head_;
    std::string missing_, unknown_units_;
};

}  // namespace

std::vector<SweepField> needed_fields(Mode mode) {
    const unsigned specified = mode_info(mode).specified;
    if (specified & spec_tank) return {field_T, field_m, field_V};
    std::vector<SweepField> list;
    if (specified & spec_T) list.push_back(field_T);
    if (specified & spec_p) list.push_back(field_p);
    if (specified & (spec_rhoV | spec_rhoL)) list.push_back(field_rho);
    return list;
}

std::string_view field_name(SweepField field) { return fields[field].name; }
Quantity field_quantity(SweepField field) { return fields[field].quantity; }

ColumnMatch match_column(std::string_view name, double M) {
    const Candidate c = candidate_of(name);
    if (!c.name) return {};
    const UnitMatch unit = conversion_of(c, M);
    if (!unit.fault.empty()) return {-1, {}, unit.fault};
    return {c.name->field, unit.conversion, {}};
}

void add_table_options(CLI::App& app, TableOptions& options) {
    app.add_option_function<std::string>(
           "--decimal", [&options](const std::string& sign) { options.decimal = sign.front(); },
           "Decimal sign of the table's numbers; with a comma the columns are delimited by ; or tabs")
        ->check(CLI::IsMember({".", ","}))
        ->type_name(".|,");
    app.add_option("--columns", options.columns,
                   "Names and units of the columns, for a table without a head line: \"T/C,p/bar\"; a column "
                   "without a name is not read")
        ->type_name("NAMES");
    app.add_option("--keep", options.keep,
                   "Columns of the table to stand before the results: all, or names with commas; one that is "
                   "called as a result gets \" (in)\" behind its name")
        ->type_name("all|NAMES");
    app.add_flag("--line-numbers", options.line_numbers,
                 "First column of the output: the number of the line in the table");
}

SweepHead read_sweep_head(std::string_view line, Mode mode, double M, const TableOptions& options) {
    return HeadReader(mode, M, options).read(line);
}

SweepHead read_sweep_head(TableInput& input, Mode mode, double M, const TableOptions& options) {
    const std::string line = options.columns.empty() ? input.first_line() : input.peek_line();
    SweepHead head = read_sweep_head(line, mode, M, options);
    if (!input.fault().empty()) head.fault = input.fault();
    return head;
}

std::string kept_names(const SweepHead& head, std::span<const std::string> result_names) {
    std::string text;
    std::vector<std::string_view> taken;
    for (const std::string& name : result_names) taken.push_back(bare_name(name));
    bool first = true;
    for (const SweepHead::Column& column : head.columns) {
        if (!column.kept) continue;
        if (!first) text += head.delimiter;
        first = false;
        const std::string_view bare = bare_name(column.name);
        const bool clash = !bare.empty() && std::ranges::find(taken, bare) != taken.end();
        append_cell(text, column.name + (clash ? " (in)" : ""), head.delimiter);
    }
    return text;
}

}  // namespace quom

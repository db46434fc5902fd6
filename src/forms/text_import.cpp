#include "forms/text_import.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <span>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "forms/refusal.h"
#include "forms/table_number.h"
#include "quantities/unit_table.h"

namespace quom {
namespace {

constexpr std::size_t sampled_rows = 300;     // for the kinds of columns
constexpr std::size_t decimal_rows = 20'000;  // for the decimal sign
constexpr std::size_t head_search_lines = 50;
constexpr std::size_t most_columns = 256;
constexpr std::size_t quoted_characters = 40;
constexpr std::size_t shown_characters = 200;  // of a cell

std::string in_quotes(std::string_view text) {
    const std::string shown = text_left(text, quoted_characters);
    return '"' + shown + (shown.size() < text.size() ? "...\"" : "\"");
}

std::string counted(std::size_t n, std::string_view one, std::string_view more) {
    return std::to_string(n) + " " + std::string(n == 1 ? one : more);
}

// Cells of a head that blanks delimit, where names, signs and units stand apart: "T / °C   p / bar".
std::vector<std::string> head_cells_at_blanks(std::string_view line, std::size_t columns) {
    std::vector<TableCell> words;
    cut_cells(line, TableDelimiter::blanks, words);
    if (words.size() == columns) {
        std::vector<std::string> cells;
        cells.reserve(words.size());
        for (const TableCell& word : words) cells.push_back(cell_content(word));
        return cells;
    }
    std::vector<std::string> wide;
    for (std::size_t begin = line.find_first_not_of(" \t"); begin < line.size();) {
        const std::size_t end = std::min({line.find("  ", begin), line.find('\t', begin), line.size()});
        wide.emplace_back(trim_cell(line.substr(begin, end - begin)));
        begin = line.find_first_not_of(" \t", end);
    }
    if (wide.size() == columns) return wide;
    std::vector<std::string> joined;
    bool open = false;
    for (const TableCell& word : words) {
        const std::string text = cell_content(word);
        const bool behind_sign =
            !joined.empty() && (joined.back().ends_with('/') || joined.back().ends_with(" in"));
        const bool behind =
            text.starts_with('/') || text.starts_with('(') || text.starts_with('[') || text == "in";
        if (!joined.empty() && words.size() > columns && (open || behind_sign || behind))
            joined.back() += " " + text;
        else
            joined.push_back(text);
        const std::string& last = joined.back();
        open = std::ranges::count(last, '(') > std::ranges::count(last, ')') ||
               std::ranges::count(last, '[') > std::ranges::count(last, ']');
    }
    return joined;
}

class Importer {
 public:
    explicit Importer(const ImportOptions& options) : options_(options) {}

    TextImport read(std::string_view bytes) {
        TableText table = table_text(bytes);
        text_ = std::move(table.text);
        result_.encoding = std::move(table.encoding);
        result_.fault = std::move(table.fault);
        if (!result_.fault.empty()) return std::move(result_);
        lines_ = table_lines(text_);
        recognise_delimiter();
        if (lines_.empty() || columns_ == 0) {
            result_.fault = "There is no table to import.";
            return std::move(result_);
        }
        if (columns_ > most_columns) {
            result_.fault = "The table has " + std::to_string(columns_) + " columns; at most " +
                            std::to_string(most_columns) + " can be read.";
            return std::move(result_);
        }
        recognise_decimal();
        find_first_row();
        recognise_columns();
        read_lines();
        finish();
        return std::move(result_);
    }

 private:
    using Kind = TableLine::Kind;
    NumberStyle style() const {
        const bool blanks_part =
            result_.delimiter == TableDelimiter::blanks || result_.delimiter == TableDelimiter::comma;
        return {result_.decimal, !blanks_part};
    }
    bool is_number(const TableCell& cell) const { return read_table_number(cell.text, style()).good; }
    void cut(const TableLine& line) { cut_cells(line.text, result_.delimiter, cells_); }

    // ---- what the text is made of

    void recognise_delimiter() {
        const DelimiterProposal proposal = propose_delimiter(lines_);
        result_.delimiter = options_.delimiter.value_or(proposal.delimiter);
        // Spreadsheets write "sep=;" into the first line.
        if (!options_.delimiter && !lines_.empty() && lines_.front().text.starts_with("sep=") &&
            lines_.front().text.size() == 5) {
            for (const TableDelimiter d :
                 {TableDelimiter::tab, TableDelimiter::semicolon, TableDelimiter::comma, TableDelimiter::bar})
                if (lines_.front().text[4] == delimiter_sign(d)) result_.delimiter = d;
        }
        if (proposal.may_be_comma && !options_.delimiter) {
            result_.warnings.emplace_back(
                "Each row may be one number with a decimal comma as well as two numbers delimited by commas; "
                "it is read as two.");
        }
        columns_ = usual_columns();
    }

    // The count of cells of most rows.
    std::size_t usual_columns() {
        std::map<std::size_t, std::size_t> rows_by_count, lines_by_count;
        std::size_t sampled = 0;
        for (const TableLine& line : lines_) {
            if (line.kind != Kind::content) continue;
            if (++sampled > sampled_rows) break;
            cut(line);
            ++lines_by_count[cells_.size()];
            const auto number = [](const TableCell& cell) {
                return read_table_number(cell.text, {'.', false}).good ||
                       read_table_number(cell.text, {',', false}).good;
            };
            if (std::ranges::any_of(cells_, number)) ++rows_by_count[cells_.size()];
        }
        std::size_t best = 0, most = 0;
        for (const auto& [count, lines] : rows_by_count.empty() ? lines_by_count : rows_by_count) {
            if (lines < most) continue;
            best = count;
            most = lines;
        }
        return best;
    }

    void recognise_decimal() {
        std::size_t point = 0, comma = 0, sampled = 0;
        std::string either_point, either_comma, other;
        for (const TableLine& line : lines_) {
            if (line.kind != Kind::content) continue;
            if (++sampled > decimal_rows) break;
            cut(line);
            for (const TableCell& cell : cells_) {
                const DecimalHint hint = decimal_hint(cell.text, style().blank_groups);
                point += hint == DecimalHint::point;
                comma += hint == DecimalHint::comma;
                if (hint != DecimalHint::either) continue;
                std::string& example =
                    cell.text.find(',') == std::string_view::npos ? either_point : either_comma;
                if (example.empty()) example = cell.text;
            }
        }
        const bool decided = point + comma > 0;
        const bool comma_wins = decided ? comma > point : either_point.empty() && !either_comma.empty();
        result_.decimal = options_.decimal.value_or(comma_wins ? ',' : '.');
        const bool both = !either_point.empty() && !either_comma.empty();
        const std::string& example = result_.decimal == ',' && !either_comma.empty() ? either_comma
                                     : !either_point.empty()                         ? either_point
                                                                                     : either_comma;
        if (options_.decimal || example.empty()) return;
        if (!decided || both) warn_of_either(example);
    }

    void warn_of_either(const std::string& example) {
        const TableNumber here = read_table_number(example, style());
        const TableNumber there =
            read_table_number(example, {result_.decimal == ',' ? '.' : ',', style().blank_groups});
        result_.warnings.push_back(in_quotes(example) + " may be " + genNum(here.value) + " or " +
                                   genNum(there.value) + "; it is read as " + genNum(here.value) +
                                   ". Choose the other decimal sign if that is wrong.");
    }

    // ---- head

    std::vector<std::string> head_cells(std::string_view text) {
        if (result_.delimiter == TableDelimiter::blanks) return head_cells_at_blanks(text, columns_);
        cut_cells(text, result_.delimiter, cells_);
        std::vector<std::string> contents;
        for (const TableCell& cell : cells_) contents.push_back(cell_content(cell));
        return contents;
    }

    bool names_quantities(const std::vector<std::string>& cells) const {
        std::size_t filled = 0, named = 0;
        for (const std::string& cell : cells) {
            if (cell.empty()) continue;
            const HeadCell head = names_.read(cell);
            ++filled;
            named += head.quantity != ImportQuantity::skip || !head.other.empty();
        }
        return named > 0 && named * 2 >= filled;
    }

    std::size_t numbers_in(const TableLine& line) {
        cut(line);
        return static_cast<std::size_t>(
            std::ranges::count_if(cells_, [this](const TableCell& c) { return is_number(c); }));
    }

    // The usual count of numbers in a row.
    std::size_t usual_numbers() {
        std::map<std::size_t, std::size_t> by_count;
        std::size_t sampled = 0;
        for (const TableLine& line : lines_) {
            if (line.kind != Kind::content) continue;
            if (++sampled > sampled_rows) break;
            if (const std::size_t n = numbers_in(line)) ++by_count[n];
        }
        const auto most =
            std::ranges::max_element(by_count, {}, [](const auto& entry) { return entry.second; });
        return most == by_count.end() ? 0 : most->first;
    }

    // The first row of values, and the line of the head that names the quantities.
    void find_first_row() {
        const std::size_t usual = usual_numbers();
        std::size_t seen = 0;
        for (std::size_t i = 0; i < lines_.size() && seen < head_search_lines && !named_head_; ++i) {
            if (lines_[i].kind != Kind::content) continue;
            ++seen;
            if (numbers_in(lines_[i]) == 0 && names_quantities(head_cells(lines_[i].text))) named_head_ = i;
        }
        first_row_ = named_head_ ? *named_head_ + 1 : 0;
        if (options_.head_lines) {
            first_row_ = 0;
            while (first_row_ < lines_.size() && lines_[first_row_].number <= *options_.head_lines)
                ++first_row_;
            if (named_head_ && *named_head_ >= first_row_) named_head_.reset();
        } else {
            const std::size_t begin = first_row_;
            while (first_row_ < lines_.size() && !is_row(lines_[first_row_], usual)) ++first_row_;
            if (first_row_ == lines_.size()) first_row_ = begin;
        }
        if (first_row_ < lines_.size())
            result_.head_lines = lines_[first_row_].number - 1;
        else if (!lines_.empty())
            result_.head_lines = lines_.back().number;
    }
    bool is_row(const TableLine& line, std::size_t usual) {
        if (line.kind != Kind::content) return false;
        const std::size_t numbers = numbers_in(line);
        return numbers > 0 && numbers * 2 >= usual;
    }

    // The lines of the head that may name the columns: from the one that names quantities on, else the last
    // three; or a comment above the first row.
    std::vector<std::vector<std::string>> head_rows() {
        std::vector<std::vector<std::string>> rows;
        const std::size_t begin = named_head_.value_or(0);
        for (std::size_t i = begin; i < first_row_; ++i) {
            if (lines_[i].kind != Kind::content) continue;
            std::vector<std::string> cells = head_cells(lines_[i].text);
            if (named_head_ || cells.size() == columns_) rows.push_back(std::move(cells));
        }
        constexpr std::size_t most = 3;
        if (rows.size() > most && !named_head_) rows.erase(rows.begin(), rows.end() - most);
        if (rows.size() > most) rows.resize(most);
        for (std::size_t i = first_row_; rows.empty() && i-- > 0;) {
            if (lines_[i].kind != Kind::comment) continue;
            const std::string_view text = trim_cell(lines_[i].text);
            std::vector<std::string> cells = head_cells(text.substr(text.find_first_not_of("#%!/")));
            if (names_quantities(cells)) rows.push_back(std::move(cells));
        }
        return rows;
    }

    void recognise_columns() {
        const std::vector<std::vector<std::string>> head = head_rows();
        for (const auto& row : head) {
            if (row.size() <= most_columns) columns_ = std::max(columns_, row.size());
        }
        samples_.assign(columns_, {});
        for (const auto& row : head) {
            for (std::size_t c = 0; c < std::min(row.size(), columns_); ++c)
                samples_[c].head.push_back(row[c]);
        }
        sample_rows();
        ImportColumns found = import_columns(samples_, options_.target, options_.M, options_.columns);
        result_.columns = std::move(found.columns);
        result_.fault = std::move(found.fault);
        for (std::string& warning : found.warnings) result_.warnings.push_back(std::move(warning));
    }

    void sample_rows() {
        std::size_t sampled = 0;
        for (std::size_t i = first_row_; i < lines_.size() && sampled < sampled_rows; ++i) {
            if (lines_[i].kind != Kind::content) continue;
            ++sampled;
            cut(lines_[i]);
            for (std::size_t c = 0; c < std::min(cells_.size(), columns_); ++c) {
                const TableNumber number = read_table_number(cells_[c].text, style());
                if (!number.good) continue;
                ++samples_[c].numbers;
                samples_[c].below_zero = samples_[c].below_zero || !(number.value > 0.0);
                if (samples_[c].unit.empty()) samples_[c].unit = number.unit;
            }
        }
    }

    // ---- rows

    void read_lines() {
        bare_.assign(columns_, false);
        cell_units_.assign(columns_, {});
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            const TableLine& line = lines_[i];
            ImportLine shown{.number = line.number, .kind = ImportLine::Kind::head, .cells = {}};
            if (line.kind == Kind::empty) {
                ++result_.empty_lines;
                shown.kind = ImportLine::Kind::empty;
            } else if (line.kind != Kind::content) {
                ++result_.comment_lines;
                shown.kind = ImportLine::Kind::comment;
            } else if (i >= first_row_) {
                cut(line);
                read_row(shown);
            } else {
                ++result_.head_rows;
            }
            if (result_.preview.size() < options_.preview_lines) show(line, i < first_row_, std::move(shown));
        }
    }

    void show(const TableLine& line, bool in_head, ImportLine shown) {
        if (shown.kind == ImportLine::Kind::comment) {
            shown.cells = {text_left(line.text, shown_characters)};
        } else if (shown.kind != ImportLine::Kind::empty) {
            if (in_head) {
                shown.cells = head_cells(line.text);
            } else {
                cut(line);
                for (const TableCell& cell : cells_) shown.cells.push_back(cell_content(cell));
            }
        }
        for (std::string& cell : shown.cells) {
            if (cell.size() > shown_characters) cell = text_left(cell, shown_characters) + "...";
        }
        result_.preview.push_back(std::move(shown));
    }

    // Reads the cells of a row into a point, or says what is wrong.
    void read_row(ImportLine& row) {
        std::string fault = row_fault();
        TpRhoPoint point;
        XYPoint pair;
        std::size_t values = 0, others = 0;
        for (std::size_t c = 0; c < columns_ && fault.empty(); ++c) {
            const ImportColumn& column = result_.columns[c];
            if (column.quantity == ImportQuantity::skip) continue;
            const TableCell cell = c < cells_.size() ? cells_[c] : TableCell{};
            const bool is_T = column.quantity == ImportQuantity::T;
            others += !is_T;
            double value = 0;
            bool missing = says_no_value(cell.text);
            if (!missing) fault = read_cell(cell, c, value);
            if (fault.empty() && !missing && value == 0.0 && options_.target == ImportTarget::data_points) {
                ++zeros_;
                missing = true;
            }
            if (fault.empty() && missing && (is_T || options_.target == ImportTarget::xy))
                fault = std::string(import_name(column.quantity)) + " is missing.";
            if (!fault.empty()) row.column = static_cast<int>(c);
            if (fault.empty()) store(column.quantity, value, point, pair);
            values += !missing && !is_T;
        }
        if (fault.empty() && values == 0 && others > 0) fault = "There is no value in this row.";
        row.kind = fault.empty() ? ImportLine::Kind::good : ImportLine::Kind::bad;
        row.fault = fault;
        if (!fault.empty()) {
            result_.bad_rows.push_back({row.number, std::move(fault)});
            return;
        }
        ++result_.good_rows;
        if (options_.target == ImportTarget::xy)
            result_.xy.push_back(pair);
        else
            result_.points.push_back(point);
    }

    // Cells beyond the columns, and gaps that nobody can see.
    std::string row_fault() const {
        std::size_t filled = cells_.size();
        while (filled > 0 && cells_[filled - 1].text.empty()) --filled;
        const bool short_row = result_.delimiter == TableDelimiter::blanks && filled < columns_;
        if (filled <= columns_ && !short_row) return {};
        return counted(filled, "cell", "cells") + " in a table of " + counted(columns_, "column", "columns") +
               ".";
    }

    std::string read_cell(const TableCell& cell, std::size_t c, double& value) {
        const ImportColumn& column = result_.columns[c];
        const std::string name(import_name(column.quantity));
        const TableNumber number = read_table_number(cell.text, style());
        if (!number.good || number.unit.size() > quoted_characters) return name + ": " + no_number(cell);
        const std::optional<Quantity> q = quantity_of(column.quantity);
        if (number.grouped && grouped_example_.empty() &&
            decimal_hint(cell.text, style().blank_groups) == DecimalHint::either)
            grouped_example_ = cell.text;
        if (!q) {
            if (!number.unit.empty()) return name + ": " + no_number(cell);
            const bool beyond =
                std::fabs(number.value) > static_cast<double>(std::numeric_limits<float>::max());
            value = number.value;
            return beyond ? name + " is too large." : std::string();
        }
        UnitConversion conversion = column.conversion;
        std::string_view unit = column.unit;
        if (number.unit.empty()) {
            bare_[c] = true;
        } else {
            const UnitMatch& match = unit_of_cell(c, *q, number.unit);
            if (!match.fault.empty()) return name + ": " + match.fault + ".";
            conversion = match.conversion;
            unit = match.name;
        }
        if (number.value == 0.0 && conversion.offset == 0.0) return {};  // no value
        value = conversion.to_own(number.value);
        const std::string zero =
            conversion.offset == 0.0 ? "0" : genNum(conversion.from_own(0), 12) + " " + std::string(unit);
        const std::string fault = broken_rule(name, value, NumberRule::above_zero, zero);
        if (fault.empty()) return {};
        return fault.substr(0, fault.size() - 1) + "; here it is " + in_quotes(cell.text) + ".";
    }

    std::string no_number(const TableCell& cell) const {
        const char other = result_.decimal == ',' ? '.' : ',';
        if (read_table_number(cell.text, {other, style().blank_groups}).good) {
            return in_quotes(cell_content(cell)) + " has the decimal sign \"" + other + "\" in place of \"" +
                   result_.decimal + "\".";
        }
        return in_quotes(cell_content(cell)) + " is no number.";
    }

    const UnitMatch& unit_of_cell(std::size_t c, Quantity q, std::string_view text) {
        CellUnit& last = cell_units_[c];
        if (last.text != text) last = {std::string(text), find_unit(q, text, options_.M)};
        return last.match;
    }

    static void store(ImportQuantity q, double value, TpRhoPoint& point, XYPoint& pair) {
        const auto single = static_cast<float>(value);
        switch (q) {
            case ImportQuantity::T:
                point.T = value;
                break;
            case ImportQuantity::p:
                point.p = value;
                break;
            case ImportQuantity::rhoV:
                point.rhoV = single;
                break;
            case ImportQuantity::rhoL:
                point.rhoL = single;
                break;
            case ImportQuantity::hLV:
                point.HLV = single;
                break;
            case ImportQuantity::cp:
                point.cp = single;
                break;
            case ImportQuantity::x:
                pair.x = single;
                break;
            case ImportQuantity::y:
                pair.y = single;
                break;
            case ImportQuantity::skip:
                break;
        }
    }

    void finish() {
        for (std::size_t c = 0; c < columns_; ++c) {
            const ImportColumn& column = result_.columns[c];
            if (column.unit_is_guess && bare_[c] && column.fault.empty()) {
                result_.warnings.push_back("No unit is given for " +
                                           std::string(import_name(column.quantity)) + ": " + column.unit +
                                           " is taken.");
            }
        }
        if (!grouped_example_.empty()) {
            const TableNumber number = read_table_number(grouped_example_, style());
            result_.warnings.push_back("Thousands signs are read: " + in_quotes(grouped_example_) + " is " +
                                       genNum(number.value) + ".");
        }
        if (zeros_ > 0) {
            result_.warnings.push_back(counted(zeros_, "zero stands", "zeros stand") + " for \"no value\".");
        }
        if (result_.fault.empty() && result_.good_rows == 0) result_.fault = "No row can be taken.";
        if (result_.fault.empty()) return;
        result_.points.clear();
        result_.xy.clear();
    }

    struct CellUnit {
        std::string text;
        UnitMatch match;
    };

    const ImportOptions& options_;
    TextImport result_;
    std::string text_;
    std::vector<TableLine> lines_;
    std::vector<TableCell> cells_;  // of the line in hand
    HeadNames names_;
    std::size_t columns_ = 0;
    std::size_t first_row_ = 0;
    std::optional<std::size_t> named_head_;
    std::vector<ColumnSample> samples_;
    std::vector<bool> bare_;  // columns with a number without a unit behind it
    std::vector<CellUnit> cell_units_;
    std::string grouped_example_;
    std::size_t zeros_ = 0;
};

}  // namespace

TextImport import_text(std::string_view bytes, const ImportOptions& options) {
    return Importer(options).read(bytes);
}

std::string import_summary(const TextImport& import) {
    std::string text;
    const auto add = [&text](std::size_t n, std::string_view one, std::string_view more) {
        if (n > 0) text += ", " + counted(n, one, more);
    };
    const auto taken = import.fault.empty() ? static_cast<std::size_t>(import.good_rows) : 0;
    text = std::to_string(taken) + " of " + counted(static_cast<std::size_t>(import.rows()), "row", "rows") +
           " will be taken";
    add(static_cast<std::size_t>(import.head_rows), "head line", "head lines");
    add(static_cast<std::size_t>(import.empty_lines), "empty line", "empty lines");
    add(static_cast<std::size_t>(import.comment_lines), "comment line", "comment lines");
    return text;
}

bool take_import(Document& document, const TextImport& import, ImportTarget target, bool replace) {
    if (!import.can_be_taken()) return false;
    if (target == ImportTarget::xy) {
        std::vector<XYPoint>& points = document.xy.points.edit();
        if (replace) {
            points.clear();
            document.xy.XYFile.clear();
            document.xy.comment.clear();
        }
        points.insert(points.end(), import.xy.begin(), import.xy.end());
        document.xy.XYGeaendert = true;
        return true;
    }
    std::vector<TpRhoPoint>& points = document.exp.points.edit();
    points.resize(replace ? 1 : std::max<std::size_t>(points.size(), 1), TpRhoPoint{});
    if (replace) {
        document.exp.file = {};
        document.calc.CurrentPoint = 0;
    }
    points.insert(points.end(), import.points.begin(), import.points.end());
    document.exp.ExpGeaendert = true;
    return true;
}

}  // namespace quom

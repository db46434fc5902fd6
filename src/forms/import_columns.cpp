#include "forms/import_columns.h"

#include <algorithm>
#include <span>
#include <utility>

#include "quantities/unit_table.h"

namespace quom {
namespace {

std::string in_quotes(std::string_view text) { return '"' + std::string(text) + '"'; }
std::string column_number(std::size_t c) { return "column " + std::to_string(c + 1); }

class ColumnReader {
 public:
    ColumnReader(const std::vector<ColumnSample>& samples, ImportTarget target, double M,
                 const ColumnChoices& choices)
        : samples_(samples), choices_(choices), M_(M), pairs_(target == ImportTarget::xy) {}

    ImportColumns read() {
        for (std::size_t c = 0; c < samples_.size(); ++c) {
            ImportColumn column;
            for (const std::string& cell : samples_[c].head)
                column.title += (column.title.empty() || cell.empty() ? "" : " ") + cell;
            result_.columns.push_back(std::move(column));
            cells_.push_back(HeadCell{});
            read_head(c);
            take_choice(c);
        }
        if (none_named()) take_by_place();
        leave_out_repeated();
        for (std::size_t c = 0; c < samples_.size(); ++c) find_unit_of(c);
        check();
        return std::move(result_);
    }

 private:
    std::span<const ImportQuantity> order() const {
        return pairs_ ? std::span<const ImportQuantity>(xy_order) : data_set_order;
    }
    bool wanted(ImportQuantity q) const { return std::ranges::find(order(), q) != order().end(); }
    bool is_chosen(std::size_t c) const {
        const auto choice = choices_.find(c);
        return choice != choices_.end() && choice->second.quantity.has_value();
    }

    void read_head(std::size_t c) {
        ImportColumn& column = result_.columns[c];
        HeadCell& found = cells_[c];
        for (const std::string& text : samples_[c].head) {
            const HeadCell cell = names_.read(text);
            const bool named = found.quantity != ImportQuantity::skip;
            if (!named && (wanted(cell.quantity) || (found.other.empty() && !cell.other.empty()))) {
                found = cell;
            } else if (named && found.unit.empty() && quantity_of(found.quantity)) {
                found.unit = unit_in_head(text, *quantity_of(found.quantity));
            }
        }
        if (wanted(found.quantity)) {
            propose(column, found);
        } else if (!found.other.empty() && !pairs_) {
            column.reason = "left out: no data set holds " + found.other;
        } else if (!pairs_ && samples_[c].numbers > 0) {
            read_units_alone(c);
        }
    }

    void propose(ImportColumn& column, const HeadCell& found) {
        if (!found.wrong_unit.empty() && found.unit.empty()) {
            const UnitMatch none = find_unit(*quantity_of(found.quantity), found.wrong_unit, M_);
            column.reason = "left out: " + none.fault;
            return;
        }
        column.quantity = found.quantity;
        column.unit = found.unit;
        column.reason = "its head is " + in_quotes(column.title);
    }

    // No name, but a unit in the head or behind the first number.
    void read_units_alone(std::size_t c) {
        ImportColumn& column = result_.columns[c];
        std::vector<std::string> texts = samples_[c].head;
        texts.push_back(samples_[c].unit);
        for (const std::string& text : texts) {
            const ImportQuantity q = quantity_of_unit(text);
            if (q == ImportQuantity::skip) continue;
            column.quantity = q;
            column.unit = unit_in_head(text, *quantity_of(q));
            column.reason = "its unit is " + in_quotes(column.unit);
            return;
        }
    }

    void take_choice(std::size_t c) {
        const auto choice = choices_.find(c);
        if (choice == choices_.end()) return;
        ImportColumn& column = result_.columns[c];
        if (choice->second.quantity && *choice->second.quantity != column.quantity) {
            column.quantity = *choice->second.quantity;
            column.unit.clear();
        }
        if (choice->second.quantity) column.reason = "chosen by you";
        if (choice->second.unit) column.unit = *choice->second.unit;
    }

    bool none_named() const {
        return std::ranges::none_of(result_.columns,
                                    [](const ImportColumn& c) { return c.quantity != ImportQuantity::skip; });
    }

    // In the order of the list of data points: the columns that hold numbers.
    void take_by_place() {
        std::size_t next = 0;
        std::string taken;
        for (std::size_t c = 0; c < samples_.size() && next < order().size(); ++c) {
            if (samples_[c].numbers == 0 || is_chosen(c) || !cells_[c].other.empty() ||
                !result_.columns[c].reason.empty())
                continue;
            ImportColumn& column = result_.columns[c];
            column.quantity = order()[next++];
            column.reason = "by its place; no head names it";
            taken += (taken.empty() ? "" : ", ") + std::string(import_name(column.quantity));
        }
        if (!taken.empty() && !pairs_) {
            result_.warnings.push_back("No head names the quantities: the columns are proposed as " + taken +
                                       ", in the order of the list of data points.");
        }
    }

    void leave_out_repeated() {
        for (std::size_t c = 0; c < samples_.size(); ++c) {
            ImportColumn& column = result_.columns[c];
            if (column.quantity == ImportQuantity::skip || is_chosen(c)) continue;
            for (std::size_t other = 0; other < samples_.size(); ++other) {
                const bool first = other < c || is_chosen(other);
                if (other == c || !first || result_.columns[other].quantity != column.quantity) continue;
                column.reason = "left out: " + std::string(import_name(column.quantity)) + " is " +
                                column_number(other) + " already";
                column.quantity = ImportQuantity::skip;
                break;
            }
        }
    }

    void find_unit_of(std::size_t c) {
        ImportColumn& column = result_.columns[c];
        const std::optional<Quantity> q = quantity_of(column.quantity);
        if (!q) {
            column.unit.clear();
            if (column.quantity == ImportQuantity::skip && column.reason.empty())
                column.reason = samples_[c].numbers == 0 ? "left out: it holds no numbers"
                                : pairs_                 ? "left out"
                                                         : "left out: its head names no quantity";
            return;
        }
        for (const std::string& text : samples_[c].head)
            if (column.unit.empty()) column.unit = unit_in_head(text, *q);
        if (column.unit.empty()) guess_unit(c, *q);
        UnitMatch match = find_unit(*q, column.unit, M_);
        if (match.fault.empty()) {
            column.unit = match.name;
            column.conversion = match.conversion;
        } else if (column.fault.empty()) {
            column.fault = std::move(match.fault);
        }
        if (cells_[c].any_density && !is_chosen(c)) {
            result_.warnings.push_back("The density in " + column_number(c) + " names no phase: " +
                                       std::string(import_name(column.quantity)) + " is proposed.");
        }
    }

    void guess_unit(std::size_t c, Quantity q) {
        ImportColumn& column = result_.columns[c];
        column.unit_is_guess = true;
        column.unit = units_of(q).front();
        if (cells_[c].volume) {
            column.fault = "the unit of the volume in " + column_number(c) + " is not known";
        } else if (q == Quantity::T && samples_[c].below_zero) {
            column.unit = "°C";
            column.reason += "; °C, because of the values below 0";
        }
    }

    void check() {
        std::size_t used = 0;
        for (std::size_t c = 0; c < samples_.size(); ++c) {
            const ImportColumn& column = result_.columns[c];
            if (column.quantity == ImportQuantity::skip) continue;
            ++used;
            if (!column.fault.empty() && result_.fault.empty())
                result_.fault = "Column " + std::to_string(c + 1) + ": " + column.fault + ".";
            for (std::size_t other = c + 1; other < samples_.size(); ++other) {
                if (result_.columns[other].quantity == column.quantity && result_.fault.empty())
                    result_.fault = std::string(import_name(column.quantity)) + " is both " +
                                    column_number(c) + " and " + column_number(other) + ".";
            }
        }
        if (used == 0) result_.fault = "No column is chosen: say what the columns are.";
        if (pairs_ && used == 1 && result_.fault.empty())
            result_.fault = "X-Y data need two columns, x and y.";
    }

    const std::vector<ColumnSample>& samples_;
    const ColumnChoices& choices_;
    double M_;
    bool pairs_;
    HeadNames names_;
    std::vector<HeadCell> cells_;
    ImportColumns result_;
};

}  // namespace

ImportColumns import_columns(const std::vector<ColumnSample>& samples, ImportTarget target, double M,
                             const ColumnChoices& choices) {
    return ColumnReader(samples, target, M, choices).read();
}

}  // namespace quom

// What a command found, filled once and rendered as aligned text for people or as one JSON object for
// programs.
#pragma once
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "quantities/quantity_table.h"

namespace quom {

// How an answer ended.
enum ReportStatus : int {
    status_done = 0,
    status_no_result = 1,  // the calculation gave no result
    status_usage = 2,      // wrong arguments
    status_file = 3,       // a file could not be read or written
};

// A value that may be absent: shown as "-", null in JSON. A number that is not finite is absent too.
struct Value {
    enum class Kind { absent, truth, whole, number, text };
    Kind kind = Kind::absent;
    std::int64_t whole = 0;  // and the truth
    double number = 0;
    std::string text;

    Value() = default;
    Value(bool x) : kind(Kind::truth), whole(x) {}
    Value(int x) : kind(Kind::whole), whole(x) {}
    Value(std::size_t x) : kind(Kind::whole), whole(static_cast<std::int64_t>(x)) {}
    Value(double x) : kind(std::isfinite(x) ? Kind::number : Kind::absent), number(x + 0.0) {}  // no -0
    Value(float x) : Value(static_cast<double>(x)) {}
    Value(std::string x) : kind(Kind::text), text(std::move(x)) {}
    Value(std::string_view x) : Value(std::string(x)) {}
    Value(const char* x) : Value(std::string(x)) {}
    bool absent() const { return kind == Kind::absent; }
    bool is_number() const { return kind == Kind::whole || kind == Kind::number; }
    bool is_false() const { return kind == Kind::truth && whole == 0; }
};
// The value unless it is 0, which stands for "not known" in the record of a substance.
Value if_known(double x);
// The value where there is one.
Value if_present(const std::optional<double>& x);
// The text unless it is empty.
Value remark(std::string text);

// A named value; its key is the name in JSON. Without a label it is in JSON only.
struct Field {
    std::string key, label;
    Value value;
    std::string unit;
    std::string note;                    // behind the value, in text only
    std::optional<Quantity> quantity{};  // where the key does not name it
};
// Values under one title. JSON: an object.
enum class Layout {
    list,   // one value a line
    known,  // the same without those that are absent
    flow,   // as many values in a line as it holds
    json,   // in JSON only
};
struct Block {
    std::string key, title;
    std::vector<Field> fields;
    Layout layout = Layout::list;
};

// A column without a label holds remarks: an absent one is blank.
struct Column {
    std::string key, label, unit;
    Layout layout = Layout::list;  // or json
};
// Rows of one kind. JSON: an array of objects.
struct Table {
    std::string key, title;
    std::vector<Column> columns;
    std::vector<std::vector<Value>> rows;
    Layout layout = Layout::list;  // or json
};

// Quantities by phases; a column without any value is not shown. JSON: an object whose members are named
// after quantity and column, "h_V".
struct GridRow {
    std::string key, label, unit;
    std::vector<Value> values;  // as many as the grid has columns
};
struct Grid {
    std::string key, title;
    std::vector<std::string> columns;
    std::vector<GridRow> rows;
};

using ReportSection = std::variant<Block, Table, Grid>;

// What the numbers of an answer rest on: its last line, in text only.
struct Footer {
    std::string basis;              // substance, models, reference state
    std::vector<Field> quantities;  // those whose units are told, without values
};

// The whole answer of one command.
struct Report {
    std::string command;
    std::string title;  // head line, in text only
    std::vector<ReportSection> sections;
    std::vector<std::string> notes;  // remarks on the result, below it
    Footer footer;
    ReportStatus status = status_done;
    std::string message;  // why there is no result
    std::string reason;   // its name for programs: "no_root_above_b"
};

// A refusal: status and a sentence that says what is wrong and what would be right.
struct Fault {
    ReportStatus status = status_no_result;
    std::string message;
    std::vector<ReportSection> sections{};  // what helps a program, "proposals"
};
Report refusal(std::string command, Fault fault);

// A number for people: 7 significant digits, plain between 1e-4 and 1e7, else with an exponent.
std::string shown(double x);

// Text with aligned columns. Every line ends with '\n'.
std::string to_text(const Report& report);
// One JSON object: "command", "status", "message", "reason", one member a section, "units" by key, "notes".
// Numbers read back to the same double; absent values are null. The schema is docs/console.schema.json.
std::string to_json(const Report& report);

}  // namespace quom

#include "console/diagram_arguments.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr int fewest_points = 10, most_points = 100000;

constexpr SectionOption section_options[] = {
    {Section::isothermal, "--T", "an isothermal section", Quantity::T},
    {Section::isobaric, "--p", "an isobaric section", Quantity::p},
    {Section::isochoric, "--v", "an isochoric section", Quantity::v},
};

// The kind of --kind; refused where it has no diagram of its own.
Kind checked_kind(const std::string& text) {
    const std::optional<double> number = read_number(text);
    const bool whole = number && *number >= 0.0 && *number <= 32767.0 && *number == static_cast<int>(*number);
    const Kind kind = whole ? kind_of(static_cast<int>(*number)) : Kind::none;
    if (kind == Kind::none)
        throw CLI::ValidationError("--kind",
                                   "\"" + text + "\" is no kind of diagram; \"quomc kinds\" lists them.");
    if (kind_info(kind).x == AxisQuantity::none)
        throw CLI::ValidationError("--kind", text + " is a process line, which is drawn into a diagram.");
    return kind;
}

TypedRange checked_range(const std::string& option, const std::string& text) {
    const std::size_t colon = text.find(':');
    const auto value = [&](std::size_t from, std::size_t count) {
        return colon == std::string::npos ? std::nullopt : read_given_value(text.substr(from, count));
    };
    const std::optional<GivenValue> from = value(0, colon), to = value(colon + 1, std::string::npos);
    if (from && to) return {*from, *to};
    throw CLI::ValidationError(option, "\"" + text + "\" is no range; A:B as 0:5 or 20C:80C is right.");
}

void add_range(CLI::App& app, const std::string& name, std::optional<TypedRange>& into,
               const std::string& help) {
    app.add_option_function<std::string>(
           name, [&into, name](const std::string& text) { into = checked_range(name, text); }, help)
        ->type_name("A:B");
}

}  // namespace

void add_kind(CLI::App& app, Kind& into) {
    app.add_option_function<std::string>(
           "--kind", [&into](const std::string& text) { into = checked_kind(text); },
           "Kind of diagram; see \"quomc kinds\"")
        ->required()
        ->type_name("N");
}

void add_ranges(CLI::App& app, std::optional<TypedRange>& x, std::optional<TypedRange>& y) {
    add_range(app, "--x", x, "Range of the x axis, in its unit (default: that of the diagram)");
    add_range(app, "--y", y, "Range of the y axis");
}

void add_density(CLI::App& app, int& into) {
    app.add_option("--dens", into, "Points over the span of an axis (500)")
        ->check(CLI::Range(fewest_points, most_points))
        ->type_name("N");
}

void add_triple_rule(CLI::App& app, bool& into) {
    app.add_option_function<std::string>(
           "--triple-rule", [&into](const std::string& word) { into = word == "on"; },
           "No point below the triple temperature (on)")
        ->check(CLI::IsMember({"on", "off"}))
        ->type_name("on|off");
}

const SectionOption* option_of(Section section) {
    const auto* const row = std::ranges::find(section_options, section, &SectionOption::section);
    return row == std::end(section_options) ? nullptr : row;
}

std::string kind_words(Kind kind) { return "kind " + std::to_string(static_cast<int>(kind)); }

Refused take_axis(const std::optional<TypedRange>& typed, const char* option, const CurveColumn& column,
                  double M, float& low, float& high) {
    if (!typed) return {};
    const OwnValue from = axis_limit(typed->from, column, M), to = axis_limit(typed->to, column, M);
    for (const OwnValue* value : {&from, &to})
        if (!value->fault.empty())
            return Fault{status_usage, std::string(option) + ": " + value->fault + "."};
    low = static_cast<float>(std::min(from.value, to.value));
    high = static_cast<float>(std::max(from.value, to.value));
    if (low < high) return {};
    return Fault{status_usage,
                 std::string(option) + ": the lower limit has to be smaller than the upper limit."};
}

std::string in_one_line(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return std::string(trim(text));
}

// What a message says, without the lines in brackets that tell where to click.
std::string note_of(const Message& message) {
    std::string note;
    std::istringstream lines(message.text);
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with('(')) note += (note.empty() ? "" : " ") + line;
    return std::string(trim(note));
}

}  // namespace quom

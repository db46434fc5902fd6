#include "console/curve_list.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/descriptor.h"
#include "base/number_text.h"
#include "diagrams/graph_document.h"

namespace quom {
namespace {

constexpr auto Most = static_cast<std::size_t>(CurveSlots);
constexpr double meets = 1e-9;  // of a step: as near as the last value may be to TO

std::vector<std::string_view> parts_of(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find(separator, from), text.size());
        parts.push_back(trim(text.substr(from, end - from)));
        from = end + 1;
    }
    return parts;
}

std::string too_many() { return "A sheet takes " + genNum(CurveSlots) + " curves; these are more."; }

// What stands before '=': "T", "T/degC", "v/(m^3/kg)".
struct GroupHead {
    std::string symbol, unit;
};
GroupHead head_of(std::string_view text) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    std::string_view unit = slash < text.size() ? trim(text.substr(slash + 1)) : std::string_view();
    if (unit.starts_with('(') && unit.ends_with(')')) unit = unit.substr(1, unit.size() - 2);
    return {std::string(trim(text.substr(0, slash))), std::string(unit)};
}

class ListReader {
 public:
    CurveList list;

    void read_group(std::string_view group) {
        const std::size_t equals = group.find('=');
        if (equals == std::string_view::npos)
            return fail(in_quotes(group) + " is no list of curves; T=300,320 or p=100:500:100 is right.");
        head_ = head_of(group.substr(0, equals));
        for (const std::string_view part : parts_of(group.substr(equals + 1), ',')) {
            const std::vector<std::string_view> numbers = parts_of(part, ':');
            if (numbers.size() == 3)
                add_range(part, numbers);
            else
                add_value(part);
            if (!list.fault.empty()) return;
        }
    }

 private:
    void fail(std::string fault) { list = {{}, std::move(fault)}; }

    void add(double number, const std::string& unit) {
        if (list.values.size() == Most) return fail(too_many());
        list.values.push_back({head_.symbol, {number, unit.empty() ? head_.unit : unit}});
    }

    void add_value(std::string_view part) {
        const auto value = read_given_value(part);
        if (!value || value->unit.find_first_of(":=") != std::string::npos)
            return fail(in_quotes(part) + " is no value of " + head_.symbol +
                        "; 300 or 27degC or 300:400:20 is right.");
        add(value->number, value->unit);
    }

    void add_range(std::string_view part, const std::vector<std::string_view>& numbers) {
        std::string unit;
        double x[3] = {};
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const auto value = read_given_value(numbers[i]);
            if (!value) return fail(in_quotes(part) + " is no FROM:TO:STEP.");
            if (!unit.empty() && !value->unit.empty() && value->unit != unit)
                return fail(in_quotes(part) + " has two units; one for all three numbers is right.");
            if (!value->unit.empty()) unit = value->unit;
            x[i] = value->number;
        }
        const double steps = (x[1] - x[0]) / x[2];
        if (!(steps >= 0.0) || !std::isfinite(steps))
            return fail(in_quotes(part) + " does not lead from FROM to TO by its step.");
        if (steps > static_cast<double>(Most)) return fail(too_many());
        for (int i = 0; i <= steps + meets && list.fault.empty(); ++i) add(x[0] + i * x[2], unit);
    }

    GroupHead head_;
};

}  // namespace

CurveList read_curve_list(std::string_view text) {
    ListReader reader;
    for (const std::string_view group : parts_of(text, ';')) {
        reader.read_group(group);
        if (!reader.list.fault.empty()) break;
    }
    return std::move(reader.list);
}

}  // namespace quom

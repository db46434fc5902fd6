#include "fitting/pasted_rows.h"

#include <algorithm>
#include <cmath>

#include "base/files.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr std::size_t LongestShown = 40;  // bytes of a refused text

bool is_blank(std::string_view text) { return text.find_first_not_of(" \t\r") == std::string_view::npos; }

std::string shortened(std::string_view text) {
    return text.size() <= LongestShown ? std::string(text) : "(a long text)";
}

}  // namespace

PastedRows read_pasted_rows(std::string_view text, std::size_t columns) {
    PastedRows pasted;
    int line_number = 0;
    const auto refuse = [&](const std::string& why) {
        return PastedRows{{}, "Line " + std::to_string(line_number) + ": " + why};
    };
    for (std::string_view line : split_lines(text)) {
        ++line_number;
        if (is_blank(line)) continue;
        std::vector<double> row;
        for (bool more = true; more;) {
            const std::size_t tab = line.find('\t');
            const std::string_view cell = line.substr(0, tab);
            more = tab != std::string_view::npos;
            line.remove_prefix(more ? tab + 1 : line.size());
            if (row.size() == columns) {
                if (is_blank(cell)) continue;
                return refuse("There are more than " + std::to_string(columns) + " values.");
            }
            std::string number(cell);
            std::ranges::replace(number, ',', '.');
            const std::optional<double> value = is_blank(cell) ? 0.0 : read_number(number);
            if (!value || !std::isfinite(static_cast<float>(*value)))
                return refuse("\"" + shortened(cell) + "\" is no number that can be stored.");
            row.push_back(*value);
        }
        pasted.rows.push_back(std::move(row));
    }
    return pasted;
}

}  // namespace quom

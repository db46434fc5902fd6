#include "base/csv_rows.h"

#include <utility>

namespace quom {

std::vector<CsvRow> csv_rows(std::string_view text) {
    std::vector<CsvRow> rows;
    CsvRow row{.line = 1, .fields = {std::string()}};
    int line = 1;
    bool quoted = false;
    const auto end_row = [&] {
        if (row.fields.back().ends_with('\r')) row.fields.back().pop_back();
        if (row.fields.size() > 1 || !row.fields.front().empty()) rows.push_back(std::move(row));
        row = {.line = line, .fields = {std::string()}};
    };
    for (std::size_t k = 0; k < text.size(); ++k) {
        const char c = text[k];
        std::string& field = row.fields.back();
        if (c == '\n') ++line;
        if (c == '"') {
            if (quoted && k + 1 < text.size() && text[k + 1] == '"')
                field += text[++k];
            else
                quoted = !quoted;
        } else if (quoted || (c != ',' && c != '\n')) {
            field += c;
        } else if (c == ',') {
            row.fields.emplace_back();
        } else {
            end_row();
        }
    }
    end_row();
    return rows;
}

}  // namespace quom

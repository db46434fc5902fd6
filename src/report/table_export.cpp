#include "report/table_export.h"

#include <algorithm>

namespace quom {
namespace {

std::string with_decimal(const ExportCell& cell, char decimal) {
    std::string text = cell.text;
    if (cell.number && decimal != '.') std::ranges::replace(text, '.', decimal);
    return text;
}

// Every line of the table, heads too, as cells.
template <class Line>
void for_each_line(const ExportTable& table, Line line) {
    const auto texts = [](const std::vector<std::string>& list) {
        return std::vector<ExportCell>(list.begin(), list.end());
    };
    if (!table.heads.empty()) line(texts(table.heads));
    if (!table.units.empty()) line(texts(table.units));
    for (const std::vector<ExportCell>& row : table.rows) line(row);
}

std::string quoted(const std::string& text, char delimiter) {
    const std::string signs = std::string("\"\r\n") + delimiter;
    const bool blank_end = text.starts_with(' ') || text.ends_with(' ');
    if (!blank_end && text.find_first_of(signs) == std::string::npos) return text;
    std::string in_quotes = "\"";
    for (const char c : text) in_quotes += c == '"' ? std::string("\"\"") : std::string(1, c);
    return in_quotes + '"';
}

std::string html_text(std::string_view text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\n':
                html += "<br/>";
                break;
            default:
                html += static_cast<unsigned char>(c) < ' ' ? ' ' : c;  // no other control sign is allowed
        }
    }
    return html;
}

void add_row(std::string& html, const std::vector<ExportCell>& row, std::size_t columns, const char* tag) {
    html += "<tr>";
    for (std::size_t c = 0; c < row.size(); ++c) {
        html += std::string("<") + tag;
        const bool wide = c + 1 == row.size() && row.size() < columns;
        if (wide) html += " colspan=\"" + std::to_string(columns - c) + "\"";
        if (row[c].number) html += " align=\"right\"";
        html += '>' + html_text(row[c].text) + "</" + tag + '>';
    }
    html += "</tr>\n";
}

}  // namespace

std::string to_csv(const ExportTable& table, char delimiter, char decimal) {
    std::string csv;
    for (const std::string& line : table.title)  // a comment is no cell
        csv += (table.comment.empty() ? quoted(line, delimiter) : table.comment + line) + "\r\n";
    for_each_line(table, [&](const std::vector<ExportCell>& cells) {
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (c > 0) csv += delimiter;
            csv += quoted(with_decimal(cells[c], decimal), delimiter);
        }
        csv += "\r\n";
    });
    return csv;
}

std::string to_tsv(const ExportTable& table, char decimal) {
    std::string tsv;
    const auto add_cell = [&tsv](const std::string& text) {
        for (const char sign : text) tsv += sign == '\t' || sign == '\n' || sign == '\r' ? ' ' : sign;
    };
    for (const std::string& line : table.title) {
        add_cell(line);
        tsv += '\n';
    }
    for_each_line(table, [&](const std::vector<ExportCell>& cells) {
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (c > 0) tsv += '\t';
            add_cell(with_decimal(cells[c], decimal));
        }
        tsv += '\n';
    });
    return tsv;
}

std::string to_html(const ExportTable& table) {
    const std::string title = table.title.empty() ? "Table" : html_text(table.title.front());
    std::string html = "<!DOCTYPE html>\n<html>\n<head><meta charset=\"utf-8\"/><title>" + title +
                       "</title></head>\n<body>\n";
    for (const std::string& line : table.title) html += "<p>" + html_text(line) + "</p>\n";
    std::size_t columns = std::max<std::size_t>(table.heads.size(), 1);
    for (const auto& row : table.rows) columns = std::max(columns, row.size());
    html += "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\">\n";
    for (const std::vector<std::string>* head : {&table.heads, &table.units}) {
        if (!head->empty()) add_row(html, std::vector<ExportCell>(head->begin(), head->end()), columns, "th");
    }
    for (const std::vector<ExportCell>& row : table.rows)
        add_row(html, row, columns, row.size() == 1 ? "th" : "td");
    return html + "</table>\n</body>\n</html>\n";
}

}  // namespace quom

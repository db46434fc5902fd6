#include "fitting/xy_file.h"

#include <algorithm>
#include <cmath>

#include "base/descriptor.h"
#include "base/files.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr std::size_t LongestLine = 32767;  // bytes
constexpr std::string_view NumberForm = "0.0000000E+00";

// A fault in a line of a file; ends the reading.
struct Fault {
    int line;
    std::string what;
};

// The last of the possible delimiters that a line holds; 0: none.
char delimiter_of(std::string_view line) {
    char found = 0;
    for (const char candidate : {' ', ',', ';', '\t'})
        if (line.find(candidate) != std::string_view::npos) found = candidate;
    return found;
}

std::string shown(std::string_view text) {
    constexpr std::size_t longest = 40;
    return "\"" + utf8_from_1252(text.substr(0, longest)) + (text.size() > longest ? "...\"" : "\"");
}

float number_of(std::string_view text, int line) {
    std::string number(trim(text));
    std::ranges::replace(number, ',', '.');
    const std::optional<double> value = read_number(number);
    if (!value) throw Fault{line, shown(trim(text)) + " is no number."};
    const auto single = static_cast<float>(*value);
    if (!std::isfinite(single)) throw Fault{line, shown(trim(text)) + " is too large."};
    return single;
}

XYPoint point_of(std::string_view line, int number, XYFile& file) {
    if (file.delimiter == 0) return {number_of(line, number), 0, 0};
    const std::size_t first = line.find(file.delimiter);
    if (first == std::string_view::npos) throw Fault{number, shown(line) + " is no pair of x and y."};
    const std::string_view rest = trim_left(line.substr(first + 1));
    const std::size_t second = rest.find(file.delimiter);
    file.more_columns = file.more_columns || second != std::string_view::npos;
    return {number_of(line.substr(0, first), number), number_of(rest.substr(0, second), number), 0};
}

XYFile parse(std::string_view bytes) {
    FieldReader text(bytes);
    XYFile file;
    std::optional<std::string_view> line = text.line_view();
    if (!line) throw Fault{1, "the file is empty."};
    const auto check = [](std::string_view content, int number) {
        if (content.size() > LongestLine || content.find('\0') != std::string_view::npos)
            throw Fault{number, "this is no line of X-Y data."};
    };
    check(*line, 1);
    file.comment = utf8_from_1252(*line);
    while (true) {
        const int number = text.line();
        line = text.line_view();
        if (!line) return file;
        check(*line, number);
        const std::string_view content = trim(*line);
        if (content.find_first_not_of(" \t") == std::string_view::npos) continue;
        if (file.points.empty()) file.delimiter = delimiter_of(content);
        if (file.points.size() == MaxDataPoints)
            throw Fault{number, "there are more than " + std::to_string(MaxDataPoints) + " points."};
        file.points.push_back(point_of(content, number, file));
    }
}

// The comment as a line holds it.
Encoded comment_line(std::string comment) {
    std::ranges::replace_if(
        comment, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return cp1252_from_utf8(comment + "\r\n");
}

}  // namespace

XYResult read_xy(std::string_view bytes, std::string_view name) {
    try {
        return {parse(bytes), {}, 0};
    } catch (const Fault& fault) {
        return {std::nullopt, in_quotes(name) + ", line " + std::to_string(fault.line) + ": " + fault.what,
                fault.line};
    }
}

Encoded xy_bytes(const XYData& data, char delimiter) {
    Encoded out = comment_line(data.comment);
    for (const XYPoint& point : data.points) {
        if (point.Aus != 0) continue;
        out.bytes += formatMask(static_cast<double>(point.x), NumberForm) + delimiter +
                     formatMask(static_cast<double>(point.y), NumberForm) + "\r\n";
    }
    return out;
}

Encoded T_y_bytes(const ExperimentalData& data, char delimiter) {
    Encoded out = comment_line(data.file.ExpComment);
    const std::string third = delimiter + formatMask(0, NumberForm) + "\r\n";
    for (const DataPair& pair : T_y_points(data))
        out.bytes += formatMask(pair.x, NumberForm) + delimiter + formatMask(pair.y, NumberForm) + third;
    return out;
}

}  // namespace quom

#include "fitting/baq_file.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/dates.h"
#include "base/descriptor.h"
#include "base/files.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr std::size_t LongestHead = 32767;  // bytes of a line of the head
constexpr std::size_t LengthCAS = 12, LengthName = 107;

// Columns of the table in the order of the file.
constexpr std::size_t file_order[exp_columns] = {0, 1, 3, 2, 4, 5};

bool is_blank(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c == ' ' || c == '\t'; });
}

// The values behind the head, separated by line ends and commas.
class Values {
 public:
    explicit Values(FieldReader text) : text_(text) {}
    int line() const { return line_; }  // of the last value

    // The text of the next value; none at the end. Empty between commas.
    std::optional<std::string_view> next() {
        if (!more_ && !next_line()) return std::nullopt;
        const std::size_t comma = rest_.find(',');
        const std::string_view value = rest_.substr(0, comma);
        more_ = comma != std::string_view::npos;
        if (more_) rest_.remove_prefix(comma + 1);
        return value;
    }
    // How many there are from here on.
    std::size_t count() const {
        Values values = *this;
        std::size_t n = 0;
        while (values.more_ || values.next_line()) {
            n += 1 + static_cast<std::size_t>(std::ranges::count(values.rest_, ','));
            values.more_ = false;
        }
        return n;
    }

 private:
    bool next_line() {
        do {
            line_ = text_.line();
            const std::optional<std::string_view> line = text_.line_view();
            if (!line) return false;
            rest_ = *line;
        } while (is_blank(rest_));
        return true;
    }

    FieldReader text_;
    std::string_view rest_;  // of its line
    bool more_ = false;      // it has another value
    int line_ = 0;
};

// A fault in a line of a file; ends the reading.
struct Fault {
    int line;
    std::string what;
};

std::string shown(std::string_view value) {
    constexpr std::size_t longest = 40;
    const std::string text = utf8_from_1252(value.substr(0, longest));
    return "\"" + text + (value.size() > longest ? "...\"" : "\"");
}

std::string head_line(FieldReader& text, const char* what) {
    const int number = text.line();
    const std::optional<std::string_view> line = text.line_view();
    if (!line) throw Fault{number, std::string("the file ends before the ") + what + "."};
    if (line->size() > LongestHead || line->find('\0') != std::string::npos)
        throw Fault{number, std::string("this is no ") + what + " of a data file."};
    return utf8_from_1252(*line);
}

double number_of(std::string_view value, int line) {
    if (is_blank(value)) throw Fault{line, "a value is missing between commas."};
    const std::optional<double> number = read_number(value);
    if (!number) throw Fault{line, shown(value) + " is no number."};
    return *number;
}

std::size_t read_count(Values& values) {
    const std::optional<std::string_view> text = values.next();
    if (!text) throw Fault{values.line(), "the number of points is missing."};
    const double count = number_of(*text, values.line());
    const auto refuse = [&](const char* why) { return Fault{values.line(), shown(trim(*text)) + why}; };
    if (count == 0) throw refuse(" points: there are no data in the file.");
    if (!(count > 0) || count != std::floor(count)) throw refuse(" is no number of points.");
    if (count > static_cast<double>(MaxDataPoints))
        throw refuse((" points are more than the " + std::to_string(MaxDataPoints) + " possible.").c_str());
    return static_cast<std::size_t>(count);
}

void read_points(Values values, BaqFile& file) {
    const auto per_point = static_cast<std::size_t>(file.values_per_point);
    const std::size_t wanted = (file.points.size() - 1) * per_point;
    std::size_t n = 0;
    for (auto value = values.next(); value; value = values.next(), ++n) {
        const double number = number_of(*value, values.line());
        if (n >= wanted) continue;
        const std::size_t column = file_order[n % per_point];
        TpRhoPoint& point = file.points[1 + n / per_point];
        set_exp_value(point, column, number);
        if (!std::isfinite(exp_value(point, column)))
            throw Fault{values.line(), shown(*value) + " is too large for this column."};
    }
}

std::string note_on(std::size_t found, std::size_t wanted) {
    if (found == wanted) return {};
    const bool missing = found < wanted;
    const std::size_t n = missing ? wanted - found : found - wanted;
    const std::string values = std::to_string(n) + (n == 1 ? " value" : " values");
    return missing ? "The file ends before its last points are complete: " + values + " missing, taken as 0."
                   : "The file goes on behind its last point: " + values + " left out.";
}

BaqFile parse(std::string_view bytes) {
    FieldReader text(bytes);
    BaqFile file;
    file.date = head_line(text, "date");
    file.comment = head_line(text, "comment");
    const std::string substance = head_line(text, "substance");
    const std::size_t end = substance.find(';');
    file.CAS = trim(std::string_view(substance).substr(0, end));
    if (end != std::string::npos) file.name = trim(std::string_view(substance).substr(end + 1));

    Values values(text);
    const std::size_t count = read_count(values);
    const int count_line = values.line();
    const std::size_t found = values.count();
    if (found < count)
        throw Fault{count_line, "the file promises " + std::to_string(count) + " points, but holds only " +
                                    std::to_string(found) + (found == 1 ? " value." : " values.")};
    const double ratio = static_cast<double>(found) / static_cast<double>(count);
    file.values_per_point = round_half_even(ratio) > 5 ? 6 : 5;
    file.note = note_on(found, count * static_cast<std::size_t>(file.values_per_point));
    file.points.resize(count + 1);
    read_points(values, file);
    return file;
}

// A text as a line holds it.
std::string one_line(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return text;
}

}  // namespace

BaqResult read_baq(std::string_view bytes, std::string_view name) {
    try {
        return {parse(bytes), {}, 0};
    } catch (const Fault& fault) {
        return {std::nullopt, in_quotes(name) + ", line " + std::to_string(fault.line) + ": " + fault.what,
                fault.line};
    }
}

Encoded baq_bytes(const ExperimentalData& data) {
    const ExpDataFile& file = data.file;
    const std::string date = file.ExpDate.empty() ? today_text() : file.ExpDate;
    Encoded out = cp1252_from_utf8(one_line(date) + "\r\n" + one_line(file.ExpComment) + "\r\n" +
                                   text_padded(one_line(file.ExpCAS), LengthCAS) + ";" +
                                   text_padded(one_line(file.ExpName), LengthName) + "\r\n");
    std::string& bytes = out.bytes;
    constexpr std::size_t bytes_a_point = 64;  // or so
    bytes.reserve(bytes.size() + data.points.size() * bytes_a_point);
    const auto write = [&bytes](const std::string& number) {
        bytes += number;
        bytes += "\r\n";
    };
    bytes += writeNum(data_point_count(data)) + "\r\n";
    for (int i = 1; i <= data_point_count(data); ++i) {
        const TpRhoPoint& point = data.points[static_cast<std::size_t>(i)];
        write(writeNum(point.T));
        write(writeNum(point.p));
        for (const float value : {point.rhoL, point.rhoV, point.HLV, point.cp}) write(writeNum(value));
    }
    return out;
}

}  // namespace quom

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

bool is_blank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

// The values behind the head, separated by line ends and commas.
class Values {
 public:
    explicit Values(FieldReader text) : text_(std::move(text)) {}
    int line() const { return line_; }  // of the last value

    // The text of the next value, good until the next call; none at the end. Empty between commas.
    std::optional<std::string_view> next() {
        while (!more_) {
            line_ = text_.line();
            std::optional<std::string> line = text_.whole_line();
            if (!line) return std::nullopt;
            if (is_blank(*line)) continue;
            row_ = std::move(*line);
            at_ = 0;
            more_ = true;
        }
        const std::size_t comma = row_.find(',', at_);
        const std::string_view value = std::string_view(row_).substr(at_, comma - at_);
        more_ = comma != std::string::npos;
        at_ = comma + 1;
        return value;
    }

 private:
    FieldReader text_;
    std::string row_;     // the line of the last value
    std::size_t at_ = 0;  // where its next value begins
    bool more_ = false;   // it has one
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
    const std::optional<std::string> line = text.whole_line();
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

// How many values there are; each of them is a number.
std::size_t count_values(Values values) {
    std::size_t n = 0;
    while (const auto value = values.next()) {
        number_of(*value, values.line());
        ++n;
    }
    return n;
}

void read_points(Values values, BaqFile& file) {
    for (std::size_t i = 1; i < file.points.size(); ++i) {
        for (int k = 0; k < file.values_per_point; ++k) {
            const auto value = values.next();
            if (!value) return;
            const std::size_t column = file_order[k];
            const double number = number_of(*value, values.line());
            set_exp_value(file.points[i], column, number);
            if (!std::isfinite(exp_value(file.points[i], column)))
                throw Fault{values.line(), shown(*value) + " is too large for this column."};
        }
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
    const std::size_t found = count_values(values);
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
    bytes += writeNum(data_point_count(data)) + "\r\n";
    for (int i = 1; i <= data_point_count(data); ++i) {
        const TpRhoPoint& point = data.points[static_cast<std::size_t>(i)];
        bytes += writeNum(point.T) + "\r\n" + writeNum(point.p) + "\r\n";
        for (const float value : {point.rhoL, point.rhoV, point.HLV, point.cp})
            bytes += writeNum(value) + "\r\n";
    }
    return out;
}

}  // namespace quom

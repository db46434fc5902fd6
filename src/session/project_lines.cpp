#include "session/project_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <variant>

#include "base/files.h"
#include "base/number_text.h"

namespace quom {
namespace {

// What a value may be; anything else is replaced.
bool any_finite(double) { return true; }
bool not_negative(double x) { return x >= 0; }
bool above_zero(double x) { return x > 0; }
bool truth(double x) { return x == 0 || x == -1; }
bool volume_mode(double x) { return x >= 0 && x <= 2; }
bool energy_mode(double x) { return x >= 0 && x <= 3; }
bool points_of_curve(double x) { return x >= 1; }
bool evp_code(double x) { return x >= 0 && x <= 8; }
bool eos_code(double x) { return x == 0 || (x >= 2 && x <= 16 && x != 9); }
bool cp_code(double x) { return x >= 0 && x <= 2; }
bool hlv_code(double x) { return x >= 0 && x <= 7; }
bool watson_exponent(double x) { return x > 0 && x < 10; }
bool reference_code(double x) { return x == 1 || x == 2 || x == 10; }
bool process_form(double x) { return x >= 0 && x <= 8; }
bool fit_column(double x) { return x >= 1 && x <= 5; }

// A start value is stored as a single and read as the decimal number that stands there.
struct Single {
    double ProjectFile::*value;
};
using Member = std::variant<int ProjectFile::*, bool ProjectFile::*, float ProjectFile::*,
                            double ProjectFile::*, char ProjectFile::*, Single>;

struct Line {
    int number;
    std::string_view name;
    Member member;
    bool (*possible)(double);
    double otherwise;
};
constexpr std::array<Line, 25> lines = {{
    {7, "TcrStart", Single{&ProjectFile::TcrStart}, not_negative, 0},
    {8, "pcrStart", Single{&ProjectFile::pcrStart}, not_negative, 0},
    {9, "vcrStart", Single{&ProjectFile::vcrStart}, not_negative, 0},
    {10, "uFactor", &ProjectFile::uFactor, any_finite, 1},
    {11, "VolumeMode", &ProjectFile::VolumeMode, volume_mode, 0},
    {12, "EnergyMode", &ProjectFile::EnergyMode, energy_mode, 0},
    {13, "chkCurveTpRestricted", &ProjectFile::chkCurveTpRestricted, truth, 0},
    {14, "Dens", &ProjectFile::Dens, points_of_curve, 500},
    {15, "SepCSV", &ProjectFile::SepCSV, any_finite, 0},
    {16, "EVPKode", &ProjectFile::EVPKode, evp_code, 0},
    {17, "EOSKode", &ProjectFile::EOSKode, eos_code, 0},
    {18, "cpKode", &ProjectFile::cpKode, cp_code, 0},
    {19, "HLVKode", &ProjectFile::HLVKode, hlv_code, 0},
    {20, "nWat", &ProjectFile::nWat, watson_exponent, 0.38},
    {21, "Konzept", &ProjectFile::Konzept, truth, 0},
    {22, "RefKode", &ProjectFile::RefKode, reference_code, 1},
    {23, "hOffset", &ProjectFile::hOffset, any_finite, 0},
    {24, "sOffset", &ProjectFile::sOffset, any_finite, 0},
    {25, "TRef0", &ProjectFile::TRef0, above_zero, 298.15},
    {26, "pRef0", &ProjectFile::pRef0, not_negative, 0},
    {27, "TEnv", &ProjectFile::TEnv, not_negative, 298.15},
    {28, "pEnv", &ProjectFile::pEnv, not_negative, 101.325},
    {29, "ProcessForm", &ProjectFile::ProcessForm, process_form, 0},
    {30, "optFitFunction", &ProjectFile::optFitFunction, fit_column, 1},
    {31, "ParSpeichern", &ProjectFile::ParSpeichern, truth, 0},
}};
constexpr int ReservedLines = 3, LastLine = 34;
constexpr std::array<std::string_view, 6> head_names = {
    "date", "comment", "database", "experimental data", "number of points", "CAS number"};

// A field of a foreign file in a sentence: short, without control characters.
std::string quoted(std::string_view field) {
    std::string text = text_left(utf8_from_1252(field), 40);
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return in_quotes(text);
}

class Reading {
 public:
    Reading(std::string_view bytes, std::string_view name) : fields_(bytes), name_(name) {}

    bool head();
    bool value(const Line& line);
    bool end();
    ReadProject result() && { return std::move(read_); }
    void start() { read_.project.emplace(); }

 private:
    bool fail(const std::string& why) {
        read_.project.reset();
        read_.replaced.clear();
        read_.fault = "Cannot read " + in_quotes(name_) + ": " + why;
        return false;
    }
    bool ends_before(int line, std::string_view what) {
        return fail("it ends before line " + std::to_string(line) + " (" + std::string(what) +
                    "); a project has " + std::to_string(LastLine) + " lines");
    }
    bool no_number(int line, std::string_view what, std::string_view field) {
        return fail("line " + std::to_string(line) + " (" + std::string(what) + ") is " + quoted(field) +
                    ", not a number");
    }
    std::optional<std::string> text_line(int line);
    std::optional<double> number(int line, std::string_view what);
    bool separator(const Line& line);
    void replace(int line, const Line& of, std::string found, std::string taken) {
        read_.replaced.push_back({line, std::string(of.name), std::move(found), std::move(taken)});
    }

    FieldReader fields_;
    std::string_view name_;
    ReadProject read_;
};

// A whole line; nothing with the fault told.
std::optional<std::string> Reading::text_line(int line) {
    const std::string_view what = head_names[static_cast<std::size_t>(line - 1)];
    std::optional<std::string> text = fields_.whole_line();
    if (!text) {
        ends_before(line, what);
        return std::nullopt;
    }
    if (text->find('\0') != std::string::npos) {
        fail("line " + std::to_string(line) + " (" + std::string(what) +
             ") holds a character of the number 0; this is no text");
        return std::nullopt;
    }
    return utf8_from_1252(*text);
}

// The next field as a number; nothing with the fault told.
std::optional<double> Reading::number(int line, std::string_view what) {
    if (fields_.at_end()) {
        ends_before(line, what);
        return std::nullopt;
    }
    const int at = fields_.line();
    FieldReader again = fields_;
    const std::optional<double> number = fields_.number_field();
    if (!number) no_number(at, what, again.text_field().value_or(""));
    return number;
}

bool Reading::head() {
    ProjectFile& p = *read_.project;
    std::string* const texts[] = {&p.date, &p.comment, &p.database_path, &p.exp_file};
    int line = 0;
    for (std::string* text : texts) {
        std::optional<std::string> read = text_line(++line);
        if (!read) return false;
        *text = std::move(*read);
    }
    p.database_path = trim(p.database_path);
    p.exp_file = trim(p.exp_file);
    const std::optional<double> count = number(++line, head_names[4]);
    if (!count) return false;
    if (!p.exp_file.empty()) p.ExpAnzahl = std::max(to_i32(*count), 0);
    const std::optional<std::string> cas = text_line(++line);
    if (cas) p.CAS = trim(*cas);
    return cas.has_value();
}

// One of the delimiters that can be chosen; an empty field is the first.
bool Reading::separator(const Line& line) {
    if (fields_.at_end()) return ends_before(line.number, line.name);
    const int at = fields_.line();
    const std::string field = fields_.text_field().value_or("");
    const char sign = field.empty() ? ';' : field.front();
    const bool possible = field.size() <= 1 && (sign == ';' || sign == ',' || sign == '\t');
    read_.project->SepCSV = possible ? sign : ';';
    if (!possible) replace(at, line, quoted(field), "\";\"");
    return true;
}

bool Reading::value(const Line& line) {
    if (std::holds_alternative<char ProjectFile::*>(line.member)) return separator(line);
    const int at = fields_.line();
    const std::optional<double> read = number(line.number, line.name);
    if (!read) return false;

    const bool whole = std::holds_alternative<int ProjectFile::*>(line.member);
    const bool single = std::holds_alternative<float ProjectFile::*>(line.member) ||
                        std::holds_alternative<Single>(line.member);
    double x = whole ? round_half_even(*read) : *read;
    if (line.number == 17 && x == -1) x = 0;  // no equation comes back as the ideal gas
    const double kept = single ? static_cast<double>(static_cast<float>(x)) : x;
    const bool in_type = whole ? std::fabs(x) <= 32767 : std::isfinite(kept);
    if (!in_type || !line.possible(kept)) {
        x = line.otherwise;
        replace(at, line, genNum(*read), single ? genSingle(x) : genNum(x));
    }
    ProjectFile& p = *read_.project;
    std::visit(
        [&p, x](auto member) {
            using M = decltype(member);
            if constexpr (std::is_same_v<M, Single>)
                p.*member.value = x;
            else if constexpr (std::is_same_v<M, bool ProjectFile::*>)
                p.*member = x == -1;
            else if constexpr (std::is_same_v<M, float ProjectFile::*>)
                p.*member = static_cast<float>(x);
            else if constexpr (std::is_same_v<M, int ProjectFile::*>)
                p.*member = static_cast<int>(x);
            else if constexpr (std::is_same_v<M, double ProjectFile::*>)
                p.*member = x;
        },
        line.member);
    return true;
}

// Values that are left over would mean that all of them were taken for others, as with a decimal comma.
bool Reading::end() {
    for (int i = 0; i < ReservedLines && !fields_.at_end(); ++i) fields_.text_field();
    while (!fields_.at_end()) {
        const int at = fields_.line();
        const std::string field = fields_.text_field().value_or("");
        if (field.empty() || field == "\x1a") continue;
        return fail("line " + std::to_string(at) + " has " + quoted(field) +
                    " behind the last value of a project; decimal numbers need a point");
    }
    return true;
}

std::string written(const ProjectFile& p, const Member& member) {
    return std::visit(
        [&p](auto m) -> std::string {
            using M = decltype(m);
            if constexpr (std::is_same_v<M, Single>)
                return writeNum(static_cast<float>(p.*m.value));
            else if constexpr (std::is_same_v<M, char ProjectFile::*>)
                return "\"" + std::string(1, p.*m) + "\"";
            else
                return writeNum(p.*m);
        },
        member);
}

// A text that stays on its line.
std::string one_line(std::string_view text) {
    std::string line(text);
    for (char& c : line)
        if (static_cast<unsigned char>(c) < ' ' && c != '\t') c = ' ';
    return line;
}

}  // namespace

int ProjectFile::database_kind() const {
    const char last = database_path.empty() ? '0' : database_path.back();
    return last >= '0' && last <= '9' ? last - '0' : 0;
}

std::string replaced_text(const ReplacedValue& value) {
    return "line " + std::to_string(value.line) + " (" + value.name + "): " + value.found +
           " is not possible, " + value.taken + " is taken";
}

ReadProject read_project(std::string_view bytes, std::string_view name) {
    Reading reading(bytes, name);
    reading.start();
    bool good = reading.head();
    for (const Line& line : lines) good = good && reading.value(line);
    if (good) reading.end();
    return std::move(reading).result();
}

ReadProject read_project_head(std::string_view bytes, std::string_view name) {
    Reading reading(bytes, name);
    reading.start();
    reading.head();
    return std::move(reading).result();
}

Encoded project_bytes(const ProjectFile& p) {
    std::string text = one_line(p.date) + "\r\n" + one_line(p.comment) + "\r\n" + one_line(p.database_path) +
                       "\r\n" + one_line(p.exp_file) + "\r\n" + printNum(p.ExpAnzahl) + "\r\n" +
                       text_padded(one_line(p.CAS), 12) + "\r\n";
    for (const Line& line : lines) text += written(p, line.member) + "\r\n";
    for (int i = 0; i < ReservedLines; ++i) text += "0\r\n";
    return cp1252_from_utf8(text);
}

std::vector<ProjectValue> project_values(const ProjectFile& project) {
    std::vector<ProjectValue> values;
    values.reserve(lines.size());
    for (const Line& line : lines) values.push_back({line.number, line.name, written(project, line.member)});
    return values;
}

}  // namespace quom

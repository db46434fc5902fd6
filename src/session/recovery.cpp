#include "session/recovery.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/dates.h"
#include "base/files.h"
#include "base/number_text.h"
#include "session/recovery_fields.h"
#include "session/start_up.h"
#include "substance/database.h"

namespace quom {
namespace {

constexpr std::string_view FirstLine = "QUOM-6 copy of a session, version 1";
constexpr std::size_t ShortestPoint = 13, ShortestXY = 6;  // bytes of a line with its end

std::string escaped(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (c == '%')
            line += "%25";
        else if (c == '\r')
            line += "%0D";
        else if (c == '\n')
            line += "%0A";
        else
            line += c;
    }
    return line;
}

// None for a "%" that stands for nothing.
std::optional<std::string> unescaped(std::string_view line) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '%') {
            text += line[i];
            continue;
        }
        const std::string_view code = line.substr(i + 1, 2);
        if (code != "25" && code != "0D" && code != "0A") return std::nullopt;
        text += code == "25" ? '%' : code == "0D" ? '\r' : '\n';
        i += 2;
    }
    return text;
}

// A number that is not finite stands for no value.
std::string number_text(double x) { return std::isfinite(x) ? exactNum(x) : "0"; }

class Writer {
 public:
    void text(const char* name, const std::string& x) { line(name, escaped(x)); }
    void flag(const char* name, bool x) { line(name, x ? "1" : "0"); }
    template <class Whole>
    void whole(const char* name, Whole x, int, int) {
        line(name, std::to_string(x));
    }
    void sign(const char* name, char x) { line(name, std::to_string(int{x})); }
    void number(const char* name, double x) { line(name, number_text(x)); }
    template <std::size_t N>
    void numbers(const char* name, const std::array<float, N>& list) {
        std::string text;
        for (const float x : list) text += (text.empty() ? "" : " ") + number_text(double{x});
        line(name, text);
    }
    template <class Code, class From>
    void code(const char* name, Code x, From) {
        line(name, std::to_string(number_of(x)));
    }
    void points(const char* name, const SharedVector<TpRhoPoint>& list) {
        line(name, std::to_string(list.size()));
        for (const TpRhoPoint& p : list) {
            bytes += std::to_string(p.Aus);
            for (const double x : {p.T, p.p, double{p.rhoV}, double{p.rhoL}, double{p.HLV}, double{p.cp}})
                bytes += ' ' + number_text(x);
            bytes += '\n';
        }
    }
    void points(const char* name, const SharedVector<XYPoint>& list) {
        line(name, std::to_string(list.size()));
        for (const XYPoint& p : list)
            bytes += std::to_string(p.Aus) + ' ' + number_text(double{p.x}) + ' ' + number_text(double{p.y}) +
                     '\n';
    }
    std::string bytes;

 private:
    void line(const char* name, std::string_view value) {
        bytes += name;
        bytes += '=';
        bytes += value;
        bytes += '\n';
    }
};

// Reads until the first fault; what comes after it is left as it was.
class Reader {
 public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}
    std::string fault;

    std::string_view next_line() {
        ++line_;
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos) {
            fail("the copy ends too early");
            return {};
        }
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }
    void text(const char* name, std::string& x) {
        auto found = unescaped(value(name));
        if (!found) return fail(std::string(name) + " has a \"%\" that stands for nothing");
        if (fault.empty()) x = std::move(*found);
    }
    void flag(const char* name, bool& x) {
        int number = 0;
        whole(name, number, 0, 1);
        if (fault.empty()) x = number != 0;
    }
    template <class Whole>
    void whole(const char* name, Whole& x, int least, int largest) {
        double number = 0;
        take_number(name, value(name), number);
        if (!(number >= least && number <= largest) || number != std::floor(number))
            fail(std::string(name) + " is out of its range");
        if (fault.empty()) x = static_cast<Whole>(number);
    }
    void sign(const char* name, char& x) {
        int number = 0;
        whole(name, number, 1, 126);
        if (fault.empty()) x = static_cast<char>(number);
    }
    template <class Number>
    void number(const char* name, Number& x) {
        take_number(name, value(name), x);
    }
    template <std::size_t N>
    void numbers(const char* name, std::array<float, N>& list) {
        std::string_view text = value(name);
        for (float& x : list) take_number(name, next_word(text), x);
        if (!text.empty()) fail(std::string(name) + " has too many numbers");
    }
    template <class Code, class From>
    void code(const char* name, Code& x, From from_number) {
        int number = 0;
        whole(name, number, -1, 1000);
        if (number_of(from_number(number)) != number) fail(std::string(name) + " is out of its range");
        if (fault.empty()) x = from_number(number);
    }
    void points(const char* name, SharedVector<TpRhoPoint>& list) {
        take_points<TpRhoPoint>(name, list, ShortestPoint, 1, [this, name](std::string_view text) {
            TpRhoPoint p;
            take_mark(name, next_word(text), p.Aus);
            take_number(name, next_word(text), p.T);
            take_number(name, next_word(text), p.p);
            for (float* x : {&p.rhoV, &p.rhoL, &p.HLV, &p.cp}) take_number(name, next_word(text), *x);
            if (!text.empty()) fail(std::string(name) + " has too many numbers");
            return p;
        });
    }
    void points(const char* name, SharedVector<XYPoint>& list) {
        take_points<XYPoint>(name, list, ShortestXY, 0, [this, name](std::string_view text) {
            XYPoint p;
            take_mark(name, next_word(text), p.Aus);
            for (float* x : {&p.x, &p.y}) take_number(name, next_word(text), *x);
            if (!text.empty()) fail(std::string(name) + " has too many numbers");
            return p;
        });
    }
    void end() {
        if (next_line() != "end" || !rest_.empty()) fail("\"end\" was expected, and nothing behind it");
    }
    void fail(const std::string& what) {
        if (fault.empty()) fault = "line " + std::to_string(line_) + ": " + what;
    }

 private:
    std::string_view value(const char* name) {
        if (!fault.empty()) return "0";
        const std::string_view line = next_line(), head(name);
        if (line.starts_with(head) && line.substr(head.size()).starts_with('='))
            return line.substr(head.size() + 1);
        fail("\"" + std::string(name) + "=\" was expected");
        return "0";
    }
    static std::string_view next_word(std::string_view& text) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        return word;
    }
    template <class Number>
    void take_number(const char* name, std::string_view word, Number& x) {
        if (!fault.empty()) return;
        const std::optional<double> number = read_number(word);
        if (!number || std::fabs(*number) > double{std::numeric_limits<Number>::max()})
            return fail(std::string(name) + " is no number");
        x = static_cast<Number>(*number);
    }
    void take_mark(const char* name, std::string_view word, std::int16_t& x) {
        double number = 0;
        take_number(name, word, number);
        if (number != 0 && number != -1) fail(std::string(name) + " is neither 0 nor -1");
        if (fault.empty()) x = static_cast<std::int16_t>(number);
    }
    // So many lines of at least `shortest` bytes each.
    template <class Point, class Read>
    void take_points(const char* name, SharedVector<Point>& list, std::size_t shortest, int least,
                     Read read) {
        int count = 0;
        whole(name, count, least, std::numeric_limits<int>::max());
        const auto size = static_cast<std::size_t>(count);
        if (fault.empty() && size > rest_.size() / shortest) fail("the copy ends too early");
        if (!fault.empty()) return;
        std::vector<Point> points;
        points.reserve(size);
        for (std::size_t i = 0; i < size && fault.empty(); ++i) points.push_back(read(next_line()));
        list = SharedVector<Point>(std::move(points));
    }

    std::string_view rest_;
    int line_ = 0;
};

bool same_shell(const ShellState& a, const ShellState& b) {
    return a.ProjectPath == b.ProjectPath && a.ProjectFolder == b.ProjectFolder &&
           a.ProjectTitle == b.ProjectTitle && a.LastSessionLoaded == b.LastSessionLoaded &&
           a.ModelsConfirmed == b.ModelsConfirmed && a.ModelStatus == b.ModelStatus &&
           a.ModelChange == b.ModelChange;
}

// Why the database of a copy cannot be the one in force with the copied substance.
std::string database_fault(Session& session, const Document& document) {
    if (document.DatabaseKind == 0) return {};  // the one that is open stays
    Document language = session.document;
    language.options = document.options;
    commit(session, std::move(language));
    const LoadResult loaded = LoadDatabase(session, document.DatabaseKind, document.DatabasePath);
    if (loaded.err != 0) return loaded.fault;
    const int index = document.substance.StoffIndexAktiv;
    if (index == 0) return {};
    if (index <= session.database.StoffAnzahl() &&
        read_substance_head(session.database, index).CASRN == document.substance.constants.StoffCAS)
        return {};
    return "The database \"" + document.DatabasePath + "\" does not have " +
           document.substance.constants.StoffName + " at its place any more.";
}

std::string data_line(const char* what, std::size_t count, const std::string& file, bool changed) {
    return std::string(what) + ": " + std::to_string(count) + (count == 1 ? " line" : " lines") +
           (file.empty() ? ", without a file" : ", " + name_part(file)) + (changed ? ", not saved" : "") +
           '\n';
}

}  // namespace

SessionCopy copy_of(const Session& session) {
    SessionCopy copy{.written = now_text(),
                     .document = session.document,
                     .shell = session.shell,
                     .StoffIndex = session.StoffIndex};
    copy.document.exp.points = std::vector<TpRhoPoint>(copy.document.exp.points.list());
    copy.document.xy.points = std::vector<XYPoint>(copy.document.xy.points.list());
    return copy;
}

bool same_session(const SessionCopy& copy, const Session& session) {
    return same_shell(copy.shell, session.shell) && copy.document == session.document;
}

std::string session_copy_bytes(const SessionCopy& copy) {
    Writer writer;
    writer.bytes = std::string(FirstLine) + '\n';
    copy_fields(writer, copy);
    return std::move(writer.bytes) + "end\n";
}

SessionCopyRead read_session_copy(std::string_view bytes) {
    Reader reader(bytes);
    if (bytes.size() > LargestCopy) reader.fail("the copy is larger than one can be");
    if (reader.fault.empty() && reader.next_line() != FirstLine)
        reader.fail("this is no copy of a session of this version");
    SessionCopy copy;
    copy_fields(reader, copy);
    if (reader.fault.empty()) reader.end();
    const Document& d = copy.document;
    if (reader.fault.empty() && d.calc.CurrentPoint > data_point_count(d.exp))
        reader.fail("CurrentPoint is out of its range");
    if (!reader.fault.empty()) return {.copy = {}, .fault = std::move(reader.fault)};
    return {.copy = std::move(copy), .fault = {}};
}

std::string copy_preview(const SessionCopy& copy) {
    const Document& d = copy.document;
    std::string text;
    if (!copy.shell.ProjectTitle.empty()) text += "Project: " + copy.shell.ProjectTitle + '\n';
    if (d.DatabaseKind != 0) text += "Database: " + name_part(d.DatabasePath) + '\n';
    if (d.substance.StoffIndexAktiv > 0)
        text += "Substance: " + d.substance.constants.StoffName +
                (copy.shell.ModelsConfirmed ? ", " + copy.shell.ModelStatus : "") + '\n';
    const auto count = static_cast<std::size_t>(data_point_count(d.exp));
    if (count > 0) text += data_line("Measured data", count, d.exp.file.ExpFile, d.exp.ExpGeaendert);
    if (!d.xy.points.empty())
        text += data_line("X-Y data", d.xy.points.size(), d.xy.XYFile, d.xy.XYGeaendert);
    return text.empty() ? "Options and units\n" : text;
}

void restore_session(Session& session, const SessionCopy& copy, Messages& messages) {
    Document document = copy.document;
    ShellState& shell = session.shell;
    const std::string fault = database_fault(session, document);
    const bool substance = fault.empty() && document.DatabaseKind != 0;
    if (!substance) {
        document.substance = {};
        document.eos_input = {};
        document.calc = {};
    }
    if (!fault.empty())
        messages.ask({.title = "WARNING",
                      .text = fault + "\nThe rest of the session was loaded without a substance.",
                      .kind = MessageKind::warning});
    document.DatabaseKind = session.document.DatabaseKind;
    document.DatabasePath = session.document.DatabasePath;
    session.StoffIndex = document.substance.StoffIndexAktiv;
    commit(session, std::move(document));
    forget_results(session);
    shell.ProjectPath = copy.shell.ProjectPath;
    shell.ProjectFolder = copy.shell.ProjectFolder;
    shell.ProjectTitle = copy.shell.ProjectTitle;
    shell.LastSessionLoaded = copy.shell.LastSessionLoaded;
    shell.ModelsConfirmed = substance && copy.shell.ModelsConfirmed;
    shell.ModelStatus = shell.ModelsConfirmed ? copy.shell.ModelStatus : std::string();
    shell.ModelChange = substance ? copy.shell.ModelChange : std::string();
}

}  // namespace quom

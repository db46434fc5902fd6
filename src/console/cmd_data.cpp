// data: what a data file holds, converted, or joined with another one.
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "console/selection.h"
#include "fitting/baq_file.h"
#include "fitting/xy_file.h"
#include "substance/database.h"

namespace quom {
namespace {

constexpr std::size_t LargestFile = std::size_t{64} << 20;  // bytes
constexpr char Delimiter = ';';                             // of what is written

struct DataArguments {
    std::string file, convert, join, out, y;
    bool info = false;
};

enum class FileKind { none, baq, xy, csv };
FileKind kind_of(std::string_view path) {
    const std::string name = upper_text(path);
    if (name.ends_with(".BAQ")) return FileKind::baq;
    if (name.ends_with(".XY") || name.ends_with(".LRG")) return FileKind::xy;
    return name.ends_with(".CSV") ? FileKind::csv : FileKind::none;
}

struct ColumnName {
    const char *key, *head, *unit;
};
constexpr ColumnName exp_names[exp_columns] = {{"T", "T/K", "K"},
                                               {"p", "p/kPa", "kPa"},
                                               {"rhoV", "rho(V)/(kg/m^3)", "kg/m^3"},
                                               {"rhoL", "rho(L)/(kg/m^3)", "kg/m^3"},
                                               {"HLV", "delta(LV)h/(kJ/kmol)", "kJ/kmol"},
                                               {"cp", "cp/(kJ/(kmol K))", "kJ/(kmol K)"}};
constexpr const char* y_names[] = {"p", "rhoL", "rhoV", "HLV", "cp"};  // of optFitFunction from 1

// optFitFunction of --y; 0: there is no such column.
int fit_function_of(std::string_view y) {
    const auto at = std::ranges::find(y_names, y);
    return at == std::end(y_names) ? 0 : static_cast<int>(at - std::begin(y_names)) + 1;
}
std::size_t column_of(std::string_view key) {
    const auto at = std::ranges::find(exp_names, key, &ColumnName::key);
    return static_cast<std::size_t>(at - std::begin(exp_names));
}

// A file of either form. Of X-Y data the columns are x and y.
struct DataFile {
    FileKind kind = FileKind::none;
    ExperimentalData exp;
    XYData xy;
    int values_per_point = 0;
    char delimiter = 0;
    std::string note;
    std::size_t size() const {
        return kind == FileKind::xy ? xy.points.size() : static_cast<std::size_t>(data_point_count(exp));
    }
};

Refused read(const std::string& path, DataFile& into) {
    into.kind = kind_of(path);
    if (into.kind != FileKind::baq && into.kind != FileKind::xy)
        return Fault{status_usage, in_quotes(path) + " is no data file; .BAQ, .XY and .LRG are."};
    const FileBytes file = read_file(path, LargestFile);
    if (!file.bytes) return Fault{status_file, file.fault};
    if (into.kind == FileKind::xy) {
        XYResult result = read_xy(*file.bytes, path);
        if (!result.file) return Fault{status_file, result.fault};
        into.xy.points = SharedVector<XYPoint>(std::move(result.file->points));
        into.xy.comment = std::move(result.file->comment);
        into.delimiter = result.file->delimiter;
        if (result.file->more_columns) into.note = "Columns behind the second are left out.";
        return {};
    }
    BaqResult result = read_baq(*file.bytes, path);
    if (!result.file) return Fault{status_file, result.fault};
    BaqFile& baq = *result.file;
    into.exp.points = SharedVector<TpRhoPoint>(std::move(baq.points));
    into.exp.file.ExpDate = std::move(baq.date);
    into.exp.file.ExpComment = std::move(baq.comment);
    into.exp.file.ExpCAS = std::move(baq.CAS);
    into.exp.file.ExpName = std::move(baq.name);
    into.values_per_point = baq.values_per_point;
    into.note = std::move(baq.note);
    return {};
}

// How many points have a value in a column, and the smallest and the largest one.
class Extent {
 public:
    void add(double x) {
        low_ = count_ == 0 ? x : std::min(low_, x);
        high_ = count_ == 0 ? x : std::max(high_, x);
        ++count_;
    }
    std::vector<Value> row(const char* key, const char* unit) const {
        return {key, count_, if_any(low_), if_any(high_), unit};
    }

 private:
    Value if_any(double x) const { return count_ > 0 ? Value(x) : Value(); }
    int count_ = 0;
    double low_ = 0, high_ = 0;
};

Table columns_table(const DataFile& data) {
    Table table{"columns",
                "",
                {{"column", "column", ""},
                 {"count", "values", ""},
                 {"low", "smallest", ""},
                 {"high", "largest", ""},
                 {"unit", "", ""}},
                {}};
    if (data.kind == FileKind::xy) {
        Extent x, y;
        for (const XYPoint& point : data.xy.points) {
            x.add(static_cast<double>(point.x));
            y.add(static_cast<double>(point.y));
        }
        table.rows = {x.row("x", ""), y.row("y", "")};
        return table;
    }
    for (std::size_t column = 0; column < exp_columns; ++column) {
        Extent extent;
        for (int i = 1; i <= data_point_count(data.exp); ++i) {
            const double x = exp_value(data.exp.points[static_cast<std::size_t>(i)], column);
            if (x != 0) extent.add(x);
        }
        table.rows.push_back(extent.row(exp_names[column].key, exp_names[column].unit));
    }
    return table;
}

Block data_block(const DataFile& data, const std::string& path, const Value& index, const Value& written) {
    const bool baq = data.kind == FileKind::baq;
    const ExpDataFile& head = data.exp.file;
    const auto delimiter_word = [&]() -> Value {
        const char d = data.delimiter;
        if (d == 0) return {};
        return d == ' ' ? "blank" : d == ',' ? "comma" : d == ';' ? "semicolon" : "tab";
    };
    return {"data",
            "",
            {{"file", "file", path, "", ""},
             {"kind", "", baq ? "BAQ" : "XY", "", ""},
             {"date", "saved", remark(head.ExpDate), "", ""},
             {"comment", "comment", remark(baq ? head.ExpComment : data.xy.comment), "", ""},
             {"CAS", "CAS", remark(head.ExpCAS), "", ""},
             {"name", "substance", remark(head.ExpName), "", ""},
             {"index", "in the database", index, "", ""},
             {"points", "points", data.size(), "", ""},
             {"values_per_point", "values a point", baq ? Value(data.values_per_point) : Value(), "", ""},
             {"delimiter", "delimiter", delimiter_word(), "", ""},
             {"written", "written", written, "", ""}},
            Layout::known};
}

Report report_of(const DataFile& data, const std::string& path, const Value& index, const Value& written) {
    Report report;
    report.sections.emplace_back(data_block(data, path, index, written));
    report.sections.emplace_back(columns_table(data));
    if (!data.note.empty()) report.notes.push_back(data.note);
    return report;
}

std::string csv_bytes(const DataFile& data) {
    std::string text;
    if (data.kind == FileKind::xy) {
        text = std::string("x") + Delimiter + "y\r\n";
        for (const XYPoint& point : data.xy.points)
            text += genNum(point.x) + Delimiter + genNum(point.y) + "\r\n";
        return text;
    }
    for (const ColumnName& name : exp_names)
        text += (text.empty() ? "" : std::string(1, Delimiter)) + name.head;
    text += "\r\n";
    for (int i = 1; i <= data_point_count(data.exp); ++i) {
        const TpRhoPoint& point = data.exp.points[static_cast<std::size_t>(i)];
        text += genNum(point.T) + Delimiter + genNum(point.p);
        for (std::size_t column = 2; column < exp_columns; ++column)
            text += Delimiter + genSingle(exp_value(point, column));
        text += "\r\n";
    }
    return text;
}

// X-Y data as a data set: x is T, y the column of --y.
Refused to_data_set(DataFile& data, const std::string& y) {
    if (y.empty())
        return Fault{status_usage, "X-Y data do not say what y is: add --y p|rhoL|rhoV|HLV|cp; x is T in K."};
    std::vector<TpRhoPoint>& points = data.exp.points.edit();
    for (const XYPoint& pair : data.xy.points) {
        if (pair.x < 0 || pair.y < 0)
            return Fault{status_no_result,
                         "Point " + std::to_string(points.size()) + " is negative; T and " + y + " are not."};
        // The shortest decimal number of a single is what was measured.
        TpRhoPoint& point = points.emplace_back();
        set_exp_value(point, 0, Val(genNum(pair.x)));
        set_exp_value(point, column_of(y), Val(genNum(pair.y)));
    }
    if (points.size() < 2) return Fault{status_no_result, "There are no points to be converted."};
    data.exp.file.ExpComment = data.xy.comment;
    return {};
}

Refused write(const DataFile& data, FileKind kind, const std::string& path) {
    std::string bytes;
    if (kind == FileKind::csv) {
        bytes = csv_bytes(data);
    } else if (kind == FileKind::baq) {
        bytes = baq_bytes(data.exp).bytes;
    } else {
        bytes =
            (data.kind == FileKind::xy ? xy_bytes(data.xy, Delimiter) : T_y_bytes(data.exp, Delimiter)).bytes;
    }
    const std::string fault = write_file_atomic(path, bytes);
    return fault.empty() ? Refused() : Fault{status_file, fault};
}

Report convert(DataFile& data, const DataArguments& a) {
    const FileKind kind = kind_of(a.convert);
    if (kind == FileKind::none)
        return refusal("data",
                       {status_usage, in_quotes(a.convert) + ": the file to be written ends with .BAQ, "
                                                             ".XY or .csv."});
    if (!a.y.empty()) data.exp.optFitFunction = fit_function_of(a.y);
    if (data.kind == FileKind::xy && kind == FileKind::baq) {
        if (const Refused refused = to_data_set(data, a.y)) return refusal("data", *refused);
    }
    if (const Refused refused = write(data, kind, a.convert)) return refusal("data", *refused);
    return report_of(data, a.file, {}, a.convert);
}

Report join(Program& program, DataFile& data, const DataArguments& a) {
    DataFile more;
    if (const Refused refused = read(a.join, more)) return refusal("data", *refused);
    if (more.kind != data.kind || kind_of(a.out) != data.kind)
        return refusal("data", {status_usage, "Files of one form are joined: " + in_quotes(a.file) + ", " +
                                                  in_quotes(a.join) + " and " + in_quotes(a.out) +
                                                  " have to end alike."});
    if (data.size() + more.size() > MaxDataPoints)
        return refusal("data", {status_no_result,
                                "More than " + std::to_string(MaxDataPoints) + " points are not possible."});
    if (data.exp.file.ExpCAS != more.exp.file.ExpCAS) {
        const Message question{.title = "WARNING",
                               .text = "The files are of different substances: \"" + data.exp.file.ExpCAS +
                                       "\" and \"" + more.exp.file.ExpCAS + "\". Join them anyway?",
                               .buttons = Buttons::yes_no,
                               .default_button = Answer::no,
                               .kind = MessageKind::warning};
        if (program.messages.ask(question) != Answer::yes)
            return refusal("data", {status_no_result,
                                    "The files are of different substances; --answer yes joins them."});
    }
    std::vector<TpRhoPoint>& points = data.exp.points.edit();
    points.insert(points.end(), more.exp.points.begin() + 1, more.exp.points.end());
    std::vector<XYPoint>& pairs = data.xy.points.edit();
    pairs.insert(pairs.end(), more.xy.points.begin(), more.xy.points.end());
    if (const Refused refused = write(data, data.kind, a.out)) return refusal("data", *refused);
    if (!more.note.empty())
        data.note += (data.note.empty() ? "" : " ") + in_quotes(a.join) + ": " + more.note;
    return report_of(data, a.file, {}, a.out);
}

Report data(Program& program, const DataArguments& a) {
    const int asked = (a.info ? 1 : 0) + (a.convert.empty() ? 0 : 1) + (a.join.empty() ? 0 : 1);
    if (asked != 1)
        return refusal("data",
                       {status_usage, "One of --info, --convert OUT and --join FILE --out OUT is needed."});
    if (a.join.empty() != a.out.empty())
        return refusal("data", {status_usage, "--join FILE and --out OUT belong together."});
    if (!a.y.empty() && a.convert.empty())
        return refusal("data", {status_usage, "--y belongs to --convert OUT."});
    if (const Refused refused = load_database(program)) return refusal("data", *refused);
    DataFile file;
    if (const Refused refused = read(a.file, file)) return refusal("data", *refused);
    if (!a.convert.empty()) return convert(file, a);
    if (!a.join.empty()) return join(program, file, a);
    const int index = FindCAS(program.session.database, file.exp.file.ExpCAS);
    Report report = report_of(file, a.file, index > 0 ? Value(index) : Value(), {});
    if (index == 0 && file.kind == FileKind::baq)
        report.notes.push_back("The substance is not in the database.");
    return report;
}

}  // namespace

Action declare_data(CLI::App& app) {
    const auto a = std::make_shared<DataArguments>();
    app.add_option("FILE", a->file, "Data file: .BAQ, .XY or .LRG")->required()->type_name("");
    app.add_flag("--info", a->info, "What the file holds");
    app.add_option("--convert", a->convert, "Write it in the form of this file: .BAQ, .XY or .csv")
        ->type_name("OUT");
    app.add_option("--y", a->y, "Column of y beside T in an .XY file: p, rhoL, rhoV, HLV, cp (default p)")
        ->check([](const std::string& y) {
            return fit_function_of(y) > 0 ? std::string()
                                          : "\"" + y + "\" is no column; p, rhoL, rhoV, HLV, cp are.";
        })
        ->type_name("COLUMN");
    app.add_option("--join", a->join, "Put the points of this file behind those of FILE")->type_name("FILE");
    app.add_option("--out", a->out, "and write them all to this file")->type_name("OUT");
    return [a](Program& program) { return data(program, *a); };
}

}  // namespace quom

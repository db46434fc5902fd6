#include "diagrams/chart_file.h"

#include <array>

#include "base/files.h"
#include "diagrams/chart_texts.h"
#include "diagrams/json_reader.h"

namespace quom {
namespace {

constexpr std::string_view Format = "QUOM-CHART";
constexpr std::size_t MostLines = 500, LongestText = 1000, NumbersInLine = 12;
constexpr double MostTicks = 1000;

constexpr std::string_view kind_words[] = {"ph", "ts", "hs"};
constexpr std::string_view family_words[] = {"x", "v", "h", "s", "p", "T", "limit", "saturation"};
constexpr std::string_view reference_words[] = {"session", "0C", "-40C", "nbp", "triple"};
constexpr std::string_view quantity_words[] = {"T", "p", "v", "h", "s", "x"};
using Q = ChartQuantity;

struct AxesRow {
    Q x, y;
    bool log_y;
};
constexpr AxesRow axes_rows[] = {
    {Q::h, Q::p, true}, {Q::s, Q::T, false}, {Q::s, Q::h, false}};  // as ChartKind

struct StateColumn {
    Q quantity;
    double ChartState::*member;
};
constexpr StateColumn state_columns[] = {{Q::T, &ChartState::T},
                                         {Q::p, &ChartState::p},
                                         {Q::v, &ChartState::v},
                                         {Q::h, &ChartState::h},
                                         {Q::s, &ChartState::s}};

template <class Choice>
std::string_view word_of(Choice choice, std::span<const std::string_view> words) {
    return words[static_cast<std::size_t>(choice)];
}
std::string_view word_of(Q quantity) { return word_of(quantity, quantity_words); }

// ---- writing -------------------------------------------------------------------------------------------

std::string quoted(std::string_view text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}
std::string number(double x) { return std::isfinite(x) ? exactNum(x) : "null"; }

// The fields of an object, one to the line or all in one.
class ObjectText {
 public:
    ObjectText(std::string& out, std::size_t indent, bool in_one_line = false)
        : out_(out), inset_(in_one_line ? "" : "\n" + std::string(indent, ' ')), one_(in_one_line) {
        out_ += '{';
    }
    std::string& key(std::string_view name) {
        if (!first_) out_ += one_ ? ", " : ",";
        first_ = false;
        if (!one_) out_ += inset_ + " ";
        return out_ += quoted(name) + ": ";
    }
    void text(std::string_view name, std::string_view x) { key(name) += quoted(x); }
    void number(std::string_view name, double x) { key(name) += quom::number(x); }
    void flag(std::string_view name, bool x) { key(name) += x ? "true" : "false"; }
    template <class Value, class List>
    void list(std::string_view name, const List& entries, Value value) {
        key(name) += '[';
        std::size_t i = 0;
        for (const auto& entry : entries) {
            if (i > 0) out_ += i % NumbersInLine == 0 ? "," + inset_ + "  " : ", ";
            out_ += quom::number(value(entry));
            ++i;
        }
        out_ += ']';
    }
    void end() { out_ += inset_ + "}"; }

 private:
    std::string& out_;
    std::string inset_;
    bool one_, first_ = true;
};

void put_axis(std::string& out, const ChartAxis& axis) {
    ObjectText o(out, 0, true);
    o.text("quantity", word_of(axis.quantity));
    o.text("text", axis.text);
    o.flag("log", axis.log);
    o.number("low", axis.low);
    o.number("high", axis.high);
    o.number("major", axis.major);
    o.number("minor", axis.minor);
    o.end();
}

void put_line(std::string& out, const StateChart& chart, const ChartLine& line) {
    const auto fraction = [](double x) { return x < 0.0 ? std::nan("") : x; };
    ObjectText o(out, 2);
    o.text("family", word_of(line.family, family_words));
    o.number("value", line.value);
    o.text("label", line.label);
    o.text("long_label", line.long_label);
    o.list("x", line.vertices, [](const ChartVertex& vertex) { return vertex.x; });
    o.list("y", line.vertices, [](const ChartVertex& vertex) { return vertex.y; });
    o.list("fraction", line.vertices, [&](const ChartVertex& vertex) { return fraction(vertex.fraction); });
    ObjectText states(o.key("states"), 3);
    for (const StateColumn& column : state_columns)
        states.list(word_of(column.quantity), line.states, [&](const ChartState& state) {
            return !std::isnan(state.T) ? chart.shown(state, column.quantity) : std::nan("");
        });
    states.list("x", line.states, [&](const ChartState& state) {
        return !std::isnan(state.T) ? fraction(state.x) : std::nan("");
    });
    states.end();
    o.end();
}

// ---- reading -------------------------------------------------------------------------------------------

void read_text(JsonReader& reader, const char* name, std::string& text) {
    reader.text(name, text);
    if (text.size() > LongestText) reader.fail(name, "is too long a text");
}

void read_axis(JsonReader& reader, ChartAxis& axis) {
    reader.exactly({"quantity", "text", "log", "low", "high", "major", "minor"});
    reader.choice("quantity", axis.quantity, quantity_words);
    read_text(reader, "text", axis.text);
    reader.flag("log", axis.log);
    reader.number("low", axis.low);
    reader.number("high", axis.high);
    reader.number("major", axis.major);
    reader.number("minor", axis.minor);
    const double span = axis.high - axis.low;
    if (!(span > 0.0) || !std::isfinite(span)) reader.fail("", "low must be below high");
    if (axis.log) {
        if (!(axis.low > 0.0)) reader.fail("low", "must be above 0 on a logarithmic axis");
        return;
    }
    for (const auto& [name, step] : {std::pair("major", axis.major), std::pair("minor", axis.minor)})
        if (!(step > 0.0) || !(span / step <= MostTicks)) reader.fail(name, "is no step of this axis");
}

void read_axes(JsonReader& reader, StateChart& chart) {
    reader.exactly({"x", "y"});
    reader.part("x", chart.x, [](JsonReader& sub, ChartAxis& axis) { read_axis(sub, axis); });
    reader.part("y", chart.y, [](JsonReader& sub, ChartAxis& axis) { read_axis(sub, axis); });
    const AxesRow& own = axes_rows[static_cast<std::size_t>(chart.kind)];
    if (chart.x.quantity != own.x || chart.y.quantity != own.y || chart.x.log || chart.y.log != own.log_y)
        reader.fail("", "are not those of this kind of chart");
}

void read_units(JsonReader& reader, ChartUnits& units) {
    reader.exactly({"T", "p", "v", "h", "s"});
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i].symbol = quantity_words[i];
        if (static_cast<Q>(i) != Q::x) read_text(reader, quantity_words[i].data(), units[i].unit);
    }
}

// One number a state; "states" and the critical point have the same names.
void read_critical(JsonReader& reader, ChartState& critical) {
    reader.exactly({"T", "p", "v", "h", "s"});
    for (const StateColumn& column : state_columns)
        reader.number(word_of(column.quantity).data(), critical.*column.member);
}

void check_count(const JsonReader& reader, std::size_t count, std::size_t first) {
    if (count != first) reader.fail("", "the lists must have as many numbers as each other");
}

double fraction_of(const JsonReader& reader, const char* name, double x) {
    if (std::isnan(x)) return -1.0;
    if (!(x >= 0.0 && x <= 1.0)) reader.fail(name, "must lie between 0 and 1");
    return x;
}

void read_vertices(JsonReader& reader, const StateChart& chart, ChartLine& line) {
    std::vector<double> x, y, fraction;
    reader.numbers("x", x, true);
    reader.numbers("y", y, true);
    reader.numbers("fraction", fraction, true);
    check_count(reader, y.size(), x.size());
    check_count(reader, fraction.size(), x.size());
    const auto within = [](const ChartAxis& axis, double value) {
        return value >= axis.low && value <= axis.high;
    };
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool gap = std::isnan(x[i]) && std::isnan(y[i]);
        if (!gap && !(within(chart.x, x[i]) && within(chart.y, y[i])))
            reader.fail("", "vertex " + std::to_string(i + 1) + " lies outside the axes");
        line.vertices.push_back({x[i], y[i], fraction_of(reader, "fraction", fraction[i])});
    }
}

void read_states(JsonReader& reader, ChartStates& states) {
    reader.exactly({"T", "p", "v", "h", "s", "x"});
    std::vector<double> column, x;
    reader.numbers("x", x, true);
    states.resize(x.size());
    for (const StateColumn& row : state_columns) {
        reader.numbers(word_of(row.quantity).data(), column, true);
        check_count(reader, column.size(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i) states[i].*row.member = column[i];
    }
    for (std::size_t i = 0; i < x.size(); ++i) {
        ChartState& state = states[i];
        const bool whole = std::isfinite(state.T + 0.0 * (state.p + state.v + state.h + state.s));
        const bool gap = std::isnan(state.T) && std::isnan(state.p) && std::isnan(state.v) &&
                         std::isnan(state.h) && std::isnan(state.s) && std::isnan(x[i]);
        if (!whole && !gap) reader.fail("", "state " + std::to_string(i + 1) + " is not whole");
        if (gap) {
            state = {};
        } else {
            state.x = fraction_of(reader, "x", x[i]);
        }
    }
}

void read_line(JsonReader& reader, StateChart& chart) {
    if (chart.lines.size() == MostLines) reader.fail("", "is one line too many");
    ChartLine line;
    reader.exactly({"family", "value", "label", "long_label", "x", "y", "fraction", "states"});
    reader.choice("family", line.family, family_words);
    reader.number("value", line.value);
    read_text(reader, "label", line.label);
    read_text(reader, "long_label", line.long_label);
    read_vertices(reader, chart, line);
    reader.part("states", line.states,
                [](JsonReader& sub, ChartStates& states) { read_states(sub, states); });
    chart.lines.push_back(std::move(line));
}

void check_legend(JsonReader& reader, const StateChart& chart) {
    std::vector<LegendRow> rows;
    reader.objects("legend", [&](JsonReader& sub) {
        LegendRow row;
        sub.exactly({"family", "text"});
        sub.choice("family", row.family, family_words);
        sub.text("text", row.text);
        rows.push_back(std::move(row));
    });
    const bool own = std::ranges::equal(
        rows, chart_legend(chart),
        [](const LegendRow& a, const LegendRow& b) { return a.family == b.family && a.text == b.text; });
    if (!own) reader.fail("legend", "is not that of the lines");
}

void check_format(const Json& root) {
    if (!root.is_object() || !root.contains("format") || root["format"] != Format)
        throw JsonFault("is no chart: the mark \"format\": \"QUOM-CHART\" is missing");
    if (!root.contains("version") || root["version"] != 1)
        throw JsonFault("is of another version than 1, which is read here");
}

ChartFile read_file_of(const Json& root) {
    check_format(root);
    JsonReader reader(root, "");
    reader.exactly({"format", "version", "kind", "header", "footer", "reference", "black", "units", "axes",
                    "critical_point", "legend", "lines"});
    ChartFile file;
    StateChart& chart = file.chart;
    reader.choice("kind", chart.kind, kind_words);
    read_text(reader, "header", chart.header);
    read_text(reader, "footer", chart.footer);
    reader.choice("reference", chart.reference, reference_words);
    reader.flag("black", file.black);
    reader.part("units", chart.units, [](JsonReader& sub, ChartUnits& units) { read_units(sub, units); });
    reader.part("axes", chart, [](JsonReader& sub, StateChart& whole) { read_axes(sub, whole); });
    reader.part("critical_point", chart.critical,
                [](JsonReader& sub, ChartState& critical) { read_critical(sub, critical); });
    reader.objects("lines", [&](JsonReader& sub) { read_line(sub, chart); });
    check_legend(reader, chart);
    return file;
}

}  // namespace

std::string chart_bytes(const ChartFile& file) {
    const StateChart& chart = file.chart;
    std::string out;
    ObjectText root(out, 0);
    root.text("format", Format);
    root.key("version") += "1";
    root.text("kind", word_of(chart.kind, kind_words));
    root.text("header", chart.header);
    root.text("footer", chart.footer);
    root.text("reference", word_of(chart.reference, reference_words));
    root.flag("black", file.black);
    ObjectText units(root.key("units"), 0, true);
    for (const StateColumn& column : state_columns)
        units.text(word_of(column.quantity), chart.units[static_cast<std::size_t>(column.quantity)].unit);
    units.end();
    ObjectText axes(root.key("axes"), 1);
    put_axis(axes.key("x"), chart.x);
    put_axis(axes.key("y"), chart.y);
    axes.end();
    ObjectText critical(root.key("critical_point"), 0, true);
    for (const StateColumn& column : state_columns)
        critical.number(word_of(column.quantity), chart.shown(chart.critical, column.quantity));
    critical.end();
    root.key("legend") += '[';
    const char* separator = "\n  ";
    for (const LegendRow& row : chart_legend(chart)) {
        out += separator;
        ObjectText o(out, 0, true);
        o.text("family", word_of(row.family, family_words));
        o.text("text", row.text);
        o.end();
        separator = ",\n  ";
    }
    out += "\n ]";
    root.key("lines") += '[';
    separator = "\n  ";
    for (const ChartLine& line : chart.lines) {
        out += separator;
        put_line(out, chart, line);
        separator = ",\n  ";
    }
    out += "\n ]";
    root.end();
    return out + "\n";
}

ChartRead read_chart(std::string_view bytes, std::string_view name) {
    try {
        return {read_file_of(parse_json(bytes, LargestChartFile, "chart")), ""};
    } catch (const JsonFault& fault) {
        return {std::nullopt, in_quotes(name) + ": " + fault.what() + "."};
    }
}

ChartRead load_chart(const std::string& path) {
    const FileBytes file = read_file(path, LargestChartFile);
    if (!file.bytes) return {std::nullopt, file.fault};
    return read_chart(*file.bytes, name_part(path));
}

std::string save_chart(const std::string& path, const ChartFile& file) {
    return write_file_atomic(path, chart_bytes(file));
}

std::span<const std::string_view> chart_kind_words() { return kind_words; }
std::span<const std::string_view> chart_family_words() { return family_words; }
std::span<const std::string_view> chart_reference_words() { return reference_words; }

}  // namespace quom

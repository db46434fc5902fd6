#include "console/diagram_output.h"

#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "console/curve_output.h"
#include "console/selection.h"
#include "diagrams/chart_texts.h"
#include "report/outcome_report.h"
#include "report/sheet_columns.h"

namespace quom {
namespace {

using Q = ChartQuantity;
constexpr Q quantities[] = {Q::T, Q::p, Q::v, Q::h, Q::s};

// A single with the digits that it has.
double digits_of(float single) { return Val(writeNum(single)); }

std::string_view family_word(ChartFamily family) {
    return chart_family_words()[static_cast<std::size_t>(family)];
}

struct SheetTables {
    Table series{"series",
                 "",
                 {{"name", "series", ""},
                  {"text", "text", ""},
                  {"n", "points", ""},
                  {"Par", "", "", Layout::json},
                  {"Tag", "", "", Layout::json}},
                 {}};
    Table points{"sheet_points",
                 "",
                 {{"series", "", ""}, {"x", "", ""}, {"y", "", ""}, {"par", "", ""}, {"tag", "", ""}},
                 {},
                 Layout::json};

    void add(const std::string& name, const Series& line, std::string_view text, const CurveSlot* curve) {
        if (text.starts_with(name + " ")) text.remove_prefix(name.size() + 1);
        const bool hidden = curve != nullptr && !curve->CurveHidden.empty();
        const std::int16_t none = par_none, Par = hidden ? curve->Par : none,
                           Tag = hidden ? curve->Tag : none;
        series.rows.push_back({name, remark(std::string(trim(text))), line.points.size(),
                               static_cast<int>(Par), static_cast<int>(Tag)});
        for (std::size_t i = 0; i < line.points.size(); ++i) {
            const bool there = hidden && i < curve->CurveHidden.size();
            const SheetPoint& point = line.points[i];
            points.rows.push_back(
                {name, digits_of(point.X), digits_of(point.Y),
                 there && Par != par_none ? Value(digits_of(curve->CurveHidden[i].Par)) : Value(),
                 there && Tag != par_none ? Value(digits_of(curve->CurveHidden[i].Tag)) : Value()});
        }
    }
};

}  // namespace

Report sheet_report(const Session& session, const std::string& file) {
    const GraphDocument& sheet = *session.diagram.sheet;
    SheetTables tables;
    for (int slot = 1; slot <= CurveSlots; ++slot) {
        const CurveSlot& curve = sheet.curve(slot);
        if (!curve.CurveFree) tables.add("C." + genNum(slot), curve.series, curve.series.label.text, &curve);
    }
    for (int set = 1; set <= PointSlots; ++set) {
        const Series& series = sheet.set(set).series;
        if (!sheet.set(set).PointFree) tables.add("P." + genNum(set), series, series.label.text, nullptr);
    }
    for (int number = FirstMark; number <= LastMark; ++number) {
        const Series& series = sheet.mark(number).series;
        if (sheet.mark(number).shown()) tables.add("M." + genNum(number), series, series.label.text, nullptr);
    }
    Report report;
    add_heads(report, session);
    for (ReportSection& section : report.sections)
        std::visit(
            [](auto& part) {
                if constexpr (requires { part.layout; }) part.layout = Layout::json;
            },
            section);
    report.title = substance_head(session.substance()) + ", diagram " +
                   genNum(static_cast<int>(sheet.diagram.kind)) + ", " + sheet.diagram.title;
    const CurveColumns columns =
        curve_columns(sheet.diagram.kind, {}, *session.fluid, session.diagram.units, {}, 0);
    Block diagram{"diagram",
                  "",
                  {{"kind", "", static_cast<int>(sheet.diagram.kind), "", ""},
                   {"title", "", sheet.diagram.title, "", ""},
                   {"interchanged", "", sheet.Interchanged, "", ""},
                   {"file", "", file, "", ""}},
                  Layout::json};
    for (std::size_t k = 0; k < 2; ++k) {
        diagram.fields.push_back({columns[k].name + "_quantity", "", remark(columns[k].symbol), "", ""});
        diagram.fields.push_back({columns[k].name + "_text", "", remark(columns[k].text), "", ""});
        diagram.fields.push_back({columns[k].name + "_unit", "", remark(columns[k].unit), "", ""});
    }
    report.sections.emplace_back(std::move(diagram));
    const CurveRange& r = sheet.diagram.range;
    report.sections.emplace_back(Block{"ranges",
                                       "",
                                       {{"XMin", "", digits_of(r.XMin), columns[0].unit, ""},
                                        {"XMax", "", digits_of(r.XMax), columns[0].unit, ""},
                                        {"YMin", "", digits_of(r.YMin), columns[1].unit, ""},
                                        {"YMax", "", digits_of(r.YMax), columns[1].unit, ""}},
                                       Layout::json});
    tables.points.columns[1].unit = columns[0].unit;
    tables.points.columns[2].unit = columns[1].unit;
    report.sections.emplace_back(std::move(tables.series));
    report.sections.emplace_back(std::move(tables.points));
    report.footer.basis = "Written: " + file;
    return report;
}

std::string chart_csv(const StateChart& chart) {
    ExportTable table;
    table.title = {chart.header, chart.footer};
    table.heads = {"line", "part", "family", "value"};
    table.units = {"", "", "", ""};
    for (const Q q : quantities) {
        const ChartUnit& unit = chart.units[static_cast<std::size_t>(q)];
        table.heads.emplace_back(unit.symbol);
        table.units.push_back(unit.unit);
    }
    table.heads.emplace_back("x");
    table.units.emplace_back();
    int number = 0;
    for (const ChartLine& line : chart.lines) {
        ++number;
        int part = 1;
        bool gap = false, any = false;
        for (const ChartState& state : line.states) {
            if (!state.exists()) {
                gap = any;
                continue;
            }
            if (gap) ++part;
            gap = false;
            any = true;
            std::vector<ExportCell> row = {{genNum(number), true},
                                           {genNum(part), true},
                                           {std::string(family_word(line.family))},
                                           {genNum(line.value), true}};
            for (const Q q : quantities) row.emplace_back(exactNum(chart.shown(state, q)), true);
            row.emplace_back(state.x < 0.0 ? std::string() : exactNum(state.x), true);
            table.rows.push_back(std::move(row));
        }
    }
    return sheet_csv(std::move(table));
}

Report chart_report(const Session& session, const ChartFile& file, const std::string& path) {
    const StateChart& chart = file.chart;
    Report report;
    add_heads(report, session);
    for (ReportSection& section : report.sections)
        std::visit(
            [](auto& part) {
                if constexpr (requires { part.layout; }) part.layout = Layout::json;
            },
            section);
    report.title = chart.header;
    const auto word = [](auto choice, std::span<const std::string_view> words) {
        return std::string(words[static_cast<std::size_t>(choice)]);
    };
    report.sections.emplace_back(
        Block{"chart",
              "",
              {{"kind", "", word(chart.kind, chart_kind_words()), "", ""},
               {"reference", "", word(chart.reference, chart_reference_words()), "", ""},
               {"header", "", chart.header, "", ""},
               {"footer", "", chart.footer, "", ""},
               {"lines", "", chart.lines.size(), "", ""},
               {"file", "", path, "", ""}},
              Layout::json});
    Table lines{
        "lines", "", {{"family", "family", ""}, {"values", "lines", ""}, {"states", "states", ""}}, {}};
    for (const LegendRow& row : chart_legend(chart)) {
        std::size_t count = 0, states = 0;
        for (const ChartLine& line : chart.lines) {
            if (line.family != row.family) continue;
            ++count;
            for (const ChartState& state : line.states) states += state.exists() ? 1U : 0U;
        }
        lines.rows.push_back({row.text, count, states});
    }
    report.sections.emplace_back(std::move(lines));
    report.footer.basis = "Written: " + path;
    return report;
}

}  // namespace quom

// Curves and sheets made by hand, and sheets of random contents.
#pragma once
#include <cmath>
#include <random>
#include <string>

#include "diagrams/graph_document.h"
#include "diagrams/marks.h"

namespace quom::test {

// Sheet of a p-v diagram: v 0 to 2 m^3/kmol, p 0 to 6000 kPa.
inline GraphDocument p_v_sheet() {
    DiagramRec diagram;
    diagram.kind = Kind::p_v;
    diagram.section = Section::isothermal;
    diagram.AxisCode = diagram.AxisCodeShown = "pv";
    diagram.range = diagram.initial = {.XMin = 0, .YMin = 0, .XMax = 2, .YMax = 6000};
    diagram.XTitle = "v / (m^3/kmol)";
    diagram.YTitle = "p / kPa";
    diagram.title = "p - v (isothermal section)";
    diagram.TitleSuffix = ",  CEOS Peng / Robinson";
    return new_sheet(diagram);
}

// count points of a hyperbola from x = 0.01 to x = largest; Par rises by 1 from first_par.
inline CurvePoints hyperbola(int count, float largest, float first_par = 300) {
    CurvePoints curve{{}, par_T, par_none};
    for (int i = 0; i < count; ++i) {
        const float x = 0.01F + (largest - 0.01F) * static_cast<float>(i) / static_cast<float>(count);
        curve.points.push_back({x, 2000 / (1 + x), first_par + static_cast<float>(i), 0});
    }
    return curve;
}

class RandomSheet {
 public:
    explicit RandomSheet(unsigned seed) : engine_(seed) {}

    GraphDocument sheet() {
        DiagramRec diagram;
        diagram.kind = Kind::p_v;
        diagram.range = range();
        diagram.initial = diagram.range;
        diagram.XTitle = text();
        diagram.YTitle = text();
        GraphDocument sheet = new_sheet(diagram);
        for (CurveSlot& slot : sheet.curves)
            if (coin()) slot = {.CurveFree = false, .series = series(1 + whole(40))};
        for (PointSlot& slot : sheet.sets)
            if (coin()) slot = {.PointFree = false, .series = series(1 + whole(9))};
        for (Mark& mark : sheet.marks)
            if (coin()) mark = {series(1 + whole(2)), {number(), number()}};
        for (AxisDesign* axis : {&sheet.x, &sheet.y, &sheet.y2}) *axis = this->axis();
        sheet.header = sheet_text();
        sheet.footer = sheet_text();
        for (int i = whole(13); i > 0; --i) sheet.texts.push_back(sheet_text());
        sheet.legend = {coin(), static_cast<LegendPlace>(whole(5)), share(), share(), font()};
        sheet.colors = {color(), color(), color(), color(), color(), color(), color(), share(), coin()};
        sheet.Interchanged = coin();
        return sheet;
    }

 private:
    int whole(int below) { return std::uniform_int_distribution<int>(0, below - 1)(engine_); }
    bool coin() { return whole(2) == 1; }
    double share() { return std::uniform_real_distribution<double>(-1, 1)(engine_); }
    // Any single: all sizes, denormal ones and zeros among them.
    float number() {
        if (whole(8) == 0) return 0;
        const auto x = static_cast<float>(share() * std::pow(10.0, whole(84) - 45));
        return std::isfinite(x) ? x : 1;
    }
    CurveRange range() {
        const float x = number(), y = number();
        return {x, y, std::nextafter(x, INFINITY), y + std::abs(y) + 1};
    }
    std::string text() {
        static constexpr const char* pieces[] = {"T = 300 K", "\n",    "\"", "\\",   "δ(LV)h",
                                                 "\u2009",    "{END}", "\t", "\x01", "😀"};
        std::string text;
        for (int i = whole(6); i > 0; --i) text += pieces[whole(10)];
        return text;
    }
    Color color() {
        return {static_cast<std::uint8_t>(whole(256)), static_cast<std::uint8_t>(whole(256)),
                static_cast<std::uint8_t>(whole(256))};
    }
    Font font() { return {text(), 4 + static_cast<float>(whole(900)) / 10, coin(), coin()}; }
    SheetText sheet_text() {
        return {text(), coin(), share(), share(), font(), coin() ? std::optional(color()) : std::nullopt};
    }
    std::optional<double> maybe() { return coin() ? std::optional(share() * 1e10) : std::nullopt; }
    AxisDesign axis() {
        return {coin(),
                coin(),
                whole(16),
                static_cast<TextTurn>(whole(3)),
                static_cast<TextTurn>(whole(3)),
                maybe(),
                maybe(),
                font(),
                font()};
    }
    Series series(int count) {
        Series series;
        std::vector<SheetPoint> points;
        for (int i = 0; i < count; ++i) points.push_back({number(), number()});
        series.points = std::move(points);
        series.style = {static_cast<LinePattern>(whole(5)), 1 + whole(6),  color(),
                        static_cast<Symbol>(whole(13)),     1 + whole(50), color()};
        series.label = {text(), coin(), 1 + whole(count), share() * 100, share() * 100};
        series.legend = text();
        series.in_legend = coin();
        return series;
    }
    std::mt19937 engine_;
};

}  // namespace quom::test

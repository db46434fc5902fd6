// A full sheet on the screen: 24 curves of 1200 points and 12 sets of points, drawn by software at 1600 x
// 1000. Solid lines, the dashes that new curves have, dots, logarithmic axes; what a change of one curve
// costs, and a drag. Runs offscreen.
#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <QApplication>

#include "diagrams/graph_view.h"
#include "ui/charts/sheet_plot.h"
#include "ui/look/look.h"
#include "ui/sample_sheets.h"

namespace {

using namespace quom;

GraphDocument with_own_dashes(GraphDocument sheet) {
    for (int slot = 1; slot <= CurveSlots; ++slot)
        sheet.curve(slot).series.style.line = new_curve_style(slot, {}).line;
    return sheet;
}

GraphDocument with_lines(GraphDocument sheet, LinePattern line, int width) {
    for (int slot = 1; slot <= CurveSlots; ++slot) {
        sheet.curve(slot).series.style.line = line;
        sheet.curve(slot).series.style.width = width;
    }
    return sheet;
}

GraphDocument on_log_axes(GraphDocument sheet) {
    set_log_x(sheet, true);
    set_log_y(sheet, true);
    return sheet;
}

struct Screen {
    explicit Screen(const GraphDocument& document) : sheet(plot) {
        plot.resize(1600, 1000);
        plot.setViewport(QRect(0, 0, 1600, 1000));
        sheet.draw(document);
    }
    QCustomPlot plot;
    SheetPlot sheet;
};

void replot(benchmark::State& state, const GraphDocument& document) {
    Screen screen(document);
    for (auto _ : state) screen.plot.replot(QCustomPlot::rpImmediateRefresh);
}

void BM_replot_solid(benchmark::State& state) { replot(state, test::full_sheet()); }
BENCHMARK(BM_replot_solid)->Unit(benchmark::kMillisecond);

void BM_replot_as_new(benchmark::State& state) { replot(state, with_own_dashes(test::full_sheet())); }
BENCHMARK(BM_replot_as_new)->Unit(benchmark::kMillisecond);

void BM_replot_dotted(benchmark::State& state) {
    replot(state, with_lines(test::full_sheet(), LinePattern::dotted, 2));
}
BENCHMARK(BM_replot_dotted)->Unit(benchmark::kMillisecond);

void BM_replot_log(benchmark::State& state) {
    replot(state, on_log_axes(with_own_dashes(test::full_sheet())));
}
BENCHMARK(BM_replot_log)->Unit(benchmark::kMillisecond);

// A label that follows the mouse: nothing but its place changes.
void BM_drag_label(benchmark::State& state) {
    GraphDocument document = with_own_dashes(test::full_sheet());
    Screen screen(document);
    screen.sheet.draw_fast(true);
    for (auto _ : state) {
        document.curve(3).series.label.dx += 1;
        screen.sheet.draw(document);
    }
}
BENCHMARK(BM_drag_label)->Unit(benchmark::kMillisecond);

// A curve that follows a slider: another one of the same size at each step.
void BM_live_curve(benchmark::State& state) {
    GraphDocument document = with_own_dashes(test::full_sheet());
    const auto first = document.curve(3).series.points, other = document.curve(9).series.points;
    Screen screen(document);
    bool turn = false;
    for (auto _ : state) {
        document.curve(3).series.points = (turn = !turn) ? other : first;
        screen.sheet.draw(document);
    }
}
BENCHMARK(BM_live_curve)->Unit(benchmark::kMillisecond);

// All of a sheet anew: a zoom.
void BM_zoom(benchmark::State& state) {
    GraphDocument document = with_own_dashes(test::full_sheet());
    Screen screen(document);
    float high = 1;
    for (auto _ : state) {
        high = high > 0.9F ? high - 0.002F : 1;
        zoom(document, {.XMin = 0, .YMin = 0, .XMax = high, .YMax = 1});
        screen.sheet.draw(document);
    }
}
BENCHMARK(BM_zoom)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    apply_look(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

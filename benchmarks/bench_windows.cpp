// The windows: from the start to a main window that can be used, opening a database with its list of 496 and
// of 30 000 substances, a letter more in the filter of that list, and state charts. Runs offscreen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTemporaryDir>

#include "../tests/support/starter.h"
#include "base/files.h"
#include "forms/shell.h"
#include "ui/charts/state_chart_view.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/windows/frmQStoffWahl.h"

namespace {

using namespace quom;

constexpr std::size_t RecordBytes = 950, CountAt = 384;

// The starter database, its records repeated to n substances.
std::string database_of(const QTemporaryDir& folder, int n) {
    const std::string starter = *read_file(std::string(QUOM_STARTER_DATA) + "/quom.q07").bytes;
    std::string bytes = starter.substr(0, RecordBytes);
    bytes[CountAt] = static_cast<char>(n & 0xFF);
    bytes[CountAt + 1] = static_cast<char>(n >> 8);
    const int records = static_cast<int>(starter.size() / RecordBytes) - 1;
    for (int i = 0; i < n; ++i)
        bytes += starter.substr(RecordBytes * static_cast<std::size_t>(1 + i % records), RecordBytes);
    const std::string path = folder.filePath(QStringLiteral("many.q07")).toStdString();
    write_file_atomic(path, bytes);
    return path;
}

void BM_main_window(benchmark::State& state) {
    for (auto _ : state) {
        mdiQUOM frame(QUOM_STARTER_DATA);
        frame.show();
        frame.start({});
        QCoreApplication::processEvents();
    }
}
BENCHMARK(BM_main_window)->Unit(benchmark::kMillisecond);

void BM_open_and_list(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string path = database_of(folder, static_cast<int>(state.range(0)));
    mdiQUOM frame(QUOM_STARTER_DATA);
    frame.show();
    SilentMessages nobody;
    for (auto _ : state) {
        if (!open_picked_database(frame.session(), 7, path, nobody)) state.SkipWithError("not opened");
        frame.refresh();
        frmQStoffWahl::open(frame);
        QCoreApplication::processEvents();
        frame.unload(frmQStoffWahl::Name);
    }
}
BENCHMARK(BM_open_and_list)->Arg(496)->Arg(30000)->Unit(benchmark::kMillisecond);

void BM_filter(benchmark::State& state) {
    const QTemporaryDir folder;
    mdiQUOM frame(QUOM_STARTER_DATA);
    frame.show();
    SilentMessages nobody;
    open_picked_database(frame.session(), 7, database_of(folder, static_cast<int>(state.range(0))), nobody);
    frmQStoffWahl::open(frame);
    auto* names = frame.child<frmQStoffWahl>()->NameCombo;
    const char* const typed[] = {"c", "cy", "cyc", "cycl", "cyclo", ""};
    std::size_t i = 0;
    for (auto _ : state) {
        const QString text = QLatin1String(typed[i++ % std::size(typed)]);
        names->setEditText(text);
        Q_EMIT names->lineEdit()->textEdited(text);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(BM_filter)->Arg(496)->Arg(30000)->Unit(benchmark::kMillisecond);

// Propane by Peng/Robinson, 1280 x 900. Arg: 0 log p-h, 1 T-s, 2 h-s.
struct ChartBench {
    ChartBench() : fluid(test::starter_fluid(test::propane, Eos::peng_robinson)) {
        view.resize(1280, 900);
        view.show();
        QCoreApplication::processEvents();
    }
    std::shared_ptr<const Fluid> fluid;
    StateChartView view;
};

// From the fluid to the picture: lines, layout, labels, drawing.
void BM_state_chart(benchmark::State& state) {
    ChartBench bench;
    for (auto _ : state)
        bench.view.show_chart(make_state_chart(*bench.fluid, static_cast<ChartKind>(state.range(0))), false,
                              {});
}
BENCHMARK(BM_state_chart)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// The picture alone, with labels placed anew.
void BM_state_chart_drawing(benchmark::State& state) {
    ChartBench bench;
    const StateChart chart = make_state_chart(*bench.fluid, static_cast<ChartKind>(state.range(0)));
    for (auto _ : state) bench.view.show_chart(chart, false, {});
}
BENCHMARK(BM_state_chart_drawing)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// What a step of the pointer takes.
void BM_state_chart_pointer(benchmark::State& state) {
    ChartBench bench;
    bench.view.show_chart(make_state_chart(*bench.fluid, static_cast<ChartKind>(state.range(0))), false, {});
    auto* plot = bench.view.findChild<QWidget*>(QStringLiteral("plot"));
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) % 100;
        const QPointF at(400 + 7 * i, 300 + 3 * i);
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(plot, &move);
    }
}
BENCHMARK(BM_state_chart_pointer)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    apply_look(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

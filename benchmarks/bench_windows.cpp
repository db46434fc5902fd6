// The windows: from the start to a main window that can be used, opening a database with its list of 496 and
// of 30 000 substances, and a letter more in the filter of that list. Runs offscreen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTemporaryDir>

#include "base/files.h"
#include "forms/shell.h"
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

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    apply_look(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

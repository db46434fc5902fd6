// quom [--program-folder DIR] [--trace-start] [--screenshots DIR] [project]
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "forms/shell.h"
#include "session/program_path.h"
#include "session/starter_update.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/screenshots.h"
#include "ui/windows/frmPhantom.h"

namespace {

struct Arguments {
    std::string program_folder;
    std::string pictures;  // one run for pictures, into this folder
    bool trace_start = false;
    std::vector<std::string> project;
};

Arguments read_arguments(const QStringList& given) {
    Arguments a;
    for (int i = 1; i < given.size(); ++i) {
        const bool has_value = i + 1 < given.size();
        if (given[i] == QStringLiteral("--trace-start"))
            a.trace_start = true;
        else if (given[i] == QStringLiteral("--program-folder") && has_value)
            a.program_folder = given[++i].toStdString();
        else if (given[i] == QStringLiteral("--pictures") && has_value)
            a.pictures = given[++i].toStdString();
        else
            a.project.push_back(given[i].toStdString());
    }
    return a;
}

// "--screenshots DIR" needs no display: the program runs itself for each scale. -1: not asked for.
int screenshots(int argc, char** argv) {
    QStringList others;
    QString folder;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--screenshots" && i + 1 < argc)
            folder = QString::fromLocal8Bit(argv[++i]);
        else
            others << QString::fromLocal8Bit(argv[i]);
    }
    if (folder.isEmpty()) return -1;
    const QCoreApplication app(argc, argv);
    return quom::screenshot_runs(QCoreApplication::applicationFilePath(), others, folder);
}

}  // namespace

int main(int argc, char** argv) {
    if (const int status = screenshots(argc, argv); status >= 0) return status;
    QElapsedTimer clock;
    clock.start();
    QApplication app(argc, argv);
    const Arguments arguments = read_arguments(QApplication::arguments());
    const auto trace = [&](const char* step) {
        if (arguments.trace_start) std::fprintf(stderr, "%6lld ms  %s\n", clock.elapsed(), step);
    };
    trace("application");
    quom::apply_look(app);
    trace("look");
    const quom::ProgramPlaces places = quom::program_places(arguments.program_folder);
    const auto folder = quom::find_program_folder(places);
    trace("program folder");

    quom::frmPhantom splash;
    splash.show();
    quom::mdiQUOM frame(folder.path);
    if (arguments.pictures.empty()) frame.bench().memory = quom::UiMemory(quom::UiMemory::users_file());
    trace("main window");
    if (folder.path.empty())
        frame.bench().tell(
            {.title = "Execution not possible", .text = folder.fault, .kind = quom::MessageKind::stop});
    frame.show();
    frame.start(quom::command_line_project(arguments.project));
    splash.close();
    trace("start-up");
    QTimer::singleShot(0, &frame, [&] {
        trace("ready");
        if (!arguments.pictures.empty()) {
            const int taken = quom::take_screenshots(frame, QString::fromStdString(arguments.pictures));
            std::printf("%d pictures in %s\n", taken, arguments.pictures.c_str());
            frame.close();
            return;
        }
        offer_starter_update(quom::find_starter_update(places, folder.path), frame.bench().messages());
    });
    return QApplication::exec();
}

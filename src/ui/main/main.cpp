// quom [OPTION]... [PROJECT], see command_line.h
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <optional>
#include <string>

#include "forms/shell.h"
#include "session/program_path.h"
#include "session/starter_update.h"
#include "ui/look/look.h"
#include "ui/main/command_line.h"
#include "ui/main/draw_sheet.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/project_actions.h"
#include "ui/main/recovery_keeper.h"
#include "ui/main/screenshots.h"
#include "ui/windows/frmPhantom.h"

namespace {

// The arguments as the system's code page gives them.
QStringList given_arguments(int argc, char** argv) {
    QStringList list;
    for (int i = 0; i < argc; ++i) list << QString::fromLocal8Bit(argv[i]);
    return list;
}

// Pictures need no display: the program runs itself for each scale.
int screenshots(int argc, char** argv, const quom::CommandLine& line) {
    const QCoreApplication app(argc, argv);
    QStringList others;
    if (!line.program_folder.empty())
        others << QStringLiteral("--program-folder") << QString::fromStdString(line.program_folder);
    return quom::screenshot_runs(QCoreApplication::applicationFilePath(), others,
                                 QString::fromStdString(line.screenshots));
}

}  // namespace

int main(int argc, char** argv) {
    const quom::CommandLine arguments = quom::read_command_line(given_arguments(argc, argv));
    if (arguments.status) {
        std::fputs(arguments.text.c_str(), *arguments.status == 0 ? stdout : stderr);
        return *arguments.status;
    }
    if (!arguments.draw.empty()) return quom::draw_sheet(argc, argv, arguments);
    if (!arguments.screenshots.empty()) return screenshots(argc, argv, arguments);
    if (const std::string fault = quom::missing_display(); !fault.empty()) {
        std::fprintf(stderr, "quom: %s\n", fault.c_str());
        return 1;
    }
    QElapsedTimer clock;
    clock.start();
    std::optional<quom::DisplayGuard> guard(std::in_place);
    QApplication app(argc, argv);
    guard.reset();
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
    frame.start({});
    splash.close();  // a box of the project below would lie behind it
    if (const std::string project = quom::command_line_project(arguments.project); !project.empty())
        quom::load_project(frame, project);
    trace("start-up");
    quom::RecoveryKeeper keeper(frame, folder.path);
    QTimer::singleShot(0, &frame, [&] {
        trace("ready");
        if (!arguments.pictures.empty()) {
            const int taken = quom::take_screenshots(frame, QString::fromStdString(arguments.pictures),
                                                     arguments.picture_size);
            std::printf("%d pictures in %s\n", taken, arguments.pictures.c_str());
            QCoreApplication::exit(0);  // nothing is kept of this session
            return;
        }
        keeper.begin();
        offer_starter_update(quom::find_starter_update(places, folder.path), frame.bench().messages());
    });
    const int status = QApplication::exec();
    keeper.leave();
    return status;
}

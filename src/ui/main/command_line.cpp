#include "ui/main/command_line.h"

#include <QCommandLineParser>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace quom {

namespace {

// The name of the program as it is called, with what may stand behind it.
std::string usage(const QCommandLineParser& parser) {
    std::string text =
        "Usage: quom [OPTION]... [PROJECT]\n"
        "Thermodynamic calculations of states and processes for pure substances.\n\n";
    // From the options on: the lines before name the path of the program.
    const QString help = parser.helpText();
    text += help.mid(help.indexOf(QStringLiteral("Options:"))).toStdString();
    text +=
        "\nThe theme follows the desktop; QUOM_THEME=light or dark overrides it. Without a display:\n"
        "\"quomc\", the same calculations on the command line.\n";
    return text;
}

CommandLine ended(int status, std::string text) {
    CommandLine line;
    line.status = status;
    line.text = std::move(text);
    return line;
}

// Size of a picture in mm, "160x110", and its resolution; what is left empty stays. Returns what is wrong.
std::string read_draw_size(const QString& size, const QString& dpi, PictureSize& result) {
    const auto number = [](const QString& text, double& value) {
        bool good = false;
        value = text.toDouble(&good);
        return good && std::isfinite(value) && value > 0;
    };
    if (!size.isEmpty()) {
        const QStringList sides = size.split(QLatin1Char('x'), Qt::KeepEmptyParts, Qt::CaseInsensitive);
        if (sides.size() != 2 || !number(sides[0], result.width) || !number(sides[1], result.height))
            return "--picture-size is width x height in mm, as in 160x110.";
    }
    if (!dpi.isEmpty() && !number(dpi, result.dpi)) return "--picture-dpi is a number, as in 300.";
    return {};
}

// Qt ends with this message when no platform can be used; all others go on as they were.
void end_without_display(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtFatalMsg) return;
    const QByteArray reason = message.section(QLatin1Char('\n'), 0, 0).toLocal8Bit();
    std::fprintf(stderr, "quom: The display can not be used. %s\n", reason.constData());
    std::fflush(stderr);
    std::_Exit(1);
}

}  // namespace

CommandLine read_command_line(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("This text."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Version of the program."));
    const QCommandLineOption folder(QStringLiteral("program-folder"),
                                    QStringLiteral("Folder of the starter database and of all output."),
                                    QStringLiteral("DIR"));
    const QCommandLineOption trace(QStringLiteral("trace-start"),
                                   QStringLiteral("Times of the start on standard error."));
    const QCommandLineOption screenshots(
        QStringLiteral("screenshots"),
        QStringLiteral("Pictures of every window into a folder; needs no display."), QStringLiteral("DIR"));
    QCommandLineOption pictures(QStringLiteral("pictures"), {}, QStringLiteral("DIR"));
    QCommandLineOption size(QStringLiteral("picture-size"), {}, QStringLiteral("WIDTHxHEIGHT"),
                            QStringLiteral("1360x900"));
    QCommandLineOption draw(QStringLiteral("draw"), {}, QStringLiteral("SHEET.oc2"));
    QCommandLineOption out(QStringLiteral("out"), {}, QStringLiteral("FILE"));
    QCommandLineOption dpi(QStringLiteral("picture-dpi"), {}, QStringLiteral("DPI"));
    QCommandLineOption black(QStringLiteral("picture-black"));
    for (QCommandLineOption* internal : {&pictures, &size, &draw, &out, &dpi, &black})
        internal->setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({help, version, folder, trace, screenshots, pictures, size, draw, out, dpi, black});
    parser.addPositionalArgument(QStringLiteral("PROJECT"),
                                 QStringLiteral("Project *.QC6 that is loaded at the start."));
    if (!parser.parse(arguments)) {
        return ended(2, "quom: " + parser.errorText().toStdString() +
                            "\nRight: quom [OPTION]... [PROJECT]\nHelp:  quom --help\n");
    }
    if (parser.isSet(help)) return ended(0, usage(parser));
    if (parser.isSet(version)) return ended(0, "QUOM-6 " QUOM_VERSION "\n");
    CommandLine line;
    if (parser.isSet(draw) || parser.isSet(out)) {
        line.draw = parser.value(draw).toStdString();
        line.draw_out = parser.value(out).toStdString();
        line.draw_size_given = parser.isSet(size);
        line.draw_black = parser.isSet(black);
        const std::string fault = read_draw_size(parser.isSet(size) ? parser.value(size) : QString(),
                                                 parser.value(dpi), line.draw_size);
        if (!fault.empty()) return ended(2, "quom: " + fault + "\n");
        if (line.draw.empty() || line.draw_out.empty())
            return ended(2, "quom: --draw SHEET.oc2 and --out FILE belong together.\n");
        return line;
    }
    line.program_folder = parser.value(folder).toStdString();
    line.screenshots = parser.value(screenshots).toStdString();
    line.pictures = parser.value(pictures).toStdString();
    const QStringList sides = parser.value(size).split(QLatin1Char('x'));
    line.picture_size = {sides.first().toInt(), sides.last().toInt()};
    line.trace_start = parser.isSet(trace);
    for (const QString& word : parser.positionalArguments()) line.project.push_back(word.toStdString());
    return line;
}

std::string missing_display() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    const bool x11 = !qEnvironmentVariableIsEmpty("DISPLAY");
    const bool wayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    const bool needs_x11 = platform.startsWith(QStringLiteral("xcb"));
    const bool needs_wayland = platform.startsWith(QStringLiteral("wayland"));
    if (needs_x11 ? x11 : needs_wayland ? wayland : !platform.isEmpty() || x11 || wayland) return {};
    return "There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set.";
#else
    return {};
#endif
}

DisplayGuard::DisplayGuard() : before_(qInstallMessageHandler(end_without_display)) {}
DisplayGuard::~DisplayGuard() { qInstallMessageHandler(before_); }

}  // namespace quom

// quom as a shell runs it: help and refusals need no display, and a missing display is told in a sentence.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <cstdlib>

#include "diagrams/chart_file.h"
#include "diagrams/diagram_file.h"
#include "support/starter.h"
#include "support/test_paths.h"
#include "ui/charts/state_chart_picture.h"
#include "ui/main/command_line.h"

namespace quom {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

struct Ended {
    int status = -1;
    std::string out, err;
};

// Runs the program with the words behind it in a shell without any display, unless the words before set one.
Ended quom_run(const std::string& before, const std::string& words) {
    const QTemporaryDir folder;
    const std::string at = folder.path().toStdString();
    const int code = std::system(("cd '" + at + "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " +
                                  before + " timeout 60 '" + test::program() + "' " + words + " >out 2>err")
                                     .c_str());
    const auto text = [&](const char* name) {
        QFile file(folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    };
    return {WIFEXITED(code) ? WEXITSTATUS(code) : -1, text("out"), text("err")};
}

TEST(CommandLine, help_and_version_need_no_display) {
    for (const char* option : {"--help", "-h"}) {
        const Ended help = quom_run("", option);
        EXPECT_EQ(help.status, 0) << help.err;
        EXPECT_THAT(help.out, AllOf(StartsWith("Usage: quom [OPTION]... [PROJECT]\n"),
                                    HasSubstr("--program-folder <DIR>"), HasSubstr("--screenshots"),
                                    HasSubstr("PROJECT"), Not(HasSubstr("--pictures"))));
        EXPECT_EQ(help.err, "");
    }
    const Ended version = quom_run("", "--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, StartsWith("QUOM-6 "));
}

TEST(CommandLine, what_is_no_option_is_refused) {
    for (const char* words : {"--halp", "--program-folder", "-x file.QC6", "--trace-start=3"}) {
        const Ended run = quom_run("", words);
        EXPECT_EQ(run.status, 2) << words;
        EXPECT_THAT(run.err, AllOf(StartsWith("quom: "), HasSubstr("quom --help"))) << words;
        EXPECT_EQ(run.out, "") << words;
    }
}

TEST(CommandLine, no_display_is_a_sentence) {
    for (const char* before : {"", "QT_QPA_PLATFORM=xcb", "DISPLAY= WAYLAND_DISPLAY="}) {
        const Ended run = quom_run(before, "");
        EXPECT_EQ(run.status, 1) << before;
        EXPECT_EQ(run.err, "quom: There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set.\n");
    }
    // One that does not answer, and a platform that there is not.
    for (const char* before : {"DISPLAY=:9876", "QT_QPA_PLATFORM=nothing"}) {
        const Ended run = quom_run(before, "");
        EXPECT_EQ(run.status, 1) << before << run.err;
        EXPECT_THAT(run.err, StartsWith("quom: The display can not be used.")) << before;
    }
}

TEST(CommandLine, the_rest_is_the_project) {
    const auto read = [](const QStringList& words) {
        return read_command_line(QStringList(QStringLiteral("quom")) + words);
    };
    EXPECT_THAT(read({QStringLiteral("a b.QC6")}).project, ElementsAre("a b.QC6"));
    EXPECT_THAT(read({QStringLiteral("a"), QStringLiteral("b.QC6"), QStringLiteral("--trace-start")}).project,
                ElementsAre("a", "b.QC6"));
    EXPECT_THAT(read({QStringLiteral("--"), QStringLiteral("-odd.QC6")}).project, ElementsAre("-odd.QC6"));
    EXPECT_EQ(read({QStringLiteral("--program-folder"), QStringLiteral("/a b")}).program_folder, "/a b");
    EXPECT_TRUE(read({QStringLiteral("--trace-start")}).trace_start);
    EXPECT_TRUE(read({}).project.empty());
}

TEST(CommandLine, a_diagram_file_becomes_a_picture_without_a_display) {
    const QTemporaryDir folder;
    const std::string at = folder.path().toStdString();
    GraphDocument sheet;
    sheet.diagram.range = {.XMin = 0, .YMin = 0, .XMax = 1, .YMax = 1};
    ASSERT_EQ(save_oc2(at + "/sheet.oc2", sheet), "");
    struct Case {
        std::string words;
        int status;
        std::string sentence;
    };
    const std::string draw = "--draw '" + at + "/sheet.oc2' --out '" + at;
    for (const Case& c :
         {Case{draw + "/a.svg'", 0, ""}, Case{draw + "/a.png' --picture-size 80x50", 0, ""},
          Case{draw + "/a.gif'", 2, "not as \".gif\""}, Case{draw + "/a.png' --picture-size 80", 2, "in mm"},
          Case{draw + "/a.png' --picture-size 80x9000", 2, "5000 mm"}, Case{"--draw x.oc2", 2, "--out FILE"},
          Case{"--draw /nowhere/x.oc2 --out a.svg", 3, "x.oc2"}, Case{draw + "/none/a.svg'", 3, "a.svg"}}) {
        const Ended ended = quom_run("", c.words);
        EXPECT_EQ(ended.status, c.status) << c.words;
        EXPECT_EQ(ended.out, "");
        EXPECT_THAT(ended.err, HasSubstr(c.sentence));
        EXPECT_EQ(ended.err.starts_with("quom: "), c.status != 0) << ended.err;
    }
    EXPECT_EQ(QImage(folder.filePath(QStringLiteral("a.png"))).size(), QSize(945, 591)) << "at 300 dpi";
}

// A chart that was written is the same picture as the chart itself; its sheet is light or black.
TEST(CommandLine, the_file_of_a_state_chart_becomes_a_picture) {
    const QTemporaryDir folder;
    const std::string at = folder.path().toStdString();
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const ChartFile file{.chart = make_state_chart(*fluid, ChartKind::Ts), .black = false};
    ASSERT_EQ(save_chart(at + "/c.json", file), "");
    const std::string draw = "--draw '" + at + "/c.json' --out '" + at;
    for (const char* words : {"/a.png' --picture-dpi 96", "/b.png' --picture-dpi 96 --picture-black",
                              "/c.png' --picture-size 150x100 --picture-dpi 96"}) {
        const Ended ended = quom_run("", draw + words);
        EXPECT_EQ(ended.status, 0) << words << ended.err;
    }
    const QImage light(folder.filePath(QStringLiteral("a.png"))),
        black(folder.filePath(QStringLiteral("b.png"))), small(folder.filePath(QStringLiteral("c.png")));
    EXPECT_EQ(light.size(), QSize(1047, 718));
    EXPECT_EQ(small.size(), QSize(567, 378));
    EXPECT_EQ(light.pixelColor(3, 3), QColor(0xFB, 0xFB, 0xFB));
    EXPECT_EQ(black.pixelColor(3, 3), QColor(Qt::black));
    EXPECT_EQ(light, QImage::fromData(
                         state_chart_bytes(file.chart, "png", {.width = 277, .height = 190, .dpi = 96}).bytes)
                         .convertToFormat(light.format()));
    QFile broken(folder.filePath(QStringLiteral("broken.json")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\"format\": \"QUOM-CHART\", \"version\": 1}");
    broken.close();
    const Ended ended = quom_run("", "--draw '" + at + "/broken.json' --out '" + at + "/d.png'");
    EXPECT_EQ(ended.status, 3);
    EXPECT_THAT(ended.err, HasSubstr("broken.json"));
}

}  // namespace
}  // namespace quom

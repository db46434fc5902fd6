#include "ui/window_driver.h"

#include "support/early_exit.h"
#include "ui/look/look.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"

namespace quom {

void WindowDriver::choose_substance(const char* name) {
    menu("mnuStoffwahl")->trigger();
    auto* window = frame.child<frmQStoffWahl>();
    ASSERT_TRUE(window);
    window->NameCombo->setEditText(QLatin1String(name));
    press(window, "StoffOK");
}

void WindowDriver::go_to_calculations(const char* name) {
    open_starter_database();
    choose_substance(name);
    press(frame.child<frmQModell>(), "cmdOKModell");
}

}  // namespace quom

// A screen of usual size without a display; texts and relations are compared, never pixels.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QUOM_THEME", "light");
    QTemporaryDir folder;
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") {
        QFile file(folder.filePath(QStringLiteral("screen.json")));
        if (file.open(QIODevice::WriteOnly))
            file.write(R"({"screens":[{"name":"s","x":0,"y":0,"width":1920,"height":1200,"logicalDpi":96,)"
                       R"("logicalBaseDpi":96,"dpr":1}]})");
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
    }
    QApplication app(argc, argv);
    quom::apply_look(app);
    ::testing::InitGoogleTest(&argc, argv);
    return quom::test::run_all_tests();
}

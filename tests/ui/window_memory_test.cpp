// What the windows keep after they have closed: the live heap does not grow with the openings.
//
// QUOM_OPENINGS sets how often each window opens (default 50); 500 is the figure of a whole day of work.
#include <malloc.h>

#include <QTimer>
#include <functional>
#include <iostream>

#include "ui/main/calculation_windows.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

class WindowMemory : public WindowDriver {
 protected:
    static long live_bytes() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
        malloc_trim(0);
        return static_cast<long>(mallinfo2().uordblks);
    }
    // Growth over so many runs, after some that fill what is made once.
    long growth(int runs, const std::function<void()>& run) {
        const auto once = [&] {
            run();
            messages.asked.clear();
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        for (int i = 0; i < 12; ++i) once();
        const long before = live_bytes();
        for (int i = 0; i < runs; ++i) once();
        return live_bytes() - before;
    }
    void type(std::initializer_list<const char*> values) {
        auto* input = frame.child<frmParinput>();
        ASSERT_TRUE(input);
        std::size_t box = 0;
        for (const char* value : values) input->par[box++]->setText(QLatin1String(value));
        input->cmdParameter_OK->click();
    }
    void with_dialog(const char* entry) {
        QTimer::singleShot(0, &frame, [] {
            if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
        });
        menu(entry)->trigger();
    }
};

TEST_F(WindowMemory, StaysFlatOverManyOpenings) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizers keep a heap of their own";
#endif
    const int openings = std::max(50, qEnvironmentVariableIntValue("QUOM_OPENINGS"));
    go_to_calculations();
    frame.activateWindow();
    QCoreApplication::processEvents();
    const auto result_with = [this](const char* button, const char* window) {
        return [this, button, window] {
            press(frame.child<frmQCalcOut>(), button);
            frame.unload(window);
        };
    };
    menu("mnuCalc_2")->trigger();
    type({"400", "6000"});
    const struct {
        const char* what;
        std::function<void()> run;
        int times = 1;
    } rows[] = {
        {"diagnosis", result_with("cmdCEOSDiagnose", "frmCEOSDiagnose")},
        {"supercritical picture", result_with("cmdInfoSuperCrit", "frmPictureSuperCrit")},
        {"Iso Calculator", result_with("cmdIsoCalc", "frmIsoCalc")},
        {"recalculation",
         [this] {
             type({"400", "6000"});
         },
         4},
        {"calculation",
         [this] {
             menu("mnuCalc_2")->trigger();
             type({"300", "500"});
             frame.unload_calculation_windows();
         }},
        {"tank",
         [this] {
             menu("mnuCalc_15")->trigger();
             type({"1", "100", "300"});
             frame.unload_calculation_windows();
         }},
        {"choice of the concept",
         [this] {
             menu("mnuCalc_5")->trigger();
             frame.unload_calculation_windows();
         }},
        {"help",
         [this] {
             frame.show_help(62);
             if (auto* help = frame.findChild<HelpWindow*>()) help->close();
         }},
        {"text",
         [this] {
             menu("mnuData_ParameterEOS")->trigger();
             frame.unload(frmQTextEdit::Name);
         }},
        {"substances",
         [this] {
             menu("mnuStoffwahl")->trigger();
             frame.unload(frmQStoffWahl::Name);
         }},
        {"experimental data",
         [this] {
             menu("mnuData_BatchInput")->trigger();
             frame.unload("frmTpRhoEdit");
         }},
        {"X-Y data",
         [this] {
             menu("mnuData_EditXY")->trigger();
             frame.unload("frmQXYEdit");
         }},
        {"reference state", [this] { with_dialog("Toolbar1_11"); }},
        {"options", [this] { with_dialog("mnuOptions"); }},
        {"project info",
         [this] {
             menu("mnuProjectStatus")->trigger();
             frame.unload(frmQTextEdit::Name);
         }},
        {"opening with preview",
         [this] {
             frmQCmnDlg window(frame.bench(), {.title = QStringLiteral("Load a project (*.QC6)"),
                                               .folder = folder.path().toStdString(),
                                               .mask = "*.QC6"});
             window.show();
             window.close();
         }},
        {"models",
         [this] {
             frame.unload(frmQModell::Name);
             menu("mnuModel")->trigger();
         }},
    };
    long all = 0;
    for (const auto& row : rows) {
        const long kept = growth(openings * row.times, row.run);
        all += std::max(0L, kept);
        std::cout << row.what << ": " << kept << " bytes over " << openings * row.times << std::endl;
        EXPECT_LT(kept, openings * row.times * 400) << row.what;
    }
    std::cout << "in all: " << all / 1024 << " kB" << std::endl;
    EXPECT_LT(all, 200 * 1024);
}

}  // namespace
}  // namespace quom

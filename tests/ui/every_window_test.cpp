// Every window of the program, opened by hand: letters of the keyboard, names for screen readers, drawing.
#include <QAccessible>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <functional>
#include <map>

#include "ui/main/mdi_area.h"
#include "ui/main/status_panel.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmBParInput.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

class EveryWindow : public WindowDriver {
 protected:
    using Look = std::function<void(QWidget*)>;
    void look_at_child(const char* name, const Look& look) {
        QApplication::processEvents();
        QWidget* window = frame.child(name);
        ASSERT_TRUE(window && window->isVisible()) << name;
        SCOPED_TRACE(name);
        look(window);
    }
    // What an entry opens as a modal window.
    void look_at_modal(const char* entry, const Look& look) {
        bool seen = false;
        QTimer::singleShot(0, &frame, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            ASSERT_TRUE(modal) << entry;
            SCOPED_TRACE(entry);
            seen = true;
            look(modal);
            modal->close();
        });
        menu(entry)->trigger();
        EXPECT_TRUE(seen) << entry;
    }
    void calculate(const char* entry, std::initializer_list<const char*> values) {
        menu(entry)->trigger();
        auto* input = frame.child<frmParinput>();
        ASSERT_TRUE(input) << entry;
        std::size_t box = 0;
        for (const char* value : values) input->par[box++]->setText(QLatin1String(value));
        input->cmdParameter_OK->click();
    }
    void look_at_all(const Look& look) {
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
        open_starter_database();
        look_at_child("frmQStoffWahl", look);
        press(frame.child<frmQStoffWahl>(), "cmdSynonyme");
        look_at_child("frmQTextEdit", look);
        choose_substance("Propane");
        look_at_child("frmQModell", look);
        press(frame.child<frmQModell>(), "cmdOKModell");
        look_at_modal("Toolbar1_11", look);
        look_at_modal("mnuOptions", look);
        QApplication::clipboard()->setText(QStringLiteral("T/K;p/kPa\n300;100\n310;x\n"));
        look_at_modal("mnuData_ImportText", look);
        frmBParInput virial({}, &frame);
        virial.show();
        look(&virial);
        virial.close();
        frmQCmnDlg open_dialog(frame.bench(),
                               {.title = QStringLiteral("Load a project (*.QC6)"),
                                .folder = folder.path().toStdString(),
                                .mask = "*.QC6"},
                               &frame);
        open_dialog.show();
        look(&open_dialog);
        open_dialog.close();
        TextQuestion comment(QStringLiteral(" File comment (optional) "),
                             QStringLiteral("<Cancel> = No Comment"), {}, &frame);
        comment.show();
        look(&comment);
        comment.close();
        menu("mnuCalc_5")->trigger();
        look_at_child("frmCalcIn", look);
        for (const char* entry : {"mnuCalc_1", "mnuCalc_2", "mnuCalc_15"}) {
            menu(entry)->trigger();
            look_at_child("frmParinput", look);
        }
        calculate("mnuCalc_15", {"1", "100", "300"});
        look_at_child("frmKessel", look);
        calculate("mnuCalc_2", {"400", "6000"});
        look_at_child("frmQCalcOut", look);
        for (const auto& [button, name] : {std::pair{"cmdCEOSDiagnose", "frmCEOSDiagnose"},
                                           {"cmdInfoSuperCrit", "frmPictureSuperCrit"},
                                           {"cmdIsoCalc", "frmIsoCalc"}}) {
            press(frame.child<frmQCalcOut>(), button);
            look_at_child(name, look);
        }
        for (const auto& [entry, name] :
             {std::pair{"mnuData_BatchInput", "frmTpRhoEdit"}, {"mnuData_EditXY", "frmQXYEdit"}}) {
            menu(entry)->trigger();
            look_at_child(name, look);
        }
        press(frame.child("frmQXYEdit"), "cmdManip");
        look_at_child("frmQXYEdit", look);
        menu("mnuChart_0")->trigger();
        look_at_child("frmStateChart", look);
        menu("mnuGraf_sub_cut_1")->trigger();
        look_at_child("frmTpVSInputBox", look);
        look_at_child("frmQGraph2D", look);
        look_at_modal("mnuCoord", look);
        for (const DesignPageInfo& page : design_pages()) {
            frmQGraph2D_Gestaltung::open(frame, page.page);
            look_at_child("frmQGraph2D_Gestaltung", look);
        }
        frame.show_help(62);
        look(frame.findChild<HelpWindow*>());
        frame.findChild<HelpWindow*>()->close();
        SCOPED_TRACE("main window");
        look(frame.statusBar());
        for (QWidget* button : frame.findChildren<QAbstractButton*>())
            if (button->window() == &frame && button->isVisible() &&
                button->parent() == frame.cmdErstnutzer->parent())
                look(button);
    }
};

// Letters that Alt reaches in what is visible of a window, each with what bears it.
void add_letters(const QWidget* window, std::multimap<QString, QString>& letters) {
    const auto add = [&letters](const QString& text) {
        const QString letter = QKeySequence::mnemonic(text).toString();
        if (!letter.isEmpty()) letters.insert({letter, text});
    };
    for (const QWidget* control : window->findChildren<QWidget*>()) {
        if (!control->isVisible()) continue;
        if (qobject_cast<const QMenuBar*>(control))
            for (const QAction* action : control->actions()) add(action->text());
        if (const auto* button = qobject_cast<const QAbstractButton*>(control)) add(button->text());
        if (const auto* group = qobject_cast<const QGroupBox*>(control)) add(group->title());
        if (const auto* label = qobject_cast<const QLabel*>(control); label && label->buddy())
            add(label->text());
        if (const auto* tabs = qobject_cast<const QTabBar*>(control))
            for (int i = 0; i < tabs->count(); ++i) add(tabs->tabText(i));
    }
}

TEST_F(EveryWindow, HasEachLetterOnceWithTheMenuBar) {
    look_at_all([this](QWidget* window) {
        std::multimap<QString, QString> letters;
        if (frame.child(qPrintable(window->objectName())) == window) {
            frame.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
            frame.show_child(window);
        }
        add_letters(window, letters);
        if (window->window() == &frame)
            for (const QAction* action : frame.menuBar()->actions()) {
                const QString letter = QKeySequence::mnemonic(action->text()).toString();
                if (!letter.isEmpty()) letters.insert({letter, action->text()});
            }
        for (auto it = letters.begin(); it != letters.end(); ++it)
            if (const auto next = std::next(it); next != letters.end() && next->first == it->first) {
                ADD_FAILURE() << qPrintable(it->first) << ": " << qPrintable(it->second) << " and "
                              << qPrintable(next->second);
            }
    });
}

// Controls that a screen reader stops at.
bool is_control(QAccessible::Role role) {
    switch (role) {
        case QAccessible::Button:
        case QAccessible::CheckBox:
        case QAccessible::RadioButton:
        case QAccessible::EditableText:
        case QAccessible::ComboBox:
        case QAccessible::List:
        case QAccessible::Table:
        case QAccessible::Tree:
        case QAccessible::Slider:
        case QAccessible::SpinBox:
        case QAccessible::PageTab:
        case QAccessible::Graphic:
            return true;
        default:
            return false;
    }
}

void expect_named(QAccessibleInterface* at, int depth, int& controls) {
    if (!at || !at->isValid() || depth > 30 || at->state().invisible) return;
    const QObject* object = at->object();
    // The parts of a control stand for it.
    if (object && (qobject_cast<const QComboBox*>(object->parent()) ||
                   object->objectName().startsWith(QStringLiteral("qt_"))))
        return;
    const QString name = at->text(QAccessible::Name), described = at->text(QAccessible::Description);
    if (is_control(at->role())) {
        ++controls;
        EXPECT_FALSE(name.isEmpty() && described.isEmpty())
            << at->role() << ' ' << (object ? object->metaObject()->className() : "part") << ' '
            << (object ? qPrintable(object->objectName()) : "");
    }
    // What a label shows can be heard, whatever its name is.
    if (const auto* label = qobject_cast<const QLabel*>(object);
        label && !label->text().trimmed().isEmpty()) {
        QString shown = label->text().simplified();
        const QString heard = name.simplified() + QLatin1Char('\n') + described;
        EXPECT_TRUE(heard.contains(shown.remove(QLatin1Char('&')))) << qPrintable(label->text());
    }
    if (is_control(at->role()) && at->role() != QAccessible::Graphic) return;  // rows and cells are texts
    for (int i = 0; i < at->childCount(); ++i) expect_named(at->child(i), depth + 1, controls);
}

TEST_F(EveryWindow, TellsAScreenReaderWhatEachControlIs) {
    int controls = 0;
    look_at_all([&controls](QWidget* window) {
        expect_named(QAccessible::queryAccessibleInterface(window), 0, controls);
    });
    EXPECT_GT(controls, 120);
    EXPECT_EQ(frame.panels[1]->accessibleDescription().toStdString(), "Propane");
    EXPECT_FALSE(frame.panels[3]->accessibleDescription().isEmpty());
}

// Collects what is painted.
class PaintedRegion : public QObject {
 public:
    explicit PaintedRegion(QWidget* widget) { widget->installEventFilter(this); }
    QRegion region;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

TEST_F(EveryWindow, LeavesTheHintWholeWhenItCloses) {
    open_starter_database();
    QApplication::processEvents();
    ASSERT_TRUE(frame.child<frmQStoffWahl>()->isVisible());
    for (const bool hidden : {true, false}) {
        frame.show_child(frame.child<frmQStoffWahl>());
        QApplication::processEvents();
        PaintedRegion painted(frame.area->viewport());
        hidden ? press(frame.child<frmQStoffWahl>(), "ESC") : frame.unload(frmQStoffWahl::Name);
        QApplication::processEvents();
        EXPECT_TRUE(QRegion(frame.area->viewport()->rect()).subtracted(painted.region).isEmpty()) << hidden;
    }
}

TEST_F(EveryWindow, MessageBoxesShowTheirWholeTitle) {
    for (const char* title : {"QUOM-6", "Substance data situation (\"traffic lights\")",
                              "present working directory of QUOM, with a title longer than its text"}) {
        int width = 0;
        QTimer::singleShot(0, &frame, [&width] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                width = box->width();
                box->accept();
            }
        });
        MessageBoxes(&frame).ask({.title = title, .text = "yes"});
        QFont bold = QApplication::font();
        bold.setBold(true);
        EXPECT_GT(width, QFontMetrics(bold).horizontalAdvance(QLatin1String(title)) + 100) << title;
    }
}

TEST_F(EveryWindow, StatusBarShowsItsTextsWholeWhereTheyHaveRoom) {
    go_to_calculations();
    for (const int width : {1600, 1280, 1024, 960}) {
        frame.resize(width, 700);
        QApplication::processEvents();
        int needed = 0, shown_whole = 0;
        for (const StatusPanel* panel : frame.panels) needed += panel->needed_width();
        for (const StatusPanel* panel : frame.panels) {
            shown_whole += panel->width() >= panel->needed_width() ? 1 : 0;
            EXPECT_LE(panel->geometry().right(), frame.statusBar()->width());
        }
        EXPECT_TRUE(shown_whole == 4 || needed > width - 60) << width;
        EXPECT_GE(frame.panels[0]->width(), frame.panels[0]->needed_width()) << width;
        EXPECT_GE(frame.panels[1]->width(), frame.panels[1]->needed_width()) << width;
    }
}

}  // namespace
}  // namespace quom

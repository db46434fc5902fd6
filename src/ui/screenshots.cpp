#include "ui/screenshots.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QPixmap>

#include "base/files.h"
#include "session/program_path.h"
#include "ui/frmQModell.h"
#include "ui/frmQStoffWahl.h"
#include "ui/mdiQUOM.h"
#include "ui/menu_actions.h"

namespace quom {

namespace {

// Boxes of the road are not shown: they would wait for an answer.
class DefaultAnswers : public Messages {
 public:
    Answer ask(const Message& message) override { return message.default_button; }
};

struct Step {
    const char* name;
    void (*go)(mdiQUOM&);
};

void press(mdiQUOM& frame, const char* window, const char* button) {
    if (QWidget* w = frame.child(window))
        if (auto* b = w->findChild<QAbstractButton*>(QLatin1String(button))) b->click();
}

constexpr Step Steps[] = {
    {"start", [](mdiQUOM&) {}},
    {"substances",
     [](mdiQUOM& f) {
         Session& s = f.session();
         if (open_picked_database(s, 7, StarterDatabase)) {
             f.refresh();
             select_substance(f, 0);
             if (auto* w = f.child<frmQStoffWahl>()) w->NameCombo->setEditText(QStringLiteral("Propane"));
         }
     }},
    {"synonyms", [](mdiQUOM& f) { press(f, frmQStoffWahl::Name, "cmdSynonyme"); }},
    {"models", [](mdiQUOM& f) { press(f, frmQStoffWahl::Name, "StoffOK"); }},
    {"models-confirmed", [](mdiQUOM& f) { press(f, frmQModell::Name, "cmdOKModell"); }},
    {"help", [](mdiQUOM& f) { f.show_help(62); }},
};

}  // namespace

int take_screenshots(mdiQUOM& frame, const QString& folder) {
    if (!QDir().mkpath(folder)) return 0;
    DefaultAnswers answers;
    Session& s = frame.session();
    Messages* const before = s.messages;
    s.messages = &answers;
    int written = 0;
    for (const Step& step : Steps) {
        step.go(frame);
        QApplication::processEvents();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window->objectName().isEmpty()) continue;
            const QString file =
                QStringLiteral("%1/%2-%3.png").arg(folder, QLatin1String(step.name), window->objectName());
            if (window->grab().save(file)) ++written;
        }
    }
    s.messages = before;
    return written;
}

}  // namespace quom

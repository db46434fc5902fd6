#include "ui/main/menu_letters.h"

#include <QApplication>
#include <QKeySequence>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSet>

namespace quom {

namespace {

QString letter_of(const QAction* action) { return QKeySequence::mnemonic(action->text()).toString(); }

}  // namespace

MenuLetters::MenuLetters(QMenuBar& program) : QObject(&program), program_(program) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* now) { focus_changed(now); });
}

void MenuLetters::focus_changed(const QWidget* now) {
    if (!now || now->window() != program_.window()) return;  // another program, a dialog
    const QWidget* window = now;
    while (window && !qobject_cast<const QMdiSubWindow*>(window)) window = window->parentWidget();
    yield_to(window ? window->findChild<QMenuBar*>() : nullptr);
}

void MenuLetters::yield_to(const QMenuBar* window) {
    for (auto it = yielded_.constBegin(); it != yielded_.constEnd(); ++it) it.key()->setText(it.value());
    yielded_.clear();
    if (!window) return;
    QSet<QString> taken;
    for (const QAction* action : window->actions()) taken.insert(letter_of(action));
    taken.remove(QString());
    for (QAction* action : program_.actions()) {
        if (!taken.contains(letter_of(action))) continue;
        yielded_.insert(action, action->text());
        action->setText(action->text().remove(QLatin1Char('&')));
    }
}

}  // namespace quom

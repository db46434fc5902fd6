// Letters of the menu bar that the window in use has too.
#pragma once
#include <QHash>
#include <QObject>

class QAction;
class QMenuBar;

namespace quom {

// A window with menus of its own may have a letter of the menu bar of the program. While the keyboard is in
// that window the letter is the window's, and the entry of the program is shown without it; so each letter
// does one thing, and does what is underlined.
class MenuLetters : public QObject {
 public:
    explicit MenuLetters(QMenuBar& program);

 private:
    void focus_changed(const QWidget* now);
    void yield_to(const QMenuBar* window);
    QMenuBar& program_;
    QHash<QAction*, QString> yielded_;  // with its letter
};

}  // namespace quom

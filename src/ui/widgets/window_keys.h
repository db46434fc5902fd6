// Enter and Escape of a window inside the main window: Enter presses the button in focus or the default one,
// Escape the one whose caption names <Esc>.
#pragma once
#include <QObject>

class QWidget;

namespace quom {

class WindowKeys : public QObject {
    Q_OBJECT
 public:
    explicit WindowKeys(QWidget* window);
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace quom

// Windows of inputs: what leaving them means.
#pragma once
#include <QString>
#include <QWidget>
#include <string_view>

#include "ui/widgets/end_row.h"

class QPushButton;

namespace quom {

inline QString shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A child of the area of windows. Leaving it by its button, by Esc or by its title bar is one and the same.
class InputWindow : public QWidget {
    Q_OBJECT
 public:
    using QWidget::QWidget;

 signals:
    void left();  // given up by the user, or closed with the windows of the calculation

 protected:
    void leave_by(QPushButton* button);
    void finish() { done_ = true; }  // what closes the window from now on gives nothing up
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

 private:
    void leave();
    void fit_frame();
    bool done_ = false;
};

}  // namespace quom

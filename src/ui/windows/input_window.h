// Windows of inputs: what leaving them means, and how their buttons stand.
#pragma once
#include <QString>
#include <QWidget>
#include <string_view>
#include <vector>

class QPushButton;
class QVBoxLayout;

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

// The row of buttons that ends a window: a rule above, the confirming one last, at least 96 wide and default.
void add_end_row(QVBoxLayout* layout, QPushButton* leave, QPushButton* confirm);

// Tab goes through the controls in this order; those that are null are left out.
void set_tab_order(const std::vector<QWidget*>& controls);

}  // namespace quom

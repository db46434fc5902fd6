// One panel of the status bar: a line before it, text elided at the right, the whole text as tool tip.
#pragma once
#include <QLabel>

namespace quom {

class StatusPanel : public QLabel {
    Q_OBJECT
 public:
    StatusPanel(bool line_before, QWidget* parent = nullptr);
    void show_text(const std::string& text);
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    bool line_before_;
};

}  // namespace quom

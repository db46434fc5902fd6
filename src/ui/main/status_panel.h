// One panel of the status bar: a line before it, text elided at the right, the whole text as tool tip.
#pragma once
#include <QLabel>
#include <span>

namespace quom {

class StatusPanel : public QLabel {
    Q_OBJECT
 public:
    StatusPanel(bool line_before, QWidget* parent = nullptr);
    void show_text(const std::string& text);
    QSize minimumSizeHint() const override;
    int needed_width() const;  // for its whole text

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    bool line_before_;
};

// Gives each panel of a bar of this width the room that its text needs; where that is too much, the longest
// ones share what the others leave.
void share_width(std::span<StatusPanel* const> panels, int width);

}  // namespace quom

// A sentence in place of a message box: icon and text on the ground of warnings, hidden while there is
// nothing to say.
#pragma once
#include <QFrame>

class QLabel;

namespace quom {

class NoticeStrip : public QFrame {
    Q_OBJECT
 public:
    explicit NoticeStrip(QWidget* parent = nullptr);
    // Shows the text and tells screen readers of it; an empty one hides the strip.
    void show_text(const QString& text);
    QString text() const;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    QLabel* text_;
};

}  // namespace quom

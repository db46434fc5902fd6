// One line of hints at the foot of a window: elided at its end, whole as tool tip, copied by Ctrl+C or its
// menu.
#pragma once
#include <QWidget>

namespace quom {

class FooterLine : public QWidget {
    Q_OBJECT
 public:
    explicit FooterLine(QWidget* parent = nullptr);
    void show_text(const QString& text);
    const QString& text() const { return text_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

 private:
    void copy() const;
    QString text_;
};

}  // namespace quom

// The line that says why what a window shows is not up to date, and greys it.
#pragma once
#include <QWidget>
#include <vector>

namespace quom {

class StaleLine : public QWidget {
    Q_OBJECT
 public:
    // shown: what is greyed with the line.
    explicit StaleLine(std::vector<QWidget*> shown, QWidget* parent = nullptr);
    // Shows the reason; an empty one takes line and grey away.
    void show_reason(const QString& reason);
    const QString& reason() const { return reason_; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    QRect text_rect(int width) const;
    std::vector<QWidget*> shown_;
    QString reason_;
};

}  // namespace quom

// The area of the windows, with a hint on what to do next while it is empty.
#pragma once
#include <QMdiArea>

namespace quom {

class MdiArea : public QMdiArea {
    Q_OBJECT
 public:
    explicit MdiArea(QWidget* parent = nullptr);
    // Two lines, parted by "\n"; empty: no hint.
    void set_hint(const QString& hint);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QString hint_;
};

}  // namespace quom

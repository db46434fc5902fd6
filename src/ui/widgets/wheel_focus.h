// Wheels turn what has the focus: one that goes over a box, a slider or the heads of tabs changes nothing and
// scrolls what they lie in.
#pragma once
#include <QObject>

namespace quom {

// Filters the events of the application for as long as it lives.
class WheelFocus : public QObject {
    Q_OBJECT
 public:
    explicit WheelFocus(QObject* parent = nullptr);
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace quom

// A window that closes gives the focus back to the window that has opened it.
#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>

class QMdiSubWindow;
class QWidget;

namespace quom {

class MdiArea;

class FocusReturn : public QObject {
    Q_OBJECT
 public:
    explicit FocusReturn(MdiArea& area);
    // opener: the sub window in front before; null without one.
    void opened(QMdiSubWindow* sub, QWidget* opener);
    // The window is hidden or closed. The focus goes to its opener, else to the window used last, else to the
    // area, unless another window of the area has it.
    void gone(QWidget* sub);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool has_focus() const;
    bool activate(QWidget* sub);

    MdiArea& area_;
    QHash<const QObject*, QPointer<QWidget>> openers_;
};

}  // namespace quom

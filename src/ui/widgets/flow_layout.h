// A row of controls that goes on in the next line where the window is narrow.
#pragma once
#include <QLayout>
#include <QList>

namespace quom {

class FlowLayout : public QLayout {
 public:
    FlowLayout(int gap, int line_gap) : gap_(gap), line_gap_(line_gap) { setContentsMargins(0, 0, 0, 0); }
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override { items_.append(item); }
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    void setGeometry(const QRect& rect) override;
    QSize sizeHint() const override;     // one line
    QSize minimumSize() const override;  // the widest control

 private:
    int arrange(const QRect& rect, bool place) const;  // height that it takes
    QList<QLayoutItem*> items_;
    int gap_, line_gap_;
};

}  // namespace quom

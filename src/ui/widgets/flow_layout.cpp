#include "ui/widgets/flow_layout.h"

#include <algorithm>

namespace quom {

FlowLayout::~FlowLayout() { qDeleteAll(items_); }

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

QSize FlowLayout::sizeHint() const {
    QSize size;
    for (const QLayoutItem* item : items_) {
        const QSize one = item->sizeHint();
        size = {size.width() + one.width() + (size.isEmpty() ? 0 : gap_),
                std::max(size.height(), one.height())};
    }
    return size;
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : items_) size = size.expandedTo(item->minimumSize());
    return size;
}

int FlowLayout::arrange(const QRect& rect, bool place) const {
    int x = rect.x(), y = rect.y(), line = 0;
    for (QLayoutItem* item : items_) {
        const QSize size = item->sizeHint();
        if (x > rect.x() && x + size.width() > rect.x() + rect.width()) {
            x = rect.x();
            y += line + line_gap_;
            line = 0;
        }
        if (place) item->setGeometry(QRect(QPoint(x, y), size));
        x += size.width() + gap_;
        line = std::max(line, size.height());
    }
    return y + line - rect.y();
}

}  // namespace quom

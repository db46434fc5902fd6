#include "ui/widgets/refusal_line.h"

#include <QAccessible>
#include <QGridLayout>
#include <QPainter>
#include <algorithm>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"

namespace quom {

namespace {

constexpr int icon_size = 16;
constexpr int icon_gap = 6;
constexpr int least_digits = 24;  // of a line

}  // namespace

RefusalLine::RefusalLine(NumberBox* box, QWidget* beside, QWidget* parent)
    : QLabel(parent), box_(box), beside_(beside) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    hide();
    connect(box, &NumberBox::refusal_changed, this, [this](const QString& rule) {
        setText(rule);
        setAccessibleName(rule);
        setVisible(!rule.isEmpty());
        updateGeometry();
        if (rule.isEmpty()) return;
        QAccessibleEvent told(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    });
}

// Where the text may stand; as high as it needs.
QRect RefusalLine::text_rect() const {
    const int across = box_->sizeHint().width() + (beside_ ? 8 + beside_->sizeHint().width() : 0);
    const int width = std::max(across - icon_size - icon_gap, text_width(*this, least_digits));
    const int left = icon_size + icon_gap;
    const QRect lines = fontMetrics().boundingRect(
        QRect(0, 0, width, 10000), Qt::TextWordWrap | Qt::TextWrapAnywhere | Qt::AlignLeft, text());
    return {left, 0, std::max(width, lines.width()), lines.height()};
}

QSize RefusalLine::sizeHint() const {
    const QRect text = text_rect();
    return {text.right() + 1, std::max(icon_size, text.height())};
}

void RefusalLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect text = text_rect();
    const int first_line = std::min(height(), fontMetrics().height());
    svg_icon(QStringLiteral("message-error"))
        .paint(&painter, QRect(0, std::max(0, (first_line - icon_size) / 2), icon_size, icon_size));
    painter.setPen(look_colour(LookColour::ErrorText));
    painter.drawText(text, Qt::TextWordWrap | Qt::TextWrapAnywhere | Qt::AlignLeft, this->text());
}

RefusalLine* add_refusal_line(QGridLayout* grid, int row, NumberBox* box, QWidget* beside) {
    auto* line = new RefusalLine(box, beside, grid->parentWidget());
    line->setObjectName(box->objectName() + QStringLiteral("_refusal"));
    grid->addWidget(line, row, 1, 1, -1, Qt::AlignLeft | Qt::AlignTop);
    return line;
}

}  // namespace quom

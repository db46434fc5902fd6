// Option and check boxes with a text of several lines: the text is wrapped when painted, text() stays whole.
#pragma once
#include <QCheckBox>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace quom {

template <class Button, QStyle::PrimitiveElement Indicator>
class WrappedButton : public Button {
 public:
    // Lines of about so many characters.
    WrappedButton(const QString& text, int characters) : Button(text), characters_(characters) {
        this->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        const int width = this->fontMetrics().averageCharWidth() * characters_;
        const QRect text = this->fontMetrics().boundingRect(QRect(0, 0, width, 4000), flags, this->text());
        return {text.width() + text_left() + 4, std::max(text.height(), indicator()) + 4};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    bool hitButton(const QPoint& point) const override { return this->rect().contains(point); }

    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionButton option;
        this->initStyleOption(&option);
        const QRect text = this->rect().adjusted(text_left(), 2, -2, -2);
        const int first_line = this->fontMetrics().lineSpacing();
        option.rect = QRect(0, text.top() + (first_line - indicator()) / 2, indicator(), indicator());
        painter.drawPrimitive(Indicator, option);
        this->style()->drawItemText(&painter, text, flags, this->palette(), this->isEnabled(), this->text(),
                                    QPalette::WindowText);
        if (!(option.state & QStyle::State_HasFocus)) return;
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = this->fontMetrics().boundingRect(text, flags, this->text()).adjusted(-3, -2, 4, 2);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }

 private:
    static constexpr int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
    int indicator() const {
        return this->style()->pixelMetric(Indicator == QStyle::PE_IndicatorCheckBox
                                              ? QStyle::PM_IndicatorWidth
                                              : QStyle::PM_ExclusiveIndicatorWidth);
    }
    int text_left() const { return indicator() + 6; }
    int characters_;
};

using WrappedOption = WrappedButton<QRadioButton, QStyle::PE_IndicatorRadioButton>;
using WrappedCheck = WrappedButton<QCheckBox, QStyle::PE_IndicatorCheckBox>;

}  // namespace quom

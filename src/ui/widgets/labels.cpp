#include "ui/widgets/labels.h"

#include <QAbstractButton>
#include <QFrame>
#include <QGridLayout>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include <algorithm>

#include "ui/look/look.h"

namespace quom {

TrimmedLabel::TrimmedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
}

QSize TrimmedLabel::sizeHint() const { return fontMetrics().size(Qt::TextShowMnemonic, text().trimmed()); }

void TrimmedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, contentsRect(), flags | Qt::TextShowMnemonic, palette(), isEnabled(),
                          text().trimmed(), foregroundRole());
}

void TrimmedButton::initStyleOption(QStyleOptionButton* option) const {
    QPushButton::initStyleOption(option);
    QStringList lines = option->text.split(QLatin1Char('\n'));
    for (QString& line : lines) line = line.trimmed();
    option->text = lines.join(QLatin1Char('\n'));
}

QSize TrimmedButton::sizeHint() const {
    ensurePolished();
    QStyleOptionButton option;
    initStyleOption(&option);
    QSize text = fontMetrics().size(Qt::TextShowMnemonic, option.text);
    if (!option.icon.isNull()) text.rwidth() += option.iconSize.width() + 8;
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, text, this);
}

QString spoken(const QString& caption) {
    QString text = caption;
    text.replace(QStringLiteral("&&"), QStringLiteral("\1"));
    text.remove(QLatin1Char('&'));
    text.replace(QLatin1Char('\1'), QLatin1Char('&'));
    return text.simplified();
}

void caption_for(QLabel* label, QWidget* control, const QString& unit) {
    label->setBuddy(control);
    control->setAccessibleName(spoken(label->text() + QLatin1Char(' ') + unit));
}

void add_form_row(QGridLayout* grid, int row, QLabel* label, QWidget* control, const QString& unit) {
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(label, row, 0);
    grid->addWidget(control, row, 1);
    if (!unit.isEmpty()) grid->addWidget(new TrimmedLabel(unit), row, 2);
    grid->setColumnStretch(0, 1);
    caption_for(label, control, unit);
}

QLabel* head_label(const QString& text, QWidget* parent) {
    auto* label = new TrimmedLabel(text, parent);
    label->setFont(head_font());
    return label;
}

namespace {

// Square, and growing with the font.
class HelpButton : public QPushButton {
 public:
    using QPushButton::QPushButton;
    QSize sizeHint() const override {
        const int side = std::max(26, fontMetrics().height() + 10);
        return {side, side};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

// Takes its colour from PlaceholderText, so that a change of theme repaints it.
class HintLabel : public QLabel {
 public:
    HintLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setForegroundRole(QPalette::PlaceholderText);
    }
};

}  // namespace

QLabel* hint_label(const QString& text, QWidget* parent) { return new HintLabel(text, parent); }

QFrame* rule(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::NoFrame);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Mid);
    return line;
}

QAbstractButton* help_button(const char* name, const QString& about, QWidget* parent) {
    auto* button = named(new HelpButton(QStringLiteral("?"), parent), name, QStringLiteral("Help: ") + about);
    button->setToolTip(QStringLiteral("Help"));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

}  // namespace quom

#include "ui/main/start_page_parts.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>

#include "ui/look/look.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int RingSide = 22, CapPadding = 6, WordGap = 6, KeyGap = 18, LineGap = 6;

}  // namespace

StartCardFrame::StartCardFrame(QWidget* parent) : QFrame(parent), column(new QVBoxLayout(this)) {
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(0);
}

void StartCardFrame::add_head(const QString& text) {
    auto* head = new QLabel(text, this);
    head->setTextFormat(Qt::PlainText);
    head->setFont(head_font());
    QPalette colours = head->palette();
    colours.setColor(QPalette::WindowText, look_colour(LookColour::SectionHead));
    head->setPalette(colours);
    head->setContentsMargins(8, column->count() > 0 ? 6 : 2, 8, 4);
    column->addWidget(head);
}

void StartCardFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(look_colour(LookColour::GroupFrame));
    painter.setBrush(QApplication::palette().color(QPalette::Window));  // not that of the area
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

StepRing::StepRing(int number, QWidget* parent) : QWidget(parent), number_(number) {
    setFixedSize(RingSide, RingSide);
}

void StepRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look_colour(LookColour::Accent), 1.5));
    painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(head_font());
    painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
}

KeyCaps::KeyCaps(QVector<Key> keys, QWidget* parent) : QWidget(parent), keys_(std::move(keys)) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    QStringList spoken_keys;
    for (const Key& key : keys_) spoken_keys << key.cap + QStringLiteral(": ") + key.word;
    setAccessibleName(QStringLiteral("Keys"));
    setAccessibleDescription(spoken_keys.join(QStringLiteral(", ")));
}

QVector<KeyCaps::Place> KeyCaps::places(int width) const {
    const QFontMetrics metrics = fontMetrics();
    const int height = metrics.height() + 6;
    QVector<Place> list;
    QPoint at(0, 0);
    for (const Key& key : keys_) {
        const int cap = metrics.horizontalAdvance(key.cap) + 2 * CapPadding;
        const int word = metrics.horizontalAdvance(key.word) + 2;
        if (at.x() > 0 && at.x() + cap + WordGap + word > width) at = {0, at.y() + height + LineGap};
        list.push_back(
            {QRect(at, QSize(cap, height)), QRect(at + QPoint(cap + WordGap, 0), QSize(word, height))});
        at.rx() += cap + WordGap + word + KeyGap;
    }
    return list;
}

int KeyCaps::heightForWidth(int width) const {
    const QVector<Place> list = places(width);
    return list.isEmpty() ? 0 : list.back().cap.bottom() + 1;
}

QSize KeyCaps::sizeHint() const { return {200, fontMetrics().height() + 6}; }
QSize KeyCaps::minimumSizeHint() const { return sizeHint(); }

void KeyCaps::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QVector<Place> list = places(width());
    for (int i = 0; i < list.size(); ++i) {
        painter.setPen(look_colour(LookColour::InputBorder));
        painter.setBrush(palette().color(QPalette::Button));
        painter.drawRoundedRect(QRectF(list[i].cap).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
        painter.setPen(palette().color(QPalette::ButtonText));
        painter.drawText(list[i].cap, Qt::AlignCenter, keys_[i].cap);
        painter.setPen(look_colour(LookColour::MdiHint));
        painter.drawText(list[i].word, Qt::AlignLeft | Qt::AlignVCenter, keys_[i].word);
    }
}

}  // namespace quom

#include "ui/widgets/view_label.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocument>

#include "ui/look/look.h"
#include "ui/widgets/value_box.h"

namespace quom {

namespace {

// First characters of the two columns in the lines of a result list.
constexpr int ColumnL = 35, ColumnV = 55;
constexpr int UsualSize = 8;  // of the texts of a view

QColor colour_of(const ViewText& text) { return QColor(static_cast<QRgb>(text.colour)); }

}  // namespace

ViewLabel::ViewLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ViewLabel::show_text(const ViewText& text) {
    on_light_ = colour_of(text);
    QFont font = QApplication::font();
    if (text.bold) font.setBold(true);
    if (text.size > UsualSize) font.setPointSizeF(font.pointSizeF() + 1);
    setFont(font);
    take_colour();
    setText(QString::fromStdString(text.text));
    setAccessibleDescription(this->text().simplified());
    setVisible(text.visible && !text.text.empty());
    updateGeometry();
}

QSize ViewLabel::sizeHint() const {
    // As high as the largest of its texts, so that nothing jumps from one result to the next.
    return {fontMetrics().horizontalAdvance(text().trimmed()) + 2,
            std::max(26, QFontMetrics(QApplication::font()).height() + 6)};
}

QSize ViewLabel::minimumSizeHint() const { return {std::min(120, sizeHint().width()), sizeHint().height()}; }

void ViewLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text().trimmed(), Qt::ElideRight, width());
    const QString tip = shown == text().trimmed() ? QString() : text().trimmed();
    if (toolTip() != tip) setToolTip(tip);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
}

void ViewLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) take_colour();
}

void ViewLabel::take_colour() {
    QPalette palette;
    palette.setColor(QPalette::WindowText,
                     stale_ ? look_colour(LookColour::Hint) : shown_text_colour(on_light_));
    setPalette(palette);
}

void ViewLabel::set_stale(bool stale) {
    stale_ = stale;
    take_colour();
}

ColumnHeads::ColumnHeads(QPlainTextEdit* list, QWidget* parent)
    : QWidget(parent), L(new QLabel(this)), V(new QLabel(this)), list_(list) {
    QFont font = fixed_font();
    font.setBold(true);
    for (QLabel* label : {L, V}) label->setFont(font), label->setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(list->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { place(); });
}

QSize ColumnHeads::sizeHint() const { return {0, L->sizeHint().height()}; }

void ColumnHeads::resizeEvent(QResizeEvent*) { place(); }

void ColumnHeads::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) place();
    if (event->type() == QEvent::ApplicationPaletteChange) set_stale(stale_);
}

void ColumnHeads::set_stale(bool stale) {
    stale_ = stale;
    QPalette palette;
    if (stale) palette.setColor(QPalette::WindowText, look_colour(LookColour::Hint));
    for (QLabel* label : {L, V}) label->setPalette(palette);
}

void ColumnHeads::place() {
    const double character = QFontMetricsF(list_->font()).horizontalAdvance(QLatin1Char('0'));
    const double origin =
        list_->frameWidth() + list_->document()->documentMargin() - list_->horizontalScrollBar()->value();
    const auto put = [&](QLabel* label, int column) {
        label->setGeometry(qRound(origin + column * character), 0, qRound(18 * character), height());
    };
    put(L, ColumnL);
    put(V, ColumnV);
}

void show_in_box(QLineEdit* box, const ViewText& text) {
    if (auto* value = qobject_cast<ValueBox*>(box))
        value->show_text(QString::fromStdString(text.text).trimmed(), colour_of(text));
    box->setVisible(text.visible && !text.text.empty());
}

}  // namespace quom

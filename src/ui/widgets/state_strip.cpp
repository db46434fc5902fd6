#include "ui/widgets/state_strip.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int Least = 72, Bar = 4, Margin = 10, LineGap = 4, IconSize = 32;
constexpr QSize PictureSize(92, 58);
constexpr double HeadGap = 8, FigureGap = 12, IconGap = 4, Dot = 9;

QString text_of(const std::string& text) { return QString::fromStdString(text); }

QString with_minus(QString figure) { return figure.replace(QLatin1Char('-'), QChar(0x2212)); }

}  // namespace

StateStrip::StateStrip(QWidget* parent)
    : QWidget(parent),
      cmdCalculateAgain(named(new QPushButton(QStringLiteral("Calculate again"), this), "cmdCalculateAgain",
                              QStringLiteral("Calculate again"))) {
    setObjectName(QStringLiteral("StateStrip"));
    setAccessibleName(QStringLiteral("State"));
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    cmdCalculateAgain->setToolTip(QStringLiteral("F5"));
    cmdCalculateAgain->hide();
    connect(cmdCalculateAgain, &QPushButton::clicked, this, &StateStrip::calculate_again);
}

// A text that may be broken between its words.
StateStrip::Line StateStrip::words(const QString& text, Ink ink, bool head, bool bold, int icon) {
    Line line;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const double gap = line.empty() ? 0.0 : -1.0;  // a blank
        line.push_back(
            {.text = word, .ink = ink, .head = head, .bold = bold, .icon = 0, .gap = gap, .joined = false});
    }
    if (!line.empty()) line.front().icon = icon;
    return line;
}

void StateStrip::show_outcome(const Fluid& fluid, const Outcome& outcome) {
    std::vector<Line> lines;
    picture_.reset();
    reserved_ = false;
    const auto headline = [](const std::string& word, const std::string& rest) {
        Line line = words(text_of(word), Ink::text, true, true);
        Line more = words(text_of(rest), Ink::text, true);
        if (!line.empty() && !more.empty()) more.front().gap = HeadGap;
        line.insert(line.end(), more.begin(), more.end());
        return line;
    };
    if (!outcome.has_result()) {
        const RefusalWords refusal = refusal_words(outcome);
        lines.push_back(headline("no result", refusal.reason));
        if (!refusal.help.empty()) lines.push_back(words(text_of(refusal.help), Ink::text, false));
        return changed(Form::refused, std::move(lines));
    }
    if (const StateWords state = state_words(fluid, outcome); !state.word.empty())
        lines.push_back(headline(state.word, state.distance));
    const TrustLine trust = trust_line(fluid, outcome);
    Line line = words(text_of(trust.head), Ink::hint, false);
    for (const TrustLine::Figure& figure : trust.figures) {
        const Ink ink = figure.large ? Ink::warning : Ink::text;
        line.push_back({.text = text_of(figure.quantity),
                        .ink = ink,
                        .head = false,
                        .bold = false,
                        .icon = figure.large ? 14 : 0,
                        .gap = FigureGap,
                        .joined = false});
        line.push_back({.text = with_minus(text_of(figure.difference)),
                        .ink = ink,
                        .head = false,
                        .bold = true,
                        .icon = 0,
                        .gap = -1.0,
                        .joined = true});
    }
    lines.push_back(std::move(line));
    for (const std::string& warning : warning_lines(fluid, outcome)) {
        lines.push_back(words(text_of(warning), Ink::warning, false, false, 16));
        reserved_ = true;
    }
    picture_ = saturation_picture(fluid, outcome);
    changed(Form::state, std::move(lines));
}

void StateStrip::show_stale(const QString& what, const QString& shown) {
    picture_.reset();
    reserved_ = false;
    std::vector<Line> lines;
    lines.push_back(words(QStringLiteral("not up to date"), Ink::text, true, true));
    lines.push_back(words(what, Ink::text, true));
    lines.push_back(words(shown, Ink::text, false));
    changed(Form::stale, std::move(lines));
}

void StateStrip::changed(Form form, std::vector<Line> lines) {
    form_ = form;
    lines_ = std::move(lines);
    cmdCalculateAgain->setVisible(form == Form::stale);
    cmdCalculateAgain->setDefault(form == Form::stale);
    QStringList spoken_lines;
    for (const Line& line : lines_) {
        QStringList pieces;
        for (const Piece& piece : line) pieces << piece.text;
        spoken_lines << pieces.join(QLatin1Char(' '));
    }
    const QString all = spoken_lines.join(QStringLiteral("; "));
    const bool other = all != accessibleName();
    if (other) setAccessibleName(all.isEmpty() ? QStringLiteral("State") : all);
    updateGeometry();
    place_button();
    update();
    if (!other || !isVisible()) return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QFont StateStrip::font_of(const Piece& piece) const {
    QFont font = this->font();
    if (piece.head) font.setPointSizeF(font.pointSizeF() + 2);
    if (piece.bold) font.setWeight(QFont::DemiBold);
    return font;
}

double StateStrip::width_of(const Piece& piece) const {
    return QFontMetricsF(font_of(piece)).horizontalAdvance(piece.text) +
           (piece.icon > 0 ? piece.icon + IconGap : 0);
}

double StateStrip::gap_before(const Piece& piece) const {
    return piece.gap < 0 ? QFontMetricsF(font_of(piece)).horizontalAdvance(QLatin1Char(' ')) : piece.gap;
}

double StateStrip::text_left() const {
    const bool icon = form_ == Form::refused || form_ == Form::stale;
    if (icon) return Bar + 12 + IconSize + 12;
    return picture_ ? Bar + Margin + PictureSize.width() + Margin : Bar + Margin;
}

double StateStrip::text_right_margin() const {
    return form_ == Form::stale ? Margin + cmdCalculateAgain->sizeHint().width() + Margin : Margin;
}

StateStrip::Placement StateStrip::place(double width) const {
    Placement placement;
    const double left = text_left(), right = std::max(left + 60, width - text_right_margin());
    double top = 0;
    for (const Line& line : lines_) {
        double x = left, height = 0;
        for (auto at = line.begin(); at != line.end(); ++at) {
            const Piece& piece = *at;
            const QFontMetricsF metrics(font_of(piece));
            const double wide = width_of(piece);
            double gap = gap_before(piece), whole = gap + wide;
            for (auto next = std::next(at); next != line.end() && next->joined; ++next)
                whole += gap_before(*next) + width_of(*next);
            if (x > left && !piece.joined && x + whole > right) {
                top += height;
                x = left;
                height = 0;
            }
            if (x <= left) gap = 0;
            height = std::max({height, metrics.height(), double(piece.icon)});
            placement.pieces.push_back({&piece, x + gap, top, metrics.height()});
            x += gap + wide;
        }
        top += height + LineGap;
    }
    placement.height = std::max(0.0, top - LineGap);
    return placement;
}

int StateStrip::heightForWidth(int width) const {
    const double inside = place(width).height;
    return std::max(Least, static_cast<int>(std::ceil(inside)) + 2 * 8);
}

QSize StateStrip::sizeHint() const { return {480, heightForWidth(std::max(width(), 480))}; }

QSize StateStrip::minimumSizeHint() const { return {300, Least}; }

void StateStrip::place_button() {
    const QSize size = cmdCalculateAgain->sizeHint();
    cmdCalculateAgain->setGeometry(width() - Margin - size.width(), (height() - size.height()) / 2,
                                   size.width(), size.height());
}

void StateStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place_button();
}

void StateStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) updateGeometry();
    if (event->type() == QEvent::ApplicationPaletteChange) update();
}

QColor StateStrip::colour_of(Ink ink) const {
    switch (ink) {
        case Ink::hint:
            return look_colour(LookColour::Hint);
        case Ink::warning:
            return look_colour(LookColour::WarningText);
        case Ink::error:
            return look_colour(LookColour::ErrorText);
        case Ink::text:
            break;
    }
    return palette().color(QPalette::Text);
}

void StateStrip::paint_ground(QPainter& painter) const {
    LookColour ground = LookColour::ResultGround, bar = LookColour::Accent;
    if (reserved_) bar = LookColour::WarningIcon;
    if (form_ == Form::refused) {
        ground = LookColour::ErrorGround;
        bar = LookColour::ErrorIcon;
    } else if (form_ == Form::stale) {
        ground = LookColour::WarningGround;
        bar = LookColour::WarningIcon;
    }
    painter.fillRect(rect(), look_colour(ground));
    painter.fillRect(QRect(0, 0, Bar, height()), look_colour(bar));
}

void StateStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint_ground(painter);
    const bool icon = form_ == Form::refused || form_ == Form::stale;
    if (icon) {
        const QRect at(Bar + 12, (height() - IconSize) / 2, IconSize, IconSize);
        svg_icon(form_ == Form::refused ? QStringLiteral("message-error") : QStringLiteral("message-warning"))
            .paint(&painter, at);
    } else if (picture_) {
        paint_picture(painter, QRectF(Bar + Margin, (height() - PictureSize.height()) / 2,
                                      PictureSize.width(), PictureSize.height()));
    }
    const QIcon triangle = svg_icon(QStringLiteral("message-warning"));
    const Placement placement = place(width());
    const double top = std::max(8.0, (height() - placement.height) / 2);
    for (const Placed& at : placement.pieces) {
        double x = at.x;
        if (at.piece->icon > 0) {
            const int size = at.piece->icon;
            triangle.paint(&painter, QRectF(x, top + at.top + (at.height - size) / 2, size, size).toRect());
            x += size + IconGap;
        }
        const QFont font = font_of(*at.piece);
        painter.setFont(font);
        painter.setPen(colour_of(at.piece->ink));
        painter.drawText(QPointF(x, top + at.top + QFontMetricsF(font).ascent()), at.piece->text);
    }
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look_colour(LookColour::Accent), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2, 2);
}

// Vapor pressure curve up to the critical point, and where the state lies beside it.
void StateStrip::paint_picture(QPainter& painter, const QRectF& frame) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = palette().color(QPalette::Base), ink = palette().color(QPalette::Text);
    painter.setPen(QPen(look_colour(LookColour::GroupFrame), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    const QRectF inside = frame.adjusted(2, 2, -2, -2);
    const SaturationPicture& picture = *picture_;
    const auto at = [&](const SaturationPicture::Point& point) {
        const double x = (point.T - picture.T_low) / (picture.T_high - picture.T_low);
        const double y = std::log(point.p / picture.p_low) / std::log(picture.p_high / picture.p_low);
        return QPointF(inside.left() + x * inside.width(), inside.bottom() - y * inside.height());
    };
    painter.setClipRect(inside);
    const QPointF critical = at(picture.critical);
    painter.setPen(QPen(look_colour(LookColour::Hint), 1, Qt::DotLine));
    painter.drawLine(critical, QPointF(inside.right(), critical.y()));
    painter.drawLine(critical, QPointF(critical.x(), inside.top()));
    QPainterPath curve(at(picture.curve.front()));
    for (auto point = std::next(picture.curve.begin()); point != picture.curve.end(); ++point)
        curve.lineTo(at(*point));
    painter.setPen(QPen(ink, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(curve);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(critical, 2.2, 2.2);
    if (picture.state) {
        QPointF dot = at(*picture.state);
        const double most = Dot / 2 + 1;  // whole in the picture
        dot.setX(std::clamp(dot.x(), inside.left() + most, inside.right() - most));
        dot.setY(std::clamp(dot.y(), inside.top() + most, inside.bottom() - most));
        painter.setBrush(ground);
        painter.drawEllipse(dot, most + 0.5, most + 0.5);
        painter.setBrush(look_colour(LookColour::Accent));
        painter.drawEllipse(dot, Dot / 2, Dot / 2);
    }
    painter.restore();
}

}  // namespace quom

#include "ui/charts/tank_picture.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/look/look.h"

namespace quom {

namespace {

struct TankInk {
    QColor outline, liquid, surface, vapor, hint;
};

TankInk tank_ink() {
    const bool dark = is_dark(QApplication::palette());
    TankInk ink;
    ink.outline = look_colour(LookColour::IconInk);
    ink.liquid = QColor(dark ? 0x3C78AE : 0x4F8FC4);
    ink.surface = QColor(dark ? 0x5A96CC : 0x7FB3DF);
    ink.vapor = QColor(dark ? 0x2E3A46 : 0xDCE7F1);
    ink.hint = look_colour(LookColour::Hint);
    return ink;
}

// The body of the cylinder between two heights, with round ends.
QPainterPath body(const QRectF& tank, double top, double bottom, double lid) {
    QPainterPath path;
    path.moveTo(tank.left(), top);
    path.arcTo(QRectF(tank.left(), top - lid, tank.width(), 2 * lid), 180, -180);
    path.lineTo(tank.right(), bottom);
    path.arcTo(QRectF(tank.left(), bottom - lid, tank.width(), 2 * lid), 0, -180);
    path.closeSubpath();
    return path;
}

QString text_of(const std::string& text) { return QString::fromStdString(text).trimmed(); }

class TankPainter {
 public:
    TankPainter(QPainter& painter, const QSizeF& size, const TankView& view)
        : p_(painter), view_(view), ink_(tank_ink()), line_(QFontMetricsF(painter.font()).height()) {
        const QFontMetricsF metrics(painter.font());
        double beside = metrics.horizontalAdvance(QStringLiteral("supercritical"));
        for (const std::string* text : {&view.L, &view.V, &view.pressure})
            beside = std::max(beside, metrics.horizontalAdvance(text_of(*text)) + line_);
        const double room = size.width() - beside - 64;
        const double width = std::clamp(0.72 * size.height(), 60.0, std::max(room, 60.0));
        lid_ = 0.13 * width;
        const double left = std::max(14.0, 0.5 * (size.width() - beside - 34 - width));
        tank_ = QRectF(left, lid_ + 12, width, size.height() - 2 * lid_ - 24);
        text_left_ = tank_.right() + 34;
        level_ = tank_.bottom() - tank_.height() * view.share / 100.0;
    }

    void draw() {
        p_.setRenderHint(QPainter::Antialiasing);
        draw_contents();
        draw_shell();
        draw_labels();
    }

 private:
    bool has_contents() const {
        return view_.filling != TankFilling::nothing && view_.filling != TankFilling::fault;
    }

    void draw_contents() {
        if (!has_contents()) return;
        p_.setPen(Qt::NoPen);
        p_.setBrush(ink_.vapor);
        p_.drawPath(body(tank_, tank_.top(), tank_.bottom(), lid_));
        if (view_.filling == TankFilling::supercritical) {
            QColor hatch = ink_.outline;
            hatch.setAlphaF(0.3F);
            p_.setBrush(QBrush(hatch, Qt::BDiagPattern));
            p_.drawPath(body(tank_, tank_.top(), tank_.bottom(), lid_));
        }
        if (view_.share <= 0.0) return;
        p_.setBrush(ink_.liquid);
        p_.drawPath(body(tank_, level_, tank_.bottom(), lid_));
        p_.setBrush(ink_.surface);
        p_.drawEllipse(QRectF(tank_.left(), level_ - lid_, tank_.width(), 2 * lid_));
    }

    void draw_shell() {
        p_.setBrush(Qt::NoBrush);
        p_.setPen(QPen(ink_.outline, 2));
        p_.drawPath(body(tank_, tank_.top(), tank_.bottom(), lid_));
        p_.drawEllipse(QRectF(tank_.left(), tank_.top() - lid_, tank_.width(), 2 * lid_));
        // Scale of the level in quarters.
        p_.setPen(QPen(ink_.outline, 1));
        for (int quarter = 1; quarter < 4; ++quarter) {
            const double y = tank_.bottom() - tank_.height() * quarter / 4;
            p_.drawLine(QPointF(tank_.left(), y), QPointF(tank_.left() + 7, y));
        }
    }

    // A label beside the tank with a line that leads into what it names.
    void label(double y, const QString& text) {
        const double inside = tank_.right() - 0.25 * tank_.width();
        p_.setPen(QPen(ink_.outline, 1));
        p_.setBrush(ink_.outline);
        p_.drawLine(QPointF(inside, y), QPointF(text_left_ - 4, y));
        p_.drawEllipse(QPointF(inside, y), 2, 2);
        p_.setPen(QApplication::palette().color(QPalette::WindowText));
        p_.drawText(QRectF(text_left_, y - line_, 1000, 2 * line_), Qt::AlignLeft | Qt::AlignVCenter, text);
    }

    void draw_labels() {
        if (!has_contents()) return;
        // The middle of what is seen of each phase where the lines end: the surfaces are ellipses there.
        const double top = tank_.top() - 0.8 * lid_, bottom = tank_.bottom() + 0.7 * lid_;
        const double vapor = 0.5 * (top + level_ - 0.8 * lid_), liquid = 0.5 * (level_ + 0.7 * lid_ + bottom);
        if (!view_.V.empty()) label(view_.L.empty() ? 0.5 * (top + bottom) : vapor, text_of(view_.V));
        if (!view_.L.empty()) label(view_.V.empty() ? 0.5 * (top + bottom) : liquid, text_of(view_.L));
    }

    QPainter& p_;
    const TankView& view_;
    const TankInk ink_;
    double line_, lid_ = 0, text_left_ = 0, level_ = 0;
    QRectF tank_;
};

}  // namespace

void draw_tank(QPainter& painter, const QSizeF& size, const TankView& view) {
    painter.save();
    TankPainter(painter, size, view).draw();
    painter.restore();
}

TankPicture::TankPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void TankPicture::show_tank(TankView view) {
    view_ = std::move(view);
    QStringList words;
    for (const std::string* text : {&view_.level, &view_.L, &view_.V, &view_.pressure, &view_.fault})
        if (!text->empty()) words << text_of(*text).simplified();
    setAccessibleDescription(words.join(QStringLiteral(", ")));
    update();
}

QSize TankPicture::sizeHint() const { return {text_width(*this, 48), text_width(*this, 40)}; }

QSize TankPicture::minimumSizeHint() const { return {text_width(*this, 37), text_width(*this, 29)}; }

void TankPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    draw_tank(painter, size(), view_);
}

}  // namespace quom

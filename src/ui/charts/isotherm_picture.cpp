#include "ui/charts/isotherm_picture.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/number_text.h"
#include "ui/charts/chart_ticks.h"
#include "ui/look/look.h"

namespace quom {

namespace {

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString number(double value) {
    const double size = std::fabs(value);
    if (value != 0.0 && (size >= 1e6 || size < 1e-3)) return text_of(formatMask(value, "0.##E+00"));
    return text_of(genNum(static_cast<float>(value)));
}

// A value of about four digits for a label.
QString short_number(double value) {
    if (value == 0.0) return QStringLiteral("0");
    const double unit = std::pow(10.0, std::floor(std::log10(std::fabs(value))) - 4.0);
    return number(std::round(value / unit) * unit);
}

QPen stretch_pen(Stretch kind, const IsothermInk& ink) {
    QPen pen(ink.stable, 2.2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    if (kind == Stretch::metastable_L || kind == Stretch::metastable_V) {
        pen.setColor(ink.metastable);
        pen.setDashPattern({4, 2});
    } else if (kind == Stretch::unstable) {
        pen.setColor(ink.unstable);
        pen.setDashPattern({1, 1.2});
    }
    return pen;
}

struct LegendEntry {
    enum Sign { Line, Disc, OpenDisc, Diamond } sign = Line;
    QPen pen;
    QString text;
};

class IsothermPainter {
 public:
    IsothermPainter(QPainter& painter, const QSizeF& size, const IsothermPicture& picture,
                    const IsothermInk& ink)
        : p_(painter),
          picture_(picture),
          ink_(ink),
          size_(size),
          line_(QFontMetricsF(painter.font()).height()) {}

    void draw() {
        p_.fillRect(QRectF(QPointF(0, 0), size_), ink_.ground);
        p_.setRenderHint(QPainter::Antialiasing);
        if (!picture_.available) {
            text_in(QRectF(QPointF(0, 0), size_), Qt::AlignCenter, QStringLiteral("no state of a cubic EOS"),
                    ink_.hint);
            return;
        }
        collect_legend();
        lay_out();
        draw_axes();
        p_.save();
        p_.setClipRect(plot_);
        if (!picture_.coexistence.empty()) draw_regions();
        draw_pressure_lines();
        draw_curves();
        p_.restore();
        if (with_regions()) draw_region_names();
        draw_pressure_texts();
        draw_marks();
        frame();
        draw_legend();
    }

 private:
    bool with_regions() const { return !picture_.coexistence.empty(); }
    double x_of(double v) const {
        return plot_.left() +
               plot_.width() * std::log(v / picture_.v_low) / std::log(picture_.v_high / picture_.v_low);
    }
    double y_of(double p) const {
        const double low = picture_.p_low, high = picture_.p_high;
        const double share = picture_.log_p ? (p > 0.0 ? std::log(p / low) / std::log(high / low) : -1.0)
                                            : (p - low) / (high - low);
        // Far outside is far enough: huge coordinates cost time and accuracy.
        return plot_.bottom() - plot_.height() * std::clamp(share, -2.0, 3.0);
    }
    QPointF at(const VpPoint& point) const { return {x_of(point.v), y_of(point.p)}; }
    QPolygonF polyline(const std::vector<VpPoint>& points) const {
        QPolygonF line;
        line.reserve(static_cast<qsizetype>(points.size()));
        for (const VpPoint& point : points) line << at(point);
        return line;
    }
    QPen pen_of(Stretch kind) const { return stretch_pen(kind, ink_); }
    QPen saturation_pen() const { return QPen(ink_.saturation, 1.2, Qt::DashDotLine, Qt::FlatCap); }

    void collect_legend();
    void lay_out();
    void draw_axes();
    void draw_regions();
    void draw_region_names();
    struct Level {
        double p;
        QString text;
        QPen pen;
    };
    std::vector<Level> pressures() const;  // from the highest down
    void draw_pressure_lines();
    void draw_pressure_texts();
    void draw_curves();
    void draw_marks();
    void draw_legend();
    void frame() {
        p_.setPen(QPen(ink_.axis, 1));
        p_.setBrush(Qt::NoBrush);
        p_.drawRect(plot_);
    }
    void text_in(const QRectF& where, int flags, const QString& text, const QColor& colour) {
        p_.setPen(colour);
        p_.drawText(where, flags, text);
    }
    // Text on a piece of ground, so that lines below do not cross it; moved into the plot where it sticks
    // out.
    void tag(QPointF centre, const QString& text, const QColor& colour, bool strong = false);
    // Height of the legend for a width; draws when asked.
    double legend(double left, double top, double width, bool draw);
    void draw_sign(const LegendEntry& entry, const QRectF& where);

    QPainter& p_;
    const IsothermPicture& picture_;
    const IsothermInk& ink_;
    QSizeF size_;
    double line_;  // height of a line of text
    QRectF plot_;
    std::vector<LegendEntry> legend_;
    ChartTicks v_ticks_, p_ticks_;
};

void IsothermPainter::collect_legend() {
    const auto kelvin = [](double T) { return short_number(T) + QStringLiteral(" K"); };
    if (picture_.T > 0.0 && with_regions() && !picture_.isotherm.empty())
        legend_.push_back({LegendEntry::Line, pen_of(Stretch::one_phase),
                           QStringLiteral("isotherm T = ") + kelvin(picture_.T)});
    bool seen[3] = {};
    for (const IsothermStretch& stretch : picture_.isotherm) {
        const bool meta = stretch.kind == Stretch::metastable_L || stretch.kind == Stretch::metastable_V;
        const int group = stretch.kind == Stretch::unstable ? 2 : meta ? 1 : 0;
        if (seen[group] || (group == 0 && with_regions())) continue;
        seen[group] = true;
        const char* const texts[] = {"stable", "metastable", "unstable"};
        legend_.push_back({LegendEntry::Line, pen_of(stretch.kind), QLatin1String(texts[group])});
    }
    if (with_regions()) {
        legend_.push_back({LegendEntry::Line, QPen(ink_.critical, 1.4, Qt::DashLine, Qt::FlatCap),
                           QStringLiteral("isotherm T(cr) = ") + kelvin(picture_.Tcr)});
        legend_.push_back({LegendEntry::Line, QPen(ink_.saturation, 1.6), QStringLiteral("limit of L + V")});
        legend_.push_back({LegendEntry::Diamond, QPen(ink_.critical, 1.4), QStringLiteral("critical point")});
        if (!picture_.marks.empty())
            legend_.push_back({LegendEntry::Disc, QPen(ink_.ink, 1.4), QStringLiteral("state")});
        return;
    }
    if (!picture_.spinodals.empty())
        legend_.push_back({LegendEntry::Diamond, QPen(ink_.unstable, 1.4), QStringLiteral("spinodal point")});
    legend_.push_back({LegendEntry::Disc, QPen(ink_.ink, 1.4), QStringLiteral("stable root")});
    if (picture_.marks.size() > 1)
        legend_.push_back({LegendEntry::OpenDisc, QPen(ink_.ink, 1.4), QStringLiteral("other root")});
}

void IsothermPainter::lay_out() {
    const QFontMetricsF metrics(p_.font());
    const double legend_height = legend(10, 0, size_.width() - 20, false);
    plot_ = QRectF(0, 10 + line_, 100, size_.height() - 10 - line_ - (2.6 * line_ + 10) - legend_height);
    const auto p_ticker =
        picture_.log_p ? log_ticker() : linear_ticker(static_cast<int>(plot_.height() / (2.6 * line_)));
    p_ticks_ = ticks_of(*p_ticker, picture_.p_low, picture_.p_high);
    double widest = 0;
    for (const QString& text : p_ticks_.numbers) widest = std::max(widest, metrics.horizontalAdvance(text));
    plot_.setLeft(widest + 16);
    plot_.setRight(size_.width() - 16);
    v_ticks_ = ticks_of(*log_ticker(), picture_.v_low, picture_.v_high);
}

void IsothermPainter::draw_axes() {
    const QFontMetricsF metrics(p_.font());
    double last_right = -1e9;
    for (std::size_t i = 0; i < v_ticks_.at.size(); ++i) {
        const double x = std::floor(x_of(v_ticks_.at[i])) + 0.5;
        p_.setPen(QPen(ink_.grid, 1));
        p_.drawLine(QPointF(x, plot_.top()), QPointF(x, plot_.bottom()));
        p_.setPen(QPen(ink_.axis, 1));
        p_.drawLine(QPointF(x, plot_.bottom()), QPointF(x, plot_.bottom() - 5));
        const QString& text = v_ticks_.numbers[i];
        const double width = metrics.horizontalAdvance(text);
        if (x - width / 2 < last_right + 6) continue;
        text_in(QRectF(x - width / 2 - 2, plot_.bottom() + 4, width + 4, line_), Qt::AlignCenter, text,
                ink_.ink);
        last_right = x + width / 2;
    }
    p_.setPen(QPen(ink_.axis, 1));
    for (const double tick : v_ticks_.between) {
        const double x = std::floor(x_of(tick)) + 0.5;
        p_.drawLine(QPointF(x, plot_.bottom()), QPointF(x, plot_.bottom() - 3));
    }
    for (const double tick : p_ticks_.between) {
        const double y = std::floor(y_of(tick)) + 0.5;
        p_.drawLine(QPointF(plot_.left(), y), QPointF(plot_.left() + 3, y));
    }
    double last_top = 1e9;
    for (std::size_t i = 0; i < p_ticks_.at.size(); ++i) {
        const double tick = p_ticks_.at[i];
        const double y = std::floor(y_of(tick)) + 0.5;
        p_.setPen(QPen(tick == 0.0 ? ink_.axis : ink_.grid, 1));
        p_.drawLine(QPointF(plot_.left(), y), QPointF(plot_.right(), y));
        p_.setPen(QPen(ink_.axis, 1));
        p_.drawLine(QPointF(plot_.left(), y), QPointF(plot_.left() + 5, y));
        if (y + line_ / 2 > last_top) continue;
        text_in(QRectF(0, y - line_ / 2, plot_.left() - 6, line_), Qt::AlignRight | Qt::AlignVCenter,
                p_ticks_.numbers[i], ink_.ink);
        last_top = y - line_ / 2;
    }
    text_in(QRectF(6, 4, plot_.width(), line_), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("p / kPa"),
            ink_.ink);
    const QString unit = text_of(picture_.v_unit);
    const QString title = unit.startsWith(QLatin1String("v(")) ? unit : QStringLiteral("v / (%1)").arg(unit);
    text_in(QRectF(plot_.left(), plot_.bottom() + line_ + 6, plot_.width(), line_),
            Qt::AlignRight | Qt::AlignVCenter, title, ink_.ink);
    text_in(QRectF(plot_.left(), plot_.bottom() + line_ + 6, plot_.width(), line_),
            Qt::AlignLeft | Qt::AlignVCenter, text_of(picture_.eos), ink_.hint);
}

void IsothermPainter::tag(QPointF centre, const QString& text, const QColor& colour, bool strong) {
    const QFont before = p_.font();
    if (strong) {
        QFont bold = before;
        bold.setWeight(QFont::DemiBold);
        p_.setFont(bold);
    }
    const QSizeF size = QFontMetricsF(p_.font()).size(0, text) + QSizeF(8, 0);
    QRectF where(QPointF(0, 0), size);
    where.moveCenter(centre);
    where.moveLeft(std::clamp(where.left(), plot_.left() + 1,
                              std::max(plot_.left() + 1, plot_.right() - size.width() - 1)));
    where.moveTop(std::clamp(where.top(), plot_.top() + 1,
                             std::max(plot_.top() + 1, plot_.bottom() - size.height() - 1)));
    QColor ground = ink_.ground;
    ground.setAlpha(215);
    p_.setPen(Qt::NoPen);
    p_.setBrush(ground);
    p_.drawRoundedRect(where, 3, 3);
    text_in(where, Qt::AlignCenter, text, colour);
    p_.setFont(before);
}

void IsothermPainter::draw_regions() {
    QPolygonF dome = polyline(picture_.coexistence);
    QColor fill = ink_.saturation;
    fill.setAlpha(28);
    QPolygonF closed = dome;
    closed << QPointF(dome.back().x(), plot_.bottom() + plot_.height())
           << QPointF(dome.front().x(), plot_.bottom() + plot_.height());
    p_.setPen(Qt::NoPen);
    p_.setBrush(fill);
    p_.drawPolygon(closed);
    p_.setBrush(Qt::NoBrush);
    p_.setPen(QPen(ink_.saturation, 1.6, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    p_.drawPolyline(dome);
    p_.setPen(QPen(ink_.critical, 1.4, Qt::DashLine, Qt::FlatCap));
    p_.drawPolyline(polyline(picture_.critical_isotherm));
    const double y = y_of(picture_.pcr);
    p_.drawLine(QPointF(plot_.left(), y), QPointF(plot_.right(), y));
}

// The names stand along the line of p(cr), where the regions beside the critical isotherm are widest; that of
// the state is bold.
void IsothermPainter::draw_region_names() {
    const double y_cr = y_of(picture_.pcr);
    const auto name = [&](double left, double right, double y, int region, const QString& text) {
        const bool here = picture_.region == region;
        tag({0.5 * (left + right), y}, text, here ? ink_.ink : ink_.hint, here);
    };
    const double x_cr = x_of(picture_.vcr), above = 0.5 * (plot_.top() + y_cr);
    const double low = 0.5 * (y_cr + plot_.bottom());
    name(plot_.left(), x_cr, y_cr - 0.9 * line_, 1, QStringLiteral("supercritical L-phase"));
    name(x_cr, plot_.right(), above, 2, QStringLiteral("supercritical phase"));
    name(x_cr, plot_.right() + 0.3 * plot_.width(), y_cr + 0.9 * line_, 3,
         QStringLiteral("supercritical V-phase"));
    double left = x_cr, right = x_cr;
    for (const VpPoint& point : picture_.coexistence) {
        if (y_of(point.p) > low) continue;
        left = std::min(left, x_of(point.v));
        right = std::max(right, x_of(point.v));
    }
    name(left, right, low, -1, QStringLiteral("L + V"));
}

std::vector<IsothermPainter::Level> IsothermPainter::pressures() const {
    const auto kPa = [](double p) { return short_number(p) + QStringLiteral(" kPa"); };
    const bool saturated = picture_.pLV > 0.0 && std::fabs(picture_.p - picture_.pLV) < 1e-6 * picture_.pLV;
    std::vector<Level> levels;
    if (picture_.p > 0.0)
        levels.push_back(
            {picture_.p,
             (saturated ? QStringLiteral("p = p(LV) = ") : QStringLiteral("p = ")) + kPa(picture_.p),
             QPen(ink_.ink, 1.2, Qt::DashLine, Qt::FlatCap)});
    if (picture_.pLV > 0.0 && !saturated)
        levels.push_back({picture_.pLV, QStringLiteral("p(LV) = ") + kPa(picture_.pLV),
                          QPen(ink_.saturation, 1.2, Qt::DashDotLine, Qt::FlatCap)});
    if (levels.size() == 2 && levels[1].p > levels[0].p) std::swap(levels[0], levels[1]);
    return levels;
}

void IsothermPainter::draw_pressure_lines() {
    for (const Level& level : pressures()) {
        p_.setPen(level.pen);
        p_.drawLine(QPointF(plot_.left(), y_of(level.p)), QPointF(plot_.right(), y_of(level.p)));
    }
}

// The upper line has its text above it, the lower one below; lines nearer than that have one text.
void IsothermPainter::draw_pressure_texts() {
    const std::vector<Level> levels = pressures();
    const auto right = [&](double p, double side, const QString& text) {
        tag({plot_.right() - 1, y_of(p) + side * 0.6 * line_}, text, ink_.ink);
    };
    if (levels.size() == 2 && y_of(levels[1].p) - y_of(levels[0].p) < line_) {
        right(levels[0].p, -1, levels[0].text + QStringLiteral(", ") + levels[1].text);
    } else {
        for (std::size_t i = 0; i < levels.size(); ++i) right(levels[i].p, i == 0 ? -1 : 1, levels[i].text);
    }
    if (with_regions())
        tag({plot_.left() + 1, y_of(picture_.pcr) + 0.6 * line_},
            QStringLiteral("p(cr) = %1 kPa").arg(short_number(picture_.pcr)), ink_.ink);
}

void IsothermPainter::draw_curves() {
    p_.setBrush(Qt::NoBrush);
    for (const IsothermStretch& stretch : picture_.isotherm) {
        p_.setPen(pen_of(stretch.kind));
        p_.drawPolyline(polyline(stretch.points));
    }
    if (!picture_.spinodals.empty() && picture_.spinodals.front().p < picture_.p_low && !with_regions()) {
        const QString text =
            QStringLiteral("minimum below: %1 kPa").arg(short_number(picture_.spinodals.front().p));
        tag({x_of(picture_.spinodals.front().v), plot_.bottom() - 0.8 * line_}, text, ink_.hint);
    }
}

void IsothermPainter::draw_sign(const LegendEntry& entry, const QRectF& where) {
    const QPointF c = where.center();
    p_.setPen(entry.pen);
    p_.setBrush(entry.sign == LegendEntry::Disc ? QBrush(entry.pen.color()) : QBrush(ink_.ground));
    switch (entry.sign) {
        case LegendEntry::Line:
            p_.drawLine(QPointF(where.left(), c.y()), QPointF(where.right(), c.y()));
            break;
        case LegendEntry::Disc:
        case LegendEntry::OpenDisc:
            p_.drawEllipse(c, 4, 4);
            break;
        case LegendEntry::Diamond:
            p_.drawPolygon(QPolygonF(
                {c + QPointF(0, -4.5), c + QPointF(4.5, 0), c + QPointF(0, 4.5), c + QPointF(-4.5, 0)}));
            break;
    }
}

void IsothermPainter::draw_marks() {
    const auto sign_at = [&](const VpPoint& point, LegendEntry::Sign sign, const QColor& colour) {
        const QPointF c = at(point);
        if (!plot_.adjusted(-1, -1, 1, 1).contains(c)) return;
        draw_sign({sign, QPen(colour, 1.4), {}}, QRectF(c - QPointF(5, 5), QSizeF(10, 10)));
    };
    for (const VpPoint& point : picture_.spinodals)
        if (!with_regions()) sign_at(point, LegendEntry::Diamond, ink_.unstable);
    if (with_regions()) sign_at({picture_.vcr, picture_.pcr}, LegendEntry::Diamond, ink_.critical);
    for (const IsothermMark& mark : picture_.marks) {
        const bool stable = mark.meaning == RootMeaning::stable_L || mark.meaning == RootMeaning::stable_V;
        sign_at(mark.at, stable ? LegendEntry::Disc : LegendEntry::OpenDisc, ink_.ink);
        if (!mark.label.empty())
            tag(at(mark.at) + QPointF(0, 1.05 * line_), text_of(mark.label), ink_.ink, stable);
    }
}

double IsothermPainter::legend(double left, double top, double width, bool draw) {
    const QFontMetricsF metrics(p_.font());
    double x = left, y = top;
    for (const LegendEntry& entry : legend_) {
        const double needed = 34 + metrics.horizontalAdvance(entry.text) + 16;
        if (x > left && x + needed - 16 > left + width) {
            x = left;
            y += line_ + 3;
        }
        if (draw) {
            draw_sign(entry, QRectF(x, y, 28, line_));
            text_in(QRectF(x + 34, y, needed, line_), Qt::AlignLeft | Qt::AlignVCenter, entry.text, ink_.ink);
        }
        x += needed;
    }
    return y + line_ + 3 - top;
}

void IsothermPainter::draw_legend() { legend(10, plot_.bottom() + 2 * line_ + 12, size_.width() - 20, true); }

}  // namespace

IsothermInk screen_ink() {
    const QPalette palette = QApplication::palette();
    const bool dark = is_dark(palette);
    IsothermInk ink;
    ink.ground = palette.color(QPalette::Base);
    ink.ink = palette.color(QPalette::Text);
    ink.hint = look_colour(LookColour::Hint);
    ink.axis = look_colour(LookColour::InputBorder);
    ink.grid = look_colour(LookColour::GroupFrame);
    ink.stable = QColor(dark ? 0x5AA9F5 : 0x0069D2);
    ink.metastable = QColor(dark ? 0xFF9A4A : 0xC85A00);
    ink.unstable = QColor(dark ? 0xFF6B81 : 0xD2002D);
    ink.saturation = QColor(dark ? 0x35B892 : 0x00785A);
    ink.critical = QColor(dark ? 0xC08CE0 : 0x7B3FA0);
    return ink;
}

IsothermInk paper_ink() {
    return {Qt::white,        QColor(0x1B1F24), QColor(0x5B6570), QColor(0x3C444D), QColor(0xDDE1E5),
            QColor(0x0069D2), QColor(0xC85A00), QColor(0xD2002D), QColor(0x00785A), QColor(0x7B3FA0)};
}

void draw_isotherm(QPainter& painter, const QSizeF& size, const IsothermPicture& picture,
                   const IsothermInk& ink) {
    painter.save();
    IsothermPainter(painter, size, picture, ink).draw();
    painter.restore();
}

void draw_stretch_key(QPainter& painter, const QRectF& where, Stretch kind, const IsothermInk& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(stretch_pen(kind, ink));
    painter.drawLine(QPointF(where.left(), where.center().y()), QPointF(where.right(), where.center().y()));
    painter.restore();
}

QString isotherm_in_words(const IsothermPicture& picture) {
    if (!picture.available) return QStringLiteral("no state of a cubic EOS");
    QStringList words{QStringLiteral("p-v isotherm of ") + text_of(picture.eos)};
    if (picture.T > 0.0) words << QStringLiteral("T = %1 K").arg(short_number(picture.T));
    if (picture.p > 0.0) words << QStringLiteral("p = %1 kPa").arg(short_number(picture.p));
    if (picture.pLV > 0.0) words << QStringLiteral("p(LV) = %1 kPa").arg(short_number(picture.pLV));
    for (const IsothermMark& mark : picture.marks)
        words << QStringLiteral("%1 = %2 %3 %4")
                     .arg(mark.label.empty() ? QStringLiteral("v") : text_of(mark.label),
                          short_number(mark.at.v), text_of(picture.v_unit),
                          mark.label.empty() ? QString() : text_of(root_remark(mark.meaning)))
                     .trimmed();
    return words.join(QStringLiteral(", "));
}

IsothermView::IsothermView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setToolTip(QStringLiteral("Ctrl+C copies the picture"));
}

void IsothermView::show_picture(IsothermPicture picture) {
    picture_ = std::move(picture);
    setAccessibleDescription(isotherm_in_words(picture_));
    update();
}

QSize IsothermView::sizeHint() const { return {text_width(*this, 74), text_width(*this, 53)}; }

QSize IsothermView::minimumSizeHint() const { return {text_width(*this, 48), text_width(*this, 36)}; }

void IsothermView::copy() const {
    constexpr QSize Sheet(800, 560);
    constexpr int Scale = 2;
    QImage image(Sheet * Scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(Scale);
    QPainter painter(&image);
    painter.setFont(font());
    draw_isotherm(painter, Sheet, picture_, paper_ink());
    painter.end();
    QApplication::clipboard()->setImage(image);
}

void IsothermView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    draw_isotherm(painter, size(), picture_, screen_ink());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(hasFocus() ? QPen(look_colour(LookColour::Accent), 2)
                              : QPen(look_colour(LookColour::ListFrame), 1));
    const double inset = hasFocus() ? 1 : 0.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), 2.5, 2.5);
}

void IsothermView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copy();
    QWidget::keyPressEvent(event);
}

void IsothermView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(QStringLiteral("copy"), this, &IsothermView::copy)->setShortcut(QKeySequence::Copy);
    menu.exec(event->globalPos());
}

}  // namespace quom

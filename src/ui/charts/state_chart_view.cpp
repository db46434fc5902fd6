#include "ui/charts/state_chart_view.h"

#include <qcustomplot.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "diagrams/chart_texts.h"
#include "ui/charts/state_chart_parts.h"
#include "ui/charts/state_chart_plot.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int ClickDistance = 3;   // that the mouse may go between press and release
constexpr double WheelStep = 0.8;  // of the part in view, for one notch
constexpr double KeyZoom = 0.7;    // for one press of + or -
constexpr double CrossStep = 0.02, FineStep = 0.002, PanStep = 0.1;  // of the area, for one arrow
constexpr double Notch = 120;                                        // of a wheel

bool is_pan(const QMouseEvent& event) {
    return event.button() == Qt::MiddleButton ||
           (event.button() == Qt::LeftButton && (event.modifiers() & Qt::ShiftModifier));
}

QPointF direction_of(int key) {
    switch (key) {
        case Qt::Key_Left:
            return {-1, 0};
        case Qt::Key_Right:
            return {1, 0};
        case Qt::Key_Up:
            return {0, 1};
        case Qt::Key_Down:
            return {0, -1};
        default:
            return {};
    }
}

}  // namespace

StateChartView::StateChartView(QWidget* parent)
    : QWidget(parent), plot_(named(new QCustomPlot(this), "plot", QStringLiteral("State chart"))) {
    setMinimumSize(360, 280);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    drawn_ = std::make_unique<StateChartPlot>(*plot_);
    plot_->setMouseTracking(true);
    plot_->setFocusPolicy(Qt::StrongFocus);
    plot_->setCursor(Qt::CrossCursor);
    plot_->setContextMenuPolicy(Qt::CustomContextMenu);
    plot_->installEventFilter(this);
    connect(plot_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { emit menu_wanted(plot_->mapToGlobal(at)); });
    connect(plot_, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) { pressed(*event); });
    connect(plot_, &QCustomPlot::mouseMove, this, [this](QMouseEvent* event) { moved(*event); });
    connect(plot_, &QCustomPlot::mouseRelease, this, [this](QMouseEvent* event) { released(*event); });
    connect(plot_, &QCustomPlot::mouseWheel, this, [this](QWheelEvent* event) { wheel(*event); });
    connect(plot_->selectionRect(), &QCPSelectionRect::accepted, this,
            [this](const QRect& band, QMouseEvent*) {
                const QPointF a = share_of(band.topLeft()), b = share_of(band.bottomRight());
                emit band_drawn(a.x(), a.y(), b.x(), b.y());
            });
}

StateChartView::~StateChartView() = default;

void StateChartView::show_chart(const StateChart& chart, bool black, std::vector<ChartState> marked) {
    chart_ = chart;
    take_cross_away();
    QColor ink = chart_color((black ? black_sheet : light_sheet).ink);
    plot_->selectionRect()->setPen(QPen(ink, 1));
    ink.setAlpha(28);
    plot_->selectionRect()->setBrush(ink);
    drawn_->mark(std::move(marked));
    drawn_->draw(chart_, black);
}

void StateChartView::mark(std::vector<ChartState> states) {
    drawn_->mark(std::move(states));
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

QRectF StateChartView::area() const { return drawn_->area(); }

QPointF StateChartView::share_of(const QPointF& pixel) const {
    const QRectF all = area();
    return {(pixel.x() - all.left()) / all.width(), 1.0 - (pixel.y() - all.top() + 1) / all.height()};
}

void StateChartView::put_cross(const QPointF& share) {
    if (!chart_.exists()) return;
    const QRectF all = area();
    const QPointF pixel(all.left() + share.x() * all.width(),
                        all.top() - 1 + (1.0 - share.y()) * all.height());
    const bool inside = share.x() >= 0 && share.x() <= 1 && share.y() >= 0 && share.y() <= 1;
    if (inside) cross_ = share;
    const ChartState found =
        inside ? state_at(chart_, chart_.x.shown_at(share.x()), chart_.y.shown_at(share.y())) : ChartState{};
    if (!found.exists()) return take_cross_away();
    pointed_ = found;
    drawn_->show_cross(pixel, pointed_);
    emit pointed_at(pointed_);
}

void StateChartView::take_cross_away() {
    const bool had = pointed_.exists();
    pointed_ = {};
    drawn_->hide_cross();
    if (had) emit pointed_at(pointed_);
}

// The chart library looks after the rubber band, which has to be chosen before it sees the button.
void StateChartView::pressed(const QMouseEvent& event) {
    const bool pan = is_pan(event), band = event.button() == Qt::LeftButton && !pan;
    plot_->setSelectionRectMode(band ? QCP::srmCustom : QCP::srmNone);
    press_ = pan || band ? std::optional(event.position()) : std::nullopt;
    panning_ = pan;
    dragged_ = false;
}

void StateChartView::moved(const QMouseEvent& event) {
    by_keys_ = false;
    if (!press_) return put_cross(share_of(event.position()));
    const QPointF by = event.position() - *press_;
    if (!dragged_ && by.manhattanLength() <= ClickDistance) return;
    dragged_ = true;
    take_cross_away();
    if (panning_ && chart_.exists()) drawn_->drag(by);
}

void StateChartView::released(const QMouseEvent& event) {
    if (!press_) return;
    const QPointF by = event.position() - *press_;
    press_.reset();
    if (dragged_) {
        if (panning_) emit move_wanted(-by.x() / area().width(), by.y() / area().height());
        return;
    }
    if (event.button() != Qt::LeftButton || panning_) return;
    put_cross(share_of(event.position()));
    if (pointed_.exists()) emit picked(pointed_);
}

void StateChartView::wheel(const QWheelEvent& event) {
    const QPointF at = share_of(event.position());
    if (press_ || at.x() < 0 || at.x() > 1 || at.y() < 0 || at.y() > 1) return;
    emit zoom_wanted(at.x(), at.y(), std::pow(WheelStep, event.angleDelta().y() / Notch));
    put_cross(at);
}

bool StateChartView::key(const QKeyEvent& event) {
    const QPointF there = cross_;
    const bool has_cross = pointed_.exists();
    const QPointF about = has_cross ? there : QPointF(0.5, 0.5);
    // The state at the cross stays where it is.
    const auto zoom = [&](double factor) {
        emit zoom_wanted(about.x(), about.y(), factor);
        if (has_cross) put_cross(about);
        return true;
    };
    switch (event.key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return zoom(KeyZoom);
        case Qt::Key_Minus:
            return zoom(1.0 / KeyZoom);
        case Qt::Key_0:
            emit whole_wanted();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (pointed_.exists()) emit picked(pointed_);
            return true;
        default:
            break;
    }
    const QPointF direction = direction_of(event.key());
    if (direction.isNull()) return false;
    if (event.modifiers() & Qt::ShiftModifier) {
        emit move_wanted(PanStep * direction.x(), PanStep * direction.y());
        return true;
    }
    // The first arrow shows the cross where it stood.
    const double step = event.modifiers() & Qt::ControlModifier ? FineStep : CrossStep;
    const QPointF to = has_cross || by_keys_ ? there + step * direction : there;
    by_keys_ = true;
    put_cross({std::clamp(to.x(), 0.0, 1.0), std::clamp(to.y(), 0.0, 1.0)});
    return true;
}

void StateChartView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (drawn_ && (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange))
        drawn_->fonts_changed();
}

bool StateChartView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != plot_) return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Leave && !press_) take_cross_away();
    if (event->type() == QEvent::Resize) emit area_changed();
    if (event->type() == QEvent::KeyPress) return key(static_cast<QKeyEvent&>(*event));
    return QWidget::eventFilter(watched, event);
}

}  // namespace quom

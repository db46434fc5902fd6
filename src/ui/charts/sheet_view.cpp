#include "ui/charts/sheet_view.h"

#include <qcustomplot.h>

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QTimer>
#include <utility>

#include "ui/charts/sheet_plot.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int LeastBand = 5;      // of a rubber band [pixels]
constexpr int RestTime = 200;     // after which what was moved is drawn smoothly [ms]
constexpr int ClickDistance = 3;  // that the mouse may go between press and release

bool is_movable(SheetPart part) {
    return part != SheetPart::none && part != SheetPart::area && part != SheetPart::x_title &&
           part != SheetPart::y_title;
}

}  // namespace

SheetView::SheetView(const std::optional<GraphDocument>& sheet, QWidget* parent)
    : QWidget(parent),
      sheet_(sheet),
      plot_(named(new QCustomPlot(this), "Chart2D1", QStringLiteral("Diagram"))),
      hint_(named(new QLabel(this), "lblEmpty")),
      at_rest_(new QTimer(this)) {
    setMinimumSize(320, 240);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_, 0, 0);
    layout->addWidget(hint_, 0, 0, Qt::AlignCenter);
    hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    drawn_ = std::make_unique<SheetPlot>(*plot_);
    plot_->setMouseTracking(true);
    plot_->setFocusPolicy(Qt::StrongFocus);
    plot_->setContextMenuPolicy(Qt::CustomContextMenu);
    plot_->installEventFilter(this);
    connect(plot_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { emit menu_wanted(plot_->mapToGlobal(at)); });
    connect(plot_, &QCustomPlot::mouseMove, this, [this](QMouseEvent* event) { mouse_moved(*event); });
    connect(plot_, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) {
        if (event->button() != Qt::LeftButton) return;
        pressed_ = event->pos();
        const SheetHit part = part_at(event->position());
        if (armed_ || !is_movable(part.part)) return;
        grip_ = Grip{part, event->position() - box_of(part).topLeft()};
    });
    connect(plot_, &QCustomPlot::mouseRelease, this, [this](QMouseEvent* event) { mouse_released(*event); });
    connect(plot_->selectionRect(), &QCPSelectionRect::accepted, this,
            [this](const QRect& band, QMouseEvent*) { take_band(band.normalized()); });
    at_rest_->setSingleShot(true);
    at_rest_->setInterval(RestTime);
    connect(at_rest_, &QTimer::timeout, this, [this] { drawn_->draw_fast(false); });
    refresh();
}

SheetView::~SheetView() = default;

void SheetView::refresh() {
    if (!sheet_) return;
    drawn_->draw(*sheet_);
    show_hint();
}

// On screen alone: no picture of the sheet has it.
void SheetView::show_hint() {
    const DiagramRec& diagram = sheet_->diagram;
    const bool empty = is_empty(*sheet_) && diagram.kind != Kind::none;
    hint_->setVisible(empty);
    if (!empty) return;
    const bool asks = diagram.section == Section::isothermal || diagram.section == Section::isobaric ||
                      diagram.section == Section::isochoric;
    hint_->setText(asks ? QStringLiteral("No curve yet: enter a value and press Draw curve")
                        : QStringLiteral("No curve yet: press Draw curve"));
    QFont font = this->font();
    font.setPointSizeF(10.5);
    hint_->setFont(font);
    const Color ink = sheet_->colors.labels;
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, QColor(ink.r, ink.g, ink.b, 170));
    hint_->setPalette(colours);
}

void SheetView::follow() {
    if (!sheet_) return;
    if (!at_rest_->isActive()) drawn_->draw_fast(true);
    drawn_->draw(*sheet_, true);
    show_hint();
    at_rest_->start();
}

void SheetView::arm_zoom(bool on) {
    if (!on) plot_->selectionRect()->cancel();
    armed_ = on;
    plot_->setSelectionRectMode(on ? QCP::srmCustom : QCP::srmNone);
    plot_->setCursor(on ? Qt::CrossCursor : Qt::ArrowCursor);
}

QRectF SheetView::area() const { return drawn_->area(); }

std::optional<QPointF> SheetView::place_of(const SheetPoint& shown) const {
    if (!sheet_) return std::nullopt;
    const QRectF area = drawn_->area();
    const auto at = pixel_of(*sheet_, {area.width(), area.height()}, shown);
    if (!at || at->x < 0 || at->x > area.width() || at->y < 0 || at->y > area.height()) return std::nullopt;
    return area.topLeft() + QPointF(at->x, at->y);
}

std::optional<PointRef> SheetView::point_at(const QPointF& pixel) const {
    const QRectF area = drawn_->area();
    if (!sheet_ || !area.contains(pixel)) return std::nullopt;
    const QPointF at = pixel - area.topLeft();
    return nearest_point(*sheet_, {area.width(), area.height()}, {at.x(), at.y()});
}

void SheetView::mouse_moved(const QMouseEvent& event) {
    const QPointF at = event.position();
    if (drag_to(event)) return;
    if (!sheet_ || !drawn_->area().contains(at)) {
        emit mouse_left();
        return;
    }
    const auto point = point_at(at);
    if (!armed_)
        plot_->setCursor(is_movable(part_at(at).part) ? Qt::OpenHandCursor
                         : !point                     ? Qt::ArrowCursor
                         : point->of_set              ? Qt::PointingHandCursor
                                                      : Qt::CrossCursor);
    emit mouse_at(plot_->xAxis->pixelToCoord(at.x()), plot_->yAxis->pixelToCoord(at.y()), point);
}

void SheetView::mouse_released(const QMouseEvent& event) {
    const auto pressed = std::exchange(pressed_, std::nullopt);
    grip_.reset();
    if (end_drag(false)) return;
    if (armed_ || event.button() != Qt::LeftButton || !pressed) return;
    if ((event.pos() - *pressed).manhattanLength() > ClickDistance) return;
    if (const auto point = point_at(event.position())) emit point_clicked(*point);
}

// True while something is dragged.
bool SheetView::drag_to(const QMouseEvent& event) {
    if (!grip_ || !pressed_ || !sheet_ || !(event.buttons() & Qt::LeftButton)) return false;
    if (!dragging_) {
        if ((event.pos() - *pressed_).manhattanLength() <= ClickDistance) return false;
        dragging_ = true;
        plot_->setCursor(Qt::ClosedHandCursor);
        emit drag_began(grip_->part);
    }
    emit dragged(grip_->part, event.position() - grip_->in_box);
    return true;
}

bool SheetView::end_drag(bool given_up) {
    if (!std::exchange(dragging_, false)) return false;
    grip_.reset();
    pressed_.reset();
    plot_->setCursor(Qt::ArrowCursor);
    emit drag_ended(given_up);
    return true;
}

void SheetView::take_band(const QRect& band) {
    const QRectF area = drawn_->area().intersected(QRectF(band));
    if (!sheet_ || area.width() < LeastBand || area.height() < LeastBand) return;
    const auto x = [&](double pixel) { return static_cast<float>(plot_->xAxis->pixelToCoord(pixel)); };
    const auto y = [&](double pixel) { return static_cast<float>(plot_->yAxis->pixelToCoord(pixel)); };
    emit zoomed(
        {.XMin = x(area.left()), .YMin = y(area.bottom()), .XMax = x(area.right()), .YMax = y(area.top())});
}

void SheetView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!drawn_ || (event->type() != QEvent::FontChange && event->type() != QEvent::ApplicationFontChange))
        return;
    drawn_->fonts_changed();
    refresh();
}

bool SheetView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == plot_ && dragging_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        return end_drag(true);
    if (watched == plot_ && event->type() == QEvent::Leave) emit mouse_left();
    return QWidget::eventFilter(watched, event);
}

}  // namespace quom

// The sheet on screen: drawn by the drawing routine, read by the mouse.
#pragma once
#include <QWidget>
#include <memory>
#include <optional>

#include "diagrams/graph_view.h"
#include "ui/charts/sheet_plot.h"

class QCustomPlot;
class QLabel;
class QMouseEvent;
class QTimer;

namespace quom {

class SheetView : public QWidget {
    Q_OBJECT
 public:
    // Shows the sheet, while there is one, as it is at each refresh.
    explicit SheetView(const std::optional<GraphDocument>& sheet, QWidget* parent = nullptr);
    ~SheetView() override;

    void refresh();
    // The same while something moves: at the next event and without smoothing, which follows at rest.
    void follow();
    // While armed, the left button draws a rubber band; its area comes as `zoomed`, and the next one may
    // follow.
    void arm_zoom(bool on);
    bool zoom_armed() const { return armed_; }
    // The area of the axes, in pixels of the view.
    QRectF area() const;
    // Where a point of the sheet, as shown, stands in the view; none outside the axes.
    std::optional<QPointF> place_of(const SheetPoint& shown) const;
    // What lies at a pixel of the view, and where that stands.
    SheetHit part_at(const QPointF& pixel) const { return drawn_->part_at(pixel); }
    QRectF box_of(const SheetHit& part) const { return drawn_->box_of(part); }
    std::optional<PointRef> point_at(const QPointF& pixel) const;
    QSize sizeHint() const override { return {640, 440}; }

 signals:
    void mouse_at(double shown_x, double shown_y, const std::optional<quom::PointRef>& point);
    void mouse_left();
    void zoomed(const quom::CurveRange& shown);
    void point_clicked(const quom::PointRef& point);
    void menu_wanted(const QPoint& global);
    // A text, a label or the legend is dragged with the left button: where its upper left corner goes to.
    // Escape gives the drag up.
    void drag_began(const quom::SheetHit& part);
    void dragged(const quom::SheetHit& part, const QPointF& corner);
    void drag_ended(bool given_up);

 protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void show_hint();
    void mouse_moved(const QMouseEvent& event);
    void mouse_released(const QMouseEvent& event);
    void take_band(const QRect& band);
    bool drag_to(const QMouseEvent& event);
    bool end_drag(bool given_up);

    const std::optional<GraphDocument>& sheet_;
    QCustomPlot* plot_;
    std::unique_ptr<SheetPlot> drawn_;
    QLabel* hint_;  // of what to do on an empty sheet
    QTimer* at_rest_;
    bool armed_ = false;
    std::optional<QPoint> pressed_;
    struct Grip {
        SheetHit part;
        QPointF in_box;  // from the corner of what is dragged
    };
    std::optional<Grip> grip_;
    bool dragging_ = false;
};

}  // namespace quom

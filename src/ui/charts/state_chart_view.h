// A state chart on screen: drawn by the drawing routine, read and zoomed by mouse and keys. What is wanted is
// told in shares of the area of the axes, X to the right, Y upwards.
#pragma once
#include <QWidget>
#include <memory>
#include <optional>

#include "diagrams/state_chart.h"

class QCustomPlot;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace quom {

class StateChartPlot;

class StateChartView : public QWidget {
    Q_OBJECT
 public:
    explicit StateChartView(QWidget* parent = nullptr);
    ~StateChartView() override;

    void show_chart(const StateChart& chart, bool black, std::vector<ChartState> marked);
    void mark(std::vector<ChartState> states);
    const StateChart& chart() const { return chart_; }
    const StateChartPlot& drawn() const { return *drawn_; }
    // The area of the axes, in pixels of the view.
    QRectF area() const;
    // The state under the cross; none without one.
    const ChartState& pointed() const { return pointed_; }
    QSize sizeHint() const override { return {900, 620}; }

 signals:
    void pointed_at(const quom::ChartState& state);  // none: the pointer left the area
    void picked(const quom::ChartState& state);      // clicked, or Enter
    void band_drawn(double X1, double Y1, double X2, double Y2);
    void zoom_wanted(double X, double Y, double factor);
    void move_wanted(double dX, double dY);
    void whole_wanted();
    void area_changed();
    void menu_wanted(const QPoint& global);

 protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void pressed(const QMouseEvent& event);
    void moved(const QMouseEvent& event);
    void released(const QMouseEvent& event);
    void wheel(const QWheelEvent& event);
    bool key(const QKeyEvent& event);
    void put_cross(const QPointF& share);
    void take_cross_away();
    QPointF share_of(const QPointF& pixel) const;

    QCustomPlot* plot_;
    std::unique_ptr<StateChartPlot> drawn_;
    StateChart chart_;
    ChartState pointed_;
    QPointF cross_{0.5, 0.5};  // share where it stood last
    bool by_keys_ = false;     // it was moved by keys last
    std::optional<QPointF> press_;
    bool panning_ = false, dragged_ = false;
};

}  // namespace quom

// The tank drawn: an upright cylinder, so that the height of its level is the share of the volume.
#pragma once
#include <QWidget>

#include "report/tank_view.h"

class QPainter;

namespace quom {

// Draws the tank with the font of the painter and the colours of the theme into (0, 0, size).
void draw_tank(QPainter& painter, const QSizeF& size, const TankView& view);

class TankPicture : public QWidget {
    Q_OBJECT
 public:
    explicit TankPicture(QWidget* parent = nullptr);
    void show_tank(TankView view);
    const TankView& tank() const { return view_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    TankView view_;
};

}  // namespace quom

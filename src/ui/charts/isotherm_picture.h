// The p-v isotherm drawn: one routine for the screen, the clipboard and paper, and the widget that shows it.
#pragma once
#include <QColor>
#include <QWidget>

#include "calc/isotherm_points.h"

class QPainter;

namespace quom {

struct IsothermInk {
    QColor ground, ink, hint, axis, grid;
    QColor stable, metastable, unstable, saturation, critical;
};
IsothermInk screen_ink();  // of the theme in force
IsothermInk paper_ink();   // dark ink on white

// Draws the picture with the font of the painter into (0, 0, size): axes with units, the isotherm by its
// stretches, the roots or the state, and the legend below.
void draw_isotherm(QPainter& painter, const QSizeF& size, const IsothermPicture& picture,
                   const IsothermInk& ink);
// Draws the sign of a stretch in the legend.
void draw_stretch_key(QPainter& painter, const QRectF& where, Stretch kind, const IsothermInk& ink);
// The picture in words.
QString isotherm_in_words(const IsothermPicture& picture);

class IsothermView : public QWidget {
    Q_OBJECT
 public:
    explicit IsothermView(QWidget* parent = nullptr);
    void show_picture(IsothermPicture picture);
    const IsothermPicture& picture() const { return picture_; }
    void copy() const;  // as a picture on paper
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

 private:
    IsothermPicture picture_;
};

}  // namespace quom

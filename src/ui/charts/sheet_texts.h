// Texts around the axes of a sheet: heading, titles, footer.
#pragma once
#include <qcustomplot.h>

#include <QFont>
#include <QStringList>

#include "diagrams/sheet_design.h"

namespace quom {

// A text with a place in the layout, in lines as the picture has room; nothing and without size when empty.
class SheetLine : public QCPLayoutElement {
 public:
    // gap: pixels below it, or beside it when it is turned. over: what it is centred over, none: the picture.
    SheetLine(QCustomPlot& plot, int gap, const QCPAxisRect* over = nullptr);

    void set(const QString& text, const QFont& font, const QColor& color,
             TextTurn turn = TextTurn::horizontal, Qt::Alignment alignment = Qt::AlignHCenter);
    const QStringList& lines() const { return lines_; }
    QRectF text_box() const;  // as it was drawn last; empty without a text

    void update(UpdatePhase phase) override;
    QSize minimumOuterSizeHint() const override;
    QSize maximumOuterSizeHint() const override;

 protected:
    void draw(QCPPainter* painter) override;

 private:
    double line_height() const;
    QSizeF text_size() const;  // unturned
    int gap_;
    const QCPAxisRect* over_;
    QString text_;
    QFont font_;
    QColor color_;
    TextTurn turn_ = TextTurn::horizontal;
    Qt::Alignment alignment_ = Qt::AlignHCenter;
    QStringList lines_;
};

// A free text at a share of the width and the height of the picture; kept within it.
class SheetFreeText : public QCPAbstractItem {
 public:
    explicit SheetFreeText(QCustomPlot& plot);
    void set(const SheetText& text, const QFont& font, const QColor& color);
    QRectF box() const;
    double selectTest(const QPointF& pos, bool only_selectable, QVariant* details = nullptr) const override;

 protected:
    void draw(QCPPainter* painter) override;

 private:
    double x_ = 0, y_ = 0;
    QStringList lines_;
    QFont font_;
    QColor color_;
};

}  // namespace quom

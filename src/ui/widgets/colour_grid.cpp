#include "ui/widgets/colour_grid.h"

#include <QGridLayout>
#include <QPainter>
#include <QToolButton>
#include <QWidgetAction>

#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int Columns = 8, Side = 18;

}  // namespace

QIcon swatch(const QColor& colour, int side, qreal ratio, bool in_use) {
    QPixmap picture(QSize(side, side) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(colour);
    if (in_use) {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QRectF(side / 3.0, side / 3.0, side / 3.0, side / 3.0));
    }
    return picture;
}

ColourGrid::ColourGrid(QWidget* parent) : QMenu(parent) {
    auto* grid = new QWidget(this);
    auto* layout = new QGridLayout(grid);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(2);
    for (int i = 0; i < static_cast<int>(SlotColors); ++i) {
        const QString name = QStringLiteral("C.%1").arg(i + 1);
        auto* button = named(new QToolButton(grid), qPrintable(QStringLiteral("colour_%1").arg(i + 1)), name);
        button->setToolTip(name);
        button->setAutoRaise(true);
        button->setIconSize(QSize(Side, Side));
        layout->addWidget(button, i / Columns, i % Columns);
        colour[i] = button;
        connect(button, &QToolButton::clicked, this, [this, i] {
            close();
            emit picked(shown_colour(slot_color(i + 1)));
        });
    }
    auto* colours = new QWidgetAction(this);
    colours->setDefaultWidget(grid);
    addAction(colours);
    addSeparator();
    QAction* more = addAction(QStringLiteral("more colours ..."), this, &ColourGrid::more_wanted);
    more->setObjectName(QStringLiteral("more_colours"));
}

void ColourGrid::show_slots(const GraphDocument& sheet) {
    for (int i = 0; i < static_cast<int>(SlotColors); ++i)
        colour[i]->setIcon(swatch(shown_colour(slot_color(i + 1)), Side, devicePixelRatioF(),
                                  !sheet.curve(i + 1).CurveFree));
}

}  // namespace quom

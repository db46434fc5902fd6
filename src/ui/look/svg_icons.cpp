#include "ui/look/svg_icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include "ui/look/look.h"

namespace quom {

namespace {

// Renders the file anew for every size and mode; the colour texts of the file stand for roles of the theme.
class SvgIconEngine : public QIconEngine {
 public:
    explicit SvgIconEngine(QByteArray svg) : svg_(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const bool disabled = mode == QIcon::Disabled;
        const bool selected = mode == QIcon::Selected;
        const QColor marked = QApplication::palette().color(QPalette::Active, QPalette::HighlightedText);
        const QColor off = QApplication::palette().color(QPalette::Disabled, QPalette::WindowText);
        QByteArray svg = svg_;
        const std::pair<const char*, LookColour> inks[] = {{"#2B333C", LookColour::IconInk},
                                                           {"#1F6FB2", LookColour::Accent},
                                                           {"#B87400", LookColour::WarningIcon},
                                                           {"#B3261E", LookColour::ErrorIcon}};
        for (const auto& [text, role] : inks)
            svg.replace(text, (disabled ? off : selected ? marked : look_colour(role)).name().toLatin1());
        QSvgRenderer renderer(svg);
        painter->save();
        if (disabled) painter->setOpacity(0.55);
        renderer.render(painter, rect);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new SvgIconEngine(svg_); }

 private:
    QByteArray svg_;
};

}  // namespace

QIcon svg_icon(const QString& name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new SvgIconEngine(file.readAll()));
}

}  // namespace quom

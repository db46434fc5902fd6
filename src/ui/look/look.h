// The look of all windows: one style, one palette, light or dark; fonts and widths.
#pragma once
#include <QColor>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>

class QApplication;
class QWidget;

namespace quom {

// Colours that no role of QPalette stands for.
enum class LookColour {
    InputBorder,
    GroupFrame,
    ListFrame,
    ResultGround,
    SectionHead,
    Ruler,
    Accent,
    IconInk,
    Hint,
    MdiGround,
    MdiHint,
    TitleActive,
    TitleActiveText,
    TitleInactive,
    TitleInactiveText,
    WarningIcon,
    ErrorIcon,
    WarningText,
    WarningGround,
    ErrorText,
    ErrorGround,
    Count,
};

QPalette makePalette(bool dark);
// True when the palette is a dark one: its ground darker than its text.
bool is_dark(const QPalette& palette);
// The colour in the theme of the application in force.
QColor look_colour(LookColour role);
// A text colour that is fixed for light grounds, as it is shown in the theme in force: black becomes the text
// colour, the two dark reds become light ones on dark.
QColor shown_text_colour(const QColor& on_light);

// Sets style, palette, window icon and the rules of high resolution. Dark when QUOM_THEME is "dark", or when
// it is not set and the platform's own palette is dark.
void apply_look(QApplication& app);

QFont fixed_font();                                       // fixed width, size of the interface font
QFont head_font();                                        // interface font, DemiBold
int text_width(const QWidget& widget, int digits);        // width of that many digits in the widget's font
QSize natural_size(QWidget& widget, const QSize& first);  // first, but never below the size hint

class LookStyle : public QProxyStyle {
 public:
    LookStyle() : QProxyStyle(QStringLiteral("fusion")) {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;

 private:
    struct Bordered {
        QPalette before;
        QColor border;
        QPalette palette;
    };
    QPalette bordered_palette(const QStyleOption& option) const;
    void drawTitleBar(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;
    void drawGroupBox(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;

    mutable QList<Bordered> bordered_;
};

}  // namespace quom

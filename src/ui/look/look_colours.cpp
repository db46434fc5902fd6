#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QWidget>
#include <QtMath>
#include <iterator>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"

namespace quom {

namespace {

struct Pair {
    QRgb light, dark;
    QRgb of(bool is_dark) const { return is_dark ? dark : light; }
};

struct RolePair {
    QPalette::ColorRole role;
    Pair colour;
};

constexpr Pair Text = {0xFF1B1F24, 0xFFE3E6E9};

constexpr RolePair Roles[] = {
    {QPalette::Window, {0xFFF0F2F4, 0xFF26292D}},
    {QPalette::Base, {0xFFFFFFFF, 0xFF1A1C1F}},
    {QPalette::AlternateBase, {0xFFF5F7F9, 0xFF212428}},
    {QPalette::Text, Text},
    {QPalette::WindowText, Text},
    {QPalette::ButtonText, Text},
    {QPalette::BrightText, {0xFFFFFFFF, 0xFFFFFFFF}},
    {QPalette::Button, {0xFFF7F8F9, 0xFF34383D}},
    {QPalette::Highlight, {0xFF1F5FA8, 0xFF2F6FBA}},
    {QPalette::HighlightedText, {0xFFFFFFFF, 0xFFFFFFFF}},
    {QPalette::Link, {0xFF1F5FA8, 0xFF7DB3F2}},
    {QPalette::LinkVisited, {0xFF1F5FA8, 0xFF7DB3F2}},
    {QPalette::PlaceholderText, {0xFF5B6570, 0xFF9AA3AD}},
    {QPalette::ToolTipBase, {0xFFFFFFFF, 0xFF3A3F45}},
    {QPalette::ToolTipText, Text},
    {QPalette::Light, {0xFFFFFFFF, 0xFF42474D}},
    {QPalette::Midlight, {0xFFE6E9EC, 0xFF3A3E44}},
    {QPalette::Mid, {0xFFB9C0C8, 0xFF4A5058}},
    {QPalette::Dark, {0xFF8C949D, 0xFF151719}},
    {QPalette::Shadow, {0xFF6C757F, 0xFF000000}},
};

constexpr Pair DisabledText = {0xFF858D96, 0xFF767E87};
constexpr RolePair DisabledRoles[] = {
    {QPalette::Text, DisabledText},
    {QPalette::WindowText, DisabledText},
    {QPalette::ButtonText, DisabledText},
    {QPalette::Base, {0xFFF0F2F4, 0xFF26292D}},
    {QPalette::Button, {0xFFECEEF0, 0xFF2A2E32}},
    {QPalette::Highlight, {0xFFC9D8E8, 0xFF3A5068}},
    {QPalette::HighlightedText, Text},
};

// In the order of LookColour.
constexpr Pair Colours[] = {
    {0xFF7F8892, 0xFF737B85},  // InputBorder
    {0xFFCDD2D8, 0xFF41464C},  // GroupFrame
    {0xFFB3BAC2, 0xFF4A5058},  // ListFrame
    {0xFFF7F8FA, 0xFF2C3035},  // ResultGround
    {0xFF1F4E86, 0xFF8FBDF0},  // SectionHead
    {0xFF9AA3AD, 0xFF6C757F},  // Ruler
    {0xFF1F6FB2, 0xFF6CB0F0},  // Accent
    {0xFF2B333C, 0xFFD5DADF},  // IconInk
    {0xFF5B6570, 0xFF9AA3AD},  // Hint
    {0xFFD5DADF, 0xFF151719},  // MdiGround
    {0xFF4A535D, 0xFF8E97A1},  // MdiHint
    {0xFFC3D3E4, 0xFF31465E},  // TitleActive
    {0xFF14202C, 0xFFFFFFFF},  // TitleActiveText
    {0xFFE3E7EB, 0xFF2C3035},  // TitleInactive
    {0xFF59626C, 0xFFA9B1BA},  // TitleInactiveText
    {0xFFB87400, 0xFFE0A030},  // WarningIcon
    {0xFFB3261E, 0xFFFF8F85},  // ErrorIcon
    {0xFF8A5600, 0xFFE0A030},  // WarningText
    {0xFFFFF4DC, 0xFF3A3320},  // WarningGround
    {0xFFB3261E, 0xFFFF8F85},  // ErrorText
    {0xFFFCEBEA, 0xFF3D2625},  // ErrorGround
};
static_assert(std::size(Colours) == static_cast<std::size_t>(LookColour::Count));

constexpr struct {
    QRgb light, dark;
} FixedTextColours[] = {
    {0xFF800000, 0xFFFF8F85},  // faults in result boxes and lists
    {0xFFAA0A0A, 0xFFFF9C8F},  // region of the state
};

bool platform_is_dark(const QApplication& app) {
    const QByteArray wanted = qgetenv("QUOM_THEME").toLower();
    if (wanted == "dark" || wanted == "light") return wanted == "dark";
    return is_dark(app.palette());
}

}  // namespace

QPalette makePalette(bool dark) {
    QPalette palette;
    for (const RolePair& row : Roles) palette.setColor(QPalette::All, row.role, QColor(row.colour.of(dark)));
    for (const RolePair& row : DisabledRoles)
        palette.setColor(QPalette::Disabled, row.role, QColor(row.colour.of(dark)));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, dark ? QColor(0x3A5068) : QColor(0xC9D8E8));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, QColor(Text.of(dark)));
    return palette;
}

bool is_dark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor look_colour(LookColour role) {
    return QColor(Colours[static_cast<int>(role)].of(is_dark(QApplication::palette())));
}

QColor shown_text_colour(const QColor& on_light) {
    if (on_light == Qt::black) return QApplication::palette().color(QPalette::Text);
    if (is_dark(QApplication::palette()))
        for (const auto& row : FixedTextColours)
            if (on_light.rgb() == row.light) return QColor(row.dark);
    return on_light;
}

void apply_look(QApplication& app) {
    const bool dark = platform_is_dark(app);
    QApplication::setStyle(new LookStyle);
    QApplication::setPalette(makePalette(dark));
    QApplication::setWindowIcon(svg_icon(QStringLiteral("app")));
}

QFont fixed_font() {
    QFont font;
    font.setFamilies(
        {QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Liberation Mono"), QStringLiteral("monospace")});
    font.setStyleHint(QFont::TypeWriter);
    font.setPointSizeF(QApplication::font().pointSizeF());
    return font;
}

QFont head_font() {
    QFont font = QApplication::font();
    font.setWeight(QFont::DemiBold);
    return font;
}

int text_width(const QWidget& widget, int digits) {
    return qCeil(QFontMetricsF(widget.font()).horizontalAdvance(QLatin1Char('0')) * digits);
}

QSize natural_size(QWidget& widget, const QSize& first) {
    widget.ensurePolished();
    return first.expandedTo(widget.sizeHint()).expandedTo(widget.minimumSizeHint());
}

}  // namespace quom

#include <QAbstractButton>
#include <QPainter>
#include <QStyleOption>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"

namespace quom {

namespace {

constexpr double Radius = 2.5;

// For its time the palette of the option is another one.
class BorderedOption {
 public:
    BorderedOption(const QStyleOption* option, const QPalette& bordered)
        : option_(const_cast<QStyleOption*>(option)), before_(option->palette) {
        option_->palette = bordered;
    }
    ~BorderedOption() { option_->palette = before_; }
    BorderedOption(const BorderedOption&) = delete;
    BorderedOption& operator=(const BorderedOption&) = delete;

 private:
    QStyleOption* option_;
    QPalette before_;
};

void draw_ring(QPainter* painter, const QRect& rect, const QColor& colour, double width) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, width));
    painter->setBrush(Qt::NoBrush);
    const double inset = width / 2;
    painter->drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), Radius, Radius);
    painter->restore();
}

void draw_focus(QPainter* painter, const QRect& rect) {
    draw_ring(painter, rect, look_colour(LookColour::Accent), 2);
}

}  // namespace

// Fusion draws every outline as Window darkened by 140: the palette holds such a Window that the outline
// comes out as wanted. Fusion also keeps what it has drawn by the key of the palette, so equal palettes have
// to be one and the same, or each drawing would be kept anew.
QPalette LookStyle::bordered_palette(const QStyleOption& option) const {
    const bool enabled = option.state & State_Enabled;
    const QColor border = look_colour(enabled ? LookColour::InputBorder : LookColour::GroupFrame);
    for (const Bordered& known : bordered_)
        if (known.border == border && known.before == option.palette) return known.palette;
    constexpr qsizetype most = 24;
    if (bordered_.size() >= most) bordered_.removeFirst();
    Bordered made{option.palette, border, option.palette};
    made.palette.setColor(QPalette::Window, border.lighter(140));
    bordered_.append(made);
    return made.palette;
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
        case PE_FrameLineEdit:
        case PE_IndicatorCheckBox:
        case PE_IndicatorRadioButton:
        case PE_PanelButtonCommand: {
            {
                const BorderedOption bordered(option, bordered_palette(*option));
                QProxyStyle::drawPrimitive(element, option, painter, widget);
            }
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            const bool focus = option->state & State_HasFocus;
            if (element == PE_PanelButtonCommand && button && !focus && (option->state & State_Enabled) &&
                (button->features & QStyleOptionButton::DefaultButton))
                draw_ring(painter, option->rect, look_colour(LookColour::Accent), 1);
            if (focus && (element == PE_FrameLineEdit || element == PE_PanelButtonCommand))
                draw_focus(painter, option->rect);
            return;
        }
        case PE_FrameFocusRect:
            // Buttons and boxes bear the ring on their outline already.
            if (widget && (widget->inherits("QPushButton") || widget->inherits("QComboBox"))) return;
            draw_ring(painter, option->rect, look_colour(LookColour::Accent), 1);
            return;
        case PE_FrameGroupBox:
            draw_ring(painter, option->rect, look_colour(LookColour::GroupFrame), 1);
            return;
        case PE_Frame:
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
                frame && frame->lineWidth > 0) {
                draw_ring(painter, option->rect, look_colour(LookColour::ListFrame), 1);
                if (option->state & State_HasFocus) draw_focus(painter, option->rect);
                return;
            }
            break;
        case PE_FrameWindow:
            painter->save();
            painter->setPen(look_colour(LookColour::InputBorder));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
            return;
        case PE_IndicatorToolBarSeparator:
            painter->fillRect(option->rect.center().x(), option->rect.top() + 6, 1,
                              option->rect.height() - 12, look_colour(LookColour::ListFrame));
            return;
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item && item->menuItemType == QStyleOptionMenuItem::Separator) {
        painter->fillRect(item->rect.left() + 8, item->rect.center().y(), item->rect.width() - 16, 1,
                          look_colour(LookColour::ListFrame));
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (control == CC_TitleBar) return drawTitleBar(option, painter, widget);
    if (control == CC_GroupBox) return drawGroupBox(option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox) {
        {
            const BorderedOption bordered(option, bordered_palette(*option));
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
        if (option->state & State_HasFocus) draw_focus(painter, option->rect);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

// Frame by the base style; the title by hand, because a bold font set on the box would make its children
// bold.
void LookStyle::drawGroupBox(const QStyleOptionComplex* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
    if (!box) return;
    if (box->subControls & SC_GroupBoxFrame) {
        QStyleOptionFrame frame;
        frame.QStyleOption::operator=(*box);
        frame.rect = box->rect;
        proxy()->drawPrimitive(PE_FrameGroupBox, &frame, painter, widget);
    }
    if (box->text.isEmpty() || !(box->subControls & SC_GroupBoxLabel)) return;
    painter->save();
    QFont font = painter->font();
    font.setWeight(QFont::DemiBold);
    painter->setFont(font);
    const QRect label(box->rect.left() + 10, box->rect.top() + 6, box->rect.width() - 20,
                      QFontMetrics(font).height());
    proxy()->drawItemText(painter, label, Qt::TextShowMnemonic | Qt::AlignLeft | Qt::AlignVCenter,
                          box->palette, box->state & State_Enabled, box->text, QPalette::WindowText);
    painter->restore();
}

void LookStyle::drawTitleBar(const QStyleOptionComplex* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (!bar) return;
    const bool active = bar->titleBarState & State_Active;
    const QColor ink = look_colour(active ? LookColour::TitleActiveText : LookColour::TitleInactiveText);
    painter->save();
    painter->fillRect(bar->rect, look_colour(active ? LookColour::TitleActive : LookColour::TitleInactive));
    painter->setPen(look_colour(LookColour::InputBorder));
    painter->drawLine(bar->rect.bottomLeft(), bar->rect.bottomRight());

    const auto rect_of = [&](SubControl part) {
        return proxy()->subControlRect(CC_TitleBar, bar, part, widget);
    };
    if (bar->subControls & SC_TitleBarLabel) {
        QFont font = painter->font();
        font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        painter->setPen(ink);
        const QRect label = rect_of(SC_TitleBarLabel).adjusted(6, 0, -4, 0);
        painter->drawText(label, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          QFontMetrics(font).elidedText(bar->text, Qt::ElideRight, label.width()));
    }
    if ((bar->subControls & SC_TitleBarSysMenu) && !bar->icon.isNull())
        bar->icon.paint(painter, rect_of(SC_TitleBarSysMenu));

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto draw = [&](SubControl part, bool shown, auto glyph) {
        if (!(bar->subControls & part) || !shown) return;
        const QRect rect = rect_of(part);
        if (!rect.isValid()) return;
        if ((bar->activeSubControls & part) && (bar->state & State_MouseOver)) {
            QColor ground = ink;
            ground.setAlpha(40);
            painter->fillRect(rect, ground);
        }
        glyph(QRectF(QPointF(rect.center()) + QPointF(-3.5, -3.5), QSizeF(8, 8)));
    };
    const bool minimized = bar->titleBarState & Qt::WindowMinimized;
    const bool maximized = bar->titleBarState & Qt::WindowMaximized;
    const auto flags = bar->titleBarFlags;
    draw(SC_TitleBarCloseButton, flags & Qt::WindowSystemMenuHint, [&](QRectF r) {
        painter->drawLine(r.topLeft(), r.bottomRight());
        painter->drawLine(r.topRight(), r.bottomLeft());
    });
    draw(SC_TitleBarMaxButton, (flags & Qt::WindowMaximizeButtonHint) && !maximized,
         [&](QRectF r) { painter->drawRect(r); });
    draw(SC_TitleBarMinButton, (flags & Qt::WindowMinimizeButtonHint) && !minimized,
         [&](QRectF r) { painter->drawLine(r.bottomLeft(), r.bottomRight()); });
    draw(SC_TitleBarNormalButton, minimized || maximized, [&](QRectF r) {
        painter->drawRect(r.adjusted(0, 2.5, -2.5, 0));
        painter->drawPolyline(
            QPolygonF({r.topLeft() + QPointF(2.5, 2.5), r.topLeft() + QPointF(2.5, 0), r.topRight(),
                       r.bottomRight() - QPointF(0, 2.5), r.bottomRight() - QPointF(2.5, 2.5)}));
    });
    painter->restore();
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_LayoutLeftMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutBottomMargin:
            return 10;
        case PM_LayoutHorizontalSpacing:
            return 8;
        case PM_LayoutVerticalSpacing:
            return 6;
        case PM_TitleBarHeight:
            return 26;
        case PM_MdiSubWindowFrameWidth:
            return 1;
        case PM_ToolBarIconSize:
            return 24;
        case PM_ToolBarItemSpacing:
            return 2;
        case PM_MessageBoxIconSize:
            return 48;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    switch (hint) {
        case SH_WindowFrame_Mask:
        case SH_EtchDisabledText:
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton:
            return (base + QSize(10, 0)).expandedTo(QSize(0, 26));
        case CT_LineEdit:
        case CT_ComboBox:
            return base.expandedTo(QSize(0, 24));
        case CT_GroupBox: {
            // The title is drawn bold by hand; the box measures it in its own font.
            const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
            const int title = box ? QFontMetrics(head_font()).horizontalAdvance(box->text) + 24 : 0;
            return base.expandedTo(QSize(title, 0));
        }
        case CT_MenuBarItem:
            return base + QSize(0, 4);
        default:
            return base;
    }
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
        case SP_MessageBoxInformation:
            return svg_icon(QStringLiteral("message-info"));
        case SP_MessageBoxWarning:
            return svg_icon(QStringLiteral("message-warning"));
        case SP_MessageBoxCritical:
            return svg_icon(QStringLiteral("message-error"));
        case SP_MessageBoxQuestion:
            return svg_icon(QStringLiteral("message-question"));
        case SP_TitleBarMenuButton:
            return svg_icon(QStringLiteral("app"));
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
    }
}

}  // namespace quom

#include "ui/windows/design_box.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/charts/sheet_style.h"
#include "ui/widgets/colour_grid.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/input_window.h"
#include "ui/windows/schrift_edit.h"

namespace quom {

namespace {

constexpr int Swatch = 14, NumberDigits = 10;

QString font_text(const Font& font) {
    QString text = font.family.empty() ? QStringLiteral("program font") : shown(font.family);
    text += QStringLiteral(" %1 pt").arg(static_cast<double>(font.size));
    if (font.bold) text += QStringLiteral(", bold");
    if (font.italic) text += QStringLiteral(", italic");
    return text;
}

// Also white and the colour of the button itself can be seen.
QIcon outlined(const QColor& color, qreal ratio) {
    QPixmap picture = swatch(color, Swatch, ratio).pixmap(QSize(Swatch, Swatch), ratio);
    QPainter painter(&picture);
    painter.setPen(QColor(128, 128, 128));
    painter.drawRect(QRectF(0.5, 0.5, Swatch - 1, Swatch - 1));
    return picture;
}

// The font of the program stays that: it is not written down by its name.
Font font_of(const QFont& chosen) {
    Font font;
    if (chosen.family() != QApplication::font().family()) font.family = chosen.family().toStdString();
    font.size = std::clamp(static_cast<float>(chosen.pointSizeF()), LeastFont, LargestFont);
    font.bold = chosen.weight() >= QFont::DemiBold;
    font.italic = chosen.italic();
    return font;
}

}  // namespace

DesignBox::DesignBox(const DesignControl& control, const QString& suffix, const QString& whose,
                     QWidget* parent)
    : QObject(parent), control_(control) {
    const QString caption = shown(control.caption);
    const QByteArray name = (QString::fromStdString(control.name) + suffix).toLatin1();
    switch (control.type) {
        case ControlType::flag: {
            auto* box = new QCheckBox(suffix.isEmpty() ? caption : QString(), parent);
            connect(box, &QCheckBox::toggled, this, [this](bool on) { emit set(on); });
            widget_ = box;
            break;
        }
        case ControlType::choice: {
            auto* box = new QComboBox(parent);
            for (const std::string& entry : control.entries()) box->addItem(shown(entry));
            connect(box, &QComboBox::currentIndexChanged, this, [this](int index) { emit set(index); });
            widget_ = box;
            break;
        }
        case ControlType::options: {
            widget_ = new QWidget(parent);
            auto* row = new QHBoxLayout(widget_);
            row->setContentsMargins(0, 0, 0, 0);
            auto* one_of = new QButtonGroup(widget_);
            int index = 0;
            for (const std::string& entry : control.entries()) {
                auto* option = new QRadioButton(shown(entry), widget_);
                named(option, name + '_' + QByteArray::number(index),
                      caption + QStringLiteral(": ") + shown(entry));
                one_of->addButton(option);
                row->addWidget(option);
                connect(option, &QRadioButton::clicked, this, [this, index] { emit set(index); });
                options_.push_back(option);
                ++index;
            }
            return;
        }
        case ControlType::color:
        case ControlType::font:
        case ControlType::action:
            make_button(caption);
            break;
        default:
            make_input();
    }
    if (widget_->parent() == nullptr) widget_->setParent(parent);
    named(widget_, name, whose.isEmpty() ? caption : whose + QLatin1Char(' ') + caption);
}

void DesignBox::make_button(const QString& caption) {
    auto* button = new QPushButton;
    button->setAutoDefault(false);
    if (control_.type == ControlType::action) {
        button->setText(caption);
        connect(button, &QPushButton::clicked, this, [this] { emit set(true); });
    } else if (control_.type == ControlType::color) {
        connect(button, &QPushButton::clicked, this, &DesignBox::color_wanted);
    } else {
        connect(button, &QPushButton::clicked, this, &DesignBox::ask_font);
    }
    widget_ = button;
}

void DesignBox::make_input() {
    if (control_.type == ControlType::text) {
        auto* edit = new SchriftEdit;
        connect(edit, &SchriftEdit::edited, this,
                [this](const QString& text) { emit set(text.toStdString()); });
        widget_ = edit;
    } else if (control_.type == ControlType::line) {
        auto* line = new QLineEdit;
        connect(line, &QLineEdit::textEdited, this,
                [this](const QString& text) { emit set(text.toStdString()); });
        widget_ = line;
    } else {
        auto* box = new NumberBox(NumberDigits);
        const auto take = [this, box] {
            if (DesignValue(box->typed()) == shown_) return box->setModified(false);
            emit set(box->typed());
        };
        box->on_enter(take);
        connect(box, &QLineEdit::editingFinished, this, [box, take] {
            if (!box->refused()) take();
        });
        widget_ = box;
    }
}

// What is marked in the dialog is on the sheet at once; given up, the font is again what it was.
void DesignBox::ask_font() {
    const Font before = std::get<Font>(shown_);
    QFontDialog dialog(sheet_font(before), widget_);
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    dialog.setWindowTitle(shown(control_.caption));
    dialog.setObjectName(QStringLiteral("FontDialog"));
    connect(&dialog, &QFontDialog::currentFontChanged, this,
            [this](const QFont& font) { emit set(font_of(font)); });
    if (dialog.exec() != QDialog::Accepted) emit set(before);
}

void DesignBox::show(const GraphDocument& sheet, const DesignTarget& target) {
    widget_->setEnabled(control_.enabled(sheet, target));
    if (control_.shown == nullptr) return;
    shown_ = control_.shown(sheet, target);
    const QSignalBlocker quiet(widget_);
    switch (control_.type) {
        case ControlType::flag:
            return static_cast<QCheckBox*>(widget_)->setChecked(std::get<bool>(shown_));
        case ControlType::choice:
            return static_cast<QComboBox*>(widget_)->setCurrentIndex(std::get<int>(shown_));
        case ControlType::options:
            return options_[static_cast<std::size_t>(std::get<int>(shown_))]->setChecked(true);
        case ControlType::color: {
            const QColor color = shown_colour(std::get<Color>(shown_));
            auto* button = static_cast<QPushButton*>(widget_);
            button->setIcon(outlined(color, button->devicePixelRatioF()));
            button->setAccessibleDescription(color.name());
            return button->setToolTip(color.name());
        }
        case ControlType::font:
            return static_cast<QPushButton*>(widget_)->setText(font_text(std::get<Font>(shown_)));
        case ControlType::line: {
            auto* line = static_cast<QLineEdit*>(widget_);
            const QString text = shown(std::get<std::string>(shown_));
            if (line->text() == text) return;
            line->setText(text);
            return line->setCursorPosition(0);
        }
        case ControlType::text:
            return static_cast<SchriftEdit*>(widget_)->show_text(shown(std::get<std::string>(shown_)));
        default: {
            auto* box = static_cast<NumberBox*>(widget_);
            if (!box->isModified()) box->setText(shown(std::get<std::string>(shown_)));
        }
    }
}

void DesignBox::refuse(const std::string& rule) {
    if (auto* box = qobject_cast<NumberBox*>(widget_)) box->refuse(rule);
}

void DesignBox::taken() {
    if (auto* box = qobject_cast<NumberBox*>(widget_)) box->setModified(false);
}

}  // namespace quom

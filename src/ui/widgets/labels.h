// Captions: trimmed when painted, buddies of their controls, and the names by which tests and screen readers
// find a control.
#pragma once
#include <QLabel>
#include <QPushButton>
#include <QString>

class QAbstractButton;
class QFrame;
class QGridLayout;

namespace quom {

// A label whose text keeps the blanks at its ends but is painted and measured without them.
class TrimmedLabel : public QLabel {
    Q_OBJECT
 public:
    explicit TrimmedLabel(const QString& text, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
};

// The same for a button; the lines of its caption are trimmed one by one.
class TrimmedButton : public QPushButton {
    Q_OBJECT
 public:
    explicit TrimmedButton(const QString& text, QWidget* parent = nullptr) : QPushButton(text, parent) {}
    QSize sizeHint() const override;

 protected:
    void initStyleOption(QStyleOptionButton* option) const override;
};

// A caption without "&" of mnemonics, blanks simplified: what a screen reader says.
QString spoken(const QString& caption);

// Sets the object name and, when given, the accessible name of a control; returns the control.
template <class Control>
Control* named(Control* control, const char* name, const QString& caption = {}) {
    control->setObjectName(QLatin1String(name));
    if (!caption.isEmpty()) control->setAccessibleName(spoken(caption));
    return control;
}

// Makes the label the caption of the control: buddy and accessible name, unit behind it.
void caption_for(QLabel* label, QWidget* control, const QString& unit = {});

// A row of a form: label right-aligned, control, unit.
void add_form_row(QGridLayout* grid, int row, QLabel* label, QWidget* control, const QString& unit = {});

QLabel* head_label(const QString& text, QWidget* parent = nullptr);  // DemiBold
QLabel* hint_label(const QString& text, QWidget* parent = nullptr);  // colour of hints, wraps
QFrame* rule(QWidget* parent = nullptr);                             // 1 px line between parts of a window
QAbstractButton* help_button(const char* name, const QString& about, QWidget* parent = nullptr);  // "?"

}  // namespace quom

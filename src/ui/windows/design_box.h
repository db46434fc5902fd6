// A control of the design as it stands in its window: shows what the sheet says, and tells what the user
// sets.
#pragma once
#include <QObject>
#include <QString>
#include <vector>

#include "forms/design_form.h"

class QRadioButton;
class QWidget;

namespace quom {

class DesignBox : public QObject {
    Q_OBJECT
 public:
    // suffix: of the object name, for the rows of a page; whose: before the accessible name, "C.3".
    DesignBox(const DesignControl& control, const QString& suffix, const QString& whose, QWidget* parent);

    const DesignControl& control() const { return control_; }
    QWidget* widget() const { return widget_; }
    const std::vector<QRadioButton*>& options() const { return options_; }
    // A number or a text that is being typed stays as it is.
    void show(const GraphDocument& sheet, const DesignTarget& target);
    // What of a number box cannot be taken.
    void refuse(const std::string& rule);
    // The value of a number box was taken: the next one shown replaces what was typed.
    void taken();

 signals:
    void set(const quom::DesignValue& value);
    void color_wanted();

 private:
    void make_button(const QString& caption);
    void make_input();
    void ask_font();

    DesignControl control_;
    QWidget* widget_ = nullptr;
    std::vector<QRadioButton*> options_;
    DesignValue shown_;
};

}  // namespace quom

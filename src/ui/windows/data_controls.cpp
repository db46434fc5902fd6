#include "ui/windows/data_controls.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>

#include "ui/main/mdiQUOM.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"

namespace quom {

QPushButton* data_button(QWidget* parent, const char* name, const char* caption, const char* tip) {
    const QString text = QString::fromUtf8(caption);
    auto* button = named(new TrimmedButton(text, parent), name, text);
    button->setToolTip(QString::fromUtf8(tip));
    button->setAccessibleDescription(QString::fromUtf8(tip).simplified());
    button->setAutoDefault(false);
    return button;
}

void make_options(QWidget* parent, const char* name, QRadioButton** options,
                  std::initializer_list<const char*> captions, int first) {
    auto* one_of = new QButtonGroup(parent);
    int i = 0;
    for (const char* caption : captions) {
        const QString text = QString::fromUtf8(caption);
        options[i] = named(new QRadioButton(text.trimmed(), parent),
                           qPrintable(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(first + i)), text);
        one_of->addButton(options[i++]);
    }
    options[0]->setChecked(true);
}

int chosen_option(QRadioButton* const* options, int count) {
    for (int i = 0; i < count; ++i)
        if (options[i]->isChecked()) return i;
    return 0;
}

void switch_off(QWidget* control, const char* why) {
    control->setEnabled(false);
    control->setToolTip(QString::fromUtf8(why));
    control->setAccessibleDescription(QString::fromUtf8(why));
}

QBoxLayout* control_row(std::initializer_list<QWidget*> controls) {
    auto* row = new QHBoxLayout;
    if (controls.size() > 0 && qobject_cast<QRadioButton*>(*controls.begin())) row->setSpacing(14);
    for (QWidget* control : controls) row->addWidget(control);
    row->addStretch();
    return row;
}

Message removal_question(int first, int last) {
    const std::string lines = first == last
                                  ? "line " + std::to_string(first)
                                  : "lines " + std::to_string(first) + " to " + std::to_string(last);
    return {.title = "WARNING",
            .text = lines + " really remove?",
            .buttons = Buttons::yes_no,
            .default_button = Answer::no,
            .kind = MessageKind::warning};
}

std::string ask_open_path(mdiQUOM& frame, const FileQuestion& question) {
    return frame.dialogs().open_file(&frame, question).value_or(QString()).toStdString();
}

std::string ask_save_path(mdiQUOM& frame, const FileQuestion& question) {
    return frame.dialogs().save_file(&frame, question).value_or(QString()).toStdString();
}

}  // namespace quom

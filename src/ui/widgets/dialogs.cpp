#include "ui/widgets/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/look/look.h"
#include "ui/widgets/end_row.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr struct {
    Answer answer;
    QMessageBox::StandardButton button;
} AnswerButtons[] = {{Answer::ok, QMessageBox::Ok},
                     {Answer::cancel, QMessageBox::Cancel},
                     {Answer::yes, QMessageBox::Yes},
                     {Answer::no, QMessageBox::No}};

QMessageBox::StandardButtons shown_buttons(Buttons buttons) {
    switch (buttons) {
        case Buttons::ok_cancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case Buttons::yes_no:
            return QMessageBox::Yes | QMessageBox::No;
        case Buttons::yes_no_cancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case Buttons::ok:
            break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon shown_icon(MessageKind kind) {
    switch (kind) {
        case MessageKind::warning:
            return QMessageBox::Warning;
        case MessageKind::question:
            return QMessageBox::Question;
        case MessageKind::stop:
            return QMessageBox::Critical;
        case MessageKind::info:
            break;
    }
    return QMessageBox::Information;
}

// Wide enough for its title between icon and buttons of the title bar, up to most of the screen.
void make_room_for_title(QMessageBox& box) {
    QFont font = box.font();
    font.setBold(true);
    const int title = QFontMetrics(font).horizontalAdvance(box.windowTitle()) + 110;
    const int most = box.screen()->availableSize().width() * 9 / 10;
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(std::min(title, most), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

Answer MessageBoxes::ask(const Message& message) {
    QWidget* parent = QApplication::activeModalWidget();
    QMessageBox box(parent ? parent : parent_.data());
    box.setObjectName(QStringLiteral("message_box"));
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(QString::fromStdString(message.title));
    box.setText(QString::fromStdString(message.text));
    box.setIcon(shown_icon(message.kind));
    make_room_for_title(box);
    box.setStandardButtons(shown_buttons(message.buttons));
    for (const auto& row : AnswerButtons)
        if (row.answer == message.default_button) box.setDefaultButton(row.button);
    if (message.buttons == Buttons::yes_no) box.setEscapeButton(QMessageBox::No);
    const int pressed = box.exec();
    for (const auto& row : AnswerButtons)
        if (row.button == pressed) return row.answer;
    return message.default_button;
}

std::optional<QString> Dialogs::open_file(QWidget* parent, const FileQuestion& question) {
    if (question.own) return question.own(parent);
    const QString path =
        QFileDialog::getOpenFileName(parent, question.title, question.start, question.filter);
    if (path.isEmpty()) return std::nullopt;
    return path;
}

std::optional<QString> Dialogs::save_file(QWidget* parent, const FileQuestion& question) {
    QFileDialog dialog(parent, question.title, question.start, question.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(question.suffix);
    // A name without an ending gets that of the filter which was chosen: "Enhanced MetaFile (*.EMF)".
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        const QString ending = filter.section(QLatin1String("*."), 1, 1);
        const qsizetype end = ending.indexOf(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")));
        if (end > 0) dialog.setDefaultSuffix(ending.left(end).toLower());
    });
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.confirm_overwrite);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> Dialogs::ask_text(QWidget* parent, const QString& title, const QString& prompt,
                                         const QString& proposed) {
    TextQuestion question(title, prompt, proposed, parent);
    if (question.exec() != QDialog::Accepted) return std::nullopt;
    return question.txtText->text();
}

TextQuestion::TextQuestion(const QString& title, const QString& prompt, const QString& proposed,
                           QWidget* parent)
    : QDialog(parent),
      txtText(named(new QLineEdit(proposed, this), "txtText", title)),
      cmdOK(named(new QPushButton(QStringLiteral("OK"), this), "cmdOK", QStringLiteral("OK"))),
      cmdCancel(named(new QPushButton(QStringLiteral("Cancel <Esc>"), this), "cmdCancel",
                      QStringLiteral("Cancel"))) {
    setObjectName(QStringLiteral("text_question"));
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(prompt, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    layout->addWidget(label);
    layout->addWidget(txtText);
    txtText->setAccessibleDescription(prompt);
    txtText->setMinimumWidth(text_width(*txtText, 48));
    add_end_row(layout, cmdCancel, cmdOK);
    set_tab_order({txtText, cmdCancel, cmdOK});
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    txtText->setFocus();
    txtText->selectAll();
}

void Dialogs::print(QWidget* parent, const PrintedText& text) { print_with_preview(parent, text); }

bool Dialogs::print_page(QWidget* parent, const PrintedPage& page) {
    return print_with_preview(parent, page);
}

}  // namespace quom

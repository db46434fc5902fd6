// Boxes, file dialogs and text questions, behind interfaces so that tests can answer them.
#pragma once
#include <QDialog>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

#include "base/messages.h"
#include "ui/widgets/print_text.h"

class QLineEdit;
class QPushButton;

namespace quom {

// Shows every message of the core as a modal box over the window in front.
class MessageBoxes : public Messages {
 public:
    explicit MessageBoxes(QWidget* parent) : parent_(parent) {}
    Answer ask(const Message& message) override;

 private:
    QPointer<QWidget> parent_;
};

struct FileQuestion {
    QString title;
    QString start;                  // folder, or path of the file proposed
    QString filter;                 // "name (*.ext)"
    QString suffix;                 // added to a name without one when saving
    bool confirm_overwrite = true;  // false: who saves asks before a file that exists is replaced
    // A dialog of the program's own that asks in place of the platform's.
    std::function<std::optional<QString>(QWidget* parent)> own{};
};

// Asks for a line of text.
class TextQuestion : public QDialog {
    Q_OBJECT
 public:
    TextQuestion(const QString& title, const QString& prompt, const QString& proposed, QWidget* parent);
    QLineEdit* txtText;
    QPushButton *cmdOK, *cmdCancel;
};

// Every question for a file or a line of text. None: cancelled.
class Dialogs {
 public:
    virtual ~Dialogs() = default;
    virtual std::optional<QString> open_file(QWidget* parent, const FileQuestion& question);
    virtual std::optional<QString> save_file(QWidget* parent, const FileQuestion& question);
    virtual std::optional<QString> ask_text(QWidget* parent, const QString& title, const QString& prompt,
                                            const QString& proposed);
    // Shows the pages of a text, from where it is printed.
    virtual void print(QWidget* parent, const PrintedText& text);
    // The same of a page; false: the printer could not be used.
    virtual bool print_page(QWidget* parent, const PrintedPage& page);
};

}  // namespace quom

// Boxes, file dialogs and text questions, behind interfaces so that tests can answer them.
#pragma once
#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>

#include "base/messages.h"

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
};

// Every question for a file or a line of text. None: cancelled.
class Dialogs {
 public:
    virtual ~Dialogs() = default;
    virtual std::optional<QString> open_file(QWidget* parent, const FileQuestion& question);
    virtual std::optional<QString> save_file(QWidget* parent, const FileQuestion& question);
    virtual std::optional<QString> ask_text(QWidget* parent, const QString& title, const QString& prompt,
                                            const QString& proposed);
};

}  // namespace quom

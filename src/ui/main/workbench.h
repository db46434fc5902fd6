// What the windows work with: the session, who is asked, and the one event after every change.
#pragma once
#include <QObject>

#include "base/messages.h"
#include "session/session.h"
#include "ui/main/ui_memory.h"

namespace quom {

class Workbench : public QObject {
    Q_OBJECT
 public:
    explicit Workbench(Messages& messages, QObject* parent = nullptr)
        : QObject(parent), messages_(&messages) {}

    Session session;
    UiMemory memory;  // what the windows remember; nothing is kept after the program until a file is given
    const Document& document() const { return session.document; }
    const Fluid& fluid() const { return *session.fluid; }

    // Who hears and answers messages.
    Messages& messages() const { return *messages_; }
    void listen(Messages& messages) { messages_ = &messages; }
    Answer tell(const Message& message) const { return messages_->ask(message); }

    // Takes a document over; everybody hears what changed.
    void commit(Document document) { announce(quom::commit(session, std::move(document))); }
    // Tells of a change that a form has committed by itself.
    void announce(const Changes& changes) {
        if (changes.any()) emit changed(changes);
    }

 signals:
    void changed(const quom::Changes& changes);

 private:
    Messages* messages_;
};

}  // namespace quom

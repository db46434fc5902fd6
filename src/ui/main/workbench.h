// What the windows work with: the session, who is asked, and the one event after every change.
#pragma once
#include <QObject>

#include "base/messages.h"
#include "session/history.h"
#include "session/session.h"
#include "ui/main/ui_memory.h"

namespace quom {

class Workbench : public QObject {
    Q_OBJECT
 public:
    explicit Workbench(Messages& messages, QObject* parent = nullptr)
        : QObject(parent), messages_(&messages) {}

    Session session;
    History history;  // the steps of undo
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
        if (!changes.any()) return;
        history.record(session);
        emit changed(changes);
    }

    // Tells of models that were chosen, or confirmed.
    void announce_models() {
        Changes changes;
        changes.models = true;
        announce(changes);
    }

    // One step back or forth; everybody hears of it, and the sentence of what was done.
    void undo();
    void redo();

    // Tells of boxes of the calculation in hand that differ from the document: which of them, in words;
    // empty: they agree again.
    void tell_typed(const QString& what) {
        if (what == typed_) return;
        typed_ = what;
        emit typed(what);
    }
    const QString& typed_boxes() const { return typed_; }

 signals:
    void changed(const quom::Changes& changes);
    void typed(const QString& what);
    void moving(const quom::Document& before);  // undo or redo is about to tell of its change
    void moved(const QString& sentence);        // ... and what it has done

 private:
    void tell_moved(const Document& before, const History::Move& move, const char* word);

    Messages* messages_;
    QString typed_;
};

}  // namespace quom

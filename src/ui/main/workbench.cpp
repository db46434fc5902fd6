#include "ui/main/workbench.h"

namespace quom {

void Workbench::undo() {
    const Document before = document();
    tell_moved(before, history.undo(session), "Undone: ");
}

void Workbench::redo() {
    const Document before = document();
    tell_moved(before, history.redo(session), "Done again: ");
}

void Workbench::tell_moved(const Document& before, const History::Move& move, const char* word) {
    if (!move.fault.empty()) {
        tell({.title = "Execution not possible",
              .text = move.sentence + "\n\n" + move.fault + "\nNothing was changed.",
              .kind = MessageKind::warning});
        return;
    }
    if (!move.done) return;
    emit moving(before);
    emit changed(move.changes);
    emit moved(QLatin1String(word) + QString::fromStdString(move.sentence));
}

}  // namespace quom

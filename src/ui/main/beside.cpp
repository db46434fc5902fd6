#include "ui/main/beside.h"

#include <QWidget>

#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"

namespace quom {

mdiQUOM* frame_of(QWidget* window) {
    for (QWidget* at = window; at; at = at->parentWidget())
        if (auto* frame = qobject_cast<mdiQUOM*>(at)) return frame;
    return nullptr;
}

void open_beside(QWidget* opener, QWidget* window) {
    if (mdiQUOM* frame = frame_of(opener)) {
        frame->unload(qPrintable(window->objectName()));
        frame->open_child(window, opener);
        return;
    }
    window->setParent(opener->window(), Qt::Window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->resize(natural_size(*window, window->sizeHint()));
    window->show();
}

void drop_window(QWidget* window) {
    if (!window) return;
    if (mdiQUOM* frame = frame_of(window); frame && frame->child(qPrintable(window->objectName())) == window)
        frame->unload(qPrintable(window->objectName()));
    else
        window->close();
}

void not_yet_available(QWidget* control) {
    control->setEnabled(false);
    control->setToolTip(QStringLiteral("not yet available"));
}

void show_help_of(QWidget* window) {
    if (mdiQUOM* frame = frame_of(window)) frame->show_help(window_row(window->objectName()).help);
}

}  // namespace quom

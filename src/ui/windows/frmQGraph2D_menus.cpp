// The menus of the window.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"
#include "ui/windows/coordinates_dialog.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

const QString NotYet = QStringLiteral("not yet available");

// A text that is not one of the program's own: "&" is a letter of it.
QString plain(const std::string& text) {
    return QString::fromStdString(text).simplified().replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void switch_off(QAction* action) {
    action->setEnabled(false);
    action->setToolTip(NotYet);
    action->setStatusTip(NotYet);
}

}  // namespace

QAction* frmQGraph2D::add_entry(QMenu* menu, const char* name, const QString& caption,
                                void (frmQGraph2D::*run)()) {
    auto* action = menu->addAction(caption);
    action->setObjectName(QLatin1String(name));
    action->setMenuRole(QAction::NoRole);
    if (run)
        connect(action, &QAction::triggered, this, run);
    else
        switch_off(action);
    return action;
}

void frmQGraph2D::make_menus() {
    menus = named(new QMenuBar(this), "menus", QStringLiteral("Menus of the diagram"));
    menus->setNativeMenuBar(false);
    mnuBildsenden = named(menus->addMenu(QStringLiteral("Diagram ...")), "mnuBildsenden");
    mnuBildsenden->setToolTipsVisible(true);
    add_entry(mnuBildsenden, "mnuBild_0", QStringLiteral("... to the Clipboard"), &frmQGraph2D::copy_picture);
    add_entry(mnuBildsenden, "mnuBild_1", QStringLiteral("... Save as image file (.BMP, .WMF, .EMF)"),
              &frmQGraph2D::save_image);
    add_entry(mnuBildsenden, "mnuBild_2", QStringLiteral("... to the Printer"), &frmQGraph2D::print);
    add_entry(mnuBildsenden, "mnuBild_3", QStringLiteral("... Save as PNG, SVG, PDF"),
              &frmQGraph2D::save_picture);
    mnuBildsenden->addSeparator();
    add_entry(mnuBildsenden, "mnuCopyData", QStringLiteral("... Copy data"), &frmQGraph2D::copy_data);
    add_entry(mnuBildsenden, "mnuSaveData", QStringLiteral("... Save data (.CSV)"), &frmQGraph2D::save_data);
    mnuBildsenden->addSeparator();
    add_entry(mnuBildsenden, "mnuSaveOC2", QStringLiteral("... Save as *.OC2 file"), &frmQGraph2D::save);
    add_entry(mnuBildsenden, "mnuLoadOC2", QStringLiteral("... Import (*.OC2)"), &frmQGraph2D::load);
    mnuCoord = menus->addAction(shown(coordinates_title), this, &frmQGraph2D::ask_coordinates);
    mnuCoord->setObjectName(QStringLiteral("mnuCoord"));

    mnuInsert = named(menus->addMenu(QStringLiteral("Insert")), "mnuInsert");
    mnuInsert->setToolTipsVisible(true);
    for (const InsertEntry& entry : insert_entries()) {
        if (entry.name.empty()) {
            mnuInsert->addSeparator();
            continue;
        }
        QAction* action = mnuInsert->addAction(shown(entry.caption));
        action->setObjectName(shown(entry.name));
        action->setMenuRole(QAction::NoRole);
        connect(action, &QAction::triggered, this, [this, what = entry.what] { choose_insertion(what); });
        if (entry.what == Insertion::process_line || entry.what == Insertion::isohygric) switch_off(action);
    }
    mnuInsert->addSeparator();
    add_entry(mnuInsert, "mnuCompare", QStringLiteral("Compare equations ..."), &frmQGraph2D::compare);
    mnuDelete = named(menus->addMenu(QStringLiteral("&Delete ...")), "mnuDelete");
    // The data of the editors may have come or gone.
    connect(mnuInsert, &QMenu::aboutToShow, this, &frmQGraph2D::show_insert_states);
}

void frmQGraph2D::show_insert_states() {
    for (const InsertEntry& entry : insert_entries())
        if (auto* action = entry.name.empty() ? nullptr : findChild<QAction*>(shown(entry.name)))
            action->setEnabled(can_insert(frame_.session(), entry.what));
}

// The entries of what is on the sheet. One that was chosen is still at work while the menu is made anew.
void frmQGraph2D::show_delete_entries() {
    const QList<QAction*> before = mnuDelete->actions();
    for (QAction* action : before) {
        mnuDelete->removeAction(action);
        action->setObjectName({});
        action->deleteLater();
    }
    Deletion last = Deletion::total;
    for (const DeleteEntry& entry : delete_entries(*sheet())) {
        if (entry.what != last && (last == Deletion::total || entry.what >= Deletion::curve))
            mnuDelete->addSeparator();
        last = entry.what;
        QAction* action = mnuDelete->addAction(plain(entry.caption));
        action->setObjectName(QString::fromStdString(entry.name));
        connect(action, &QAction::triggered, this, [this, entry] {
            if (!sheet()) return;
            remove_from(*sheet(), entry);
            refresh();
        });
    }
    mnuDelete->addSeparator();
    QAction* help = mnuDelete->addAction(shown(delete_point_help().title));
    help->setObjectName(QStringLiteral("mnuDelPointHelp"));
    connect(help, &QAction::triggered, this, [this] { frame_.bench().tell(delete_point_help()); });
}

void frmQGraph2D::choose_insertion(Insertion what) {
    if (!sheet()) return;
    if (what == Insertion::text) return ask_text();
    const auto* editor = frame_.child<frmQXYEdit>();
    const bool as_curve = editor && editor->optIsPoints[1]->isChecked();
    insert(frame_.session(), what, as_curve, frame_.bench().messages());
    refresh();
}

void frmQGraph2D::ask_text() {
    const auto text = frame_.dialogs().ask_text(this, QStringLiteral("additional text"),
                                                QStringLiteral("Text of the diagram"), {});
    if (!text || !sheet()) return;
    insert_text(*sheet(), text->toStdString());
    refresh();
}

void frmQGraph2D::toggle_legend() {
    if (!sheet()) return;
    if (sheet()->legend.visible)
        hide_legend(*sheet());
    else if (const auto refused = show_legend(*sheet()))
        frame_.bench().tell(*refused);
    refresh();
}

void frmQGraph2D::show_context_menu(const QPoint& global) {
    if (!sheet()) return;
    auto* menu = named(new QMenu(this), "mnuContext");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    add_design_entries(menu, global);
    QAction* legend =
        add_entry(menu, "mnuLegend", QStringLiteral("legend on/off"), &frmQGraph2D::toggle_legend);
    legend->setCheckable(true);
    legend->setChecked(sheet()->legend.visible);
    menu->addSeparator();
    menu->addMenu(mnuInsert);
    menu->addMenu(mnuDelete);
    menu->addAction(mnuCoord);
    menu->popup(global);
}

void frmQGraph2D::ask_coordinates() {
    if (!sheet()) return;
    CoordinatesDialog dialog(frame_.bench(), this);
    if (dialog.exec() == QDialog::Accepted) refresh();
}

void frmQGraph2D::save() { save_diagram(frame_); }

void frmQGraph2D::load() {
    const bool loaded = load_diagram(frame_);
    refresh();  // interchanged axes are back, also without a file
    if (!loaded) return;
    const QString name = QString::fromStdString(frame_.session().diagram.LastFile);
    lblStatus->setText(QStringLiteral("picture file: ") + name);
}

}  // namespace quom

#include "ui/main/quick_start.h"

#include <QAbstractButton>
#include <QStringList>

#include "base/files.h"
#include "forms/palette_form.h"
#include "forms/refusal.h"
#include "forms/shell.h"
#include "session/program_path.h"
#include "substance/database.h"
#include "ui/main/calculation_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"
#include "ui/widgets/number_box.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQModell.h"

namespace quom {

namespace {

const QString RecentKey = QStringLiteral("recent/substances");

// Presses a button of a window as a hand would; false when it is not there or off.
bool press(const QWidget* window, const char* name) {
    auto* button = window ? window->findChild<QAbstractButton*>(QLatin1String(name)) : nullptr;
    if (!button || !button->isEnabled()) return false;
    button->click();
    return true;
}

void type_values(mdiQUOM& frame, const Example& example) {
    auto* input = frame.child<frmParinput>();
    if (!input) return;
    const InputForm form = input_form(frame.bench().document(), input_kind(example.mode), {});
    for (std::size_t i = 0; i < form.par.size(); ++i)
        for (const ExampleValue& value : example.values)
            if (value.box == form.par[i].value)
                input->par[i]->setText(QString::fromUtf8(value.text.data(), qsizetype(value.text.size())));
    press(input, "cmdParameter_OK");
}

std::string starter_path(mdiQUOM& frame) {
    return resolve_path(StarterDatabase, frame.session().ProgramPath);
}

}  // namespace

std::vector<RecentSubstance> recent_substances(const UiMemory& memory) {
    std::vector<RecentSubstance> list;
    for (const QString& line : memory.value(RecentKey).toStringList())
        if (RecentSubstance recent = substance_of_id(line.toStdString()); !recent.name.empty())
            list.push_back(std::move(recent));
    return list;
}

void remember_substance(Workbench& bench) {
    QStringList lines;
    for (const RecentSubstance& recent :
         with_recent(recent_substances(bench.memory), substance_in_force(bench.session)))
        lines << QString::fromStdString(substance_id(recent));
    bench.memory.set(RecentKey, lines);
}

bool use_database(mdiQUOM& frame, int kind, const std::string& path) {
    if (!open_picked_database(frame.session(), kind, path, frame.bench().messages())) return false;
    frame.unload_windows(Lifetime::database);
    frame.bench().announce({.substance = true});
    return true;
}

void open_starter(mdiQUOM& frame) {
    if (use_database(frame, 7, starter_path(frame))) select_substance(frame, 0);
}

void take_recent(mdiQUOM& frame, const RecentSubstance& recent) {
    const Session& s = frame.session();
    const int kind = recent.database.ends_with('6') ? 6 : 7;
    if ((s.database.DatabaseKind == 0 || s.database.path != recent.database) &&
        !use_database(frame, kind, recent.database))
        return;
    if (const int index = find_recent(s.database, recent); index > 0)
        take_substance(frame, index);
    else
        frame.bench().tell(refusal_message(recent.name + " is not in the database " + recent.database + "."));
}

void take_substance_of(mdiQUOM& frame, const std::string& casrn) {
    const Session& s = frame.session();
    if (casrn.empty() || s.document.substance.StoffIndexAktiv != 0) return;
    if (const int index = FindCAS(s.database, casrn); index > 0) return take_substance(frame, index);
    for (const RecentSubstance& recent : recent_substances(frame.bench().memory))
        if (recent.casrn == casrn && FileExists(recent.database, s.ProgramPath))
            return take_recent(frame, recent);
    if (s.database.DatabaseKind != 0) return;
    const OpenedDatabase starter = open_database(7, starter_path(frame), s.document.options.Englisch);
    if (starter.err == 0 && FindCAS(starter.file, casrn) > 0)
        take_recent(frame, {.name = {}, .formula = {}, .casrn = casrn, .database = starter_path(frame)});
}

void run_example(mdiQUOM& frame, const Example& example) {
    take_recent(
        frame,
        {.name = {}, .formula = {}, .casrn = std::string(example.casrn), .database = starter_path(frame)});
    if (!press(frame.child<frmQModell>(), "cmdOKModell")) return;
    start_calculation(frame, static_cast<int>(example.mode));
    if (auto* selection = frame.child<frmCalcIn>()) press(selection, "OK");
    type_values(frame, example);
}

}  // namespace quom

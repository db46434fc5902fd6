#include "ui/main/palette_entries.h"

#include <QAction>
#include <QComboBox>
#include <QMdiSubWindow>
#include <QMenu>
#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <set>

#include "base/code_page.h"
#include "base/files.h"
#include "forms/model_form.h"
#include "forms/shell.h"
#include "session/program_path.h"
#include "session/substance_names.h"
#include "substance/database.h"
#include "substance/synonyms.h"
#include "ui/main/calculation_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/mdi_area.h"
#include "ui/main/mdi_menus.h"
#include "ui/main/menu_actions.h"
#include "ui/main/menu_table.h"
#include "ui/main/quick_start.h"
#include "ui/main/recent_files.h"
#include "ui/widgets/labels.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/help_pages.h"

namespace quom {

namespace {

const QString UsedKey = QStringLiteral("palette/used");
constexpr std::string_view MenuPrefix = "menu:", EosPrefix = "eos:", WindowPrefix = "window:",
                           HelpPrefix = "help:", ProjectPrefix = "project:", DataPrefix = "data:";

struct RootKind {
    std::string_view root;
    PaletteKind kind;
};
// Menus of another kind are those of windows.
constexpr RootKind RootKinds[] = {
    {"mnuCalcMain", PaletteKind::calculation}, {"mnuModel", PaletteKind::models},
    {"mnu2D", PaletteKind::graph_2d},          {"mnu3D", PaletteKind::graph_3d},
    {"mnuChart", PaletteKind::graph_2d},       {"mnuHilfe", PaletteKind::help},
};

std::string name_of(const MenuRow& row) {
    return row.index < 0 ? row.name : std::string(row.name) + '_' + std::to_string(row.index);
}

using RowsByName = std::map<std::string, const MenuRow*, std::less<>>;

const MenuRow* above(const RowsByName& rows, const MenuRow& row) {
    const auto at = rows.find(std::string_view(row.parent));
    return at == rows.end() ? nullptr : at->second;
}

PaletteKind kind_of(const RowsByName& rows, const MenuRow& row) {
    const MenuRow* root = &row;
    while (const MenuRow* next = above(rows, *root)) root = next;
    for (const RootKind& r : RootKinds)
        if (r.root == root->name) return r.kind;
    return PaletteKind::window;
}

std::string words(const QString& caption) { return spoken(caption).toStdString(); }

std::string reason_of(const Session& session, MenuAction action, Needs needs) {
    return action ? why_not(session, needs) : std::string("not yet available");
}

std::vector<std::string> used_ids(const UiMemory& memory) {
    std::vector<std::string> ids;
    for (const QString& id : memory.value(UsedKey).toStringList()) ids.push_back(id.toStdString());
    return ids;
}

void remember(UiMemory& memory, const std::string& id) {
    QStringList list;
    for (const std::string& used : with_used(used_ids(memory), id)) list << QString::fromStdString(used);
    memory.set(UsedKey, list);
}

void choose_equation(mdiQUOM& frame, int code) {
    open_models(frame, 0);
    auto* window = frame.child<frmQModell>();
    if (!window) return;
    const int at = window->EOSKombi->findData(code);
    if (at >= 0) window->EOSKombi->setCurrentIndex(at);
    window->EOSKombi->setFocus();
}

void show_window(mdiQUOM& frame, const QString& name) {
    if (QWidget* window = frame.child(qPrintable(name))) frame.show_child(window);
}

}  // namespace

PaletteEntries::PaletteEntries(mdiQUOM& frame, const mdiMenus& menus)
    : frame_(frame), used_(used_ids(frame.bench().memory)) {
    add_menu_entries(menus);
    add_equations();
    add_windows();
    add_help();
    add_recent_files();
    const Session& s = frame.session();
    if (s.database.DatabaseKind != 0 || !FileExists(StarterDatabase, s.ProgramPath)) return;
    starter_ =
        open_database(7, resolve_path(StarterDatabase, s.ProgramPath), s.document.options.Englisch).file;
    starter_names_ = NameIndex(*starter_, read_synonym_file(s.ProgramPath).bytes);
}

void PaletteEntries::add_menu_entries(const mdiMenus& menus) {
    RowsByName rows;
    std::set<std::string_view> parents;
    for (const MenuRow& row : menu_rows()) {
        rows.emplace(name_of(row), &row);
        parents.insert(row.parent);
    }
    for (const MenuRow& row : menu_rows()) {
        const std::string name = name_of(row);
        const QAction* action = menus.action(QString::fromStdString(name));
        if (!action || action->isSeparator() || action->menu() || parents.contains(name)) continue;
        const MenuRow* parent = above(rows, row);
        std::string reason = reason_of(frame_.session(), row.action, row.needs);
        if (reason.empty() && !action->isEnabled()) reason = "there is no step";
        entries_.push_back({.kind = kind_of(rows, row),
                            .id = std::string(MenuPrefix) + name,
                            .text = words(action->text()),
                            .detail = parent && parent->parent[0] ? words(QString::fromUtf8(parent->caption))
                                                                  : std::string(),
                            .reason = std::move(reason)});
    }
    // Buttons that no entry of a menu stands for.
    for (const ToolRow& row : tool_rows()) {
        const auto same = [&](const MenuRow& m) { return m.action == row.action && m.value == row.value; };
        if (!row.action || std::ranges::any_of(menu_rows(), same)) continue;
        entries_.push_back({.kind = row.action == start_tank ? PaletteKind::calculation : PaletteKind::window,
                            .id = std::string(MenuPrefix) + "Toolbar1_" + std::to_string(row.index),
                            .text = words(QString::fromUtf8(row.tip)),
                            .reason = why_not(frame_.session(), row.needs)});
    }
}

void PaletteEntries::add_equations() {
    const Session& s = frame_.session();
    const std::string missing = why_not(s, Needs::critical_data);
    std::set<int> offered;
    if (missing.empty())
        for (const ModelList::Entry& entry : open_model_form(s.document).EOSKombi.entries)
            offered.insert(entry.code);
    for (const EosInfo& eos : eos_list()) {
        const int code = static_cast<int>(eos.code);
        std::string reason = missing;
        if (reason.empty() && !offered.contains(code)) reason = "not offered for this substance";
        entries_.push_back({.kind = PaletteKind::models,
                            .id = std::string(EosPrefix) + std::to_string(code),
                            .text = "Equation of State: " + std::string(trim(eos.text)),
                            .reason = std::move(reason)});
    }
}

void PaletteEntries::add_windows() {
    for (const QMdiSubWindow* sub : frame_.area->subWindowList()) {
        if (sub->isHidden() || !sub->widget()) continue;
        entries_.push_back({.kind = PaletteKind::window,
                            .id = std::string(WindowPrefix) + sub->widget()->objectName().toStdString(),
                            .text = sub->windowTitle().simplified().toStdString(),
                            .detail = "open"});
    }
}

void PaletteEntries::add_help() {
    for (const HelpPage& page : help_pages()) {
        const std::string id = std::string(HelpPrefix) + std::to_string(page.topic);
        const std::string title = page.title.toStdString();
        entries_.push_back({.kind = PaletteKind::help, .id = id, .text = title});
        for (const QString& heading : page.headings)
            entries_.push_back({.kind = PaletteKind::help,
                                .id = id + '#' + heading.toStdString(),
                                .text = heading.toStdString(),
                                .detail = title});
    }
}

void PaletteEntries::add_recent_files() {
    const auto add = [this](RecentFiles kind, std::string_view prefix, const char* detail) {
        for (const std::string& path : recent_files(frame_.bench().memory, kind))
            entries_.push_back({.kind = PaletteKind::window,
                                .id = std::string(prefix) + path,
                                .text = name_part(path),
                                .detail = detail});
    };
    add(RecentFiles::projects, ProjectPrefix, "recent project");
    add(RecentFiles::data, DataPrefix, "recent data file");
}

std::vector<PaletteHit> PaletteEntries::find(std::string_view typed) {
    std::vector<PaletteEntry> entries = entries_;
    if (trim(typed).empty()) {
        for (const std::string& id : used_)
            if (const RecentSubstance s = substance_of_id(id);
                !s.name.empty() && FileExists(s.database, frame_.session().ProgramPath))
                entries.push_back(
                    {.kind = PaletteKind::substance, .id = id, .text = s.name, .detail = s.formula});
    } else {
        const NameIndex& names = starter_ ? starter_names_ : substance_names(frame_.session()).index;
        std::ranges::move(palette_substances(starter_ ? *starter_ : frame_.session().database, names, typed),
                          std::back_inserter(entries));
    }
    return palette_hits(entries, typed, used_);
}

void run_palette_entry(mdiQUOM& frame, const mdiMenus& menus, const std::string& id) {
    remember(frame.bench().memory, id);
    const auto behind = [&](std::string_view prefix) {
        return QString::fromStdString(id.substr(prefix.size()));
    };
    if (id.starts_with(MenuPrefix)) {
        if (QAction* action = menus.action(behind(MenuPrefix))) action->trigger();
    } else if (id.starts_with(EosPrefix)) {
        choose_equation(frame, behind(EosPrefix).toInt());
    } else if (id.starts_with(WindowPrefix)) {
        show_window(frame, behind(WindowPrefix));
    } else if (id.starts_with(HelpPrefix)) {
        frame.show_help(behind(HelpPrefix).section(QLatin1Char('#'), 0, 0).toInt());
    } else if (id.starts_with(ProjectPrefix)) {
        open_recent(frame, RecentFiles::projects, id.substr(ProjectPrefix.size()));
    } else if (id.starts_with(DataPrefix)) {
        open_recent(frame, RecentFiles::data, id.substr(DataPrefix.size()));
    } else if (const RecentSubstance substance = substance_of_id(id); !substance.name.empty()) {
        take_recent(frame, substance);
    }
}

QString palette_icon(PaletteKind kind) {
    constexpr const char* Icons[] = {"calculate", "substance", "window", "window",
                                     "xy-editor", "xy-editor", "help"};
    return QLatin1String(Icons[static_cast<std::size_t>(kind)]);
}

}  // namespace quom

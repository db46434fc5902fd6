#include "forms/start_page_form.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/dates.h"
#include "base/files.h"
#include "engine/models.h"
#include "forms/open_form.h"
#include "forms/shell.h"
#include "session/program_path.h"
#include "session/project_file.h"
#include "substance/database.h"
#include "substance/search.h"

namespace quom {

namespace {

constexpr StartText Steps[] = {
    {"Select a substance", "type a part of any name, the formula or the CAS number"},
    {"Models", "an equation of state is proposed; OK takes it"},
    {"Calculation", "T, p => rho gives the state and its functions"},
};

constexpr StartText Keys[] = {
    {"Ctrl+K", "find anything"},           {"F5", "calculate"}, {"Ctrl+O", "open"}, {"Ctrl+,", "options"},
    {"F1", "help on the window in front"}, {"Esc", "back"},
};

constexpr std::size_t LargestLastSession = 1 << 20;  // [bytes]

constexpr ExampleValue StateValues[] = {{BoxValue::T, "350"}, {BoxValue::p, "1000"}};
constexpr ExampleValue BoilingValues[] = {{BoxValue::p, "101.325"}};
constexpr ExampleValue TankValues[] = {
    {BoxValue::tank_V, "1"}, {BoxValue::tank_m, "20"}, {BoxValue::T, "300"}};
constexpr Example Examples[] = {
    {"A state: propane at 350 K and 1000 kPa", "density, h, s and all other functions", "calculate",
     "74-98-6", Mode::functions, StateValues},
    {"Boiling: water at 101.325 kPa", "T(LV), both densities, delta(LV)h", "calculate", "7732-18-5",
     Mode::equilibrium_p, BoilingValues},
    {"A tank: 20 kg of ammonia in 1 m^3 at 300 K", "pressure and shares of L and V", "tank", "7664-41-7",
     Mode::tank_global, TankValues},
};

StartRow starter_row(const Session& s) {
    StartRow row{
        .command = StartCommand::open_starter, .icon = "database", .text = "Open the starter database"};
    const std::string name = StarterDatabase;
    if (!FileExists(name, s.ProgramPath)) {
        row.second = name + " is not in the program folder";
        row.enabled = false;
        return row;
    }
    const OpenedDatabase opened =
        open_database(7, resolve_path(name, s.ProgramPath), s.document.options.Englisch);
    row.second = opened.err == 0 ? name + ", " + std::to_string(opened.file.StoffAnzahl()) + " substances"
                                 : opened.fault;
    row.enabled = opened.err == 0;
    return row;
}

// What the last session holds, or why it cannot be loaded: its database is not found, or lacks its substance.
StartRow last_session_row(const Session& s) {
    StartRow row{.command = StartCommand::load_last_session,
                 .icon = "last-session",
                 .text = "Load last session",
                 .second = "none was saved yet",
                 .enabled = false};
    const std::string path = find_in_folder(s.ProgramPath, LastSessionName);
    if (path.empty()) return row;
    const ProjectPreview preview = preview_project(path, s);
    if (preview.refusal)
        row.second = preview.refusal->text;
    else if (preview.database_missing || preview.substance_name.empty())
        row.second = preview.database_missing ? preview.database_text : preview.substance_text;
    else
        row.enabled = true;
    if (!row.enabled) {
        std::ranges::replace(row.second, '\n', ' ');
        return row;
    }
    row.second = preview.substance_name + ", ";
    const FileBytes file = read_file(path, LargestLastSession);
    if (const ReadProject read = read_project(file.bytes.value_or(""), {}); read.project)
        row.second += std::string(trim(eos_info(eos_of(read.project->EOSKode)).text)) + ", ";
    row.second += spoken_day(file_date_text(path), today_text()) + " " + file_time_text(path);
    return row;
}

std::string project_icon(const std::string&) { return "load-project"; }
std::string data_icon(const std::string& path) {
    return is_data_file_name(path) ? "exp-data-edit" : "xy-editor";
}

// Files by their names, with the day of their last change.
StartCard files_card(std::string head, StartCommand command, std::string (*icon_of)(const std::string& path),
                     const std::vector<std::string>& paths, std::size_t most,
                     const std::string& ProgramPath) {
    StartCard card{std::move(head), {}};
    for (std::size_t i = 0; i < paths.size() && card.rows.size() < most; ++i)
        if (FileExists(paths[i], ProgramPath))
            card.rows.push_back({.command = command,
                                 .index = static_cast<int>(i),
                                 .icon = icon_of(paths[i]),
                                 .text = name_part(paths[i]),
                                 .right = spoken_day(file_date_text(paths[i]), today_text())});
    return card;
}

StartCard substances_card(const std::vector<RecentSubstance>& recent, const std::string& ProgramPath) {
    StartCard card{"Recent substances", {}};
    for (std::size_t i = 0; i < recent.size() && card.rows.size() < RecentSubstanceCount; ++i)
        if (FileExists(recent[i].database, ProgramPath))
            card.rows.push_back({.command = StartCommand::recent_substance,
                                 .index = static_cast<int>(i),
                                 .icon = "substance",
                                 .text = recent[i].name,
                                 .right = recent[i].formula});
    return card;
}

StartCard begin_card(const Session& s) {
    return {"Begin",
            {starter_row(s),
             last_session_row(s),
             {.command = StartCommand::load_project,
              .icon = "load-project",
              .text = "Load a project *.QC6 ...",
              .second = "substance, models, options and data"},
             {.command = StartCommand::open_database,
              .icon = "new-project",
              .text = "Open database *.Q07 / new project ...",
              .second = "a database of your own",
              .right = "Ctrl+O"}}};
}

StartCard example_card() {
    StartCard card{"Try an example", {}};
    for (const Example& example : examples())
        card.rows.push_back({.command = StartCommand::example,
                             .index = static_cast<int>(card.rows.size()),
                             .icon = std::string(example.icon),
                             .text = std::string(example.text),
                             .second = std::string(example.second)});
    return card;
}

}  // namespace

std::span<const StartText> first_steps() { return Steps; }
std::span<const StartText> start_keys() { return Keys; }

std::span<const Example> examples() { return Examples; }

RecentSubstance substance_in_force(const Session& s) {
    const int index = s.document.substance.StoffIndexAktiv;
    if (index < 1 || index > s.database.StoffAnzahl()) return {};
    const SubstanceRow& row = s.database.rows[static_cast<std::size_t>(index) - 1];
    return {main_name(row.SubstanceName), row.SubstanceFormula, row.SubstanceCAS, s.database.path};
}

std::vector<RecentSubstance> with_recent(std::vector<RecentSubstance> list, const RecentSubstance& taken) {
    if (taken.name.empty()) return list;
    std::erase(list, taken);
    list.insert(list.begin(), taken);
    if (list.size() > RecentSubstanceCount) list.resize(RecentSubstanceCount);
    return list;
}

int find_recent(const DatabaseFile& file, const RecentSubstance& recent) {
    for (std::size_t i = 0; i < file.rows.size(); ++i)
        if (file.rows[i].SubstanceCAS == recent.casrn && main_name(file.rows[i].SubstanceName) == recent.name)
            return static_cast<int>(i) + 1;
    const int by_number = FindCAS(file, recent.casrn);
    return by_number > 0 ? by_number : find_in_tables(file, recent.name);
}

StartPageForm start_page_form(const Session& s, const RecentlyUsed& recent) {
    const std::string hint = next_step_hint(s);
    const std::size_t line_end = std::min(hint.find('\n'), hint.size());
    StartPageForm form{.headline = hint.substr(0, line_end),
                       .sentence = hint.substr(std::min(line_end + 1, hint.size())),
                       .begin = begin_card(s),
                       .beside = {}};
    StartCard substances = substances_card(recent.substances, s.ProgramPath);
    StartCard projects = files_card("Recent projects", StartCommand::recent_project, project_icon,
                                    recent.projects, RecentProjectRows, s.ProgramPath);
    StartCard data = files_card("Recent data files", StartCommand::recent_data, data_icon, recent.data,
                                RecentDataRows, s.ProgramPath);
    if (!substances.rows.empty() && projects.rows.empty())
        projects.rows.push_back({.command = StartCommand::recent_project,
                                 .icon = "load-project",
                                 .text = "No project",
                                 .second = "none was saved yet",
                                 .enabled = false});
    form.beside.push_back(substances.rows.empty() ? example_card() : std::move(substances));
    for (StartCard* card : {&projects, &data})
        if (!card->rows.empty()) form.beside.push_back(std::move(*card));
    return form;
}

}  // namespace quom

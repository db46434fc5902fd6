// The page of the empty main window without its widgets: what one can begin with, in cards of rows; the
// substances taken last; the examples.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "forms/calculation_form.h"
#include "session/session.h"

namespace quom {

enum class StartCommand {
    open_starter,
    load_last_session,
    load_project,
    open_database,
    recent_substance,
    recent_project,
    recent_data,
    example,
};

struct StartRow {
    StartCommand command{};
    int index = 0;       // of the recent substance, project or data file, or of the example
    std::string icon{};  // of the icons of the program
    std::string text{};
    std::string second{};  // line below; of a row that cannot act: why; empty: a row of one line
    std::string right{};   // formula, shortcut
    bool enabled = true;
    bool operator==(const StartRow&) const = default;
};

struct StartCard {
    std::string head;
    std::vector<StartRow> rows;
    bool operator==(const StartCard&) const = default;
};

struct StartPageForm {
    std::string headline, sentence;
    StartCard begin;
    std::vector<StartCard> beside;  // what was used last, or the examples
    bool operator==(const StartPageForm&) const = default;
};

struct StartText {
    std::string_view head, text;
};
std::span<const StartText> first_steps();
std::span<const StartText> start_keys();  // key and what it does

// A substance as it is remembered, with the database that it was taken from.
struct RecentSubstance {
    std::string name, formula, casrn, database;
    bool operator==(const RecentSubstance&) const = default;
};
inline constexpr std::size_t RecentSubstanceCount = 5;

// The substance in force; an empty name when there is none.
RecentSubstance substance_in_force(const Session& session);
// The list with the substance at its front, once, and no longer than it may be.
std::vector<RecentSubstance> with_recent(std::vector<RecentSubstance> list, const RecentSubstance& taken);
// Index (1-based) of a remembered substance: same name and CAS number, else that CAS number, else that name;
// 0 when the database has it no more.
int find_recent(const DatabaseFile& file, const RecentSubstance& recent);

// What was used last, the last one first.
struct RecentlyUsed {
    std::vector<RecentSubstance> substances;
    std::vector<std::string> projects;  // paths
    std::vector<std::string> data;      // paths of .BAQ, .XY and .LRG files
};
inline constexpr std::size_t RecentProjectRows = 3, RecentDataRows = 3;

// Substances whose database is gone are left out, as are files that are gone; an index of a row is that in
// the list given.
StartPageForm start_page_form(const Session& session, const RecentlyUsed& recent);

// A calculation to look at: models as they are proposed, values by the boxes that take them.
struct ExampleValue {
    BoxValue box{};
    std::string_view text;
};
struct Example {
    std::string_view text, second, icon, casrn;
    Mode mode{};
    std::span<const ExampleValue> values;
};
std::span<const Example> examples();

}  // namespace quom

// What the palette can find and do: entries of the menus, equations of state, open windows, help pages,
// substances.
#pragma once
#include <QString>
#include <optional>
#include <string_view>
#include <vector>

#include "forms/palette_form.h"
#include "substance/database_file.h"
#include "substance/name_index.h"

namespace quom {

class mdiMenus;
class mdiQUOM;

// Entries as the session and the windows are now.
class PaletteEntries {
 public:
    PaletteEntries(mdiQUOM& frame, const mdiMenus& menus);
    // What the text finds; nothing typed: what was used last.
    std::vector<PaletteHit> find(std::string_view typed);

 private:
    void add_menu_entries(const mdiMenus& menus);
    void add_equations();
    void add_windows();
    void add_help();
    void add_recent_files();

    mdiQUOM& frame_;
    std::vector<PaletteEntry> entries_;
    std::vector<std::string> used_;
    // Of the starter database while none is open.
    std::optional<DatabaseFile> starter_;
    NameIndex starter_names_;
};

// Runs what an identity stands for and remembers it.
void run_palette_entry(mdiQUOM& frame, const mdiMenus& menus, const std::string& id);

// Icon of a kind, of the icons of the program.
QString palette_icon(PaletteKind kind);

}  // namespace quom

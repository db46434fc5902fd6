// The main window without its window: what a command needs before it can run, opening a database, the command
// line, external programs.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// What a command of the main window needs before it can run.
enum class Needs {
    nothing,
    database,       // a database is loaded
    substance,      // a substance is in force
    critical_data,  // ... and has T(cr), p(cr)
    data_points,    // experimental data are loaded
    models,         // the models were confirmed; enough for calculations with the ideal gas
    calculation,    // ... and the substance has T(cr), p(cr)
    state_chart,    // ... and what else a state chart is made from
    // The models were confirmed and the database has the equation:
    equ_frost_kalkwarf,
    equ_wagner,
    equ_antoine_low,
    equ_antoine_high,
    equ_rhoL,
    equ_rhoS,
    equ_hLV,
    equ_cp_ideal,
    equ_cpL,
    equ_cpS,
};
bool fulfilled(const Session& session, Needs needs);
// What has to be done first, or what the record lacks; empty when the command can run.
std::string why_not(const Session& session, Needs needs);

// Loads the database that the user picked, for a new project without a name. True: it is in force and
// ResetSession has run. False: the user was
// told why, and nothing has changed.
bool open_picked_database(Session& session, int kind, const std::string& path, Messages& messages);

// Title of the dialog for a database of kind 6 or 7, and the path in force of that kind.
std::string database_dialog_title(const Session& session, int kind);
std::string database_path(const Session& session, int kind);

// " Database loaded: " and the file name of the database in force, or "none".
std::string database_panel(const Session& session);
// EOS and "Vapor press. equ.: " with the equation's name, once the models were confirmed.
std::string models_panel(const Session& session);
// What to do next while no window is open, two lines; empty once the models were confirmed.
std::string next_step_hint(const Session& session);

// Opening the menu of calculations, or starting one: in a batch without data points the user is told what is
// missing; true then.
bool opening_calculation_menu(const Session& session, Messages& messages);
// Caption of the entry of mode 11 by the equation of state in force.
std::string_view virial_menu_caption(const Session& session);

// The project that the command line names: arguments joined by one blank, double quotes removed, trimmed.
std::string command_line_project(const std::vector<std::string>& arguments);

// An external program: a file of exactly this name in the program folder, else the name without ".EXE" in
// lower case;
// "" when there is neither.
std::string find_external_program(std::string_view ProgramPath, std::string_view name);

}  // namespace quom

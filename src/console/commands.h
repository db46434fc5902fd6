// The table of commands of quomc, and what a command works with.
#pragma once
#include <CLI/CLI.hpp>
#include <functional>
#include <istream>
#include <ostream>
#include <span>

#include "console/console_messages.h"
#include "console/options.h"
#include "report/report.h"
#include "session/session.h"

namespace quom {

// One run of quomc: the session, the options common to all commands, and the streams.
struct Program {
    Session session;
    const GlobalOptions& options;
    Messages& messages;
    std::istream& in;
    std::ostream& out;
    OutputUnits output_units{};  // of --units, for the substance in force
};

// What runs once the arguments are read.
using Action = std::function<Report(Program&)>;

struct Command {
    const char* name;
    const char* help;                  // one line
    const char* form;                  // arguments in their right form
    const char* example;               // arguments of an example
    Action (*declare)(CLI::App& app);  // adds the arguments to its own App, returns what reads them and runs
};
std::span<const Command> commands();

Action declare_list(CLI::App& app);
Action declare_find(CLI::App& app);
Action declare_show(CLI::App& app);
Action declare_models(CLI::App& app);
Action declare_state(CLI::App& app);
Action declare_saturation(CLI::App& app);
Action declare_virial(CLI::App& app);
Action declare_calc(CLI::App& app);
Action declare_sweep(CLI::App& app);
Action declare_batch(CLI::App& app);
Action declare_tank(CLI::App& app);
Action declare_iso(CLI::App& app);
Action declare_kinds(CLI::App& app);
Action declare_curve(CLI::App& app);
Action declare_diagram(CLI::App& app);
Action declare_chart(CLI::App& app);
Action declare_data(CLI::App& app);
Action declare_audit(CLI::App& app);
Action declare_project(CLI::App& app);
Action declare_starter(CLI::App& app);

}  // namespace quom

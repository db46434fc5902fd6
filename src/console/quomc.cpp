#include "console/quomc.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "console/commands.h"
#include "report/output_units.h"

namespace quom {
namespace {

constexpr Command table[] = {
    {"list", "All substances of the database", "", "", declare_list},
    {"find", "Substances by a part of a name, formula, or CAS number", "TEXT", "butane", declare_find},
    {"show", "All constants of a substance", "SUBSTANCE", "Kohlendioxid", declare_show},
    {"models", "The models that a substance offers, and which are selected", "SUBSTANCE [models]",
     "7732-18-5", declare_models},
    {"state", "Volumes, phases, derivatives and functions at a state",
     "SUBSTANCE (--T K --p kPa | --T K --rho kg/m^3 | --p kPa --rho kg/m^3) [models]",
     "water --T 300 --p 101.325", declare_state},
    {"saturation", "Equilibrium of liquid and vapor by every route", "SUBSTANCE (--T K | --p kPa) [models]",
     "ethanol --p 101.325 --concept partial", declare_saturation},
    {"virial", "Second virial coefficient by every virial equation",
     "SUBSTANCE --T K [--b0 --b1 --b2] [models]", "argon --T 273.15", declare_virial},
    {"calc", "One calculation of a mode, as the result window shows it",
     "SUBSTANCE --mode N [--T K --p kPa --rho kg/m^3 --m kg --V m^3] [--ext 1..4] [--functions] [models]",
     "propane --mode 4 --T 300 --functions", declare_calc},
    {"sweep", "One calculation for each line of a table or point of a grid",
     "SUBSTANCE --mode N (--in FILE|- | --grid GRID) --out FILE|- [--jobs N] [--functions] [models]",
     "propane --mode 3 --in states.csv --out results.csv", declare_sweep},
    {"batch", "All points of a data set, with list and record",
     "(SUBSTANCE --data FILE.BAQ | --project FILE.QC6) --mode N [--lst FILE] [--csv FILE] [--sep CHAR] "
     "[--ext 1..4] [--functions] [models]",
     "propane --data points.BAQ --mode 4 --lst points.LST", declare_batch},
    {"tank", "Phases, pressure and shares in a closed tank",
     "SUBSTANCE --T K --V m^3 (--m kg | --n kmol) [models]", "propane --T 300 --V 0.1 --m 20", declare_tank},
    {"iso", "The T or p at which a function has a value",
     "SUBSTANCE (--T K | --p kPa) --hold v|h|s|g|u|a|eH|eU (--value X | --T0 K --p0 kPa) [--phase L|V] "
     "[models]",
     "propane --p 100 --hold h --T0 320 --p0 800", declare_iso},
    {"kinds", "The kinds of diagrams with their numbers", "", "", declare_kinds},
    {"curve", "The points of a curve of a diagram",
     "SUBSTANCE --kind N [--T K | --p kPa | --v m^3/kmol] [--from A --to B] [--x A:B] [--y A:B] [--dens N] "
     "[--vapor-fraction X] [--s-curve | --tie-line] [--triple-rule on|off] [--process LINE ...] [models]",
     "propane --kind 1 --T 340 --x 0.05:2 --y 0:5000", declare_curve},
    {"diagram", "Curves, marks, measured points on a sheet: picture, file or data",
     "SUBSTANCE --kind N --curves LIST [--coexistence] [--inversion] [--s-curve] [--tie-line] [--bisector] "
     "[--marks LIST] [--points FILE.BAQ] [--x A:B] [--y A:B] [design] [--size WxH] [--dpi N] --out FILE "
     "[models]",
     "propane --kind 1 --curves \"T=300:400:20\" --x 0.05:2 --y 0:6000 --coexistence --out propane.svg",
     declare_diagram},
    {"chart", "A log p-h, T-s or h-s chart as a picture, chart file or states",
     "SUBSTANCE --kind ph|ts|hs [--units TEXT] [--ref session|0C|-40C|nbp|triple] [--black] [--size WxH] "
     "[--dpi N] --out FILE [models]",
     "CO2 --kind ph --units T=degC,p=bar --ref 0C --out CO2.pdf", declare_chart},
    {"data", "What a data file holds; data files converted and joined",
     "FILE (--info | --convert OUT.BAQ|OUT.XY|OUT.csv [--y COLUMN] | --join FILE --out OUT)",
     "acetone.BAQ --convert acetone.csv", declare_data},
    {"audit", "The sets of each record against each other, one line a doubt", "[SUBSTANCE] [--rules]",
     "water --rules", declare_audit},
    {"project", "What a project file holds and what of it is missing; or a new one",
     "FILE [--info] | --save FILE SUBSTANCE [--data FILE] [--comment TEXT] [models]",
     "--save propane.QC6 propane --eos 5 --concept partial", declare_project},
    {"starter", "The starter database in use, and whether a newer one is installed", "[--copy]", "--copy",
     declare_starter},
};

constexpr const char* footer =
    "SUBSTANCE is a CAS number, a name in English or German, a synonym, or '#index' of the list (quoted:\n"
    "the shell takes a bare # for a comment). [models] stands for the options that choose models,\n"
    "reference state and units. The options above may stand before or behind the command.\n"
    "\"quomc COMMAND --help\" tells the options of a command.\n"
    "A number may have a unit: --T 20C --p \"5 bar\"; without one it is in K, kPa, kg/m^3, m^3, kg.\n"
    "\n"
    "Exit status: 0 done; 1 no result, the reason on standard error; 2 wrong arguments; 3 a file could\n"
    "not be read or written.\n"
    "\n"
    "Examples:\n"
    "  quomc state water --T 300 --p 101.325\n"
    "  quomc saturation Ethanol --T 350 --eos 5 --json";

std::string form_of(const std::string& command) {
    for (const Command& known : table)
        if (command == known.name) return "quomc " + command + " " + known.form;
    return "quomc [--program-folder DIR] [--db FILE] [--json] COMMAND ...";
}

// The help of the library with the right form of the command as its usage.
class HelpForm : public CLI::Formatter {
 public:
    std::string make_usage(const CLI::App* app, std::string) const override {
        return "Usage: " + form_of(app->get_name()) + "\n";
    }
};

bool has_section(const Report& report, std::string_view key) {
    return std::any_of(report.sections.begin(), report.sections.end(), [key](const ReportSection& section) {
        return std::visit([key](const auto& part) { return part.key == key; }, section);
    });
}

// Every answer has its warnings and ranges, though there be none.
void complete(Report& report) {
    for (const char* key : {"warnings", "validity"}) {
        if (!has_section(report, key)) report.sections.emplace_back(Table{key, "", {}, {}, Layout::json});
    }
}

// Writes what a command found; returns the exit status.
int deliver(Report report, bool json, std::ostream& out, std::ostream& err) {
    if (json) {
        complete(report);
        out << to_json(report);
    } else {
        out << to_text(report);
    }
    out.flush();
    if (!report.message.empty()) {
        err << "quomc" << (report.command.empty() ? "" : " ") << report.command << ": " << report.message
            << '\n';
    }
    if (!out) {
        err << "quomc: The output could not be written.\n";
        return status_file;
    }
    return report.status;
}

std::string no_command() {
    std::string names;
    for (const Command& command : table) names += (names.empty() ? "" : ", ") + std::string(command.name);
    return "A command is needed: " + names + ".";
}

int wrong_arguments(const CLI::App& app, const std::string& what, bool json, std::ostream& out,
                    std::ostream& err) {
    Report report = refusal("", {status_usage, what});
    for (const CLI::App* command : app.get_subcommands()) report.command = command->get_name();
    const std::string command = report.command;
    const int status = deliver(std::move(report), json, out, err);
    err << "Right: " << form_of(command) << '\n';
    err << "Help:  quomc" << (command.empty() ? "" : " ") << command << " --help\n";
    return status;
}

// What is said of the exception that is being handled.
Report failure(const std::string& command) {
    const auto ended = [&command](const std::string& why) {
        return refusal(command, {status_file, "It ended early: " + why + "."});
    };
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return ended("the memory does not suffice");
    } catch (const std::length_error&) {
        return ended("the memory does not suffice");
    } catch (const std::exception& error) {
        return ended(error.what());
    } catch (...) {
        return ended("the reason is unknown");
    }
}

// Reads the arguments and runs the command, whose name is left in command as soon as it is known.
int run(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err,
        std::string& command_name) {
    CLI::App app("Thermodynamic calculations of states and processes for pure substances.", "quomc");
    app.footer(footer);
    app.set_version_flag("--version", "QUOM-6 console 6.0");
    const auto formatter = std::make_shared<HelpForm>();
    formatter->column_width(34);
    app.formatter(formatter);
    app.require_subcommand(1);
    GlobalOptions options;
    add_global_options(app, options);

    std::vector<std::pair<CLI::App*, Action>> actions;
    for (const Command& command : commands()) {
        CLI::App* own = app.add_subcommand(command.name, command.help);
        own->fallthrough();
        own->footer("Example:\n  quomc " + std::string(command.name) + " " + command.example +
                    "\n\nOptions of all commands (--json, --db, --program-folder, --answer), exit status: "
                    "quomc --help");
        actions.emplace_back(own, command.declare(*own));
    }

    const bool json = std::find(args.begin(), args.end(), "--json") != args.end();
    std::reverse(args.begin(), args.end());
    try {
        app.parse(std::move(args));
    } catch (const CLI::Success& help) {
        app.exit(help, out, err);
        return status_done;
    } catch (const CLI::ParseError& wrong) {
        const bool no_such =
            dynamic_cast<const CLI::ExtrasError*>(&wrong) || dynamic_cast<const CLI::RequiredError*>(&wrong);
        if (no_such && app.get_subcommands().empty())
            return wrong_arguments(app, no_command(), json, out, err);
        return wrong_arguments(app, wrong.what(), json, out, err);
    }

    ConsoleMessages messages(err, options.answer);
    Program program{.session = {}, .options = options, .messages = messages, .in = in, .out = out};
    for (const auto& [command, action] : actions) {
        if (!command->parsed()) continue;
        command_name = command->get_name();
        Report report = in_units(action(program), program.output_units);
        report.command = command_name;
        if (report.status == status_usage)
            return wrong_arguments(app, report.message, options.json, out, err);
        return deliver(std::move(report), options.json, out, err);
    }
    return status_usage;
}

}  // namespace

std::span<const Command> commands() { return table; }

int quomc_main(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err) {
    const bool json = std::find(args.begin(), args.end(), "--json") != args.end();
    std::string command;
    try {
        return run(std::move(args), in, out, err, command);
    } catch (...) {
        return deliver(failure(command), json, out, err);
    }
}

}  // namespace quom

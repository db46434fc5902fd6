// starter: the starter database of the program folder against that of the installation.
#include <memory>

#include "console/commands.h"
#include "session/starter_update.h"

namespace quom {
namespace {

Report starter(Program& program, bool copy) {
    const ProgramPlaces places = program_places(program.options.program_folder);
    const ProgramFolder folder = find_program_folder(places);
    if (!folder.fault.empty()) return refusal("starter", {status_file, folder.fault});
    StarterUpdate update = find_starter_update(places, folder.path);
    if (copy && !update.newer)
        return refusal("starter",
                       {status_no_result, "There is no newer starter database than " +
                                              (update.own.empty() ? folder.path : update.own) + "."});
    if (copy && update.offered()) {
        if (const std::string fault = copy_starter_update(update); !fault.empty())
            return refusal("starter", {status_file, fault});
        update.copied = true;
    }
    Report report;
    report.title = "Starter database";
    report.sections.emplace_back(
        Block{"starter",
              "",
              {{"own", "in use", remark(update.own), "", ""},
               {"own_version", "its version", remark(update.own_version), "", ""},
               {"installed", "installed", remark(update.installed), "", ""},
               {"installed_version", "its version", remark(update.installed_version), "", ""},
               {"newer", "", update.newer, "", ""},
               {"copy", "copy", update.copied ? remark(update.copy) : Value(), "", ""}},
              Layout::list});
    if (update.copied)
        report.notes.push_back("Use the newer one with --db " + update.copy +
                               "; your own file is as it was.");
    else if (update.newer)
        report.notes.push_back(
            "The installed one is newer. \"quomc starter --copy\" puts it beside yours under the name of its "
            "version.");
    return report;
}

}  // namespace

Action declare_starter(CLI::App& app) {
    const auto copy = std::make_shared<bool>(false);
    app.add_flag("--copy", *copy, "Copy the newer one beside the own one, which stays");
    return [copy](Program& program) { return starter(program, *copy); };
}

}  // namespace quom

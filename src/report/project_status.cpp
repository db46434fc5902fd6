#include "report/project_status.h"

#include <cmath>
#include <string_view>

#include "base/code_page.h"
#include "base/dates.h"
#include "base/files.h"
#include "base/number_text.h"
#include "engine/model_catalogue.h"

namespace quom {
namespace {

constexpr const char* indent = "    ";
constexpr std::size_t LongestPath = 60;
constexpr double SameVolume = 0.001;  // of v(cr) [m^3/kmol]

// The end of a long path: what is cut off is its left part.
std::string shortened(std::string_view path) {
    const std::size_t length = text_length(path);
    if (length <= LongestPath) return std::string(path);
    return std::string(path.substr(text_left(path, length - LongestPath).size()));
}

StatusSection project_section(const Session& session) {
    const ShellState& shell = session.shell;
    StatusSection section{"project", {}};
    if (shell.LastSessionLoaded) {
        section.lines = {"    last session"};
        return section;
    }
    if (shell.ProjectPath.empty()) {
        const bool chosen = session.document.substance.StoffIndexAktiv != 0;
        section.lines = {chosen ? "    new (still unnamed)" : "    (not yet completely defined)"};
        return section;
    }
    const std::string& comment = session.document.ProjectComment;
    section.lines = {indent + shortened(shell.ProjectPath),
                     "    date of the file   " + file_date_text(shell.ProjectPath),
                     "    Project comment: " + (comment.empty() ? "<>" : comment)};
    return section;
}

StatusSection database_section(const Session& session) {
    const Document& d = session.document;
    if (d.DatabaseKind == 0) return {"substance database", {"    (none)"}};
    return {"substance database",
            {indent + name_part(d.DatabasePath) + "  with  " +
             std::to_string(session.database.StoffAnzahl()) + " substance(s)"}};
}

StatusSection substance_section(const Session& session) {
    if (session.document.substance.StoffIndexAktiv == 0) return {"substance", {"    no substance"}};
    const SubstanceConstants& c = session.substance();
    return {"substance", {indent + c.StoffName + "  " + c.StoffFormula + "  " + c.StoffCAS}};
}

StatusSection data_section(const Session& session) {
    const ExperimentalData& data = session.document.exp;
    const ExpDataFile& file = data.file;
    StatusSection section{"exper. data T-p-rho-HLV-cp", {}};
    const int count = data_point_count(data);
    if (count == 0) {
        section.lines = {"    none"};
        return section;
    }
    if (file.ExpFile.empty() || data.ExpGeaendert)
        section.lines.push_back(indent + std::to_string(count) +
                                (count == 1 ? " exper. point" : " exper. points") +
                                " available, not yet saved.");
    if (file.ExpFile.empty()) return section;

    section.lines.push_back("    File " + name_part(file.ExpFile) + "  from  " + file.ExpDate + "   with  " +
                            std::to_string(count) + "  experimental points  ");
    section.lines.push_back("    substance:  " + file.ExpCAS + (file.ExpName.empty() ? "" : "  ") +
                            file.ExpName);
    section.lines.push_back("    file comment: " + file.ExpComment);
    if (trim(file.ExpCAS) != trim(session.substance().StoffCAS)) {
        section.lines.push_back("    WARNING:");
        section.lines.push_back(
            "    the substance of the data file is not identical with the presently loaded component");
    }
    return section;
}

StatusSection start_section(const Session& session) {
    const Units& units = session.document.units;
    StatusSection section{"Default parameters for isothermal, isobaric, isochoric diagrams",
                          {"    T/K = " + genSingle(units.TcrStart) + ", p/kPa = " +
                           genSingle(units.pcrStart) + ", v/(m^3/kmol) = " + genSingle(units.vcrStart)}};
    const double vcr = session.fluid->eos.vcrEOS;
    if (session.fluid->has_eos() && std::fabs(units.vcrStart - vcr) > SameVolume)
        section.lines.push_back("  (The " + std::string(trim(session.fluid->eos_row().text)) +
                                " was applied to calculate the parameter v(crit))");
    return section;
}

}  // namespace

std::vector<StatusSection> project_status(const Session& session) {
    return {project_section(session),   database_section(session),
            substance_section(session), data_section(session),
            start_section(session),     {"", {"(For more parameters cf. \"Models\" and \"Options\".)"}}};
}

std::string project_status_text(const Session& session) {
    std::string text;
    for (const StatusSection& section : project_status(session)) {
        if (!text.empty()) text += "\n";
        if (!section.title.empty()) text += section.title + "\n";
        for (const std::string& line : section.lines) text += line + "\n";
    }
    return text;
}

}  // namespace quom

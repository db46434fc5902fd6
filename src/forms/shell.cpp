#include "forms/shell.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/files.h"
#include "diagrams/state_chart.h"
#include "forms/refusal.h"
#include "session/start_up.h"

namespace quom {

namespace {

bool has_range(std::int16_t TLo, std::int16_t THi) { return TLo > 0 && THi > 0; }

bool has_equation(const SubstanceConstants& c, Needs needs) {
    const auto given = [](float x) { return std::fabs(x) > 1e-6F; };
    switch (needs) {
        case Needs::equ_frost_kalkwarf:
            return has_range(c.KFTLo, c.KFTHi);
        case Needs::equ_wagner:
            return has_range(c.WagnerTLo, c.WagnerTHi);
        case Needs::equ_antoine_low:
            return has_range(c.AntLoTLo, c.AntLoTHi);
        case Needs::equ_antoine_high:
            return has_range(c.AntHiTLo, c.AntHiTHi);
        case Needs::equ_rhoL:
            return given(c.RhoL[0]) || given(c.RhoL[1]);
        case Needs::equ_rhoS:
            return given(c.RhoS[0]) || given(c.RhoS[1]);
        case Needs::equ_hLV:
            return c.HLVTLo > 0;
        case Needs::equ_cp_ideal:
            return c.havePoly || c.haveSinh;
        case Needs::equ_cpL:
            return c.cpLTLo > 0;
        case Needs::equ_cpS:
            return c.cpSTLo > 0;
        default:
            return false;
    }
}

}  // namespace

bool fulfilled(const Session& s, Needs needs) {
    const SubstanceConstants& c = s.substance();
    const bool substance = s.document.substance.StoffIndexAktiv > 0;
    const bool models = substance && s.shell.ModelsConfirmed;
    switch (needs) {
        case Needs::nothing:
            return true;
        case Needs::database:
            return s.database.DatabaseKind != 0;
        case Needs::substance:
            return substance;
        case Needs::critical_data:
            return substance && c.Tcr > TinyT && c.pcr > TinyT;
        case Needs::data_points:
            return data_point_count(s.document.exp) > 0;
        case Needs::models:
            return models;
        case Needs::calculation:
            return models && c.Tcr * c.pcr >= TinyT;
        case Needs::state_chart:
            return models && why_no_chart(*s.fluid).empty();
        default:
            return models && has_equation(c, needs);
    }
}

std::string why_not(const Session& s, Needs needs) {
    if (fulfilled(s, needs)) return {};
    if (needs == Needs::data_points) return "first load experimental data";
    if (!fulfilled(s, Needs::database)) return "first open a database";
    if (!fulfilled(s, Needs::substance)) return "first choose a substance";
    if (needs == Needs::critical_data || (needs == Needs::calculation && fulfilled(s, Needs::models)))
        return "the record has no T(cr), p(cr)";
    if (!fulfilled(s, Needs::models)) return "first confirm the models";
    if (needs == Needs::state_chart) return why_no_chart(*s.fluid);
    return "the record has no such equation";
}

bool open_picked_database(Session& s, int kind, const std::string& path, Messages& messages) {
    const bool had_one = s.database.DatabaseKind != 0;
    if (LoadDatabase(s, kind, path).err != 0) {
        if (had_one) {
            messages.ask({.title = "WARNING",
                          .text = "Database " + path +
                                  "not found in the QUOM directory or empty resp.\n"
                                  "Already loaded database will be used further.",
                          .kind = MessageKind::warning});
        } else {
            messages.ask(refusal_message("Database " + path + " not found or empty resp."));
        }
        return false;
    }
    ResetSession(s);
    s.shell.LastSessionLoaded = false;
    s.shell.ProjectPath.clear();  // a new project has no name yet
    s.shell.ProjectTitle.clear();
    Document document = s.document;
    document.ProjectComment.clear();
    commit(s, std::move(document));
    return true;
}

std::string database_path(const Session& s, int kind) {
    return kind == 6 ? s.database.PathQ06 : s.database.PathQ07;
}

std::string database_dialog_title(const Session& s, int kind) {
    return "Database *.Q0" + std::to_string(kind) + " laden (" + database_path(s, kind) + ")";
}

std::string database_panel(const Session& s) {
    const DatabaseFile& file = s.database;
    return " Database loaded: " + (file.DatabaseKind != 0 ? name_part(file.path) : std::string("none"));
}

std::string models_panel(const Session& s) {
    if (!fulfilled(s, Needs::models)) return {};
    const ModelSelection& models = s.document.models;
    return std::string(trim(eos_info(models.EOSKode).text)) +
           "   Vapor press. equ.: " + std::string(trim(evp_info(models.EVPKode).text));
}

std::string next_step_hint(const Session& s) {
    if (!fulfilled(s, Needs::database))
        return "No database is loaded.\n"
               "Open one with Data -> Open database *.Q07 / new project, or go on with Data -> Load last "
               "session.";
    if (!fulfilled(s, Needs::substance))
        return "No substance is chosen.\nChoose one with Select a substance.";
    if (!s.shell.ModelsConfirmed) return "The models are not confirmed yet.\nChoose the models with Models.";
    return {};
}

bool opening_calculation_menu(const Session& s, Messages& messages) {
    if (!s.document.options.BatchMode || fulfilled(s, Needs::data_points)) return false;
    messages.ask(refusal_message("This type of calculation is possible only if exper. data are available."));
    return true;
}

std::string_view virial_menu_caption(const Session& s) {
    return s.document.models.VPhaseOnly() ? "T => Virial coefficient B"
                                          : "T => Virial coefficient B, Parameters of the CEOS";
}

std::string command_line_project(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) {
        if (!text.empty()) text += ' ';
        text += argument;
    }
    std::erase(text, '"');
    return std::string(trim(text));
}

std::string find_external_program(std::string_view ProgramPath, std::string_view name) {
    std::string short_name(name.substr(0, name.rfind('.')));
    std::ranges::transform(short_name, short_name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    for (const std::string& candidate : {std::string(name), short_name}) {
        std::string path = join_path(ProgramPath, candidate);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(path, ignored)) return path;
    }
    return {};
}

}  // namespace quom

#include "console/selection.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "calc/quantities.h"
#include "console/name_matches.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/tovarn_ji.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "session/options.h"
#include "session/program_path.h"
#include "substance/database.h"
#include "substance/search.h"

namespace quom::console {
namespace {

Fault no_result(std::string message) { return {status_no_result, std::move(message)}; }
Fault wrong(std::string message) { return {status_usage, std::move(message)}; }

int database_kind(std::string_view path) {
    const std::string name = upper_text(path);
    return name.ends_with(".Q07") ? 7 : name.ends_with(".Q06") ? 6 : 0;
}

// Silences the core while the console tells its own sentence.
class Silence {
 public:
    explicit Silence(Session& s) : s_(s), messages_(std::exchange(s.messages, nullptr)) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { s_.messages = messages_; }

 private:
    Session& s_;
    Messages* messages_;
};

std::string unknown_substance(const Session& s, std::string_view text) {
    std::string near;
    for (const NameMatch& match : near_substances(s, text, 5)) {
        near += near.empty() ? "" : ", ";
        near += main_name(s.database.file.rows[static_cast<std::size_t>(match.index) - 1].SubstanceName);
    }
    return "There is no substance \"" + std::string(text) + "\" in " + name_part(s.database.file.path) +
           ". " +
           (near.empty() ? "\"quomc list\" shows all " + std::to_string(s.database.file.StoffAnzahl()) + "."
                         : "Is it one of: " + near + "?");
}

// Index for "#12"; a fault for one that is not in the list.
struct Index {
    int index = 0;
    Refused refused;
};
Index index_of(const Session& s, std::string_view text) {
    const int count = s.database.file.StoffAnzahl();
    const std::optional<double> number = read_number(text.substr(1));
    if (number && *number >= 1 && *number <= count && *number == static_cast<int>(*number))
        return {static_cast<int>(*number), {}};
    return {0, no_result("There is no substance \"" + std::string(text) + "\": the list goes from #1 to #" +
                         std::to_string(count) + ".")};
}

// The sentence for a code that the substance does not offer.
Fault not_offered(const Session& s, const char* option, int code, std::string_view name,
                  const ModelList& list, const std::string& why) {
    std::string text = s.substance.StoffName + " does not offer " + option + " " + std::to_string(code);
    if (!trim(name).empty()) text += " (" + std::string(trim(name)) + ")";
    text += why.empty() ? "." : ": " + why + ".";
    std::string codes;
    for (const ModelList::Entry& entry : list.entries)
        if (entry.code > 0 || list.entries.size() > 1)
            codes += (codes.empty() ? "" : ", ") + std::to_string(entry.code);
    text += codes.empty() ? " There is none." : " It offers " + codes + ".";
    return no_result(std::move(text));
}

bool offers(const ModelList& list, int code) {
    return std::any_of(list.entries.begin(), list.entries.end(),
                       [code](const ModelList::Entry& entry) { return entry.code == code; });
}

// Options that must come with an equation, or must not.
Refused check_parameters(const ModelOptions& o) {
    const bool manual = o.eos == eos_virial_manual, ji = o.eos == eos_tovarn_ji_1 || o.eos == eos_tovarn_ji_2;
    if (manual && !o.b0)
        return wrong("--eos 10 needs the constants of B = b0 - b1/T^b2: --b0 B0 --b1 B1 --b2 B2.");
    if (!manual && (o.b0 || o.b1 || o.b2))
        return wrong("--b0, --b1, --b2 are the constants of the manual virial equation; add --eos 10.");
    if (ji && o.ji.empty()) return wrong("--eos 7 and 8 need a file with their parameters: --ji FILE.");
    if (!ji && !o.ji.empty()) return wrong("--ji is the parameter file of --eos 7 and 8; add one of them.");
    if (o.watson && o.hlv && *o.hlv != hlv_watson)
        return wrong("--watson is the exponent of --hlv 4, not of --hlv " + std::to_string(*o.hlv) + ".");
    if (o.watson && !(*o.watson < 10.0))
        return wrong("--watson " + genNum(*o.watson) +
                     " is not possible; an exponent below 10 is right, mostly 0.38.");
    if (o.ref && *o.ref != 1 && (o.tref || o.pref))
        return wrong("--tref and --pref belong to --ref 1; --ref 2 and 10 are at 298.15 K and 101.325 kPa.");
    return {};
}

Refused read_ji(Session& s, const ModelOptions& o) {
    if (o.ji.empty()) return {};
    const FileBytes file = read_file(resolve_path(o.ji, s.database.ProgramPath));
    if (!file.bytes) return Fault{status_file, file.fault};
    const std::string fault = ReadDjipar(*file.bytes, *o.eos, s.eos);
    if (fault.empty()) return {};
    return Fault{status_file, "Parameters in \"" + o.ji + "\": " + fault};
}

Refused select_equations(Session& s, const ModelOptions& o) {
    const auto given_eos = o.eos.value_or(eos_none);
    const ModelList eos = AktualisiereEOSKombi(s);
    if (o.eos && !offers(eos, *o.eos))
        return not_offered(s, "--eos", *o.eos, eos_name(*o.eos), eos, missing_constants(s.substance, *o.eos));
    const ModelList evp = AktualisierepKombi(s);
    if (o.evp && !offers(evp, *o.evp))
        return not_offered(s, "--evp", *o.evp, evp_name(*o.evp), evp, "its constants are not in the record");
    const ModelList cp = cp_list(s);
    if (o.cp && !offers(cp, *o.cp))
        return not_offered(s, "--cp", *o.cp, cp_name(*o.cp), cp, "its constants are not in the record");

    if (given_eos != eos_none) s.models.EOSKode = given_eos;
    if (o.evp) s.models.EVPKode = *o.evp;
    if (o.cp) s.models.cpKode = *o.cp;
    s.models.HLVKode = hlv_none;
    if (select_models(s).err > 0)
        return no_result("The parameters of --eos " + std::to_string(s.models.EOSKode) +
                         " give no equation.");

    const ModelList hlv = AktualisiereHLVKombi(s);
    if (o.hlv && !offers(hlv, *o.hlv))
        return not_offered(s, "--hlv", *o.hlv, hlv_name(*o.hlv), hlv,
                           *o.hlv == hlv_eos && s.models.VPhaseOnly ? "it needs a cubic equation of state"
                                                                    : "what it needs is not in the record");
    if (o.hlv) HLVKombi_Click(s, *o.hlv);
    if (o.watson) WatsonKombi_Change(s, genNum(*o.watson));
    if (o.global) {
        if (*o.global && s.models.VPhaseOnly)
            return wrong("--concept global needs a cubic equation of state; " +
                         std::string(trim(eos_name(s.models.EOSKode))) + " holds for the vapor alone.");
        PriorOpt_Click(s, *o.global ? 0 : 1);
    }
    if (s.models.EOSKode == eos_virial_manual) {
        s.eos.EOSb = *o.b0;
        s.eos.EOSnb = o.b1.value_or(0.0);
        s.eos.EOSm = o.b2.value_or(0.0);
    }
    return {};
}

Refused set_reference(Session& s, const ModelOptions& o) {
    ReferenceState& r = s.reference;
    if (o.ref) r.RefKode = *o.ref;
    const SubstanceConstants& k = s.substance;
    const char* missing = r.RefKode == 1                      ? nullptr
                          : k.dfH0 == 0.0f                    ? "enthalpy of formation"
                          : r.RefKode == 2 && k.S0abs == 0.0f ? "conventional entropy"
                          : r.RefKode == 10 && k.dfG0 == 0.0f ? "Gibbs energy of formation"
                                                              : nullptr;
    if (missing)
        return no_result("--ref " + std::to_string(r.RefKode) + " is not possible: the record of " +
                         k.StoffName + " has no " + missing + ". --ref 1 needs none.");
    if (o.tref) r.TRef0 = static_cast<float>(*o.tref);
    if (o.pref) r.pRef0 = static_cast<float>(*o.pref);
    r.TEnv = o.tenv.value_or(r.TEnv), r.pEnv = o.penv.value_or(r.pEnv);
    r.hOffset = o.href.value_or(r.hOffset), r.sOffset = o.sref.value_or(r.sOffset);
    return {};
}

Refused select_units(Session& s, const ModelOptions& o) {
    const double M = static_cast<double>(s.substance.MolMass);
    if ((o.energy == 3 || o.volume == 1) && M < TinyT)
        return no_result("Values per kg are not possible: the record of " + s.substance.StoffName +
                         " has no molar mass. --energy 0 --volume 0 need none.");
    if (o.volume == 2 && s.eos.vcrEOS < TinyT)
        return no_result("--volume 2 is not possible: " + std::string(trim(eos_name(s.models.EOSKode))) +
                         " has no critical volume. --volume 0 needs none.");
    s.units.EnergyMode = o.energy, s.units.VolumeMode = o.volume;
    s.units.TcrStart = s.substance.Tcr, s.units.pcrStart = s.substance.pcr, s.units.vcrStart = s.eos.vcrEOS;
    set_unit_factors(s);
    return {};
}

}  // namespace

Refused open_database(Program& program) {
    Session& s = program.session;
    const ProgramFolder folder = find_program_folder(program_places(program.options.program_folder));
    if (!folder.fault.empty()) return Fault{status_file, folder.fault};
    s.database.ProgramPath = folder.path;

    const std::string& given = program.options.db;
    std::string path = given.empty() ? StarterDatabase : given;
    std::error_code fault;
    if (!given.empty() && std::filesystem::exists(path, fault))
        path = std::filesystem::absolute(path, fault).string();
    const int kind = database_kind(path);
    if (kind == 0)
        return Fault{status_file,
                     "\"" + path + "\" is no substance database: its name ends neither in .Q07 nor in .Q06."};
    const LoadResult loaded = LoadDatabase(s, kind, path);
    if (loaded.err == 0) return {};
    if (given.empty() && !FileExists(path, folder.path))
        return Fault{status_file, "The program folder \"" + folder.path + "\" has no starter database " +
                                      StarterDatabase + "; name a database with --db FILE."};
    return Fault{status_file, loaded.fault};
}

Refused choose_substance(Session& s, std::string_view text) {
    int chosen = 0;
    if (text.starts_with('#')) {
        const Index index = index_of(s, text);
        if (index.refused) return index.refused;
        chosen = index.index;
    } else {
        const Silence silence(s);
        const SubstanceHit hit = FindSubstance(s, text);
        if (hit.found) chosen = hit.index;
    }
    if (chosen == 0) return no_result(unknown_substance(s, text));
    SelectSubstance(s, chosen);
    if (s.database.StoffIndexAktiv != chosen)
        return Fault{status_file, "The record of substance #" + std::to_string(chosen) +
                                      " cannot be read from " + s.database.file.path + "."};
    return {};
}

Refused apply_models(Session& s, const ModelOptions& o) {
    if (Refused refused = check_parameters(o)) return refused;
    if (Refused refused = read_ji(s, o)) return refused;
    if (Refused refused = select_equations(s, o)) return refused;
    s.calc.GlobalCalc = s.models.Konzept;
    s.calc.BensonRhoL = o.benson.value_or(true);
    if (Refused refused = set_reference(s, o)) return refused;
    return select_units(s, o);
}

Refused prepare(Program& program, std::string_view substance, const ModelOptions& options) {
    if (Refused refused = open_database(program)) return refused;
    if (Refused refused = choose_substance(program.session, substance)) return refused;
    return apply_models(program.session, options);
}

std::string missing_constants(const SubstanceConstants& k, int eos) {
    std::string missing;
    const auto add = [&](bool absent, const char* name) {
        if (absent) missing += (missing.empty() ? "" : ", ") + std::string(name);
    };
    if (eos == eos_ideal_gas) return missing;
    add(k.Tcr < TinyT, "T(cr)"), add(k.pcr < TinyT, "p(cr)");
    add(k.omega == 0.0 && (eos == 5 || eos == 6 || eos >= 14), "omega");
    return missing.empty() ? missing : "the record has no " + missing;
}

void set_units(Session& s, double T) { s.units.uFactor = unitFactor(s, T); }

std::string substance_head(const Session& s) {
    const SubstanceConstants& k = s.substance;
    std::string head = k.StoffName;
    for (const std::string& part : {k.StoffFormulaCompact, k.StoffCAS})
        if (!trim(part).empty()) head += "  " + std::string(trim(part));
    return head;
}

std::string models_head(const Session& s) {
    return std::string(trim(eos_name(s.models.EOSKode))) + ", " +
           (s.models.Konzept ? "GLOBAL concept" : "PARTIAL concept");
}

Block substance_block(const Session& s) {
    const SubstanceConstants& k = s.substance;
    return {"substance",
            "",
            {{"index", "#", s.database.StoffIndexAktiv, "", ""},
             {"StoffName", "name", k.StoffName, "", ""},
             {"StoffFormula", "formula", k.StoffFormulaCompact, "", ""},
             {"StoffCAS", "CAS", std::string(trim(k.StoffCAS)), "", ""}},
            Layout::json};
}

Block models_block(const Session& s) {
    const ModelSelection& m = s.models;
    return {"models",
            "",
            {{"EOSKode", "EOS", m.EOSKode, "", ""},
             {"EVPKode", "EVP", m.EVPKode, "", ""},
             {"HLVKode", "delta(LV)h", m.HLVKode, "", ""},
             {"cpKode", "cp(idG)", m.cpKode, "", ""},
             {"Konzept", "concept", m.Konzept ? "GLOBAL" : "PARTIAL", "", ""}},
            Layout::json};
}

}  // namespace quom::console

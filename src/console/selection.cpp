#include "console/selection.h"

#include <filesystem>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "console/name_matches.h"
#include "engine/tovarn_ji.h"
#include "forms/model_form.h"
#include "forms/options_form.h"
#include "forms/reference_form.h"
#include "report/outcome_report.h"
#include "session/program_path.h"
#include "session/start_up.h"
#include "substance/search.h"

namespace quom {
namespace {

Fault no_result(std::string message) { return {status_no_result, std::move(message)}; }
Fault wrong(std::string message) { return {status_usage, std::move(message)}; }

int database_kind(std::string_view path) {
    const std::string name = upper_text(path);
    return name.ends_with(".Q07") ? 7 : name.ends_with(".Q06") ? 6 : 0;
}

// Index for "#12"; a fault for one that is not in the list.
struct Index {
    int index = 0;
    Refused refused;
};
Index index_of(const DatabaseFile& file, std::string_view text) {
    const int count = file.StoffAnzahl();
    const std::optional<double> number = read_number(text.substr(1));
    if (number && *number >= 1 && *number <= count && *number == static_cast<int>(*number))
        return {static_cast<int>(*number), {}};
    return {0, no_result("There is no substance \"" + std::string(text) + "\": the list goes from #1 to #" +
                         std::to_string(count) + ".")};
}

// Options that must come with another one, or must not.
Refused check_options(const ModelOptions& o) {
    const EosFamily family = o.eos ? eos_info(*o.eos).family : EosFamily::none;
    const bool manual = family == EosFamily::manual;
    const bool ji = family == EosFamily::tovarn_ji;
    if (manual && !o.b0)
        return wrong("--eos 10 needs the constants of B = b0 - b1/T^b2: --b0 B0 --b1 B1 --b2 B2.");
    if (!manual && (o.b0 || o.b1 || o.b2))
        return wrong("--b0, --b1, --b2 are the constants of the manual virial equation; add --eos 10.");
    if (ji && o.ji.empty()) return wrong("--eos 7 and 8 need a file with their parameters: --ji FILE.");
    if (!ji && !o.ji.empty()) return wrong("--ji is the parameter file of --eos 7 and 8; add one of them.");
    if (o.watson && o.hlv && *o.hlv != Hlv::watson)
        return wrong("--watson is the exponent of --hlv 4, not of --hlv " +
                     std::to_string(number_of(*o.hlv)) + ".");
    if (o.ref && (o.tref || o.pref) &&
        reference_options[static_cast<std::size_t>(reference_option_of(*o.ref))].fixed_point)
        return wrong("--tref and --pref belong to --ref 1; --ref 2 and 10 are at 298.15 K and 101.325 kPa.");
    return {};
}

constexpr std::size_t LargestParameterFile = 1024 * 1024;

// Constants of the equation of state that are typed or read from a file.
struct TypedConstants {
    std::optional<EosInput> input;
    Refused refused;
};
TypedConstants typed_constants(const Session& session, const ModelOptions& o) {
    if (o.b0) return {EosInput{.b0 = *o.b0, .b1 = o.b1.value_or(0.0), .b2 = o.b2.value_or(0.0)}, {}};
    if (o.ji.empty()) return {};
    const FileBytes file = read_file(resolve_path(o.ji, session.ProgramPath), LargestParameterFile);
    if (!file.bytes) return {{}, Fault{status_file, file.fault}};
    EosInput input;
    const std::string fault = ReadDjipar(*file.bytes, *o.eos, input);
    if (fault.empty()) return {input, {}};
    return {{}, Fault{status_file, "Parameters in \"" + o.ji + "\": " + fault}};
}

struct BoxOption {
    ModelBox box;
    const char* option;
    ReportStatus status;  // of a refusal
};
constexpr BoxOption box_options[] = {
    {ModelBox::EOSKombi, "--eos", status_no_result}, {ModelBox::pkombi, "--evp", status_no_result},
    {ModelBox::HLVKombi, "--hlv", status_no_result}, {ModelBox::cpKombi, "--cp", status_no_result},
    {ModelBox::Konzept, "--concept", status_usage},  {ModelBox::WatsonKombi, "--watson", status_usage},
    {ModelBox::constants, "--ji", status_no_result},
};

Refused select_models(Program& program, const ModelOptions& o) {
    const TypedConstants constants = typed_constants(program.session, o);
    if (constants.refused) return constants.refused;
    ModelForm form = open_model_form(program.session.document);
    const ModelWishes wishes{.eos = o.eos,
                             .evp = o.evp,
                             .hlv = o.hlv,
                             .cp = o.cp,
                             .Konzept = o.global,
                             .nWat = o.watson,
                             .eos_input = constants.input};
    if (const std::optional<ModelRefusal> refused = choose_models(form, wishes)) {
        for (const BoxOption& known : box_options) {
            if (known.box == refused->box)
                return Fault{known.status, std::string(known.option) + ": " + refused->text};
        }
        return no_result(refused->text);
    }
    if (const std::optional<Message> refused = check(form)) return no_result(refused->text);
    confirm_models(program.session, form, program.messages);
    return {};
}

Refused take_offset(const std::optional<GivenValue>& given, Quantity q, double M, double& into) {
    if (!given) return {};
    const OwnValue value = own_value(*given, q, M);
    if (!value.fault.empty()) return no_result(value.fault + ".");
    into = value.value;
    return {};
}

Refused select_reference(Session& session, const ModelOptions& o) {
    Document document = session.document;
    ReferenceState& r = document.reference;
    r.RefKode = o.ref.value_or(r.RefKode);
    if (o.tref) r.TRef0 = static_cast<float>(*o.tref);
    if (o.pref) r.pRef0 = static_cast<float>(*o.pref);
    if (Refused refused = take_offset(o.href, Quantity::h, session.fluid->M, r.hOffset)) return refused;
    if (Refused refused = take_offset(o.sref, Quantity::s, session.fluid->M, r.sOffset)) return refused;
    r.TEnv = o.tenv.value_or(r.TEnv);
    r.pEnv = o.penv.value_or(r.pEnv);
    if (const std::optional<Message> refused = reference_refusal(session.substance(), r))
        return no_result("--ref " + std::to_string(r.RefKode) + ": " + refused->text);
    commit(session, std::move(document));
    return {};
}

// Units of the output by quantity; no quantity may have two.
Refused select_output_units(Program& program, const ModelOptions& o) {
    if (o.units.empty()) return {};
    OutputUnits units = parse_units(o.units, program.session.fluid->M);
    if (!units.fault.empty()) return no_result("--units: " + units.fault + ".");
    for (const auto& [q, unit] : units.by_quantity) {
        const UnitKind kind = quantity_info(q).kind;
        const bool energy = kind == UnitKind::energy || kind == UnitKind::entropy;
        const char* const other = energy && o.energy != energy_molar                     ? "--energy"
                                  : kind == UnitKind::volume && o.volume != volume_molar ? "--volume"
                                                                                         : nullptr;
        if (other)
            return wrong(std::string(other) + " and --units both give the unit of " +
                         std::string(quantity_info(q).symbol) + "; one of them is right.");
    }
    program.output_units = std::move(units);
    return {};
}

Refused select_units(Session& session, const ModelOptions& o) {
    Document document = session.document;
    if (const std::optional<Message> refused = take_units(document, *session.fluid, o.energy, o.volume))
        return no_result("--energy " + std::to_string(o.energy) + " --volume " + std::to_string(o.volume) +
                         ": " + refused->text);
    commit(session, std::move(document));
    return {};
}

void select_liquid_density(Session& session, const ModelOptions& o) {
    Document document = session.document;
    document.calc.setup.GlobalCalc = document.models.Konzept;
    document.calc.setup.BensonRhoL = o.benson.value_or(true);
    commit(session, std::move(document));
}

}  // namespace

Refused load_database(Program& program) {
    Session& session = program.session;
    const ProgramFolder folder = find_program_folder(program_places(program.options.program_folder));
    if (!folder.fault.empty()) return Fault{status_file, folder.fault};
    start_session(session, folder.path, false);

    const std::string& given = program.options.db;
    std::string path = given.empty() ? StarterDatabase : given;
    std::error_code fault;
    if (!given.empty() && std::filesystem::exists(path, fault))
        path = std::filesystem::absolute(path, fault).string();
    const int kind = database_kind(path);
    if (kind == 0)
        return Fault{status_file,
                     "\"" + path + "\" is no substance database: its name ends neither in .Q07 nor in .Q06."};
    const LoadResult loaded = LoadDatabase(session, kind, path);
    if (loaded.err == 0) return {};
    if (given.empty() && !FileExists(path, folder.path))
        return Fault{status_file, "The program folder \"" + folder.path + "\" has no starter database " +
                                      StarterDatabase + "; name a database with --db FILE."};
    return Fault{status_file, loaded.fault};
}

Refused choose_substance(Program& program, std::string_view text) {
    Session& session = program.session;
    int chosen = 0;
    if (text.starts_with('#')) {
        const Index index = index_of(session.database, text);
        if (index.refused) return index.refused;
        chosen = index.index;
    } else {
        chosen = find_in_tables(session.database, text);
    }
    if (chosen == 0) {
        const NameIndex& names = name_index(program);
        const std::vector<NameHit> hits = names.named(text);
        if (hits.empty()) return unknown_substance(session.database, names, text);
        if (hits.size() > 1) return ambiguous_substance(session.database, hits, text);
        chosen = hits.front().index;
    }
    SelectSubstance(session, chosen);
    if (session.document.substance.StoffIndexAktiv != chosen)
        return Fault{status_file, "The record of substance #" + std::to_string(chosen) +
                                      " cannot be read from " + session.database.path + "."};
    return {};
}

Refused apply_models(Program& program, const ModelOptions& o) {
    if (Refused refused = check_options(o)) return refused;
    if (Refused refused = select_models(program, o)) return refused;
    select_liquid_density(program.session, o);
    if (Refused refused = select_reference(program.session, o)) return refused;
    if (Refused refused = select_units(program.session, o)) return refused;
    return select_output_units(program, o);
}

Refused prepare(Program& program, std::string_view substance, const ModelOptions& options) {
    if (Refused refused = load_database(program)) return refused;
    if (Refused refused = choose_substance(program, substance)) return refused;
    return apply_models(program, options);
}

void add_heads(Report& report, const Session& session) {
    report.sections.emplace_back(
        substance_block(session.substance(), session.document.substance.StoffIndexAktiv));
    report.sections.emplace_back(models_block(session.document.models));
    report.sections.emplace_back(reference_block(*session.fluid));
}

}  // namespace quom

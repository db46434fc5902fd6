// state: region, phases, volumes, derivatives and functions at two of T, p, rho.
#include <array>
#include <cmath>
#include <memory>
#include <optional>

#include "base/code_page.h"
#include "calc/quantities.h"
#include "console/selection.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom::console {
namespace {

struct StateArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p, rho;
};

// One phase with everything the engine tells of it.
struct PhaseState {
    double v = 0;
    StateFunctions functions;
    PhaseArrays arrays;
};

// The state found.
struct StateResult {
    double T = 0, p = 0;
    std::optional<double> v;         // given volume [m^3/kmol]
    VolumeResult volume;             // of T, p
    std::array<double, 3> roots{};   // of T, p; saturated volumes of a two-phase state
    std::optional<PhaseState> L, V;  // the phases that exist
    std::optional<double> y;         // vapor fraction of a two-phase state
    std::string phase;               // in words
    std::vector<std::string> notes;
};

const char* region_text(int region) {
    constexpr const char* texts[] = {"below the critical point", "liquid above p(cr)", "supercritical",
                                     "vapor above T(cr)", "at the critical point"};
    return region >= 0 && region < 5 ? texts[region] : "";
}

PhaseState evaluate(Session& s, int phase, double T, double p, double v) {
    PhaseState state;
    state.v = v;
    state.functions = ThermoState(s, T, p, v, phase);
    phase_functions(s, phase, T, p, v, state.arrays);
    ExpansionKoeff(phase, p, v, state.arrays);
    return state;
}

// Tells where a phase is stable that the equation of state does not describe: a solid, or the one that the
// vapor pressure equation of the PARTIAL concept finds.
void note_other_phase(Session& s, StateResult& r) {
    const double Ttr = s.substance.Ttr;
    if (r.T < Ttr)
        r.notes.push_back(
            "The triple point is at " + shown(Ttr) +
            " K: below it the stable phase may be a solid, which no equation of state here describes.");
    if (s.models.Konzept || r.y || r.T >= s.substance.Tcr || s.models.EVPKode == evp_none) return;
    const EvpResult evp = pLV_EVP(s, r.T, s.models.EVPKode);
    if (evp.err || (r.p > evp.value) == r.L.has_value()) return;
    const std::string pLV = "p(LV) = " + shown(evp.value) + " kPa by " +
                            std::string(trim(evp_name(s.models.EVPKode))) + ": the stable phase is a ";
    if (r.p > evp.value) {
        r.notes.push_back(pLV + "liquid" +
                          (s.models.VPhaseOnly ? ", which this equation of state does not describe."
                                               : "; the equation of state has it as a vapor."));
    } else {
        r.notes.push_back(pLV + "vapor; the equation of state has it as a liquid.");
    }
}

// Fills the phases of a state at T and p from the volumes found there.
void take_phases(Session& s, StateResult& r) {
    const VolumeResult& volume = r.volume;
    const bool one_fluid = volume.nRoots == 1 && volume.LFlag && volume.VFlag;
    const bool liquid_side = one_fluid && volume.PhaseRegion == 1;
    if (volume.LFlag && (!one_fluid || liquid_side)) r.L = evaluate(s, phase_L, r.T, r.p, volume.vL);
    if (volume.VFlag && !liquid_side) r.V = evaluate(s, phase_V, r.T, r.p, volume.vV);
    if (one_fluid) {
        r.phase = volume.PhaseRegion == 4 ? "critical" : liquid_side ? "L, above p(cr)" : "fluid, L = V";
        if (volume.PhaseRegion == 3) r.phase = "V";
    } else {
        r.phase = r.L && r.V ? "L and V in equilibrium" : r.L ? "L" : "V";
    }
}

std::optional<Fault> state_of_T_p(Session& s, double T, double p, StateResult& r) {
    r.T = T, r.p = p;
    r.volume = VolumeTp(s, T, p);
    r.roots = s.scratch.VRoot;
    if (r.volume.err)
        return Fault{status_no_result, "The equation of state has no volume at " + shown(T) + " K and " +
                                           shown(p) + " kPa" +
                                           (s.models.VPhaseOnly ? ": R T/p + B is not above 0." : ".")};
    take_phases(s, r);
    return {};
}

// The saturated volumes at T when v lies between them.
struct Dome {
    double p = 0, vL = 0, vV = 0;
};
std::optional<Dome> dome_around(Session& s, double T, double v) {
    if (s.models.VPhaseOnly || T >= s.substance.Tcr) return {};
    const Saturation sat = pLV_EOS(s, T);
    const Dome dome{sat.value, s.scratch.VRoot[0], s.scratch.VRoot[2]};
    if (sat.err || !(v > dome.vL && v < dome.vV)) return {};
    return dome;
}

void two_phases(Session& s, double T, double p, double v, const Dome& dome, StateResult& r) {
    r.T = T, r.p = p, r.v = v;
    r.volume = VolumeTp(s, T, p);
    r.roots = {dome.vL, s.scratch.VRoot[1], dome.vV};
    r.volume.vL = dome.vL, r.volume.vV = dome.vV;
    r.volume.LFlag = r.volume.VFlag = true;
    r.L = evaluate(s, phase_L, T, p, dome.vL);
    r.V = evaluate(s, phase_V, T, p, dome.vV);
    r.y = (v - dome.vL) / (dome.vV - dome.vL);
    r.phase = "L and V in equilibrium";
}

// A single phase with a given volume: its side is that of the critical volume.
void single_phase(Session& s, double T, double p, double v, StateResult& r) {
    r.T = T, r.p = p, r.v = v;
    r.volume = VolumeTp(s, T, p);
    r.roots = s.scratch.VRoot;
    const bool liquid = !s.models.VPhaseOnly && T < s.substance.Tcr && v < s.eos.vcrEOS;
    (liquid ? r.L : r.V) = evaluate(s, liquid ? phase_L : phase_V, T, p, v);
    r.phase = liquid                                                              ? "L"
              : T < s.substance.Tcr || p < s.substance.pcr || s.models.VPhaseOnly ? "V"
                                                                                  : "fluid, L = V";
}

std::optional<Fault> state_of_T_v(Session& s, double T, double v, StateResult& r) {
    if (const std::optional<Dome> dome = dome_around(s, T, v)) {
        two_phases(s, T, dome->p, v, *dome, r);
        return {};
    }
    EOSParT(s, T);
    const PressureResult pressure = pTv(s, T, v);
    const std::string rho = shown(static_cast<double>(s.substance.MolMass) / v) + " kg/m^3";
    if (pressure.err)
        return Fault{status_no_result, rho + " is not possible at " + shown(T) + " K: v = " + shown(v) +
                                           " m^3/kmol is not above " + (s.models.VPhaseOnly ? "B" : "b") +
                                           " = " + shown(s.scratch.bT) +
                                           " m^3/kmol of the equation of state."};
    if (!(pressure.p > 0.0))
        return Fault{status_no_result, "At " + shown(T) + " K and " + rho +
                                           " the equation of state gives p = " + shown(pressure.p) +
                                           " kPa; a state needs p above 0."};
    single_phase(s, T, pressure.p, v, r);
    return {};
}

std::optional<Fault> state_of_p_v(Session& s, double p, double v, StateResult& r) {
    const double M = static_cast<double>(s.substance.MolMass);
    const double T = TpV(s, p, M / v, false);
    if (!(T > 0.0))
        return Fault{status_no_result, "The equation of state has no temperature at " + shown(p) +
                                           " kPa and " + shown(M / v) + " kg/m^3."};
    const std::optional<Dome> dome = dome_around(s, T, v);
    if (dome && std::fabs(dome->p - p) < 0.02 * p) {
        two_phases(s, T, p, v, *dome, r);
    } else {
        single_phase(s, T, p, v, r);
    }
    return {};
}

// L, V and, of a two-phase state, the mean.
class Columns {
 public:
    explicit Columns(const StateResult& r) : r_(r) {}
    std::vector<Value> of(const std::function<double(const PhaseState&, int phase)>& get,
                          double factor = 1) const {
        std::vector<Value> values(2);
        if (r_.L) values[0] = factor * get(*r_.L, phase_L);
        if (r_.V) values[1] = factor * get(*r_.V, phase_V);
        return values;
    }

 private:
    const StateResult& r_;
};

struct Entry {
    const char* key;
    const char* label;
    const char* unit;
    int index;
};
constexpr Entry deriv_entries[] = {
    {"dpdv_T", "(dp/dv) at T", "kPa kmol/m^3", dpdv_T},   {"dpdT_v", "(dp/dT) at v", "kPa/K", dpdT_v},
    {"dvdp_T", "(dv/dp) at T", "m^3/(kmol kPa)", dvdp_T}, {"dvdT_p", "(dv/dT) at p", "m^3/(kmol K)", dvdT_p},
    {"dTdv_p", "(dT/dv) at p", "K kmol/m^3", dTdv_p},     {"dTdp_v", "(dT/dp) at v", "K/kPa", dTdp_v}};
constexpr Entry coef_entries[] = {{"coef_alpha", "alpha = (dv/dT)_p/v", "1/K", coef_alpha},
                                  {"coef_chi", "chi = -(dv/dp)_T/v", "1/kPa", coef_chi},
                                  {"coef_beta", "beta = (dp/dT)_v/p", "1/K", coef_beta}};
constexpr Entry deriv2_entries[] = {{"d2pdv2", "(d2p/dv2) at T", "kPa kmol^2/m^6", d2pdv2},
                                    {"d2vdT2", "(d2v/dT2) at p", "m^3/(kmol K^2)", d2vdT2},
                                    {"d2Tdv2", "(d2T/dv2) at p", "K kmol^2/m^6", d2Tdv2}};
constexpr Entry func_entries[] = {{"fu_lnphi", "ln phi", "", fu_lnphi},
                                  {"fu_dlnphidT", "(dln phi/dT) at p", "1/K", fu_dlnphidT},
                                  {"fu_d2lnphidT2", "(d2ln phi/dT2) at p", "1/K^2", fu_d2lnphidT2},
                                  {"fu_s_res", "(s - s_idG)/R", "", fu_s_res},
                                  {"fu_h_res", "(h - h_idG)/R", "K", fu_h_res},
                                  {"fu_g_res", "(g - g_idG)/R", "K", fu_g_res},
                                  {"fu_cp_res", "(cp - cp_idG)/R", "", fu_cp_res},
                                  {"fu_dTdp_h", "(dT/dp) at h", "K/kPa", fu_dTdp_h},
                                  {"fu_cV", "cV", "kJ/(kmol K)", fu_cV},
                                  {"fu_cp", "cp", "kJ/(kmol K)", fu_cp},
                                  {"fu_w", "speed of sound", "m/s", fu_w}};

template <std::size_t N, class Get>
Grid grid_of(const char* key, const char* title, const Entry (&entries)[N], const StateResult& r,
             const Get& get, int unknown_from = 99) {
    Grid grid{key, title, {"L", "V"}, {}};
    const Columns columns(r);
    for (const Entry& e : entries) {
        std::vector<Value> values =
            columns.of([&](const PhaseState& phase, int row) { return get(phase.arrays, row, e.index); });
        if (e.index >= unknown_from) values.assign(2, Value());
        grid.rows.push_back({e.key, e.label, e.unit, std::move(values)});
    }
    return grid;
}

// v, h, s ... of each phase and the mean of two, in displayed units.
Grid functions_grid(const Session& s, const StateResult& r) {
    struct Row {
        const char* key;
        const char* label;
        Quantity quantity;
        double StateFunctions::*member;
        bool mean;
    };
    constexpr Row rows[] = {
        {"v", "volume v", Quantity::v, &StateFunctions::v, true},
        {"h", "enthalpy h", Quantity::h, &StateFunctions::h, true},
        {"u", "internal energy u", Quantity::u, &StateFunctions::u, true},
        {"s", "entropy s", Quantity::s, &StateFunctions::s, true},
        {"g", "Gibbs energy g", Quantity::g, &StateFunctions::g, true},
        {"a", "Helmholtz energy a", Quantity::a, &StateFunctions::a, true},
        {"eH", "exergy of h", Quantity::eH, &StateFunctions::eH, true},
        {"eU", "exergy of u", Quantity::eU, &StateFunctions::eU, true},
        {"cp", "heat capacity cp", Quantity::cp, &StateFunctions::cp, false},
        {"cV", "heat capacity cV", Quantity::cV, &StateFunctions::cV, false},
        {"cpId", "ideal gas cp", Quantity::cpId, &StateFunctions::cpId, false},
        {"w", "speed of sound w", Quantity::w, &StateFunctions::w, false},
    };
    Grid grid{"functions", "Thermodynamic functions", {"L", "V"}, {}};
    if (r.y) grid.columns.push_back("LV");
    const Columns columns(r);
    for (const Row& row : rows) {
        const bool volume = row.quantity == Quantity::v;
        const bool exergy = row.quantity == Quantity::eH || row.quantity == Quantity::eU;
        const auto get = [&](const PhaseState& phase, int) {
            const StateFunctions& f = phase.functions;
            if (volume) return phase.v;
            const bool known = s.models.cpKode != 0 && (f.err == 0 || (f.environment_failed && !exergy));
            if (!known || (row.quantity == Quantity::w && !(f.w > 0.0))) return std::nan("");
            return f.*row.member;
        };
        std::vector<Value> values = columns.of(get, display_factor(s, row.quantity));
        if (r.y) {
            const double L = get(*r.L, phase_L), V = get(*r.V, phase_V);
            values.push_back(row.mean ? Value(display_factor(s, row.quantity) * (L + *r.y * (V - L)))
                                      : Value());
        }
        grid.rows.push_back({row.key, row.label, std::string(unit_text(s, row.quantity)), std::move(values)});
    }
    return grid;
}

Block state_block(const Session& s, const StateResult& r) {
    const VolumeResult& volume = r.volume;
    const bool cubic = !s.models.VPhaseOnly;
    const double M = static_cast<double>(s.substance.MolMass);
    const auto rho = [M](const std::optional<PhaseState>& phase) {
        return phase && M > TinyT ? Value(M / phase->v) : Value();
    };
    const auto root = [&](std::size_t k) {
        const bool there = cubic && (volume.nRoots == 3 || (volume.nRoots == 1 && k == 0));
        return there ? Value(r.roots[k]) : Value();
    };
    Block block{"state", "State", {}, Layout::known};
    auto& f = block.fields;
    f.push_back({"T", "T", r.T, "K", ""});
    f.push_back({"p", "p", r.p, "kPa", r.y ? "p(LV)" : ""});
    f.push_back({"phase", "phase", r.phase, "", ""});
    f.push_back({"PhaseRegion", "region", cubic ? Value(volume.PhaseRegion) : Value(), "",
                 cubic ? region_text(volume.PhaseRegion) : ""});
    f.push_back({"LFlag", "L-phase exists", r.L.has_value(), "", ""});
    f.push_back({"VFlag", "V-phase exists", r.V.has_value(), "", ""});
    f.push_back(
        {"y", "vapor fraction", r.y ? Value(*r.y) : Value(), "kmol/kmol", r.y ? "by the lever rule" : ""});
    f.push_back({"v", "given volume", r.v ? Value(*r.v) : Value(), "m^3/kmol", ""});
    f.push_back({"rhoL", "rho(L)", rho(r.L), "kg/m^3", ""});
    f.push_back({"rhoV", "rho(V)", rho(r.V), "kg/m^3", ""});
    f.push_back(
        {"nRoots", "volume roots", cubic ? Value(volume.nRoots) : Value(), "", std::string(volume.msg)});
    f.push_back({"VRoot1", "root 1, liquid", root(0), "m^3/kmol", ""});
    f.push_back({"VRoot2", "root 2", root(1), "m^3/kmol", ""});
    f.push_back({"VRoot3", "root 3, vapor", root(2), "m^3/kmol", ""});
    const bool areas = volume.nRoots == 3;
    f.push_back({"fd", "difference of areas fd", areas ? Value(volume.fd) : Value(), "", "0 at saturation"});
    f.push_back(
        {"B", "second virial coefficient B", cubic ? Value() : Value(s.scratch.Bvirial), "m^3/kmol", ""});
    if (volume.nRoots == 1) f[11].label = "root";
    return block;
}

Fault form_fault(const char* what) {
    return {status_usage, std::string(what) + " Two of --T, --p, --rho are needed."};
}

Refused compute(Session& s, const StateArguments& a, StateResult& r) {
    const int given = int{a.T.has_value()} + int{a.p.has_value()} + int{a.rho.has_value()};
    if (given < 2) return form_fault(given == 0 ? "No state is given." : "One value is not a state.");
    if (given > 2) return form_fault("Three values are too many.");
    const double M = static_cast<double>(s.substance.MolMass);
    if (a.rho && M < TinyT)
        return Fault{status_no_result, "A density needs the molar mass, which the record of " +
                                           s.substance.StoffName + " does not have; give --T and --p."};
    if (!a.rho) return state_of_T_p(s, *a.T, *a.p, r);
    return a.T ? state_of_T_v(s, *a.T, M / *a.rho, r) : state_of_p_v(s, *a.p, M / *a.rho, r);
}

Report state(Program& program, const StateArguments& a) {
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("state", *refused);
    Session& s = program.session;
    StateResult r;
    if (const Refused refused = compute(s, a, r)) return refusal("state", *refused);
    note_other_phase(s, r);
    set_units(s, r.T);
    // The scratch is that of the environment or of another T by now.
    if (s.models.VPhaseOnly) s.scratch.Bvirial = VirialB(s, s.models.EOSKode, r.T);

    Report report;
    report.title = substance_head(s) + ": " + models_head(s);
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    report.sections.emplace_back(state_block(s, r));
    report.sections.emplace_back(functions_grid(s, r));
    const int no_cp = s.models.cpKode == 0 ? fu_dTdp_h : 99;
    report.sections.emplace_back(grid_of(
        "FuncA", "Fugacity and residual functions", func_entries, r,
        [](const PhaseArrays& x, int row, int k) { return x.FuncA[row][k]; }, no_cp));
    report.sections.emplace_back(
        grid_of("DerivA", "Derivatives", deriv_entries, r,
                [](const PhaseArrays& x, int row, int k) { return x.DerivA[row][k]; }));
    report.sections.emplace_back(
        grid_of("CoefA", "Expansion coefficients", coef_entries, r,
                [](const PhaseArrays& x, int row, int k) { return x.CoefA[row][k]; }));
    report.sections.emplace_back(
        grid_of("Deriv2A", "Second derivatives", deriv2_entries, r,
                [](const PhaseArrays& x, int row, int k) { return x.Deriv2A[row][k]; }));
    report.notes = r.notes;
    if (s.models.cpKode == 0)
        report.notes.push_back("The record has no cp(idG): h, s and what is built on them are not known.");
    for (const auto& phase : {r.L, r.V})
        if (phase && phase->functions.environment_failed)
            report.notes.push_back("No state of the environment at --tenv, --penv: no exergies.");
    return report;
}

}  // namespace

Action declare_state(CLI::App& app) {
    const auto arguments = std::make_shared<StateArguments>();
    add_substance(app, arguments->substance);
    add_number(app, "--T", arguments->T, Range::above_zero, "K", "Temperature");
    add_number(app, "--p", arguments->p, Range::above_zero, "kPa", "Pressure");
    add_number(app, "--rho", arguments->rho, Range::above_zero, "kg/m^3", "Density");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return state(program, *arguments); };
}

}  // namespace quom::console

// state: region, phases, volumes, derivatives and functions at two of T, p, rho.
#include <cmath>
#include <memory>

#include "calc/quantities.h"
#include "console/selection.h"
#include "console/state_point.h"
#include "engine/eos_parameters.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace quom::console {
namespace {

struct StateArguments {
    std::string substance;
    ModelOptions models;
    StateInput input;
};

const char* region_text(int region) {
    constexpr const char* texts[] = {"below the critical point", "liquid above p(cr)", "supercritical",
                                     "vapor above T(cr)", "at the critical point"};
    return region >= 0 && region < 5 ? texts[region] : "";
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
            const bool diverges =
                row.quantity == Quantity::cp || row.quantity == Quantity::cV || row.quantity == Quantity::w;
            if (!known || (diverges && r.critical) || (row.quantity == Quantity::w && !(f.w > 0.0)))
                return std::nan("");
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
    f.push_back({"LFlag", "", volume.LFlag, "", ""});
    f.push_back({"VFlag", "", volume.VFlag, "", ""});
    f.push_back(
        {"y", "vapor fraction", r.y ? Value(*r.y) : Value(), "kmol/kmol", r.y ? "by the lever rule" : ""});
    f.push_back({"v", "given volume", r.v ? Value(*r.v) : Value(), "m^3/kmol", ""});
    f.push_back({"rhoL", "rho(L)", rho(r.L), "kg/m^3", ""});
    f.push_back({"rhoV", "rho(V)", rho(r.V), "kg/m^3", ""});
    f.push_back({"nRoots", "volume roots", cubic ? Value(volume.nRoots) : Value(), "", ""});
    f.push_back({"msg", "", volume.msg, "", ""});
    f.push_back({"VRoot1", "root 1, liquid", root(0), "m^3/kmol", ""});
    f.push_back({"VRoot2", "root 2", root(1), "m^3/kmol", ""});
    f.push_back({"VRoot3", "root 3, vapor", root(2), "m^3/kmol", ""});
    const bool areas = volume.nRoots == 3;
    f.push_back({"fd", "difference of areas fd", areas ? Value(volume.fd) : Value(), "", "0 at saturation"});
    f.push_back(
        {"B", "second virial coefficient B", cubic ? Value() : Value(s.scratch.Bvirial), "m^3/kmol", ""});
    if (volume.nRoots == 1)
        for (Field& field : f)
            if (field.key == "VRoot1") field.label = "root";
    return block;
}

Report state(Program& program, const StateArguments& a) {
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("state", *refused);
    Session& s = program.session;
    StateResult r;
    if (const Refused refused = compute_state(s, a.input, r)) return refusal("state", *refused);
    set_units(s, r.T);
    // The scratch is that of the environment or of another T by now.
    if (s.models.VPhaseOnly) s.scratch.Bvirial = VirialB(s, s.models.EOSKode, r.T);

    Report report;
    report.title = substance_head(s) + ": " + models_head(s);
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    report.sections.emplace_back(state_block(s, r));
    report.sections.emplace_back(functions_grid(s, r));
    const int no_cp = r.critical ? fu_cp_res : s.models.cpKode == 0 ? fu_dTdp_h : 99;
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
    if (r.critical)
        report.notes.push_back(
            "At the critical point (dp/dv) at T is 0: cp, the coefficients and what is built on "
            "them grow without limit.");
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
    add_number(app, "--T", arguments->input.T, Range::above_zero, "K", "Temperature");
    add_number(app, "--p", arguments->input.p, Range::above_zero, "kPa", "Pressure");
    add_number(app, "--rho", arguments->input.rho, Range::above_zero, "kg/m^3", "Density");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return state(program, *arguments); };
}

}  // namespace quom::console

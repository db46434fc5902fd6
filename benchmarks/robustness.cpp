// States of every starter substance with the cubic equations over T/T(cr) 0.3 to 3 and p 1 Pa to 300 MPa (log
// spaced), by single calls and in columns, and saturations over T/T(cr) 0.45 to 0.9999: counts what fails,
// and the worst differences. Usage: robustness [states per substance and code, 100 if not given]. Exit status
// 1 when anything fails.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <vector>

#include "../tests/support/starter.h"
#include "engine/ideal_gas.h"
#include "engine/saturation.h"
#include "engine/state_columns.h"
#include "engine/thermo_functions.h"

using namespace quom;

namespace {

constexpr Eos codes[] = {Eos::van_der_waals, Eos::berthelot, Eos::redlich_kwong, Eos::soave,
                         Eos::peng_robinson};
constexpr double closure = 1e-9;     // of T -> p(LV) -> T
constexpr double agreement = 1e-12;  // of a column with the single calls, over size_of

// A column, the function of the single calls that it holds, and what a difference is measured by.
enum class Scale { volume, energy, entropy, heat, sound, ln_phi };
struct Column {
    const char* name;
    std::vector<double> StateColumns::*column;
    double StateFunctions::*function;
    Scale scale;
};
constexpr Column columns[] = {
    {"v", &StateColumns::v, &StateFunctions::v, Scale::volume},
    {"h", &StateColumns::h, &StateFunctions::h, Scale::energy},
    {"u", &StateColumns::u, &StateFunctions::u, Scale::energy},
    {"s", &StateColumns::s, &StateFunctions::s, Scale::entropy},
    {"g", &StateColumns::g, &StateFunctions::g, Scale::energy},
    {"a", &StateColumns::a, &StateFunctions::a, Scale::energy},
    {"cp", &StateColumns::cp, &StateFunctions::cp, Scale::heat},
    {"cV", &StateColumns::cV, &StateFunctions::cV, Scale::heat},
    {"w", &StateColumns::w, &StateFunctions::w, Scale::sound},
    {"ln phi", &StateColumns::lnphi, &StateFunctions::lnphi, Scale::ln_phi},
};

// The sizes that the numbers of a function come from; h and s themselves may be 0.
double size_of(Scale scale, double T, double p, const StateFunctions& f) {
    const double energy = RGas * T + p * f.v;
    const double heat = std::isnan(f.cp) ? std::fabs(f.cV) : std::fabs(f.cp) + std::fabs(f.cV);
    switch (scale) {
        case Scale::volume:
            return f.v;
        case Scale::energy:
            return energy;
        case Scale::entropy:
            return RGas;
        case Scale::heat:
            return heat;
        case Scale::sound:
            return f.w * heat / std::fabs(f.cV);
        case Scale::ln_phi:
            return energy / (RGas * T);
    }
    return 0.0;
}

// One thing that must not happen.
struct Fault {
    const char* what;
    long count = 0;
};
struct Counts {
    long states = 0, saturations = 0, phases = 0, no_cp = 0, cp_out_of_range = 0;
    std::size_t singles = 0;  // states in columns that the single calls gave
    Fault no_volume{"no volume"}, no_phase{"no phase"}, at_b{"root at b"},
        not_positive{"v or rho not above 0"}, not_finite{"function not finite"}, no_exergy{"no exergy"},
        differs{"columns differ"}, no_p{"no p(LV)"}, no_T{"no T(LV)"},
        not_closed{"T -> p -> T does not close"};
    double worst_closure = 0;
    double worst_column[std::size(columns)] = {};  // difference over its scale
};

void add(Fault& fault, const Fluid& fluid, double T, double p, std::string_view detail) {
    ++fault.count;
    const int length = static_cast<int>(detail.size());
    std::printf("%s: %s code %d T %.17g (T/Tcr %.6f) p %.17g kPa %.*s\n", fault.what,
                fluid.substance.StoffName.c_str(), number_of(fluid.models.EOSKode), T,
                T / fluid.substance.Tcr, p, length, detail.data());
}

// The state of a row of the columns is that of the single calls: phase, reason, numbers.
void compare(const Fluid& fluid, double T, double p, ColumnPhase phase, const StateFunctions& f,
             const StateColumns& c, std::size_t i, Counts& n) {
    if (!(c.v[i] > 0.0 && c.rho[i] > 0.0)) add(n.not_positive, fluid, T, p, "in columns");
    if (c.phase[i] != phase) return add(n.differs, fluid, T, p, "phase");
    if (c.reason[i] != f.reason) return add(n.differs, fluid, T, p, "reason");
    for (std::size_t k = 0; k < std::size(columns); ++k) {
        const double in_column = (c.*columns[k].column)[i], single = f.*columns[k].function;
        if (std::isnan(in_column) && std::isnan(single)) continue;
        const double off = std::fabs(in_column - single) / size_of(columns[k].scale, T, p, f);
        n.worst_column[k] = std::fmax(n.worst_column[k], off);
        if (!(off <= agreement)) add(n.differs, fluid, T, p, columns[k].name);
    }
}

// Functions of one phase. cp(idG) may be missing in the record, and its polynomial may fall below 0 beyond
// its range: then cp, cV and w are absent, in the first case h to a too.
void check_functions(const Fluid& fluid, double T, double p, const StateFunctions& f, Counts& n) {
    const double volumetric = f.v + f.lnphi, energetic = f.h + f.u + f.s + f.g + f.a,
                 caloric = f.cp + f.cV + f.w;
    const bool in_record = fluid.models.cpKode != CpForm::none;
    const bool in_range = in_record && IdGasFunc(fluid, T, p).cp > 0.0;
    const Reason expected = !in_record ? Reason::no_ideal_gas_cp
                            : in_range ? Reason::none
                                       : Reason::ideal_gas_range;
    if (f.reason != expected) return add(n.not_finite, fluid, T, p, reason_name(f.reason));
    if (!std::isfinite(volumetric + (in_record ? energetic : 0.0) + (in_range ? caloric : 0.0)))
        add(n.not_finite, fluid, T, p, "");
    if (in_record && !std::isfinite(f.eH + f.eU)) add(n.no_exergy, fluid, T, p, reason_name(f.exergy_reason));
    n.no_cp += in_record ? 0 : 1;
    n.cp_out_of_range += in_record && !in_range ? 1 : 0;
}

void one_state(const Fluid& fluid, double T, double p, const StateColumns& c, std::size_t i, Counts& n) {
    ++n.states;
    const VolumeResult r = VolumeTp(fluid, T, p);
    if (r.err() != 0) return add(n.no_volume, fluid, T, p, reason_name(r.reason));
    if (!r.LFlag && !r.VFlag) return add(n.no_phase, fluid, T, p, "");
    if (!(r.roots.VRoot[0] > r.eos.b)) add(n.at_b, fluid, T, p, "");
    StateFunctions f;
    for (const bool vapor : {false, true}) {
        if (!(vapor ? r.VFlag : r.LFlag)) continue;
        const double v = vapor ? r.vV : r.vL, rho = vapor ? r.rhoV : r.rhoL;
        ++n.phases;
        if (!(v > 0.0 && rho > 0.0)) add(n.not_positive, fluid, T, p, vapor ? "V" : "L");
        f = ThermoState(fluid, T, p, v);
        check_functions(fluid, T, p, f, n);
    }
    // Both phases: saturation with three roots, else the fluid above the critical point. The columns are of V
    const ColumnPhase phase = r.LFlag && r.VFlag ? r.nRoots == 3 ? ColumnPhase::saturated : ColumnPhase::fluid
                              : r.VFlag          ? ColumnPhase::V
                                                 : ColumnPhase::L;
    compare(fluid, T, p, phase, f, c, i, n);
}

void one_saturation(const Fluid& fluid, double T, Counts& n) {
    ++n.saturations;
    const Saturation p = pLV_EOS(fluid, T);
    if (!p.found()) return add(n.no_p, fluid, T, 0.0, reason_name(p.reason));
    if (!(p.vL > 0.0 && p.vV > p.vL)) add(n.not_positive, fluid, T, p.p, "saturated");
    const Saturation back = TLV_EOS(fluid, p.p);
    if (!back.found()) return add(n.no_T, fluid, T, p.p, reason_name(back.reason));
    const double off = std::fabs(back.T / T - 1.0);
    n.worst_closure = std::fmax(n.worst_closure, off);
    if (!(off <= closure)) add(n.not_closed, fluid, T, p.p, "");
}

// nT temperatures by np pressures, and nT saturations.
void one_fluid(const Fluid& fluid, int nT, int np, Counts& n) {
    const double Tcr = fluid.substance.Tcr;
    std::vector<double> T, p;
    for (int i = 0; i < nT; ++i) {
        for (int k = 0; k < np; ++k) {
            T.push_back(Tcr * 0.3 * std::pow(10.0, static_cast<double>(i) / (nT - 1)));
            p.push_back(0.001 * std::pow(3e8, static_cast<double>(k) / (np - 1)));
        }
    }
    StateColumns c;
    states_at(fluid, T, p, c);
    n.singles += c.singles;
    for (std::size_t i = 0; i < c.size(); ++i) one_state(fluid, T[i], p[i], c, i, n);
    for (int i = 0; i < nT; ++i) one_saturation(fluid, Tcr * (0.45 + 0.5499 * i / (nT - 1)), n);
}

}  // namespace

int main(int argc, char** argv) {
    const int per_code = argc > 1 ? std::max(4, std::atoi(argv[1])) : 100;
    const int nT = static_cast<int>(std::sqrt(per_code)), np = (per_code + nT - 1) / nT;
    const DatabaseFile file = test::starter_database();
    Counts n;
    for (int index = 1; index <= file.StoffAnzahl(); ++index) {
        const SubstanceConstants substance = unpack_substance(file, index, true).constants;
        for (const Eos code : codes) one_fluid(*test::starter_fluid(substance, code), nT, np, n);
    }
    std::printf("%ld states, %ld phases: %ld without cp(idG), %ld with cp(idG) not above 0\n", n.states,
                n.phases, n.no_cp, n.cp_out_of_range);
    std::printf("%ld saturations, worst T -> p -> T %.2g\n", n.saturations, n.worst_closure);
    std::printf("columns (%zu states left to the single calls) against single calls:", n.singles);
    for (std::size_t k = 0; k < std::size(columns); ++k)
        std::printf(" %s %.2g", columns[k].name, n.worst_column[k]);
    std::printf("\n");
    long failures = 0;
    for (const Fault& fault : {n.no_volume, n.no_phase, n.at_b, n.not_positive, n.not_finite, n.no_exergy,
                               n.differs, n.no_p, n.no_T, n.not_closed}) {
        std::printf("%6ld %s\n", fault.count, fault.what);
        failures += fault.count;
    }
    return failures != 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}

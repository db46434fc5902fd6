// saturation: p(LV) or T(LV), densities and delta(LV)h by every route that the substance offers.
#include <cmath>
#include <memory>
#include <optional>

#include "base/code_page.h"
#include "calc/quantities.h"
#include "calc/reference_point.h"
#include "console/selection.h"
#include "engine/condensed_phases.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "engine/volume_solver.h"

namespace quom::console {
namespace {

struct SaturationArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p;
};

// One way to the equilibrium: the equation of state (code -1) or a vapor pressure equation.
struct Route {
    int code = -1;
    double T = 0, p = 0;  // 0: no result
    TLimits limits;
    int outside = 0;  // [K] beyond the limits
    std::string reason;
};

// What the equation of state gives besides.
struct EosSaturation {
    Route route;
    double vL = 0, vV = 0, fd = 0;
};

TLimits evp_limits(const SubstanceConstants& k, int code) {
    switch (code) {
        case evp_antoine_low:
            return {k.AntLoTLo, k.AntLoTHi};
        case evp_antoine_high:
            return {k.AntHiTLo, k.AntHiTHi};
        case evp_frost_kalkwarf:
            return {k.KFTLo, k.KFTHi};
        case evp_wagner:
            return {k.WagnerTLo, k.WagnerTHi};
        case evp_kfw:
            return k.KFWLimits;
        case evp_kfr:
            return k.KFRLimits;
        case evp_thompson:
            return k.THOLimits;
        default:
            return {};
    }
}

EosSaturation by_eos(Session& s, const SaturationArguments& a) {
    EosSaturation r;
    if (s.models.VPhaseOnly) {
        r.route.reason = "holds for the vapor alone";
        return r;
    }
    const Saturation sat = a.T ? pLV_EOS(s, *a.T) : TLV_EOS(s, *a.p);
    if (sat.err) {
        r.route.reason = "no solution";
        return r;
    }
    r.route.T = a.T.value_or(sat.value), r.route.p = a.p.value_or(sat.value);
    r.vL = s.scratch.VRoot[0], r.vV = s.scratch.VRoot[2], r.fd = sat.fd;
    if (r.route.T == s.substance.Tcr) r.vL = r.vV = s.eos.vcrEOS;  // VRoot holds 1/rho there
    return r;
}

Route by_evp(Session& s, const SaturationArguments& a, int code) {
    const SubstanceConstants& k = s.substance;
    if (code >= evp_kfw) KorreliereEVP(s, code, static_cast<float>(k.Tcr), static_cast<float>(k.pcr), k.Tnb);
    Route route{code, 0, 0, evp_limits(k, code), 0, ""};
    const EvpResult r = a.T ? pLV_EVP(s, *a.T, code) : TLV_EVP(s, *a.p, code);
    route.outside = r.dT;
    if (r.err == 0) {
        route.T = a.T.value_or(r.value), route.p = a.p.value_or(r.value);
    } else if (code == evp_wagner && a.T && 1.0 - *a.T / static_cast<double>(k.WagnerTcr) < 1e-6) {
        route.reason = "at or above its T(cr)";
    } else {
        route.reason = "no solution";
    }
    return route;
}

std::vector<Route> all_routes(Session& s, const SaturationArguments& a, const EosSaturation& eos) {
    std::vector<Route> routes{eos.route};
    for (const ModelList::Entry& entry : AktualisierepKombi(s).entries)
        if (entry.code != evp_none) routes.push_back(by_evp(s, a, entry.code));
    return routes;
}

Table routes_table(const Session& s, const SaturationArguments& a, const std::vector<Route>& routes) {
    Table table{"routes",
                a.T ? "Vapor pressure" : "Boiling temperature",
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "route", ""},
                 {a.T ? "p" : "T", a.T ? "p(LV)" : "T(LV)", a.T ? "kPa" : "K"},
                 {"TLo", "T(Lo)", "K"},
                 {"THi", "T(Hi)", "K"},
                 {"dT", "outside", "K"},
                 {"reason", "", ""}},
                {}};
    for (const Route& r : routes) {
        const bool eos = r.code<0, result = r.p> 0;
        const bool selected = s.models.Konzept ? eos : r.code == s.models.EVPKode;
        const std::string_view name = trim(eos ? eos_name(s.models.EOSKode) : evp_name(r.code));
        table.rows.push_back(
            {selected, eos ? Value() : Value(r.code), name, result ? Value(a.T ? r.p : r.T) : Value(),
             r.limits.TLo ? Value(r.limits.TLo) : Value(), r.limits.THi ? Value(r.limits.THi) : Value(),
             r.outside ? Value(r.outside) : Value(), r.reason.empty() ? Value("") : Value(r.reason)});
    }
    return table;
}

// Densities of both phases by the equation of state alone and by the ways of the PARTIAL concept.
Table densities_table(Session& s, const EosSaturation& eos, const Route& evp) {
    const double M = static_cast<double>(s.substance.MolMass), v = display_factor(s, Quantity::v);
    Table table{"densities",
                "Densities",
                {{"name", "by", ""},
                 {"T", "T", "K"},
                 {"p", "p", "kPa"},
                 {"rhoL", "rho(L)", "kg/m^3"},
                 {"rhoV", "rho(V)", "kg/m^3"},
                 {"vL", "v(L)", std::string(unit_text(s, Quantity::v))},
                 {"vV", "v(V)", std::string(unit_text(s, Quantity::v))}},
                {}};
    const auto add = [&](const char* name, double T, double p, double vL, double vV) {
        const bool mass = M > TinyT;
        table.rows.push_back({name, T, p, vL > 0 && mass ? Value(M / vL) : Value(),
                              vV > 0 && mass ? Value(M / vV) : Value(), vL > 0 ? Value(v * vL) : Value(),
                              vV > 0 ? Value(v * vV) : Value()});
    };
    if (eos.route.p > 0) add("EOS", eos.route.T, eos.route.p, eos.vL, eos.vV);
    if (!(evp.p > 0)) return table;
    const VolumeResult vapor = VolumeTp(s, evp.T, evp.p);
    const double vV = vapor.err == 0 ? vapor.vV : 0.0;
    const bool equation = s.substance.RhoL[0] != 0.0f || s.substance.RhoL[1] != 0.0f;
    const DensityResult rhoL = equation ? rhoL_Fu(s, static_cast<float>(evp.T)) : DensityResult{.err = -1};
    add("EVP, rho(L) of the database", evp.T, evp.p, rhoL.err == 0 && rhoL.rho > 0 ? M / rhoL.rho : 0.0, vV);
    const double benson = is_complete(s.benson) && vV > 0 ? rhoLBenson(s, evp.T, M / vV) : 0.0;
    add("EVP, rho(L) by Benson", evp.T, evp.p, benson > 0 ? M / benson : 0.0, vV);
    return table;
}

std::string reason_of(const Session& s, int model, const HlvResult& r) {
    if (!trim(r.source).empty() && !r.source.starts_with("p =") && !r.source.starts_with("T ="))
        return r.source;
    if (model == hlv_evp_benson && !is_complete(s.benson)) return "no reference point for Benson's method";
    if (model == hlv_evp_rhoL || model == hlv_evp_benson) return "no rho(L) or rho(V) at this state";
    if (model == hlv_eos) return "no two volumes at this state";
    return "not defined at this state";
}

Table hlv_table(Session& s, const SaturationArguments& a) {
    Table table{"HLV",
                "Enthalpy of vaporization",
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "model", ""},
                 {"hLV", "delta(LV)h", std::string(unit_text(s, Quantity::hLV))},
                 {"T", "T", "K"},
                 {"p", "p", "kPa"},
                 {"reason", "", ""}},
                {}};
    const int HLVKode = s.models.HLVKode;
    for (const ModelList::Entry& entry : AktualisiereHLVKombi(s).entries) {
        if (entry.code == hlv_none) continue;
        double T = a.T.value_or(0.0), p = a.p.value_or(0.0);
        const HlvResult r = hLV(s, entry.code, T, p, s.models.EVPKode);
        const bool good = r.err == 0;
        const double factor = s.units.EnergyMode == 2 && good ? unitFactor(s, T) : s.units.uFactor;
        std::string reason = good ? "" : reason_of(s, entry.code, r);
        if (good && r.dT != 0) reason = shown(std::abs(r.dT)) + " K outside of its validity";
        table.rows.push_back({entry.code == HLVKode, entry.code, trim(hlv_name(entry.code)),
                              good ? Value(factor * r.value) : Value(), T > TinyT ? Value(T) : Value(),
                              p > TinyT ? Value(p) : Value(), remark(reason)});
    }
    s.models.HLVKode = HLVKode;
    return table;
}

Refused check(const Session& s, const SaturationArguments& a) {
    if (a.T.has_value() == a.p.has_value())
        return Fault{status_usage,
                     a.T ? "--T and --p together are no point of the saturation line; one is needed."
                         : "A temperature or a pressure is needed: --T or --p."};
    const SubstanceConstants& k = s.substance;
    if (k.Tcr < TinyT || k.pcr < TinyT)
        return Fault{status_no_result,
                     "The record of " + k.StoffName + " has no T(cr), p(cr): no saturation line."};
    if (a.T && *a.T > k.Tcr)
        return Fault{status_no_result, shown(*a.T) + " K is above T(cr) = " + shown(k.Tcr) +
                                           " K: there is no equilibrium of liquid and vapor."};
    if (a.p && *a.p > k.pcr)
        return Fault{status_no_result, shown(*a.p) + " kPa is above p(cr) = " + shown(k.pcr) +
                                           " kPa: there is no equilibrium of liquid and vapor."};
    return {};
}

Report saturation(Program& program, const SaturationArguments& a) {
    if (const Refused refused = prepare(program, a.substance, a.models))
        return refusal("saturation", *refused);
    Session& s = program.session;
    if (const Refused refused = check(s, a)) return refusal("saturation", *refused);
    const EosSaturation eos = by_eos(s, a);
    const std::vector<Route> routes = all_routes(s, a, eos);
    Route evp;
    for (const Route& route : routes)
        if (route.code == s.models.EVPKode) evp = route;
    TakeReferencePoint(s);
    const Route& in_force = s.models.Konzept ? eos.route : evp;
    set_units(s, a.T.value_or(in_force.T));

    Report report;
    report.title = substance_head(s) + ": " + models_head(s);
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    report.sections.emplace_back(routes_table(s, a, routes));
    report.sections.emplace_back(Block{
        "EOS",
        "Equation of state",
        {{"T", "T(LV)", if_known(eos.route.T), "K", ""},
         {"p", "p(LV)", if_known(eos.route.p), "kPa", ""},
         {"vL", "v(L)", if_known(eos.vL), "m^3/kmol", ""},
         {"vV", "v(V)", if_known(eos.vV), "m^3/kmol", ""},
         {"fd", "difference of areas fd", eos.route.p > 0 ? Value(eos.fd) : Value(), "", "0 at saturation"}},
        eos.route.p > 0 ? Layout::list : Layout::json});
    report.sections.emplace_back(densities_table(s, eos, evp));
    report.sections.emplace_back(hlv_table(s, a));
    if (!(in_force.p > 0)) {
        report.status = status_no_result;
        report.message = "The selected route gives no equilibrium: " +
                         (in_force.reason.empty() ? "there is no vapor pressure equation" : in_force.reason) +
                         ".";
    }
    const double Ttr = s.substance.Ttr;
    if (in_force.p > 0 && in_force.T < Ttr)
        report.notes.push_back("The triple point is at " + shown(Ttr) +
                               " K: below it there is no stable liquid.");
    return report;
}

}  // namespace

Action declare_saturation(CLI::App& app) {
    const auto arguments = std::make_shared<SaturationArguments>();
    add_substance(app, arguments->substance);
    add_number(app, "--T", arguments->T, Range::above_zero, "K", "Temperature");
    add_number(app, "--p", arguments->p, Range::above_zero, "kPa", "Pressure");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return saturation(program, *arguments); };
}

}  // namespace quom::console

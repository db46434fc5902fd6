// saturation: p(LV) or T(LV), densities and delta(LV)h by every route that the substance offers.
#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>

#include "base/code_page.h"
#include "calc/reference_point.h"
#include "console/calc_setup.h"
#include "engine/condensed_phases.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "report/comparison_report.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct SaturationArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p;
};

// One way to the equilibrium: the equation of state (evp none) or a vapor pressure equation.
struct Route {
    Evp evp = Evp::none;
    std::optional<double> T{}, p{};  // both where there is a result
    TLimits limits{};
    int outside = 0;  // [K] beyond the limits
    Failure failure{};
    bool found() const { return !failure; }
};

Route by_eos(const SaturationArguments& a, const Saturation& saturation,
             const SubstanceConstants& substance) {
    Route route;
    if (saturation.found()) {
        route.T = saturation.T;
        route.p = saturation.p;
    } else {
        route.failure = a.T ? Failure{saturation.reason, *a.T, substance.Tcr}
                            : Failure{saturation.reason, *a.p, substance.pcr};
    }
    return route;
}

Route by_evp(const SaturationArguments& a, const SubstanceConstants& substance, Evp evp) {
    const EvpResult r = a.T ? pLV_EVP(substance, *a.T, evp) : TLV_EVP(substance, *a.p, evp);
    Route route{.evp = evp, .T = {}, .p = {}, .limits = evp_limits(substance, evp), .outside = r.dT};
    if (r.reason == Reason::none) {
        route.T = a.T.value_or(r.value);
        route.p = a.p.value_or(r.value);
    } else {
        route.failure = Failure{r.reason, a.T ? *a.T : *a.p};
    }
    return route;
}

std::vector<Route> all_routes(const Fluid& fluid, const SaturationArguments& a, const Route& eos) {
    std::vector<Route> routes{eos};
    for (const ModelList::Entry& entry : AktualisierepKombi(fluid.substance, fluid.models).entries) {
        const Evp evp = evp_of(entry.code);
        if (evp != Evp::none) routes.push_back(by_evp(a, fluid.substance, evp));
    }
    return routes;
}

// The route that the concept of the models takes.
Route selected_route(const Fluid& fluid, const std::vector<Route>& routes) {
    if (fluid.models.Konzept) return routes.front();
    for (const Route& route : routes) {
        if (route.evp == fluid.models.EVPKode && route.evp != Evp::none) return route;
    }
    return {.failure = Failure{Reason::no_vapor_pressure_equation}};
}

Value limit(std::int16_t T) { return T != 0 ? Value(T) : Value(); }

Table routes_table(const Fluid& fluid, const SaturationArguments& a, const std::vector<Route>& routes) {
    Table table{"routes",
                a.T ? "Vapor pressure" : "Boiling temperature",
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "route", ""},
                 {"T", "T(LV)", "K", a.T ? Layout::json : Layout::list},
                 {"p", "p(LV)", "kPa", a.T ? Layout::list : Layout::json},
                 {"TLo", "T(Lo)", "K"},
                 {"THi", "T(Hi)", "K"},
                 {"dT", "outside", "K"},
                 {"reason", "", ""}},
                {}};
    for (const Route& r : routes) {
        const bool eos = r.evp == Evp::none;
        const bool selected = fluid.models.Konzept ? eos : r.evp == fluid.models.EVPKode;
        const std::string_view name = trim(eos ? fluid.eos_row().text : evp_info(r.evp).text);
        table.rows.push_back({selected, eos ? Value() : Value(number_of(r.evp)), name, if_present(r.T),
                              if_present(r.p), limit(r.limits.TLo), limit(r.limits.THi),
                              r.outside ? Value(r.outside) : Value(),
                              r.found() ? Value() : Value(reason_text(r.failure.reason))});
    }
    return table;
}

// The equilibrium in force.
Block state_block(const Route& in_force) {
    return {"state",
            "",
            {{"T", "T", if_present(in_force.T), "K", ""},
             {"p", "p", if_present(in_force.p), "kPa", ""},
             {"phase", "phase", in_force.found() ? Value(phase_text(PhaseWord::VL)) : Value(), "", ""}},
            Layout::json};
}

Block equilibrium_block(const Saturation& saturation, const Units& units, double v_factor) {
    const auto value = [&](double x) { return saturation.found() ? Value(x) : Value(); };
    const std::string v_unit(unit_text(units, Quantity::v));
    return {"equilibrium",
            "Equation of state",
            {{"T", "T(LV)", value(saturation.T), "K", ""},
             {"p", "p(LV)", value(saturation.p), "kPa", ""},
             {"v_L", "v(L)", value(v_factor * saturation.vL), v_unit, ""},
             {"v_V", "v(V)", value(v_factor * saturation.vV), v_unit, ""},
             {"fd", "difference of areas fd", value(saturation.fd), "", "0 at saturation"}},
            saturation.found() ? Layout::list : Layout::json};
}

// Densities of both phases by the equation of state alone and by the ways of the PARTIAL concept.
class Densities {
 public:
    Densities(const Fluid& fluid, const Units& units, const UnitFactors& factors)
        : M_(fluid.M),
          v_(display_factor(factors, Quantity::v)),
          table_{"densities",
                 "Densities",
                 {{"name", "by", ""},
                  {"T", "T", "K"},
                  {"p", "p", "kPa"},
                  {"rho_L", "rho(L)", "kg/m^3"},
                  {"rho_V", "rho(V)", "kg/m^3"},
                  {"v_L", "v(L)", std::string(unit_text(units, Quantity::v))},
                  {"v_V", "v(V)", std::string(unit_text(units, Quantity::v))}},
                 {}} {}
    // A volume of 0 is not known.
    void add(const char* name, double T, double p, double vL, double vV) {
        const auto density = [this](double v) { return v > 0 && M_ > TinyT ? Value(M_ / v) : Value(); };
        const auto volume = [this](double v) { return v > 0 ? Value(v_ * v) : Value(); };
        table_.rows.push_back({name, T, p, density(vL), density(vV), volume(vL), volume(vV)});
    }
    double volume_of(double rho) const { return rho > 0 ? M_ / rho : 0.0; }
    Table take() { return std::move(table_); }

 private:
    double M_, v_;
    Table table_;
};

Table densities_table(const Fluid& fluid, Densities densities, const Saturation& eos, const Route& evp,
                      const BensonReference& benson) {
    if (eos.found()) densities.add("EOS", eos.T, eos.p, eos.vL, eos.vV);
    if (!evp.found()) return densities.take();
    const VolumeResult vapor = VolumeTp(fluid, *evp.T, *evp.p);
    const double vV = vapor.reason == Reason::none ? vapor.vV : 0.0;
    const double database =
        has_liquid_density(fluid.substance) ? rhoL_Fu(fluid.substance, static_cast<float>(*evp.T)).rho : 0.0;
    densities.add("EVP, rho(L) of the database", *evp.T, *evp.p, densities.volume_of(database), vV);
    const double by_benson =
        benson.complete() && vV > 0 ? rhoLBenson(fluid.substance, benson, *evp.T, fluid.M / vV) : 0.0;
    densities.add("EVP, rho(L) by Benson", *evp.T, *evp.p, densities.volume_of(by_benson), vV);
    return densities.take();
}

Table hlv_table(const Session& session, const SaturationArguments& a, const BensonReference& benson) {
    const Fluid& fluid = *session.fluid;
    const Units& units = session.document.units;
    Table table{"vaporization",
                "Enthalpy of vaporization",
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "model", ""},
                 {"hLV", "delta(LV)h", std::string(unit_text(units, Quantity::hLV))},
                 {"T", "T", "K"},
                 {"p", "p", "kPa"},
                 {"reason", "", ""}},
                {}};
    for (const ModelList::Entry& entry : AktualisiereHLVKombi(fluid.substance, fluid.models).entries) {
        const Hlv model = hlv_of(entry.code);
        if (model == Hlv::none) continue;
        const HlvResult r = hLV(fluid, {.model = model,
                                        .T = a.T,
                                        .p = a.p,
                                        .EVP = fluid.models.EVPKode,
                                        .benson = benson,
                                        .point_T = {},
                                        .point_p = {}});
        const bool good = r.reason == Reason::none;
        const double factor = display_factor(session.factors(good ? r.T : 0.0), Quantity::hLV);
        std::string reason(good ? "" : reason_text(r.reason));
        if (good && r.dT != 0) reason = shown(std::abs(r.dT)) + " K outside of its validity";
        table.rows.push_back({model == fluid.models.HLVKode, entry.code, trim(hlv_info(model).text),
                              good ? Value(factor * r.value) : Value(), if_known(r.T), if_known(r.p),
                              remark(reason)});
    }
    return table;
}

Failure check_critical(const SubstanceConstants& k, const SaturationArguments& a) {
    if (!has_critical_data(k)) return {Reason::no_critical_data};
    if (a.T && *a.T > k.Tcr) return {Reason::above_critical_T, *a.T, k.Tcr};
    if (a.p && *a.p > k.pcr) return {Reason::above_critical_p, *a.p, k.pcr};
    return {};
}

Report no_saturation(const Failure& failure, const std::string& head) {
    Report report = refusal("saturation", {status_no_result, head + failure_text(failure)});
    report.reason = reason_name(failure.reason);
    return report;
}

// Warnings and ranges of the equilibrium in force.
void add_equilibrium_reservations(Program& program, Report& report, const SaturationArguments& a) {
    Session& session = program.session;
    const Mode mode = a.T ? Mode::equilibrium_T : Mode::equilibrium_p;
    if (set_up_mode(program, mode)) return;
    StateInput input{.mode = mode, .T = a.T, .p = a.p};
    input.setup = session.document.calc.setup;
    input.functions = false;
    Outcome outcome = CalcBatch(*session.fluid, input);
    outcome.failure = {};  // the answer stands by its route; what fails besides is in its table
    add_reservations(report, *session.fluid, outcome);
}

Report saturation(Program& program, const SaturationArguments& a) {
    if (a.T.has_value() == a.p.has_value())
        return refusal(
            "saturation",
            {status_usage, a.T ? "--T and --p together are no point of the saturation line; one is needed."
                               : "A temperature or a pressure is needed: --T or --p."});
    if (const Refused refused = prepare(program, a.substance, a.models))
        return refusal("saturation", *refused);
    const Session& session = program.session;
    const Fluid& fluid = *session.fluid;
    if (const Failure failure = check_critical(fluid.substance, a)) {
        Report report = no_saturation(failure, "");
        add_heads(report, session);
        return report;
    }

    const Saturation eos = a.T ? pLV_EOS(fluid, *a.T) : TLV_EOS(fluid, *a.p);
    const std::vector<Route> routes = all_routes(fluid, a, by_eos(a, eos, fluid.substance));
    const Route in_force = selected_route(fluid, routes);
    Route evp{.failure = Failure{Reason::no_vapor_pressure_equation}};
    for (const Route& route : routes) {
        if (route.evp == fluid.models.EVPKode && route.evp != Evp::none) evp = route;
    }
    const BensonReference benson = ReferencePoint(fluid).reference();
    const Units& units = session.document.units;
    const UnitFactors factors = session.factors(a.T.value_or(in_force.T.value_or(0.0)));

    Report report;
    report.title = substance_head(fluid.substance) + ": " + models_head(fluid.models);
    report.footer = footer_of(fluid, units);
    add_heads(report, session);
    report.sections.emplace_back(state_block(in_force));
    report.sections.emplace_back(routes_table(fluid, a, routes));
    report.sections.emplace_back(equilibrium_block(eos, units, display_factor(factors, Quantity::v)));
    report.sections.emplace_back(densities_table(fluid, Densities(fluid, units, factors), eos, evp, benson));
    report.sections.emplace_back(hlv_table(session, a, benson));
    const RecordComparison compared = eos.found() ? compare_with_record(fluid, eos.T) : RecordComparison{};
    report.sections.emplace_back(comparison_block(compared, units, factors));
    if (in_force.found()) {
        add_equilibrium_reservations(program, report, a);
    } else {
        const Report refused = no_saturation(in_force.failure, "The selected route gives no equilibrium: ");
        report.status = refused.status;
        report.message = refused.message;
        report.reason = refused.reason;
    }
    return report;
}

}  // namespace

Action declare_saturation(CLI::App& app) {
    const auto arguments = std::make_shared<SaturationArguments>();
    add_substance(app, arguments->substance);
    add_quantity(app, "--T", arguments->T, Quantity::T, NumberRange::above_zero, "Temperature");
    add_quantity(app, "--p", arguments->p, Quantity::p, NumberRange::above_zero, "Pressure");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return saturation(program, *arguments); };
}

}  // namespace quom

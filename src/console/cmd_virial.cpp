// virial: the second virial coefficient by every virial equation.
#include <cmath>
#include <memory>
#include <optional>

#include "base/code_page.h"
#include "console/selection.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace quom::console {
namespace {

struct VirialArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T;
};

struct Coefficient {
    std::optional<double> B, B1, B2;  // B, dB/dT, d2B/dT2
    std::string reason;
};

// B of one virial equation with its own constants; the selection in force is put back.
Coefficient coefficient(Session& s, int code, double T, const VirialArguments& a) {
    const SubstanceConstants& k = s.substance;
    if (code != eos_virial_manual && k.Tcr * k.pcr < TinyT)
        return {{}, {}, {}, "T(cr), p(cr) are not in the record"};
    if (code >= 14 && k.omega == 0.0) return {{}, {}, {}, "omega is not in the record"};
    const ModelSelection models = s.models;
    const EosBlock eos = s.eos;
    s.models.EOSKode = code;
    s.models.VPhaseOnly = true;
    ClearEOSPar(s);
    if (code == eos_virial_manual) {
        s.eos.EOSb = a.models.b0.value_or(0), s.eos.EOSnb = a.models.b1.value_or(0);
        s.eos.EOSm = a.models.b2.value_or(0);
    } else {
        InitEOSPar(s, code);
    }
    Coefficient r;
    const double B = VirialB(s, code, T);
    s.scratch.Bvirial = B;
    EOSParT(s, T);
    PhaseArrays arrays;
    const VirialDerivatives slopes = ThermoReal(s, phase_V, T, 1.0, B + RGas * T, CubicTerme(s, T), arrays);
    if (std::isfinite(B)) {
        r.B = B, r.B1 = slopes.B1, r.B2 = slopes.B2;
    } else {
        r.reason = "not finite at this T";
    }
    s.models = models, s.eos = eos;
    return r;
}

Report virial(Program& program, const VirialArguments& a) {
    VirialArguments arguments = a;
    if (a.models.b0 && !a.models.eos) arguments.models.eos = eos_virial_manual;
    if (const Refused refused = prepare(program, a.substance, arguments.models))
        return refusal("virial", *refused);
    if (!a.T) return refusal("virial", {status_usage, "A temperature is needed: --T."});
    Session& s = program.session;
    Table table{"B",
                "Second virial coefficient at T = " + shown(*a.T) + " K",
                {{"code", "code", ""},
                 {"name", "equation", ""},
                 {"B", "B", "m^3/kmol"},
                 {"B1", "dB/dT", "m^3/(kmol K)"},
                 {"B2", "d2B/dT2", "m^3/(kmol K^2)"},
                 {"reason", "", ""}},
                {}};
    int results = 0;
    for (int code = eos_virial_manual; code <= eos_pitzer_curl; ++code) {
        if (code == eos_virial_manual && !arguments.models.b0) continue;
        const Coefficient r = coefficient(s, code, *a.T, arguments);
        const auto value = [](const std::optional<double>& x) { return x ? Value(*x) : Value(); };
        table.rows.push_back(
            {code, trim(eos_name(code)), value(r.B), value(r.B1), value(r.B2), remark(r.reason)});
        results += r.B.has_value();
    }
    Report report;
    report.title = substance_head(s);
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(Block{"state", "", {{"T", "T", *a.T, "K", ""}}, Layout::json});
    report.sections.emplace_back(std::move(table));
    if (results == 0) {
        report.status = status_no_result;
        report.message =
            "No virial equation gives B: the record of " + s.substance.StoffName + " has no T(cr), p(cr).";
    }
    return report;
}

}  // namespace

Action declare_virial(CLI::App& app) {
    const auto arguments = std::make_shared<VirialArguments>();
    add_substance(app, arguments->substance);
    add_number(app, "--T", arguments->T, Range::above_zero, "K", "Temperature");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return virial(program, *arguments); };
}

}  // namespace quom::console

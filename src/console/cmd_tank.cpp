// tank: phases, pressure and shares in a closed tank.
#include <memory>

#include "calc/calc_batch.h"
#include "console/calc_setup.h"

namespace quom::console {
namespace {

struct TankArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, m, n, V;
};

Grid contents(const TankContents& tank) {
    Grid grid{"contents", "Contents", {"L", "V"}, {}};
    const auto row = [&grid](const char* key, const char* label, const char* unit, double L, double V) {
        grid.rows.push_back({key, label, unit, {Value(L), Value(V)}});
    };
    row("V", "volume", "m^3", tank.VL, tank.VV);
    row("m", "mass", "kg", tank.mL, tank.mV);
    row("n", "amount of substance", "kmol", tank.nL, tank.nV);
    return grid;
}

Report tank(Program& program, const TankArguments& a) {
    if (!a.m == !a.n)
        return refusal("tank", {status_usage, "the contents need --m kg or --n kmol, one of them."});
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("tank", *refused);
    Session& s = program.session;
    const int mode = s.models.Konzept ? 9 : 10;
    if (const Refused refused = set_up_mode(program, mode)) return refusal("tank", *refused);
    const double M = static_cast<double>(s.substance.MolMass);
    SpecifiedValues values{.T = a.T, .p = {}, .rho = {}, .m = a.m ? *a.m : *a.n * M, .V = a.V};
    if (const Refused refused = take_values(s, mode, values)) return refusal("tank", *refused);
    const CalcBatchResult r = CalcBatch(s, {.Mode = mode, .Point = 0, .WarnTriple = true});
    Report report;
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    if (r.err) {
        report.status = status_no_result;
        report.message = r.fault.empty() ? "no result" : r.fault;
        return report;
    }
    report.title = substance_head(s) + "\n" + models_head(s);
    const char* phases = r.IsL && r.IsV ? "V+L" : r.IsV ? "V" : "L";
    const bool full = r.Text == "ERROR2";
    report.sections.emplace_back(
        Block{"tank",
              "Tank",
              {{"T", "T", static_cast<double>(s.calc.tank.T), "K", ""},
               {"p", "p", r.p > 0.0 ? Value(r.p) : Value(), "kPa", ""},
               {"phase", "phases", phases, "", ""},
               {"rho", "mean density",
                static_cast<double>(s.calc.tank.m) / static_cast<double>(s.calc.tank.V), "kg/m^3", ""},
               {"y", "vapor fraction (mass)", r.tank.y, "", ""},
               {"LPercent", "filling level", static_cast<double>(r.LPercent), "vol.-%", ""}},
              Layout::list});
    report.sections.emplace_back(contents(r.tank));
    if (full) report.notes.push_back("The tank is full of liquid; its pressure is not known.");
    return report;
}

}  // namespace

Action declare_tank(CLI::App& app) {
    const auto a = std::make_shared<TankArguments>();
    add_substance(app, a->substance);
    add_number(app, "--T", a->T, Range::above_zero, "K", "Temperature")->required();
    add_number(app, "--V", a->V, Range::above_zero, "m^3", "Volume of the tank")->required();
    add_number(app, "--m", a->m, Range::above_zero, "kg", "Mass in the tank");
    add_number(app, "--n", a->n, Range::above_zero, "kmol", "Amount of substance in the tank");
    add_model_options(app, a->models);
    return [a](Program& program) { return tank(program, *a); };
}

}  // namespace quom::console

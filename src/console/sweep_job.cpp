#include "console/sweep_job.h"

#include <charconv>
#include <filesystem>

#include "base/input_file.h"
#include "console/sweep_binary.h"

namespace quom {
namespace {

using Json = nlohmann::ordered_json;

struct Shard {
    std::uint64_t k = 1, n = 1;
};

// "3/40"; nothing for any other text.
std::optional<Shard> parse_shard(std::string_view text) {
    Shard shard;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, shard.k);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != '/') return std::nullopt;
    const auto second = std::from_chars(first.ptr + 1, end, shard.n);
    const bool whole = second.ec == std::errc() && second.ptr == end;
    constexpr std::uint64_t most = 1'000'000;
    if (!whole || shard.k < 1 || shard.n < shard.k || shard.n > most) return std::nullopt;
    return shard;
}

// Which of the arguments do not go together; empty when all do.
std::string contradiction(const SweepArguments& a) {
    if (a.in.empty() == a.grid.empty())
        return "either --in FILE|- gives the rows or --grid \"T=250:550:301 p=100:8000:80,log\".";
    if (!a.grid.empty() && !(a.table.columns + a.table.keep).empty())
        return "--columns and --keep are for tables that come in; a grid has no other columns.";
    if (a.format == "bin" && !a.table.keep.empty())
        return "--format bin has numbers alone; --keep passes text through, --line-numbers goes.";
    if (a.chunk == 0) return a.resume ? "--resume goes on with the chunks of --chunk ROWS." : "";
    if (a.out == "-") return "--chunk writes files; it needs --out FILE.";
    if (a.format == "bin" && a.chunk % binary_chunk_rows != 0)
        return "with --format bin the rows of --chunk are a multiple of " +
               std::to_string(binary_chunk_rows) + ".";
    return {};
}

bool can_be_read_twice(const std::string& path) {
    std::error_code error;
    return path != "-" && std::filesystem::is_regular_file(path, error);
}

RowCount count_rows_of(const SweepArguments& a, double M) {
    InputFile file = InputFile::open(a.in);
    if (!file.fault().empty()) return {.rows = 0, .checksum = {}, .fault = file.fault()};
    TableInput table([&file](char* into, std::size_t space) { return file.read(into, space); },
                     table_piece_bytes);
    read_sweep_head(table, a.mode, M, a.table);
    return count_rows(table);
}

// Substance, models, reference state: what a reader of the numbers has to know.
Json about(const Session& session) {
    Report report;
    add_heads(report, session);
    const Json heads = Json::parse(to_json(report));
    const ReferenceState& reference = session.document.reference;
    return {{"substance", heads["substance"]},
            {"models", heads["models"]},
            {"reference",
             {{"code", reference.RefKode},
              {"T0", session.fluid->ideal_gas.T0},
              {"p0", session.fluid->ideal_gas.p0},
              {"h_offset", reference.hOffset},
              {"s_offset", reference.sOffset},
              {"T_environment", reference.TEnv},
              {"p_environment", reference.pEnv}}}};
}

// Constants of the fluid: a record that was changed gives other numbers.
Json constants_of(const Fluid& fluid) {
    const SubstanceConstants& s = fluid.substance;
    const EosBlock& e = fluid.eos;
    Json list = {fluid.M,
                 s.Tcr,
                 s.pcr,
                 s.omega,
                 s.Ttr,
                 e.EOSa,
                 e.EOSb,
                 e.EOSc,
                 e.EOSd,
                 e.EOSna,
                 e.EOSnb,
                 fluid.ideal_gas.h0,
                 fluid.ideal_gas.s0,
                 fluid.environment.V.h,
                 fluid.environment.V.s};
    for (const float x : s.cpPoly) list.push_back(x);
    for (const float x : s.cpDIPPR) list.push_back(x);
    return list;
}

Json identity_of(const Session& session, const SweepArguments& a, const SweepSettings& settings) {
    Json identity = {{"manifest", "quomc sweep 1"}, {"mode", number_of(a.mode)}, {"format", a.format}};
    identity.update(settings.about);
    identity["constants"] = constants_of(*session.fluid);
    const CalcSetup& setup = session.document.calc.setup;
    identity["setup"] = {setup.GlobalCalc, setup.BensonRhoL, setup.RhoLWanted, setup.VLEAssumed};
    identity["columns"] = settings.plan.heads();
    identity["table"] = {{"decimal", std::string(1, a.table.decimal)},
                         {"columns", a.table.columns},
                         {"keep", a.table.keep},
                         {"line_numbers", a.table.line_numbers}};
    identity["grid"] = a.grid;
    identity["shard"] = a.shard;
    identity["first_row"] = settings.range.first;
    identity["chunk_rows"] = a.chunk;
    identity["rows"] = settings.rows ? Json(*settings.rows) : Json();
    return identity;
}

// Range and number of rows. Refused where the rows cannot be counted.
Refused set_rows(const SweepArguments& a, double M, SweepJob& job) {
    SweepSettings& settings = job.settings;
    if (job.grid) {
        settings.rows = job.grid->rows();
    } else if (!a.shard.empty() && !can_be_read_twice(a.in)) {
        return Fault{status_usage,
                     "--shard counts the rows before it calculates: it needs a table in a file, or --grid."};
    } else if (can_be_read_twice(a.in) && (!a.shard.empty() || settings.format == SweepFormat::bin)) {
        const RowCount count = count_rows_of(a, M);
        if (!count.fault.empty()) return Fault{status_file, count.fault + "."};
        settings.rows = count.rows;
    }
    if (!a.shard.empty()) {
        const std::optional<Shard> shard = parse_shard(a.shard);
        if (!shard)
            return Fault{status_usage,
                         "--shard is K/N, the K-th of N parts: 1/40 to 40/40, N up to a million."};
        const std::uint64_t unit = settings.format == SweepFormat::bin ? binary_chunk_rows : 1;
        settings.range = shard_of(*settings.rows, shard->k, shard->n, unit);
        settings.with_head = shard->k == 1;
    }
    settings.range.cut = a.chunk;
    return {};
}

}  // namespace

SweepJob make_sweep_job(const Session& session, const SweepArguments& a) {
    SweepJob job;
    const auto refuse = [&job](std::string message) {
        job.refused = Fault{status_usage, std::move(message)};
        return std::move(job);
    };
    if (std::string wrong = contradiction(a); !wrong.empty()) return refuse(std::move(wrong));
    const double M = session.fluid->M;
    SweepSettings& settings = job.settings;
    settings.jobs = a.jobs;
    settings.table = a.table;
    settings.format = a.format == "bin" ? SweepFormat::bin : SweepFormat::csv;
    settings.calculation = {.mode = a.mode,
                            .setup = session.document.calc.setup,
                            .units = session.document.units,
                            .factors = session.factors()};
    OutputUnits units = a.models.units.empty() ? OutputUnits{} : parse_units(a.models.units, M);
    if (!units.fault.empty()) return refuse("--units: " + units.fault + ".");
    settings.plan = make_sweep_plan(a.mode, a.functions, session.document.units, units, a.results);
    if (!settings.plan.fault.empty()) return refuse("--results: " + settings.plan.fault + ".");
    if (!a.grid.empty()) {
        job.grid = parse_grid(a.grid, a.mode, M);
        if (!job.grid->fault.empty()) return refuse("--grid: " + job.grid->fault + ".");
    }
    settings.about = about(session);
    job.refused = set_rows(a, M, job);
    if (!job.refused && a.chunk > 0) job.identity = identity_of(session, a, settings);
    return job;
}

}  // namespace quom

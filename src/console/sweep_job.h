// What the command "sweep" was asked for, checked, and made into settings and places.
#pragma once
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "console/selection.h"
#include "console/sweep.h"

namespace quom {

struct SweepArguments {
    std::string substance;
    ModelOptions models;
    Mode mode = Mode::none;
    bool functions = false, strict = false, resume = false;
    int jobs = 1;
    std::string in, grid, out, results, format = "csv", shard;
    std::uint64_t chunk = 0;  // rows; 0: one file
    TableOptions table;
};

// A sweep that can begin.
struct SweepJob {
    SweepSettings settings;
    std::optional<SweepGrid> grid;    // in place of a table
    nlohmann::ordered_json identity;  // all that decides the bytes, for the manifest of chunks
    Refused refused;
};
// Checks the arguments against each other and, where a shard or a binary table needs it, counts the rows. The
// session has the substance, the models and the setup of the mode.
SweepJob make_sweep_job(const Session& session, const SweepArguments& arguments);

}  // namespace quom

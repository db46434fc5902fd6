// Arguments of the command line: numbers, the options that all commands share, and those of the models.
#pragma once
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "base/messages.h"
#include "engine/models.h"
#include "quantities/unit_table.h"

namespace quom {

// What the numbers of an option may be.
enum class NumberRange { any, above_zero };
// Adds an option that takes one number in the point form of the workbench; anything else is refused with a
// sentence.
CLI::Option* add_number(CLI::App& app, const std::string& name, std::optional<double>& into,
                        NumberRange range, const std::string& unit, const std::string& help);

// Adds an option that takes a number with or without a unit of q: "20C", "5 bar", "300". The first form takes
// quantities whose units need no molar mass and stores the value in the workbench's unit; the second leaves
// the conversion to own_value when the substance is known (q none: and the check of the unit).
CLI::Option* add_quantity(CLI::App& app, const std::string& name, std::optional<double>& into, Quantity q,
                          NumberRange range, const std::string& help);
CLI::Option* add_quantity(CLI::App& app, const std::string& name, std::optional<GivenValue>& into,
                          std::optional<Quantity> q, NumberRange range, const std::string& help);

// What stands before or behind the command.
struct GlobalOptions {
    std::string program_folder;
    std::string db;
    bool json = false;
    std::optional<Answer> answer;  // --answer yes|no
};
void add_global_options(CLI::App& app, GlobalOptions& options);

// The selection of models; what is not given is chosen as the model window would choose it.
struct ModelOptions {
    std::optional<Eos> eos;
    std::optional<Evp> evp;
    std::optional<Hlv> hlv;
    std::optional<CpForm> cp;
    std::optional<double> watson;
    std::optional<bool> global;        // --concept
    std::optional<bool> benson;        // --benson true, --database-rhol false
    std::optional<int> ref;            // 1, 2, 10
    std::optional<double> tref, pref;  // [K], [kPa]
    std::optional<double> tenv, penv;  // [K], [kPa]
    std::optional<GivenValue> href, sref;
    int energy = 0, volume = 0;        // EnergyMode, VolumeMode
    std::string units;                 // --units, as parse_units takes it; possible but for the molar mass
    std::string ji;                    // parameter file of codes 7 and 8
    std::optional<double> b0, b1, b2;  // manual virial equation B = b0 - b1/T^b2 [m^3/kmol]
};
void add_model_options(CLI::App& app, ModelOptions& options);

// The positional SUBSTANCE.
void add_substance(CLI::App& app, std::string& into);

}  // namespace quom

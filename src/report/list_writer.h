// One result list on its way: what the parts of it share. Only src/report includes this.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "quantities/quantity_table.h"
#include "report/calc_record.h"
#include "report/result_list.h"

namespace quom {

struct ListWriter {
    const Fluid& fluid;
    const Outcome& outcome;
    const ListSettings& settings;
    const UnitFactors factors;
    OutputView& view;

    Mode mode() const { return outcome.mode; }
    const ModeInfo& info() const { return mode_info(outcome.mode); }
    double T() const { return outcome.T.value_or(0.0); }
    double p() const { return outcome.p.value_or(0.0); }
    double factor(Quantity q) const { return display_factor(factors, q); }

    // One line of the list.
    void line(std::string_view content) { view.Liste.text.append(content).push_back('\n'); }
    void ruler(std::size_t n, char c) { line(std::string(n, c)); }

    // The phase of a column; a fluid above the critical point stands in both. Null for a column that is not
    // shown.
    const PhaseOutcome* column(Phase phase) const;
    // Row of a table: name, label with unit, value of each column that has one.
    void table_row(std::string_view name, std::string_view label, const std::optional<double>& L,
                   const std::optional<double>& V);
};

// Characters of a ruler over a block, and of the column of the L-phase.
inline constexpr std::size_t WideRuler = 68;
inline constexpr std::size_t ColumnWidth = 20;

// Pressure of value lines [kPa], without unit: general form below 0.01, else three decimals.
std::string pressure_text(double p);
// By the number form of the quantity on a value line.
std::string value_text(double x, Quantity q);
// Name of the equation in force, trimmed.
std::string_view eos_text(const Fluid& fluid);

// Texts of the states: par1 to txtco2 and the lines up to the density rows and delta(LV)h.
void write_state(ListWriter& w);         // 1, 2, 3, 8, 13
void write_equilibrium(ListWriter& w);   // 4, 5
void write_vaporization(ListWriter& w);  // 6, 7
void write_tank(ListWriter& w);          // 9, 10
void write_virial(ListWriter& w);        // 11
void write_process(ListWriter& w);       // 12
void write_database(ListWriter& w);      // 14 to 24

// Specified values; false after the red text in place of one that is missing.
bool show_specified(ListWriter& w);
void show_T(ListWriter& w, ViewText& where);
void show_p(ListWriter& w, ViewText& where);
// A red text in place of a shown value.
void refuse(ViewText& where, std::string content);
// A fault of the calculation: the list turns red and ends in the message and, on the next line, the reason.
void write_fault(ListWriter& w);

// How the L-phase was found, density rows, and delta(LV)h where it is known.
void write_densities(ListWriter& w);
// Head, value, entropy and what they were made of; of modes 6 and 7 the head stands in co1.
void write_heat(ListWriter& w);
// Table of all functions; the names are those of mode 8 or of the list.
void write_functions(ListWriter& w);
// Extended rows and points of inflection.
void write_extended(ListWriter& w);

}  // namespace quom

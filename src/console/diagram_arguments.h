// Arguments of the commands that draw: kind, ranges of the axes, points of a curve; and what messages of
// drawing become on a command line.
#pragma once
#include <optional>
#include <string>

#include "base/messages.h"
#include "console/curve_output.h"
#include "console/selection.h"

namespace quom {

// Limits of an axis as typed, "A:B".
struct TypedRange {
    GivenValue from, to;
};

// --kind N, required; refused where it has no diagram of its own.
void add_kind(CLI::App& app, Kind& into);
// --x A:B and --y A:B.
void add_ranges(CLI::App& app, std::optional<TypedRange>& x, std::optional<TypedRange>& y);
// --dens N, --triple-rule on|off.
void add_density(CLI::App& app, int& into);
void add_triple_rule(CLI::App& app, bool& into);

// The limits of an axis in what its curves hold, the lower one first; without typed ones they stay.
Refused take_axis(const std::optional<TypedRange>& typed, const char* option, const CurveColumn& column,
                  double M, float& low, float& high);

// What --T, --p and --v are to a section: the option and what the section is called; null: no section.
struct SectionOption {
    Section section;
    std::string_view option, name;
    Quantity quantity;
};
const SectionOption* option_of(Section section);
std::string kind_words(Kind kind);  // "kind 15"

std::string in_one_line(std::string text);
// What a message says, without the lines in brackets that tell where to click.
std::string note_of(const Message& message);

}  // namespace quom

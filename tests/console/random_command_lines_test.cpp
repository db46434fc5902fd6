// Random command lines: no crash, no number that is none, no answer without its reason.
//
// QUOM_RANDOM_COMMANDS sets their number (default 1500), QUOM_RANDOM_COMMANDS_SEED the seed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "../fuzz/command_lines.h"
#include "support/test_paths.h"

namespace quom {
namespace {

unsigned from_environment(const char* name, unsigned otherwise) {
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST(RandomCommandLines, answer_or_tell_why_not) {
    const unsigned count = from_environment("QUOM_RANDOM_COMMANDS", 1500);
    const unsigned seed = from_environment("QUOM_RANDOM_COMMANDS_SEED", 20261121);
    std::mt19937 random(seed);
    int faults = 0;
    for (unsigned i = 0; i < count && faults < 20; ++i) {
        std::vector<std::uint8_t> bytes(8 + random() % 56);
        for (std::uint8_t& b : bytes) b = static_cast<std::uint8_t>(random());
        const fuzz::CommandLine line = fuzz::command_line_of(bytes);
        const std::string fault = fuzz::fault_of(line, test::starter_data());
        EXPECT_EQ(fault, "") << fuzz::text_of(line) << "\nseed " << seed << ", line " << i;
        faults += !fault.empty();
    }
}

}  // namespace
}  // namespace quom

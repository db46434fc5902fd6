// Any bytes as a command line of quomc.
#include <cstdio>
#include <cstdlib>

#include "command_lines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom::fuzz;
    const CommandLine line = command_line_of({data, size});
    const std::string fault = fault_of(line, QUOM_STARTER_DATA);
    if (fault.empty()) return 0;
    std::fprintf(stderr, "%s\n%s\n", text_of(line).c_str(), fault.c_str());
    std::abort();
}

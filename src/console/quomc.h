// The console front end as a function, so that tests can drive it.
#pragma once
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace quom {

// Runs quomc with the arguments behind its name. Returns the exit status: 0 done, 1 no result, 2 wrong
// arguments, 3 a file could not be read or
// written, or the command ended early (memory).
int quomc_main(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace quom

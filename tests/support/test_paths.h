// Where tests find their files. The places of one checkout are compiled into one small file, so that the
// others come out of the compiler cache alike in every checkout.
#pragma once
#include <string>

namespace quom::test {

std::string test_data();     // the folder tests/
std::string starter_data();  // the program folder with the starter database
std::string program();       // quom, empty where it was not built
std::string console();       // quomc, empty where it was not built
std::string fault_shim();    // the library that lets calls of the system fail

}  // namespace quom::test

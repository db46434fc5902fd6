#include "support/test_paths.h"

namespace quom::test {

std::string test_data() { return QUOM_TEST_DATA; }
std::string starter_data() { return QUOM_STARTER_DATA; }
std::string program() { return QUOM_PROGRAM; }
std::string console() { return QUOM_CONSOLE; }
std::string fault_shim() { return QUOM_FAULT_SHIM; }

}  // namespace quom::test

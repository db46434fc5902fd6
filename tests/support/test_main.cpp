// The main of the test programs without windows.
#include <gmock/gmock.h>

#include <cstring>

#include "support/early_exit.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    // Tried by the check "early_exit", which expects the program to fail.
    if (argc > 1 && std::strcmp(argv[1], "--leave-early") == 0)
        ::testing::RegisterTest("EarlyExit", "leaves", nullptr, nullptr, __FILE__, __LINE__, [] {
            class Leaving : public ::testing::Test {
                void TestBody() override { std::exit(0); }
            };
            return static_cast<::testing::Test*>(new Leaving);
        });
    return quom::test::run_all_tests();
}

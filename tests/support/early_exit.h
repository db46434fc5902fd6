// A test that leaves its program early, by exit() or a window that ends it, makes the program fail instead of
// passing with what ran before.
#pragma once
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace quom::test {

inline bool& all_tests_ran() {
    static bool ran = false;  // asked when the program ends
    return ran;
}

// RUN_ALL_TESTS with the guard.
inline int run_all_tests() {
    std::atexit([] {
        if (all_tests_ran()) return;
        std::fputs("A test left the program before all of them ran.\n", stderr);
        std::_Exit(3);
    });
    const int status = RUN_ALL_TESTS();
    all_tests_ran() = true;
    return status;
}

}  // namespace quom::test

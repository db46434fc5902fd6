// Starting threads on machines that may not give any.
#pragma once
#include <functional>
#include <thread>
#include <vector>

namespace quom {

// Starts threads that run the body, at most `wanted`. Those that the system does not give are done without:
// the result may be empty, and the calling thread has to do the work alone. Signals to the program never
// interrupt them. The body must not throw.
std::vector<std::thread> start_threads(int wanted, const std::function<void()>& body);

}  // namespace quom

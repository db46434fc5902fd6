#include "base/threads.h"

#include <new>
#include <system_error>

#include "base/signals_held.h"

namespace quom {

std::vector<std::thread> start_threads(int wanted, const std::function<void()>& body) {
    std::vector<std::thread> threads;
    threads.reserve(wanted > 0 ? static_cast<std::size_t>(wanted) : 0);
    const SignalsHeld held;
    try {
        for (int i = 0; i < wanted; ++i) threads.emplace_back(body);
    } catch (const std::system_error&) {
        // The system gives no more; what is there goes on.
    } catch (const std::bad_alloc&) {
    }
    return threads;
}

}  // namespace quom

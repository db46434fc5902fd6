#include "console/interrupt.h"

#include <unistd.h>

#include <charconv>
#include <csignal>
#include <cstring>

#include "base/output_file.h"
#include "base/signals_held.h"

namespace quom {
namespace {

constexpr struct {
    int number;
    const char* name;
} signals[] = {{SIGTERM, "SIGTERM"}, {SIGINT, "SIGINT"}, {SIGHUP, "SIGHUP"}};

// The one in charge; a handler of signals can be handed nothing.
constinit std::atomic<const Interruption*> innermost = nullptr;
static_assert(std::atomic<const Interruption*>::is_always_lock_free);

void say(const char* text, std::size_t length) {
    [[maybe_unused]] const ssize_t n = ::write(STDERR_FILENO, text, length);
}

}  // namespace

Interruption::Interruption(std::string_view command, std::string_view output) : outer_(innermost) {
    if (!command.empty()) begin_ = "quomc " + std::string(command) + ": Ended by ";
    end_ = output.empty() ? ".\n" : "; " + std::string(output) + " was not written.\n";
    const SignalsHeld held;
    innermost = this;
    if (outer_ != nullptr) return;
    for (const auto& signal : signals) {
        struct sigaction action {};
        if (::sigaction(signal.number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action.sa_handler = on_signal;
        action.sa_flags = SA_RESTART;
        sigfillset(&action.sa_mask);
        ::sigaction(signal.number, &action, nullptr);
    }
}

Interruption::~Interruption() {
    const SignalsHeld held;
    innermost = outer_;
    if (outer_ != nullptr) return;
    for (const auto& signal : signals) {
        struct sigaction action {};
        if (::sigaction(signal.number, nullptr, &action) == 0 && action.sa_handler == on_signal)
            std::signal(signal.number, SIG_DFL);
    }
}

// Calls nothing but what is safe in a handler. The signal itself comes again, with its own action, at the
// return.
void Interruption::on_signal(int number) {
    remove_unfinished_files();
    const Interruption* const self = innermost;
    for (const auto& signal : signals) {
        if (signal.number == number && self != nullptr) self->tell(signal.name);
    }
    std::signal(number, SIG_DFL);
    ::raise(number);
}

void Interruption::tell(const char* signal) const noexcept {
    if (begin_.empty()) return;
    char count[24];
    const char* const count_end = std::to_chars(count, count + sizeof count, lines_.load()).ptr;
    say(begin_.data(), begin_.size());
    say(signal, std::strlen(signal));
    say(" after line ", 12);
    say(count, static_cast<std::size_t>(count_end - count));
    say(end_.data(), end_.size());
}

}  // namespace quom

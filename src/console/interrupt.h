// What happens when somebody ends the program: SIGTERM, SIGINT and SIGHUP.
#pragma once
#include <atomic>
#include <cstdint>
#include <string>

namespace quom {

// While it lives, SIGTERM, SIGINT and SIGHUP end the program as they would without it, but before that the
// files that are not finished are removed and standard error is told how far the work came. A signal that is
// ignored (nohup) stays ignored. They may nest: the innermost speaks. For the main thread; other threads are
// to be started by start_threads, which leaves the signals to it.
class Interruption {
 public:
    // command: "sweep"; output: what is not written when it ends early, as the sentence wants it (may be
    // empty). Without a command nothing is said.
    explicit Interruption(std::string_view command = {}, std::string_view output = {});
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    // Lines that have been written so far.
    void at_line(std::uint64_t lines) { lines_ = lines; }

 private:
    static void on_signal(int signal);
    void tell(const char* signal) const noexcept;
    std::string begin_, end_;  // of the sentence
    std::atomic<std::uint64_t> lines_ = 0;
    const Interruption* outer_;
};

}  // namespace quom

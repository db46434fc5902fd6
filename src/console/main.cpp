#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "base/input_file.h"
#include "console/interrupt.h"
#include "console/quomc.h"

namespace {

// A standard stream that was closed (<&-) is taken by a descriptor that can do nothing with its bytes, so
// that reading or writing it fails; otherwise the next file that is opened would stand in its place.
bool fill_closed_streams() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) >= 0) continue;
        if (::open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY) != fd) return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) try {
    if (!fill_closed_streams()) return 3;
    // A reader that goes away and a file that gets too large are faults of the output like a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    const quom::Interruption interruption;
    std::ios::sync_with_stdio(false);
    quom::DescriptorBuffer bytes(STDIN_FILENO);
    std::istream in(&bytes);
    return quom::quomc_main({argv + 1, argv + argc}, in, std::cout, std::cerr);
} catch (...) {
    constexpr std::string_view sentence = "quomc: It could not be started, the memory does not suffice.\n";
    [[maybe_unused]] const ssize_t n = ::write(STDERR_FILENO, sentence.data(), sentence.size());
    return 3;
}

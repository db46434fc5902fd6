// Every single call of the system fails once: what is saved is either the old or the new file, whole, and it
// is said.
#include <gmock/gmock.h>

#include <cerrno>

#include "base/files.h"
#include "faults/shell.h"
#include "support/fault_shim.h"

namespace quom {
namespace {

// What has to become of a call that fails: the work goes on as if nothing had been, it may go on or be
// refused, or it is refused.
enum class Then { harmless, either, refused };
struct Fault {
    const char* call;
    int code;  // 0: half of the bytes
    Then then;
};
constexpr Fault fault_table[] = {
    {"open", EMFILE, Then::either},   {"open", EINTR, Then::harmless},  {"read", EIO, Then::refused},
    {"read", EINTR, Then::harmless},  {"read", 0, Then::harmless},      {"pread", EIO, Then::refused},
    {"pread", EINTR, Then::harmless}, {"pread", 0, Then::harmless},     {"write", ENOSPC, Then::refused},
    {"write", EIO, Then::refused},    {"write", EINTR, Then::harmless}, {"write", 0, Then::harmless},
    {"fsync", EIO, Then::refused},    {"fsync", EINTR, Then::harmless}, {"rename", EIO, Then::refused},
    {"close", EIO, Then::either},     {"close", EINTR, Then::harmless},
};
// True when what was said is right for a fault that was met, or was not.
bool right(const Fault& fault, bool met, bool refused) {
    if (!met || fault.then == Then::harmless) return !refused;
    return refused || fault.then == Then::either;
}

std::string name_of(const Fault& fault, int n) {
    return std::string(fault.call) + " " + std::to_string(n) + " " + std::to_string(fault.code);
}

TEST(InjectedFaults, saving_keeps_a_whole_file) {
    const Shell shell;
    const std::string path = shell.at("file"), old(5000, 'o'), bytes(200000, 'n');
    for (const Fault& fault : fault_table) {
        for (int n = 1; n < 100; ++n) {
            shell.put("file", old);
            make_fail(fault.call, n, fault.code);
            const std::string said = write_file_atomic(path, bytes);
            const bool met = fault_met();
            make_fail("", 0, 0);
            const std::string left = shell.text("file");
            EXPECT_TRUE(left == bytes || (!said.empty() && left == old)) << name_of(fault, n) << said;
            EXPECT_TRUE(right(fault, met, !said.empty())) << name_of(fault, n) << said;
            EXPECT_EQ(shell.entries(), "file") << name_of(fault, n);
            if (!met) break;
        }
    }
}

TEST(InjectedFaults, what_is_read_is_whole_or_refused) {
    const Shell shell;
    const std::string bytes(200000, 'x');
    shell.put("file", bytes);
    for (const Fault& fault : fault_table) {
        for (int n = 1; n < 100; ++n) {
            make_fail(fault.call, n, fault.code);
            const FileBytes file = read_file(shell.at("file"));
            const bool met = fault_met();
            make_fail("", 0, 0);
            EXPECT_EQ(file.bytes.value_or(bytes), bytes) << name_of(fault, n);
            EXPECT_EQ(file.bytes.has_value(), file.fault.empty()) << name_of(fault, n);
            EXPECT_TRUE(right(fault, met, !file.bytes)) << name_of(fault, n);
            if (!met) break;
        }
    }
}

const std::string sweep_command = "\"$QUOMC\" --program-folder \"$DATA\" sweep propane --mode 3 ";

// The lines of a shell that let calls fail in the commands behind them; "met" is there when it came to that.
std::string faulty(const std::string& fault) {
    return "export ASAN_OPTIONS=verify_asan_link_order=0 QUOM_FAULT_MET=met QUOM_FAULT='" + fault +
           "' LD_PRELOAD=\"$SHIM\"\n";
}

// A sweep from a file to a file, and from pipe to pipe. What ends well is what ends well without a fault.
TEST(InjectedFaults, quomc_sweeps_whole_or_says_why_not) {
    const Shell shell;
    std::string table = "T;p\n";
    for (int i = 0; i < 3000; ++i) table += std::to_string(250 + i % 200) + ";101.325\n";
    shell.put("in.csv", table);
    ASSERT_EQ(shell.run(sweep_command + "--in in.csv --out whole.csv").status, 0);
    const std::string whole = shell.text("whole.csv");
    for (const char* way : {"--in in.csv --out out.csv", "--in - --out - <in.csv >out.csv"}) {
        const bool to_file = way[5] == 'i';
        for (const Fault& fault : fault_table) {
            bool met = true;
            for (int n = 1; met && n < 100; ++n) {
                shell.put("out.csv", "old");
                std::filesystem::remove(shell.at("met"));
                const ShellRun run =
                    shell.run(faulty(name_of(fault, n)) + "exec " + sweep_command + "--jobs 2 " + way);
                met = std::filesystem::remove(shell.at("met"));
                const std::string out = shell.text("out.csv"),
                                  what = way + (" " + name_of(fault, n)) + "\n" + run.err;
                EXPECT_TRUE(run.status == 0 || run.status == 3) << run.status << what;
                if (run.status == 0) {
                    EXPECT_EQ(out, whole) << what;
                }
                if (run.status == 3) {
                    EXPECT_THAT(run.err, ::testing::HasSubstr("quomc")) << what;
                }
                if (run.status == 3 && to_file) {
                    EXPECT_TRUE(out == "old" || out == whole) << what;
                }
                EXPECT_TRUE(right(fault, met, run.status == 3)) << what;
                EXPECT_EQ(shell.entries(), "in.csv out.csv whole.csv") << what;
            }
            EXPECT_FALSE(met) << "more calls than were tried: " << fault.call;
        }
    }
}

TEST(InjectedFaults, threads_that_do_not_start_are_done_without) {
    const Shell shell;
    std::string table = "T;p\n";
    for (int i = 0; i < 20000; ++i) table += std::to_string(250 + i % 200) + ";101.325\n";
    shell.put("in.csv", table);
    const std::string command = sweep_command + "--jobs 4 --in in.csv --out - ";
    const std::string whole = shell.run(command).out;
    ASSERT_EQ(std::count(whole.begin(), whole.end(), '\n'), 20001);
    for (const int first : {1, 2, 4}) {
        const ShellRun run = shell.run(faulty("thread " + std::to_string(first) + " 11") + command);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, whole) << first;
        EXPECT_TRUE(std::filesystem::remove(shell.at("met"))) << first;
    }
}

// No memory at any place: a sentence and status 3, never a crash. The calls of the sweep itself are among the
// last.
TEST(InjectedFaults, memory_that_does_not_suffice) {
    const Shell shell;
    shell.put("in.csv", "T;p\n300;100\n310;100\n");
    ASSERT_EQ(shell.run(sweep_command + "--in in.csv --out whole.csv").status, 0);
    const std::string whole = shell.text("whole.csv");
    const auto fails_at = [&](int n) {
        shell.put("out.csv", "old");
        const ShellRun run = shell.run(faulty("new " + std::to_string(n) + " 12") + sweep_command +
                                       "--jobs 1 --in in.csv --out out.csv");
        const bool met = std::filesystem::remove(shell.at("met"));
        const std::string out = shell.text("out.csv");
        // A thread that does not start for want of memory is done without.
        EXPECT_TRUE(run.status == 3 ? met : run.status == 0 && out == whole) << n << run.err;
        EXPECT_EQ(run.err.find("memory") != std::string::npos, run.status == 3) << n << run.err;
        EXPECT_TRUE(out == whole || out == "old") << n;
        EXPECT_EQ(shell.entries(), "in.csv out.csv whole.csv") << n;
        return met;
    };
    int n = 1;
    while (fails_at(n)) n += 1 + n / 10;
    for (int step = n / 10; step > 1; step = (step + 1) / 2) n -= fails_at(n - step) ? 0 : step;
    for (int before = 1; before < 200; before += 2) fails_at(n - before);
}

}  // namespace
}  // namespace quom

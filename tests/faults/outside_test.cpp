// What comes from outside while quomc works: devices, closed streams, full disks, signals. The program itself
// is run.
#include <gmock/gmock.h>

#include "faults/shell.h"

namespace quom {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;

// A table of n lines; its output is some ten times as long.
std::string states(int n) {
    std::string table = "T;p\n";
    for (int i = 0; i < n; ++i)
        table += std::to_string(250 + i % 300) + ";" + std::to_string(100 + i % 7) + "\n";
    return table;
}

constexpr const char* sweep = "quomc sweep propane --mode 3 ";

TEST(Outside, faults_are_said_and_leave_the_old_file) {
    const struct {
        const char* script;
        int status;
        const char* said;
    } cases[] = {
        {"$sweep --in in.csv --out /dev/full", 3, "Cannot write \"/dev/full\": No space left on device"},
        {"$sweep --in in.csv --out - >/dev/full", 3,
         "Cannot write the standard output: No space left on device"},
        {"quomc list >/dev/full", 3, "output could not be written"},
        {"quomc list >&-", 3, "output could not be written"},
        {"$sweep --in in.csv --out - >&-", 3, "Cannot write the standard output: Bad file descriptor"},
        {"$sweep --in in.csv --out - | head -n 1 >head; exit ${PIPESTATUS[0]}", 3, "Broken pipe"},
        {"(ulimit -f 64; $sweep --in in.csv --out out.csv)", 3, "\"out.csv\": File too large"},
        {"$sweep --in in.csv --out folder", 3, "\"folder\": Is a directory"},
        {"$sweep --in in.csv --out gone/out.csv", 3, "\"gone/out.csv\": No such file or directory"},
        {"$sweep --in in.csv --out in.csv/out.csv", 3, "\"in.csv/out.csv\": Not a directory"},
        {"$sweep --in in.csv --out loop", 3, "\"loop\": Too many levels of symbolic links"},
        {"$sweep --in folder --out out.csv", 3, "Cannot read \"folder\": Is a directory"},
        {"$sweep --in gone.csv --out out.csv", 3, "Cannot read \"gone.csv\": No such file or directory"},
        {"$sweep --in /proc/self/mem --out out.csv", 3, "\"/proc/self/mem\": Input/output error"},
        {"$sweep --in - --out out.csv </proc/self/mem", 3,
         "Cannot read the standard input: Input/output error"},
        {"$sweep --in - --out out.csv <folder", 3, "Cannot read the standard input: Is a directory"},
        {"$sweep --in - --out out.csv <&-", 3, "Cannot read the standard input: Bad file descriptor"},
        {"quomc find isobutane <&- >found && grep -q 75-28-5 found", 0, ""},
        {"head -c 1048577 /dev/zero >ji; quomc state water --T 300 --p 100 --eos 7 --ji ./ji; code=$?; rm ji;"
         "exit $code",
         3, "it is larger than 1 MB"},
    };
    for (const auto& c : cases) {
        const Shell shell;
        shell.put("in.csv", states(4000));
        shell.put("out.csv", "old");
        shell.run("mkdir folder; ln -s loop loop");
        const ShellRun run = shell.run("sweep='" + std::string(sweep) + "'\n" + c.script);
        EXPECT_EQ(run.status, c.status) << c.script << "\n" << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.said)) << c.script;
        EXPECT_EQ(shell.text("out.csv"), "old") << c.script;
        shell.run("rm -f head found");
        EXPECT_EQ(shell.entries(), "folder in.csv loop out.csv") << c.script;
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(Outside, devices_pipes_and_links_stay_what_they_are) {
    const Shell shell;
    shell.put("in.csv", states(300));
    const std::string table = shell.run(sweep + std::string("--in in.csv --out -")).out;
    ASSERT_EQ(std::count(table.begin(), table.end(), '\n'), 301);
    const struct {
        const char* script;
        const char* result;  // the file that holds the table afterwards
    } cases[] = {
        {"mkfifo pipe; cat pipe >from_pipe & $sweep --in in.csv --out pipe; wait; [ -p pipe ]", "from_pipe"},
        {"$sweep --in in.csv --out /dev/stdout | head -n 301 >from_stdout", "from_stdout"},
        {"$sweep --in in.csv --out /dev/fd/1 >all; head -n 301 all >redirected; grep -q calculations all",
         "redirected"},
        {"echo old >target; ln -s target link; $sweep --in in.csv --out link; [ -L link ]", "target"},
        {"mkdir away; ln -s away/new dangling; $sweep --in in.csv --out dangling; [ -L dangling ]",
         "away/new"},
        {"echo old >private; chmod 600 private; $sweep --in in.csv --out private;"
         "[ $(stat -c %a private) = 600 ]",
         "private"},
        {"cat in.csv | $sweep --in - --out piped", "piped"},
        {"$sweep --in <(cat in.csv) --out substituted", "substituted"},
        {"$sweep --in in.csv --out /dev/null && [ -c /dev/null ] && $sweep --in in.csv --out last", "last"},
    };
    for (const auto& c : cases) {
        const ShellRun run = shell.run("sweep='" + std::string(sweep) + "'\n" + c.script);
        EXPECT_EQ(run.status, 0) << c.script << "\n" << run.err;
        EXPECT_EQ(shell.text(c.result), table) << c.script;
    }
    EXPECT_THAT(shell.entries(), ::testing::Not(HasSubstr(".tmp")));
}

// As a user without rights, also where the tests run as root.
TEST(Outside, folders_that_may_not_be_written) {
    const Shell shell;
    shell.put("in.csv", states(10));
    const ShellRun run = shell.run(R"(
        mkdir closed; echo old >closed/out.csv; chmod 555 closed; chmod 755 . ..
        as_user=''; [ $(id -u) = 0 ] && as_user='setpriv --reuid=65534 --regid=65534 --clear-groups'
        $as_user test -x "$QUOMC" -a -r "$DATA/quom.q07" -a -r in.csv || exit 99
        $as_user "$QUOMC" --program-folder "$DATA" sweep propane --mode 3 --in in.csv --out closed/out.csv)");
    if (run.status == 99) GTEST_SKIP() << "no other user can run the program here";
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.err, HasSubstr("Cannot write \"closed/out.csv\": Permission denied"));
    EXPECT_EQ(shell.run("chmod 755 closed; ls closed; cat closed/out.csv").out, "out.csv\nold\n");
}

// Killed while it waits for more from a pipe, with a part of the output written.
TEST(Outside, signals_leave_no_part_of_a_file) {
    const struct {
        const char* name;
        int number;
    } signals[] = {{"TERM", 15}, {"INT", 2}, {"HUP", 1}};
    for (const auto& signal : signals) {
        const Shell shell;
        shell.put("in.csv", states(100000));
        shell.put("out.csv", "old");
        // With job control (set -m) the interrupt is not ignored in the background.
        const ShellRun run =
            shell.run(std::string("set -m; mkfifo in; \"$QUOMC\" --program-folder \"$DATA\" sweep") +
                      " propane --mode 3 --jobs 2 --in in --out out.csv & exec 3>in; cat in.csv >&3;"
                      "for i in $(seq 200); do [ -s out.csv.tmp* ] && break; sleep 0.05; done;"
                      "ls out.csv.tmp* || exit 98; kill -" +
                      signal.name + " %1; wait %1");
        EXPECT_EQ(run.status, 128 + signal.number) << run.err;
        EXPECT_THAT(run.err, ContainsRegex(std::string("quomc sweep: Ended by SIG") + signal.name +
                                           " after line [1-9][0-9]*; \"out.csv\" was not written."));
        EXPECT_EQ(shell.text("out.csv"), "old");
        EXPECT_EQ(shell.entries(), "in in.csv out.csv");
    }
}

TEST(Outside, a_signal_that_is_ignored_ends_nothing) {
    const Shell shell;
    shell.put("in.csv", states(100));
    const ShellRun run =
        shell.run(std::string("mkfifo in; (trap '' HUP; exec \"$QUOMC\" --program-folder \"$DATA\"") +
                  " sweep propane --mode 3 --in in --out out.csv) & exec 3>in; sleep 0.2;"
                  "kill -HUP $!; cat in.csv >&3; exec 3>&-; wait $! && [ $(wc -l <out.csv) = 101 ]");
    EXPECT_EQ(run.status, 0) << run.err;
}

}  // namespace
}  // namespace quom

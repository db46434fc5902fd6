// A program that is killed while it saves a project: there is always a whole file, the one before or the new
// one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

#include "base/files.h"
#include "session/project_file.h"
#include "substance/substance_support.h"
#include "support/starter_session.h"

namespace quom {
namespace {

// Saves over and over, each time with another comment, after it has said so on the pipe.
[[noreturn]] void save_until_killed(Session& session, const std::string& path, int say) {
    SilentMessages nobody;
    for (int n = 0;; ++n) {
        const AskComment comment = [n](const CommentQuestion&) {
            return std::string(static_cast<std::size_t>(n % 50000), 'c') + std::to_string(n);
        };
        if (!SaveProject(session, path, comment, nobody).success) _exit(1);
        if (n == 0 && ::write(say, "x", 1) != 1) _exit(2);
    }
}

TEST(KilledWhileSaving, two_hundred_times_a_whole_project_stays) {
    const test::Folder folder;
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    const std::string path = folder.path("project.QC6");
    SilentMessages nobody;
    std::mt19937 random(20261122);
    int left_over = 0;
    for (int round = 0; round < 200; ++round) {
        int say[2];
        ASSERT_EQ(::pipe(say), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) save_until_killed(session, path, say[1]);
        ::close(say[1]);
        char started = 0;
        ASSERT_EQ(::read(say[0], &started, 1), 1);
        ::close(say[0]);
        const auto wait = std::chrono::microseconds(std::uniform_int_distribution<int>(0, 4000)(random));
        std::this_thread::sleep_for(wait);
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child could not save: " << WEXITSTATUS(status);

        const ReadProject read = read_project(test::bytes_of(path), "project.QC6");
        ASSERT_TRUE(read.project) << read.fault;
        ASSERT_EQ(read.project->CAS, session.substance().StoffCAS);
        const std::size_t end = read.project->comment.find_first_not_of('c');
        ASSERT_EQ(std::stoul(read.project->comment.substr(end)) % 50000, end);

        const auto entries = std::distance(std::filesystem::directory_iterator(folder.path()), {});
        ASSERT_LE(entries, 2);
        left_over += entries == 2 ? 1 : 0;
    }
    EXPECT_GT(left_over, 0) << "no child was met in the middle of a save";
    // The next save takes away what the last one left.
    ASSERT_TRUE(SaveProject(session, path, {}, nobody).success);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

// Files that only look like left ones stay, and so do those of a writer that lives.
TEST(KilledWhileSaving, files_of_others_stay) {
    const test::Folder folder;
    const std::string path = folder.path("a.QC6");
    const pid_t gone = ::fork();
    if (gone == 0) _exit(0);
    ASSERT_EQ(::waitpid(gone, nullptr, 0), gone);
    const std::string dead = std::to_string(gone), alive = std::to_string(::getppid());
    const std::string removed = folder.write("a.QC6.tmp" + dead + "-0", "half");
    const std::string kept[] = {folder.write("a.QC6.tmp" + alive + "-0", "of another program"),
                                folder.write("a.QC6.tmp" + dead, "no name of ours"),
                                folder.write("a.QC6.tmp" + dead + "-0.txt", "no name of ours"),
                                folder.write("b.QC6.tmp" + dead + "-0", "of another file")};
    ASSERT_EQ(write_file_atomic(path, "whole"), "");
    EXPECT_FALSE(std::filesystem::exists(removed));
    for (const std::string& file : kept) EXPECT_TRUE(std::filesystem::exists(file)) << file;
}

}  // namespace
}  // namespace quom

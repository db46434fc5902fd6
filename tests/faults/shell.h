// Commands of a shell as a user types them, in a folder of their own.
#pragma once
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "support/test_paths.h"

namespace quom {

struct ShellRun {
    int status = -1;
    std::string out, err;
};

// A folder that is removed at its end; in its commands "quomc" runs the program over the starter database.
class Shell {
 public:
    Shell() {
        // Ignored where the tests were started in the background or by nohup, and so by all below.
        for (const int ignored : {SIGHUP, SIGINT, SIGQUIT}) std::signal(ignored, SIG_DFL);
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() /
                  ("quom_faults_" + std::to_string(::getpid()) + "_" + test->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_ / "work");
        const std::string quomc = test::console(), data = test::starter_data();
        put("../prelude", "quomc() { \"" + quomc + "\" --program-folder \"" + data + "\" \"$@\"; }\nQUOMC='" +
                              quomc + "' DATA='" + data + "' SHIM='" + test::fault_shim() + "'\n");
    }
    ~Shell() { std::filesystem::remove_all(folder_); }
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    ShellRun run(const std::string& script) const {
        put("../script", ". ../prelude\n" + script + "\n");
        const std::string folder = folder_.string();
        const int code = std::system(("cd '" + folder + "/work' && bash ../script >../out 2>../err").c_str());
        return {WIFEXITED(code) ? WEXITSTATUS(code) : -1, text("../out"), text("../err")};
    }
    std::string at(const std::string& name) const { return (folder_ / "work" / name).string(); }
    void put(const std::string& name, std::string_view bytes) const {
        std::ofstream(at(name), std::ios::binary) << bytes;
    }
    std::string text(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(at(name), std::ios::binary).rdbuf();
        return bytes.str();
    }
    // Names of all that is in the folder, in order.
    std::string entries() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_ / "work"))
            names.insert(entry.path().filename().string());
        std::string list;
        for (const std::string& name : names) list += (list.empty() ? "" : " ") + name;
        return list;
    }

 private:
    std::filesystem::path folder_;
};

}  // namespace quom

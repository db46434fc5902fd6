// What the tests of substances share: a folder of their own and the golden databases.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "support/test_paths.h"

namespace quom::test {

// An empty folder named after the running test, removed at the end.
class Folder {
 public:
    Folder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = ::testing::TempDir() + "quom_" + info->test_suite_name() + "_" + info->name();
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::string path(const std::string& name = {}) const { return path_ + "/" + name; }
    std::string write(const std::string& name, std::string_view bytes) const {
        EXPECT_EQ(write_file_atomic(path(name), bytes), "");
        return path(name);
    }

 private:
    std::string path_;
};

inline std::string bytes_of(const std::string& path) {
    const FileBytes file = read_file(path);
    EXPECT_TRUE(file.bytes) << file.fault;
    return file.bytes.value_or("");
}

inline std::string golden(const std::string& name) { return test::test_data() + "/data/" + name; }

}  // namespace quom::test

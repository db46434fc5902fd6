#include "session/program_path.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace quom {
namespace {

namespace fs = std::filesystem;

class ProgramFolderTest : public ::testing::Test {
 protected:
    void SetUp() override {
        std::string form = (fs::temp_directory_path() / "quom-places-XXXXXX").string();
        root = ::mkdtemp(form.data());
        for (const char* folder :
             {"option", "home", "bin", "share/quom/help", "build/src/console", "build/data"})
            fs::create_directories(root / folder);
        places.user_data = (root / "user").string();
    }
    void TearDown() override {
        std::error_code fault;
        fs::permissions(root / "bin", fs::perms::owner_all, fault);
        fs::remove_all(root, fault);
    }
    std::string at(const char* name) const { return (root / name).string(); }
    void put(const char* name, const char* text) const { std::ofstream(root / name) << text; }
    std::string text_of(const std::string& path) const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    fs::path root;
    ProgramPlaces places;
};

TEST_F(ProgramFolderTest, each_place_in_its_order) {
    places.installed = {at("share/quom")};
    put("share/quom/quom.q07", "starter");
    EXPECT_EQ(find_program_folder(places).path, at("user/quom"));

    places.executable = at("build/src/console");
    put("build/CMakeCache.txt", "");
    EXPECT_EQ(find_program_folder(places).path, at("user/quom")) << "a build without data is no place";
    put("build/data/quom.q07", "built");
    EXPECT_EQ(find_program_folder(places).path, at("build/data"));

    put("build/src/console/QUOM.Q07", "beside");
    EXPECT_EQ(find_program_folder(places).path, at("build/src/console"));

    places.home = at("home/");
    EXPECT_EQ(find_program_folder(places).path, at("home"));
    places.option = at("option/../option");
    EXPECT_EQ(find_program_folder(places).path, at("option"));
}

TEST_F(ProgramFolderTest, a_named_folder_has_to_exist) {
    places.home = at("nowhere");
    EXPECT_NE(find_program_folder(places).fault.find("QUOM_HOME"), std::string::npos);
    places.option = at("nowhere");
    const ProgramFolder folder = find_program_folder(places);
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.fault.find("--program-folder"), std::string::npos);
    EXPECT_FALSE(fs::exists(root / "nowhere"));
}

TEST_F(ProgramFolderTest, first_start_fills_and_later_ones_leave_alone) {
    places.installed = {at("empty"), at("share/quom")};
    put("share/quom/quom.q07", "starter");
    put("share/quom/SYNOM7.TXT", "END");
    fs::create_directories(root / "user/quom");
    put("user/quom/synom7.txt", "mine");
    ASSERT_EQ(find_program_folder(places).path, at("user/quom"));
    EXPECT_EQ(text_of(at("user/quom/quom.q07")), "starter");
    EXPECT_EQ(text_of(at("user/quom/synom7.txt")), "mine");
    EXPECT_FALSE(fs::exists(root / "user/quom/SYNOM7.TXT"));

    put("user/quom/quom.q07", "edited");
    ASSERT_EQ(find_program_folder(places).fault, "");
    EXPECT_EQ(text_of(at("user/quom/quom.q07")), "edited");
}

TEST_F(ProgramFolderTest, an_installed_program_does_not_write_beside_itself) {
    if (::geteuid() == 0) GTEST_SKIP() << "every folder is writable for the superuser";
    put("bin/quom.q07", "starter");
    fs::permissions(root / "bin", fs::perms::owner_read | fs::perms::owner_exec);
    places.executable = at("bin");
    places.installed = {at("bin")};
    EXPECT_EQ(find_program_folder(places).path, at("user/quom"));
    EXPECT_EQ(text_of(at("user/quom/quom.q07")), "starter");
}

TEST_F(ProgramFolderTest, faults_are_told) {
    places.user_data.clear();
    EXPECT_NE(find_program_folder(places).fault.find("HOME"), std::string::npos);
    put("user", "a file where the folder should be");
    places.user_data = at("user");
    EXPECT_NE(find_program_folder(places).fault.find("user/quom"), std::string::npos);
}

}  // namespace
}  // namespace quom

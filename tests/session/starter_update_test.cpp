// A newer starter database is offered, copied under a new name, and never put in the place of the user's own.
#include "session/starter_update.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "base/files.h"
#include "support/queued_messages.h"
#include "support/test_paths.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

class StarterUpdateTest : public ::testing::Test {
 protected:
    StarterUpdateTest() {
        std::string form = (fs::temp_directory_path() / "quom-update-XXXXXX").string();
        root = ::mkdtemp(form.data());
        fs::create_directories(root / "own");
        fs::create_directories(root / "share");
        places.installed = {(root / "nowhere").string(), (root / "share").string()};
        starter = *read_file(test::starter_data() + "/quom.q07").bytes;
        EXPECT_EQ(database_version(test::starter_data() + "/quom.q07"), starter.substr(0, 10));
    }
    ~StarterUpdateTest() override {
        std::error_code fault;
        fs::remove_all(root, fault);
    }
    // The starter database with another date in its header.
    void put(const char* name, const std::string& date) const {
        std::string bytes = starter;
        bytes.replace(0, 16, date + std::string(16 - date.size(), ' '));
        ASSERT_EQ(write_file_atomic((root / name).string(), bytes), "");
    }
    std::string date_of(const char* name) const {
        return read_file((root / name).string()).bytes.value_or("").substr(0, 10);
    }
    StarterUpdate look() const { return find_starter_update(places, (root / "own").string()); }

    fs::path root;
    ProgramPlaces places;
    std::string starter;
};

TEST_F(StarterUpdateTest, only_a_newer_one_is_offered) {
    put("own/quom.q07", "2026-11-21");
    EXPECT_FALSE(look().offered()) << "nothing is installed";
    for (const auto& [installed, offered] : {std::pair{"2026-11-21", false},
                                             {"2025-12-31", false},
                                             {"2026-12-01", true},
                                             {"9.12.2026", false}}) {
        put("share/quom.q07", installed);
        EXPECT_EQ(look().offered(), offered) << installed;
    }
    put("own/quom.q07", "my own");
    put("share/quom.q07", "2026-12-01");
    EXPECT_FALSE(look().offered()) << "a file without a date is the user's own";
    put("own/quom.q07", "2026-11-21");
    fs::resize_file(root / "share/quom.q07", 5000);
    EXPECT_FALSE(look().offered()) << "cut off";
    fs::remove(root / "own/quom.q07");
    EXPECT_FALSE(look().offered());
}

TEST_F(StarterUpdateTest, the_copy_has_a_new_name_and_the_own_file_stays) {
    put("own/quom.q07", "2026-11-21");
    put("share/quom.q07", "2026-12-01");
    ASSERT_EQ(write_file_atomic((root / "share/SYNOM7.TXT").string(), "END"), "");
    QueuedMessages user;
    user.answers = {Answer::yes};
    offer_starter_update(look(), user);
    const auto told = user.take();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_THAT(told[0].second, ::testing::HasSubstr("2026-12-01, yours is of 2026-11-21"));
    EXPECT_EQ(date_of("own/quom.q07"), "2026-11-21");
    EXPECT_EQ(date_of("own/quom-2026-12-01.q07"), "2026-12-01");
    EXPECT_EQ(date_of("own/SYNOM7-2026-12-01.TXT"), "END");
    EXPECT_TRUE(look().copied);
    offer_starter_update(look(), user);
    EXPECT_TRUE(user.take().empty()) << "the copy is there";
}

TEST_F(StarterUpdateTest, a_no_holds_until_the_next_version) {
    put("own/quom.q07", "2026-11-21");
    put("share/quom.q07", "2026-12-01");
    QueuedMessages user;
    for (const std::size_t asked : {1u, 0u}) {
        user.answers = {Answer::no};
        offer_starter_update(look(), user);
        EXPECT_EQ(user.take().size(), asked);
    }
    EXPECT_FALSE(fs::exists(root / "own/quom-2026-12-01.q07"));
    put("share/quom.q07", "2027-01-15");
    user.answers = {Answer::no};
    offer_starter_update(look(), user);
    EXPECT_EQ(user.take().size(), 1u);
}

}  // namespace
}  // namespace quom

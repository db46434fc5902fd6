#include "base/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <thread>

#include "base/input_file.h"
#include "base/output_file.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

// An own folder for each test, removed at its end.
class Files : public ::testing::Test {
 protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() / ("quom_" + std::to_string(::getpid()) + "_" + test->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "program");
        fs::create_directories(folder_ / "project");
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::string at(const std::string& name) const { return (folder_ / name).string(); }
    std::string put(const std::string& name, std::string_view bytes = "x") const {
        EXPECT_EQ(write_file_atomic(at(name), bytes), "");
        return at(name);
    }
    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(fs::recursive_directory_iterator(folder_), fs::recursive_directory_iterator()));
    }

    fs::path folder_;
};

TEST(Paths, folder_and_name) {
    const struct {
        const char *path, *folder, *name;
    } cases[] = {{"A.Q07", "", "A.Q07"},
                 {"", "", ""},
                 {"/data/A.Q07", "/data/", "A.Q07"},
                 {"C:\\Data\\A.Q07", "C:\\Data\\", "A.Q07"},
                 {"a\\b/c", "a\\b/", "c"},
                 {"folder/", "folder/", ""}};
    for (const auto& c : cases) {
        EXPECT_EQ(folder_part(c.path), c.folder);
        EXPECT_EQ(name_part(c.path), c.name);
        EXPECT_EQ(join_path(folder_part(c.path), name_part(c.path)), c.path);
    }
    EXPECT_EQ(join_path("/data", "A"), "/data/A");
}

TEST_F(Files, paths_of_users_and_stored_files) {
    const std::string database = put("program/Quom.Q07");
    const std::string exact = put("program/quom.baq");
    const std::string other = put("program/Quom.BAQ");
    const std::string data = put("project/Exp1.BAQ");
    const std::string both = put("project/quom.q07");
    const std::string program = at("program"), project = at("project/p.QC6");
    const struct {
        std::string path, beside, found;
    } cases[] = {
        {"QUOM.q07", "", database},
        {"Quom.Q07", project, database},  // a bare name belongs to the program folder
        {"quom.baq", "", exact},
        {"Quom.BAQ", "", other},
        {"QUOM.BAQ", "", other},  // no exact match: the first by name
        {"EXP1.baq", project, data},
        {at("project/EXP1.BAQ"), "", data},
        {"C:\\Daten\\Exp1.baq", project, data},
        {"C:\\Daten\\quom.Q07", project, both},  // beside the project first
        {"C:\\Daten\\quom.Q07", "", database},
        {"/gone/quom.Q07", "", database},
        {at("project") + "\\exp1.baq", "", data},
        // nothing there: where it would be written
        {"NEW.LST", project, program + "/NEW.LST"},
        {"C:\\Daten\\NEW.LST", project, program + "/NEW.LST"},
        {"/gone/NEW.LST", project, "/gone/NEW.LST"},
        {at("project") + "\\NEW.LST", "", at("project/NEW.LST")},
        {"", project, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(resolve_path(c.path, program, c.beside), c.found) << c.path;

    EXPECT_TRUE(FileExists("quom.Q07", program));
    EXPECT_TRUE(FileExists(data, program));
    EXPECT_FALSE(FileExists("", program));
    EXPECT_FALSE(FileExists("none.Q07", program));
    EXPECT_FALSE(FileExists(at("project"), program));  // a folder
    EXPECT_FALSE(FileExists("none.Q07", at("no such folder")));
}

TEST_F(Files, writing_replaces_whole_or_not_at_all) {
    const std::string path = put("a.txt", "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(path, at("link.txt"));
    std::string bytes(300000, 'n');
    bytes[1000] = '\0';
    EXPECT_EQ(write_file_atomic(at("link.txt"), bytes), "");
    EXPECT_EQ(read_file(path).bytes, bytes);
    EXPECT_TRUE(fs::is_symlink(at("link.txt")));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(write_file_atomic(path, ""), "");
    EXPECT_EQ(read_file(path).bytes, "");

    const std::size_t before = entries();
    fs::create_directory(at("folder"));
    put("folder/inside", "kept");
    EXPECT_NE(write_file_atomic(at("folder"), "new").find("folder"), std::string::npos);
    EXPECT_NE(write_file_atomic(at("missing/a.txt"), "new"), "");
    EXPECT_EQ(read_file(at("folder/inside")).bytes, "kept");
    EXPECT_EQ(entries(), before + 2);  // no temporary file is left
}

// A disk that is full in the middle of the writing, played by the limit of the process on file sizes.
TEST_F(Files, a_failed_writing_leaves_the_old_file) {
    const std::string path = put("a.txt", "old");
    const auto write_with_limit = [&] {
        ::signal(SIGXFSZ, SIG_IGN);
        struct rlimit limit {};
        limit.rlim_cur = limit.rlim_max = 4096;
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const std::string fault = write_file_atomic(path, std::string(100000, 'n'));
        ::_exit(fault.find("a.txt") == std::string::npos ? 1 : 0);
    };
    EXPECT_EXIT(write_with_limit(), ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(read_file(path).bytes, "old");
    EXPECT_EQ(entries(), 3u);
}

TEST_F(Files, reading_tells_what_is_wrong) {
    const FileBytes none = read_file(at("none.txt"));
    EXPECT_FALSE(none.bytes);
    EXPECT_NE(none.fault.find("none.txt"), std::string::npos);
    EXPECT_FALSE(read_file(at("program")).bytes);
    EXPECT_FALSE(read_file("/dev/zero").bytes);
}

TEST_F(Files, random_access_by_several_threads) {
    std::string bytes;
    for (int i = 0; i < 100000; ++i) bytes += static_cast<char>(i % 251);
    const RandomFile file = RandomFile::open(put("r.bin", bytes));
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.size(), bytes.size());
    std::array<int, 4> wrong{};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        threads.emplace_back([&, t, copy = file] {
            std::array<char, 128> record;
            for (std::size_t n = t; n + 1 <= bytes.size() / 128; n += 4) {
                const bool good = copy.read_at(n * 128, record);
                if (!good || bytes.compare(n * 128, 128, record.data(), 128) != 0) ++wrong[t];
            }
        });
    }
    for (std::thread& t : threads) t.join();
    EXPECT_EQ(wrong, (std::array<int, 4>{}));

    std::array<char, 128> record;
    EXPECT_FALSE(file.read_at(bytes.size() - 127, record));
    EXPECT_FALSE(file.read_at(~std::uint64_t{0}, record));
    EXPECT_TRUE(file.read_at(bytes.size(), {}));
    EXPECT_FALSE(RandomFile::open(at("none.bin")).is_open());
    EXPECT_FALSE(RandomFile::open(at("program")).is_open());
}

TEST(Lines, ends_of_both_systems) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(split_lines(""), Lines{});
    EXPECT_EQ(split_lines("a\r\nb\n\nc"), (Lines{"a", "b", "", "c"}));
    EXPECT_EQ(split_lines("a\r\n"), (Lines{"a"}));
    EXPECT_EQ(split_lines("\n"), (Lines{""}));
}

TEST(FieldReader, text_fields) {
    FieldReader in("  one , \"two, 2\" x, ,\"open\r\n\"\",last \r\nend");
    const struct {
        int line;
        const char* text;
    } fields[] = {{1, "one"}, {1, "two, 2"}, {1, ""}, {1, "open"}, {2, ""}, {2, "last"}, {3, "end"}};
    for (const auto& f : fields) {
        EXPECT_EQ(in.line(), f.line);
        EXPECT_EQ(in.text_field(), f.text);
    }
    EXPECT_TRUE(in.at_end());
    EXPECT_FALSE(in.text_field());
    EXPECT_FALSE(in.number_field());
    EXPECT_FALSE(in.whole_line());
}

TEST(FieldReader, numbers_in_every_form) {
    FieldReader in(" .38 ,0.38,-1E-37\r\n 1D+5 ,True,#FALSE#\n#true#,-1,\"2.5\"\r\n 300 ");
    for (const double x : {0.38, 0.38, -1e-37, 1e5, -1.0, 0.0, -1.0, -1.0, 2.5, 300.0}) {
        EXPECT_EQ(in.number_field(), x);
    }
    EXPECT_TRUE(in.at_end());

    FieldReader bad("300 K,,(Error),1E999\n5");
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(bad.number_field());
    EXPECT_EQ(bad.line(), 2);
    EXPECT_EQ(bad.number_field(), 5.0);
}

TEST(FieldReader, whole_lines_keep_commas) {
    FieldReader in("a, \"b\", c\r\n\n1, rest, of it\nlast");
    EXPECT_EQ(in.whole_line(), "a, \"b\", c");
    EXPECT_EQ(in.whole_line(), "");
    EXPECT_EQ(in.number_field(), 1.0);
    EXPECT_EQ(in.whole_line(), " rest, of it");
    EXPECT_EQ(in.line(), 4);
    EXPECT_EQ(in.whole_line(), "last");
    EXPECT_TRUE(in.at_end());
}

TEST_F(Files, written_piece_by_piece) {
    const std::string path = put("table.csv", "old");
    {
        OutputFile left = OutputFile::open(path);
        EXPECT_TRUE(left.write("half"));
    }
    EXPECT_EQ(read_file(path).bytes, "old");
    const std::size_t before = entries();
    OutputFile one = OutputFile::open(path), two = OutputFile::open(path);
    EXPECT_EQ(entries(), before + 2);
    EXPECT_TRUE(one.write("1") && two.write("2") && one.write("1") && one.finish());
    EXPECT_EQ(read_file(path).bytes, "11");
    two = OutputFile();  // given up
    EXPECT_EQ(entries(), before);

    remove_unfinished_files();
    EXPECT_EQ(read_file(path).bytes, "11");
    OutputFile ended = OutputFile::open(path);
    remove_unfinished_files();
    EXPECT_EQ(entries(), before);
    EXPECT_TRUE(ended.write("3"));
    EXPECT_FALSE(ended.finish());
    EXPECT_FALSE(ended.write("3"));
    EXPECT_EQ(read_file(path).bytes, "11");
}

// Bytes are handed on when they are there; an error is no end.
TEST_F(Files, read_as_they_come) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    DescriptorBuffer buffer(ends[0]);
    std::istream stream(&buffer);
    InputFile piped = InputFile::of_stream(stream);
    std::array<char, 100> bytes{};
    for (const std::string text : {"abc", "de"}) {
        ASSERT_TRUE(write_all(ends[1], text));
        ASSERT_EQ(piped.read(bytes.data(), bytes.size()), static_cast<std::ptrdiff_t>(text.size()));
        EXPECT_EQ(std::string(bytes.data(), text.size()), text);
    }
    ASSERT_TRUE(write_all(ends[1], "fg"));
    EXPECT_EQ(piped.read(bytes.data(), 1), 1);
    EXPECT_EQ(piped.read(bytes.data(), bytes.size()), 1);
    ::close(ends[1]);
    EXPECT_EQ(piped.read(bytes.data(), bytes.size()), 0);
    EXPECT_EQ(piped.fault(), "");
    ::close(ends[0]);
    EXPECT_EQ(piped.read(bytes.data(), bytes.size()), -1);
    EXPECT_EQ(piped.fault(), "Cannot read the standard input: Bad file descriptor");

    EXPECT_EQ(InputFile::open(at("program")).fault(),
              "Cannot read \"" + at("program") + "\": Is a directory");
    std::istringstream bad("x");
    bad.setstate(std::ios::badbit);
    EXPECT_EQ(InputFile::of_stream(bad).read(bytes.data(), 1), -1);
    put("large", std::string(11, 'x'));
    EXPECT_EQ(read_file(at("large"), 10).fault,
              "Cannot read \"" + at("large") + "\": it is larger than 10 bytes");
    EXPECT_EQ(read_file(at("large"), 11).bytes, std::string(11, 'x'));
}

}  // namespace
}  // namespace quom

// quomc data: files read, converted and joined on the disk.
#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "base/files.h"
#include "console/quomc_run.h"

namespace quom {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class DataCommand : public ::testing::Test {
 protected:
    DataCommand() {
        std::string form = (fs::temp_directory_path() / "quomc-data-XXXXXX").string();
        folder = ::mkdtemp(form.data());
        for (const char* name : {"acetone.BAQ", "points.XY", "measured.LRG"})
            fs::copy_file(fs::path(test::test_data()) / "data" / name, folder / name);
    }
    ~DataCommand() override {
        std::error_code fault;
        fs::remove_all(folder, fault);
    }
    // A call in which "@" stands for the folder.
    CommandRun call(std::string line) const {
        for (std::size_t at = 0; (at = line.find('@')) != std::string::npos;)
            line.replace(at, 1, folder.string() + "/");
        return quomc("data " + line);
    }
    std::string bytes_of(const char* name) const {
        return read_file((folder / name).string()).bytes.value_or("(no file)");
    }
    void put(const char* name, const std::string& bytes) const {
        EXPECT_EQ(write_file_atomic((folder / name).string(), bytes), "");
    }
    fs::path folder;
};

TEST_F(DataCommand, info) {
    const nlohmann::json set = call("@acetone.BAQ --info --json").json();
    EXPECT_EQ(set["data"]["comment"], "Vapor pressures 20 °C – 100 °C, Müller");
    EXPECT_EQ(set["data"]["CAS"], "67-64-1");
    EXPECT_GT(set["data"]["index"], 0);
    EXPECT_EQ(set["data"]["points"], 3);
    EXPECT_EQ(set["data"]["values_per_point"], 6);
    EXPECT_EQ(row(set["columns"], "column", "T")["low"], 0.38);
    EXPECT_EQ(row(set["columns"], "column", "T")["high"], 329.44);
    EXPECT_EQ(row(set["columns"], "column", "rhoV")["count"], 2) << "0 is no value";
    const nlohmann::json points = call("@measured.LRG --info --json").json();
    EXPECT_EQ(points["data"]["kind"], "XY");
    EXPECT_EQ(points["data"]["delimiter"], "tab");
    EXPECT_EQ(row(points["columns"], "column", "x")["low"], -3);
    EXPECT_THAT(call("@acetone.BAQ --info").out, HasSubstr("Acetone"));

    put("early.BAQ", "d\r\nc\r\n1-1-1;?\r\n2\r\n1,2,3,4,5,6,7,8,9,10,11\r\n");
    const std::string notes = call("@early.BAQ --info --json").json()["notes"].dump();
    EXPECT_THAT(notes, HasSubstr("1 value missing"));
    EXPECT_THAT(notes, HasSubstr("not in the database"));
}

TEST_F(DataCommand, converted) {
    EXPECT_EQ(call("@acetone.BAQ --convert @copy.baq").status, 0);
    EXPECT_EQ(bytes_of("copy.baq"), bytes_of("acetone.BAQ"));
    EXPECT_EQ(call("@acetone.BAQ --convert @a.csv").status, 0);
    EXPECT_EQ(bytes_of("a.csv"),
              "T/K;p/kPa;rho(V)/(kg/m^3);rho(L)/(kg/m^3);delta(LV)h/(kJ/kmol);cp/(kJ/(kmol K))\r\n"
              "293.15;24.7;0.59;790.5;31300;125.4\r\n329.44;101.325;0;0;29100;0\r\n"
              "0.38;1E+15;1.5E-07;0.0000001;1.234568E+07;-1.25\r\n");
    EXPECT_EQ(call("@acetone.BAQ --convert @a.XY --y HLV").status, 0);
    EXPECT_THAT(bytes_of("a.XY"), HasSubstr("ller\r\n2.9315000E+02;3.1300000E+04;0.0000000E+00\r\n"));
    EXPECT_EQ(call("@measured.LRG --convert @m.XY").status, 0);
    EXPECT_THAT(bytes_of("m.XY"), HasSubstr("\r\n1.5000000E+00;2.5000000E+00\r\n"));
    EXPECT_EQ(call("@points.XY --convert @p.csv").status, 0);
    EXPECT_THAT(bytes_of("p.csv"), HasSubstr("x;y\r\n123.4568;-0.5\r\n0;1E+10\r\n"));
    put("T.XY", "c\r\n300,1;24,7\r\n");
    EXPECT_EQ(call("@T.XY --convert @T.BAQ --y p").status, 0);
    EXPECT_THAT(bytes_of("T.BAQ"), HasSubstr("\r\n1\r\n300.1\r\n24.7\r\n0\r\n0\r\n0\r\n0\r\n"));
    EXPECT_EQ(call("@T.XY --convert @none.BAQ").status, 2);
    EXPECT_EQ(call("@measured.LRG --convert @none.BAQ --y p").status, 1) << "a negative T";
    EXPECT_EQ(call("@T.XY --convert @none.txt").status, 2);
    EXPECT_EQ(call("@T.XY --convert @no/such/folder.csv").status, 3);
    EXPECT_FALSE(fs::exists(folder / "none.BAQ"));
}

TEST_F(DataCommand, joined) {
    EXPECT_EQ(call("@acetone.BAQ --join @acetone.BAQ --out @two.BAQ").status, 0);
    const std::string one = bytes_of("acetone.BAQ");
    const std::size_t values = one.find("\r\n3\r\n") + 5;
    EXPECT_EQ(bytes_of("two.BAQ"),
              one.substr(0, values - 3) + "6\r\n" + one.substr(values) + one.substr(values));
    EXPECT_EQ(call("@points.XY --join @measured.LRG --out @all.XY").status, 0);
    EXPECT_EQ(split_lines(bytes_of("all.XY")).size(), 7u);

    put("other.BAQ", "d\r\nc\r\n1-1-1;?\r\n1\r\n300\r\n");
    const CommandRun refused = call("@acetone.BAQ --join @other.BAQ --out @x.BAQ");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("different substances"));
    EXPECT_FALSE(fs::exists(folder / "x.BAQ"));
    EXPECT_EQ(call("@acetone.BAQ --join @other.BAQ --out @x.BAQ --answer yes").status, 0);
    EXPECT_EQ(call("@acetone.BAQ --join @points.XY --out @y.BAQ").status, 2);
}

TEST_F(DataCommand, refused) {
    put("bad.BAQ", "d\r\nc\r\n67-64-1;A\r\n30000\r\n300\r\n");
    for (const auto& [line, status, why] :
         {std::tuple{"@acetone.BAQ", 2, "One of --info"},
          {"@acetone.BAQ --info --convert @x.csv", 2, "One of --info"},
          {"@acetone.BAQ --join @acetone.BAQ", 2, "belong together"},
          {"@acetone.BAQ --info --y p", 2, "--y belongs"},
          {"@acetone.BAQ --convert @x.XY --y T", 2, "is no column"},
          {"@nowhere.BAQ --info", 3, "No such file"},
          {"@nowhere.txt --info", 2, "is no data file"},
          {"@bad.BAQ --info", 3, "line 4: the file promises 30000 points"}}) {
        const CommandRun run = call(line);
        EXPECT_EQ(run.status, status) << line;
        EXPECT_THAT(run.err, HasSubstr(why)) << line;
    }
}

}  // namespace
}  // namespace quom

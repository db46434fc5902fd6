// The calculation record: its bytes, what drops out, its name, and its way from "Write" to the clipboard.
#include "report/record_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/files.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

RecordRow row(std::initializer_list<std::pair<int, float>> slots) {
    RecordRow r{};
    for (const auto& [slot, x] : slots) r[static_cast<std::size_t>(slot)] = x;
    return r;
}

const std::vector<RecordRow> two_rows = {
    row({{slot_T, 300}, {slot_p, 505.25F}, {slot_vV, 0.5F}, {slot_eUV, -88.125F}, {slot_hL, 7}}),
    row({{slot_T, 310}, {slot_p, 505.25F}, {slot_vV, 12345678}, {slot_hL, -7}})};

// h(L) is +7 and -7: its column drops out with its values.
TEST(RecordFile, golden_bytes) {
    const RecordHead head{
        .date = "2026-11-22", .substance = "\xC3\x96l", .model = "CEOS Soave (GLOBAL concept)"};
    EXPECT_EQ(record_bytes(head, two_rows),
              "QUOM-6: p-V-T Calculations of States and Processes - record from 2026-11-22\r\n"
              "\xD6l\r\n"
              "CEOS Soave (GLOBAL concept)\r\n"
              "units: [T] = K   [p] = kPa   [B] = m^3/kmol    [v] = m^3/kmol \r\n"
              "molar SI-units for function z: [z] = kJ/kmol or kJ/(kmol K)\r\n"
              "\r\n"
              "T;p;v(V); eU(V);\r\n"
              "300;505.25;0.5;-88.125;\r\n"
              "310;505.25;1.234568E+07;0;\r\n");
}

TEST(RecordFile, units_separator_and_decimal_sign) {
    RecordHead head{.separator = '\t', .decimal_comma = true};
    const auto bytes = [&head](int energy, int volume) {
        head.units = {.EnergyMode = energy, .VolumeMode = volume};
        return record_bytes(head, two_rows);
    };
    EXPECT_THAT(bytes(3, 1),
                HasSubstr("m^3/kmol    [v] = m^3/kg\r\nspecific SI-units for function z: [z] = "
                          "kJ/kg or kJ/(kg K)\r\n\r\nT\tp\tv(V)\t eU(V)\t\r\n300\t505,25\t0,5\t"));
    for (const int energy : {1, 2})
        EXPECT_THAT(bytes(energy, 2), HasSubstr("m^3/kmol    [v(red)] = 1\r\n\r\nT\t"));
    EXPECT_FALSE(comma_warning(';', true) || comma_warning(',', false));
    EXPECT_EQ(comma_warning(',', true)->title, "Warning delimiter");
    EXPECT_EQ(record_clipboard_text("a;\xF6;\r\n1;2;\r\n", ';'), "a\t\xC3\xB6\t\n1\t2\t\n");
}

class Record : public ::testing::Test {
 protected:
    Record() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        session = sample::propane();
        session.ProgramPath = folder;
        session.record.ProtocolFile = NewProtocolName(folder, date);
    }
    ~Record() override { std::filesystem::remove_all(folder); }
    void write(double T, double p) {
        change(session, [&](Document& d) {
            d.calc.CalcMode = Mode::T_p;
            d.exp.points.edit()[0] = {.T = T, .p = p};
        });
        AppendProtocolRow(session, calculate(session, 0), messages);
    }
    static std::string bytes(const std::string& path) { return read_file(path).bytes.value_or("none"); }
    void touch(const std::string& name, const char* text = "x") {
        std::ofstream(folder + "/" + name) << text;
    }

    const std::string folder = (std::filesystem::temp_directory_path() / "quom_record_test").string();
    const std::string date = "2026-11-22";
    Session session;
    QueuedMessages messages;
};

TEST_F(Record, names_count_on) {
    EXPECT_EQ(session.record.ProtocolFile, "26112201.CSV");
    for (int i = 1; i <= 99; ++i)
        touch("261122" + std::string(i < 10 ? "0" : "") + std::to_string(i) + ".csv");
    EXPECT_EQ(NewProtocolName(folder, date), "261122100.CSV");
    EXPECT_EQ(NewProtocolName(folder, "2026-11-23"), "26112301.CSV");
    for (int i = 100; i <= 999; ++i) touch("261122" + std::to_string(i) + ".CSV");
    EXPECT_EQ(NewProtocolName(folder, date), "261122999.CSV") << "the last one is taken again";
}

TEST_F(Record, from_the_first_row_to_the_clipboard) {
    write(300, 500);
    write(310, 500);
    EXPECT_TRUE(session.record.ProtocolOpen);
    EXPECT_FALSE(std::filesystem::exists(folder + "/26112201.CSV")) << "rows wait until the file is closed";
    const ClosedProtocol closed = CloseProtocol(session, date);
    EXPECT_EQ(closed.path, folder + "/26112201.CSV");
    const std::string file = bytes(closed.path);
    // Slots of a vapor state of mode 3: T, p, the V-phase and its speed of sound.
    EXPECT_THAT(file,
                HasSubstr("\r\nT;p;v(V);h(V);s(V);g(V);u(V);a(V);eH(V); eU(V);cp(V);cV(V);sound speed(V);"
                          "\r\n300;500;4.56"));
    EXPECT_THAT(split_lines(file), SizeIs(9));
    EXPECT_THAT(closed.clipboard, HasSubstr("T\tp\tv(V)\th(V)"));
    EXPECT_EQ(session.record.ProtocolFile, "26112202.CSV");
    EXPECT_FALSE(session.record.ProtocolOpen);
    EXPECT_THAT(session.record.ProtocolTable, IsEmpty());
    // Nothing is written without rows; the clipboard has nothing then.
    EXPECT_EQ(CloseProtocol(session, date).path, "");
    EXPECT_FALSE(std::filesystem::exists(folder + "/26112202.CSV"));
}

TEST_F(Record, a_name_taken_meanwhile_is_not_written_over_and_an_empty_file_goes) {
    write(300, 500);
    touch("26112201.CSV", "of another program");
    EXPECT_EQ(CloseProtocol(session, date).path, folder + "/26112202.CSV");
    EXPECT_EQ(bytes(folder + "/26112201.CSV"), "of another program");
    touch(session.record.ProtocolFile, "");
    EXPECT_EQ(CloseProtocol(session, date).path, "");
    EXPECT_FALSE(std::filesystem::exists(folder + "/26112203.CSV"));
}

TEST_F(Record, rows_are_kept_where_the_file_cannot_be_written) {
    write(300, 500);
    session.ProgramPath = folder + "/not there";
    EXPECT_THAT(CloseProtocol(session, date).fault, HasSubstr("26112201.CSV"));
    EXPECT_TRUE(session.record.ProtocolOpen);
    EXPECT_THAT(session.record.ProtocolTable, SizeIs(1));
    session.ProgramPath = folder;
    EXPECT_EQ(CloseProtocol(session, date).fault, "");
}

TEST_F(Record, a_comma_for_both_warns_and_goes_on) {
    change(session, [](Document& d) {
        d.options.SepCSV = ',';
        d.options.DezimalKomma = true;
    });
    write(300, 500);
    EXPECT_THAT(messages.take(), SizeIs(1));
    EXPECT_THAT(session.record.ProtocolTable, SizeIs(1));
    EXPECT_THAT(CloseProtocol(session, date).clipboard, HasSubstr("300\t500\t4\t56"));
}

// Which slots each mode fills.
TEST_F(Record, heads_of_each_mode) {
    const std::string V = "v(V);h(V);s(V);g(V);u(V);a(V);eH(V); eU(V);cp(V);cV(V);",
                      L = "v(L);h(L);s(L);g(L);u(L);a(L);eH(L);eU(L);cp(L);cV(L);",
                      hLV = "delta(LV)h;delta(LV)s;";
    const struct {
        int mode;
        TpRhoPoint point;
        std::string head;
    } cases[] = {
        {1, {.T = 300, .rhoV = 9.5F}, "T;p;rho(global);v(global);" + V + "sound speed(V);"},
        {2, {.T = 300, .rhoL = 515}, "T;p;rho(L);" + L + "sound speed(L);"},
        {3, {.T = 300, .p = 2000}, "T;p;" + L + "sound speed(L);"},
        {4, {.T = 300}, "T;p;" + V + L + hLV + "sound speed(L);sound speed(V);"},
        {5, {.p = 1000}, "T;p;" + V + L + hLV + "sound speed(L);sound speed(V);"},
        {6, {.T = 300}, "T;p;" + hLV},
        {7, {.p = 1000}, "T;p;" + hLV},
        {8, {.T = 300, .p = 500}, "T;p;" + V + "sound speed(V);"},
        {13, {.p = 500, .rhoV = 9.5F}, "T;p;rho(global);v(global);" + V + "sound speed(V);"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        change(session, [&c](Document& d) {
            d.calc.CalcMode = mode_of(c.mode);
            d.exp.points.edit()[0] = c.point;
        });
        const Outcome& outcome = calculate(session, 0);
        ASSERT_TRUE(outcome.has_result());
        const std::vector<RecordRow> rows = {record_row(session, outcome)};
        const std::string text = record_bytes(record_head(session, date), rows);
        EXPECT_EQ(split_lines(text).at(6), c.head);
    }
}

}  // namespace
}  // namespace quom

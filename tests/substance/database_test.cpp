#include "substance/database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "substance_support.h"

namespace quom {
namespace {

using test::bytes_of;
using test::Folder;
using test::golden;
using ::testing::HasSubstr;

DatabaseFile loaded(int kind, bool Englisch = true) {
    OpenedDatabase opened =
        open_database(kind, golden(kind == 7 ? "two_substances.q07" : "two_substances.q06"), Englisch);
    EXPECT_EQ(opened.err, 0) << opened.fault;
    return opened.file;
}

TEST(Database, tables) {
    for (const int kind : {6, 7}) {
        const DatabaseFile file = loaded(kind);
        ASSERT_EQ(file.StoffAnzahl(), 2);
        EXPECT_EQ(file.DatabaseKind, kind);
        EXPECT_EQ(file.rows[0].SubstanceName,
                  "Ramp  substance;other");  // NUL bytes are blanks, outer ones go
        EXPECT_EQ(file.rows[0].SubstanceFormula, " C1234567890");
        EXPECT_EQ(file.rows[0].SubstanceNo, -7);
        EXPECT_EQ(file.rows[1].SubstanceCAS, "64-17-5");
        EXPECT_EQ(file.rows[1].SubstanceName, "Ethanol; Ethyl alcohol");
        EXPECT_EQ(loaded(kind, false).rows[1].SubstanceName, "Ethanol; Äthanol; Weingeist");
        EXPECT_EQ(FindSystemNo(file, 64), 2);
        EXPECT_EQ(FindSystemNo(file, 65), 0);
        EXPECT_EQ(FindCAS(file, "64-17-5  "), 2);
        EXPECT_EQ(FindCAS(file, " 64-17-5"), 0);
        EXPECT_EQ(FindCAS(file, ""), 0);
    }
}

// Every refusal has a sentence.
TEST(Database, refusals) {
    const std::string good = bytes_of(golden("two_substances.q07"));
    const auto with_count = [&](std::int16_t count) {
        std::string bytes = good;
        set_record_i16(bytes, record_layout(7)->SystemNo, count);
        return bytes;
    };
    std::string many = with_count(-32768);  // as the 16 bits of 32768 read
    many.resize(32769 * record_layout(7)->length, ' ');
    struct Case {
        std::string bytes;
        int kind;
        const char* reason;
    };
    const Case cases[] = {
        {with_count(0), 7, "its header counts 0"},
        {with_count(-3), 7, "its header counts -3"},
        {with_count(3), 7,
         "is cut off: its header counts 3 substances, which take 3800 bytes, the file has 2850"},
        {good.substr(0, 2849), 7, "is cut off"},
        {good.substr(0, 300), 7, "a record takes 950 bytes, the file has 300 bytes"},
        {"", 7, "the file has 0 bytes"},
        {many, 7, "has 32768 records of substances: a database *.Q07 ends at 32767"},
        {bytes_of(golden("two_substances.q06")), 7, "Its length fits a database *.Q06."},
        {good, 6, "Its length fits a database *.Q07."},
        {good, 8, "kind 6 (*.Q06) or 7 (*.Q07), not 8"},
    };
    const Folder folder;
    for (const Case& c : cases) {
        const OpenedDatabase opened = open_database(c.kind, folder.write("broken.q07", c.bytes), true);
        EXPECT_EQ(opened.err, -1) << c.reason;
        EXPECT_THAT(opened.fault, HasSubstr(c.reason));
        EXPECT_EQ(opened.file.StoffAnzahl(), 0);
    }
    EXPECT_THAT(open_database(7, folder.path("absent.q07"), true).fault, HasSubstr("absent.q07"));
}

TEST(Database, what_lies_behind_the_counted_records_is_no_part_of_the_list) {
    const Folder folder;
    const std::string good = bytes_of(golden("two_substances.q07"));
    for (const std::string& more : {std::string(950, 'x'), std::string("\x1a"), std::string(300, ' ')}) {
        const OpenedDatabase opened = open_database(7, folder.write("More.Q07", good + more), true);
        EXPECT_EQ(opened.fault, "") << more.size();
        EXPECT_EQ(opened.file.StoffAnzahl(), 2) << more.size();
        EXPECT_EQ(opened.file.PathQ07, opened.file.path);
    }
}

TEST(Database, unpacks_a_substance_or_nothing) {
    const DatabaseFile file = loaded(7);
    const UnpackedRecord ethanol = unpack_substance(file, 2, true);
    EXPECT_EQ(ethanol.err, 0);
    EXPECT_EQ(ethanol.constants.StoffName, "Ethanol");
    EXPECT_EQ(ethanol.EVPTag, "WAG");
    EXPECT_EQ(unpack_substance(file, 2, false).constants.StoffCAS, "64-17-5");
    EXPECT_EQ(unpack_substance(file, 1, true).constants.StoffFormulaCompact, "C1234567890");
    EXPECT_EQ(unpack_substance(file, 1, true).constants.Tcr, 106);
    for (const int none : {0, -1, 3}) {
        const UnpackedRecord nothing = unpack_substance(file, none, true);
        EXPECT_EQ(nothing.err, -1);
        EXPECT_FALSE(nothing.readable);
        EXPECT_EQ(nothing.EVPTag, "<> ");
        EXPECT_EQ(nothing.constants, SubstanceConstants{});
    }
}

// A file that shrinks while it is open.
TEST(Database, a_record_that_cannot_be_read_gives_no_numbers) {
    const Folder folder;
    const std::string path = folder.write("shrinks.q07", bytes_of(golden("two_substances.q07")));
    const DatabaseFile file = open_database(7, path, true).file;
    EXPECT_TRUE(unpack_substance(file, 2, true).readable);
    std::filesystem::resize_file(path, 2000);
    EXPECT_TRUE(unpack_substance(file, 1, true).readable);
    EXPECT_FALSE(unpack_substance(file, 2, true).readable);
    EXPECT_EQ(read_substance_head(file, 2).CASRN, "");
}

TEST(Database, private_file) {
    for (const int kind : {6, 7}) {
        const Folder folder;
        const RecordLayout& layout = *record_layout(kind);
        const DatabaseFile file = loaded(kind);
        SubstanceConstants c = unpack_substance(file, 1, true).constants;
        c.StoffName = "Changed €Ω";
        c.Tcr = 500.5;
        c.RhoLTLo = 77;
        c.ptr = 1;  // not written, and neither is S0abs
        c.S0abs = 1;
        const WriteResult written = WriteDataBaseQ07(
            file, 1, c,
            {.kind = kind, .path = "Private.Q07", .ProgramPath = folder.path(), .date = "21.11.2026"});
        EXPECT_EQ(written.fault, "");
        EXPECT_EQ(written.replaced, 1u);

        const std::string bytes = bytes_of(folder.path("Private.Q07"));
        ASSERT_EQ(bytes.size(), 2 * layout.length);
        const std::string source = bytes_of(file.path).substr(layout.length, layout.length);
        std::string header = source;  // the header keeps the rest of the record
        std::string data = source;
        set_record_text(header, layout.Formula, "21.11.2026");
        set_record_text(header, layout.NameE, "");
        set_record_text(header, layout.NameD, "");
        set_record_i16(header, layout.SystemNo, 1);
        EXPECT_EQ(bytes.substr(0, layout.length), header);
        set_record_text(data, layout.Formula, " C1234567890");  // stays cut
        data.replace(layout.NameE.offset, layout.NameE.width, "Changed \x80?");
        data.insert(layout.NameE.offset + 10, layout.NameE.width - 10, ' ');
        set_record_cell(data, layout, 6, 500.5f);
        set_record_cell(data, layout, 21, 77.0f);
        if (kind == 7) set_record_i16(data, layout.SystemNo, 1);
        EXPECT_EQ(bytes.substr(layout.length), data);

        const OpenedDatabase again = open_database(kind, folder.path("Private.Q07"), true);
        EXPECT_EQ(again.fault, "");
        EXPECT_EQ(unpack_substance(again.file, 1, true).constants.Tcr, 500.5);
        EXPECT_EQ(again.file.rows[0].SubstanceNo, kind == 7 ? 1 : -7);
    }
}

TEST(Database, private_file_is_refused) {
    const Folder folder;
    const std::string path = folder.write("own.q07", bytes_of(golden("two_substances.q07")));
    const DatabaseFile file = open_database(7, path, true).file;
    const SubstanceConstants c = unpack_substance(file, 2, true).constants;
    struct Case {
        int index, kind;
        std::string path;
        const char* reason;
    };
    for (const Case& refused :
         {Case{0, 7, "new.q07", "no substance in force"}, Case{2, 6, "new.q06", "of the kind"},
          Case{2, 7, "own.q07", "is the database in force"},
          Case{2, 7, folder.path("no/such/folder/new.q07"), "new.q07"}}) {
        const WriteResult result = WriteDataBaseQ07(
            file, refused.index, c,
            {.kind = refused.kind, .path = refused.path, .ProgramPath = folder.path(), .date = "d"});
        EXPECT_THAT(result.fault, HasSubstr(refused.reason));
    }
    EXPECT_EQ(bytes_of(path), bytes_of(golden("two_substances.q07")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("new.q07")));
}

}  // namespace
}  // namespace quom

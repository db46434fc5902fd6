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

Session loaded(int kind, bool Englisch = true) {
    Session s;
    s.options.Englisch = Englisch;
    const LoadResult load =
        LoadDatabase(s, kind, golden(kind == 7 ? "two_substances.q07" : "two_substances.q06"));
    EXPECT_EQ(load.err, 0) << load.fault;
    return s;
}

TEST(Database, tables) {
    for (const int kind : {6, 7}) {
        const Session s = loaded(kind);
        const auto& file = s.database.file;
        ASSERT_EQ(file.StoffAnzahl(), 2);
        EXPECT_EQ(file.DatabaseKind, kind);
        EXPECT_EQ(file.rows[0].SubstanceName,
                  "Ramp  substance;other");  // NUL bytes are blanks, outer ones go
        EXPECT_EQ(file.rows[0].SubstanceFormula, " C1234567890");
        EXPECT_EQ(file.rows[0].SubstanceNo, -7);
        EXPECT_EQ(file.rows[1].SubstanceCAS, "64-17-5");
        EXPECT_EQ(file.rows[1].SubstanceName, "Ethanol; Ethyl alcohol");
        EXPECT_EQ(loaded(kind, false).database.file.rows[1].SubstanceName, "Ethanol; Äthanol; Weingeist");
        EXPECT_EQ(FindSystemNo(s, 64), 2);
        EXPECT_EQ(FindSystemNo(s, 65), 0);
        EXPECT_EQ(FindCAS(s, "64-17-5  "), 2);
        EXPECT_EQ(FindCAS(s, " 64-17-5"), 0);
        EXPECT_EQ(FindCAS(s, ""), 0);
    }
}

// Every refusal has a sentence, and the database in force stays.
TEST(Database, refusals) {
    const std::string good = bytes_of(golden("two_substances.q07"));
    const auto with_count = [&](std::int16_t count) {
        std::string bytes = good;
        set_record_i16(bytes, record_layout(7)->SystemNo, count);
        return bytes;
    };
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
        {good + "x", 7, "no multiple"},
        {bytes_of(golden("two_substances.q06")), 7, "Its length fits a database *.Q06."},
        {good, 6, "Its length fits a database *.Q07."},
        {good, 8, "kind 6 (*.Q06) or 7 (*.Q07), not 8"},
    };
    const Folder folder;
    Session s = loaded(7);
    SelectSubstance(s, 2);
    for (const Case& c : cases) {
        const LoadResult load = LoadDatabase(s, c.kind, folder.write("broken.q07", c.bytes));
        EXPECT_EQ(load.err, -1);
        EXPECT_THAT(load.fault, HasSubstr(c.reason));
    }
    EXPECT_THAT(LoadDatabase(s, 7, folder.path("absent.q07")).fault, HasSubstr("absent.q07"));
    EXPECT_EQ(LoadDatabase(s, 7, "").err, -1);
    EXPECT_EQ(s.database.file.StoffAnzahl(), 2);
    EXPECT_EQ(s.database.StoffIndexAktiv, 2);
    EXPECT_EQ(SelectSubstance(s, 1), 0);  // still read from the file in force
    EXPECT_EQ(s.substance.Tcr, 106);
}

TEST(Database, records_behind_the_counted_ones_are_no_part_of_the_list) {
    const Folder folder;
    Session s;
    s.database.ProgramPath = folder.path();
    folder.write("More.Q07", bytes_of(golden("two_substances.q07")) + std::string(950, 'x'));
    ASSERT_EQ(LoadDatabase(s, 7, "more.q07").err, 0);  // from the program folder, in any case of letters
    EXPECT_EQ(s.database.file.StoffAnzahl(), 2);
    EXPECT_EQ(s.database.file.PathQ07, s.database.file.path);
}

TEST(Database, choosing_a_substance_leaves_nothing_of_the_one_before) {
    Session s = loaded(7);
    s.eos.EOSb = s.eos.JiZc = s.eos.vcrEOS = s.eos.rhocrEOS = 1;
    s.eos.AlphaForm = 2;
    s.scratch.bT = s.scratch.Bvirial = s.scratch.VRoot[2] = 1;
    s.benson.TRefL = 300;
    EXPECT_EQ(SelectSubstance(s, 2), 0);
    EXPECT_EQ(s.substance.StoffName, "Ethanol");
    EXPECT_EQ(s.database.StoffIndexAktiv, 2);
    EXPECT_EQ(s.models.EVPTag, "WAG");
    EosBlock empty;
    empty.AlphaForm = 2;
    EXPECT_EQ(s.eos, empty);
    EXPECT_EQ(s.scratch.bT + s.scratch.Bvirial + s.scratch.VRoot[2], 0);
    EXPECT_EQ(s.benson.TRefL, 0);

    EXPECT_EQ(SelectSubstance(s, 0), 0);  // "nothing chosen" changes nothing
    EXPECT_EQ(s.substance.StoffName, "Ethanol");
    EXPECT_EQ(SelectSubstance(s, 1), 0);
    EXPECT_EQ(s.substance.StoffFormulaCompact, "C1234567890");
    EXPECT_EQ(SelectSubstance(s, 3),
              -1);  // no such record: no constants that could be taken for those of another
    EXPECT_EQ(s.database.StoffIndexAktiv, 0);
    EXPECT_EQ(s.substance.Tcr, 0);
    EXPECT_EQ(s.models.EVPTag, "<> ");
}

// A file that shrinks while it is open.
TEST(Database, a_record_that_cannot_be_read_gives_no_numbers) {
    const Folder folder;
    const std::string path = folder.write("shrinks.q07", bytes_of(golden("two_substances.q07")));
    Session s;
    ASSERT_EQ(LoadDatabase(s, 7, path).err, 0);
    ASSERT_EQ(SelectSubstance(s, 1), 0);
    std::filesystem::resize_file(path, 2000);
    EXPECT_EQ(SelectSubstance(s, 2), -1);
    EXPECT_EQ(s.substance.Tcr, 0);
    EXPECT_EQ(s.database.StoffIndexAktiv, 0);
}

TEST(Database, private_file) {
    for (const int kind : {6, 7}) {
        const Folder folder;
        const RecordLayout& layout = *record_layout(kind);
        Session s = loaded(kind);
        s.database.ProgramPath = folder.path();
        SelectSubstance(s, 1);
        s.substance.StoffName = "Changed €Ω";
        s.substance.Tcr = 500.5;
        s.substance.RhoLTLo = 77;
        s.substance.ptr = s.substance.S0abs = 1;  // not written, on purpose
        const std::string source = s.database.file.record;
        const WriteResult written = WriteDataBaseQ07(s, kind, "Private.Q07", "21.11.2026");
        EXPECT_EQ(written.fault, "");
        EXPECT_EQ(written.replaced, 1u);

        const std::string bytes = bytes_of(folder.path("Private.Q07"));
        ASSERT_EQ(bytes.size(), 2 * layout.length);
        std::string header = source, data = source;  // the header keeps what the buffer held
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

        Session again;
        again.database.ProgramPath = folder.path();
        EXPECT_EQ(LoadDatabase(again, kind, "private.q07").err, 0);
        EXPECT_EQ(SelectSubstance(again, 1), 0);
        EXPECT_EQ(again.substance.Tcr, 500.5);
        EXPECT_EQ(again.database.file.rows[0].SubstanceNo, kind == 7 ? 1 : -7);
    }
}

TEST(Database, private_file_is_refused) {
    const Folder folder;
    const std::string path = folder.write("own.q07", bytes_of(golden("two_substances.q07")));
    Session s;
    s.database.ProgramPath = folder.path();
    ASSERT_EQ(LoadDatabase(s, 7, path).err, 0);
    EXPECT_NE(WriteDataBaseQ07(s, 7, "new.q07", "d").fault, "");  // no substance in force
    SelectSubstance(s, 2);
    EXPECT_NE(WriteDataBaseQ07(s, 6, "new.q06", "d").fault, "");
    EXPECT_THAT(WriteDataBaseQ07(s, 7, "own.q07", "d").fault, HasSubstr("is the database in force"));
    EXPECT_NE(WriteDataBaseQ07(s, 7, folder.path("no/such/folder/new.q07"), "d").fault, "");
    EXPECT_EQ(bytes_of(path), bytes_of(golden("two_substances.q07")));
}

}  // namespace
}  // namespace quom

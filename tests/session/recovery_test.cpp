// The copy of a session: what it keeps, what it refuses, and whose it is after a crash.
#include "session/recovery.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <random>

#include "base/files.h"
#include "session/recovery_files.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

namespace fs = std::filesystem;
using test::change;

class Folder {
 public:
    Folder() {
        std::string name = fs::temp_directory_path() / "quom_recovery_XXXXXX";
        path = mkdtemp(name.data());
    }
    ~Folder() { fs::remove_all(path); }
    std::vector<std::string> names() const {
        std::vector<std::string> list;
        for (const auto& entry : fs::directory_iterator(path))
            list.push_back(entry.path().filename().string());
        return list;
    }
    std::string path;
};

// A session in which no field has its default.
Session full_session() {
    Session session = test::substance_session(test::propane, Eos::soave);
    change(session, [](Document& d) {
        d.substance.constants.StoffStructure = "100% C\r\nH";
        d.eos_input = {.b0 = 0.1, .b1 = 1.0 / 3.0, .b2 = 1e-300};
        d.models.nWat = 0.375F;
        d.reference = {.RefKode = reference_formation,
                       .TRef0 = 273.15F,
                       .pRef0 = 100,
                       .hOffset = -0.1,
                       .sOffset = 2,
                       .TEnv = 280,
                       .pEnv = 99};
        d.units.EnergyMode = energy_per_mass;
        d.units.VolumeMode = volume_per_mass;
        d.options = {.Englisch = false, .DezimalKomma = true, .BatchMode = true, .Dens = 77, .SepCSV = '\t'};
        d.exp.points = std::vector<TpRhoPoint>(4);
        d.exp.points.edit()[0] = {.T = 300.1, .p = 500};
        d.exp.points.edit()[1] = {
            .Aus = -1, .T = 1.0 / 7.0, .p = 1e5, .rhoV = 0.1F, .rhoL = 0.2F, .HLV = 3, .cp = 4};
        d.exp.file = {"/a b/c=d.BAQ", "c=d.BAQ", "2026-11-22", "two\nlines, 50 %", "74-98-6", "Propane"};
        d.exp.ExpGeaendert = true;
        d.exp.optFitFunction = 3;
        d.xy.points = {{1.5F, -2.5F, 0}, {0.1F, 3e38F, -1}};
        d.xy.comment = "%0A";
        d.xy.XYFile = "/x.XY";
        d.xy.XYGeaendert = true;
        d.calc = {.CalcMode = Mode::T_p,
                  .setup = {.GlobalCalc = false, .benson = {300, 500, 400, 3}},
                  .tank = {1, 2, 3},
                  .CurrentPoint = 2,
                  .ExtLevel = 4,
                  .ShowFunctions = true,
                  .ProcessForm = 2,
                  .ProcessT = 333,
                  .ProcessP = 44};
        d.ProjectComment = "<>";
    });
    session.shell.ProjectPath = "/p.QC6";
    session.shell.ProjectTitle = "p";
    return session;
}

TEST(SessionCopy, comes_back_with_the_same_numbers) {
    const Session session = full_session();
    const SessionCopyRead read = read_session_copy(session_copy_bytes(copy_of(session)));
    ASSERT_TRUE(read.copy) << read.fault;
    EXPECT_TRUE(same_session(*read.copy, session));

    Session restored = test::starter_session();
    QueuedMessages messages;
    restore_session(restored, *read.copy, messages);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_TRUE(same_session(*read.copy, restored));
    EXPECT_EQ(restored.document, session.document);
    EXPECT_TRUE(restored.shell.ModelsConfirmed);
    EXPECT_EQ(restored.database.StoffAnzahl(), session.database.StoffAnzahl());
    const Outcome a = CalcBatch(*session.fluid, state_input(session.document, 0)),
                  b = CalcBatch(*restored.fluid, state_input(restored.document, 0));
    ASSERT_TRUE(a.V);
    EXPECT_EQ(a.V->h, b.V->h);
}

TEST(SessionCopy, tells_what_it_holds) {
    EXPECT_EQ(
        copy_preview(copy_of(full_session())),
        "Project: p\nDatabase: quom.q07\nSubstance: Propane, CEOS Soave / Redlich / Kwong (GLOBAL concept)\n"
        "Measured data: 3 lines, c=d.BAQ, not saved\nX-Y data: 2 lines, x.XY, not saved\n");
    EXPECT_EQ(copy_preview(copy_of(Session())), "Options and units\n");
}

TEST(SessionCopy, without_its_database_gives_the_data) {
    SessionCopy copy = copy_of(full_session());
    const Session before = test::substance_session(test::benzene, Eos::soave);
    for (const std::string& path :
         {std::string("/none.q07"), test::test_data() + "/data/two_substances.q07"}) {
        Session session = before;
        QueuedMessages messages;
        copy.document.DatabasePath = path;
        copy.document.substance.StoffIndexAktiv = 400;
        restore_session(session, copy, messages);
        ASSERT_EQ(messages.asked.size(), 1u);
        EXPECT_NE(messages.asked[0].text.find(path), std::string::npos) << messages.asked[0].text;
        EXPECT_EQ(session.document.substance.StoffIndexAktiv, 0);
        EXPECT_FALSE(session.shell.ModelsConfirmed);
        EXPECT_EQ(data_point_count(session.document.exp), 3);
        EXPECT_EQ(session.document.DatabasePath, session.database.path);
    }
}

// A copy cut off anywhere, or with a line that is damaged, missing or doubled, is a fault that names a line.
TEST(SessionCopy, refuses_what_is_damaged) {
    const std::string good = session_copy_bytes(copy_of(full_session()));
    for (std::size_t size = 0; size < good.size(); ++size) {
        const SessionCopyRead read = read_session_copy(good.substr(0, size));
        ASSERT_FALSE(read.copy) << size;
        ASSERT_TRUE(read.fault.starts_with("line ")) << read.fault;
    }
    const auto lines = split_lines(good);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (const bool doubled : {false, true}) {
            std::string bytes;
            for (std::size_t k = 0; k < lines.size(); ++k)
                for (int n = k != i ? 1 : doubled ? 2 : 0; n > 0; --n) bytes += std::string(lines[k]) + '\n';
            // The constants of manual equations share a name, as entries of a list do.
            if (lines[i].starts_with("eos_input=")) continue;
            EXPECT_FALSE(read_session_copy(bytes).copy) << lines[i];
        }
    }
    const std::pair<const char*, const char*> damages[] = {{"version 1", "version 2"},
                                                           {"points=4", "points=400000000"},
                                                           {"points=4", "points=-1"},
                                                           {"EOSKode=5", "EOSKode=9"},
                                                           {"CurrentPoint=2", "CurrentPoint=4"},
                                                           {"ExtLevel=4", "ExtLevel=5"},
                                                           {"nWat=0.375", "nWat=1E39"},
                                                           {"nWat=0.375", "nWat=x"},
                                                           {"Englisch=0", "Englisch=2"},
                                                           {"ExpName=Propane", "ExpName=%1"},
                                                           {"EnergyMode=3", "EnergyMode=4"},
                                                           {"\nend\n", "\nend\nmore\n"}};
    for (const auto& [from, to] : damages) {
        std::string bytes = good;
        const std::size_t at = bytes.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        bytes.replace(at, std::string(from).size(), to);
        EXPECT_FALSE(read_session_copy(bytes).copy) << to;
    }
}

TEST(SessionCopy, of_100000_points_stays_below_its_limit) {
    Session session;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> x(1.0, 1000.0);
    change(session, [&](Document& d) {
        std::vector<TpRhoPoint> points(100001);
        for (TpRhoPoint& p : points)
            p = {.T = x(random), .p = x(random), .rhoV = float(x(random)), .rhoL = float(x(random))};
        d.exp.points = std::move(points);
    });
    const std::string bytes = session_copy_bytes(copy_of(session));
    EXPECT_LT(bytes.size(), LargestCopy / 2);
    const SessionCopyRead read = read_session_copy(bytes);
    ASSERT_TRUE(read.copy) << read.fault;
    EXPECT_EQ(read.copy->document, session.document);
}

TEST(LeftCopies, a_regular_end_leaves_nothing) {
    const Folder folder;
    {
        const RecoveryPlace place(folder.path);
        ASSERT_TRUE(place.good());
        EXPECT_EQ(place.write(copy_of(full_session())), "");
        EXPECT_FALSE(take_left_copy(folder.path)) << "its program still runs";
        const RecoveryPlace second(folder.path);
        EXPECT_NE(second.path(), place.path());
        place.remove();
    }
    EXPECT_TRUE(folder.names().empty());
    for (const char* nowhere : {"", "/none/such"}) EXPECT_FALSE(RecoveryPlace(nowhere).good());
}

// A child with a copy: while it runs nobody is offered it; once it is killed, it is offered once.
TEST(LeftCopies, of_a_killed_program_are_offered_once) {
    const Folder folder;
    const Session kept = full_session();
    for (const Answer answer : {Answer::yes, Answer::no}) {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const RecoveryPlace place(folder.path);
            const bool good = place.good() && place.write(copy_of(kept)).empty();
            if (::write(ready[1], good ? "1" : "0", 1) == 1)
                for (;;) pause();
            _exit(1);
        }
        char good = '0';
        ASSERT_EQ(::read(ready[0], &good, 1), 1);
        EXPECT_EQ(good, '1');

        const RecoveryPlace own(folder.path);
        Session session = test::starter_session();
        QueuedMessages messages;
        EXPECT_FALSE(offer_left_copies(session, own, folder.path, messages));
        EXPECT_TRUE(messages.asked.empty());
        kill(child, SIGKILL);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);

        messages.answers = {answer};
        EXPECT_EQ(offer_left_copies(session, own, folder.path, messages), answer == Answer::yes);
        ASSERT_EQ(messages.asked.size(), 1u);
        EXPECT_NE(messages.asked[0].text.find("Substance: Propane"), std::string::npos);
        EXPECT_EQ(session.document == kept.document, answer == Answer::yes);
        EXPECT_EQ(fs::exists(own.path()), answer == Answer::yes)
            << "what was loaded is not lost by a next crash";
        EXPECT_FALSE(offer_left_copies(session, own, folder.path, messages));
        EXPECT_EQ(messages.asked.size(), 1u);
        own.remove();
        for (const int end : ready) close(end);
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST(LeftCopies, that_cannot_be_read_are_put_aside) {
    const Folder folder;
    std::string damaged = session_copy_bytes(copy_of(full_session()));
    damaged.resize(damaged.size() / 2);
    ASSERT_EQ(write_file_atomic(join_path(folder.path, "session-1.copy"), damaged), "");
    ASSERT_EQ(write_file_atomic(join_path(folder.path, "session-2.copy"), std::string(LargestCopy + 1, 'x')),
              "");
    Session session;
    QueuedMessages messages;
    const RecoveryPlace own(folder.path);
    EXPECT_FALSE(offer_left_copies(session, own, folder.path, messages));
    ASSERT_EQ(messages.asked.size(), 2u);
    for (const Message& told : messages.asked) EXPECT_NE(told.text.find(".unreadable"), std::string::npos);
    EXPECT_FALSE(offer_left_copies(session, own, folder.path, messages));
    EXPECT_EQ(messages.asked.size(), 2u);
    EXPECT_TRUE(fs::exists(join_path(folder.path, "session-1.copy.unreadable")));
    EXPECT_EQ(session.document, Document());
}

}  // namespace
}  // namespace quom

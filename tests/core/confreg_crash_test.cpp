#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <random>

#include "core/confreg.h"
#include "core/errors.h"
#include "tests/support/test_disk.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#endif

namespace {

using namespace tavo;
using namespace crash;
using confreg::Recovery;
using confreg::Text;

const fs::path DATA = "home/data";
const fs::path LANGUAGES = "home/idioma.lng";
const fs::path LEFT_OVER = "home/fich.tmp";
const std::string OTHER_TEXT = "[idioma]\r\nidioma=English\r\n";

confreg::Site site(TestDisk& disk) {
    return {.program_folder = "home", .files = &disk};
}
Recovery recover(TestDisk& disk) {
    return confreg::recover({DATA, LANGUAGES}, site(disk));
}
TestDisk disk_with(const std::string& text) {
    TestDisk disk;
    disk.put(DATA, text);
    disk.put(LANGUAGES, OTHER_TEXT);
    return disk;
}

struct Job {
    const char* what;
    std::string old_text;
    std::function<void(const confreg::Site&)> run;
};

const std::vector<Job>& jobs() {
    using confreg::edit;
    static const std::string text = "[General]\r\nn=2\r\n[G1]\r\nnombre=CO2\r\n\r\n[G2]\r\nnombre=H2O\r\n";
    static const std::vector<Job> all{
        {"replace a key", text, [](const auto& s) { confreg::escribirclave(DATA, "general", "n", "12345678", s); }},
        {"insert a key", text, [](const auto& s) { confreg::escribirclave(DATA, "G1", "tc", "304.2", s); }},
        {"append a key", text, [](const auto& s) { confreg::escribirclave(DATA, "G2", "tc", "647.1", s); }},
        {"append a section and a key", text, [](const auto& s) { confreg::escribirclave(DATA, "G3", "tc", "1", s); }},
        {"append a section", text, [](const auto& s) { confreg::asegurarseccion(DATA, "G3", s); }},
        {"delete a section", text, [](const auto& s) { confreg::borrarseccion(DATA, "G1", s); }},
        {"delete the last section", text, [](const auto& s) { confreg::borrarseccion(DATA, "G2", s); }},
        {"delete the only section", "[a]\r\nx=1\r\n", [](const auto& s) { confreg::borrarseccion(DATA, "a", s); }},
        {"begin an empty file", "", [](const auto& s) { confreg::escribirclave(DATA, "a", "x", "1", s); }},
        {"replace a line", text, [](const auto& s) { confreg::reemplazarlinea(DATA, "[G2]", "[G1]", s); }},
        {"normalise line ends", "[a]\nx=1\n", [](const auto& s) { confreg::reemplazarlinea(DATA, "none", "", s); }},
        {"delete and renumber", text,
         [](const auto& s) {
             edit(DATA, s, [](Text& t) {
                 t.borrarseccion("G1");
                 t.reemplazarlinea("[G2]", "[G1]");
                 t.escribirclave("General", "n", "1");
             });
         }},
        {"another text", text, [](const auto& s) { confreg::rewrite(DATA, "[x]\r\n", s); }},
    };
    return all;
}

std::string new_text(const Job& job) {
    TestDisk disk = disk_with(job.old_text);
    job.run(site(disk));
    EXPECT_FALSE(disk.has(LEFT_OVER)) << job.what;
    EXPECT_NE(disk.content(DATA), job.old_text) << job.what;
    return disk.content(DATA);
}

/// Starts the program again and demands the old or the new text.
void expect_whole(TestDisk& disk, Kept kept, const Job& job, const std::string& wanted, const std::string& when) {
    disk.restart(kept);
    recover(disk);
    const std::string found = disk.content(DATA);
    EXPECT_TRUE(found == job.old_text || found == wanted) << job.what << when << ": " << testing::PrintToString(found);
    EXPECT_FALSE(disk.has(LEFT_OVER)) << job.what << when;
    EXPECT_EQ(disk.content(LANGUAGES), OTHER_TEXT) << job.what << when;
}

/// Runs the job; false when it was stopped on the way.
bool comes_to_an_end(const Job& job, TestDisk& disk) {
    try {
        job.run(site(disk));
    } catch (const Stopped&) {
        return false;
    } catch (const Error&) {
    }
    return true;
}

// Also while a job with a step that failed puts the old text back; the last round has no such step.
TEST(Crash, StoppedAtAnyStepLeavesTheOldOrTheNewText) {
    for (const Job& job : jobs()) {
        const std::string wanted = new_text(job);
        TestDisk whole = disk_with(job.old_text);
        job.run(site(whole));
        for (int refused = 0; refused <= whole.steps(); ++refused) {
            for (Kept kept : ALL_KEPT) {
                const int first = refused < whole.steps() ? refused + 1 : 0;
                for (int stop = first, stopped = true; stopped; ++stop) {
                    TestDisk disk = disk_with(job.old_text);
                    disk.refuse_from = refused;
                    disk.refuse_until = refused + 1;
                    disk.stop_at = stop;
                    stopped = !comes_to_an_end(job, disk);
                    expect_whole(disk, kept, job, wanted,
                                 " refused at " + std::to_string(refused) + ", stopped at " + std::to_string(stop) +
                                     ", kept " + std::to_string(static_cast<int>(kept)));
                }
            }
        }
    }
}

TEST(Crash, RecoveryItselfMayBeStopped) {
    const std::string complete = "[General]\r\nn=3\r\n[G1]\r\nnombre=CO2\r\n";
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, complete.size() - 1}) {
        for (Kept kept : ALL_KEPT) {
            for (int stop = 0, stopped = true; stopped; ++stop) {
                TestDisk disk = disk_with(complete.substr(0, length));
                disk.put(LEFT_OVER, complete);
                disk.stop_at = stop;
                try {
                    EXPECT_EQ(recover(disk), Recovery::Completed);
                    stopped = false;
                } catch (const Stopped&) {
                }
                disk.restart(kept);
                recover(disk);
                EXPECT_EQ(disk.content(DATA), complete);
                EXPECT_FALSE(disk.has(LEFT_OVER));
                EXPECT_EQ(disk.content(LANGUAGES), OTHER_TEXT);
            }
        }
    }
}

TEST(Recovery, TellsACutFileFromAnUntouchedOne) {
    const std::string nul(1, '\0');
    const std::string new_other = "[idioma]\r\nidioma=Deutsch\r\n";
    const struct {
        const char* what;
        std::string settings, left_over;
        Recovery recovery;
        std::string result;
    } cases[] = {
        {"cut short", "[a]\r\nx=", "[a]\r\nx=1\r\n", Recovery::Completed, "[a]\r\nx=1\r\n"},
        {"only truncated", "", "[a]\r\nx=1\r\n", Recovery::Completed, "[a]\r\nx=1\r\n"},
        {"cut short with holes", "[a]" + nul + nul + "x=", "[a]\r\nx=1\r\n", Recovery::Completed, "[a]\r\nx=1\r\n"},
        {"being put back", nul + "a]\r\ny=1", "[a]\r\nx=1\r\n", Recovery::Completed, "[a]\r\nx=1\r\n"},
        {"not begun", "[a]\r\ny=1\r\n", "[a]\r\nx=1\r\n", Recovery::Removed, "[a]\r\ny=1\r\n"},
        {"finished", "[a]\r\nx=1\r\n", "[a]\r\nx=1\r\n", Recovery::Removed, "[a]\r\nx=1\r\n"},
        {"an appended text, left-over incomplete", "[a]\r\n", nul + "a]\r\nx=", Recovery::Removed, "[a]\r\n"},
        {"a left-over without text", "[a]\r\n", "", Recovery::Removed, "[a]\r\n"},
        {"an empty file, left-over of the other file", "", OTHER_TEXT, Recovery::Removed, ""},
        {"an empty file, new text of the other file", "", new_other, Recovery::Removed, ""},
        {"the same with a mark and capitals", "", "\xEF\xBB\xBF\r\n[IDIOMA]\r\n", Recovery::Removed, ""},
        {"a file being put back, new text of the other file", nul + "a]", new_other, Recovery::Removed, nul + "a]"},
    };
    for (const auto& c : cases) {
        TestDisk disk = disk_with(c.settings);
        disk.put(LEFT_OVER, c.left_over);
        EXPECT_EQ(recover(disk), c.recovery) << c.what;
        EXPECT_EQ(disk.content(DATA), c.result) << c.what;
        EXPECT_EQ(disk.content(LANGUAGES), OTHER_TEXT) << c.what;
        EXPECT_FALSE(disk.has(LEFT_OVER)) << c.what;
    }
    TestDisk disk = disk_with("");
    EXPECT_EQ(recover(disk), Recovery::Nothing);
    disk.put(LEFT_OVER, OTHER_TEXT);
    disk.put(LANGUAGES, OTHER_TEXT.substr(0, 5));
    EXPECT_EQ(recover(disk), Recovery::Completed);
    EXPECT_EQ(disk.content(LANGUAGES), OTHER_TEXT) << "the longest part is the likeliest";
    EXPECT_EQ(disk.content(DATA), "");
    EXPECT_EQ(confreg::recover({"home/gone"}, site(disk)), Recovery::Nothing);
    disk.put(LEFT_OVER, OTHER_TEXT);
    EXPECT_EQ(confreg::recover({"home/gone"}, site(disk)), Recovery::Removed) << "a missing file is not made";
}

/// Runs a job that has to be refused; the sentence.
std::string refusal(const Job& job, TestDisk& disk) {
    try {
        job.run(site(disk));
    } catch (const RewriteRefused& e) {
        return e.what();
    }
    ADD_FAILURE() << job.what << " went through";
    return "";
}

TEST(Refusal, AStepThatFailsLeavesTheOldTextAndNothingElse) {
    for (const Job& job : jobs()) {
        TestDisk whole = disk_with(job.old_text);
        job.run(site(whole));
        // Steps 0 and 1 read; the last one removes fich.tmp when all is done.
        for (int refused = 2; refused < whole.steps() - 1; ++refused) {
            TestDisk disk = disk_with(job.old_text);
            disk.refuse_from = refused;
            disk.refuse_until = refused + 1;
            EXPECT_NE(refusal(job, disk).find("home"), std::string::npos);
            EXPECT_EQ(disk.content(DATA), job.old_text) << job.what << " refused at " << refused;
            EXPECT_FALSE(disk.has(LEFT_OVER)) << job.what << " refused at " << refused;
        }
        TestDisk disk = disk_with(job.old_text);
        disk.refuse_from = whole.steps() - 1;
        EXPECT_THROW(job.run(site(disk)), Error) << "a left-over that stays is reported";
        EXPECT_EQ(disk.content(DATA), whole.content(DATA));
    }
}

TEST(Refusal, ADiskThatStaysFullLosesNothing) {
    for (const Job& job : jobs()) {
        const std::string wanted = new_text(job);
        TestDisk whole = disk_with(job.old_text);
        job.run(site(whole));
        for (int full = 0; full < whole.steps(); ++full) {
            TestDisk disk = disk_with(job.old_text);
            disk.refuse_from = full;
            disk.refuse_only_writes = true;
            try {
                job.run(site(disk));
            } catch (const RewriteRefused& e) {
                const bool completed_later =
                    std::string(e.what()).find("the next start completes") != std::string::npos;
                EXPECT_EQ(disk.has(LEFT_OVER), completed_later) << job.what << " full at " << full;
                EXPECT_TRUE(completed_later || disk.content(DATA) == job.old_text) << job.what << " full at " << full;
            }
            expect_whole(disk, Kept::Everything, job, wanted, " full at " + std::to_string(full));
        }
    }
}

TEST(Refusal, AFullDiskIsNoticedBeforeAByteIsWritten) {
    const Job& job = jobs()[4];
    TestDisk disk = disk_with(job.old_text);
    disk.reported = new_text(job).size();  // enough for fich.tmp, not for the growth of the file
    disk.capacity = 0;
    EXPECT_NE(refusal(job, disk).find("no space left"), std::string::npos);
    EXPECT_EQ(disk.content(DATA), job.old_text);

    // The system promised more than there is.
    for (std::size_t room = 0; room < 2 * new_text(job).size(); ++room) {
        disk = disk_with(job.old_text);
        disk.capacity = job.old_text.size() + OTHER_TEXT.size() + room;
        try {
            job.run(site(disk));
            EXPECT_EQ(disk.content(DATA), new_text(job)) << room;
        } catch (const RewriteRefused&) {
            EXPECT_EQ(disk.content(DATA), job.old_text) << room;
        }
        EXPECT_FALSE(disk.has(LEFT_OVER)) << room;
    }
}

TEST(Refusal, SaysWhatIsInTheWay) {
    const Job& job = jobs()[0];
    TestDisk disk = disk_with(job.old_text);
    disk.put(LEFT_OVER, "[");
    EXPECT_NE(refusal(job, disk).find("another rewrite is under way"), std::string::npos);
    EXPECT_EQ(disk.content(LEFT_OVER), "[") << "it belongs to the other one";
    EXPECT_EQ(disk.content(DATA), job.old_text);

    disk = disk_with(job.old_text);
    EXPECT_THROW(confreg::rewrite(DATA, std::string("\0x", 2), site(disk)), RewriteRefused);
    EXPECT_THROW(confreg::rewrite("home/gone", "x", site(disk)), FileNotFound);
    EXPECT_EQ(disk.content(DATA), job.old_text);
}

#ifndef _WIN32
/// For as long as it lives the program is not the superuser, who may write anywhere.
class OrdinaryUser {
public:
    OrdinaryUser() { EXPECT_EQ(superuser_ ? seteuid(65534) : 0, 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(superuser_ ? seteuid(0) : 0, 0); }

private:
    const bool superuser_ = geteuid() == 0;
};

class RealDisk : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(folder_);
        std::ofstream(file_, std::ios::binary) << TEXT;
        fs::permissions(folder_, fs::perms::all);
        fs::permissions(file_, fs::perms::all);
    }
    void TearDown() override {
        fs::permissions(folder_, fs::perms::all);
        fs::remove_all(folder_);
    }
    std::string refused() const {
        const OrdinaryUser user;
        try {
            confreg::escribirclave(file_, "a", "y", std::string(1000, '2'), {.program_folder = folder_});
        } catch (const RewriteRefused& e) {
            EXPECT_EQ(real_file_system().read(file_), TEXT);
            EXPECT_FALSE(fs::exists(folder_ / "fich.tmp"));
            return e.what();
        }
        return "not refused";
    }

    static constexpr auto WRITING = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    inline static const std::string TEXT = "[a]\r\nx=1\r\n";
    const fs::path folder_ = fs::path(testing::TempDir()) / ("crash" + std::to_string(std::random_device{}()));
    const fs::path file_ = folder_ / "data";
};

TEST_F(RealDisk, RefusesWhatIsReadOnly) {
    for (const auto& [path, reason] :
         {std::pair{folder_, "fich.tmp cannot be created"}, {file_, "the file cannot be written"}}) {
        fs::permissions(path, fs::perms::all & ~WRITING);
        const std::string sentence = refused();
        EXPECT_NE(sentence.find(reason), std::string::npos) << sentence;
        fs::permissions(path, fs::perms::all);
    }
}

TEST_F(RealDisk, RefusesWhenTheSystemWritesOnlyAPart) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 500;
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string sentence = refused();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_NE(sentence.find("fich.tmp cannot be written"), std::string::npos) << sentence;
}
#endif

}  // namespace

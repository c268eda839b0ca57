#include "core/program_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>

#include "core/errors.h"

namespace {

namespace fs = std::filesystem;
using namespace tavo;

class ProgramFolder : public testing::Test {
protected:
    ProgramFolder() {
        std::string pattern = (fs::temp_directory_path() / "tavo-XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        write("shipped/data", "gases");
        write("shipped/idioma.lng", "texts");
        write("shipped/English.chm", "help");
        write("shipped/README.md", "not for the user");
        fs::create_directories(root_ / "bin");
        places_ = {std::nullopt, std::nullopt, root_ / "bin", root_ / "user" / "tavo-gas", root_ / "shipped"};
    }
    ~ProgramFolder() override {
        std::error_code ignored;
        fs::permissions(root_ / "user", fs::perms::owner_all, ignored);
        fs::remove_all(root_, ignored);
    }

    void write(const fs::path& file, const std::string& text) const {
        fs::create_directories((root_ / file).parent_path());
        std::ofstream(root_ / file, std::ios::binary) << text;
    }
    std::string read(const fs::path& file) const {
        std::ostringstream text;
        text << std::ifstream(root_ / file, std::ios::binary).rdbuf();
        return text.str();
    }

    fs::path root_;
    Places places_;
};

TEST_F(ProgramFolder, TheFirstOfTheOrderIsTaken) {
    write("bin/idioma.lng", "portable");
    places_.environment = root_ / "environment";
    places_.home = root_ / "home";
    for (const fs::path& expected : {root_ / "home", root_ / "environment", root_ / "bin"}) {
        EXPECT_EQ(program_folder(places_), expected);
        EXPECT_EQ(reading_folder(places_), expected);
        if (places_.home)
            places_.home.reset();
        else
            places_.environment.reset();
    }
    EXPECT_FALSE(fs::exists(places_.user_data));
}

TEST_F(ProgramFolder, FirstStartFillsTheUsersFolderAndLaterOnesKeepIt) {
    fs::permissions(root_ / "shipped" / "data", fs::perms::owner_read);
    EXPECT_EQ(program_folder(places_), places_.user_data);
    EXPECT_EQ(read("user/tavo-gas/data"), "gases");
    EXPECT_EQ(read("user/tavo-gas/English.chm"), "help");
    EXPECT_FALSE(fs::exists(places_.user_data / "README.md"));
    write("user/tavo-gas/data", "gases of the user");  // the copy can be written to
    fs::remove(places_.user_data / "idioma.lng");
    EXPECT_EQ(program_folder(places_), places_.user_data);
    EXPECT_EQ(read("user/tavo-gas/data"), "gases of the user");
    EXPECT_EQ(read("user/tavo-gas/idioma.lng"), "texts");
    EXPECT_EQ(std::distance(fs::directory_iterator(places_.user_data), fs::directory_iterator()), 3);
}

TEST_F(ProgramFolder, ANewerHelpReplacesTheCopyAndNothingElseDoes) {
    write("user/tavo-gas/Català.chm", "a language of the user's own");
    program_folder(places_);
    const fs::path help = places_.user_data / "English.chm";
    const auto copied = fs::last_write_time(help);
    const auto later = copied + std::chrono::hours(1);
    struct Case {
        const char* shipped;
        fs::file_time_type time;
        const char* expected;
    };
    for (const Case& c : {Case{"HELP", copied - std::chrono::hours(1), "help"}, Case{"HELP", later, "HELP"},
                          Case{"longer help", copied - std::chrono::hours(1), "longer help"}}) {
        for (const char* file : {"shipped/English.chm", "shipped/data", "shipped/idioma.lng"}) {
            write(file, c.shipped);
            fs::last_write_time(root_ / file, c.time);
        }
        program_folder(places_);
        EXPECT_EQ(read("user/tavo-gas/English.chm"), c.expected);
        EXPECT_EQ(read("user/tavo-gas/data"), "gases");
        EXPECT_EQ(read("user/tavo-gas/idioma.lng"), "texts");
        EXPECT_EQ(read("user/tavo-gas/Català.chm"), "a language of the user's own");
    }
    fs::create_directories(places_.user_data / "English.chm.new" / "in the way");
    write("shipped/English.chm", "the newest help");
    EXPECT_EQ(program_folder(places_), places_.user_data);  // starts with the old help
    EXPECT_EQ(read("user/tavo-gas/English.chm"), "longer help");
}

TEST_F(ProgramFolder, AReaderWritesNothing) {
    EXPECT_EQ(reading_folder(places_), places_.shipped);
    EXPECT_FALSE(fs::exists(places_.user_data));
    program_folder(places_);
    EXPECT_EQ(reading_folder(places_), places_.user_data);
}

TEST_F(ProgramFolder, AFolderThatCannotBeMadeIsAnError) {
    write("user", "a file where the folder should be");
    EXPECT_THROW(program_folder(places_), RewriteRefused);
    places_.user_data.clear();
    EXPECT_EQ(program_folder(places_), places_.shipped);
}

TEST_F(ProgramFolder, PlacesOfThisProcessKnowTheSources) {
    const Places found = places("tests_core", root_ / "home");
    EXPECT_EQ(found.home, root_ / "home");
    EXPECT_TRUE(fs::is_directory(found.executable));
    EXPECT_TRUE(fs::is_regular_file(found.shipped / "data"));
    EXPECT_TRUE(fs::is_regular_file(found.shipped / "idioma.lng"));
}

}  // namespace

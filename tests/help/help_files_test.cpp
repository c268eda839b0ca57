#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "core/file_system.h"
#include "shell/chm/chm_file.h"
#include "tools/help_page.h"
#include "tools/help_sources.h"

namespace {

namespace fs = std::filesystem;
using namespace tavo;

const fs::path SOURCES = fs::path(TAVO_SOURCE_DIR) / "data" / "help";

/// Names of the languages that have a folder.
std::set<std::string> languages() {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(SOURCES))
        if (entry.is_directory() && entry.path().filename() != "common")
            names.insert(entry.path().filename().string());
    return names;
}

/// The contents as lines of the file that they were made from.
std::string outline(const std::vector<chm::Topic>& topics, const std::string& indentation = {}) {
    std::string lines;
    for (const chm::Topic& topic : topics)
        lines += indentation + topic.page.substr(0, topic.page.rfind(".html")) + "\n" +
                 outline(topic.topics, indentation + "  ");
    return lines;
}

/// Each topic and those below it.
void for_each(const std::vector<chm::Topic>& topics, const std::function<void(const chm::Topic&)>& visit) {
    for (const chm::Topic& topic : topics) {
        visit(topic);
        for_each(topic.topics, visit);
    }
}

/// The compiled help of a language.
chm::ChmFile help_file(const std::string& language) {
    return chm::ChmFile::open(fs::path(TAVO_BUILT_DATA) / (language + ".chm"));
}

TEST(HelpFiles, HaveTheSameContentsInEveryLanguage) {
    std::string expected;
    help::Problems problems;
    for (const help::Entry& entry :
         help::read_contents(real_file_system().read(SOURCES / "contents.txt"), "contents.txt", problems))
        expected += std::string(2 * static_cast<std::size_t>(entry.level), ' ') + "/" + entry.page + "\n";
    ASSERT_FALSE(languages().empty());
    for (const std::string& language : languages()) {
        SCOPED_TRACE(language);
        const chm::ChmFile file = help_file(language);
        EXPECT_EQ(outline(file.contents()), expected);
        EXPECT_EQ(file.title(), "TAVO-GAS");
        EXPECT_EQ(file.find(file.default_page()), "/inicio.html");
    }
}

/// What the reader takes a title for: French puts a no-break space before its question marks.
std::string with_plain_blanks(std::string text) {
    constexpr std::string_view NO_BREAK = "\u00A0";
    for (std::size_t at = text.find(NO_BREAK); at != std::string::npos; at = text.find(NO_BREAK))
        text.replace(at, NO_BREAK.size(), " ");
    return text;
}

/// A page as it was compiled holds what its source names. The number of its pictures.
std::size_t check_page(const chm::ChmFile& file, const std::string& language, const chm::Topic& topic) {
    const std::string html = chm::decode_page(file.read(topic.page).value_or(""));
    EXPECT_EQ(chm::page_title(html), with_plain_blanks(topic.title)) << topic.page;
    help::Problems problems;
    const help::Page source = help::read_page(
        real_file_system().read(SOURCES / language / fs::path(topic.page).filename()), topic.page, problems);
    EXPECT_EQ(source.title, topic.title);
    for (const help::Picture& picture : source.pictures) {
        EXPECT_TRUE(file.read(picture.file).value_or("").starts_with("\x89PNG")) << picture.file;
        EXPECT_NE(html.find("height=\""), std::string::npos) << topic.page;
    }
    for (const help::Reference& sheet : source.sheets)
        EXPECT_TRUE(file.find(sheet.target)) << sheet.target;
    for (const help::Reference& link : source.links)
        EXPECT_TRUE(link.target.starts_with("#") || file.find(link.target.substr(0, link.target.find('#'))))
            << link.target;
    return source.pictures.size();
}

TEST(HelpFiles, EveryPageCanBeReadWithAllThatItNames) {
    for (const std::string& language : languages()) {
        SCOPED_TRACE(language);
        const chm::ChmFile file = help_file(language);
        std::size_t pages = 0, pictures = 0;
        for_each(file.contents(), [&](const chm::Topic& topic) {
            ++pages;
            pictures += check_page(file, language, topic);
        });
        EXPECT_EQ(pages, file.pages().size());
        EXPECT_GE(pictures, 14U + 10U);  // windows and formulas
    }
}

TEST(HelpFiles, TheirIndexLeadsToPages) {
    for (const std::string& language : languages()) {
        SCOPED_TRACE(language);
        const chm::ChmFile file = help_file(language);
        EXPECT_GE(file.index().size(), 50U);
        for (const chm::Keyword& keyword : file.index()) {
            EXPECT_FALSE(keyword.word.empty() || keyword.pages.empty()) << keyword.word;
            for (const chm::Topic& page : keyword.pages)
                EXPECT_TRUE(file.find(page.page)) << keyword.word << ": " << page.page;
        }
    }
}

}  // namespace

#pragma once
// The help of one language: read from data/help, checked, and written as a project of the help compiler.

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/help_page.h"

namespace tavo::help {

/// Where the sources lie.
struct Sources {
    std::filesystem::path folder;     // data/help: contents.txt, common/ and a folder for each language
    std::string language;             // name of its folder, and of its section of the language table
    std::filesystem::path pictures;   // what the build draws: windows and formulas; empty for a help without pictures
    std::filesystem::path languages;  // idioma.lng
};

/// A line of contents.txt.
struct Entry {
    std::string page;  // file name without ".html"
    int level = 0;     // from 0
    int line = 0;
};

/// A help that was found good.
struct Help {
    std::string language;
    unsigned language_id = 0;  // Windows' number of the language
    bool enye = false;         // n and n with tilde are two letters of its alphabet
    std::vector<Entry> contents;
    std::map<std::string, Page> pages;                   // by name without ".html"
    std::map<std::string, std::string> texts;            // UTF-8 of the pages
    std::map<std::string, std::filesystem::path> files;  // what goes with the pages, by name
    std::map<std::string, Size> sizes;                   // of those that are pictures with a resolution
};

/// Page names, two blanks of indentation for each level; the first one is "inicio".
std::vector<Entry> read_contents(std::string_view text, const std::string& file, Problems& problems);

/// Reads everything and adds what is wrong: pages that contents.txt lacks or that lack in the language, links, anchors
/// and pictures that lead nowhere, and all that read_page finds.
Help read_help(const Sources& sources, Problems& problems);

/// Writes the project help.hhp with pages, pictures, contents help.hhc and index help.hhk; the folder is made anew.
void write_project(const Help& help, const std::filesystem::path& folder);

/// Keywords and the names of their pages, ordered as the language orders them: case and accents count last.
std::vector<std::pair<std::string, std::vector<std::string>>> index_of(const Help& help);

/// Size of a PNG picture on a common screen of 96 dots an inch, by the resolution that it states, made to fit a page;
/// 0 x 0 where the bytes are no PNG.
Size png_size(std::string_view bytes);

/// Lines of the compiler's report that tell of a failure; it always ends as if all were well.
std::vector<std::string> complaints(std::string_view report);
/// What the compiler wrote, with its first identifier's double put right and without the time of day, so that the same
/// sources give the same bytes. Throws InvalidArgument where it is no compiled help.
std::string finished(std::string bytes);

}  // namespace tavo::help

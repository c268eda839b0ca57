#pragma once
// One page of the help as its author wrote it: UTF-8, simple HTML 4 with every element closed.

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tavo::help {

/// What is wrong with a source of the help.
struct Problem {
    std::string file;
    int line = 0;  // from 1; 0 for the whole file
    std::string sentence;

    std::string text() const;  // "file:line: sentence"
    bool operator==(const Problem&) const = default;
};
using Problems = std::vector<Problem>;

/// A target as the page names it, character references resolved.
struct Reference {
    std::string target;
    int line = 0;
};

/// The part [begin, end) of the page that gives way to something else when the page is compiled.
struct Place {
    std::size_t begin = 0, end = 0;
};

/// A picture in the page.
struct Picture {
    std::string file;
    int line = 0;
    bool sized = false;  // by the author
    Place place;
};

/// Size in which a picture is shown, in pixels of a common screen.
struct Size {
    unsigned width = 0, height = 0;
};

struct Page {
    std::string title;
    std::vector<std::string> keywords;
    std::vector<Reference> links;   // <a href>
    std::vector<Reference> sheets;  // <link href>
    std::vector<Picture> pictures;
    std::set<std::string> anchors;
    std::size_t head = 0;         // just behind "<head>"
    std::vector<Place> charsets;  // the author's own words about the encoding
};

/// Reads a page and adds what is wrong with it, under the name `file`. Elements are balanced and known to both viewers,
/// there is one title and some text, character references are numbers or one of the five common names, nothing comes
/// from outside the help.
Page read_page(std::string_view html, const std::string& file, Problems& problems);

/// The page in Windows-1252, which it declares; other characters become numeric references. Pictures get the width and
/// height of `sizes`, those that are not among them are left out. `html` is what read_page found no fault with.
std::string compiled_page(std::string_view html, const Page& page, const std::map<std::string, Size>& sizes);

/// The text in Windows-1252, other characters as "&#number;". Throws InvalidArgument where it is not UTF-8.
std::string with_references(std::string_view utf8);
/// Adds what keeps a text from being UTF-8 without control characters. False when something does.
bool check_characters(std::string_view text, const std::string& file, Problems& problems);
/// Adds a problem for a style sheet that asks for another file.
void check_style(std::string_view css, const std::string& file, int first_line, Problems& problems);

}  // namespace tavo::help

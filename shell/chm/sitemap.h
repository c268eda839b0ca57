#pragma once
// Contents (.hhc) and index (.hhk) files: nested lists of sitemap objects.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavo::chm {

struct SitemapPage {
    std::string title;  // "" where the object gives the page none of its own
    std::string local;  // as written
};

struct SitemapObject {
    std::size_t depth = 0;  // 1 at the top
    std::string name;
    std::vector<SitemapPage> pages;
};

/// The named objects of a file (UTF-8) in order, no more than `most`. Survives whatever it reads; names are cut at a
/// length that a line of a window shows.
std::vector<SitemapObject> read_sitemap(std::string_view html, std::size_t most);

}  // namespace tavo::chm

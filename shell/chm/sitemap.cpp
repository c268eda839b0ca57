#include "shell/chm/sitemap.h"

#include <algorithm>

#include "core/encoding.h"
#include "shell/chm/html_scanner.h"

namespace tavo::chm {

namespace {

constexpr std::size_t LONGEST_NAME = 400;  // bytes
constexpr std::size_t MOST_PAGES = 1000;   // of one object

std::string shortened(std::string name) {
    if (name.size() <= LONGEST_NAME)
        return name;
    std::size_t end = LONGEST_NAME;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
        --end;
    return name.substr(0, end);
}

class Builder {
public:
    void open(std::size_t depth) {
        close();
        object_ = {depth, {}, {}};
        open_ = true;
    }
    void parameter(const Piece& param) {
        if (!open_)
            return;
        const std::string kind = param.attribute("name").value_or("");
        if (same_word(kind, "name"))
            name(shortened(param.attribute("value").value_or("")));
        else if (same_word(kind, "local") && object_.pages.size() < MOST_PAGES)
            object_.pages.push_back({std::move(title_), param.attribute("value").value_or("")});
    }
    /// Also where a file forgets to close an object.
    void close() {
        if (open_ && !object_.name.empty())
            objects.push_back(std::move(object_));
        open_ = false;
        title_.clear();
    }

    std::vector<SitemapObject> objects;

private:
    // The first name is that of the object, each further one that of the page that follows.
    void name(std::string text) {
        if (object_.name.empty())
            object_.name = std::move(text);
        else
            title_ = std::move(text);
    }

    SitemapObject object_;
    bool open_ = false;
    std::string title_;
};

bool is_topic(const Piece& object) {
    return same_word(object.attribute("type").value_or("text/sitemap"), "text/sitemap");
}

}  // namespace

std::vector<SitemapObject> read_sitemap(std::string_view html, std::size_t most) {
    HtmlScanner scanner(html);
    Builder builder;
    std::size_t depth = 0;
    for (auto piece = scanner.next(); piece && builder.objects.size() < most; piece = scanner.next()) {
        if (piece->is("ul")) {
            builder.close();
            if (!piece->closing)
                ++depth;
            else if (depth > 0)
                --depth;
        } else if (piece->is("object")) {
            builder.close();
            if (!piece->closing && is_topic(*piece))
                builder.open(depth);
        } else if (piece->is("param") && !piece->closing) {
            builder.parameter(*piece);
        }
    }
    if (builder.objects.size() < most)
        builder.close();
    return std::move(builder.objects);
}

}  // namespace tavo::chm

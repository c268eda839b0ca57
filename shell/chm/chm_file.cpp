#include "shell/chm/chm_file.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include "core/encoding.h"
#include "shell/chm/archive.h"
#include "shell/chm/names.h"
#include "shell/chm/sitemap.h"
#include "shell/chm/system_record.h"

namespace tavo::chm {

namespace {

constexpr std::size_t TITLE_BYTES = 65536;  // of a page in which its title is sought

bool is_page(std::string_view lower_name) {
    return lower_name.ends_with(".html") || lower_name.ends_with(".htm");
}

struct Link {
    std::string_view name, anchor;  // "#" included
};

Link parted(std::string_view link) {
    const std::size_t anchor = std::min(link.find('#'), link.size());
    return {link.substr(0, anchor), link.substr(anchor)};
}

std::string bytes_of(const std::filesystem::path& path, std::size_t most) {
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw FileNotFound(path.filename().string() + " is missing");
    const auto size = std::filesystem::file_size(path, error);
    if (error)
        throw DamagedHelp("it cannot be read: " + error.message());
    if (size > most)
        throw DamagedHelp("the help file is too large");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file)
        throw DamagedHelp("it cannot be read");
    return bytes;
}

}  // namespace

class ChmFile::Impl {
public:
    Impl(std::string bytes, const Limits& limits) : archive_(std::move(bytes), limits) {
        for (const Entry& entry : archive_.entries())
            add_entry(entry);
        const SystemRecord system = read_system_record(bytes_or_none("/#SYSTEM"));
        title = system.title;
        read_contents(named_or_first(system.contents_file, ".hhc"), limits);
        list_pages();
        read_index(named_or_first(system.index_file, ".hhk"), limits);
        default_page = page_of(parted(system.default_page).name);
        if (default_page.empty() && !pages.empty())
            default_page = pages.front();
    }

    const Entry* find(std::string_view name) const {
        const std::string absolute = lower(absolute_name(name));
        if (const auto found = entries_.find(absolute); found != entries_.end())
            return found->second;
        const auto found = entries_.find(lower(absolute_name(without_percent_signs(name))));
        return found != entries_.end() ? found->second : nullptr;
    }
    std::string_view bytes(const Entry& entry) const { return archive_.bytes(entry); }

    std::string title, default_page;
    std::vector<Topic> contents;
    std::vector<Keyword> index;
    std::vector<std::string> pages, names;

private:
    // Folders are left out, and names that no link can reach.
    void add_entry(const Entry& entry) {
        const bool reachable = absolute_name(entry.name) == entry.name;
        if (reachable && entries_.emplace(lower(entry.name), &entry).second)
            names.push_back(entry.name);
    }

    std::string_view bytes_or_none(std::string_view name) const {
        const Entry* entry = find(name);
        if (entry == nullptr)
            return {};
        try {
            return archive_.bytes(*entry);
        } catch (const DamagedHelp&) {  // the pages can be read without it
            return {};
        }
    }

    std::string named_or_first(const std::string& name, std::string_view ending) const {
        if (!name.empty() && find(name) != nullptr)
            return name;
        const auto found =
            std::find_if(names.begin(), names.end(), [&](const std::string& n) { return lower(n).ends_with(ending); });
        return found != names.end() ? *found : std::string();
    }

    std::vector<SitemapObject> sitemap(const std::string& name, const Limits& limits) const {
        return name.empty() ? std::vector<SitemapObject>()
                            : read_sitemap(decode_page(bytes_or_none(name)), limits.topics);
    }

    /// The page that a link of contents or index leads to, with its anchor; "" where the file does not hold it.
    std::string page_of(std::string_view link) const {
        const Link parts = parted(link);
        const Entry* entry = find(parts.name);
        return entry != nullptr ? entry->name + std::string(parts.anchor) : std::string();
    }

    void read_contents(const std::string& name, const Limits& limits) {
        std::vector<std::vector<Topic>*> levels{&contents};  // of the branch that ends at the latest topic
        for (SitemapObject& object : sitemap(name, limits)) {
            const std::size_t deepest = std::max<std::size_t>(std::min(levels.size(), limits.depth), 1);
            const std::size_t level = std::clamp<std::size_t>(object.depth, 1, deepest);
            levels.resize(level);
            const std::string page = object.pages.empty() ? std::string() : page_of(object.pages.front().local);
            levels.back()->push_back({std::move(object.name), page, {}});
            levels.push_back(&levels.back()->back().topics);
        }
    }

    void list_pages() {
        std::unordered_set<std::string> listed;
        const auto list = [&](const std::string& name) {
            if (is_page(lower(name)) && listed.insert(name).second)
                pages.push_back(name);
        };
        list_topics(contents, list);
        for (const std::string& name : names)
            list(name);
    }

    template <typename List>
    static void list_topics(const std::vector<Topic>& topics, const List& list) {  // as deep as limits.depth
        for (const Topic& topic : topics) {
            list(std::string(parted(topic.page).name));
            list_topics(topic.topics, list);
        }
    }

    // Keywords below another one are shown behind it: "gas, ideal".
    void read_index(const std::string& name, const Limits& limits) {
        std::vector<std::string> above;
        std::unordered_map<std::string, std::size_t> places;
        for (SitemapObject& object : sitemap(name, limits)) {
            const std::size_t level = std::clamp<std::size_t>(object.depth, 1, std::min(above.size(), MOST_ABOVE) + 1);
            above.resize(level - 1);
            const std::string word = above.empty() ? object.name : above.back() + ", " + object.name;
            above.push_back(word);
            for (const SitemapPage& page : object.pages)
                add_keyword(word, page, places);
        }
    }

    void add_keyword(const std::string& word, const SitemapPage& page,
                     std::unordered_map<std::string, std::size_t>& places) {
        const std::string target = page_of(page.local);
        if (target.empty())
            return;
        const auto [place, is_new] = places.emplace(word, index.size());
        if (is_new)
            index.push_back({word, {}});
        index[place->second].pages.push_back({page.title.empty() ? title_of(page.local) : page.title, target, {}});
    }

    std::string title_of(std::string_view link) {
        const Entry* entry = find(parted(link).name);
        const auto [place, is_new] = titles_.emplace(entry, std::string());
        if (is_new) {
            const std::string text = page_title(decode_page(bytes_or_none(entry->name).substr(0, TITLE_BYTES)));
            place->second = text.empty() ? entry->name.substr(1) : text;
        }
        return place->second;
    }

    static constexpr std::size_t MOST_ABOVE = 3;  // levels of keywords above one

    Archive archive_;
    std::unordered_map<std::string, const Entry*> entries_;  // by lower-case name
    std::unordered_map<const Entry*, std::string> titles_;   // of the pages that the index names without
};

ChmFile::ChmFile(std::string bytes, const Limits& limits) : impl_(std::make_unique<Impl>(std::move(bytes), limits)) {}

ChmFile ChmFile::open(const std::filesystem::path& path, const Limits& limits) {
    try {
        return ChmFile(bytes_of(path, limits.file), limits);
    } catch (const DamagedHelp& error) {
        throw DamagedHelp(path.filename().string() + ": " + error.what());
    }
}

ChmFile::ChmFile(ChmFile&&) noexcept = default;
ChmFile& ChmFile::operator=(ChmFile&&) noexcept = default;
ChmFile::~ChmFile() = default;

const std::string& ChmFile::title() const {
    return impl_->title;
}

const std::string& ChmFile::default_page() const {
    return impl_->default_page;
}

const std::vector<Topic>& ChmFile::contents() const {
    return impl_->contents;
}

const std::vector<Keyword>& ChmFile::index() const {
    return impl_->index;
}

const std::vector<std::string>& ChmFile::pages() const {
    return impl_->pages;
}

const std::vector<std::string>& ChmFile::entries() const {
    return impl_->names;
}

std::optional<std::string> ChmFile::find(std::string_view name) const {
    const Entry* entry = impl_->find(name);
    return entry != nullptr ? std::optional(entry->name) : std::nullopt;
}

std::optional<std::string> ChmFile::read(std::string_view name) const {
    const Entry* entry = impl_->find(name);
    return entry != nullptr ? std::optional(std::string(impl_->bytes(*entry))) : std::nullopt;
}

}  // namespace tavo::chm

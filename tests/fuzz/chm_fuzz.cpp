// Compiled help of any bytes: refused, or everything in it can be asked for. Other inputs are read as what stands
// packed in compiled help: a page, a contents file, the system record.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "core/encoding.h"
#include "shell/chm/chm_file.h"
#include "shell/chm/sitemap.h"
#include "shell/chm/system_record.h"

namespace {

using tavo::chm::ChmFile;
using tavo::chm::DamagedHelp;
using tavo::chm::Limits;
using tavo::chm::Topic;

void demand(bool condition) {
    if (!condition)
        std::abort();
}

void demand_text(const std::string& text) {
    demand(tavo::valid_utf8(text) == text);
}

std::size_t demand_topics(const std::vector<Topic>& topics, std::size_t depth) {
    std::size_t count = topics.size();
    demand(topics.empty() || depth < Limits{}.depth);
    for (const Topic& topic : topics) {
        demand_text(topic.title);
        demand(topic.page.empty() || topic.page.starts_with('/'));
        count += demand_topics(topic.topics, depth + 1);
    }
    return count;
}

void demand_page(std::string_view bytes) {
    const std::string html = tavo::chm::decode_page(bytes);
    demand_text(html);
    demand_text(tavo::chm::page_title(html));
    demand_text(tavo::chm::plain_text(html));
}

void demand_packed(std::string_view bytes) {
    demand_page(bytes);
    for (const auto& object : tavo::chm::read_sitemap(tavo::chm::decode_page(bytes), Limits{}.topics))
        demand_text(object.name);
    const tavo::chm::SystemRecord record = tavo::chm::read_system_record(bytes);
    demand_text(record.title);
    demand_text(record.contents_file);
}

/// Bytes of an entry, 0 where it is damaged.
std::size_t demand_entry(const ChmFile& file, const std::string& name) {
    try {
        const auto bytes = file.read(name);
        demand(bytes.has_value() && bytes->size() <= Limits{}.entry);
        demand_page(*bytes);
        return bytes->size();
    } catch (const DamagedHelp&) {
        return 0;
    }
}

void demand_everything(const ChmFile& file) {
    demand_text(file.title());
    demand(file.default_page().empty() ? file.pages().empty() : file.find(file.default_page()).has_value());
    demand(demand_topics(file.contents(), 0) <= Limits{}.topics);
    for (const auto& keyword : file.index()) {
        demand_text(keyword.word);
        demand(!keyword.pages.empty());
        demand_topics(keyword.pages, 0);
    }
    std::size_t total = 0;
    for (const std::string& name : file.entries())
        total += demand_entry(file, name);
    demand(total <= Limits{}.total);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with("ITSF")) {
        demand_packed(bytes);
        return 0;
    }
    try {
        demand_everything(ChmFile(std::string(bytes)));
    } catch (const DamagedHelp&) {  // refused
    }
    return 0;
}

#include "tools/help_sources.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>

#include "core/confreg.h"
#include "core/encoding.h"
#include "core/errors.h"
#include "core/idiomas.h"

namespace tavo::help {

namespace {

namespace fs = std::filesystem;

constexpr const char* FIRST_PAGE = "inicio";
constexpr const char* PROGRAM = "TAVO-GAS";
constexpr const char* PAGE_SUFFIX = ".html";

/// Windows' numbers by the code that text 549 of a language names.
constexpr std::array<std::pair<std::string_view, unsigned>, 16> LANGUAGE_IDS{{{"es", 0x0C0A},
                                                                              {"en", 0x0409},
                                                                              {"fr", 0x040C},
                                                                              {"de", 0x0407},
                                                                              {"it", 0x0410},
                                                                              {"pt", 0x0816},
                                                                              {"ca", 0x0403},
                                                                              {"gl", 0x0456},
                                                                              {"eu", 0x042D},
                                                                              {"nl", 0x0413},
                                                                              {"ro", 0x0418},
                                                                              {"pl", 0x0415},
                                                                              {"sv", 0x041D},
                                                                              {"da", 0x0406},
                                                                              {"el", 0x0408},
                                                                              {"ru", 0x0419}}};
constexpr unsigned ENGLISH_ID = 0x0409;
constexpr int LANGUAGE_CODE = 549;
constexpr unsigned WIDEST = 720;  // of a picture, so that it fits beside the contents

std::string read_file(const fs::path& path) {
    return real_file_system().read(path);
}

void write_file(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw Error(path.string() + " cannot be written");
}

bool is_plain_name(std::string_view name) {
    return !name.empty() && name.front() != '.' && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
               c == '.';
    });
}

/// Reads one language; the members fill in order.
class HelpReader {
public:
    HelpReader(const Sources& sources, Problems& problems) : sources_(sources), problems_(problems) {}

    Help read();

private:
    std::string source_name(const std::string& file) const { return sources_.language + "/" + file; }
    void find_language();
    void find_files(const fs::path& folder, const std::string& shown);
    void find_pages();
    void compare_with_contents();
    void compare_titles();
    void check_page(const std::string& name, const Page& page);
    void check_link(const std::string& name, const Page& page, const Reference& link);
    void check_picture(const std::string& file, const Picture& picture);

    const Sources& sources_;
    Problems& problems_;
    Help help_;
};

void HelpReader::find_language() {
    const confreg::Text table = confreg::read(sources_.languages);
    const std::vector<std::string> known = idiomas::languages(table);
    if (std::find(known.begin(), known.end(), sources_.language) == known.end())
        problems_.push_back({sources_.language, 0, "the language table has no language of this name"});
    const std::string code = idiomas::text(table, sources_.language, LANGUAGE_CODE);
    const auto* id =
        std::find_if(LANGUAGE_IDS.begin(), LANGUAGE_IDS.end(), [&](const auto& l) { return l.first == code; });
    help_.language = sources_.language;
    help_.language_id = id == LANGUAGE_IDS.end() ? ENGLISH_ID : id->second;
    help_.enye = code == "es" || code == "gl" || code == "eu";
}

/// What is no page: style sheets and pictures. A file of the language hides one of the same name that all share.
void HelpReader::find_files(const fs::path& folder, const std::string& shown) {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const std::string suffix = entry.path().extension().string();
        if ((suffix == PAGE_SUFFIX && shown == sources_.language) || (name == "list" && shown == "pictures"))
            continue;
        std::string source = shown;
        source += '/' + name;
        if (!is_plain_name(name) || (suffix != ".css" && suffix != ".png")) {
            problems_.push_back(
                {source, 0, "neither a page nor a style sheet (.css) nor a picture (.png) with a plain ASCII name"});
            continue;
        }
        help_.files[name] = entry.path();
        const std::string bytes = read_file(entry.path());
        if (suffix == ".css") {
            check_characters(bytes, source, problems_);
            check_style(bytes, source, 1, problems_);
        } else if (const Size size = png_size(bytes); size.width > 0) {
            help_.sizes[name] = size;
        } else {
            problems_.push_back({source, 0, "no PNG picture"});
        }
    }
}

void HelpReader::find_pages() {
    for (const fs::directory_entry& entry : fs::directory_iterator(sources_.folder / sources_.language)) {
        if (entry.path().extension() != PAGE_SUFFIX)
            continue;
        const std::string file = source_name(entry.path().filename().string());
        const std::string name = entry.path().stem().string();
        help_.texts[name] = read_file(entry.path());
        std::string& text = help_.texts[name];
        if (text.starts_with(UTF8_MARK))
            text.erase(0, UTF8_MARK.size());
        help_.pages[name] = read_page(text, file, problems_);
    }
}

void HelpReader::compare_with_contents() {
    std::set<std::string> listed;
    for (const Entry& entry : help_.contents) {
        listed.insert(entry.page);
        if (!help_.pages.contains(entry.page))
            problems_.push_back(
                {"contents.txt", entry.line, "there is no page " + source_name(entry.page + PAGE_SUFFIX)});
    }
    for (const auto& [name, page] : help_.pages)
        if (!listed.contains(name))
            problems_.push_back({source_name(name + PAGE_SUFFIX), 0, "the page is not in contents.txt"});
}

void HelpReader::compare_titles() {
    std::map<std::string, std::string> first;
    for (const auto& [name, page] : help_.pages) {
        const auto [other, is_new] = first.try_emplace(page.title, name);
        if (!is_new && !page.title.empty())
            problems_.push_back({source_name(name + PAGE_SUFFIX), 0,
                                 "has the title of " + other->second + PAGE_SUFFIX + ", \"" + page.title + "\""});
    }
}

void HelpReader::check_link(const std::string& name, const Page& page, const Reference& link) {
    const std::string file = source_name(name + PAGE_SUFFIX);
    const std::size_t hash = std::min(link.target.find('#'), link.target.size());
    const std::string target = link.target.substr(0, hash);
    const Page* to = &page;
    if (!target.empty()) {
        const auto found =
            target.ends_with(PAGE_SUFFIX)
                ? help_.pages.find(target.substr(0, target.size() - std::string_view(PAGE_SUFFIX).size()))
                : help_.pages.end();
        if (found == help_.pages.end()) {
            problems_.push_back({file, link.line, "there is no page \"" + target + "\" to lead to"});
            return;
        }
        to = &found->second;
    }
    if (hash < link.target.size() && !to->anchors.contains(link.target.substr(hash + 1)))
        problems_.push_back({file, link.line, "there is no anchor \"" + link.target + "\" to lead to"});
}

void HelpReader::check_picture(const std::string& file, const Picture& picture) {
    if (!help_.files.contains(picture.file))
        problems_.push_back({file, picture.line,
                             "there is no picture \"" + picture.file +
                                 "\": the build draws none of this name, and neither common/ nor " + sources_.language +
                                 "/ holds it"});
}

void HelpReader::check_page(const std::string& name, const Page& page) {
    for (const Reference& link : page.links)
        check_link(name, page, link);
    for (const Picture& picture : sources_.pictures.empty() ? std::vector<Picture>() : page.pictures)
        check_picture(source_name(name + PAGE_SUFFIX), picture);
    for (const Reference& sheet : page.sheets)
        if (!help_.files.contains(sheet.target))
            problems_.push_back({source_name(name + PAGE_SUFFIX), sheet.line,
                                 "there is no style sheet \"" + sheet.target + "\" in common/"});
}

Help HelpReader::read() {
    find_language();
    help_.contents = read_contents(read_file(sources_.folder / "contents.txt"), "contents.txt", problems_);
    if (!sources_.pictures.empty())
        find_files(sources_.pictures, "pictures");
    find_files(sources_.folder / "common", "common");
    find_files(sources_.folder / sources_.language, sources_.language);
    find_pages();
    compare_with_contents();
    compare_titles();
    for (const auto& [name, page] : help_.pages)
        check_page(name, page);
    return std::move(help_);
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text)
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    return with_references(result);
}

std::string parameter(std::string_view name, std::string_view value) {
    return "<param name=\"" + std::string(name) + "\" value=\"" + escaped(value) + "\">\r\n";
}

std::string topic(const Help& help, const std::string& page) {
    return parameter("Name", help.pages.at(page).title) + parameter("Local", page + PAGE_SUFFIX);
}

constexpr const char* SITEMAP_OBJECT = "<LI><OBJECT type=\"text/sitemap\">\r\n";

std::string sitemap(const std::string& list) {
    return "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML>\r\n<HEAD>\r\n"
           "<meta http-equiv=\"Content-Type\" content=\"text/html; "
           "charset=windows-1252\">\r\n</HEAD>\r\n<BODY>\r\n<UL>\r\n" +
           list + "</UL>\r\n</BODY>\r\n</HTML>\r\n";
}

std::string contents_file(const Help& help) {
    std::string list;
    int level = 0;
    for (const Entry& entry : help.contents) {
        for (; level < entry.level; ++level)
            list += "<UL>\r\n";
        for (; level > entry.level; --level)
            list += "</UL>\r\n";
        list += SITEMAP_OBJECT + topic(help, entry.page) + "</OBJECT>\r\n";
    }
    for (; level > 0; --level)
        list += "</UL>\r\n";
    return sitemap(list);
}

std::string index_file(const Help& help) {
    std::string list;
    for (const auto& [keyword, pages] : index_of(help)) {
        list += SITEMAP_OBJECT + parameter("Name", keyword);
        for (const std::string& page : pages)
            list += topic(help, page);
        list += "</OBJECT>\r\n";
    }
    return sitemap(list);
}

std::string project_file(const Help& help) {
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string id = "0x0000";
    for (unsigned i = 0, rest = help.language_id; i < 4; ++i, rest /= 16)
        id[5 - i] = DIGITS[rest % 16];
    // A binary index would put the time of day where `finished` cannot reach it.
    std::string text =
        "[OPTIONS]\r\nCompatibility=1.1 or later\r\nCompiled file=help.chm\r\n"
        "Contents file=help.hhc\r\nIndex file=help.hhk\r\nDefault topic=" +
        std::string(FIRST_PAGE) + PAGE_SUFFIX + "\r\nTitle=" + PROGRAM + "\r\nLanguage=" + id +
        "\r\nFull-text search=Yes\r\nBinary TOC=No\r\nBinary Index=No\r\n\r\n[FILES]\r\n";
    for (const Entry& entry : help.contents)
        text += entry.page + PAGE_SUFFIX + "\r\n";
    for (const auto& [name, path] : help.files)
        text += name + "\r\n";
    return text;
}

/// Small letters without their accents, for the order of the index.
std::string folded(std::string_view text, bool enye) {
    static const std::map<std::string_view, std::string_view> PLAIN{
        {"à", "a"}, {"á", "a"}, {"â", "a"},  {"ã", "a"},  {"ä", "a"}, {"å", "a"}, {"æ", "ae"}, {"ç", "c"}, {"è", "e"},
        {"é", "e"}, {"ê", "e"}, {"ë", "e"},  {"ì", "i"},  {"í", "i"}, {"î", "i"}, {"ï", "i"},  {"ñ", "n"}, {"ò", "o"},
        {"ó", "o"}, {"ô", "o"}, {"õ", "o"},  {"ö", "o"},  {"ø", "o"}, {"ù", "u"}, {"ú", "u"},  {"û", "u"}, {"ü", "u"},
        {"ý", "y"}, {"ÿ", "y"}, {"œ", "oe"}, {"ß", "ss"}, {"ș", "s"}, {"ț", "t"}, {"ă", "a"}};
    const std::string small = lower(text);
    std::string result;
    for (std::size_t i = 0; i < small.size(); ++i) {
        const auto found = PLAIN.find(std::string_view(small).substr(i, 2));
        if (found == PLAIN.end()) {
            result += small[i];
            continue;
        }
        result += enye && found->first == "ñ" ? "n\x7F" : found->second;
        ++i;
    }
    return result;
}

std::uint32_t big_endian(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        value = (value << 8U) | static_cast<unsigned char>(bytes.at(i));
    return value;
}

/// A compiled help file as far as its uncompressed parts go (InfoTech storage, version 3). Bytes outside it throw
/// std::out_of_range.
class Storage {
public:
    explicit Storage(std::string& bytes) : bytes_(bytes) {}

    void put_second_identifier_right();
    void forget_time();

private:
    std::uint64_t number(std::size_t at, unsigned size) const {
        std::uint64_t value = 0;
        for (unsigned i = size; i-- > 0;)
            value = (value << 8U) | static_cast<unsigned char>(bytes_.at(at + i));
        return value;
    }
    std::size_t position(std::size_t at) const { return static_cast<std::size_t>(number(at, 8)); }
    std::size_t packed(std::size_t& at) const;
    std::optional<std::size_t> entry(std::string_view name) const;
    void clear(std::size_t at) { bytes_.replace(at, 4, 4, '\0'); }

    std::string& bytes_;
};

/// The directory and its chunks carry the same identifier but for one byte.
void Storage::put_second_identifier_right() {
    constexpr std::size_t PLACE = 0x28;
    if (bytes_.at(PLACE) == 0x10)
        bytes_[PLACE] = 0x11;
    if (bytes_[PLACE] != 0x11)
        throw InvalidArgument("the second identifier of the header is unknown");
}

/// A number in groups of seven bits, the highest first.
std::size_t Storage::packed(std::size_t& at) const {
    std::size_t value = 0;
    for (;; ++at) {
        const auto byte = static_cast<unsigned char>(bytes_.at(at));
        value = (value << 7U) | (byte & 0x7FU);
        if (byte < 0x80)
            break;
    }
    ++at;
    return value;
}

/// Place of an entry of the uncompressed section, from the directory's listing chunks.
std::optional<std::size_t> Storage::entry(std::string_view name) const {
    const std::size_t directory = position(0x48), content = position(0x58);
    const std::size_t header = number(directory + 0x08, 4), chunk_size = number(directory + 0x10, 4);
    const std::size_t chunks = number(directory + 0x2C, 4);
    for (std::size_t i = 0; i < chunks; ++i) {
        const std::size_t chunk = directory + header + i * chunk_size;
        if (bytes_.compare(chunk, 4, "PMGL") != 0)
            continue;
        const std::size_t end = chunk + chunk_size - number(chunk + 4, 4);
        for (std::size_t at = chunk + 0x14; at < end;) {
            const std::size_t length = packed(at);
            const std::string_view found = std::string_view(bytes_).substr(at, length);
            at += length;
            const std::size_t section = packed(at), offset = packed(at);
            packed(at);
            if (found == name && section == 0)
                return content + offset;
        }
    }
    return std::nullopt;
}

void Storage::forget_time() {
    clear(0x10);
    const auto system = entry("/#SYSTEM");
    if (!system)
        throw InvalidArgument("there is no entry #SYSTEM");
    constexpr unsigned TIME = 10;
    std::size_t at = *system + 4;  // behind the version
    for (; number(at, 2) != TIME; at += 4 + number(at + 2, 2))
        if (at > bytes_.size())
            throw InvalidArgument("the entry #SYSTEM names no time");
    clear(at + 4);
}

}  // namespace

std::vector<Entry> read_contents(std::string_view text, const std::string& file, Problems& problems) {
    std::vector<Entry> entries;
    std::set<std::string> seen;
    int line = 0;
    while (!text.empty()) {
        ++line;
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view name = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (name.ends_with('\r'))
            name.remove_suffix(1);
        const std::size_t indentation = std::min(name.find_first_not_of(' '), name.size());
        name.remove_prefix(indentation);
        const auto problem = [&](const std::string& sentence) { problems.push_back({file, line, sentence}); };
        const int level = static_cast<int>(indentation / 2);
        if (!is_plain_name(name))
            problem("\"" + std::string(name) + "\" is no name of a page");
        else if (!seen.insert(std::string(name)).second)
            problem("\"" + std::string(name) + "\" is there twice");
        else if (entries.empty() && (name != FIRST_PAGE || level > 0))
            problem("the first page is \"" + std::string(FIRST_PAGE) + "\"");
        else if (indentation % 2 != 0 || (!entries.empty() && level > entries.back().level + 1))
            problem("\"" + std::string(name) +
                    "\" stands two blanks further in than its chapter, or as far as the page before");
        else
            entries.push_back({std::string(name), level, line});
    }
    if (line == 0)
        problems.push_back({file, 0, "there are no pages"});
    return entries;
}

Help read_help(const Sources& sources, Problems& problems) {
    return HelpReader(sources, problems).read();
}

void write_project(const Help& help, const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, page] : help.pages)
        write_file(folder / (name + PAGE_SUFFIX), compiled_page(help.texts.at(name), page, help.sizes));
    for (const auto& [name, path] : help.files)
        write_file(folder / name, read_file(path));
    write_file(folder / "help.hhc", contents_file(help));
    write_file(folder / "help.hhk", index_file(help));
    write_file(folder / "help.hhp", project_file(help));
}

std::vector<std::pair<std::string, std::vector<std::string>>> index_of(const Help& help) {
    std::map<std::pair<std::string, std::string>, std::pair<std::string, std::vector<std::string>>> ordered;
    for (const Entry& entry : help.contents) {
        const auto page = help.pages.find(entry.page);
        if (page == help.pages.end())
            continue;
        for (const std::string& keyword : page->second.keywords) {
            auto& [shown, pages] = ordered[{folded(keyword, help.enye), lower(keyword)}];
            if (shown.empty())
                shown = keyword;
            if (std::find(pages.begin(), pages.end(), entry.page) == pages.end())
                pages.push_back(entry.page);
        }
    }
    std::vector<std::pair<std::string, std::vector<std::string>>> index;
    index.reserve(ordered.size());
    for (auto& [key, entry] : ordered)
        index.push_back(std::move(entry));
    return index;
}

Size png_size(std::string_view bytes) {
    constexpr std::string_view SIGNATURE("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
    constexpr std::size_t FIRST_CHUNK = 8, CHUNK_FRAME = 12;  // length, type and checksum
    if (!bytes.starts_with(SIGNATURE) || bytes.size() < 33)
        return {};
    constexpr double COMMON = 96 / 0.0254;  // dots per metre
    double per_metre = COMMON;
    for (std::size_t at = FIRST_CHUNK; at + CHUNK_FRAME <= bytes.size(); at += CHUNK_FRAME + big_endian(bytes, at)) {
        const std::string_view type = bytes.substr(at + 4, 4);
        if (type == "pHYs" && at + 17 <= bytes.size() && bytes[at + 16] == 1 && big_endian(bytes, at + 8) > 0)
            per_metre = big_endian(bytes, at + 8);
        if (type == "IDAT")
            break;
    }
    const auto shown = [&](std::uint32_t pixels) {
        return static_cast<unsigned>(std::lround(pixels * COMMON / per_metre));
    };
    const Size size{shown(big_endian(bytes, 16)), shown(big_endian(bytes, 20))};
    if (size.width <= WIDEST)
        return size;
    return {WIDEST, (size.height * WIDEST + size.width / 2) / size.width};
}

std::vector<std::string> complaints(std::string_view report) {
    std::vector<std::string> lines;
    while (!report.empty()) {
        const std::size_t end = std::min(report.find('\n'), report.size());
        const std::string line(report.substr(0, end));
        report.remove_prefix(std::min(end + 1, report.size()));
        const std::string small = lower(line);
        for (const std::string_view sign : {"error", "warning", "can't find", "not found", "exception"})
            if (small.find(sign) != std::string::npos) {
                lines.push_back(line);
                break;
            }
    }
    return lines;
}

std::string finished(std::string bytes) {
    if (!bytes.starts_with("ITSF\x03"))
        throw InvalidArgument("it does not begin as compiled help");
    try {
        Storage storage(bytes);
        storage.put_second_identifier_right();
        storage.forget_time();
    } catch (const std::out_of_range&) {
        throw InvalidArgument("it ends too early");
    }
    return bytes;
}

}  // namespace tavo::help

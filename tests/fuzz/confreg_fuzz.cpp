// Settings files of any bytes: an edit ends well or is refused, reads as the model reads, and what is written reads
// back. Input: number of edits, the edits (kind; three texts as length and bytes, or as a number of a text of the
// file), then the file itself.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "core/confreg.h"
#include "core/encoding.h"
#include "tests/support/confreg_edits.h"

namespace {

using tavo::confreg::Text;
using tavo::model::Edit;
using tavo::model::perform;

void demand(bool condition) {
    if (!condition)
        std::abort();
}

class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    std::size_t number() {
        if (rest_.empty())
            return 0;
        const auto value = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return value;
    }
    std::string bytes(std::size_t count) {
        std::string result(rest_.substr(0, count));
        rest_.remove_prefix(result.size());
        return result;
    }
    std::string_view rest() const { return rest_; }

private:
    std::string_view rest_;
};

/// A text given by itself, or (from 128) by its number among those that the file turns out to hold.
struct Argument {
    std::string text;
    std::size_t choice = 0;

    explicit Argument(Input& input) {
        const std::size_t length = input.number();
        if (length < 128)
            text = input.bytes(length % 16);
        else
            choice = length - 127;
    }
    std::string among(const std::vector<std::string>& texts) const {
        return choice == 0 || texts.empty() ? text : texts[choice % texts.size()];
    }
};

struct Request {
    int operation;
    Argument a, b, c;
};

/// Lines of a file, and the names and keys in them.
std::vector<std::string> texts_of(std::string_view file) {
    std::vector<std::string> texts;
    for (const std::string& line : tavo::model::lines_of(file)) {
        texts.push_back(line);
        if (line.size() > 1 && line[0] == '[')
            texts.push_back(line.substr(1, line.size() - 2));
        else
            texts.push_back(line.substr(0, line.find('=')));
    }
    return texts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(std::string_view(reinterpret_cast<const char*>(data), size));
    std::vector<Request> requests;
    for (std::size_t count = input.number() % 16; count > 0; --count) {
        const int operation = static_cast<int>(input.number() % 10);
        Argument a(input), b(input), c(input);
        requests.push_back({operation, std::move(a), std::move(b), std::move(c)});
    }

    const std::string file(input.rest());
    const std::vector<std::string> texts = texts_of(file);
    Text batch(file);
    demand(batch.bytes() == file);
    std::string expected = file;
    std::string single = file;
    for (const Request& r : requests) {
        const Edit edit{r.operation, r.a.among(texts), r.b.among(texts), r.c.among(texts)};
        Text one(single);
        demand(one.bytes() == single);
        const std::string result = perform(one, edit);
        demand(perform(batch, edit) == result);
        single = one.bytes();
        demand(batch.bytes() == single);
        if (single.starts_with(tavo::UTF8_MARK) || expected.starts_with(tavo::UTF8_MARK))
            continue;  // the model reads Windows-1252 alone
        demand(perform(expected, edit) == result);
        demand(expected == single);
    }

    tavo::model::outcome([&] {
        for (const std::string& section : batch.listasecciones())
            batch.claves(section);
    });
    const bool windows1252 = !batch.is_utf8();
    const std::string before = batch.bytes();
    demand(Text(before).bytes() == before);
    batch.use_utf8();
    demand(Text(batch.bytes()).bytes() == batch.bytes());
    if (windows1252)
        demand(tavo::windows1252_from_utf8(batch.bytes().substr(tavo::UTF8_MARK.size())) == before);
    return 0;
}

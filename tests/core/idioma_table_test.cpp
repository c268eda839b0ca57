// The shipped language table against the numbers in use, the editor's layout and the program's sources.

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/confreg.h"
#include "core/encoding.h"
#include "core/idiomas.h"
#include "core/text_numbers.h"
#include "core/text_rules.h"

namespace {

namespace fs = std::filesystem;
using tavo::TEXT_NUMBERS;

const fs::path SOURCES = TAVO_SOURCE_DIR;

std::string bytes_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// language -> number -> text, UTF-8.
using Texts = std::map<std::string, std::map<int, std::string>>;

int number_of(std::string_view text) {
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

class LanguageTable : public ::testing::Test {
protected:
    LanguageTable() {
        for (const std::string& name : languages)
            for (const auto& [key, text] : table.claves(name))
                texts[name][number_of(key)] = text;
    }

    const std::string bytes = bytes_of(SOURCES / "data" / "idioma.lng");
    const tavo::confreg::Text table{bytes};
    const std::vector<std::string> languages = tavo::idiomas::languages(table);
    Texts texts;
};

TEST_F(LanguageTable, HasTheLayoutThatTheEditorWrites) {
    std::string expected = "[idioma]\r\nidioma=Español\r\n\r\n";
    for (const std::string& name : languages) {
        expected.append("[").append(name).append("]\r\n");
        for (const auto& [key, text] : table.claves(name))
            expected.append(key).append("=").append(text).append("\r\n");
        expected += "\r\n";
    }
    EXPECT_EQ(tavo::utf8_from_windows1252(bytes), expected);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool undefined = byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
        ASSERT_FALSE(undefined || (byte < 0x20 && c != '\r' && c != '\n')) << int{byte};
    }
}

TEST_F(LanguageTable, DefinesEveryNumberOnceInEveryLanguage) {
    EXPECT_EQ(languages,
              (std::vector<std::string>{"Español", "English", "Français", "Deutsch", "Italiano", "Português"}));
    EXPECT_EQ(tavo::idiomas::active(table), "Español");
    std::vector<std::string> numbers;
    numbers.reserve(TEXT_NUMBERS.size());
    for (const tavo::TextNumber& entry : TEXT_NUMBERS)
        numbers.push_back(std::to_string(entry.number));
    EXPECT_TRUE(std::ranges::is_sorted(TEXT_NUMBERS, std::ranges::less_equal{}, &tavo::TextNumber::number));
    for (const std::string& name : languages) {
        std::vector<std::string> keys;
        for (const auto& [key, text] : table.claves(name)) {
            keys.push_back(key);
            EXPECT_FALSE(text.empty()) << name << " " << key;
        }
        EXPECT_EQ(keys, numbers) << name;
    }
}

TEST_F(LanguageTable, TakesTheSameValuesInEveryLanguage) {
    const std::map<int, std::string>& spanish = texts.at("Español");
    for (const auto& [name, numbers] : texts)
        for (const auto& [number, text] : numbers)
            EXPECT_EQ(tavo::arguments(text), tavo::arguments(spanish.at(number)))
                << name << " " << number << " " << text;
}

/// The mnemonic of a shipped text: its one "&" stands before a letter from a to z. Else empty.
std::string letter_of(const std::string& text) {
    const std::string letter = std::ranges::count(text, '&') == 1 ? tavo::mnemonic(text) : std::string();
    return letter.size() == 1 && letter[0] >= 'a' && letter[0] <= 'z' ? letter : std::string();
}

TEST_F(LanguageTable, HasMnemonicsWithoutClashes) {
    std::set<int> grouped;
    for (const tavo::MnemonicGroup& group : tavo::mnemonic_groups()) {
        const std::vector<int> numbers = group.all();
        grouped.insert(numbers.begin(), numbers.end());
        for (const auto& [name, of_number] : texts) {
            std::map<std::string, int> taken;
            for (const int number : numbers) {
                const std::string& text = of_number.at(number);
                const std::string letter = letter_of(text);
                EXPECT_NE(letter, "") << name << " " << number << " " << text;
                const auto [other, free] = taken.emplace(letter, number);
                EXPECT_TRUE(free) << group.name << ", " << name << ": " << number << " " << text
                                  << " takes the letter of " << other->second;
            }
        }
    }
    for (const auto& [name, numbers] : texts)
        for (const auto& [number, text] : numbers)
            EXPECT_EQ(!tavo::mnemonic(text).empty(), grouped.contains(number)) << name << " " << number << " " << text;
}

TEST(TextNumbers, AreTheRowsOfTheDocumentedTable) {
    std::ifstream document(SOURCES / "data" / "README.md");
    std::map<int, std::string> rows;
    for (std::string line; std::getline(document, line);) {
        if (!line.starts_with("| "))
            continue;
        const std::size_t meaning = line.find(" | ");
        const int number = number_of(std::string_view(line).substr(2, meaning - 2));
        if (number >= 0)
            rows[number] = line.substr(meaning + 3, line.find(" | ", meaning + 3) - meaning - 3);
    }
    std::map<int, std::string> expected;
    for (const tavo::TextNumber& entry : TEXT_NUMBERS)
        expected[entry.number] = entry.meaning;
    EXPECT_EQ(rows, expected);
}

/// One mention of a number in the sources: texto(N or texto_(N, or N followed by a Spanish literal.
struct Mention {
    int number;
    std::string literal;  // "" when no literal follows
};

/// The contents of adjacent string literals; \u00A0 is the no-break space, another escape keeps the character behind
/// it.
std::string joined(const std::string& literals) {
    static const std::regex piece(R"re("((?:[^"\\]|\\.)*)"\s*)re"), blank(R"(\\u00A0)"), escape(R"(\\(.))");
    const std::string text = std::regex_replace(std::regex_replace(literals, piece, "$1"), blank, "\u00A0");
    return std::regex_replace(text, escape, "$1");
}

std::vector<Mention> mentions(const std::string& code) {
    static const std::regex number(
        R"re((texto_?\(\s*|[^\w.'])(\d{1,3})(?![\w.'])\s*(?:,\s*(?:QStringLiteral\(|QString::fromUtf8\(|u)?\s*)re"
        R"re(((?:"(?:[^"\\]|\\.)*"\s*)+))?)re");
    std::vector<Mention> found;
    for (std::sregex_iterator at(code.begin(), code.end(), number), end; at != end; ++at) {
        const int mentioned = number_of((*at)[2].str());
        const std::string literal = joined((*at)[3].str());
        const bool own = mentioned >= 400 && mentioned < 850 && !literal.empty();
        if (own || (*at)[1].str().starts_with("texto"))
            found.push_back({mentioned, literal});
    }
    return found;
}

TEST_F(LanguageTable, HoldsTheNumbersAndTheSpanishOfTheProgram) {
    const std::map<int, std::string>& spanish = texts.at("Español");
    for (const char* const folder : {"shell", "windows", "controls", "tools"})
        for (const auto& entry : fs::recursive_directory_iterator(SOURCES / folder)) {
            const std::string extension = entry.path().extension();
            if (extension != ".cpp" && extension != ".h")
                continue;
            for (const Mention& mention : mentions(bytes_of(entry.path()))) {
                const auto known = spanish.find(mention.number);
                if (known == spanish.end()) {
                    ADD_FAILURE() << entry.path() << ": text " << mention.number << " is not in the table";
                } else if (!mention.literal.empty()) {
                    EXPECT_EQ(mention.literal, known->second) << entry.path() << ", text " << mention.number;
                }
            }
        }
}

TEST(TextMentions, AreFoundInTheFormsInWhichTheSourcesHaveThem) {
    const std::vector<Mention> found = mentions(R"code(
        setText(estado_.texto(14));  resize(520, 400);  "v(510)"  x = 512.5;
        a(estado.texto(403, QStringLiteral("Mínima "
                                           "\"T\"")));
        {"mnusalir", 10, "", 510, "Termina"}, {502, u"Elija"}, {ms(500), "no"},
        estado.texto( 15 )  texto(7, QString())  hint = texto(
            656, QStringLiteral("V\u00A0= %1"));  texto_(128, QString())
        texto_(
            51, {}))code");
    std::vector<std::pair<int, std::string>> pairs;
    pairs.reserve(found.size());
    for (const Mention& mention : found)
        pairs.emplace_back(mention.number, mention.literal);
    EXPECT_EQ(pairs, (std::vector<std::pair<int, std::string>>{{14, ""},
                                                               {403, "Mínima \"T\""},
                                                               {510, "Termina"},
                                                               {502, "Elija"},
                                                               {15, ""},
                                                               {7, ""},
                                                               {656, "V\u00A0= %1"},
                                                               {128, ""},
                                                               {51, ""}}));
}

}  // namespace

// Character references of HTML: "&aacute;", "&#225;", "&#xE1;".

#include <algorithm>
#include <charconv>
#include <map>

#include "core/encoding.h"
#include "shell/chm/html_scanner.h"

namespace tavo::chm {

namespace {

// The names of HTML 4 for characters that follow one another; "-" stands for one without a name.
struct Run {
    char32_t first;
    std::string_view names;
};

constexpr Run RUNS[]{
    {0xA0,
     "nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not shy reg macr deg plusmn sup2 sup3 acute "
     "micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest Agrave Aacute Acirc Atilde Auml Aring AElig "
     "Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc Iuml ETH Ntilde Ograve Oacute Ocirc Otilde Ouml times Oslash "
     "Ugrave Uacute Ucirc Uuml Yacute THORN szlig agrave aacute acirc atilde auml aring aelig ccedil egrave eacute "
     "ecirc euml igrave iacute icirc iuml eth ntilde ograve oacute ocirc otilde ouml divide oslash ugrave uacute ucirc "
     "uuml yacute thorn yuml"},
    {0x391,
     "Alpha Beta Gamma Delta Epsilon Zeta Eta Theta Iota Kappa Lambda Mu Nu Xi Omicron Pi Rho - Sigma Tau Upsilon Phi "
     "Chi Psi Omega"},
    {0x3B1,
     "alpha beta gamma delta epsilon zeta eta theta iota kappa lambda mu nu xi omicron pi rho sigmaf sigma tau upsilon "
     "phi chi psi omega"},
    {0x22, "quot"},
    {0x26, "amp apos"},
    {0x3C, "lt"},
    {0x3E, "gt"},
    {0x152, "OElig oelig"},
    {0x160, "Scaron scaron"},
    {0x178, "Yuml"},
    {0x192, "fnof"},
    {0x2C6, "circ"},
    {0x2DC, "tilde"},
    {0x3D1, "thetasym upsih"},
    {0x3D6, "piv"},
    {0x2002, "ensp emsp"},
    {0x2009, "thinsp"},
    {0x200C, "zwnj zwj"},
    {0x2013, "ndash mdash"},
    {0x2018, "lsquo rsquo sbquo"},
    {0x201C, "ldquo rdquo bdquo"},
    {0x2020, "dagger Dagger bull"},
    {0x2026, "hellip"},
    {0x2030, "permil"},
    {0x2032, "prime Prime"},
    {0x2039, "lsaquo rsaquo"},
    {0x203E, "oline"},
    {0x2044, "frasl"},
    {0x20AC, "euro"},
    {0x2111, "image"},
    {0x2118, "weierp"},
    {0x211C, "real"},
    {0x2122, "trade"},
    {0x2135, "alefsym"},
    {0x2190, "larr uarr rarr darr harr"},
    {0x21B5, "crarr"},
    {0x21D0, "lArr uArr rArr dArr hArr"},
    {0x2200,
     "forall - part exist - empty - nabla isin notin "
     "- ni"},
    {0x220F, "prod - sum minus"},
    {0x2217, "lowast"},
    {0x221A, "radic - - prop infin - ang"},
    {0x2227, "and or cap cup int"},
    {0x2234, "there4"},
    {0x223C, "sim"},
    {0x2245, "cong"},
    {0x2248, "asymp"},
    {0x2260, "ne equiv - - le ge"},
    {0x2282, "sub sup nsub - sube supe"},
    {0x2295, "oplus - otimes"},
    {0x22A5, "perp"},
    {0x22C5, "sdot"},
    {0x2308, "lceil rceil lfloor rfloor"},
    {0x2329, "lang rang"},
    {0x25CA, "loz"},
    {0x2660, "spades - - clubs - hearts diams"},
};
constexpr std::size_t LONGEST_NAME = 8;     // thetasym
constexpr std::size_t LONGEST_NUMBER = 10;  // digits, leading zeros among them

std::map<std::string_view, char32_t> named_characters() {
    std::map<std::string_view, char32_t> characters;
    for (const Run& run : RUNS) {
        char32_t c = run.first;
        for (std::string_view rest = run.names; !rest.empty(); ++c) {
            const std::size_t end = std::min(rest.find(' '), rest.size());
            if (rest.substr(0, end) != "-")
                characters.emplace(rest.substr(0, end), c);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return characters;
}

struct Reference {
    char32_t character = 0;  // 0: no reference
    std::size_t length = 0;  // with "&" and ";"
};

char32_t character(unsigned number) {
    const bool none = number == 0 || number > 0x10FFFF || (number >= 0xD800 && number <= 0xDFFF);
    return none ? 0xFFFD : number;
}

Reference numeric_reference(std::string_view text) {
    const bool hexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
    const std::string_view digits = text.substr(hexadecimal ? 3 : 2, LONGEST_NUMBER);
    unsigned number = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, hexadecimal ? 16 : 10);
    if (end == digits.data())
        return {};
    auto length = static_cast<std::size_t>(end - text.data());
    if (length < text.size() && text[length] == ';')
        ++length;
    return {character(error == std::errc() ? number : 0), length};
}

Reference named_reference(std::string_view text) {
    static const std::map<std::string_view, char32_t> characters = named_characters();
    const std::size_t end = text.substr(0, LONGEST_NAME + 2).find(';');
    if (end == std::string_view::npos)
        return {};
    const auto found = characters.find(text.substr(1, end - 1));
    return found == characters.end() ? Reference{} : Reference{found->second, end + 1};
}

// Pages mean Windows-1252 by the numbers 80 to 9F, which are control characters.
void append(std::string& text, char32_t c) {
    if (c >= 0x80 && c < 0xA0)
        text += utf8_from_windows1252(std::string(1, static_cast<char>(c)));
    else
        append_utf8(text, c);
}

}  // namespace

std::string resolve_references(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('&'), text.size());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const Reference found = text.starts_with("&#") ? numeric_reference(text) : named_reference(text);
        if (found.length == 0)
            result.push_back('&');
        else
            append(result, found.character);
        text.remove_prefix(std::max<std::size_t>(found.length, 1));
    }
    return result;
}

}  // namespace tavo::chm

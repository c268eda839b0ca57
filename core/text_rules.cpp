#include "core/text_rules.h"

#include <algorithm>

#include "core/encoding.h"

namespace tavo {

namespace {

constexpr int FIRST_MENU = 1, LAST_MENU = 8;

}  // namespace

std::vector<int> MnemonicGroup::all() const {
    std::vector<int> result = numbers;
    for (int menu = FIRST_MENU; bar && menu <= LAST_MENU; ++menu)
        result.push_back(menu);
    return result;
}

const std::vector<MnemonicGroup>& mnemonic_groups() {
    static const std::vector<MnemonicGroup> groups{
        {"menu bar", true, {}},
        {"mnuarchivos", false, {9, 10}},
        {"mnudatos", false, {11, 14, 190}},
        {"mnuunidades", false, {12, 13}},
        {"mnugraficos", false, {15, 16}},
        {"mnucalcular", false, {17, 18, 19, 20}},
        {"mnusimulaciones", false, {21}},
        {"mnutablas", false, {22, 23, 24}},
        {"mnuidioma", false, {29}},
        {"mnuayudas", false, {30, 31}},
        {"main window, context menu", false, {530, 531}},
        {"frmdatos without a plot", true, {54, 55}},
        {"frmdatos with a plot", true, {54, 58}},
        {"frmescala", false, {65, 151, 152, 153, 154, 155, 156}},
        {"frmcalculos", true, {54, 70, 71, 72, 73, 127}},
        {"frmoperaciones", true, {54, 70, 71, 72, 73}},
        {"frmgases", true, {54, 207, 208, 209, 210, 230, 720}},
        {"frmcompuestos", true, {65, 142}},
        {"frmtabla", true, {770, 772, 774}},
        {"frmtablaay", true, {770, 772}},
        {"frmIdioma", true, {9, 37, 38}},
        {"frmayuda", false, {750, 751, 752}},
        {"frmAbout", false, {64}},
        {"print preview", false, {810, 811, 812, 813, 819}},
    };
    return groups;
}

std::string mnemonic(std::string_view text) {
    for (std::size_t at = text.find('&'); at != std::string_view::npos && at + 1 < text.size();
         at = text.find('&', at + 2)) {
        const std::string_view rest = text.substr(at + 1);
        if (rest.front() != '&' && rest.front() != ' ')
            return lower(rest.substr(0, std::max<std::size_t>(first_character(rest).length, 1)));
    }
    return {};
}

std::vector<char> arguments(std::string_view text) {
    std::vector<char> found;
    for (std::size_t at = text.find('%'); at != std::string_view::npos && at + 1 < text.size();
         at = text.find('%', at + 1)) {
        if (text[at + 1] >= '1' && text[at + 1] <= '9')
            found.push_back(text[at + 1]);
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace tavo

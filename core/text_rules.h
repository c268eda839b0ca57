#pragma once
// Rules that the texts of a language have to keep among themselves.

#include <string>
#include <string_view>
#include <vector>

namespace tavo {

/// Texts whose mnemonics are reached together, so that their letters have to differ.
struct MnemonicGroup {
    std::string_view name;
    bool bar;  // the window lives inside the main window, whose menu bar answers to Alt as well
    std::vector<int> numbers;

    /// With the texts of the menu bar where they count.
    std::vector<int> all() const;
};

/// Every text with a mnemonic is in one of them.
const std::vector<MnemonicGroup>& mnemonic_groups();

/// Lower-case character after the "&" of a UTF-8 text; empty where there is none. "&&", and an "&" before a blank, are
/// meant as they are.
std::string mnemonic(std::string_view text);

/// The values that a text takes, %1 to %9, ascending, each as often as it stands there.
std::vector<char> arguments(std::string_view text);

}  // namespace tavo

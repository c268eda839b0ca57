#pragma once
// Units of measure. All computation is in mol, K, atm, l and atm l; a unit is named by its exact label.

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "core/slots.h"

namespace tavo::Global {

enum class UnitFamily { Energy, Amount, Density, Pressure, Temperature, Volume };

/// Labels of a family in the order in which a unit label steps through them; the first is the base unit
/// (UTF-8; the ordinal sign U+00BA in temperatures).
std::span<const std::string_view> unit_labels(UnitFamily family);

/// Label that follows `label` in its family, wrapping; the base unit for an unknown label.
std::string_view next_unit(UnitFamily family, std::string_view label);

// Equal labels return x unchanged; otherwise a label that is not of the family gives 0.
double convertirenergia(double x, std::string_view from, std::string_view to);
double convertirdensidad(double x, std::string_view from, std::string_view to);
double convertirpresion(double x, std::string_view from, std::string_view to);
double convertirtemperatura(double x, std::string_view from, std::string_view to);
double convertirvolumen(double x, std::string_view from, std::string_view to);
/// mol <-> g with the molar mass of the gas in slot 0. "g" to "mol" with a molar mass of 0 throws FloatingPointError.
double convertircantidad(double x, std::string_view from, std::string_view to, const SlotTable& table);

/// Keystroke filter of every numeric box: sets key_code to 0 to swallow the key. Lets through digits, one ".",
/// backspace (8) and return (13); at max_length only backspace; in a text that already holds two ".", nothing.
void teclanumerica(std::int16_t max_length, std::int16_t& key_code, std::string_view text);

}  // namespace tavo::Global

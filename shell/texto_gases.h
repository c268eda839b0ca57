#pragma once
// Gases of a bad database in the user's language.

#include <QString>

#include <cstdint>
#include <string>

#include "core/errors.h"
#include "core/gas_listing.h"
#include "core/slots.h"

class ApplicationState;

/// A gas in a list: its name on one line of bounded length, or its number where it has none.
QString gas_en_lista(const ApplicationState& estado, std::int16_t gas, const std::string& name);

/// "[G5] CO2: falta «tc»".
QString texto_de_problema(const ApplicationState& estado, const tavo::Global::GasProblem& problem);

/// Why the loader refused the gas of a slot.
QString motivo_de_carga(const ApplicationState& estado, const tavo::EquationSlot& slot, const tavo::Error& error);

#pragma once
// A calculation's outcome in the user's language: one or two sentences.

#include <QString>

#include "controls/texto.h"
#include "windows/calc/calculos_logica.h"

/// Kind of state; where P and T leave several volumes, which root is shown and which phase is stable. Volumes are in
/// the unit shown.
QString texto_estado(const Texto& texto, const calculos::Output& salida, const calculos::SlotTable& table,
                     const QString& volume_unit, const QString& pressure_unit);

/// Why there is no answer.
QString texto_fallo(const Texto& texto, const calculos::Unsolvable& fallo, const QString& volume_unit);

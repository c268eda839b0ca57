#pragma once
// Numbers of the calculations window as its boxes and its table show them.

#include <QString>

#include "core/units.h"

namespace presentar {

/// Shown where a number is not known.
inline const QString DESCONOCIDO = QStringLiteral("-----");

inline constexpr const char* CUATRO_DECIMALES = "####0.0000";
inline constexpr const char* DOS_DECIMALES = "###0.00";

/// From the family's base unit; not for amounts, which need a molar mass.
double en_unidad(tavo::Global::UnitFamily family, double value, const QString& unit);

QString formato(double value, const char* pattern);

/// 15 significant digits.
QString cifras(double value);
/// The same with the unit.
QString cifras(double value, const QString& unit);

/// Two decimals leave nothing of the vapour pressure: an enthalpy derived from it would say more than it does.
bool presion_nula(double pv, const QString& pressure_unit);

}  // namespace presentar

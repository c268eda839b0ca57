#include "windows/calc/presentar.h"

#include <string>

#include "core/numtext.h"

namespace presentar {

namespace {

using Conversion = double (*)(double, std::string_view, std::string_view);

Conversion conversion(tavo::Global::UnitFamily family) {
    using tavo::Global::UnitFamily;
    switch (family) {
        case UnitFamily::Energy:
            return tavo::Global::convertirenergia;
        case UnitFamily::Density:
            return tavo::Global::convertirdensidad;
        case UnitFamily::Pressure:
            return tavo::Global::convertirpresion;
        case UnitFamily::Temperature:
            return tavo::Global::convertirtemperatura;
        case UnitFamily::Volume:
            return tavo::Global::convertirvolumen;
        case UnitFamily::Amount:
            break;
    }
    return [](double x, std::string_view, std::string_view) { return x; };
}

}  // namespace

double en_unidad(tavo::Global::UnitFamily family, double value, const QString& unit) {
    return conversion(family)(value, tavo::Global::unit_labels(family).front(), unit.toStdString());
}

QString formato(double value, const char* pattern) {
    return QString::fromStdString(tavo::Format(value, pattern));
}

QString cifras(double value) {
    return QString::fromStdString(tavo::to_text(value));
}

QString cifras(double value, const QString& unit) {
    return cifras(value) + u' ' + unit;
}

bool presion_nula(double pv, const QString& pressure_unit) {
    return formato(en_unidad(tavo::Global::UnitFamily::Pressure, pv, pressure_unit), "##0.00") == u"0.00";
}

}  // namespace presentar

#include "controls/texto_estado.h"

#include <QStringList>

#include "core/numtext.h"

using calculos::Phase;
using calculos::Reason;
using calculos::Root;
using calculos::Variable;

namespace {

constexpr int DIGITS = 4;

QString number(double x) {
    return QString::fromStdString(tavo::significant(x, DIGITS));
}

/// A quantity in the unit shown.
QString shown(Variable variable, double x, const QString& unit, const calculos::SlotTable& table) {
    return number(calculos::from_base(variable, x, unit.toStdString(), table));
}

QString percent(double fraction) {
    return QString::fromStdString(tavo::Format(100.0 * fraction, "##0.0"));
}

QString phase_text(const Texto& texto, const calculos::Output& salida) {
    switch (salida.phase) {
        case Phase::IdealGas:
            return texto(600, QStringLiteral("Gas ideal: este modelo no tiene líquido ni punto crítico."));
        case Phase::Gas:
            return texto(601, QStringLiteral("Gas."));
        case Phase::Liquid:
            return texto(602, QStringLiteral("Líquido."));
        case Phase::Supercritical:
            return texto(603, QStringLiteral("Fluido supercrítico: la temperatura y la presión no están por debajo de "
                                             "las críticas."));
        case Phase::Fluid:
            return texto(604, QStringLiteral("Fluido: está por debajo de la temperatura crítica, pero el modelo no da "
                                             "aquí líquido y gas en equilibrio."));
        case Phase::SuperheatedLiquid:
            if (salida.p < 0.0)
                return texto(
                    614,
                    QStringLiteral("Líquido estirado, a presión negativa: metaestable. Con este volumen lo estable es "
                                   "líquido y gas juntos a Pv\u00A0=\u00A0%1\u00A0%2, con el "
                                   "%3\u00A0% de la cantidad en el líquido."));
            return texto(605, QStringLiteral("Líquido sobrecalentado, metaestable. Con este volumen lo estable es "
                                             "líquido y gas juntos a Pv\u00A0=\u00A0%1\u00A0%2, con el "
                                             "%3\u00A0% de la cantidad en el líquido."));
        case Phase::SupersaturatedVapour:
            return texto(607, QStringLiteral("Vapor sobresaturado, metaestable. Con este volumen lo estable es "
                                             "líquido y gas juntos a Pv\u00A0=\u00A0%1\u00A0%2, con el "
                                             "%3\u00A0% de la cantidad en el líquido."));
        case Phase::Unstable:
            break;
    }
    if (!salida.saturation)
        return texto(608, QStringLiteral("Estado inestable: aquí la presión del modelo crece con el volumen."));
    return texto(606, QStringLiteral("Estado inestable, dentro del bucle del modelo. Con este volumen lo estable es "
                                     "líquido y gas juntos a Pv\u00A0=\u00A0%1\u00A0%2, con el "
                                     "%3\u00A0% de la cantidad en el líquido."));
}

}  // namespace

QString texto_estado(const Texto& texto, const calculos::Output& salida, const calculos::SlotTable& table,
                     const QString& volume_unit, const QString& pressure_unit) {
    QStringList sentences{phase_text(texto, salida)};
    if (calculos::two_phase(salida.phase) && salida.saturation)
        sentences[0] = sentences[0].arg(shown(Variable::Pressure, salida.saturation->pv, pressure_unit, table),
                                        pressure_unit, percent(salida.liquid_fraction));
    if (salida.root == Root::Liquid)
        sentences << texto(609, QStringLiteral("Este volumen es la raíz del líquido."));
    else if (salida.root == Root::Gas)
        sentences << texto(610, QStringLiteral("Este volumen es la raíz del gas."));
    if (salida.stable_volume) {
        const bool liquid = *salida.stable_volume < salida.v;
        const QString sentence =
            liquid
                ? texto(611, QStringLiteral("A esta presión la fase estable es el líquido (V\u00A0=\u00A0%1\u00A0%2)."))
                : texto(612, QStringLiteral("A esta presión la fase estable es el gas (V\u00A0=\u00A0%1\u00A0%2)."));
        sentences << sentence.arg(shown(Variable::Volume, *salida.stable_volume, volume_unit, table), volume_unit);
    }
    return sentences.join(QLatin1Char(' '));
}

QString texto_fallo(const Texto& texto, const calculos::Unsolvable& fallo, const QString& volume_unit) {
    const auto with_volume = [&](const QString& sentence) {
        return sentence.arg(shown(Variable::Volume, fallo.value().value_or(0.0), volume_unit, {}), volume_unit);
    };
    switch (fallo.reason()) {
        case Reason::NoGas:
            return texto(557, QStringLiteral("Elija un gas"));
        case Reason::BadGas:
            return texto(613, QStringLiteral("Faltan datos de este gas para el modelo elegido. Elija otro modelo u "
                                             "otro gas."));
        case Reason::SmallMu:
            return texto(93, QString());
        case Reason::NoMolarMass:
            return texto(615, QStringLiteral("Sin la masa molar de un gas, los gramos no se convierten en moles: elija "
                                             "un gas o dé la cantidad en moles."));
        case Reason::InsideCovolume:
            return with_volume(texto(616, QStringLiteral("El volumen debe ser mayor que %1\u00A0%2, el que ocupan las "
                                                         "propias moléculas (covolumen).")));
        case Reason::NoVolume:
            return texto(617, QStringLiteral("Con este modelo ningún volumen da esa presión a esa temperatura."));
        case Reason::VolumeNotReached:
            return with_volume(texto(618, QStringLiteral("El cálculo, que parte del volumen del gas ideal, no llega al "
                                                         "volumen buscado. Esa presión la da "
                                                         "V\u00A0=\u00A0%1\u00A0%2.")));
        case Reason::NoTemperature:
            return texto(619, QStringLiteral("Con este modelo ninguna temperatura por encima de 0 K da esa presión con "
                                             "ese volumen."));
        case Reason::NotFinite:
            break;
    }
    return texto(527, QStringLiteral("El cálculo no da un resultado finito."));
}

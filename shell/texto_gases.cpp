#include "shell/texto_gases.h"

#include <algorithm>

#include "shell/application_state.h"
#include "shell/textos.h"

using tavo::Global::Flaw;
using tavo::Global::GasProblem;

namespace {

constexpr qsizetype LONGEST_NAME = 120, LONGEST_VALUE = 40;

/// One line that can be shown: a control character would break it or be invisible.
QString legible(const std::string& text, qsizetype longest) {
    const auto bytes = static_cast<qsizetype>(std::min(text.size(), static_cast<std::size_t>(4 * longest)));
    QString line = QString::fromUtf8(text.data(), bytes);
    for (QChar& c : line) {
        if (c.category() == QChar::Other_Control)
            c = QChar::ReplacementCharacter;
    }
    return line.size() > longest ? line.left(longest - 1) + QChar(0x2026) : line;
}

QString reason(const ApplicationState& estado, const GasProblem& problem) {
    const QString key = QString::fromStdString(problem.key);
    const QString value = legible(problem.value, LONGEST_VALUE);
    switch (problem.flaw) {
        case Flaw::Count:
            return estado.texto(747, QStringLiteral("«n» no es un número de gases: «%1». Se cuentan las secciones: %2"))
                .arg(value, QString::number(problem.count));
        case Flaw::NotCounted:
            return con_valor(estado.texto(748, QStringLiteral("no se muestra, porque «n» es %1")),
                             QString::number(problem.count));
        case Flaw::NoSection:
            return estado.texto(706, QStringLiteral("falta su sección"));
        case Flaw::Unreachable:
            return estado.texto(746, QStringLiteral("no se puede leer: antes hay una línea con solo «[»"));
        case Flaw::BadLine:
            return estado.texto(707, QStringLiteral("hay una línea sin «=»"));
        case Flaw::Missing:
            return con_valor(estado.texto(708, QStringLiteral("falta «%1»")), key);
        case Flaw::NotANumber:
            return estado.texto(709, QStringLiteral("«%1» no es un número: «%2»")).arg(key, value);
        case Flaw::NotPositive:
            break;
    }
    return estado.texto(745, QStringLiteral("«%1» debe ser mayor que 0: «%2»")).arg(key, value);
}

}  // namespace

QString gas_en_lista(const ApplicationState& estado, std::int16_t gas, const std::string& name) {
    if (name.empty())
        return con_valor(estado.texto(705, QStringLiteral("(gas %1 sin nombre)")), QString::number(gas));
    return legible(name, LONGEST_NAME);
}

QString texto_de_problema(const ApplicationState& estado, const GasProblem& problem) {
    const QAbstractItemModel* names = estado.gas_names();
    QString entry = problem.gas > 0 ? QStringLiteral("[G%1]").arg(problem.gas) : QStringLiteral("[General]");
    if (const QString name = names->index(problem.gas - 1, 0).data().toString(); !name.isEmpty())
        entry += u' ' + name;
    return estado.texto(441, QStringLiteral("%1: %2")).arg(entry, reason(estado, problem));
}

QString motivo_de_carga(const ApplicationState& estado, const tavo::EquationSlot& slot, const tavo::Error& error) {
    const auto problem = tavo::Global::problem_of(estado.data(), slot.gas_number);
    const bool exponent = slot.equation == tavo::EquationOfState::FreeExponent &&
                          dynamic_cast<const tavo::InvalidArgument*>(&error) != nullptr;
    if (exponent && !(problem && is_unreadable(*problem)))
        return estado.texto(93);
    return problem ? texto_de_problema(estado, *problem) : QString::fromUtf8(error.what());
}

#pragma once
// Who made the program, for the splash and the About window.

#include "shell/application_state.h"

namespace creditos {

inline const QString DIRECCION = QStringLiteral("https://tavo-gas.example");

inline QString programa(const ApplicationState& estado) {
    return estado.texto(535, QStringLiteral("Programa: el equipo de TAVO-GAS"));
}
inline QString fisica(const ApplicationState& estado) {
    return estado.texto(536, QStringLiteral("Física, datos y textos: el equipo de TAVO-GAS"));
}
inline QString departamento(const ApplicationState& estado) {
    return estado.texto(830, QStringLiteral("Departamento de programas didácticos"));
}

}  // namespace creditos

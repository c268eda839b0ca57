#pragma once
// The one door to message boxes. The program shows a modal QMessageBox; tests record and answer.

#include <QString>

#include <optional>

/// Button that ended a box.
enum class Respuesta { Aceptar, Si, No, Cancelar };

/// Style numbers: 0 plain, 16 critical, 48 exclamation, 64 information (all with OK), 51 exclamation with yes, no and
/// cancel (a question), 36 question with yes and no, no being the answer to return and escape.
inline bool es_pregunta(int estilo) {
    return (estilo & 0x0F) != 0;
}

class Mensajes {
public:
    virtual ~Mensajes() = default;
    /// An empty title shows the program's name.
    virtual Respuesta mostrar(const QString& texto, int estilo, const QString& titulo) = 0;
    /// The input box: asks for a line of text and proposes one. Empty when the user gave up, and where nobody answers.
    virtual std::optional<QString> pedir(const QString& texto, const QString& titulo, const QString& propuesta);
};

inline std::optional<QString> Mensajes::pedir(const QString&, const QString&, const QString&) {
    return std::nullopt;
}

#pragma once
// Message boxes on the screen.

#include "shell/mensajes.h"

#include <exception>

class ApplicationState;

class MensajesQt final : public Mensajes {
public:
    /// A modal box in front of the active window, with the icon and buttons of its style.
    Respuesta mostrar(const QString& texto, int estilo, const QString& titulo) override;
    std::optional<QString> pedir(const QString& texto, const QString& titulo, const QString& propuesta) override;
};

/// What the user reads about an error: a sentence in the active language, then the detail on its own line. The sentence
/// is Spanish while the language table cannot be read.
QString mensaje_de_error(const std::exception& error, const ApplicationState& estado);

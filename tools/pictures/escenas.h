#pragma once
// The windows of the program, each in a state that tells what it is for.

#include <QImage>
#include <QStringList>

#include <functional>

#include "shell/application_state.h"
#include "shell/frmprincipal.h"

/// Shows the windows one after the other inside the main window and hands out their pictures.
class Escenas {
public:
    using Tomar = std::function<void(const QString& name, const QImage& picture)>;

    Escenas(ApplicationState& estado, frmprincipal& principal, Tomar tomar);

    /// All windows that the program has, under their names. Throws std::runtime_error where a control is missing.
    void retratar();
    /// The help's own viewer.
    void retratar_ayuda(QWidget* visor);

private:
    void condiciones(QWidget* ventana);
    void grafico();
    void calculos(QWidget* ventana);
    void laboratorio(QWidget* ventana);
    void gases(QWidget* ventana);
    void tomar_ventana(const char* name, const std::function<void(QWidget*)>& preparar = {}, bool keep = false);

    ApplicationState& estado_;
    frmprincipal& principal_;
    Tomar tomar_;
};

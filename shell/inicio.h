#pragma once
// Start-up from the splash to the main window, in the program's order.

#include <QTranslator>

#include <functional>
#include <memory>

#include "shell/application_state.h"
#include "shell/frmSplash.h"
#include "shell/frmprincipal.h"
#include "shell/mensajes.h"

class Inicio final : public QObject {
    Q_OBJECT
public:
    /// `ayuda` is the main window's.
    Inicio(ApplicationState& estado, Mensajes& mensajes, std::function<void(const QString& ventana)> ayuda = {});
    ~Inicio() override;

    /// Completes what a stopped rewrite left, sets the decimal point, reads the languages, then shows the splash, which
    /// is followed by the main window, or the main window at once. Throws FileNotFound and what else reading throws;
    /// what the main window's loading throws after the splash comes as `fallido`.
    void empezar(bool splash);
    frmprincipal* principal() const { return principal_.get(); }

signals:
    void fallido(std::exception_ptr error);

private:
    void mostrar_principal();

    ApplicationState& estado_;
    Mensajes& mensajes_;
    std::function<void(const QString& ventana)> ayuda_;
    QTranslator botones_;  // Qt's own texts in the active language
    std::unique_ptr<frmSplash> splash_;
    std::unique_ptr<frmprincipal> principal_;
};

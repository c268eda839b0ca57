#include "shell/aplicacion.h"

#include <stdexcept>

Aplicacion::Aplicacion(int& argc, char** argv) : QApplication(argc, argv) {}

bool Aplicacion::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        if (al_fallar)
            al_fallar(error);
    } catch (...) {
        if (al_fallar)
            al_fallar(std::runtime_error("unknown error"));
    }
    return false;
}

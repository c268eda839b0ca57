#pragma once
// The application object: what a handler throws ends in a message box, not the program.

#include <QApplication>

#include <exception>
#include <functional>

class Aplicacion final : public QApplication {
public:
    Aplicacion(int& argc, char** argv);

    /// Shows what a handler let through; the event loop goes on afterwards.
    std::function<void(const std::exception&)> al_fallar;

    bool notify(QObject* receiver, QEvent* event) override;
};

#pragma once
// The one door to other programs of the system. Tests record what was started.

#include <QString>
#include <QStringList>

class Exterior {
public:
    virtual ~Exterior() = default;
    /// Shows an address in the system's browser; false where there is none.
    virtual bool abrir_direccion(const QString& direccion) = 0;
    /// Full path of a program of this name; empty where it is not installed.
    virtual QString buscar_programa(const QString& nombre) = 0;
    /// Starts a program that goes on by itself; false when it does not start.
    virtual bool ejecutar(const QString& programa, const QStringList& argumentos) = 0;
};

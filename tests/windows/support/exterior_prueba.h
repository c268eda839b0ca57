#pragma once
// Other programs of a test: records what was started.

#include "controls/exterior.h"

class ExteriorPrueba final : public Exterior {
public:
    QStringList instalados;  // names of programs
    bool navegador = true;
    bool arranca = true;   // programs start
    QStringList iniciado;  // "path argument ...", or the address
    bool abrir_direccion(const QString& direccion) override {
        if (navegador)
            iniciado << direccion;
        return navegador;
    }
    QString buscar_programa(const QString& nombre) override {
        return instalados.contains(nombre) ? QStringLiteral("/bin/") + nombre : QString();
    }
    bool ejecutar(const QString& programa, const QStringList& argumentos) override {
        if (arranca)
            iniciado << (QStringList(programa) + argumentos).join(u' ');
        return arranca;
    }
};

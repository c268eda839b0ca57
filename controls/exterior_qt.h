#pragma once
// The program's way to other programs.

#include "controls/exterior.h"

class ExteriorQt final : public Exterior {
public:
    bool abrir_direccion(const QString& direccion) override;
    QString buscar_programa(const QString& nombre) override;
    bool ejecutar(const QString& programa, const QStringList& argumentos) override;
};

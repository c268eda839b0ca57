#pragma once
// The doors of a program whose user is a benchmark: nobody reads a box, nobody chooses a file.

#include "controls/elegir_archivo.h"
#include "shell/mensajes.h"

class SinMensajes final : public Mensajes {
public:
    Respuesta mostrar(const QString&, int, const QString&) override { return Respuesta::Aceptar; }
};

class SinArchivos final : public ElegirArchivo {
public:
    QString guardar(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
};

#pragma once
// The doors of a program whose user is a benchmark: nobody reads a box or chooses a file, nothing is
// printed or started.

#include "controls/elegir_archivo.h"
#include "controls/exterior.h"
#include "controls/impresora.h"
#include "shell/mensajes.h"

class SinMensajes final : public Mensajes {
public:
    Respuesta mostrar(const QString&, int, const QString&) override { return Respuesta::Aceptar; }
};

class SinArchivos final : public ElegirArchivo {
public:
    QString guardar(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
};

class SinImpresora final : public Impresora {
public:
    void imprimir(QWidget*, const Documento&) override {}
};

class SinExterior final : public Exterior {
public:
    bool abrir_direccion(const QString&) override { return false; }
    QString buscar_programa(const QString&) override { return {}; }
    bool ejecutar(const QString&, const QStringList&) override { return false; }
};

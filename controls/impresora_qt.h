#pragma once
// The program's printer: a preview of our own, then the system's dialog.

#include "controls/elegir_archivo.h"
#include "controls/impresora.h"
#include "controls/texto.h"
#include "shell/mensajes.h"

class ImpresoraQt final : public Impresora {
public:
    /// What is referred to outlives the printer.
    ImpresoraQt(Mensajes& mensajes, ElegirArchivo& archivos, Texto texto);
    void imprimir(QWidget* padre, const Documento& documento) override;

private:
    Mensajes& mensajes_;
    ElegirArchivo& archivos_;
    Texto texto_;
};

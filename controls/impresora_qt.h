#pragma once
// The program's printer.

#include "controls/impresora.h"

class ImpresoraQt final : public Impresora {
public:
    void imprimir(QWidget* padre, const Documento& documento) override;
};

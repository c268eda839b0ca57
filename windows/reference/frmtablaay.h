#pragma once
// Physical constants in several units.

#include "windows/reference/ventana_tabla.h"

/// Grid `gridtermo` of ten constants, their names in its fixed column 0.
class frmtablaay : public VentanaTabla {
    Q_OBJECT
public:
    frmtablaay(ApplicationState& estado, Impresora& impresora, QWidget* padre = nullptr);

private:
    void Form_Load();
};

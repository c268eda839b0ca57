#pragma once
// Critical constants and other data of all gases.

#include "windows/reference/ventana_tabla.h"

class TablaCrit;

/// Grid `gridcrit`, a row for each gas of the database in its order.
class frmtabla : public VentanaTabla {
    Q_OBJECT
public:
    frmtabla(ApplicationState& estado, Impresora& impresora, QWidget* padre = nullptr);

private:
    void Form_Load();
    void gases_Change();

    TablaCrit* table_;
};

#pragma once
// A file chooser that answers with a prepared name.

#include "controls/elegir_archivo.h"

class ElegirPrueba final : public ElegirArchivo {
public:
    QString respuesta;
    QString propuesta;  // the last name offered
    QString guardar(QWidget*, const QString&, const QString& offered, const QString&) override {
        propuesta = offered;
        return respuesta;
    }
};

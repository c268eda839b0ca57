#pragma once
// The one list of the program's windows.

#include "controls/elegir_archivo.h"
#include "controls/exterior.h"
#include "controls/impresora.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"

/// The doors to what lies outside the program; they outlive every window.
struct Puertas {
    Mensajes& mensajes;
    ElegirArchivo& archivos;
    Impresora& impresora;
    Exterior& exterior;
};

void register_windows(ApplicationState& estado, const Puertas& puertas);

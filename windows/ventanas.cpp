#include "windows/ventanas.h"

#include "shell/frmAbout.h"
#include "shell/frmIdioma.h"
#include "windows/calc/frmcalculos.h"
#include "windows/gasedit/frmcompuestos.h"
#include "windows/gasedit/frmgases.h"
#include "windows/lab/frmoperaciones.h"
#include "windows/plots/frmdatos.h"
#include "windows/plots/frmescala.h"
#include "windows/plots/frmgraficos.h"
#include "windows/reference/frmtabla.h"
#include "windows/reference/frmtablaay.h"
#include "windows/reference/frmtermometro.h"

void register_windows(ApplicationState& estado, const Puertas& puertas) {
    const auto add = [&estado](const char* name, ApplicationState::Factory factory) {
        estado.register_window(QLatin1String(name), std::move(factory));
    };
    add("frmAbout", [&estado, puertas] { return new frmAbout(estado, puertas.mensajes, puertas.exterior); });
    add("frmIdioma", [&estado, puertas] { return new frmIdioma(estado, puertas.mensajes, puertas.impresora); });
    add("frmcalculos", [&estado, puertas] { return new frmcalculos(estado, puertas.mensajes); });
    add("frmcompuestos", [&estado, puertas] { return new frmcompuestos(estado, puertas.mensajes); });
    add("frmdatos", [&estado, puertas] { return new frmdatos(estado, puertas.mensajes); });
    add("frmescala", [&estado, puertas] { return new frmescala(estado, puertas.mensajes); });
    add("frmgases", [&estado, puertas] { return new frmgases(estado, puertas.mensajes); });
    add("frmgraficos",
        [&estado, puertas] { return new frmgraficos(estado, puertas.mensajes, puertas.archivos, puertas.impresora); });
    add("frmoperaciones", [&estado, puertas] { return new frmoperaciones(estado, puertas.mensajes); });
    add("frmtabla", [&estado, puertas] { return new frmtabla(estado, puertas.impresora); });
    add("frmtablaay", [&estado, puertas] { return new frmtablaay(estado, puertas.impresora); });
    add("frmtermometro", [&estado] { return new frmtermometro(estado); });
}

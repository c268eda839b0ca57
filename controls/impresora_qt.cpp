#include "controls/impresora_qt.h"

#include <utility>

#include "controls/elegir_impresora.h"
#include "controls/vista_previa.h"

ImpresoraQt::ImpresoraQt(Mensajes& mensajes, ElegirArchivo& archivos, Texto texto)
    : mensajes_(mensajes), archivos_(archivos), texto_(std::move(texto)) {}

void ImpresoraQt::imprimir(QWidget* padre, const Documento& documento) {
    ElegirImpresoraQt impresoras;
    VistaPrevia(documento, {mensajes_, archivos_, impresoras, texto_}, padre).exec();
}

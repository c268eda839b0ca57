#include "controls/impresora_qt.h"

#include <QPrintPreviewDialog>
#include <QPrinter>

void ImpresoraQt::imprimir(QWidget* padre, const Documento& documento) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(documento.apaisado ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setPageMargins(QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter);
    printer.setDocName(documento.titulo);
    QPrintPreviewDialog preview(&printer, padre);
    preview.setWindowTitle(documento.titulo);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&documento](QPrinter* paper) { documento.pintar(*paper); });
    preview.exec();
}

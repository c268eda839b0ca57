#include "controls/elegir_impresora.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

bool ElegirImpresoraQt::hay() {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

bool ElegirImpresoraQt::elegir(QWidget* padre, QPrinter& printer, int pagina) {
    QPrintDialog dialog(&printer, padre);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);  // the preview's own way to a PDF leaves no half files
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (printer.printRange() == QPrinter::CurrentPage)
        printer.setFromTo(pagina, pagina);
    return true;
}

#pragma once
// Prints plain text in "Courier New": lines cut at blanks, pages numbered.

#include <QString>
#include <QStringList>

#include "controls/impresora.h"

class ApplicationState;

namespace imprimir {

/// Document of these lines: about 85 characters fit a line of an upright A4 page, 130 of a sideways one. A line that is
/// wider than the page is cut at blanks; ".../..." ends each piece that goes on. The footer of a page is "Página: "
/// (language string 400) and its number in the format "###". `titulo` names the document, it is not printed;
/// `cabecera` is printed at the top of every page, above the lines.
Documento documento(const ApplicationState& estado, const QString& titulo, const QStringList& lineas,
                    bool apaisado = false, const QStringList& cabecera = {});

/// Rows of cells as lines with their columns aligned, the first row being the header (underlined by a line of "-").
/// Columns whose cells are numbers, or "-----", stand at the right.
QStringList alinear(const QList<QStringList>& filas);

}  // namespace imprimir

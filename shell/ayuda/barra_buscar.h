#pragma once
// The bar below a page that finds what is typed in it.

#include <QLabel>
#include <QWidget>

#include "controls/texto.h"
#include "shell/ayuda/caja_filtro.h"
#include "shell/ayuda/pagina_ayuda.h"

class BarraBuscar final : public QWidget {
    Q_OBJECT
public:
    /// Hidden to begin with.
    BarraBuscar(const Texto& texto, PaginaAyuda* pagina, QWidget* padre = nullptr);

    /// Shows the bar with its text selected.
    void abrir();
    /// Hides it; the page has the focus and no marks.
    void cerrar();
    /// The next (1) or previous (-1) place; opens the bar when nothing has been looked for.
    void ir(int step);
    /// Another page came: marks what is typed there too.
    void buscar();

private:
    void mostrar_lugar();

    Texto texto_;
    PaginaAyuda* pagina_;
    CajaFiltro* txtpagina;
    QLabel* lbpagina;
};

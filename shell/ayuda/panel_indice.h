#pragma once
// The keywords of a help file, with a box that leaves only those that hold what is typed.

#include <QLabel>
#include <QTreeWidget>

#include "controls/texto.h"
#include "shell/ayuda/caja_filtro.h"
#include "shell/chm/chm_file.h"

class PanelIndice final : public QWidget {
    Q_OBJECT
public:
    explicit PanelIndice(const Texto& texto, QWidget* padre = nullptr);

    void set_libro(const tavo::chm::ChmFile& libro);

signals:
    void pagina_elegida(const QString& page);

private:
    void filtrar();
    void elegir(const QTreeWidgetItem* item);

    Texto texto_;
    CajaFiltro* txtindice;
    QTreeWidget* lstindice;
    QLabel* lbindice;
};

#pragma once
// Search through all pages while one types; results with title and the words in their sentence.

#include <QLabel>
#include <QListWidget>

#include <optional>

#include "controls/texto.h"
#include "shell/ayuda/buscador.h"
#include "shell/ayuda/caja_filtro.h"

class PanelBusqueda final : public QWidget {
    Q_OBJECT
public:
    explicit PanelBusqueda(const Texto& texto, QWidget* padre = nullptr);

    /// The file outlives the panel, or the next call.
    void set_libro(const tavo::chm::ChmFile& libro);

signals:
    /// A result was chosen; the words are folded.
    void pagina_elegida(const QString& page, const QStringList& words);

private:
    void buscar();
    void elegir(const QListWidgetItem* item);

    Texto texto_;
    std::optional<Buscador> buscador_;
    CajaFiltro* txtbuscar;
    QLabel* lbbuscar;
    QListWidget* lstbuscar;
};

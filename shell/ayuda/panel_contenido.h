#pragma once
// The tree of a help file's pages; the page shown is always selected and in sight.

#include <QHash>
#include <QTreeWidget>

#include "shell/chm/chm_file.h"

class PanelContenido final : public QTreeWidget {
    Q_OBJECT
public:
    explicit PanelContenido(QWidget* padre = nullptr);

    void set_libro(const tavo::chm::ChmFile& libro);
    /// Selects the line of a page without telling; none where the contents do not hold it.
    void seleccionar(const QString& page);

signals:
    void pagina_elegida(const QString& page);

private:
    void add(QTreeWidgetItem* parent, const tavo::chm::Topic& topic, const tavo::chm::ChmFile& libro);
    void elegir(const QTreeWidgetItem* item);

    QHash<QString, QTreeWidgetItem*> lineas_;  // by page, the first of each
};

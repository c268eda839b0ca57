#include "shell/ayuda/panel_contenido.h"

#include <QSignalBlocker>

namespace {

constexpr int PAGE = Qt::UserRole;
constexpr int AIR = 8;  // between lines

}  // namespace

PanelContenido::PanelContenido(QWidget* padre) : QTreeWidget(padre) {
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // a tool tip has the end of a long title
    connect(this, &QTreeWidget::currentItemChanged, this, &PanelContenido::elegir);
    connect(this, &QTreeWidget::itemClicked, this, &PanelContenido::elegir);
}

void PanelContenido::set_libro(const tavo::chm::ChmFile& libro) {
    const QSignalBlocker silent(this);
    clear();
    lineas_.clear();
    for (const tavo::chm::Topic& topic : libro.contents())
        add(invisibleRootItem(), topic, libro);
}

void PanelContenido::add(QTreeWidgetItem* parent, const tavo::chm::Topic& topic, const tavo::chm::ChmFile& libro) {
    auto* item = new QTreeWidgetItem(parent, {QString::fromStdString(topic.title)});
    item->setData(0, PAGE, QString::fromStdString(topic.page));
    item->setToolTip(0, item->text(0));
    item->setSizeHint(0, QSize(0, fontMetrics().height() + AIR));
    const auto page = libro.find(topic.page.substr(0, topic.page.find('#')));
    if (page && !lineas_.contains(QString::fromStdString(*page)))
        lineas_.insert(QString::fromStdString(*page), item);
    for (const tavo::chm::Topic& child : topic.topics)
        add(item, child, libro);
}

void PanelContenido::seleccionar(const QString& page) {
    const QSignalBlocker silent(this);
    QTreeWidgetItem* item = lineas_.value(page);
    setCurrentItem(item);
    if (!item) {
        clearSelection();
        return;
    }
    item->setExpanded(true);
    scrollToItem(item);
}

void PanelContenido::elegir(const QTreeWidgetItem* item) {
    const QString page = item ? item->data(0, PAGE).toString() : QString();
    if (!page.isEmpty())
        emit pagina_elegida(page);
}

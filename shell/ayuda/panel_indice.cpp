#include "shell/ayuda/panel_indice.h"

#include <QApplication>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

#include "shell/ayuda/texto_plegado.h"
#include "shell/textos.h"

namespace {

constexpr int PAGE = Qt::UserRole, FOLDED = Qt::UserRole + 1;
constexpr int AIR = 6;  // between lines

QTreeWidgetItem* item_of(const QString& text, const std::string& page) {
    auto* item = new QTreeWidgetItem({text});
    item->setData(0, PAGE, QString::fromStdString(page));
    item->setData(0, FOLDED, plegado(text));
    item->setToolTip(0, text);
    item->setSizeHint(0, QSize(0, QFontMetrics(QApplication::font()).height() + AIR));
    return item;
}

/// A keyword of several pages has a line for each below it.
QTreeWidgetItem* item_of(const tavo::chm::Keyword& keyword) {
    const bool one = keyword.pages.size() == 1;
    auto* item = item_of(QString::fromStdString(keyword.word), one ? keyword.pages.front().page : std::string());
    for (const tavo::chm::Topic& topic : keyword.pages) {
        if (!one)
            item->addChild(item_of(QString::fromStdString(topic.title), topic.page));
    }
    return item;
}

}  // namespace

PanelIndice::PanelIndice(const Texto& texto, QWidget* padre)
    : QWidget(padre),
      texto_(texto),
      txtindice(new CajaFiltro(texto_(753, QStringLiteral("Escriba una parte de la palabra")))),
      lstindice(new QTreeWidget),
      lbindice(new QLabel) {
    txtindice->setObjectName(QStringLiteral("txtindice"));
    lstindice->setObjectName(QStringLiteral("lstindice"));
    lbindice->setObjectName(QStringLiteral("lbindice"));
    txtindice->set_lista(lstindice);
    lstindice->setAccessibleName(spoken(texto_(751, QStringLiteral("Índic&e"))));
    lstindice->setHeaderHidden(true);
    lstindice->setFrameShape(QFrame::NoFrame);
    lstindice->setRootIsDecorated(false);
    lbindice->setWordWrap(true);
    lbindice->setTextFormat(Qt::PlainText);
    lbindice->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 0);
    column->setSpacing(6);
    column->addWidget(txtindice);
    column->addWidget(lbindice);
    column->addWidget(lstindice, 1);
    setFocusProxy(txtindice);
    connect(txtindice, &QLineEdit::textChanged, this, &PanelIndice::filtrar);
    connect(txtindice, &QLineEdit::returnPressed, this, [this] { elegir(lstindice->currentItem()); });
    connect(lstindice, &QTreeWidget::itemClicked, this, &PanelIndice::elegir);
    connect(lstindice, &QTreeWidget::itemActivated, this, &PanelIndice::elegir);
}

void PanelIndice::set_libro(const tavo::chm::ChmFile& libro) {
    lstindice->clear();
    QList<QTreeWidgetItem*> items;
    for (const tavo::chm::Keyword& keyword : libro.index()) {
        if (!keyword.pages.empty())
            items.append(item_of(keyword));
    }
    std::ranges::stable_sort(items, {}, [](const QTreeWidgetItem* item) { return item->data(0, FOLDED).toString(); });
    lstindice->addTopLevelItems(items);
    lstindice->expandAll();
    filtrar();
}

void PanelIndice::filtrar() {
    const QString typed = plegado(txtindice->text().simplified());
    QTreeWidgetItem* first = nullptr;
    for (int i = 0; i < lstindice->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = lstindice->topLevelItem(i);
        const QString word = item->data(0, FOLDED).toString();
        item->setHidden(!word.contains(typed));
        if (!item->isHidden() &&
            (!first || (word.startsWith(typed) && !first->data(0, FOLDED).toString().startsWith(typed))))
            first = item;
    }
    lstindice->setCurrentItem(typed.isEmpty() ? nullptr : first);
    lbindice->setText(con_valor(texto_(756, QStringLiteral("No se encuentra: %1")), txtindice->text().simplified()));
    lbindice->setVisible(!first && !typed.isEmpty());
}

void PanelIndice::elegir(const QTreeWidgetItem* item) {
    if (item && item->data(0, PAGE).toString().isEmpty())
        item = item->child(0);
    if (item)
        emit pagina_elegida(item->data(0, PAGE).toString());
}

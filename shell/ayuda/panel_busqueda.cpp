#include "shell/ayuda/panel_busqueda.h"

#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QVBoxLayout>

#include "shell/textos.h"

namespace {

constexpr int PAGE = Qt::UserRole, SNIPPET = Qt::UserRole + 1, WORDS = Qt::UserRole + 2;
constexpr int LINES = 3, PADDING = 6;

/// Title in strong letters, below it the snippet with the words in strong letters.
class Resultado final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {0, (LINES + 1) * QFontMetrics(option.font).lineSpacing() + 2 * PADDING};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, index);
        const QString title = std::exchange(option.text, QString());
        option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);

        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
        const QRect room = option.rect.adjusted(PADDING, PADDING, -PADDING, -PADDING);
        QFont strong = option.font;
        strong.setWeight(QFont::DemiBold);
        const QFontMetrics metrics(strong);
        painter->save();
        painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
        painter->setFont(strong);
        painter->drawText(room, Qt::AlignTop, metrics.elidedText(title, Qt::ElideRight, room.width()));
        painter->setFont(option.font);
        draw_snippet(painter, room.adjusted(0, metrics.lineSpacing(), 0, 0), option.font, index);
        painter->restore();
    }

private:
    static void draw_snippet(QPainter* painter, const QRect& room, const QFont& font, const QModelIndex& index) {
        const QString snippet = index.data(SNIPPET).toString();
        QTextCharFormat strong;
        strong.setFontWeight(QFont::DemiBold);
        QList<QTextLayout::FormatRange> found;
        const TextoPlegado folded(snippet);
        for (const QString& word : index.data(WORDS).toStringList()) {
            for (const Tramo& place : folded.find(word))
                found.append({static_cast<int>(place.begin), static_cast<int>(place.length), strong});
        }
        QTextLayout layout(snippet, font);
        layout.setFormats(found);
        layout.beginLayout();
        double y = 0;
        for (int i = 0; i < LINES; ++i) {
            QTextLine line = layout.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(room.width());
            line.setPosition({0, y});
            y += line.height();
        }
        layout.endLayout();
        painter->setOpacity(0.85);
        layout.draw(painter, room.topLeft(), {}, room);
    }
};

}  // namespace

PanelBusqueda::PanelBusqueda(const Texto& texto, QWidget* padre)
    : QWidget(padre),
      texto_(texto),
      txtbuscar(new CajaFiltro(texto_(754, QStringLiteral("Palabras que se buscan en todas las páginas")))),
      lbbuscar(new QLabel),
      lstbuscar(new QListWidget) {
    txtbuscar->setObjectName(QStringLiteral("txtbuscar"));
    lbbuscar->setObjectName(QStringLiteral("lbbuscar"));
    lstbuscar->setObjectName(QStringLiteral("lstbuscar"));
    txtbuscar->set_lista(lstbuscar);
    lbbuscar->setTextFormat(Qt::PlainText);
    lbbuscar->setWordWrap(true);
    lstbuscar->setAccessibleName(spoken(texto_(752, QStringLiteral("&Buscar"))));
    lstbuscar->setItemDelegate(new Resultado(lstbuscar));
    lstbuscar->setFrameShape(QFrame::NoFrame);
    lstbuscar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstbuscar->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    lstbuscar->setUniformItemSizes(true);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 0);
    column->setSpacing(6);
    column->addWidget(txtbuscar);
    column->addWidget(lbbuscar);
    column->addWidget(lstbuscar, 1);
    setFocusProxy(txtbuscar);
    connect(txtbuscar, &QLineEdit::textChanged, this, &PanelBusqueda::buscar);
    connect(txtbuscar, &QLineEdit::returnPressed, this, [this] { elegir(lstbuscar->currentItem()); });
    connect(lstbuscar, &QListWidget::itemClicked, this, &PanelBusqueda::elegir);
    connect(lstbuscar, &QListWidget::itemActivated, this, &PanelBusqueda::elegir);
}

void PanelBusqueda::set_libro(const tavo::chm::ChmFile& libro) {
    buscador_.emplace(libro);
    buscar();
}

void PanelBusqueda::buscar() {
    lstbuscar->clear();
    const QString typed = txtbuscar->text().simplified();
    const QStringList words = palabras_plegadas(typed);
    lbbuscar->setVisible(!words.isEmpty());
    if (words.isEmpty() || !buscador_)
        return;
    const QList<Hallazgo> found = buscador_->buscar(typed);
    for (const Hallazgo& page : found) {
        auto* item = new QListWidgetItem(page.title, lstbuscar);
        item->setData(PAGE, page.page);
        item->setData(SNIPPET, page.snippet);
        item->setData(WORDS, words);
        item->setData(Qt::AccessibleDescriptionRole, page.snippet);
    }
    lstbuscar->setCurrentRow(0);
    lbbuscar->setText(found.isEmpty() ? con_valor(texto_(756, QStringLiteral("No se encuentra: %1")), typed)
                                      : con_valor(texto_(755, QStringLiteral("Páginas encontradas: %1")),
                                                  QString::number(found.size())));
}

void PanelBusqueda::elegir(const QListWidgetItem* item) {
    if (item)
        emit pagina_elegida(item->data(PAGE).toString(), item->data(WORDS).toStringList());
}

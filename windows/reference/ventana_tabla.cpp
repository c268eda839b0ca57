#include "windows/reference/ventana_tabla.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

#include "controls/iconos.h"
#include "controls/texto.h"
#include "controls/tintas.h"
#include "shell/imprimir.h"
#include "shell/textos.h"

namespace {

constexpr int MARGIN = 12, SPACING = 6;
constexpr int TOLD = 5000;                // ms
constexpr qsizetype WIDEST_UPRIGHT = 80;  // characters on a page that stands upright
constexpr int WIDEST_HINT = 1100;

}  // namespace

VentanaTabla::VentanaTabla(ApplicationState& estado, Impresora& impresora, QWidget* padre)
    : QWidget(padre), estado_(estado), impresora_(impresora) {}

void VentanaTabla::show_table(QAbstractItemModel* table, const char* name, bool searched) {
    const QString copy = estado_.texto(770, QStringLiteral("C&opiar"));
    grid_ = new Rejilla(table, copy, this);
    grid_->setObjectName(QLatin1String(name));
    grid_->setAccessibleName(windowTitle());
    btcopiar = new QPushButton(icono(QStringLiteral("copiar")), copy, this);
    btcopiar->setObjectName(QStringLiteral("btcopiar"));
    btcopiar->setToolTip(estado_.texto(
        771,
        QStringLiteral("Copia las celdas elegidas, o la tabla entera si no hay ninguna, separadas por tabulaciones")));
    btimprimir =
        new QPushButton(icono(QStringLiteral("imprimir")), estado_.texto(772, QStringLiteral("Im&primir...")), this);
    btimprimir->setObjectName(QStringLiteral("btimprimir"));
    btimprimir->setToolTip(estado_.texto(773, QStringLiteral("Imprime la tabla en el orden en que se ve")));

    auto* tools = new QHBoxLayout;
    tools->setSpacing(SPACING);
    if (searched) {
        make_search();
        auto* label = new QLabel(estado_.texto(774, QStringLiteral("&Buscar:")), this);
        label->setObjectName(QStringLiteral("lbbuscar"));
        label->setBuddy(txtbuscar);
        txtbuscar->setAccessibleName(spoken(label->text()));
        tools->addWidget(label);
        tools->addWidget(txtbuscar, 1);
    }
    tools->addStretch(1);
    tools->addWidget(btcopiar);
    tools->addWidget(btimprimir);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(SPACING);
    column->addLayout(tools);
    column->addWidget(grid_);
    setFocusProxy(grid_);

    connect(btcopiar, &QPushButton::clicked, grid_, &Rejilla::copy);
    connect(btimprimir, &QPushButton::clicked, this, &VentanaTabla::btimprimir_Click);
    connect(new QShortcut(QKeySequence::Print, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, this, &VentanaTabla::btimprimir_Click);
    connect(grid_, &Rejilla::copied, this, [this](bool whole) {
        estado_.set_status(whole ? estado_.texto(627, QStringLiteral("Tabla copiada"))
                                 : estado_.texto(776, QStringLiteral("Celdas copiadas")),
                           TOLD);
    });
}

QSize VentanaTabla::sizeHint() const {
    const QSize all = QWidget::sizeHint();
    return {std::min(all.width(), WIDEST_HINT), all.height()};
}

/// Title and headers on every page.
void VentanaTabla::btimprimir_Click() {
    constexpr qsizetype HEADERS = 2;  // and the line below them
    const QStringList lines = imprimir::alinear(grid_->rows_shown());
    const bool wide = std::ranges::any_of(lines, [](const QString& line) { return line.size() > WIDEST_UPRIGHT; });
    impresora_.imprimir(this, imprimir::documento(estado_, windowTitle(), lines.mid(HEADERS), wide,
                                                  QStringList{windowTitle(), QString()} + lines.first(HEADERS)));
}

// ---- Searching

void VentanaTabla::make_search() {
    txtbuscar = new QLineEdit(this);
    txtbuscar->setObjectName(QStringLiteral("txtbuscar"));
    txtbuscar->setClearButtonEnabled(true);
    txtbuscar->installEventFilter(this);
    connect(txtbuscar, &QLineEdit::textEdited, this, &VentanaTabla::txtbuscar_Change);
    connect(grid_, &Rejilla::letters_typed, this, [this](const QString& letters) {
        txtbuscar->setFocus(Qt::OtherFocusReason);
        txtbuscar->setText(letters);
        txtbuscar_Change();
    });
    connect(new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, txtbuscar, [this] {
                txtbuscar->setFocus(Qt::ShortcutFocusReason);
                txtbuscar->selectAll();
            });
}

void VentanaTabla::txtbuscar_Change() {
    look_for(Rejilla::From::Here);
}

void VentanaTabla::look_for(Rejilla::From from) {
    const QString text = txtbuscar->text();
    const bool found = text.isEmpty() || grid_->find(text, from);
    txtbuscar->setStyleSheet(found ? QString() : QStringLiteral("color: %1").arg(fault_ink(palette()).name()));
    estado_.set_status(
        found ? QString() : con_valor(estado_.texto(775, QStringLiteral("Ningún gas contiene «%1»")), text), TOLD);
}

/// Return and the arrows go from find to find, escape back to the grid.
bool VentanaTabla::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            look_for(key->modifiers().testFlag(Qt::ShiftModifier) ? Rejilla::From::Before : Rejilla::From::After);
            return true;
        case Qt::Key_Down:
            look_for(Rejilla::From::After);
            return true;
        case Qt::Key_Up:
            look_for(Rejilla::From::Before);
            return true;
        case Qt::Key_Escape:
            txtbuscar->clear();
            look_for(Rejilla::From::Here);
            grid_->setFocus(Qt::OtherFocusReason);
            return true;
        default:
            return QWidget::eventFilter(watched, event);
    }
}

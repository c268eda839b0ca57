#include "shell/ayuda/barra_buscar.h"

#include <QHBoxLayout>
#include <QToolButton>

#include "controls/iconos.h"
#include "shell/textos.h"

BarraBuscar::BarraBuscar(const Texto& texto, PaginaAyuda* pagina, QWidget* padre)
    : QWidget(padre),
      texto_(texto),
      pagina_(pagina),
      txtpagina(new CajaFiltro(texto_(762, QStringLiteral("Buscar en esta página")))),
      lbpagina(new QLabel) {
    txtpagina->setObjectName(QStringLiteral("txtpagina"));
    lbpagina->setObjectName(QStringLiteral("lbpagina"));
    lbpagina->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 6, 6, 6);
    row->setSpacing(6);
    row->addWidget(txtpagina, 2);
    const auto add = [&](const char* name, const char* icon, const QString& tip, const char* keys, auto run) {
        auto* button = new QToolButton;
        button->setObjectName(QLatin1String(name));
        button->setIcon(icono(QLatin1String(icon)));
        button->setAutoRaise(true);
        button->setAccessibleName(tip);
        button->setToolTip(QStringLiteral("%1 (%2)").arg(tip, QKeySequence(keys).toString(QKeySequence::NativeText)));
        connect(button, &QToolButton::clicked, this, run);
        row->addWidget(button);
    };
    add("btanterior", "subir", texto_(765, QStringLiteral("Coincidencia anterior")), "Shift+F3", [this] { ir(-1); });
    add("btsiguiente", "bajar", texto_(764, QStringLiteral("Siguiente coincidencia")), "F3", [this] { ir(1); });
    row->addWidget(lbpagina, 3);
    add("btcerrar", "cerrar", texto_(766, QStringLiteral("Cerrar la búsqueda")), "Esc", [this] { cerrar(); });
    connect(txtpagina, &QLineEdit::textChanged, this, &BarraBuscar::buscar);
    connect(txtpagina, &QLineEdit::returnPressed, this, [this] { ir(1); });
    hide();
}

void BarraBuscar::abrir() {
    show();
    txtpagina->setFocus();
    txtpagina->selectAll();
    buscar();
}

void BarraBuscar::cerrar() {
    hide();
    pagina_->marcar({});
    pagina_->setFocus();
}

void BarraBuscar::ir(int step) {
    if (pagina_->marcas() == 0) {
        abrir();
        return;
    }
    pagina_->ir_a_marca(step);
    mostrar_lugar();
}

void BarraBuscar::buscar() {
    if (isHidden())
        return;
    const QString typed = plegado(txtpagina->text().simplified());
    pagina_->marcar(typed.isEmpty() ? QStringList() : QStringList{typed});
    mostrar_lugar();
}

void BarraBuscar::mostrar_lugar() {
    const QString typed = txtpagina->text().simplified();
    if (pagina_->marcas() > 0)
        lbpagina->setText(QStringLiteral("%1 / %2").arg(pagina_->marca() + 1).arg(pagina_->marcas()));
    else
        lbpagina->setText(typed.isEmpty() ? QString()
                                          : con_valor(texto_(756, QStringLiteral("No se encuentra: %1")), typed));
}

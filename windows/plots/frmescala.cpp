#include "windows/plots/frmescala.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>

#include "core/numtext.h"
#include "windows/plots/graficos.h"

namespace {

constexpr int PLAIN = 0;

QString text(double x) {
    return QString::fromStdString(tavo::to_text(x));
}

}  // namespace

frmescala::frmescala(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QDialog(padre), estado_(estado), mensajes_(mensajes) {
    setObjectName(QStringLiteral("frmescala"));
    crear();
    Form_Load();
    connect(&estado_, &ApplicationState::plot_window_changed, this, [this](bool open) {
        if (!open)
            close();
    });
}

void frmescala::crear() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    const auto row = [&](std::size_t i) {
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("Label%1").arg(i));
        txtmm[i] = new EntradaNumerica(this);
        txtmm[i]->setObjectName(QStringLiteral("txtmm(%1)").arg(i));
        txtmm[i]->setMinimumWidth(txtmm[i]->fontMetrics().horizontalAdvance(QString(20, QLatin1Char('0'))));
        label->setBuddy(txtmm[i]);
        return label;
    };
    Label1 = row(1);
    Label2 = row(2);
    chky = new QCheckBox(this);
    chky->setObjectName(QStringLiteral("chky"));
    Label3 = row(3);
    Label4 = row(4);
    grid->addWidget(Label1, 0, 0);
    grid->addWidget(txtmm[1], 0, 1);
    grid->addWidget(Label2, 1, 0);
    grid->addWidget(txtmm[2], 1, 1);
    grid->addWidget(chky, 2, 0, 1, 2);
    grid->addWidget(Label3, 3, 0);
    grid->addWidget(txtmm[3], 3, 1);
    grid->addWidget(Label4, 4, 0);
    grid->addWidget(txtmm[4], 4, 1);

    btaceptar = new QPushButton(this);
    btaceptar->setObjectName(QStringLiteral("btaceptar"));
    btaceptar->setDefault(true);
    btcancelar = new QPushButton(this);
    btcancelar->setObjectName(QStringLiteral("btcancelar"));
    btcancelar->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    buttons->addStretch();
    buttons->addWidget(btaceptar);
    buttons->addWidget(btcancelar);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(12);
    column->addLayout(grid);
    column->addStretch();
    column->addLayout(buttons);

    connect(chky, &QCheckBox::toggled, this, &frmescala::chky_Click);
    connect(btaceptar, &QPushButton::clicked, this, &frmescala::btaceptar_Click);
    connect(btcancelar, &QPushButton::clicked, this, &frmescala::btcancelar_Click);
}

void frmescala::Form_Load() {
    setWindowTitle(estado_.texto(150));
    Label1->setText(estado_.texto(151));
    Label2->setText(estado_.texto(152));
    Label3->setText(estado_.texto(153));
    Label4->setText(estado_.texto(154));
    chky->setText(estado_.texto(155));
    btaceptar->setText(estado_.texto(65));
    btcancelar->setText(estado_.texto(156));

    if (estado_.current_range == PlotRange{})
        estado_.current_range = estado_.default_range;
    const PlotRange& range = estado_.current_range;
    txtmm[1]->setText(text(range.vmin));
    txtmm[2]->setText(text(range.vmax));
    txtmm[3]->setText(text(range.pmin));
    txtmm[4]->setText(text(range.pmax));
    txtmm[1]->selectAll();  // it gets the focus with the window
    if (PlotView* plot = estado_.plot())
        plot->habilitar(false);
    chky->setChecked(true);
    chky_Click();
}

void frmescala::chky_Click() {
    const bool automatic = chky->isChecked();
    const std::array<QWidget*, 4> controls{Label3, Label4, txtmm[3], txtmm[4]};
    for (QWidget* control : controls)
        control->setEnabled(!automatic);
}

void frmescala::btaceptar_Click() {
    PlotView* plot = estado_.plot();
    if (!plot || txtmm[1]->text().isEmpty() || txtmm[2]->text().isEmpty())
        return;
    if (!en_orden(1, 2, 410, QStringLiteral("El valor de V máximo debe ser mayor que V mínimo")))
        return;
    const bool automatic = chky->isChecked();
    if (!automatic) {
        if (txtmm[3]->text().isEmpty() || txtmm[4]->text().isEmpty())
            return;
        if (!en_orden(3, 4, 411, QStringLiteral("El valor de P máxima debe ser mayor que P mínima")))
            return;
    }

    PlotRange& range = estado_.current_range;
    range.vmin = txtmm[1]->value();
    range.vmax = txtmm[2]->value();
    if (automatic) {
        for (int i = 1; i < tavo::SlotTable::size; ++i)
            if (estado_.slot_table()[i].active)
                graficos::widen(estado_.slot_table()[i], range);
    } else {
        range.pmin = txtmm[3]->value();
        range.pmax = txtmm[4]->value();
    }
    plot->habilitar(true);
    plot->limpiar();
    if (plot->comprueba_rango()) {
        plot->dibuja();
        txtmm[3]->setText(text(range.pmin));
        txtmm[4]->setText(text(range.pmax));
    }
}

bool frmescala::en_orden(int minimo, int maximo, int numero, const QString& literal) {
    const auto value = [this](int i) { return txtmm[static_cast<std::size_t>(i)]->value(); };
    if (value(maximo) >= value(minimo))
        return true;
    mensajes_.mostrar(estado_.texto(numero, literal), PLAIN, QString());
    return false;
}

void frmescala::btcancelar_Click() {
    close();
}

void frmescala::reject() {
    close();
}

void frmescala::closeEvent(QCloseEvent* event) {
    if (PlotView* plot = estado_.plot())
        plot->habilitar(true);
    event->accept();
}

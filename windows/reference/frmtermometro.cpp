#include "windows/reference/frmtermometro.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <cmath>

#include "controls/desplazable.h"
#include "core/numtext.h"
#include "shell/textos.h"

using termometria::SCALES;

namespace {

constexpr int MARGIN = 12, SPACING = 6;
constexpr int RETURN = 13, ESCAPE = 27;
constexpr int FIRST_TITLE = 110;
constexpr double INITIAL = 25.0;  // ºC

QString format(double t) {
    return QString::fromStdString(tavo::Format(t, termometria::FORMAT));
}

QString unit(int index) {
    const std::string_view text = termometria::UNITS.at(static_cast<std::size_t>(index));
    return QString::fromUtf8(text);
}

}  // namespace

frmtermometro::frmtermometro(ApplicationState& estado, QWidget* padre)
    : QWidget(padre),
      estado_(estado),
      texto_([&estado](int number, const QString& literal) { return estado.texto(number, literal); }) {
    setObjectName(QStringLiteral("frmtermometro"));
    std::array<QString, SCALES> titles;
    for (int i = 0; i < SCALES; ++i)
        titles[static_cast<std::size_t>(i)] = estado_.texto(FIRST_TITLE + i);

    auto* contents = new QWidget;
    frmescala = new MarcoEscalas(texto_, titles, contents);
    entradas_ = make_entries(titles);
    txtestado = new LineaEstado(1, contents);
    txtestado->setObjectName(QStringLiteral("txtestado"));
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(SPACING);
    column->addWidget(frmescala, 1);
    column->addWidget(entradas_);
    column->addWidget(txtestado);
    desplazable_ = llenar_desplazable(*this, contents);

    connect(frmescala, &MarcoEscalas::arranged, this, &frmtermometro::place_entries);
    const QString hint = texto_(
        656, QStringLiteral("%1: se arrastra con el ratón o se mueve con las flechas, Re Pág, Av Pág, Inicio y Fin"));
    for (int i = 0; i < SCALES; ++i) {
        Indicador* thermometer = frmescala->pct(i);
        thermometer->setAccessibleDescription(hint.arg(titles[static_cast<std::size_t>(i)]));
        thermometer->set_outside_text(texto_(650, QStringLiteral("%1 (fuera de la escala)")));
        connect(thermometer, &Indicador::MouseDown, this, [this, i](double y) { pct_MouseDown(i, y); });
        connect(thermometer, &Indicador::MouseMove, this, [this, i](double y) { pct_MouseMove(i, y); });
        connect(thermometer, &Indicador::key_step, this, [this, i](double t) { take(i, t); });
    }
    setFocusProxy(txttemp.front());
    Form_Load();
}

/// The cells stand below the thermometers, wherever these are.
QWidget* frmtermometro::make_entries(const std::array<QString, SCALES>& titles) {
    auto* row = new QWidget(frmescala->parentWidget());
    for (int i = 0; i < SCALES; ++i) {
        const auto at = static_cast<std::size_t>(i);
        celda_[at] = new QWidget(row);
        txttemp[at] = new EntradaNumerica(celda_[at]);
        txttemp[at]->setObjectName(QStringLiteral("txttemp(%1)").arg(i));
        txttemp[at]->setAccessibleName(titles[at] + u' ' + unit(i));
        txttemp[at]->set_signed(true);
        txttemp[at]->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-000000.00")) + 24);
        txttemp[at]->installEventFilter(this);
        lbgrado[at] = new QLabel(unit(i), celda_[at]);
        lbgrado[at]->setObjectName(QStringLiteral("lbgrado(%1)").arg(i));
        auto* line = new QHBoxLayout(celda_[at]);
        line->setContentsMargins(SPACING, 0, SPACING, 0);
        line->setSpacing(SPACING / 2);
        line->addStretch(1);
        line->addWidget(txttemp[at], 100);
        line->addWidget(lbgrado[at]);
        line->addStretch(1);
        connect(txttemp[at], &EntradaNumerica::step_wanted, this, [this, i, at](int steps) {
            take(i, temperatura_[at] + steps * frmescala->pct(i)->scale().graduation);
        });
        connect(txttemp[at], &QLineEdit::inputRejected, this, [this] {
            estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
        });
    }
    row->setFixedHeight(celda_.front()->sizeHint().height());
    return row;
}

void frmtermometro::place_entries() {
    for (int i = 0; i < SCALES; ++i) {
        const QRect column = frmescala->column(i).toRect();
        celda_[static_cast<std::size_t>(i)]->setGeometry(column.left(), 0, column.width(), entradas_->height());
    }
}

QSize frmtermometro::sizeHint() const {
    return desplazable_->widget()->sizeHint();
}

void frmtermometro::Form_Load() {
    setWindowTitle(sin_mnemonico(estado_.texto(24)));
    take(termometria::CELSIUS, INITIAL);
}

// ---- What the user does

bool frmtermometro::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool taken = key == Qt::Key_Return || key == Qt::Key_Enter;
        for (int i = 0; i < SCALES && (taken || key == Qt::Key_Escape); ++i) {
            if (watched == txttemp[static_cast<std::size_t>(i)]) {
                txttemp_KeyPress(i, taken ? RETURN : ESCAPE);
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmtermometro::txttemp_KeyPress(int index, int key_ascii) {
    EntradaNumerica* entry = txttemp[static_cast<std::size_t>(index)];
    const QString text = entry->text();
    if (key_ascii == RETURN && !termometria::is_temperature(index, text.toStdString())) {
        txtestado->set_fault(con_valor(
            texto_(780, QStringLiteral("«%1» no es una temperatura: escriba un número con punto decimal")), text));
    } else if (key_ascii == RETURN) {
        take(index, tavo::Val(text.toStdString()));
    } else {
        show_texts();
        tell();
    }
    entry->selectAll();
}

void frmtermometro::pct_MouseDown(int index, double y) {
    take(index, y);
}

void frmtermometro::pct_MouseMove(int index, double y) {
    take(index, y);
}

void frmtermometro::take(int index, double t) {
    if (!termometria::is_temperature(index, tavo::to_text(t)))
        return;  // a step beyond what can be shown
    temperatura_ = termometria::convert_to_all(index, t);
    show_texts();
    escalas();
    tell();
}

// ---- What it shows

void frmtermometro::show_texts() {
    for (std::size_t i = 0; i < txttemp.size(); ++i)
        txttemp[i]->setText(format(temperatura_[i]));
}

void frmtermometro::escalas() {
    for (int i = 0; i < SCALES; ++i) {
        const auto at = static_cast<std::size_t>(i);
        frmescala->pct(i)->set_spoken(estado_.texto(FIRST_TITLE + i), txttemp[at]->text() + u' ' + lbgrado[at]->text());
        frmescala->pct(i)->set_value(temperatura_[at]);
    }
}

void frmtermometro::tell() {
    if (!termometria::below_absolute_zero(temperatura_)) {
        txtestado->set_outcome(
            texto_(848, QStringLiteral("Intro convierte a las otras escalas; Esc deshace lo escrito")));
        return;
    }
    const auto kelvin = [](double t) { return format(t) + QChar::Nbsp + unit(termometria::KELVIN); };
    txtestado->set_outcome(texto_(781, QStringLiteral("%1 está por debajo del cero absoluto, %2"))
                               .arg(kelvin(temperatura_[termometria::KELVIN]), kelvin(0.0)));
}

#include "controls/punto_critico.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <utility>

#include "controls/tintas.h"
#include "core/numtext.h"

namespace {

constexpr double TOLERANCE = 0.02;
constexpr int SPACING = 6;
const QString UNKNOWN = QStringLiteral("—");

struct Quantity {
    const char *name, *symbol, *header, *unit, *pattern;
};
constexpr std::array<Quantity, 3> QUANTITIES{{
    {"tc", "Tc", "T<sub>c</sub> (K)", "K", "####0.00"},
    {"pc", "Pc", "P<sub>c</sub> (atm)", "atm", "####0.00"},
    {"vc", "Vc", "V<sub>c</sub> (l/mol)", "l/mol", "####0.0000"},
}};

bool is_known(double value) {
    return std::isfinite(value) && value > 0.0;
}

/// In the column's decimals, or with four digits where these would say too little or too much.
QString shown(double value, const char* pattern) {
    if (!is_known(value))
        return UNKNOWN;
    const bool usual = value >= 0.01 && value < 1e5;
    return QString::fromStdString(usual ? tavo::Format(value, pattern) : tavo::significant(value, 4));
}

/// A triangle with an exclamation mark.
class MarcaDiferencia final : public QWidget {
public:
    explicit MarcaDiferencia(QWidget* padre) : QWidget(padre) {
        QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        policy.setRetainSizeWhenHidden(true);
        setSizePolicy(policy);
    }
    QSize sizeHint() const override {
        const int side = fontMetrics().height();
        return {side, side};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(width() / 16.0, height() / 16.0);
        QPainterPath triangle(QPointF(8.0, 1.5));
        triangle.lineTo(15.2, 14.5);
        triangle.lineTo(0.8, 14.5);
        triangle.closeSubpath();
        const QColor ink = fault_ink(palette());
        painter.setPen(QPen(ink, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.fillPath(triangle, ink);
        painter.drawPath(triangle);
        painter.setPen(QPen(palette().color(QPalette::Window), 1.8, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(8.0, 6.0), QPointF(8.0, 9.6));
        painter.drawPoint(QPointF(8.0, 12.3));
    }
};

}  // namespace

PuntoCritico::PuntoCritico(Texto texto, QWidget* padre) : QWidget(padre), texto_(std::move(texto)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * SPACING);
    grid->setVerticalSpacing(SPACING / 2);
    make_header();
    gas_ = make_line(1, "gas", 702, QStringLiteral("Punto crítico del gas"));
    model_ = make_line(2, "modelo", 703, QStringLiteral("Punto crítico del modelo"));
    const QString difference =
        texto_(704, QStringLiteral("El punto crítico del modelo se aparta más de un 2 % del que tiene el gas"));
    lbdifiere = new MarcaDiferencia(this);
    lbdifiere->setObjectName(QStringLiteral("lbdifiere"));
    lbdifiere->setToolTip(difference);
    lbdifiere->setAccessibleName(difference);
    grid->addWidget(lbdifiere, 2, 4);
    grid->setColumnStretch(5, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    show_point({}, std::nullopt);
}

// ---- Layout

void PuntoCritico::make_header() {
    auto* grid = static_cast<QGridLayout*>(layout());
    for (std::size_t i = 0; i < QUANTITIES.size(); ++i) {
        auto* label = new QLabel(QString::fromUtf8(QUANTITIES[i].header), this);
        label->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0.000E+000")));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(label, 0, static_cast<int>(i) + 1);
    }
}

PuntoCritico::Line PuntoCritico::make_line(int row, const char* name, int text, const QString& literal) {
    auto* grid = static_cast<QGridLayout*>(layout());
    Line line{};
    line.caption = new QLabel(texto_(440, QStringLiteral("%1:")).arg(texto_(text, literal)), this);
    grid->addWidget(line.caption, row, 0);
    for (std::size_t i = 0; i < QUANTITIES.size(); ++i) {
        line.values[i] = new QLabel(this);
        line.values[i]->setObjectName(
            QStringLiteral("lb%1%2").arg(QLatin1String(QUANTITIES[i].name), QLatin1String(name)));
        line.values[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(line.values[i], row, static_cast<int>(i) + 1);
    }
    return line;
}

// ---- Values

void PuntoCritico::show_point(const tavo::GasRecord& gas, const std::optional<tavo::calcnum::CriticalPoint>& model) {
    const std::array own{gas.tc, gas.pc, gas.vc};
    const auto found = model.value_or(tavo::calcnum::CriticalPoint{0.0, 0.0, 0.0});
    const std::array models{found.t, found.p, found.v};
    const auto write = [](const Line& line, std::size_t i, double value) {
        const Quantity& quantity = QUANTITIES[i];
        QLabel* label = line.values[i];
        label->setText(shown(value, quantity.pattern));
        const QString unit = u' ' + QLatin1String(quantity.unit);
        label->setToolTip(is_known(value) ? QString::fromStdString(tavo::to_text(value)) + unit : QString());
        label->setAccessibleName(line.caption->text() + u' ' + QLatin1String(quantity.symbol) + u' ' + label->text() +
                                 (is_known(value) ? unit : QString()));
    };
    for (std::size_t i = 0; i < QUANTITIES.size(); ++i) {
        write(gas_, i, own[i]);
        write(model_, i, models[i]);
        const bool compared = i < 2 && is_known(own[i]) && is_known(models[i]);
        differs_[i] = compared && std::abs(models[i] / own[i] - 1.0) > TOLERANCE;
    }
    show_differences();
}

void PuntoCritico::show_differences() {
    for (std::size_t i = 0; i < QUANTITIES.size(); ++i) {
        QPalette ink;  // names no other colour: those follow the desktop
        if (differs_[i])
            ink.setColor(QPalette::WindowText, fault_ink(palette()));
        model_.values[i]->setPalette(ink);
    }
    lbdifiere->setVisible(differs_[0] || differs_[1]);
}

void PuntoCritico::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        show_differences();
}

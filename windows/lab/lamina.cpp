#include <QPainter>

#include <algorithm>
#include <array>

#include "controls/dibujo.h"
#include "core/numtext.h"
#include "windows/lab/instrumentos.h"

using laboratorio::Instrument;

namespace {

constexpr double ARROW = 9.0;
constexpr QSize SMALLEST(150, 220);
constexpr QSize PREFERRED(260, 420);

QString unit(Instrument kind) {
    switch (laboratorio::variable(kind)) {
        case laboratorio::Variable::Volume:
            return QStringLiteral("l");
        case laboratorio::Variable::Temperature:
            return QStringLiteral("ºK");
        default:
            return QStringLiteral("atm");
    }
}

}  // namespace

Instrumento::Instrumento(Instrument kind, QWidget* padre)
    : Indicador(laboratorio::scale(kind), unit(kind), padre), kind_(kind) {
    if (kind == Instrument::Piston)
        set_cursors(Qt::OpenHandCursor, Qt::ClosedHandCursor);
    if (kind == Instrument::Manometer)
        set_role(QAccessible::Dial);
}

/// Wide enough for a range label in a larger font.
QSize Lamina::minimumSizeHint() const {
    const QFontMetrics metrics(small_font());
    return SMALLEST.expandedTo(
        {metrics.horizontalAdvance(QStringLiteral("373.16 ºK 1400")) + 62, metrics.height() * 14});
}

QSize Lamina::sizeHint() const {
    return PREFERRED.expandedTo(minimumSizeHint());
}

void Lamina::adopt(Instrumento* instrument, const char* name) {
    instrument->setObjectName(QLatin1String(name));
    connect(instrument, &Indicador::value_changed, this, [this, instrument] {
        if (instrument == in_use() && instrument->side() != beyond_) {
            beyond_ = instrument->side();
            update();  // with the instrument, which marks its scale's end
        }
    });
}

QLabel* Lamina::range_label(const char* name, double limit, const char* unit) {
    return ink_label(QLatin1String(name),
                     QString::fromStdString(tavo::Format(limit, "##0.00")) + QString::fromUtf8(unit));
}

void Lamina::exchange(const std::vector<QWidget*>& hidden, const std::vector<QWidget*>& shown) {
    const bool focus = hidden.front()->hasFocus();
    for (QWidget* widget : shown)
        widget->show();
    if (focus)
        shown.front()->setFocus();
    for (QWidget* widget : hidden)
        widget->hide();
    renew();
}

void Lamina::set_texts(const Texto& texto) {
    const std::array names{texto(651, QStringLiteral("Pistón")), texto(652, QStringLiteral("Termómetro")),
                           texto(653, QStringLiteral("Termopar")), texto(654, QStringLiteral("Barómetro")),
                           texto(655, QStringLiteral("Manómetro"))};
    const QString outside = texto(650, QStringLiteral("%1 (fuera de la escala)"));
    const QString hint = texto(
        656, QStringLiteral("%1: se arrastra con el ratón o se mueve con las flechas, Re Pág, Av Pág, Inicio y Fin"));
    for (Instrumento* instrument : findChildren<Instrumento*>()) {
        instrument->set_outside_text(outside);
        instrument->setAccessibleDescription(hint.arg(names.at(static_cast<std::size_t>(instrument->kind()))));
    }
}

void Lamina::renew() {
    Hoja::renew();
    beyond_ = in_use()->side();
}

void Lamina::draw_over(QPainter& painter) const {
    if (const int at = in_use()->side(); at != 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(dibujo::WARNING);
        painter.drawPolygon(dibujo::arrow(beyond(at > 0), at > 0 ? 0.0 : 180.0, ARROW));
    }
    if (in_use()->hasFocus())
        draw_focus(painter, QRectF(rect()));
}

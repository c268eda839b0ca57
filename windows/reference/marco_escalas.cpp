#include "windows/reference/marco_escalas.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "controls/dibujo.h"
#include "core/numtext.h"

using dibujo::GAP;
using dibujo::TERMOMETRO;
using termometria::MARKS;
using termometria::SCALES;

namespace {

constexpr double ARROW = 9.0;
constexpr double STEM = TERMOMETRO.bore + 2.0 * TERMOMETRO.wall;
constexpr double LARGEST = 1.5;    // times the measures of a small thermometer
constexpr double NAME_PART = 0.6;  // of a name's length, in two lines
const QColor HAIRLINE(0x9C, 0xC3, 0xEA);

QString text_of(std::string_view text) {
    return QString::fromUtf8(text);
}

/// Goes where the hand goes, beyond the ends of its scale too.
class Termometro final : public Indicador {
public:
    using Indicador::Indicador;
    void set_bore(double left, double width) {
        tubo_ = {left, width};
        update();
    }
    QRectF bore() const { return QRectF(tubo_.left, 0.0, tubo_.width, height()).translated(pos()); }
    double reachable(double value) const override { return value; }

protected:
    void draw(QPainter& painter) const override { dibujo::draw_mercury(painter, tubo_, place(), height(), pinned()); }
    QRectF between(double from, double to) const override { return dibujo::mercury_between(tubo_, from, to); }

private:
    dibujo::Tubo tubo_;
};

QRectF bore_of(const Indicador* thermometer) {
    return static_cast<const Termometro*>(thermometer)->bore();
}

}  // namespace

MarcoEscalas::MarcoEscalas(const Texto& texto, const std::array<QString, SCALES>& titles, QWidget* padre)
    : Hoja(padre) {
    setObjectName(QStringLiteral("frmescala"));
    for (int i = 0; i < SCALES; ++i)
        make_thermometer(i, titles[static_cast<std::size_t>(i)]);
    for (std::size_t i = 0; i < MARKS.size(); ++i) {
        const QString literal = text_of(MARKS[i].literal);
        names_[i] = MARKS[i].text == 0 ? literal : texto(MARKS[i].text, literal);
    }
    renew();
}

void MarcoEscalas::make_thermometer(int i, const QString& title) {
    const auto at = static_cast<std::size_t>(i);
    const auto name = [i](const char* control) { return QStringLiteral("%1(%2)").arg(QLatin1String(control)).arg(i); };
    const graduacion::Scale scale = termometria::scale(i);
    const QString unit = text_of(termometria::UNITS[at]);
    const auto end = [&](double limit) {
        return QString::fromStdString(tavo::Format(limit, termometria::FORMAT)) + u' ' + unit;
    };
    pct_[at] = new Termometro(scale, unit, this);
    pct_[at]->setObjectName(name("pct"));
    txttit[at] = ink_label(name("txttit"), title);
    txttit[at]->setAlignment(Qt::AlignCenter);
    lbt[at] = ink_label(name("lbt"), end(scale.maximum));
    lbt0[at] = ink_label(name("lbt0"), end(scale.minimum));
    connect(pct_[at], &Indicador::value_changed, this, [this, at] {
        if (pct_[at]->side() != beyond_[at]) {
            beyond_[at] = pct_[at]->side();
            update();  // with the thermometer, which marks its scale's end
        }
    });
}

// ---- Places

double MarcoEscalas::narrowest_column() const {
    const QFontMetricsF metrics(small_font());
    double widest = 0.0;
    for (std::size_t i = 0; i < pct_.size(); ++i) {
        const double labels =
            std::max(metrics.horizontalAdvance(lbt[i]->text()), metrics.horizontalAdvance(lbt0[i]->text()));
        const double scale = labels + dibujo::NUMBER_GAP + dibujo::TICK + GAP + LARGEST * STEM;
        widest = std::max({widest, scale, metrics.horizontalAdvance(txttit[i]->text())});
    }
    return widest + 2.0 * GAP;
}

double MarcoEscalas::names_width() const {
    const QFontMetricsF metrics(small_font());
    double widest = 0.0;
    for (const QString& name : names_) {
        widest = std::max(widest, NAME_PART * metrics.horizontalAdvance(name));
        for (const QString& word : name.split(u' '))
            widest = std::max(widest, metrics.horizontalAdvance(word));
    }
    return widest + GAP;
}

QSize MarcoEscalas::minimumSizeHint() const {
    const QFontMetrics metrics(small_font());
    const double frame = rect().width() - paper().width();
    return {static_cast<int>(std::ceil(SCALES * narrowest_column() + frame)), metrics.height() * 14};
}

QSize MarcoEscalas::sizeHint() const {
    const double frame = rect().width() - paper().width();
    return {static_cast<int>(std::ceil(SCALES * (narrowest_column() + 3.0 * GAP) + names_width() + frame)),
            std::max(430, minimumSizeHint().height())};
}

QRectF MarcoEscalas::column(int i) const {
    const double width = (paper().width() - names_room_) / SCALES;
    return {paper().left() + names_room_ + i * width, 0.0, width, double(height())};
}

void MarcoEscalas::arrange() {
    const QFontMetricsF metrics(small_font());
    const QRectF sheet = paper();
    const bool room = sheet.width() - SCALES * narrowest_column() >= names_width();
    names_room_ = room ? names_width() : 0.0;
    const double size = std::clamp(sheet.height() / 300.0, 1.0, LARGEST);
    const double top = sheet.top() + 2.7 * metrics.height() + GAP;
    const double bottom = sheet.bottom() - size * (TERMOMETRO.neck + 2.0 * TERMOMETRO.bulb) - 2.0;
    for (int i = 0; i < SCALES; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const QRectF place = column(i);
        auto* thermometer = static_cast<Termometro*>(pct_[at]);
        thermometer->setGeometry(QRectF(place.left(), top, place.width(), bottom - top).toRect());
        const double labels = dibujo::scale_room(lbt[at], lbt0[at]);
        const double left = (place.width() - labels - GAP - size * STEM) / 2.0;
        thermometer->set_bore(std::round(left + labels + GAP + size * TERMOMETRO.wall), size * TERMOMETRO.bore);
        const QRectF bore = bore_of(thermometer);
        const double ends = bore.left() - size * TERMOMETRO.wall - GAP - dibujo::TICK - dibujo::NUMBER_GAP;
        dibujo::put_at_end(lbt[at], ends, bore.top());
        dibujo::put_at_end(lbt0[at], ends, bore.bottom());
        txttit[at]->setGeometry(
            QRectF(place.left(), sheet.top() - 2.0, place.width(), metrics.height() + 2.0).toRect());
        beyond_[at] = thermometer->side();
    }
    emit arranged();
}

// ---- Drawing

void MarcoEscalas::draw_still(QPainter& painter) const {
    if (names_room_ > 0.0)
        draw_marks(painter);
    for (int i = 0; i < SCALES; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const QRectF bore = bore_of(pct_[at]);
        const QRectF place = column(i);
        const QRectF stem = dibujo::draw_thermometer(painter, bore);
        const double axis = stem.left() - GAP;
        // Clear of the marks, whose lines would run through the numbers.
        painter.fillRect(QRectF(place.left(), bore.top() - GAP, axis - place.left() + 1.0, bore.height() + 2.0 * GAP),
                         dibujo::PAPER);
        dibujo::draw_scale(painter, {pct_[at]->scale(),
                                     axis,
                                     bore.top(),
                                     bore.height(),
                                     -1,
                                     {QRectF(lbt[at]->geometry()), QRectF(lbt0[at]->geometry())}});
    }
}

void MarcoEscalas::draw_marks(QPainter& painter) const {
    const QFontMetricsF metrics(painter.font());
    const QRectF surface(pct_.front()->geometry());
    const graduacion::Scale celsius = termometria::scale(termometria::CELSIUS);
    for (std::size_t i = 0; i < MARKS.size(); ++i) {
        const double y = surface.top() + graduacion::place_of(celsius, MARKS[i].celsius, surface.height());
        painter.setPen(dibujo::pen(painter, HAIRLINE));
        const double line = dibujo::crisp(painter, y);
        painter.drawLine(QPointF(paper().left() + names_room_, line), QPointF(paper().right(), line));
        painter.setPen(dibujo::ACCENT);
        const double height = 3.0 * metrics.height();
        painter.drawText(QRectF(paper().left(), y - height / 2.0, names_room_ - GAP, height),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextWordWrap, names_[i]);
    }
}

void MarcoEscalas::draw_over(QPainter& painter) const {
    for (int i = 0; i < SCALES; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (const int side = pct_[at]->side(); side != 0) {
            const QLabel* end = side > 0 ? lbt[at] : lbt0[at];
            painter.setPen(Qt::NoPen);
            painter.setBrush(dibujo::WARNING);
            painter.drawPolygon(dibujo::arrow(dibujo::beyond_label(end, side > 0), side > 0 ? 0.0 : 180.0, ARROW));
        }
        if (pct_[at]->hasFocus())
            draw_focus(painter, column(i).adjusted(0.0, 2.0, 0.0, -2.0));
    }
}

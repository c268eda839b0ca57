#include "shell/imprimir.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <cmath>

#include "shell/application_state.h"
#include "shell/imprimir_logica.h"

namespace imprimir {

namespace {

constexpr double FONT_SIZE = 9.5;  // points
constexpr double LEADING = 12.0;   // from line to line, points
constexpr int FOOTER_LINES = 2;    // the footer and a blank line above it

std::vector<std::string> plain(const QStringList& texts) {
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString& text : texts)
        result.push_back(text.toStdString());
    return result;
}

struct Texto {
    std::vector<std::string> cabecera, lineas;
    std::string pie;
};

/// Draws the pages of a text in the printer's own pixels, which are fine enough for every length.
class Prensa {
public:
    Prensa(QPrinter& printer, const Texto& texto)
        : printer_(printer), texto_(texto), point_(printer.resolution() / 72.0) {}

    void imprimir() {
        if (!painter_.begin(&printer_))
            return;
        QFont font(QStringLiteral("Courier New"));
        font.setStyleHint(QFont::Monospace);
        font.setPixelSize(static_cast<int>(std::lround(FONT_SIZE * point_)));
        painter_.setFont(font);
        componer();
        const auto [first, last] = wanted();
        for (std::size_t page = first; page <= last; ++page) {
            if (page > first && !printer_.newPage())
                return;
            pintar(page);
        }
    }

private:
    void componer() {
        const QFontMetricsF metrics(painter_.font(), &printer_);
        const Medida width = [&](std::string_view text) { return metrics.horizontalAdvance(QString::fromUtf8(text)); };
        head_ = cortar(texto_.cabecera, page().width(), width);
        body_ = cortar(texto_.lineas, page().width(), width);
        const double room = page().height() / (LEADING * point_) - FOOTER_LINES - static_cast<double>(head_.size());
        per_page_ = static_cast<std::size_t>(std::max(1.0, room));
    }

    /// First and last page to be printed, counted from 0.
    std::pair<std::size_t, std::size_t> wanted() const {
        const std::size_t all = paginas(body_.size(), per_page_);
        const auto from = static_cast<std::size_t>(std::max(printer_.fromPage(), 1));
        const auto to = printer_.toPage() > 0 ? static_cast<std::size_t>(printer_.toPage()) : all;
        const std::size_t first = std::min(from, all) - 1;
        return {first, std::max(first, std::min(to, all) - 1)};
    }

    void pintar(std::size_t number) {
        double y = 0.0;
        const auto line = [&](const std::string& text) {
            painter_.drawText(QRectF(0.0, y, page().width(), LEADING * point_), Qt::TextDontClip | Qt::AlignLeft,
                              QString::fromStdString(text));
            y += LEADING * point_;
        };
        std::ranges::for_each(head_, line);
        std::ranges::for_each(pagina(body_, per_page_, number), line);
        painter_.drawText(page(), Qt::AlignHCenter | Qt::AlignBottom,
                          QString::fromStdString(pie(texto_.pie, number + 1)));
    }

    QRectF page() const { return {QPointF(), printer_.pageRect(QPrinter::DevicePixel).size()}; }

    QPrinter& printer_;
    const Texto& texto_;
    double point_;  // in pixels of the printer
    QPainter painter_;
    std::vector<std::string> head_, body_;
    std::size_t per_page_ = 1;
};

}  // namespace

Documento documento(const ApplicationState& estado, const QString& titulo, const QStringList& lineas, bool apaisado,
                    const QStringList& cabecera) {
    const Texto text{plain(cabecera), plain(lineas), estado.texto(400, QStringLiteral("Página:")).toStdString()};
    return {titulo, [text](QPrinter& printer) { Prensa(printer, text).imprimir(); }, apaisado};
}

QStringList alinear(const QList<QStringList>& filas) {
    std::vector<std::vector<std::string>> rows;
    rows.reserve(static_cast<std::size_t>(filas.size()));
    for (const QStringList& row : filas)
        rows.push_back(plain(row));
    QStringList lines;
    for (const std::string& line : alinear(std::span<const std::vector<std::string>>(rows)))
        lines << QString::fromStdString(line);
    return lines;
}

}  // namespace imprimir

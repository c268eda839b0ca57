#pragma once
// Printing in a test: a printer of memory that keeps what is drawn on each page, and a door that uses it.

#include <QPaintEngine>
#include <QPainterPath>
#include <QPrintEngine>
#include <QPrinter>

#include <vector>

#include "controls/impresora.h"

/// What a page bears; places in millimetres from the corner of the paper.
struct PaginaImpresa {
    struct Palabra {
        QString texto;
        QRectF lugar;  // from ascent to descent
        QString familia;
    };
    std::vector<Palabra> palabras;
    QRectF trazos;  // bounds of lines and areas

    QStringList textos() const {
        QStringList all;
        for (const Palabra& word : palabras)
            all << word.texto;
        return all;
    }
    QRectF ocupado() const {
        QRectF all = trazos;
        for (const Palabra& word : palabras)
            all |= word.lugar;
        return all;
    }
};

class PapelPrueba final : public QPrinter {
public:
    explicit PapelPrueba(bool apaisado = false) : QPrinter(HighResolution), motor_(*this) {
        pdf_.setOutputFormat(PdfFormat);
        mecanismo_.pdf = pdf_.printEngine();
        mecanismo_.papel = this;
        setEngines(&mecanismo_, &motor_);
        setPageLayout({QPageSize(QPageSize::A4), apaisado ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter});
    }

    std::vector<PaginaImpresa> paginas;

private:
    /// Everything about the paper is that of a PDF.
    struct Mecanismo final : QPrintEngine {
        QPrintEngine* pdf = nullptr;
        PapelPrueba* papel = nullptr;
        void setProperty(PrintEnginePropertyKey key, const QVariant& value) override { pdf->setProperty(key, value); }
        QVariant property(PrintEnginePropertyKey key) const override { return pdf->property(key); }
        bool newPage() override {
            papel->paginas.emplace_back();
            return true;
        }
        bool abort() override { return true; }
        int metric(QPaintDevice::PaintDeviceMetric metric) const override { return pdf->metric(metric); }
        QPrinter::PrinterState printerState() const override {
            return papel->motor_.isActive() ? QPrinter::Active : QPrinter::Idle;
        }
    };

    struct Motor final : QPaintEngine {
        explicit Motor(PapelPrueba& printer) : QPaintEngine(AllFeatures), papel(printer) {}
        PapelPrueba& papel;
        bool begin(QPaintDevice*) override {
            papel.paginas.emplace_back();
            return true;
        }
        bool end() override { return true; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF& to, const QPixmap&, const QRectF&) override { add(to); }
        void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override {
            add(QPolygonF(QList<QPointF>(points, points + count)).boundingRect());
        }
        void drawPath(const QPainterPath& path) override { add(path.boundingRect()); }
        void drawTextItem(const QPointF& at, const QTextItem& item) override {
            const QRectF box(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
            papel.paginas.back().palabras.push_back({item.text(), on_paper(box), item.font().family()});
        }
        Type type() const override { return User; }

        void add(const QRectF& box) { papel.paginas.back().trazos |= on_paper(box); }
        QRectF on_paper(const QRectF& box) const {
            const double mm = 25.4 / papel.resolution();
            const QMarginsF margins = papel.pageLayout().margins(QPageLayout::Millimeter);
            const QRectF pixels = painter()->combinedTransform().mapRect(box);
            return {QPointF(margins.left(), margins.top()) + pixels.topLeft() * mm, pixels.size() * mm};
        }
    };

    QPrinter pdf_{HighResolution};
    Mecanismo mecanismo_;
    Motor motor_;
};

/// Prints everything at once and keeps it.
class ImpresoraPrueba final : public Impresora {
public:
    struct Impreso {
        QString titulo;
        bool apaisado;
        std::vector<PaginaImpresa> paginas;
        Documento documento;
    };
    std::vector<Impreso> impresos;

    void imprimir(QWidget*, const Documento& documento) override {
        PapelPrueba paper(documento.apaisado);
        documento.pintar(paper);
        impresos.push_back({documento.titulo, documento.apaisado, std::move(paper.paginas), documento});
    }
};

#include "shell/ayuda/papel_ayuda.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <memory>

#include "shell/ayuda/pagina_ayuda.h"

namespace {

constexpr double FOOTER_LETTER = 8;  // points
constexpr double FOOTER_ROOM = 2.5;  // heights of its letters

void draw_sheet(QPainter& painter, const QTextDocument& text, int sheet, const QSizeF& room) {
    painter.save();
    painter.translate(0, -sheet * room.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(QPointF(0, sheet * room.height()), room);
    context.palette.setColor(QPalette::Text, Qt::black);
    painter.setClipRect(context.clip);
    text.documentLayout()->draw(&painter, context);
    painter.restore();
}

}  // namespace

Documento documento_de_pagina(PaginaAyuda& pagina, const QString& titulo, const Texto& texto) {
    const QString footer = texto(400, QStringLiteral("Página:"));
    const auto paint = [&pagina, titulo, footer](QPrinter& printer) {
        QPainter painter(&printer);
        QFont letter = pagina.font();
        letter.setPointSizeF(FOOTER_LETTER);
        painter.setFont(letter);
        const double line = painter.fontMetrics().height();
        const QSizeF paper(printer.pageLayout().paintRectPixels(printer.resolution()).size());
        const QSizeF room = paper - QSizeF(0, FOOTER_ROOM * line);
        const QRectF bottom(0, paper.height() - line, paper.width(), line);
        const std::unique_ptr<QTextDocument> text = pagina.copia_para(&printer, room);
        const int first = std::max(printer.fromPage(), 1) - 1;
        const int end = printer.toPage() > 0 ? std::min(printer.toPage(), text->pageCount()) : text->pageCount();
        for (int sheet = first; sheet < end; ++sheet) {
            if (sheet > first && !printer.newPage())
                return;
            draw_sheet(painter, *text, sheet, room);
            painter.drawText(bottom, Qt::AlignLeft, titulo);
            painter.drawText(bottom, Qt::AlignRight, QStringLiteral("%1 %2").arg(footer).arg(sheet + 1));
        }
    };
    return {titulo, paint};
}

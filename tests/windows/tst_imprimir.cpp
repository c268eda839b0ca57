// What reaches the paper, and the preview before it. With TAVO_PDF=folder in the environment the pages are left there
// as PDF, to be looked at.

#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include "controls/vista_previa.h"
#include "shell/imprimir.h"
#include "tests/windows/support/elegir_prueba.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "tests/windows/support/plot_windows.h"

class tst_imprimir : public QObject {
    Q_OBJECT

private slots:
    void text_in_pages();
    void wanted_pages_only();
    void plot_on_a_page();
    void preview_is_driven_by_keys();
    void pdf_is_whole_or_not_there();
    void long_job_can_be_stopped();
    void no_printer_offers_a_pdf();
    void printer_gets_the_chosen_pages();
};

namespace {

class ImpresorasPrueba final : public ElegirImpresora {
public:
    bool instalada = true;
    QString archivo;  // the printer prints into it
    int desde = 0, hasta = 0;
    bool hay() override { return instalada; }
    bool elegir(QWidget*, QPrinter& printer, int) override {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(archivo);
        if (desde > 0)
            printer.setFromTo(desde, hasta);
        return true;
    }
};

struct Banco {
    HogarTemporal hogar;
    ApplicationState estado{hogar.path()};
    MensajesPrueba mensajes;
    ElegirPrueba archivos;
    ImpresorasPrueba impresoras;
    QTemporaryDir carpeta;

    Banco() { estado.load_languages(); }
    VistaPrevia::Ayudantes ayudantes() {
        return {mensajes, archivos, impresoras, [](int, const QString& literal) { return literal; }};
    }
};

/// The texts of the language table, each in one line.
QStringList table(const ApplicationState& estado) {
    QStringList lines{QStringLiteral("Tabla de idiomas"), QString()};
    for (const auto& [key, text] : estado.language_table().claves("Español"))
        lines << QString::fromStdString(key + " = " + text);
    return lines;
}

int pages_of(const QString& file) {
    QFile pdf(file);
    if (!pdf.open(QIODevice::ReadOnly))
        return -1;
    return static_cast<int>(
        QString::fromLatin1(pdf.readAll()).count(QRegularExpression(QStringLiteral("/Type /Page\\b"))));
}

/// For whoever wants to look.
void leave(const Documento& document, const char* name) {
    if (!qEnvironmentVariableIsSet("TAVO_PDF"))
        return;
    Papel paper(document.apaisado ? QPageLayout::Landscape : QPageLayout::Portrait);
    paper.setOutputFormat(QPrinter::PdfFormat);
    paper.setOutputFileName(qEnvironmentVariable("TAVO_PDF") + QLatin1Char('/') + QLatin1String(name) +
                            QStringLiteral(".pdf"));
    document.pintar(paper);
}

}  // namespace

void tst_imprimir::text_in_pages() {
    Banco banco;
    const QStringList lines = table(banco.estado);
    for (const bool wide : {false, true}) {
        ImpresoraPrueba printer;
        const Documento document =
            imprimir::documento(banco.estado, QStringLiteral("Tabla"), lines, wide, {QStringLiteral("cabecera")});
        printer.imprimir(nullptr, document);
        leave(document, wide ? "tabla_apaisada" : "tabla");
        const QRectF inside = wide ? QRectF(20, 20, 257, 170) : QRectF(20, 20, 170, 257);
        const auto& pages = printer.impresos.front().paginas;
        QVERIFY(pages.size() > 3);
        QString all;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            QStringList texts = pages[i].textos();
            QCOMPARE(texts.takeFirst(), QStringLiteral("cabecera"));
            QCOMPARE(texts.takeLast(), QStringLiteral("Página: %1").arg(i + 1));
            QVERIFY(inside.adjusted(-0.1, -0.1, 0.1, 0.1).contains(pages[i].ocupado()));
            double below = 0.0;
            for (const auto& word : pages[i].palabras) {
                QCOMPARE(word.familia, QStringLiteral("Courier New"));
                QVERIFY(word.lugar.top() > below - 0.5);  // no line upon another, nor upon the footer
                below = word.lugar.bottom();
            }
            for (QString& text : texts)
                all += text.endsWith(QStringLiteral(".../...")) ? text.chopped(7) : text + QLatin1Char('\n');
        }
        QStringList wanted = lines;
        wanted.removeAll(QString());  // an empty line leaves no ink
        QCOMPARE(all.trimmed(), wanted.join(QLatin1Char('\n')));
    }
}

void tst_imprimir::wanted_pages_only() {
    Banco banco;
    const Documento document = imprimir::documento(banco.estado, QStringLiteral("Tabla"), table(banco.estado));
    PapelPrueba paper;
    paper.setFromTo(2, 3);
    document.pintar(paper);
    QCOMPARE(paper.paginas.size(), 2u);
    QCOMPARE(paper.paginas.front().textos().last(), QStringLiteral("Página: 2"));
    QCOMPARE(paper.paginas.back().textos().last(), QStringLiteral("Página: 3"));

    PapelPrueba empty;
    imprimir::documento(banco.estado, QString(), {}).pintar(empty);
    QCOMPARE(empty.paginas.size(), 1u);
    QCOMPARE(empty.paginas.front().textos(), QStringList{QStringLiteral("Página: 1")});
}

void tst_imprimir::plot_on_a_page() {
    VentanasGrafico ventanas;
    ventanas.row(1, QStringLiteral("CO2 "), 8, QStringLiteral("260"), QStringLiteral("1"));
    ventanas.row(2, QStringLiteral("CO2 "), 1, QStringLiteral("320"), QStringLiteral("1"));
    frmgraficos* plot = ventanas.graficos();
    plot->actualiza();
    ventanas.estado.current_range.vmax = 0.6;
    plot->dibuja();
    QTest::keyClick(ventanas.control<QWidget>(plot, "pctgrafico"), Qt::Key_P, Qt::ControlModifier);
    ventanas.control<QToolButton>(plot, "btimprimir")->click();
    QCOMPARE(ventanas.impresora.impresos.size(), 2u);
    const auto& printed = ventanas.impresora.impresos.front();
    leave(printed.documento, "grafico");
    QVERIFY(printed.apaisado);
    QCOMPARE(printed.paginas.size(), 1u);
    const PaginaImpresa& page = printed.paginas.front();
    QCOMPARE(page.textos().first(), plot->windowTitle());
    QVERIFY(page.textos().contains(QStringLiteral("V (l)")));
    QVERIFY(QRectF(20, 20, 257, 170).adjusted(-0.1, -0.1, 0.1, 0.1).contains(page.ocupado()));
    QVERIFY(page.ocupado().width() > 250 && page.ocupado().height() > 160);  // the page is used
}

void tst_imprimir::preview_is_driven_by_keys() {
    Banco banco;
    VistaPrevia window(imprimir::documento(banco.estado, QStringLiteral("Tabla"), table(banco.estado)),
                       banco.ayudantes());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* page = window.findChild<QSpinBox*>(QStringLiteral("txtpagina"));
    auto* view = window.findChild<QPrintPreviewWidget*>(QStringLiteral("vista"));
    const auto press = [&](int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(view, static_cast<Qt::Key>(key), with);
    };
    const int all = view->pageCount();
    QVERIFY(all > 3);
    QTRY_COMPARE(page->text(), QStringLiteral("Página 1 de %1").arg(all));
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    QCOMPARE(page->value(), 3);
    press(Qt::Key_PageUp);
    QCOMPARE(view->currentPage(), 2);
    press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(page->value(), all);
    QVERIFY(!window.findChild<QToolButton*>(QStringLiteral("btsiguiente"))->isEnabled());
    press(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(page->value(), 1);
    page->selectAll();
    QTest::keyClicks(page, QStringLiteral("3\r"));
    QCOMPARE(view->currentPage(), 3);
    QVERIFY(window.isVisible());  // Return in the entry closes nothing

    const double whole = view->zoomFactor();
    press(Qt::Key_1, Qt::ControlModifier);
    const double wide = view->zoomFactor();
    QVERIFY(wide > whole);
    press(Qt::Key_Minus, Qt::ControlModifier);
    QVERIFY(view->zoomFactor() < wide);
    for (int i = 0; i < 40; ++i)
        press(Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(view->zoomFactor() < 10.0);
    press(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(view->zoomMode(), QPrintPreviewWidget::FitInView);

    QTest::keyClick(&window, Qt::Key_H, Qt::AltModifier);
    QTRY_COMPARE(view->orientation(), QPageLayout::Landscape);
    QVERIFY(page->maximum() != all);  // laid out anew
    press(Qt::Key_Escape);
    QVERIFY(!window.isVisible());
}

void tst_imprimir::pdf_is_whole_or_not_there() {
    Banco banco;
    VistaPrevia window(imprimir::documento(banco.estado, QStringLiteral("Tabla: a/b"), table(banco.estado)),
                       banco.ayudantes());
    window.show();
    auto* view = window.findChild<QPrintPreviewWidget*>(QStringLiteral("vista"));
    auto* save = window.findChild<QToolButton*>(QStringLiteral("btpdf"));
    save->click();  // given up in the file chooser
    QCOMPARE(banco.archivos.propuesta, QStringLiteral("Tabla a b.pdf"));
    const QString file = banco.carpeta.filePath(QStringLiteral("x.pdf"));
    banco.archivos.respuesta = file;
    save->click();
    QCOMPARE(pages_of(file), view->pageCount());
    QVERIFY(banco.mensajes.vistos.empty());

    banco.archivos.respuesta = banco.carpeta.filePath(QStringLiteral("none/x.pdf"));
    save->click();
    QCOMPARE(banco.mensajes.vistos.size(), 1u);
    QCOMPARE(banco.mensajes.vistos.front().estilo, 16);
    QVERIFY(banco.mensajes.vistos.front().texto.contains(banco.archivos.respuesta));
    QCOMPARE(QDir(banco.carpeta.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("x.pdf")});
}

void tst_imprimir::long_job_can_be_stopped() {
    Banco banco;
    int drawn = 0;
    bool slow = false;
    const auto endless = [&](QPrinter& printer) {
        QPainter painter(&printer);
        for (drawn = 1; drawn < (slow ? 1000 : 3) && printer.newPage(); ++drawn)
            QTest::qSleep(slow ? 20 : 0);
    };
    VistaPrevia window({QStringLiteral("Largo"), endless}, banco.ayudantes());
    window.show();
    slow = true;
    banco.archivos.respuesta = banco.carpeta.filePath(QStringLiteral("x.pdf"));
    QTimer finger;
    connect(&finger, &QTimer::timeout, &window, [&window] {
        if (auto* progress = window.findChild<QProgressDialog*>(); progress && progress->isVisible())
            progress->findChild<QPushButton*>()->click();
    });
    finger.start(5);
    window.findChild<QToolButton*>(QStringLiteral("btpdf"))->click();
    QVERIFY(drawn < 1000);
    QVERIFY(!QFile::exists(banco.archivos.respuesta));
    QVERIFY(window.findChild<QLabel*>(QStringLiteral("lbestado"))->toolTip().contains(QStringLiteral("Cancelado")));
}

void tst_imprimir::no_printer_offers_a_pdf() {
    Banco banco;
    banco.impresoras.instalada = false;
    VistaPrevia window(imprimir::documento(banco.estado, QStringLiteral("Tabla"), {QStringLiteral("x")}),
                       banco.ayudantes());
    window.show();
    banco.archivos.respuesta = banco.carpeta.filePath(QStringLiteral("x.pdf"));
    banco.mensajes.respuestas = {Respuesta::No, Respuesta::Si};
    auto* print = window.findChild<QToolButton*>(QStringLiteral("btimprimir"));
    print->click();
    QVERIFY(!QFile::exists(banco.archivos.respuesta));
    print->click();
    QCOMPARE(pages_of(banco.archivos.respuesta), 1);
    QVERIFY(banco.mensajes.vistos.front().texto.contains(QStringLiteral("ninguna impresora")));
}

void tst_imprimir::printer_gets_the_chosen_pages() {
    Banco banco;
    VistaPrevia window(imprimir::documento(banco.estado, QStringLiteral("Tabla"), table(banco.estado)),
                       banco.ayudantes());
    window.show();
    auto* view = window.findChild<QPrintPreviewWidget*>(QStringLiteral("vista"));
    const int all = view->pageCount();
    banco.impresoras.archivo = banco.carpeta.filePath(QStringLiteral("job.pdf"));
    banco.impresoras.desde = 2;
    banco.impresoras.hasta = 3;
    window.findChild<QToolButton*>(QStringLiteral("btimprimir"))->click();
    QCOMPARE(pages_of(banco.impresoras.archivo), 2);
    QVERIFY(window.findChild<QLabel*>(QStringLiteral("lbestado"))->toolTip().contains(QStringLiteral("Enviado")));
    view->updatePreview();
    QCOMPARE(view->pageCount(), all);  // the preview keeps all pages

    banco.impresoras.archivo = banco.carpeta.filePath(QStringLiteral("none/job.pdf"));
    window.findChild<QToolButton*>(QStringLiteral("btimprimir"))->click();
    QCOMPARE(banco.mensajes.vistos.size(), 1u);
    QVERIFY(banco.mensajes.vistos.front().texto.contains(QStringLiteral("no ha aceptado")));
}

QTEST_MAIN(tst_imprimir)
#include "tst_imprimir.moc"

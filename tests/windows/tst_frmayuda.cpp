// The help viewer, driven by keys and clicks over a small help file.

#include <QBuffer>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>

#include <optional>

#include "shell/frmayuda.h"
#include "tests/windows/support/ayuda_de_prueba.h"
#include "tests/windows/support/exterior_prueba.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"

namespace {

QString lines(int count) {
    return QStringLiteral("<p>relleno</p>").repeated(count);
}

/// Red, 40 x 20.
QByteArray picture() {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

const QList<PaginaDePrueba> PAGES{
    {"inicio.html", "Bienvenida",
     "<p><a href=\"uno.html\">uno</a> <a href=\"uno.html#fin\">fin</a> <a href=\"http://example.org/a\">red</a> "
     "<a href=\"file:///etc/passwd\">disco</a> <a href=\"no.html\">falta</a></p>"},
    {"uno.html", "Presión de vapor", "<p>La PRESION sube.</p>" + lines(80) + "<a name=\"fin\"></a><p>Último</p>"},
    {"dos.html", "Gas ideal", "<p>presión presion Presión, área</p>", "<link rel=\"stylesheet\" href=\"e.css\">"},
    {"tres.html", "Dibujo", "<p><img src=\"rojo.png\" width=\"20\"></p><p><img src=\"no.png\">fin</p>"},
};

}  // namespace

class tst_frmayuda : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void contents_follow_the_page_and_lead_to_it();
    void history_keeps_where_a_page_was_left();
    void links_data();
    void links();
    void search_data();
    void search();
    void a_result_is_marked_on_its_page();
    void index_filter();
    void find_on_the_page();
    void zoom_keeps_the_line_in_sight();
    void pictures_come_from_the_file_alone();
    void damage_is_told_in_place_of_the_page();
    void paper();
    void escape_closes_bar_then_window();

private:
    template <class Widget>
    Widget* find(const char* name) const {
        return viewer_->findChild<Widget*>(QLatin1String(name));
    }
    PaginaAyuda* page() const { return find<PaginaAyuda>("pagina"); }
    QTreeWidget* tree() const { return find<QTreeWidget>("contenido"); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(viewer_->windowHandle(), key, modifiers);
    }
    void click(const char* button) const { QTest::mouseClick(find<QToolButton>(button), Qt::LeftButton); }
    /// Clicks the link with this text.
    void follow(const QString& text) const {
        const QTextCursor link = page()->document()->find(text);
        QVERIFY(!link.isNull());
        QTest::mouseClick(page()->viewport(), Qt::LeftButton, {}, page()->cursorRect(link).center() - QPoint(4, 0));
    }

    HogarTemporal home_;
    std::optional<ApplicationState> estado_;
    ImpresoraPrueba printer_;
    ExteriorPrueba outside_;
    std::optional<frmayuda> viewer_;
};

void tst_frmayuda::initTestCase() {
    compilar_ayuda(home_.path() / "a.chm", PAGES, {{"rojo.png", picture()}, {"e.css", "p { color: #ff0000 }"}});
    estado_.emplace(home_.path());
    estado_->load_languages();
}

void tst_frmayuda::init() {
    outside_ = {};
    viewer_.emplace(*estado_, printer_, outside_);
    viewer_->set_libro(std::make_shared<const tavo::chm::ChmFile>(tavo::chm::ChmFile::open(home_.path() / "a.chm")),
                       "a.chm");
    viewer_->resize(900, 600);
    viewer_->show();
    viewer_->abrir("/inicio.html");
    QVERIFY(QTest::qWaitForWindowActive(&*viewer_));
}

void tst_frmayuda::cleanup() {
    viewer_.reset();
}

void tst_frmayuda::contents_follow_the_page_and_lead_to_it() {
    QCOMPARE(tree()->currentItem()->text(0), "Bienvenida");
    QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualItemRect(tree()->topLevelItem(2)).center());
    QCOMPARE(viewer_->pagina(), "/dos.html");
    QVERIFY(viewer_->windowTitle().startsWith("Gas ideal"));
    QTest::keyClick(tree(), Qt::Key_Up);
    QCOMPARE(viewer_->pagina(), "/uno.html");
    click("pagina_siguiente");
    key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(viewer_->pagina(), "/tres.html");
    QCOMPARE(tree()->currentItem()->text(0), "Dibujo");
    QVERIFY(!find<QToolButton>("pagina_siguiente")->isEnabled());
    key(Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(tree()->currentItem()->text(0), "Bienvenida");
}

void tst_frmayuda::history_keeps_where_a_page_was_left() {
    QVERIFY(!find<QToolButton>("atras")->isEnabled());
    follow("uno");
    page()->verticalScrollBar()->setValue(333);
    viewer_->abrir("/dos.html");
    key(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(viewer_->pagina(), "/uno.html");
    QCOMPARE(page()->verticalScrollBar()->value(), 333);
    key(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(viewer_->pagina(), "/inicio.html");
    key(Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(page()->verticalScrollBar()->value(), 333);
    viewer_->abrir("/tres.html");
    QVERIFY(!find<QToolButton>("adelante")->isEnabled());
    click("atras");
    QCOMPARE(viewer_->pagina(), "/uno.html");
}

void tst_frmayuda::links_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("browser");
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* link, const char* page, const char* browser, const char* status,
                        const char* shown) {
        QTest::newRow(link) << QString(page) << QString(browser) << QString::fromUtf8(status)
                            << QString::fromUtf8(shown);
    };
    row("uno", "/uno.html", "", "", "PRESION");
    row("fin", "/uno.html", "", "", "Último");
    row("red", "/inicio.html", "http://example.org/a", "", "uno");
    row("disco", "/inicio.html", "", "La dirección file:///etc/passwd no se ha abierto.", "uno");
    row("falta", "", "", "", "La página no.html no está en el archivo de ayuda.");
}

void tst_frmayuda::links() {
    QFETCH(QString, page);
    QFETCH(QString, browser);
    QFETCH(QString, status);
    QFETCH(QString, shown);
    follow(QTest::currentDataTag());
    QCOMPARE(viewer_->pagina(), page);
    QCOMPARE(outside_.iniciado.join(' '), browser);
    QTest::mouseMove(this->page()->viewport(), {1, 1});
    if (!status.isEmpty())
        QCOMPARE(viewer_->statusBar()->currentMessage(), status);
    const QTextCursor text = this->page()->document()->find(shown);
    QVERIFY(!text.isNull() && this->page()->viewport()->rect().contains(this->page()->cursorRect(text)));
    if (browser.isEmpty())
        return;
    outside_.navegador = false;
    follow("red");
    QCOMPARE(viewer_->statusBar()->currentMessage(), "La dirección http://example.org/a no se ha abierto.");
}

void tst_frmayuda::search_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("title first, then the page with more places")
        << "PRESION" << QStringList{"Presión de vapor", "Gas ideal"};
    QTest::newRow("all words") << "area presion" << QStringList{"Gas ideal"};
    QTest::newRow("words in title and text") << "ideal presión" << QStringList{"Gas ideal"};
    QTest::newRow("nothing") << "isobara" << QStringList{};
    QTest::newRow("no words") << "  " << QStringList{};
}

void tst_frmayuda::search() {
    QFETCH(QString, typed);
    QFETCH(QStringList, titles);
    QTest::keyClick(viewer_->windowHandle(), Qt::Key_B, Qt::AltModifier);
    auto* box = find<QLineEdit>("txtbuscar");
    QCOMPARE(QApplication::focusWidget(), box);
    box->insert(typed);
    auto* list = find<QListWidget>("lstbuscar");
    QStringList found;
    for (int i = 0; i < list->count(); ++i)
        found << list->item(i)->text();
    QCOMPARE(found, titles);
    const QString count = "Páginas encontradas: " + QString::number(titles.size());
    if (!typed.simplified().isEmpty())
        QCOMPARE(find<QLabel>("lbbuscar")->text(), titles.isEmpty() ? "No se encuentra: " + typed : count);
    QVERIFY(list->count() == 0 || !list->item(0)->data(Qt::AccessibleDescriptionRole).toString().isEmpty());
}

void tst_frmayuda::a_result_is_marked_on_its_page() {
    key(Qt::Key_B, Qt::AltModifier);
    find<QLineEdit>("txtbuscar")->insert("presion");
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    QCOMPARE(viewer_->pagina(), "/dos.html");
    QStringList marked;
    for (const auto& mark : page()->extraSelections())
        marked << mark.cursor.selectedText();
    QCOMPARE(marked, (QStringList{"presión", "presion", "Presión"}));
    viewer_->abrir("/uno.html");
    QVERIFY(page()->extraSelections().isEmpty());
}

void tst_frmayuda::index_filter() {
    key(Qt::Key_E, Qt::AltModifier);
    QTest::keyClicks(QApplication::focusWidget(), "presion");
    key(Qt::Key_Return);
    QCOMPARE(viewer_->pagina(), "/uno.html");
    QTest::keyClicks(find<QLineEdit>("txtindice"), "x");
    QVERIFY(find<QLabel>("lbindice")->isVisible());
}

void tst_frmayuda::find_on_the_page() {
    viewer_->abrir("/dos.html");
    key(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "presion ");
    const auto* place = find<QLabel>("lbpagina");
    QCOMPARE(place->text(), "1 / 3");
    key(Qt::Key_F3);
    key(Qt::Key_F3);
    QCOMPARE(place->text(), "3 / 3");
    click("btsiguiente");
    QCOMPARE(place->text(), "1 / 3");
    key(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(place->text(), "3 / 3");
    viewer_->abrir("/uno.html");
    QCOMPARE(place->text(), "1 / 1");
}

void tst_frmayuda::zoom_keeps_the_line_in_sight() {
    viewer_->abrir("/uno.html");
    page()->verticalScrollBar()->setValue(600);
    const auto first = [this] { return page()->cursorForPosition({page()->width() / 2, 4}).block().blockNumber(); };
    const int line = first(), height = page()->verticalScrollBar()->maximum();
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(page()->verticalScrollBar()->maximum() > height * 1.3);
    QVERIFY2(qAbs(first() - line) <= 1, qPrintable(QString::number(first())));
    key(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(page()->verticalScrollBar()->maximum(), height);
}

void tst_frmayuda::pictures_come_from_the_file_alone() {
    HogarTemporal other;  // a picture on the disk must not stand in for the missing one
    other.write("no.png", picture());
    const QString here = QDir::currentPath();
    QDir::setCurrent(QString::fromStdString(other.path().string()));
    viewer_->abrir("/tres.html");
    const QImage shown = page()->viewport()->grab().toImage();
    QDir::setCurrent(here);
    int red = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            red += shown.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
    }
    QCOMPARE(red, 20 * 10);
    viewer_->abrir("/dos.html");  // its style sheet is read without a type
    QCOMPARE(page()->document()->begin().begin().fragment().charFormat().foreground().color(), QColor(Qt::red));
}

void tst_frmayuda::damage_is_told_in_place_of_the_page() {
    // Every byte of the compressed pages is bad; what the file says about them is whole.
    QByteArray bytes = home_.read("a.chm");
    bytes.replace(bytes.size() - 400, 400, QByteArray(400, '\xFF'));
    viewer_->set_libro(std::make_shared<const tavo::chm::ChmFile>(bytes.toStdString()), "a.chm");
    viewer_->abrir("/inicio.html");
    QVERIFY2(page()->toPlainText().contains("El archivo de ayuda a.chm está dañado"),
             qPrintable(page()->toPlainText()));
}

void tst_frmayuda::paper() {
    printer_.impresos.clear();
    viewer_->abrir("/uno.html");
    key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(printer_.impresos.size(), std::size_t{1});
    const auto& sheets = printer_.impresos.front().paginas;
    QCOMPARE(sheets.size(), std::size_t{3});
    QVERIFY(sheets[0].textos().join(' ').contains("PRESION"));
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        QVERIFY(sheets[i].textos().contains(QStringLiteral("Página: %1").arg(i + 1)));
        QVERIFY(QRectF(19, 19, 172, 259).contains(sheets[i].ocupado()));
    }
}

void tst_frmayuda::escape_closes_bar_then_window() {
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    QVERIFY(viewer_->isVisible() && !find<QWidget>("barra_buscar")->isVisible());
    key(Qt::Key_Escape);
    QVERIFY(!viewer_->isVisible());
}

QTEST_MAIN(tst_frmayuda)
#include "tst_frmayuda.moc"

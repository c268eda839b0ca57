// Every window that lists gases, over databases that somebody has spoilt.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include <functional>
#include <memory>
#include <random>

#include "controls/linea_estado.h"
#include "core/errors.h"
#include "core/numtext.h"
#include "shell/frmprincipal.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/calc/frmcalculos.h"
#include "windows/gasedit/editor_logica.h"
#include "windows/gasedit/frmcompuestos.h"
#include "windows/gasedit/frmgases.h"
#include "windows/lab/frmoperaciones.h"
#include "windows/plots/frmdatos.h"
#include "windows/reference/frmtabla.h"

namespace {

constexpr int GOOD_GAS = 3;
constexpr int JUNK = 1 << 18;

template <class Control>
Control* control(const QWidget* window, const char* name) {
    auto* found = window->findChild<Control*>(QLatin1String(name));
    if (!found)
        qFatal("no control %s", name);
    return found;
}

/// How a person takes a gas in a window, and what the window then makes of it.
struct Window {
    const char* name;
    std::function<QWidget*(ApplicationState&, Mensajes&)> make;
    std::function<void(QWidget*, int gas)> choose;
    std::function<QString(QWidget*, ApplicationState&)> result;
};

void choose_in(QWidget* window, const char* list, int gas) {
    control<QComboBox>(window, list)->setCurrentIndex(gas - 1);
}

const std::vector<Window>& windows() {
    static const auto choose = [](QWidget* window, int gas) { choose_in(window, "cmbgas", gas); };
    static const auto pressure = [](QWidget* window, ApplicationState&) {
        control<QComboBox>(window, "cmbecu")->setCurrentIndex(8);
        return control<QLineEdit>(window, "txtpress")->text();
    };
    static ImpresoraPrueba printer;
    static const std::vector<Window> all{
        {"frmgases", [](auto& estado, auto& mensajes) { return new frmgases(estado, mensajes); }, choose,
         [](QWidget* window, ApplicationState&) {
             control<QComboBox>(window, "cmbecu")->setCurrentIndex(8);
             return control<QLineEdit>(window, "txta")->text();
         }},
        {"frmcalculos", [](auto& estado, auto& mensajes) { return new frmcalculos(estado, mensajes); }, choose,
         pressure},
        {"frmoperaciones", [](auto& estado, auto& mensajes) { return new frmoperaciones(estado, mensajes); }, choose,
         pressure},
        {"frmdatos", [](auto& estado, auto& mensajes) { return new frmdatos(estado, mensajes); },
         [](QWidget* window, int gas) { choose_in(window, "cmbgas(1)", gas); },
         [](QWidget* window, ApplicationState& estado) {
             control<QComboBox>(window, "cmbecu(1)")->setCurrentIndex(8);
             return QString::fromStdString(tavo::to_text(estado.slot_table()[1].gas.a));
         }},
        {"frmcompuestos", [](auto& estado, auto& mensajes) { return new frmcompuestos(estado, mensajes); },
         [](QWidget* window, int gas) {
             auto* grid = control<QTableView>(window, "grid");
             grid->setCurrentIndex(grid->model()->index(gas - 1, 0));
             QTest::keyClick(grid, Qt::Key_Space);
         },
         [](QWidget* window, ApplicationState&) {
             control<QComboBox>(window, "cmbecu")->setCurrentIndex(8);
             return control<QTableView>(window, "grid")->model()->index(GOOD_GAS - 1, 1).data().toString() +
                    control<QLabel>(window, "lbgas")->text();
         }},
        {"frmtabla", [](auto& estado, auto&) { return new frmtabla(estado, printer); },
         [](QWidget* window, int gas) {
             auto* grid = control<QTableView>(window, "gridcrit");
             grid->setCurrentIndex(grid->model()->index(gas - 1, 0));
         },
         [](QWidget* window, ApplicationState&) {
             QStringList cells;
             for (int column = 0; column < 8; ++column)
                 cells << control<QTableView>(window, "gridcrit")
                              ->currentIndex()
                              .siblingAtColumn(column)
                              .data()
                              .toString();
             return cells.join(u'|');
         }},
    };
    return all;
}

/// A start of the program over a database.
struct Program {
    explicit Program(const QByteArray& database) : estado(home.path()) {
        home.write(QStringLiteral("data"), database);
        estado.load_languages();
        for (const Window& window : windows())
            estado.register_window(window.name, [&] { return window.make(estado, mensajes); });
        principal = std::make_unique<frmprincipal>(estado, mensajes);
        principal->MDIForm_Load();
    }

    QString choose(const Window& window, int gas) {
        QWidget* shown = estado.window(window.name);
        window.choose(shown, gas);
        return window.result(shown, estado);
    }
    /// Everything that a person can read after a choice.
    QString told(const Window& window) const {
        QStringList texts;
        for (const Caja& box : mensajes.vistos)
            texts << box.texto;
        for (const QWidget* place : {estado.open_window(window.name), static_cast<QWidget*>(principal.get())}) {
            for (const QLabel* label : place->findChildren<QLabel*>())
                texts << label->text();
            for (const LineaEstado* line : place->findChildren<LineaEstado*>())
                texts << line->toPlainText();
        }
        return texts.join(u'\n').replace(QChar::Nbsp, u' ');
    }

    HogarTemporal home;
    MensajesPrueba mensajes;
    ApplicationState estado;
    std::unique_ptr<frmprincipal> principal;
};

QByteArray shipped() {
    static const QByteArray bytes = HogarTemporal().read(QStringLiteral("data"));
    return bytes;
}

/// The shipped database with the first `from` after a header replaced.
QByteArray spoilt(const char* header, const QByteArray& from, const QByteArray& to) {
    QByteArray bytes = shipped();
    const qsizetype at = bytes.indexOf(from, bytes.indexOf(header));
    if (at < 0)
        qFatal("nothing to spoil");
    return bytes.replace(at, from.size(), to);
}

/// The value of a key changed.
QByteArray with(const char* header, const char* key, const QByteArray& line) {
    const QByteArray bytes = shipped();
    const qsizetype start = bytes.indexOf(QByteArray("\n") + key + "=", bytes.indexOf(header)) + 1;
    return QByteArray(bytes).replace(start, bytes.indexOf('\n', start) + 1 - start, line);
}

/// The lines that hold anything; an edit may drop blank ones and makes all end alike.
QByteArrayList lines(const QByteArray& bytes) {
    QByteArrayList result = QByteArray(bytes).replace('\r', '\n').split('\n');
    result.removeAll(QByteArray());
    return result;
}

QByteArrayList without_section(const QByteArrayList& all, const QByteArray& header) {
    const qsizetype start = all.indexOf(header);
    qsizetype end = start + 1;
    while (end < all.size() && !all[end].startsWith('['))
        ++end;
    return start < 0 ? all : all.mid(0, start) + all.mid(end);
}
QByteArrayList without_section(const QByteArray& bytes, const QByteArray& header) {
    return without_section(lines(bytes), header);
}

QByteArray noise() {
    std::mt19937 random(1);
    QByteArray bytes(JUNK, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

}  // namespace

class tst_bad_database : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { good_ = std::make_unique<Program>(shipped()); }
    void cleanupTestCase() { good_.reset(); }
    void good_gases_stay_usable_data();
    void good_gases_stay_usable();
    void an_edit_keeps_the_rest_or_is_refused_data() { good_gases_stay_usable_data(); }
    void an_edit_keeps_the_rest_or_is_refused();

private:
    std::unique_ptr<Program> good_;  // over the shipped database
};

void tst_bad_database::good_gases_stay_usable_data() {
    QTest::addColumn<QByteArray>("database");
    QTest::addColumn<int>("bad_gas");  // 0: none that can be chosen
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("sentence");

    const auto row = [](const char* name, const QByteArray& database, int bad, int count, const char* sentence) {
        QTest::newRow(name) << database << bad << count << QString::fromUtf8(sentence);
    };
    row("as shipped", shipped(), 0, 60, "");
    row("missing key", with("[G5]", "tc", ""), 5, 60, "falta «tc»");
    row("missing name", with("[G5]", "nombre", ""), 5, 60, "[G5] (gas 5 sin nombre): falta «nombre»");
    row("missing coefficient", with("[G5]", "c(8,3)", ""), 5, 60, "falta «c(8,3)»");
    row("Tc 0", with("[G5]", "tc", "tc=0\r\n"), 5, 60, "«tc» debe ser mayor que 0: «0»");
    row("text for a number", with("[G5]", "pc", "pc=mucho\r\n"), 5, 60, "«pc» no es un número: «mucho»");
    row("decimal comma", with("[G5]", "pc", "pc=33,5\r\n"), 5, 60, "«pc» no es un número: «33,5»");
    row("gap", spoilt("[G5]", "[G5]", "[H5]"), 5, 60, "[G5] (gas 5 sin nombre): falta su sección");
    row("n above the sections", with("[General]", "n", "n=61\r\n"), 61, 61, "[G61] (gas 61 sin nombre): falta");
    row("n below the sections", with("[General]", "n", "n=59\r\n"), 0, 59, "[G60]: no se muestra, porque «n» es 59");
    row("n missing", with("[General]", "n", ""), 0, 60, "[General]: «n» no es un número de gases: «». Se cuentan");
    row("n a word", with("[General]", "n", "n=abc\r\n"), 0, 60, "no es un número de gases: «abc»");
    row("n beyond 16 bits", with("[General]", "n", "n=99999\r\n"), 0, 60, "no es un número de gases: «99999»");
    row("line without =", with("[G5]", "pm", "pm\r\n"), 5, 60, "hay una línea sin «=»");
    row("line without = at first", spoilt("[G5]", "]\r\n", "]\r\npm\r\n"), 5, 60, "hay una línea sin «=»");
    row("NUL for a value", with("[G5]", "tc", QByteArray("tc=1\0\r\n", 7)), 5, 60, "«tc» no es un número: «1\uFFFD»");
    row("header of one character", spoilt("[G5]", "[G5]", "[\r\n[G5]"), 5, 60, "antes hay una línea con solo «[»");
    row("nothing can be read", "[\r\n" + shipped(), 0, 0, "[General]: no se puede leer: antes hay");
    row("bad line in General", with("[General]", "n", "sesenta\r\n"), 0, 60, "[General]: hay una línea sin «=»");
    row("junk in front", "[x]\r\n" + noise() + "\r\n" + shipped(), 0, 60, "");
    row("junk behind", shipped() + noise(), 60, 60, "hay una línea sin «=»");
    row("line feeds", shipped() + QByteArray(JUNK, '\n'), 0, 60, "");
}

void tst_bad_database::good_gases_stay_usable() {
    QFETCH(const QByteArray, database);
    QFETCH(const int, bad_gas);
    QFETCH(const int, count);
    QFETCH(const QString, sentence);

    Program program(database);
    QCOMPARE(program.estado.gas_count(), std::int16_t(count));
    const QString status = control<QLabel>(program.principal.get(), "lbestado")->text();
    QVERIFY2(sentence.isEmpty() ? status.isEmpty() : status.contains(sentence), qPrintable(status));
    for (const Window& window : windows()) {
        if (bad_gas > 0) {
            program.estado.set_status({});
            program.choose(window, bad_gas);
            QVERIFY2(program.told(window).contains(sentence), qPrintable(window.name + program.told(window)));
            program.mensajes.vistos.clear();
        }
        if (count < GOOD_GAS) {
            QVERIFY(program.estado.window(window.name));
            continue;
        }
        QCOMPARE(program.choose(window, GOOD_GAS), good_->choose(window, GOOD_GAS));
        for (const Caja& box : program.mensajes.vistos)  // about this gas, not about the database
            QVERIFY2(!box.texto.contains("[G"), qPrintable(box.texto));
    }
    QVERIFY(program.home.read(QStringLiteral("data")) == database);
}

void tst_bad_database::an_edit_keeps_the_rest_or_is_refused() {
    QFETCH(const QByteArray, database);
    Program program(database);
    ApplicationState& estado = program.estado;
    const auto edited = [&](const std::function<void(tavo::confreg::Text&)>& edits) {
        try {
            estado.edit_gases(edits);
            return true;
        } catch (const tavo::Error& error) {
            return std::string(error.what()).empty();
        }
    };
    const auto now = [&] { return program.home.read(QStringLiteral("data")); };

    editor::StoredGas gas;
    gas.constants.name = "nuevo";
    gas.constants.pm = gas.constants.tc = gas.constants.pc = 50.0;
    const bool changed = edited([&](auto& text) { editor::write(text, GOOD_GAS, gas); });
    if (changed)
        QCOMPARE(without_section(now(), "[G3]"), without_section(database, "[G3]"));
    else
        QVERIFY(now() == database);

    const QByteArray before = now();
    const std::int16_t count = estado.gas_count();
    if (edited([&](auto& text) { editor::add(text, count, gas); })) {
        const QByteArray header = "[G" + QByteArray::number(count + 1) + "]";
        QCOMPARE(estado.gas_count(), std::int16_t(count + 1));
        QCOMPARE(estado.gas_names()->index(count, 0).data().toString(), "nuevo");
        QVERIFY(!lines(before).contains(header));
        QCOMPARE(without_section(without_section(now(), header), "[General]"), without_section(before, "[General]"));
    } else {
        QVERIFY(now() == before);
    }
}

QTEST_MAIN(tst_bad_database)
#include "tst_bad_database.moc"

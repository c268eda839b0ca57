// The gas editor, driven by keys and clicks.

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <memory>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/numtext.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/gasedit/frmgases.h"
#include "windows/plots/frmdatos.h"

using enum tavo::EquationOfState;
using tavo::EquationOfState;

namespace {

constexpr double SHOWN = 298.15;

QString format(double x, const char* pattern) {
    return QString::fromStdString(tavo::Format(x, pattern));
}

/// A database of gases that hold nothing automatic but what `more` says.
QByteArray database(const QList<QByteArray>& sections) {
    QByteArray text = "[General]\r\nn=" + QByteArray::number(sections.size()) + "\r\n";
    for (qsizetype i = 0; i < sections.size(); ++i)
        text += "\r\n[G" + QByteArray::number(i + 1) + "]\r\n" + sections[i];
    return text;
}

QByteArray gas(const QByteArray& name, const QByteArray& w) {
    return "nombre=" + name + "\r\npm=44.0\r\ntc=304.128\r\npc=72.8\r\nvc=0.094\r\nteb=194.7\r\nhv=3.0\r\n" +
           "c(1,1)=-1\r\nc(1,2)=-1\r\nc(7,1)=-1\r\nc(7,2)=-1\r\nc(7,3)=" + w + "\r\n";
}

}  // namespace

class tst_frmgases : public QObject {
    Q_OBJECT
private slots:
    void init() { start({}); }
    void cleanup();

    void a_teacher_adds_changes_and_deletes_a_gas();
    void buttons_follow_browsing_and_changing();
    void a_refused_entry_is_named_and_focused();
    void constants_that_were_not_typed_keep_every_byte();
    void automatic_sets_show_what_the_loader_derives();
    void switching_to_by_hand_leaves_the_physics();
    void automatic_coefficients_bring_their_notices();
    void an_exponent_not_above_1_is_undone();
    void a_new_gas_always_gets_an_acentric_factor();
    void a_set_by_hand_is_stored_as_typed();
    void a_gas_without_section_stays_and_the_count_rises();
    void a_failed_write_keeps_every_box();
    void typed_data_are_not_given_up_unasked();
    void everything_is_seen_in_every_language();

private:
    void start(const QByteArray& data);
    template <class Control>
    Control* control(const char* name) const {
        auto* found = window_->findChild<Control*>(QLatin1String(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    QLineEdit* entry(const char* name) const {
        if (auto* box = window_->findChild<textextend*>(QLatin1String(name)))
            return box->entry();
        return control<QLineEdit>(name);
    }
    QString text(const char* name) const { return entry(name)->text(); }
    bool enabled(const char* name) const { return control<QWidget>(name)->isEnabled(); }
    void type(const char* name, const QString& keys) const {
        entry(name)->setFocus(Qt::TabFocusReason);
        entry(name)->selectAll();
        QTest::keyClick(entry(name), Qt::Key_Delete);
        QTest::keyClicks(entry(name), keys);
    }
    void type_gas(const QString& name, const QString& pm, const QString& tc, const QString& pc,
                  const QString& teb) const {
        type("textgas", name);
        type("textpm", pm);
        type("texttc", tc);
        type("textpc", pc);
        type("textteb", teb);
    }
    void click(const char* name) const {
        auto* button = control<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, {12, button->height() / 2});
    }
    void choose(int number) const { control<QComboBox>("cmbgas")->setCurrentIndex(number - 1); }
    void choose(EquationOfState set) const { control<QComboBox>("cmbecu")->setCurrentIndex(static_cast<int>(set)); }
    void change(int number) const {
        choose(number);
        click("btsel");
    }
    std::string stored(int number, const char* key) const {
        return estado_->data().leerclave("G" + std::to_string(number), key);
    }
    tavo::GasRecord loaded(int number, EquationOfState set, double t) const {
        tavo::GasRecord record;
        double mu = 1.5;
        tavo::Global::cargargas(estado_->data(), set, static_cast<std::int16_t>(number), true, false, t, mu, record);
        return record;
    }
    /// Text and style of the only box since the last call.
    std::pair<QString, int> message() {
        if (mensajes_.vistos.size() != 1)
            return {QStringLiteral("%1 boxes").arg(mensajes_.vistos.size()), 0};
        const Caja seen = mensajes_.vistos.front();
        mensajes_.vistos.clear();
        return {seen.texto, seen.estilo};
    }
    std::pair<QString, int> informs(int number) const { return {estado_->texto(number), 64}; }

    std::unique_ptr<HogarTemporal> home_;
    MensajesPrueba mensajes_;
    std::unique_ptr<ApplicationState> estado_;
    frmgases* window_ = nullptr;
};

void tst_frmgases::start(const QByteArray& data) {
    cleanup();
    home_ = std::make_unique<HogarTemporal>();
    if (!data.isEmpty())
        home_->write("data", data);
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
    estado_->load_gases();
    estado_->register_window("frmgases", [this] { return new frmgases(*estado_, mensajes_); });
    estado_->register_window("frmdatos", [this] { return new frmdatos(*estado_, mensajes_); });
    window_ = qobject_cast<frmgases*>(estado_->window("frmgases"));
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_));
}

void tst_frmgases::cleanup() {
    delete window_;
    window_ = nullptr;
    if (estado_)
        delete estado_->open_window("frmdatos");
    estado_.reset();
    home_.reset();
    mensajes_ = {};
}

void tst_frmgases::a_teacher_adds_changes_and_deletes_a_gas() {
    QWidget* conditions = estado_->window("frmdatos");
    auto* list = conditions->findChild<QComboBox*>("cmbgas(1)");
    const int count = estado_->gas_count();
    type_gas("C2H4F2 (1,1-difluoroetano)", "66.051", "386.41", "44.61", "249.13");
    choose(PengRobinson);
    QVERIFY(std::abs(text("txtc").toDouble() - 0.2755) < 0.02);  // estimated; tables say 0.2755
    QVERIFY(control<QLabel>("lbnota")->text().contains(estado_->texto(713)));
    type("txtc", "0.2752");
    click("btadd");
    QCOMPARE(message(), informs(224));
    const int added = count + 1;
    QCOMPARE(estado_->gas_count(), added);
    QCOMPARE(control<QComboBox>("cmbgas")->currentIndex(), added - 1);
    QCOMPARE(list->itemText(added - 1), "C2H4F2 (1,1-difluoroetano)");
    std::string keys;
    for (const auto& [key, value] : estado_->data().claves("G61"))
        keys += value == "-1" ? "" : key + '=' + value + ' ';  // the others are automatic
    QCOMPARE(keys, std::string("nombre=C2H4F2 (1,1-difluoroetano) pm=66.051 tc=386.41 pc=44.61 vc=0 teb=249.13 hv=0 "
                               "c(7,3)=0.2752 c(8,3)=0.2752 "));
    QCOMPARE(text("textvc"), "0");

    click("btsel");
    type("textvc", "0.1795");
    click("btmod");
    QCOMPARE(message(), informs(222));
    QCOMPARE(stored(added, "vc"), std::string("0.1795"));
    QCOMPARE(estado_->gas_count(), added);

    // A deleted gas takes its row with it, a later one is followed by its row.
    list->setCurrentIndex(added - 1);
    conditions->findChild<QComboBox*>("cmbgas(2)")->setCurrentIndex(1);
    change(2);
    const QByteArray with_both = home_->read("data");
    mensajes_.respuestas = {Respuesta::No};
    click("btdel");
    QCOMPARE(home_->read("data"), with_both);
    QVERIFY(message().first.contains("Ne ("));
    mensajes_.respuestas = {Respuesta::Si};
    click("btdel");
    QCOMPARE(mensajes_.vistos.size(), 2U);
    QCOMPARE(mensajes_.vistos.front().estilo, 36);
    QCOMPARE(mensajes_.vistos.back().texto, estado_->texto(220));
    QCOMPARE(estado_->gas_count(), count);
    QCOMPARE(stored(count, "nombre"), std::string("C2H4F2 (1,1-difluoroetano)"));
    QCOMPARE(list->currentText(), "C2H4F2 (1,1-difluoroetano)");
    QCOMPARE(estado_->slot_table()[1].gas_number, count);
    QCOMPARE(estado_->slot_table()[2].gas_number, 0);
}

void tst_frmgases::buttons_follow_browsing_and_changing() {
    const auto states = [this](bool changing) {
        return enabled("btadd") != changing && enabled("btsel") != changing && enabled("btmod") == changing &&
               enabled("btdel") == changing;
    };
    QVERIFY(states(false));
    click("btsel");  // nothing to select
    QVERIFY(states(false));
    QCOMPARE(control<QLabel>("lbestado")->text(), estado_->texto(725));
    QVERIFY(control<QComboBox>("cmbgas")->lineEdit()->hasFocus() || control<QComboBox>("cmbgas")->hasFocus());

    choose(3);
    QVERIFY(states(false));
    QVERIFY(text("textgas").startsWith("Ar "));
    QCOMPARE(text("texttc"), "150.6870");
    QVERIFY(control<QLabel>("lbestado")->text().startsWith("Se ve Ar "));
    click("btsel");
    QVERIFY(states(true));
    QVERIFY(entry("textgas")->hasFocus());
    QVERIFY(control<QLabel>("lbestado")->text().contains("Ar "));
    QTest::keyClick(entry("textgas"), Qt::Key_Escape);
    QVERIFY(states(false));
    QCOMPARE(control<QComboBox>("cmbgas")->currentIndex(), 2);
    click("btsel");
    choose(4);
    QVERIFY(states(false));
    click("btsel");
    click("btmod");
    QVERIFY(states(false));
    QCOMPARE(control<QComboBox>("cmbgas")->currentIndex(), -1);
    QVERIFY(control<QPushButton>("btsel")->hasFocus());
    click("btvaciar");
    QVERIFY(text("textgas").isEmpty() && text("texttc").isEmpty() && text("txta").isEmpty());
}

void tst_frmgases::a_refused_entry_is_named_and_focused() {
    const char* names[]{"textgas", "textpm", "textpc", "texttc"};
    const struct {
        QStringList boxes;  // in that order
        int text, focused;
    } cases[]{
        {{"", "", "", ""}, 200, 0},    {{"  ", "1", "1", "1"}, 200, 0}, {{"[G2]", "1", "1", "1"}, 710, 0},
        {{"x", "", "0", "0"}, 201, 1}, {{"x", "-", "1", "1"}, 201, 1},  {{"x", "1", "0.0", ""}, 202, 2},
        {{"x", "1", "1", ""}, 203, 3}, {{"x", "1", "2", "3"}, 224, -1},
    };
    for (const auto& [boxes, message_text, focused] : cases) {
        const QByteArray before = home_->read("data");
        for (int i = 0; i < 4; ++i)
            type(names[i], boxes[i]);
        click("btadd");
        QCOMPARE(message(), informs(message_text));
        QCOMPARE(home_->read("data") == before, focused >= 0);
        QVERIFY(focused < 0 || entry(names[focused])->hasFocus());
    }
}

void tst_frmgases::constants_that_were_not_typed_keep_every_byte() {
    const QByteArray exact =
        "nombre=A & "
        "B\r\npm=44.00951234567\r\ntc=304.1282345678901234\r\npc=0.00001234\r\nvc=0.0941185\r\nteb=194.6861\r\n"
        "hv=0.00002\r\nc(1,1)=-1\r\nc(1,2)=-1\r\nc(2,1)=123.456789012345\r\nc(2,2)=0.0428123456789\r\nc(5,1)=1\r\n"
        "c(5,2)=-0.123456789\r\nc(5,3)=0.00123456789\r\nc(5,4)=-1\r\nc(6,1)=2\r\nc(6,2)=0.03\r\nc(6,3)=1.123456789\r\n"
        "c(7,1)=-1\r\nc(7,2)=-1\r\nc(7,3)=0.22394\r\nc(8,1)=3.9\r\nc(8,2)=0.02665\r\nc(8,3)=0.22394\r\n";
    QByteArray rest;
    for (const char* key : {"c(3,1)", "c(3,2)", "c(4,1)", "c(4,2)", "c(9,1)", "c(9,2)"})
        rest += QByteArray(key) + "=-1\r\n";
    start(database({exact + rest}));
    const QByteArray before = home_->read("data");
    change(1);
    for (const EquationOfState set : {VanDerWaals, Berthelot, Virial, FreeExponent, Soave, PengRobinson, IdealGas})
        choose(set);
    for (const char* box : {"textgas", "textpm", "textpc", "texttc", "textvc", "textteb", "texthvap"})
        entry(box)->setFocus(Qt::TabFocusReason);
    click("btmod");
    QCOMPARE(message(), informs(222));
    QCOMPARE(home_->read("data"), before);
    change(1);
    type("textteb", "194.7");
    click("btmod");
    QCOMPARE(home_->read("data"), QByteArray(before).replace("teb=194.6861", "teb=194.7"));
}

void tst_frmgases::automatic_sets_show_what_the_loader_derives() {
    const int ammonia = 18;
    choose(ammonia);
    QVERIFY(text("textgas").startsWith("NH3 "));
    for (int e = 1; e <= 9; ++e) {
        const auto set = static_cast<EquationOfState>(e);
        choose(set);
        const tavo::GasRecord k = loaded(ammonia, set, SHOWN);
        QCOMPARE(text("txta"), format(k.a, "####0.00000"));
        QCOMPARE(text("txtb"), format(k.b, "####0.00000"));
        const bool soave = set == Soave || set == PengRobinson;
        if (soave || set == Virial)
            QCOMPARE(text("txtc"), format(k.c, "####0.000000"));
        if (set == Virial)
            QCOMPARE(text("txtd"), format(k.d, "####0.000000"));
        QVERIFY(control<QCheckBox>("chkauto")->isChecked());
        for (const char* box : {"txta", "txtb", "txtd"})
            QVERIFY(entry(box)->isReadOnly());
        QCOMPARE(entry("txtc")->isReadOnly(), !soave);
        QVERIFY(!entry("txtmu")->isReadOnly());
        QCOMPARE(entry("txtmu")->isVisible(), set == FreeExponent);
        QCOMPARE(control<QLabel>("lbnota")->text().contains("298.15"), soave || set == Virial);
    }
    // They follow the constants, the factor and the exponent as these are typed; the critical point does too.
    choose(VanDerWaals);
    type("texttc", "400");
    const double pc = loaded(ammonia, VanDerWaals, SHOWN).pc;
    QCOMPARE(text("txta"), format(0.1818137772 * 160000.0 / (64.0 * pc), "####0.00000"));
    QCOMPARE(control<QLabel>("lbtcmodelo")->text(), "400.00");
    choose(FreeExponent);
    type("txtmu", "2");
    QCOMPARE(text("txtb"), format(tavo::R * 400.0 / (8.0 * pc), "####0.00000"));  // as van der Waals
    choose(IdealGas);
    QVERIFY(!enabled("chkauto") && !entry("txta")->isVisible());
}

void tst_frmgases::switching_to_by_hand_leaves_the_physics() {
    for (int e = 1; e <= 9; ++e) {
        const auto set = static_cast<EquationOfState>(e);
        const tavo::GasRecord before = loaded(30, set, SHOWN), hot = loaded(30, set, 512.0);
        change(30);
        choose(set);
        click("chkauto");
        QVERIFY(!control<QCheckBox>("chkauto")->isChecked());
        QVERIFY(!entry("txta")->isReadOnly());
        click("btmod");
        QVERIFY(stored(30, qPrintable(QStringLiteral("c(%1,1)").arg(e))) != "-1");
        const auto same = [&](const tavo::GasRecord& old, double t) {
            const tavo::GasRecord now = loaded(30, set, t);
            const auto near = [](double x, double y) { return std::abs(x - y) <= 1e-13 * std::abs(y); };
            return near(now.a, old.a) && near(now.b, old.b) && near(now.c, old.c) && near(now.d, old.d);
        };
        QVERIFY2(same(before, SHOWN), qPrintable(QString::number(e)));
        if (set != Virial)  // whose typed B is a constant
            QVERIFY2(same(hot, 512.0), qPrintable(QString::number(e)));
        change(30);
        QVERIFY(!control<QCheckBox>("chkauto")->isChecked());
        click("chkauto");
        click("btmod");
        for (const char* k : {"1", "2"})
            QCOMPARE(stored(30, qPrintable(QStringLiteral("c(%1,%2)").arg(e).arg(QLatin1String(k)))), "-1");
    }
}

void tst_frmgases::automatic_coefficients_bring_their_notices() {
    choose(VanDerWaals);
    const auto without_box = [this](const char* name) {
        click("chkauto");  // by hand
        mensajes_.vistos.clear();
        const QString kept = text(name);
        type(name, "0");
        click("chkauto");
        QVERIFY(!control<QCheckBox>("chkauto")->isChecked());
        QCOMPARE(message(), std::pair(estado_->texto(198), 48));
        type(name, kept);
        click("chkauto");
        QVERIFY(control<QCheckBox>("chkauto")->isChecked());
        QVERIFY(mensajes_.vistos.empty());
    };
    type("texttc", "300");
    type("textpc", "50");
    without_box("texttc");
    without_box("textpc");
    const QString virial =
        QStringList{estado_->texto(87), estado_->texto(88), estado_->texto(89), estado_->texto(199)}.join('\r');
    for (const auto& [set, notice] :
         {std::pair(Virial, virial), {Soave, estado_->texto(199)}, {PengRobinson, estado_->texto(199)}}) {
        choose(set);
        click("chkauto");
        QVERIFY(mensajes_.vistos.empty());
        click("chkauto");
        QCOMPARE(message(), std::pair(notice, 64));
    }
}

void tst_frmgases::an_exponent_not_above_1_is_undone() {
    change(3);
    choose(FreeExponent);
    const QString a = text("txta");
    const QByteArray before = home_->read("data");
    for (const char* wrong : {"1", "0.5", ""}) {
        type("txtmu", wrong);
        click("btmod");
        QCOMPARE(message(), informs(93));
        QCOMPARE(text("txtmu"), "1.5000");
        QCOMPARE(text("txta"), a);
        type("txtmu", wrong);
        QTest::keyClick(entry("txtmu"), Qt::Key_Tab);
        QCOMPARE(message(), informs(93));
        QCOMPARE(home_->read("data"), before);
    }
    type("txtmu", "1.75");
    click("btmod");
    QCOMPARE(stored(3, "c(6,3)"), std::string("1.75"));
    QCOMPARE(stored(3, "c(6,1)"), std::string("-1"));
}

void tst_frmgases::a_new_gas_always_gets_an_acentric_factor() {
    const QByteArray unknown = gas("Dos", "-1");
    start(database({gas("Uno", "0.1"), unknown}));
    // The third gas is not the one whose factor is known under that number.
    type_gas("Tres", "10", "300", "50", "180");
    click("btadd");
    QCOMPARE(stored(3, "c(7,3)"), QString::number(3.0 / 7.0 * 1.5 * std::log10(50.0) - 1.0, 'g', 15).toStdString());
    click("btvaciar");
    type_gas("Cuatro", "10", "300", "50", "");
    choose(Soave);
    QVERIFY(control<QLabel>("lbnota")->text().contains(estado_->texto(717)));
    click("btadd");
    QCOMPARE(stored(4, "c(8,3)"), std::string("0"));
    // Helium's is negative; one that is taken away is estimated again.
    click("btsel");
    type("txtc", "-0.38");
    click("btmod");
    QCOMPARE(stored(4, "c(7,3)"), std::string("-0.38"));
    choose(2);  // known by its number, and kept when the numbers move
    QCOMPARE(text("txtc"), "-0.029000");
    window_->activateWindow();  // a digit typed and taken back: caret, undo and the hidden digits stay
    QVERIFY(QTest::qWaitForWindowActive(window_));
    change(3);
    const std::string whole = stored(3, "c(7,3)");
    auto* w = control<EntradaNumerica>("txtc");
    w->setFocus();
    const QString shown = w->text();
    QTest::keyClick(w, Qt::Key_End);
    QTest::keyClicks(w, "19");
    QTest::keyClick(w, Qt::Key_Backspace);
    QTest::keyClick(w, Qt::Key_Backspace);
    QCOMPARE(w->text(), shown);
    QVERIFY(!w->hasSelectedText());
    click("btmod");
    QCOMPARE(stored(3, "c(7,3)"), whole);
}

void tst_frmgases::a_set_by_hand_is_stored_as_typed() {
    change(5);
    choose(Virial);
    click("chkauto");
    type("txtb", "-0.15");
    type("txtc", "0.002");
    choose(Berthelot);
    choose(Virial);
    QCOMPARE(text("txtb"), "-0.15000");
    QCOMPARE(text("txtc"), "0.002000");
    type("txtd", "0.0000123");  // not left yet
    click("btmod");
    QCOMPARE(stored(5, "c(5,2)"), std::string("-0.15"));
    QCOMPARE(stored(5, "c(5,3)"), std::string("0.002"));
    QCOMPARE(stored(5, "c(5,4)"), std::string("1.23E-05"));
    QCOMPARE(stored(5, "c(1,1)"), std::string("-1"));
}

void tst_frmgases::a_gas_without_section_stays_and_the_count_rises() {
    const QByteArray missing = database({gas("Uno", "0.1")}).replace("n=1", "n=2");
    start(missing);
    choose(2);
    QCOMPARE(control<QLabel>("lbestado")->text(), estado_->texto(726).arg(2));
    click("btsel");
    mensajes_.respuestas = {Respuesta::Si};
    click("btdel");
    QCOMPARE(mensajes_.vistos.back().texto, estado_->texto(221));
    QCOMPARE(estado_->gas_count(), 3);
    QCOMPARE(home_->read("data"), missing);
    // A gas whose constants say nothing can be looked at and mended.
    start(database({"nombre=Malo\r\npm=x\r\n"}));
    change(1);
    QCOMPARE(text("texttc"), "0.0000");
    QCOMPARE(control<QLabel>("lbtcmodelo")->text(), "—");
    type_gas("Bueno", "10", "300", "50", "180");
    click("btmod");
    QCOMPARE(message(), informs(222));
    QCOMPARE(stored(1, "tc"), std::string("300"));
}

void tst_frmgases::a_failed_write_keeps_every_box() {
    home_->write("fich.tmp", "somebody else's");
    // The signal itself: events and click() do not unwind cleanly inside the toolkit.
    const QByteArray before = home_->read("data");
    type_gas("Nuevo", "10", "300", "50", "180");
    QVERIFY_THROWS_EXCEPTION(tavo::RewriteRefused, control<QPushButton>("btadd")->clicked());
    QCOMPARE(text("textgas"), "Nuevo");
    QCOMPARE(text("texttc"), "300");
    QCOMPARE(estado_->gas_count(), 60);
    estado_->set_gas_count(32767);
    QVERIFY_THROWS_EXCEPTION(tavo::Overflow, control<QPushButton>("btadd")->clicked());
    QCOMPARE(text("textgas"), "Nuevo");
    estado_->set_gas_count(60);
    mensajes_.respuestas = {Respuesta::Si};
    change(7);
    type("textpm", "77");
    QVERIFY_THROWS_EXCEPTION(tavo::RewriteRefused, control<QPushButton>("btmod")->clicked());
    QVERIFY(enabled("btmod"));
    QCOMPARE(text("textpm"), "77");
    mensajes_.respuestas = {Respuesta::Si};
    QVERIFY_THROWS_EXCEPTION(tavo::RewriteRefused, control<QPushButton>("btdel")->clicked());
    QVERIFY(enabled("btdel"));
    QCOMPARE(home_->read("data"), before);
    QFile::remove(QString::fromStdString((home_->path() / "fich.tmp").string()));
    click("btmod");
    QCOMPARE(stored(7, "pm"), std::string("77"));
}

void tst_frmgases::typed_data_are_not_given_up_unasked() {
    const auto asked = [this](auto give_up) {
        mensajes_.vistos.clear();
        mensajes_.respuestas = {Respuesta::No};
        give_up();
        const bool was = mensajes_.respuestas.empty();
        mensajes_.respuestas.clear();
        return was;
    };
    const auto close = [this] { window_->close(); };
    for (const char* box : {"textgas", "textpm", "textteb", "textgas"})
        entry(box)->setFocus(Qt::TabFocusReason);  // leaves "0" in the numbers
    choose(1);
    choose(2);
    QCOMPARE(text("textgas").left(2), "Ne");
    type("texttc", "45");
    QVERIFY(asked([this] { choose(3); }));
    QCOMPARE(control<QComboBox>("cmbgas")->currentIndex(), 1);
    QCOMPARE(text("texttc"), "45");
    QVERIFY(asked([this] { click("btvaciar"); }));
    click("btsel");
    QVERIFY(asked([this] { QTest::keyClick(entry("texttc"), Qt::Key_Escape); }));
    QVERIFY(enabled("btmod"));
    QVERIFY(asked(close));
    QVERIFY(window_->isVisible());
    mensajes_.respuestas = {Respuesta::Si};
    choose(3);
    choose(FreeExponent);
    type("txtmu", "1.9");
    QVERIFY(asked(close));
    mensajes_.respuestas = {Respuesta::Si};
    window_->close();
    QVERIFY(!window_->isVisible());
}

void tst_frmgases::everything_is_seen_in_every_language() {
    constexpr int WIDTH = 1300, HEIGHT = 600;  // what frames, menus and bars leave of 1366 by 768
    const QStringList languages = estado_->languages();
    for (const QString& language : languages) {
        delete window_;
        tavo::confreg::escribirclave(estado_->language_path(), "idioma", "idioma", language.toStdString(),
                                     estado_->site());
        estado_->load_languages();
        window_ = qobject_cast<frmgases*>(estado_->window("frmgases"));
        window_->show();
        QCOMPARE(window_->windowTitle().isEmpty(), false);
        const QSize size = window_->sizeHint();
        QVERIFY2(size.width() <= WIDTH && size.height() <= HEIGHT,
                 qPrintable(QStringLiteral("%1: %2x%3").arg(language).arg(size.width()).arg(size.height())));
        window_->resize(size);
        QCoreApplication::processEvents();
        for (const QWidget* part : window_->findChildren<QWidget*>()) {
            const bool read = qobject_cast<const QLabel*>(part) || qobject_cast<const QAbstractButton*>(part);
            QVERIFY2(!read || !part->isVisible() || part->width() >= part->minimumSizeHint().width(),
                     qPrintable(language + ' ' + part->objectName()));
        }
    }
}

QTEST_MAIN(tst_frmgases)
#include "tst_frmgases.moc"

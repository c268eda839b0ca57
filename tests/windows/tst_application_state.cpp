// The state that the windows share: languages, gases, windows.

#include <QSignalSpy>
#include <QTest>

#include "core/errors.h"
#include "shell/application_state.h"
#include "tests/windows/support/hogar_temporal.h"

namespace {

using tavo::confreg::Text;

const QByteArray TABLE = "[idioma]\r\nidioma=alfa\r\n\r\n[Alfa]\r\n1=uno\r\n2=\r\n\r\n[Beta]\r\n1=one\r\n2=two\r\n";
const QByteArray GASES = "[General]\r\nn=2\r\n[G1]\r\nnombre=helio\r\n[G2]\r\nnombre=ne\xF3n\r\n";

class Fila final : public QWidget, public ConditionsView {
public:
    void copiar_filas() override {}
    void cambiar_unidad(AmountUnit, AmountUnit) override {}
    void limpiar_filas() override {}
};

}  // namespace

class tst_application_state : public QObject {
    Q_OBJECT

private slots:
    void texts_come_from_the_active_language();
    void texts_follow_the_file();
    void a_new_list_of_languages_is_announced();
    void help_file_belongs_to_a_language_of_the_list();
    void gas_list_is_shared();
    void slots_follow_a_removed_gas();
    void missing_files_are_errors();
    void windows_are_made_once();
    void a_closed_window_is_made_anew();
    void a_window_may_refuse_to_close();
};

void tst_application_state::texts_come_from_the_active_language() {
    const HogarTemporal home;
    home.write("idioma.lng", TABLE);
    ApplicationState estado(home.path());
    estado.load_languages();
    QCOMPARE(estado.languages(), (QStringList{"Alfa", "Beta"}));
    QCOMPARE(estado.language(), "alfa");
    QCOMPARE(estado.texto(1), "uno");
    QCOMPARE(estado.texto(3), "");
    QCOMPARE(estado.texto(2, "literal"), "literal");
    QCOMPARE(estado.texto(1, "literal"), "uno");
}

void tst_application_state::texts_follow_the_file() {
    const HogarTemporal home;
    home.write("idioma.lng", TABLE);
    ApplicationState estado(home.path());
    estado.load_languages();
    QCOMPARE(estado.texto(1), "uno");
    home.write("idioma.lng", QByteArray(TABLE).replace("1=uno", "1=primero"));
    QCOMPARE(estado.texto(1), "primero");
}

void tst_application_state::a_new_list_of_languages_is_announced() {
    const HogarTemporal home;
    home.write("idioma.lng", TABLE);
    ApplicationState estado(home.path());
    estado.load_languages();
    const QSignalSpy announced(&estado, &ApplicationState::languages_changed);
    home.write("idioma.lng", QByteArray(TABLE).replace("idioma=alfa", "idioma=Beta") + "[Gamma]\r\n");
    estado.invalidate_languages();
    QCOMPARE(announced.count(), 1);
    QCOMPARE(estado.languages(), (QStringList{"Alfa", "Beta", "Gamma"}));
    QCOMPARE(estado.language(), "alfa");  // fixed for the run
}

void tst_application_state::help_file_belongs_to_a_language_of_the_list() {
    const HogarTemporal home;
    home.write("idioma.lng", TABLE);
    ApplicationState estado(home.path());
    estado.load_languages();
    QCOMPARE(estado.help_path(), QString::fromStdString((home.path() / "Alfa.chm").string()));
    home.write("idioma.lng", QByteArray(TABLE).replace("idioma=alfa", "idioma=delta"));
    ApplicationState without(home.path());
    without.load_languages();
    QCOMPARE(without.help_path(), "");
    QCOMPARE(without.texto(1), "");
}

void tst_application_state::gas_list_is_shared() {
    const HogarTemporal home;
    home.write("data", GASES);
    ApplicationState estado(home.path());
    estado.load_gases();
    QCOMPARE(estado.gas_count(), std::int16_t{2});
    const QAbstractItemModel* names = estado.gas_names();
    QCOMPARE(names->rowCount(), 2);
    QCOMPARE(names->index(1, 0).data().toString(), QString::fromUtf8("neón"));

    const QSignalSpy announced(&estado, &ApplicationState::gases_changed);
    home.write("data", QByteArray(GASES).replace("n=2", "n=1"));
    estado.reload_gases();
    QCOMPARE(announced.count(), 1);
    QCOMPARE(estado.gas_names(), names);
    QCOMPARE(names->rowCount(), 1);
}

void tst_application_state::slots_follow_a_removed_gas() {
    const HogarTemporal home;
    home.write("data", GASES + "[G3]\r\nnombre=arg\xF3n\r\n");
    const QByteArray before = home.read("data");
    ApplicationState estado(home.path());
    estado.load_gases();
    constexpr std::array<std::int16_t, 6> HELD{1, 2, 3, 0, 2, 3}, LEFT{1, 0, 2, 0, 0, 2};
    for (int i = 0; i < 6; ++i) {
        estado.slot_table()[i].gas_number = HELD[static_cast<std::size_t>(i)];
        estado.slot_table()[i].parameters = true;
        estado.slot_table()[i].gas.a = 7.5;
    }
    const auto held = [&] {
        std::array<std::int16_t, 6> numbers{};
        for (int i = 0; i < 6; ++i)
            numbers[static_cast<std::size_t>(i)] = estado.slot_table()[i].gas_number;
        return numbers;
    };
    QStringList told;
    connect(&estado, &ApplicationState::gas_removed, &estado, [&](std::int16_t number) {
        told << QStringLiteral("removed %1").arg(number);
        QCOMPARE(held(), LEFT);
    });
    connect(&estado, &ApplicationState::gases_changed, &estado, [&] { told << "changed"; });

    // Nothing to remove, edits that fail, a database that cannot be written: nobody hears of it.
    QVERIFY(!estado.remove_gas(2, [](Text& text) { text.borrarseccion("G9"); }));
    const auto half = [](Text& text) {
        text.borrarseccion("G2");
        throw tavo::Overflow("half way");
    };
    const auto remove = [](Text& text) {
        text.borrarseccion("G2");
        text.reemplazarlinea("[G3]", "[G2]");
    };
    QVERIFY_THROWS_EXCEPTION(tavo::Overflow, estado.remove_gas(2, half));
    home.write("fich.tmp", "another rewrite");
    QVERIFY_THROWS_EXCEPTION(tavo::RewriteRefused, estado.remove_gas(2, remove));
    std::filesystem::remove(home.path() / "fich.tmp");
    QCOMPARE(held(), HELD);
    QCOMPARE(home.read("data"), before);
    QVERIFY(told.isEmpty());

    QVERIFY(estado.remove_gas(2, remove));
    QCOMPARE(told, (QStringList{"removed 2", "changed"}));
    QCOMPARE(held(), LEFT);
    QCOMPARE(estado.gas_names()->index(1, 0).data().toString(), QString::fromUtf8("argón"));
    for (int i = 0; i < 6; ++i) {
        const bool emptied = HELD[static_cast<std::size_t>(i)] == 2;
        QCOMPARE(estado.slot_table()[i].parameters, !emptied);
        QCOMPARE(estado.slot_table()[i].gas.a, emptied ? 0.0 : 7.5);
    }
}

void tst_application_state::missing_files_are_errors() {
    const HogarTemporal home;
    std::filesystem::remove(home.path() / "idioma.lng");
    std::filesystem::remove(home.path() / "data");
    ApplicationState estado(home.path());
    QVERIFY_THROWS_EXCEPTION(tavo::FileNotFound, estado.load_languages());
    QVERIFY_THROWS_EXCEPTION(tavo::FileNotFound, estado.load_gases());
}

void tst_application_state::windows_are_made_once() {
    const HogarTemporal home;
    ApplicationState estado(home.path());
    QCOMPARE(estado.window("frmdatos"), nullptr);
    QCOMPARE(estado.conditions(), nullptr);
    int made = 0;
    estado.register_window("frmdatos", [&] {
        ++made;
        return new Fila;
    });
    QCOMPARE(estado.open_window("frmdatos"), nullptr);
    QWidget* first = estado.window("frmdatos");
    QVERIFY(!first->isVisible());
    QCOMPARE(first->objectName(), "frmdatos");
    QCOMPARE(estado.conditions(), dynamic_cast<ConditionsView*>(first));
    const QSignalSpy shown(&estado, &ApplicationState::show_requested);
    estado.show_window("frmdatos");
    estado.show_window("frmnada");
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.first().first().value<QWidget*>(), first);
    QCOMPARE(made, 1);
}

void tst_application_state::a_closed_window_is_made_anew() {
    const HogarTemporal home;
    ApplicationState estado(home.path());
    estado.register_window("frmdatos", [] { return new Fila; });
    const QPointer<QWidget> first = estado.window("frmdatos");
    first->show();
    first->close();
    QCOMPARE(estado.open_window("frmdatos"), nullptr);  // although it still waits for its deletion
    QVERIFY(estado.window("frmdatos") != first);
    QTRY_VERIFY(!first);
}

void tst_application_state::a_window_may_refuse_to_close() {
    class Terca final : public QWidget {
        void closeEvent(QCloseEvent* event) override { event->ignore(); }
    };
    const HogarTemporal home;
    ApplicationState estado(home.path());
    estado.register_window("frmIdioma", [] { return new Terca; });
    QWidget* window = estado.window("frmIdioma");
    window->show();
    QVERIFY(!window->close());
    QCOMPARE(estado.open_window("frmIdioma"), window);
}

QTEST_MAIN(tst_application_state)
#include "tst_application_state.moc"

#pragma once
// The three plot windows in a state of a test's own, made through the window registry as in the program.

#include <QSignalSpy>
#include <QTest>

#include <memory>

#include "core/palette.h"
#include "shell/application_state.h"
#include "tests/windows/support/elegir_prueba.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/plots/frmdatos.h"
#include "windows/plots/frmescala.h"
#include "windows/plots/frmgraficos.h"

class VentanasGrafico {
public:
    VentanasGrafico() : estado(hogar.path()) { start(); }
    /// With another gas database.
    explicit VentanasGrafico(const QByteArray& database) : estado(hogar.path()) {
        hogar.write(QStringLiteral("data"), database);
        start();
    }

    HogarTemporal hogar;
    MensajesPrueba mensajes;
    ElegirPrueba archivos;
    ImpresoraPrueba impresora;
    ApplicationState estado;

    /// Created if needed and shown, alone on the screen.
    template <class Window>
    Window* show(const char* name) {
        auto* window = qobject_cast<Window*>(estado.window(QLatin1String(name)));
        window->show();
        QCoreApplication::processEvents();
        return window;
    }
    frmdatos* datos() { return show<frmdatos>("frmdatos"); }
    frmgraficos* graficos() { return show<frmgraficos>("frmgraficos"); }
    frmescala* escala() { return show<frmescala>("frmescala"); }
    tavo::EquationSlot& slot(int i) { return estado.slot_table()[i]; }

    /// A row of the conditions window, filled as a person would.
    void row(int i, const QString& gas, int model, const QString& temperature, const QString& amount) {
        frmdatos* window = datos();
        control<QCheckBox>(window, "Check", i)->setChecked(true);
        auto* gases = control<QComboBox>(window, "cmbgas", i);
        gases->setCurrentIndex(gases->findText(gas, Qt::MatchStartsWith));
        control<QComboBox>(window, "cmbecu", i)->setCurrentIndex(model);
        control<QLineEdit>(window, "txttemp", i)->setText(temperature);
        control<QLineEdit>(window, "txtmol", i)->setText(amount);
    }

    template <class Control>
    static Control* control(QWidget* window, const char* name, int i = 0) {
        const QString full = i == 0 ? QLatin1String(name) : QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
        auto* found = window->findChild<Control*>(full);
        if (!found)
            qFatal("no control %s", qPrintable(full));
        return found;
    }

private:
    void start() {
        estado.load_languages();
        estado.load_gases();
        for (int i = 1; i <= 5; ++i)
            slot(i).colour = tavo::CURVE_COLOURS[static_cast<std::size_t>(i - 1)];
        estado.register_window(QStringLiteral("frmdatos"), [this] { return new frmdatos(estado, mensajes); });
        estado.register_window(QStringLiteral("frmgraficos"),
                               [this] { return new frmgraficos(estado, mensajes, archivos, impresora); });
        estado.register_window(QStringLiteral("frmescala"), [this] { return new frmescala(estado, mensajes); });
        QObject::connect(&estado, &ApplicationState::show_requested, &estado, [](QWidget* window) { window->show(); });
    }
};

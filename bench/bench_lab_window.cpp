// Dragging in the laboratory: from a move of the mouse to all instruments painted anew.
// Offscreen, raster; with QT_SCALE_FACTOR=2 in the environment at a device pixel ratio of 2.

#include <QApplication>
#include <QComboBox>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

#include "bench/sin_usuario.h"
#include "shell/application_state.h"
#include "windows/lab/frmoperaciones.h"

namespace {

using laboratorio::Instrument;

constexpr const char* NAMES[] = {"pctpiston", "termometro", "termopar", "barometro1", "Manometro"};

void move(QWidget* surface, QEvent::Type type, double y, Qt::MouseButtons buttons) {
    const QPointF place(surface->width() / 2.0, y);
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, surface->mapToGlobal(place), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(surface, &event);
}

/// The hand moves one pixel at a time, up and down the middle half of the scale.
void BM_drag(benchmark::State& state, Instrument kind, int model) {
    ApplicationState estado(std::filesystem::path(TAVO_SOURCE_DIR) / "data");
    estado.load_languages();
    estado.load_gases();
    estado.thermocouple_in_use = kind == Instrument::Thermocouple;
    estado.manometer_in_use = kind == Instrument::Manometer;
    SinMensajes mensajes;
    frmoperaciones window(estado, mensajes);
    window.resize(1200, 620);
    window.show();
    auto* gases = window.findChild<QComboBox*>(QStringLiteral("cmbgas"));
    gases->setCurrentIndex(gases->findText(QStringLiteral("CO2 "), Qt::MatchStartsWith));
    window.findChild<QComboBox*>(QStringLiteral("cmbecu"))->setCurrentIndex(model);
    QCoreApplication::processEvents();
    auto* surface = window.findChild<QWidget*>(QLatin1String(NAMES[static_cast<std::size_t>(kind)]));
    const int height = surface->height();
    const int first = height / 4, last = 3 * height / 4;
    int y = first, step = 1;
    move(surface, QEvent::MouseButtonPress, y, Qt::LeftButton);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        y += step;
        if (y >= last || y <= first)
            step = -step;
        move(surface, QEvent::MouseMove, y, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    move(surface, QEvent::MouseButtonRelease, y, Qt::NoButton);
    state.SetLabel("1200x620 x" + std::to_string(static_cast<int>(window.devicePixelRatioF())));
}

constexpr int PENG_ROBINSON = 8, DIETERICI_SADUS = 9;
#define DRAG(name, kind)                                                                                              \
    BENCHMARK_CAPTURE(BM_drag, name##_peng_robinson, Instrument::kind, PENG_ROBINSON)->Unit(benchmark::kMillisecond); \
    BENCHMARK_CAPTURE(BM_drag, name##_dieterici_sadus, Instrument::kind, DIETERICI_SADUS)->Unit(benchmark::kMillisecond)
DRAG(piston, Piston);
DRAG(thermometer, Thermometer);
DRAG(thermocouple, Thermocouple);
DRAG(barometer, Barometer);
DRAG(manometer, Manometer);
#undef DRAG

}  // namespace

// What the user of the plots waits for: painting five isotherms, and opening the conditions window over databases of
// different sizes.

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench/sin_usuario.h"
#include "core/gas_database.h"
#include "core/palette.h"
#include "shell/application_state.h"
#include "windows/plots/frmdatos.h"
#include "windows/plots/graficos.h"
#include "windows/plots/picture_file.h"
#include "windows/plots/pintar.h"

namespace {

/// CO2 with Peng and Robinson's equation at 260, 280, 300, 320 and 340 K.
tavo::SlotTable five_isotherms() {
    tavo::SlotTable table;
    for (int i = 1; i <= 5; ++i) {
        tavo::EquationSlot& slot = table[i];
        slot.active = true;
        slot.gas_number = 1;
        slot.equation = tavo::EquationOfState::PengRobinson;
        slot.temperature = 240.0 + 20.0 * i;
        slot.colour = tavo::CURVE_COLOURS[static_cast<std::size_t>(i - 1)];
        slot.gas.tc = 304.13;
        slot.gas.pc = 72.8;
        const auto k = tavo::Global::derive(slot.equation, 304.13, 72.8, 0.2239, 1.5, slot.temperature);
        slot.gas.a = k.a;
        slot.gas.b = k.b;
        slot.gas.c = k.c;
    }
    return table;
}

const std::array<std::string, 5> LEGEND{
    "CO2 (dióxido de carbono), PENG-ROBINSON, 260 K, 1 mol", "CO2 (dióxido de carbono), PENG-ROBINSON, 280 K, 1 mol",
    "CO2 (dióxido de carbono), PENG-ROBINSON, 300 K, 1 mol", "CO2 (dióxido de carbono), PENG-ROBINSON, 320 K, 1 mol",
    "CO2 (dióxido de carbono), PENG-ROBINSON, 340 K, 1 mol"};

/// A sheet of 1200x800 at the device pixel ratio of the argument; the first plot, and the two-phase region close up.
void BM_paint(benchmark::State& state, const tavo::PlotRange& range) {
    const double ratio = static_cast<double>(state.range(0));
    const graficos::Escena escena = graficos::scene(five_isotherms(), range, LEGEND);
    QPixmap sheet((QSizeF(1200, 800) * ratio).toSize());
    sheet.setDevicePixelRatio(ratio);
    for (auto _ : state) {
        QPainter painter(&sheet);
        graficos::pintar(painter, QRectF(0, 0, 1200, 800), escena, QStringLiteral("V (l)"), QStringLiteral("P (atm.)"),
                         graficos::AxisTexts::LeftOut);
    }
    state.SetLabel("1200x800");
}
BENCHMARK_CAPTURE(BM_paint, first_plot, tavo::PlotRange{0.0, -75.0, 5.0, 175.0})
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_paint, two_phase_region, tavo::PlotRange{0.03, -80.0, 0.6, 100.0})
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond);

/// Pressures, tie lines and strokes of the same plot, before any painting.
void BM_scene(benchmark::State& state) {
    const tavo::SlotTable table = five_isotherms();
    for (auto _ : state)
        benchmark::DoNotOptimize(graficos::scene(table, {0.0, -75.0, 5.0, 175.0}, LEGEND));
}
BENCHMARK(BM_scene)->Unit(benchmark::kMicrosecond);

QByteArray database(std::int64_t gases) {
    QByteArray text = "[General]\r\nn=" + QByteArray::number(static_cast<qlonglong>(gases)) + "\r\n";
    for (std::int64_t i = 1; i <= gases; ++i) {
        const QByteArray number = QByteArray::number(static_cast<qlonglong>(i));
        text += "\r\n[G" + number + "]\r\nnombre=X" + number +
                " (gas de prueba)\r\npm=44\r\ntc=300\r\npc=70\r\nvc=-1\r\n" + "teb=200\r\nhv=4\r\n";
        for (const char* key : {"1,1", "1,2", "2,1", "2,2", "3,1", "3,2", "4,1", "4,2", "5,1", "5,2", "5,3", "5,4",
                                "6,1", "6,2", "6,3", "7,1", "7,2", "7,3", "8,1", "8,2", "8,3", "9,1", "9,2"})
            text += QByteArray("c(") + key + ")=-1\r\n";
    }
    return text;
}

/// Reads the database, then makes and shows the conditions window with its five lists.
void BM_open_conditions(benchmark::State& state) {
    const QTemporaryDir folder;
    std::filesystem::copy_file(std::filesystem::path(TAVO_SOURCE_DIR) / "data/idioma.lng",
                               folder.filePath("idioma.lng").toStdString());
    QFile file(folder.filePath(QStringLiteral("data")));
    if (!file.open(QIODevice::WriteOnly) || file.write(database(state.range(0))) < 0)
        state.SkipWithError("no database");
    file.close();
    SinMensajes mensajes;
    for (auto _ : state) {
        ApplicationState estado(folder.path().toStdString());
        estado.load_languages();
        estado.load_gases();
        frmdatos window(estado, mensajes);
        window.show();
        QCoreApplication::processEvents();
        window.grab();
    }
}
BENCHMARK(BM_open_conditions)->Arg(60)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// The window alone, over names that are there already.
void BM_fill_gas_lists(benchmark::State& state) {
    const QTemporaryDir folder;
    std::filesystem::copy_file(std::filesystem::path(TAVO_SOURCE_DIR) / "data/idioma.lng",
                               folder.filePath("idioma.lng").toStdString());
    QFile file(folder.filePath(QStringLiteral("data")));
    if (!file.open(QIODevice::WriteOnly) || file.write(database(state.range(0))) < 0)
        state.SkipWithError("no database");
    file.close();
    SinMensajes mensajes;
    ApplicationState estado(folder.path().toStdString());
    estado.load_languages();
    estado.load_gases();
    for (auto _ : state) {
        frmdatos window(estado, mensajes);
        window.show();
        QCoreApplication::processEvents();
        window.grab();
    }
}
BENCHMARK(BM_fill_gas_lists)->Arg(60)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

// What the user of the equations' parameters waits for, with the shipped gases and with ten thousand: the opening of
// the window, another model, another gas.

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench/sin_usuario.h"
#include "shell/application_state.h"
#include "windows/gasedit/frmcompuestos.h"

namespace {

/// The shipped texts, and the shipped gases over and over until there are `gases`.
struct Programa {
    explicit Programa(std::int64_t gases) : estado(folder.path().toStdString()) {
        const std::filesystem::path data = std::filesystem::path(TAVO_SOURCE_DIR) / "data";
        std::filesystem::copy_file(data / "idioma.lng", folder.filePath(QStringLiteral("idioma.lng")).toStdString());
        const tavo::confreg::Text shipped = tavo::confreg::read(data / "data");
        std::ofstream file(folder.filePath(QStringLiteral("data")).toStdString(), std::ios::binary);
        file << "[General]\r\nn=" << gases << "\r\n";
        for (std::int64_t i = 1; i <= gases; ++i) {
            file << "[G" << i << "]\r\nnombre=gas " << i << "\r\n";
            for (const auto& [key, value] : shipped.claves("g" + std::to_string((i - 1) % 60 + 1)))
                if (key != "nombre")
                    file << key << '=' << value << "\r\n";
        }
        file.close();
        estado.load_languages();
        estado.load_gases();
    }

    QTemporaryDir folder;
    ApplicationState estado;
    SinMensajes mensajes;
};

void paint(QWidget& window) {
    window.show();
    QCoreApplication::processEvents();
    window.grab();
}

void BM_open_parameters(benchmark::State& state) {
    Programa programa(state.range(0));
    for (auto _ : state) {
        frmcompuestos window(programa.estado, programa.mensajes);
        paint(window);
    }
}
BENCHMARK(BM_open_parameters)->Arg(60)->Arg(10'000)->Unit(benchmark::kMillisecond);

void BM_change_model(benchmark::State& state) {
    Programa programa(state.range(0));
    frmcompuestos window(programa.estado, programa.mensajes);
    paint(window);
    auto* models = window.findChild<QComboBox*>(QStringLiteral("cmbecu"));
    for (auto _ : state) {
        models->setCurrentIndex((models->currentIndex() + 1) % models->count());
        window.grab();
    }
}
BENCHMARK(BM_change_model)->Arg(60)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// The window follows every key typed as a row's temperature.
void BM_follow_temperature(benchmark::State& state) {
    Programa programa(state.range(0));
    frmcompuestos window(programa.estado, programa.mensajes);
    window.findChild<QComboBox*>(QStringLiteral("cmbecu"))->setCurrentIndex(8);
    emit window.findChild<RejillaGases*>()->gas_taken(25);
    paint(window);
    tavo::EquationSlot& slot = programa.estado.slot_table()[1];
    for (auto _ : state) {
        slot.temperature = slot.temperature < 300.0 ? 310.0 : 290.0;
        emit programa.estado.slot_changed(1);
        window.grab();
    }
}
BENCHMARK(BM_follow_temperature)->Arg(60)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

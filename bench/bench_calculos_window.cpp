// What the user of the calculations window waits for: its opening, one full calculation, and the table of all models.

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>

#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench/sin_usuario.h"
#include "shell/application_state.h"
#include "windows/calc/frmcalculos.h"

namespace {

/// The shipped database and texts in a folder of their own.
struct Programa {
    Programa() : estado(folder.path().toStdString()) {
        for (const char* name : {"data", "idioma.lng"})
            std::filesystem::copy_file(std::filesystem::path(TAVO_SOURCE_DIR) / "data" / name,
                                       folder.filePath(QLatin1String(name)).toStdString());
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

void BM_open_calculations(benchmark::State& state) {
    Programa programa;
    for (auto _ : state) {
        frmcalculos window(programa.estado, programa.mensajes);
        paint(window);
    }
}
BENCHMARK(BM_open_calculations)->Unit(benchmark::kMillisecond);

/// Water at 300 K with the model of the argument, by the button; `table`: with all models unfolded.
void BM_calculate(benchmark::State& state, bool table) {
    Programa programa;
    frmcalculos window(programa.estado, programa.mensajes);
    window.findChild<QComboBox*>(QStringLiteral("cmbgas"))
        ->setCurrentIndex(
            programa.estado.gas_names()
                ->match(programa.estado.gas_names()->index(0, 0), Qt::DisplayRole, QStringLiteral("H2O"))[0]
                .row());
    window.findChild<QComboBox*>(QStringLiteral("cmbecu"))->setCurrentIndex(static_cast<int>(state.range(0)));
    window.findChild<QToolButton*>(QStringLiteral("bttabla"))->setChecked(table);
    paint(window);
    auto* button = window.findChild<QPushButton*>(QStringLiteral("btcalcular"));
    for (auto _ : state) {
        button->click();
        QCoreApplication::processEvents();
    }
}
BENCHMARK_CAPTURE(BM_calculate, folded, false)->Arg(1)->Arg(3)->Arg(7)->Arg(9)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_calculate, all_models, true)->Arg(7)->Unit(benchmark::kMillisecond);

}  // namespace

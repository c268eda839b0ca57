// What the user of the gas editor waits for: adding, changing and deleting a gas on the disk, with the reading that
// follows, in a program that shows no window and in one whose windows all show a gas.

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "bench/sin_usuario.h"
#include "shell/application_state.h"
#include "windows/calc/frmcalculos.h"
#include "windows/gasedit/editor_logica.h"
#include "windows/gasedit/frmcompuestos.h"
#include "windows/gasedit/frmgases.h"
#include "windows/lab/frmoperaciones.h"
#include "windows/plots/frmdatos.h"
#include "windows/plots/frmgraficos.h"

namespace {

using tavo::confreg::Text;

editor::StoredGas gas(int number) {
    editor::StoredGas result;
    result.constants = {.name = "gas " + std::to_string(number), .pm = 44.01, .tc = 304.1, .vc = -1.0, .pc = 72.8};
    result.c[7][2] = result.c[8][2] = 0.2239;
    return result;
}

std::string database(std::int16_t count) {
    Text text("[General]\r\nn=0\r\n");
    for (std::int16_t i = 0; i < count; ++i)
        editor::write(text, static_cast<std::int16_t>(i + 1), gas(i + 1));
    text.escribirclave("General", "n", std::to_string(count));
    return text.bytes();
}

/// A program over `count` gases, a gas of the middle chosen in each of its windows.
class Programa {
public:
    Programa(std::int16_t count, bool windows) : bytes_(database(count)), estado(folder_.path().toStdString()) {
        std::filesystem::copy_file(std::filesystem::path(TAVO_SOURCE_DIR) / "data" / "idioma.lng",
                                   estado.language_path());
        tavo::real_file_system().create_exclusive(estado.data_path());
        restore();
        estado.load_languages();
        estado.load_gases();
        if (windows)
            open();
    }

    /// The database as it was, without telling anybody.
    void restore() { tavo::confreg::rewrite(estado.data_path(), bytes_, estado.site()); }

private:
    template <class Window, class... More>
    void open(const char* name, More&... more) {
        estado.register_window(QLatin1String(name),
                               [this, &more...] { return new Window(estado, mensajes_, more...); });
        QWidget* window = estado.window(QLatin1String(name));
        windows_.emplace_back(window);
        for (const char* list : {"cmbgas", "cmbgas(1)", "cmbecu", "cmbecu(1)"}) {
            if (auto* box = window->findChild<QComboBox*>(QLatin1String(list)))
                box->setCurrentIndex(QByteArray(list).startsWith("cmbgas") ? box->count() / 2 : 1);
        }
        window->show();
        QCoreApplication::processEvents();
    }
    void open() {
        open<frmdatos>("frmdatos");
        open<frmgraficos>("frmgraficos", archivos_, impresora_);
        open<frmcalculos>("frmcalculos");
        open<frmoperaciones>("frmoperaciones");
        open<frmcompuestos>("frmcompuestos");
        open<frmgases>("frmgases");
    }

    QTemporaryDir folder_;
    std::string bytes_;
    SinMensajes mensajes_;
    SinArchivos archivos_;
    SinImpresora impresora_;

public:
    ApplicationState estado;

private:
    std::vector<std::unique_ptr<QWidget>> windows_;
};

template <class Edit>
void run(benchmark::State& state, const Edit& edit) {
    const auto count = static_cast<std::int16_t>(state.range(0));
    Programa programa(count, state.range(1) != 0);
    for (auto _ : state) {
        edit(programa.estado, count);
        QCoreApplication::processEvents();  // what has changed is painted
        state.PauseTiming();
        programa.restore();
        programa.estado.reload_gases();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

void BM_add(benchmark::State& state) {
    run(state, [](ApplicationState& estado, std::int16_t count) {
        estado.edit_gases([&](Text& text) { editor::add(text, count, gas(0)); });
    });
}

void BM_change_last(benchmark::State& state) {
    run(state, [](ApplicationState& estado, std::int16_t count) {
        estado.edit_gases([&](Text& text) { editor::write(text, count, gas(0)); });
    });
}

/// Every other gas gets a new number.
void BM_delete_first(benchmark::State& state) {
    run(state, [](ApplicationState& estado, std::int16_t count) {
        estado.remove_gas(1, [&](Text& text) { editor::remove(text, 1, count); });
    });
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"gases", "windows"})
        ->ArgsProduct({{60, 10'000}, {0, 1}})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}
BENCHMARK(BM_add)->Apply(sizes);
BENCHMARK(BM_change_last)->Apply(sizes);
BENCHMARK(BM_delete_first)->Apply(sizes);

}  // namespace

// Opening every window of the program on a warm machine: from the order to the painted window inside the main window.
// Offscreen, raster. Prints a table of wall and processor time; the first opening of the run is timed apart.

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <vector>

#include "controls/elegir_archivo.h"
#include "controls/exterior.h"
#include "controls/impresora.h"
#include "core/palette.h"
#include "shell/application_state.h"
#include "shell/frmprincipal.h"
#include "shell/mensajes.h"
#include "windows/ventanas.h"

namespace {

constexpr int OPENINGS = 9;  // of which the median counts
constexpr double TARGET = 150.0;

class SinMensajes final : public Mensajes {
public:
    Respuesta mostrar(const QString&, int, const QString&) override { return Respuesta::Aceptar; }
};

class SinArchivos final : public ElegirArchivo {
public:
    QString guardar(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
};

class SinImpresora final : public Impresora {
public:
    void imprimir(QWidget*, const Documento&) override {}
};

class SinExterior final : public Exterior {
public:
    bool abrir_direccion(const QString&) override { return false; }
    QString buscar_programa(const QString&) override { return {}; }
    bool ejecutar(const QString&, const QStringList&) override { return false; }
};

struct Times {
    double wall, processor;  // milliseconds
};

/// Whether a widget has been painted.
class Testigo final : public QObject {
public:
    bool painted = false;
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

Times opening(ApplicationState& estado, const QString& name) {
    Testigo witness;
    QElapsedTimer wall;
    const std::clock_t before = std::clock();
    wall.start();
    estado.show_window(name);
    QWidget* window = estado.open_window(name);
    window->installEventFilter(&witness);
    while (!witness.painted)
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();  // what it put off until it was seen
    const Times times{static_cast<double>(wall.nsecsElapsed()) / 1e6,
                      1e3 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC};
    window->removeEventFilter(&witness);
    window->close();
    while (estado.open_window(name)) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    return times;
}

double median(std::vector<Times> times, double Times::*which) {
    std::ranges::sort(times, {}, which);
    return times[times.size() / 2].*which;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ApplicationState estado(std::filesystem::path(TAVO_SOURCE_DIR) / "data");
    SinMensajes mensajes;
    SinArchivos archivos;
    SinImpresora impresora;
    SinExterior exterior;
    register_windows(estado, {mensajes, archivos, impresora, exterior});
    estado.load_languages();
    estado.load_gases();
    for (std::size_t i = 0; i < tavo::CURVE_COLOURS.size(); ++i)
        estado.slot_table()[static_cast<int>(i) + 1].colour = tavo::CURVE_COLOURS[i];
    frmprincipal main_window(estado, mensajes);
    main_window.resize(1366, 768);
    main_window.show();
    QCoreApplication::processEvents();
    std::printf("%-16s %10s %10s %10s %10s\n", "window", "first ms", "wall ms", "slowest", "cpu ms");
    int late = 0;
    for (const QString& name : estado.window_names()) {
        const Times first = opening(estado, name);
        std::vector<Times> times;
        for (int i = 0; i < OPENINGS; ++i)
            times.push_back(opening(estado, name));
        const double slowest = std::ranges::max(times, {}, &Times::wall).wall;
        const double wall = median(times, &Times::wall);
        std::printf("%-16s %10.1f %10.1f %10.1f %10.1f%s\n", qPrintable(name), first.wall, wall, slowest,
                    median(times, &Times::processor), wall > TARGET ? "  over 150 ms" : "");
        late += wall > TARGET;
    }
    return late > 0 ? 1 : 0;
}

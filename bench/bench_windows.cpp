// Opening every window of the program on a warm machine: from the order to the painted window inside the main window.
// Offscreen, raster. Prints a table of wall and processor time; the first opening of the run is timed apart.
// bench_windows [FOLDER]: with a program folder that holds the compiled help (build/dev/data), of the help viewer too.

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <vector>

#include "bench/sin_usuario.h"
#include "core/palette.h"
#include "shell/HTMLHelp.h"
#include "shell/application_state.h"
#include "shell/frmayuda.h"
#include "shell/frmprincipal.h"
#include "windows/ventanas.h"

namespace {

constexpr int OPENINGS = 9;  // of which the median counts
constexpr double TARGET = 150.0;

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

/// From the order, which gives the window, to its painting.
Times until_painted(const std::function<QWidget*()>& order) {
    Testigo witness;
    QElapsedTimer wall;
    const std::clock_t before = std::clock();
    wall.start();
    QWidget* window = order();
    window->installEventFilter(&witness);
    while (!witness.painted)
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();  // what it put off until it was seen
    const Times times{static_cast<double>(wall.nsecsElapsed()) / 1e6,
                      1e3 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC};
    window->removeEventFilter(&witness);
    return times;
}

Times opening(ApplicationState& estado, const QString& name) {
    const Times times = until_painted([&] {
        estado.show_window(name);
        return estado.open_window(name);
    });
    estado.open_window(name)->close();
    while (estado.open_window(name)) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    return times;
}

/// Reading the file, building the viewer, painting a page with a picture.
Times opening_help(ApplicationState& estado, const Puertas& doors) {
    HTMLHelp help(estado, doors.mensajes, doors.impresora, doors.exterior, {});
    return until_painted([&help] {
        help.mostrar(QStringLiteral("frmdatos"));
        return help.visor();
    });
}

double median(std::vector<Times> times, double Times::*which) {
    std::ranges::sort(times, {}, which);
    return times[times.size() / 2].*which;
}

bool report(const QString& name, const std::function<Times()>& open) {
    const Times first = open();
    std::vector<Times> times;
    for (int i = 0; i < OPENINGS; ++i)
        times.push_back(open());
    const double slowest = std::ranges::max(times, {}, &Times::wall).wall;
    const double wall = median(times, &Times::wall);
    std::printf("%-16s %10.1f %10.1f %10.1f %10.1f%s\n", qPrintable(name), first.wall, wall, slowest,
                median(times, &Times::processor), wall > TARGET ? "  over 150 ms" : "");
    return wall <= TARGET;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ApplicationState estado(argc > 1 ? std::filesystem::path(argv[1])
                                     : std::filesystem::path(TAVO_SOURCE_DIR) / "data");
    SinMensajes mensajes;
    SinArchivos archivos;
    SinImpresora impresora;
    SinExterior exterior;
    const Puertas doors{mensajes, archivos, impresora, exterior};
    register_windows(estado, doors);
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
    for (const QString& name : estado.window_names())
        late += report(name, [&] { return opening(estado, name); }) ? 0 : 1;
    if (std::filesystem::exists(estado.help_path().toStdString()))
        late += report(QStringLiteral("frmayuda"), [&] { return opening_help(estado, doors); }) ? 0 : 1;
    return late > 0 ? 1 : 0;
}

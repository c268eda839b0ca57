// What the user of the laboratory waits for while dragging: from a move of the mouse to the instruments drawn anew.

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <cmath>

#include "windows/lab/instrumentos.h"

using laboratorio::Instrument;

namespace {

/// The three sheets side by side at 1200x600, as many pixels to a unit as QT_SCALE_FACTOR says. Whichever instrument is
/// dragged, the others follow over their whole scales, and the gas goes with them.
class Banco : public QWidget {
public:
    Banco(bool thermocouple, bool manometer) {
        resize(1200, 600);
        int x = 0;
        for (Lamina* sheet : std::initializer_list<Lamina*>{&piston, &termometros, &barometros}) {
            sheet->setGeometry(x, 0, 400, 600);
            x += 400;
        }
        termometros.use(thermocouple ? Instrument::Thermocouple : Instrument::Thermometer);
        barometros.use(manometer ? Instrument::Manometer : Instrument::Barometer);
        for (Lamina* sheet : std::initializer_list<Lamina*>{&piston, &termometros, &barometros})
            connect(sheet->in_use(), &Instrumento::MouseMove, this, [this, sheet](double value) {
                const laboratorio::Scale& scale = laboratorio::scale(sheet->in_use()->kind());
                follow((value - scale.minimum) / (scale.maximum - scale.minimum));
            });
    }

    void follow(double part) {
        for (Lamina* sheet : std::initializer_list<Lamina*>{&piston, &termometros, &barometros}) {
            const laboratorio::Scale& scale = laboratorio::scale(sheet->in_use()->kind());
            sheet->in_use()->set_value(scale.minimum + part * (scale.maximum - scale.minimum));
        }
        piston.set_gas(moles, 1000.0 * part);
    }

    double moles = 1.0;
    MarcoPiston piston{this};
    MarcoTermometros termometros{this};
    MarcoBarometros barometros{this};
};

void drag(benchmark::State& state, Banco& bench, Instrumento* instrument) {
    bench.show();
    QCoreApplication::processEvents();
    double turn = 0.0;
    for (auto _ : state) {
        const QPointF at(5.0, (0.5 + 0.45 * std::sin(turn += 0.37)) * instrument->height());
        QMouseEvent press(QEvent::MouseButtonPress, at, instrument->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                          {});
        QMouseEvent move(QEvent::MouseMove, at, instrument->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        if (turn < 0.4)
            QCoreApplication::sendEvent(instrument, &press);
        QCoreApplication::sendEvent(instrument, &move);
        QCoreApplication::processEvents();  // repaints what changed
    }
    state.SetLabel("1200x600, ratio " + std::to_string(static_cast<int>(bench.devicePixelRatioF())));
}

void BM_drag_piston(benchmark::State& state) {
    Banco bench(true, true);
    bench.moles = static_cast<double>(state.range(0));
    drag(state, bench, bench.piston.pctpiston);
}
BENCHMARK(BM_drag_piston)->ArgName("mol")->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond);

void BM_drag_temperature(benchmark::State& state) {
    Banco bench(state.range(0) != 0, true);
    drag(state, bench, bench.termometros.in_use());
}
BENCHMARK(BM_drag_temperature)->ArgName("thermocouple")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_drag_pressure(benchmark::State& state) {
    Banco bench(false, state.range(0) != 0);
    drag(state, bench, bench.barometros.in_use());
}
BENCHMARK(BM_drag_pressure)->ArgName("manometer")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// All that stands still, drawn anew after a change of size.
void BM_redraw_sheets(benchmark::State& state) {
    Banco bench(state.range(0) != 0, state.range(0) != 0);
    bench.show();
    int height = 600;
    for (auto _ : state) {
        height = 1199 - height;
        for (Lamina* sheet : std::initializer_list<Lamina*>{&bench.piston, &bench.termometros, &bench.barometros})
            sheet->resize(400, height);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(BM_redraw_sheets)->ArgName("second_instruments")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

// The sentences about a calculation, in the literals of the code.

#include <QScrollBar>
#include <QTest>

#include "controls/linea_estado.h"
#include "controls/texto_estado.h"

namespace {

using namespace calculos;

const Texto LITERALS = [](int number, const QString& literal) {
    return literal.isEmpty() ? QStringLiteral("<%1>").arg(number) : literal;
};

/// One mole at 300 K with 2 l of a model whose coexistence is at 5 atm.
Output output_of(Phase phase, Root root, double stable) {
    Output out{};
    out.v = 2.0;
    out.phase = phase;
    out.root = root;
    out.saturation = tavo::calcnum::Saturation{5.0, 0.1, 4.0};
    out.liquid_fraction = 0.51282;
    if (stable > 0.0)
        out.stable_volume = stable;
    return out;
}

/// "~" stands for a no-break space: a number stays with its unit.
QString tied(const char* sentence) {
    return QString::fromUtf8(sentence).replace(u'~', QChar::Nbsp);
}

}  // namespace

class tst_texto_estado : public QObject {
    Q_OBJECT
private slots:
    void state();
    void stretched();
    void withoutCoexistence();
    void failure();
    void theLineHoldsAsManyLinesAsItIsMadeFor();
};

void tst_texto_estado::state() {
    const auto row = [](Phase phase, Root root, double stable, const char* sentence) {
        QCOMPARE(
            texto_estado(LITERALS, output_of(phase, root, stable), {}, QStringLiteral("cm³"), QStringLiteral("mmHg")),
            tied(sentence));
    };
    row(Phase::Gas, Root::Only, 0.0, "Gas.");
    row(Phase::Liquid, Root::Liquid, 0.0, "Líquido. Este volumen es la raíz del líquido.");
    row(Phase::SuperheatedLiquid, Root::Liquid, 12.34567,
        "Líquido sobrecalentado, metaestable. Con este volumen lo estable es líquido y gas juntos a Pv~=~3800~mmHg, "
        "con el 51.3~% de la cantidad en el líquido. Este volumen es la raíz del líquido. A esta presión la fase "
        "estable es "
        "el gas (V~=~12350~cm³).");
    row(Phase::Unstable, Root::Middle, 0.09,
        "Estado inestable, dentro del bucle del modelo. Con este volumen lo estable es líquido y gas juntos a Pv~=~"
        "3800~mmHg, con el 51.3~% de la cantidad en el líquido. A esta presión la fase estable es el líquido (V~=~90~"
        "cm³).");
    row(Phase::SupersaturatedVapour, Root::Gas, 0.09,
        "Vapor sobresaturado, metaestable. Con este volumen lo estable es líquido y gas juntos a Pv~=~3800~mmHg, con "
        "el 51.3~% de la cantidad en el líquido. Este volumen es la raíz del gas. A esta presión la fase estable es el "
        "líquido (V~=~90~cm³).");
}

void tst_texto_estado::stretched() {
    Output out = output_of(Phase::SuperheatedLiquid, Root::Only, 0.0);
    out.p = -840.0;
    QVERIFY(texto_estado(LITERALS, out, {}, QStringLiteral("l"), QStringLiteral("atm"))
                .startsWith(QStringLiteral("Líquido estirado, a presión negativa: metaestable. Con este volumen")));
}

void tst_texto_estado::withoutCoexistence() {
    Output out = output_of(Phase::Unstable, Root::Only, 0.0);
    out.saturation.reset();
    QCOMPARE(texto_estado(LITERALS, out, {}, QStringLiteral("l"), QStringLiteral("atm")),
             QStringLiteral("Estado inestable: aquí la presión del modelo crece con el volumen."));
}

void tst_texto_estado::failure() {
    const auto row = [](Reason reason, const char* sentence) {
        QCOMPARE(texto_fallo(LITERALS, Unsolvable(reason, "detail", 0.042867), QStringLiteral("cm³")), tied(sentence));
    };
    row(Reason::SmallMu, "<93>");
    row(Reason::InsideCovolume,
        "El volumen debe ser mayor que 42.87~cm³, el que ocupan las propias moléculas (covolumen).");
    row(Reason::VolumeNotReached,
        "El cálculo, que parte del volumen del gas ideal, no llega al volumen buscado. Esa presión la da V~=~42.87~"
        "cm³.");
    row(Reason::NotFinite, "El cálculo no da un resultado finito.");
}

void tst_texto_estado::theLineHoldsAsManyLinesAsItIsMadeFor() {
    LineaEstado line(6);
    line.show();
    for (const auto& [lines, scrolls] : {std::pair{6, false}, std::pair{7, true}}) {
        line.set_outcome(QStringList(lines, QStringLiteral("Gas.")).join(u'\n'));
        QCOMPARE(line.verticalScrollBar()->maximum() > 0, scrolls);
    }
}

QTEST_MAIN(tst_texto_estado)
#include "tst_texto_estado.moc"

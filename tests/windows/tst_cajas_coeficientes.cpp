// The coefficient boxes with name and unit in one label, driven by keys.

#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <array>
#include <memory>

#include "controls/cajas_coeficientes.h"

using enum tavo::EquationOfState;

namespace {

constexpr CajasCoeficientes::Coefficients VALUES{3.123456789, 0.0428766666, -0.22394996, 8e-5 / 3.0};

struct Ventana {
    Ventana() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&cajas);
        column->addWidget(&beside);
        window.show();
        window.activateWindow();
    }
    int signals_seen() const { return static_cast<int>(edited.count() + mu_edited.count()); }

    QWidget window;
    CajasCoeficientes cajas{CajasCoeficientes::Rotulos::Joined, [](int, const QString& literal) { return literal; }};
    QLineEdit beside;
    QSignalSpy edited{&cajas, &CajasCoeficientes::edited}, mu_edited{&cajas, &CajasCoeficientes::mu_edited};
};

}  // namespace

class tst_cajas_coeficientes : public QObject {
    Q_OBJECT
private slots:
    void init() {
        w_ = std::make_unique<Ventana>();
        QVERIFY(QTest::qWaitForWindowActive(&w_->window));
    }
    void cleanup() { w_.reset(); }

    void each_model_has_its_labels_in_one_place();
    void new_values_replace_what_is_being_typed();
    void a_change_tells_which_box();
    void a_read_only_box_takes_no_key_and_looks_so();

private:
    std::unique_ptr<Ventana> w_;
};

void tst_cajas_coeficientes::each_model_has_its_labels_in_one_place() {
    const QString a = "a [l ² atm / mol ²]", b = "b [l / mol]";
    const QStringList soave{"a (T) [l ² atm / mol ²]", b, "w"};
    const std::pair<tavo::EquationOfState, QStringList> cases[]{
        {IdealGas, {}},
        {VanDerWaals, {a, b}},
        {Berthelot, {"a [l ² atm / mol ² K]", b}},
        {Dieterici, {a, b}},
        {RedlichKwong, {"a [l ² atm / mol ² K ½]", b}},
        {Virial, {"A", "B [l / mol]", "C [l ² / mol ²]", "D [l ³ / mol ³]"}},
        {FreeExponent, {"a", "b", "µ"}},
        {Soave, soave},
        {PengRobinson, soave},
        {DietericiSadus, {a, b}},
    };
    const QSize size = w_->cajas.minimumSizeHint();
    for (const auto& [model, expected] : cases) {
        w_->cajas.show_values(model, VALUES, 1.75);
        QStringList labels;
        for (const char* letter : {"a", "b", "c", "d", "mu"}) {
            const auto* label = w_->cajas.findChild<QLabel*>(QStringLiteral("lb") + letter);
            QCOMPARE(label->isVisible(), w_->cajas.findChild<QWidget*>(QStringLiteral("txt") + letter)->isVisible());
            if (label->isVisible())
                labels << label->text();
        }
        QCOMPARE(labels, expected);
        QCOMPARE(w_->cajas.minimumSizeHint(), size);
    }
    QCOMPARE(w_->signals_seen(), 0);
}

void tst_cajas_coeficientes::new_values_replace_what_is_being_typed() {
    auto* a = w_->cajas.box(0);
    w_->cajas.show_values(VanDerWaals, VALUES, 1.5);
    for (const bool cleared : {false, true}) {
        a->setFocus();
        QTest::keyClicks(a, "7");
        cleared ? w_->cajas.clear() : w_->cajas.show_values(VanDerWaals, VALUES, 1.5);
        QCOMPARE(a->text(), QString(cleared ? "" : "3.12346"));
        QCOMPARE(w_->cajas.coefficients()[0], cleared ? 0.0 : VALUES[0]);
        w_->beside.setFocus();
    }
    QVERIFY(w_->cajas.findChild<QLabel*>("lba")->isVisible());
    QCOMPARE(w_->signals_seen(), 0);
}

void tst_cajas_coeficientes::a_change_tells_which_box() {
    w_->cajas.show_values(Virial, VALUES, 1.5);
    for (const int k : {3, 0}) {
        w_->cajas.box(k)->setFocus();
        QTest::keyClicks(w_->cajas.box(k), "2");
        w_->beside.setFocus();
        QCOMPARE(w_->edited.takeFirst().at(0).toInt(), k);
    }
    QCOMPARE(w_->cajas.coefficients(), (CajasCoeficientes::Coefficients{2.0, VALUES[1], VALUES[2], 2.0}));
    QCOMPARE(w_->signals_seen(), 0);
}

void tst_cajas_coeficientes::a_read_only_box_takes_no_key_and_looks_so() {
    w_->cajas.show_values(Soave, VALUES, 1.5);
    w_->cajas.set_read_only({true, true, false, true});
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::Base, Qt::darkBlue);
    w_->window.setPalette(dark);
    for (const int k : {0, 2}) {
        QTest::keyClicks(w_->cajas.box(k), "9");
        QCOMPARE(w_->cajas.box(k)->text().endsWith('9'), k == 2);
        QCOMPARE(w_->cajas.box(k)->palette().color(QPalette::Base), QColor(k == 2 ? Qt::darkBlue : Qt::black));
    }
}

QTEST_MAIN(tst_cajas_coeficientes)
#include "tst_cajas_coeficientes.moc"

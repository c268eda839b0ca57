// Gas, model, formula and coefficients, driven by keys and clicks.

#include <QClipboard>
#include <QSignalSpy>
#include <QStringListModel>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <array>
#include <memory>

#include "controls/panel_modelo.h"
#include "core/models.h"

namespace {

using enum tavo::EquationOfState;

const QStringList NAMES{"H2O (agua)", "CO2 (dióxido de carbono)", "N2 (nitrógeno)"};

tavo::EquationSlot slot_of(tavo::EquationOfState model) {
    tavo::EquationSlot slot;
    slot.gas_number = 2;
    slot.equation = model;
    slot.gas.name = "CO2";
    slot.gas.a = 3.123456789;
    slot.gas.b = 0.0428766666;
    slot.gas.c = -0.22394996;
    slot.gas.d = 8e-5 / 3.0;
    slot.mu = 1.75004;
    return slot;
}

/// The P that every formula begins with, in its first line.
int width_of_first_letter(const QImage& image) {
    const auto inked = [&](int x) {
        for (int y = 2; y < image.height() / 2 + 8; ++y)
            if (qGray(image.pixel(x, y)) < 200)
                return true;
        return false;
    };
    int left = 2;
    while (left < 20 && !inked(left))
        ++left;
    int right = left;
    while (inked(right))
        ++right;
    return right - left;
}

/// A panel above another entry, in a window of its own.
class Ventana {
public:
    Ventana() : panel(texto, &names, models(), &window), beside(&window) {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&panel);
        column->addWidget(&beside);
        window.resize(340, 400);
        window.show();
        window.activateWindow();
    }

    static QString texto(int number, const QString& literal) {
        return number == 440 ? literal : literal.isEmpty() ? QString::number(number) : literal;
    }
    static QStringList models() {
        QStringList names;
        for (const tavo::Model& model : tavo::models())
            names << QString::fromLatin1(model.name.data(), static_cast<qsizetype>(model.name.size()));
        return names;
    }

    template <class Control>
    Control* control(const char* name) {
        auto* found = panel.findChild<Control*>(QLatin1String(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    EntradaNumerica* box(const char* name) { return control<EntradaNumerica>(name); }
    void type(const char* name, const char* text) {
        QTest::mouseClick(box(name), Qt::LeftButton);
        QTest::keyClicks(box(name), text);
    }
    int signals_seen() const {
        return static_cast<int>(gas.count() + model.count() + coefficients.count() + mu.count() + automatic.count());
    }

    QStringListModel names{NAMES};
    QWidget window;
    PanelModelo panel;
    QLineEdit beside;
    QSignalSpy gas{&panel, &PanelModelo::gas_chosen}, model{&panel, &PanelModelo::model_chosen},
        coefficients{&panel, &PanelModelo::coefficients_edited}, mu{&panel, &PanelModelo::mu_edited},
        automatic{&panel, &PanelModelo::automatic_wanted};
};

}  // namespace

class tst_panel_modelo : public QObject {
    Q_OBJECT
private slots:
    void init() {
        w_ = std::make_unique<Ventana>();
        QVERIFY(QTest::qWaitForWindowActive(&w_->window));
    }
    void cleanup() { w_.reset(); }

    void each_model_has_its_boxes_labels_and_units_in_one_place();
    void the_formulas_are_drawn_in_black_on_paper_in_one_size();
    void values_count_in_full_until_somebody_types();
    void a_changed_box_is_told_once();
    void coefficients_set_by_hand_look_so();
    void a_slot_without_a_gas_leaves_the_boxes_empty();
    void choices_of_the_user_are_told_once();
    void new_gas_names_are_no_choice();

private:
    std::unique_ptr<Ventana> w_;
};

void tst_panel_modelo::each_model_has_its_boxes_labels_and_units_in_one_place() {
    const QStringList b{"b", "l / mol", "0.04288"};
    const auto a_and_b = [&](const char* unit) { return QStringList{"a", unit, "3.12346"} + b; };
    const QStringList soave =
        QStringList{"a (T)", "l ² atm / mol ²", "3.12346"} + b + QStringList{"w", "", "-0.223950"};
    const std::pair<tavo::EquationOfState, QStringList> cases[]{
        // name, unit and text of each box in use
        {IdealGas, {}},
        {VanDerWaals, a_and_b("l ²atm/mol ²")},
        {Berthelot, a_and_b("l ²atm/mol ²K")},
        {Dieterici, a_and_b("l ²atm/mol ²")},
        {RedlichKwong, a_and_b("l ²atm/mol ²K ½")},
        {Virial,
         {"A", "", "3.12346", "B", "l / mol", "0.04288", "C", "l ² / mol ²", "-0.223950", "D", "l ³ / mol ³",
          "0.000027"}},
        {FreeExponent, a_and_b("l<sup>µ</sup> atm / mol<sup>µ</sup>") + QStringList{"µ", "", "1.7500"}},
        {Soave, soave},
        {PengRobinson, soave},
        {DietericiSadus, a_and_b("l ²atm/mol ²")},
    };
    const QSize size = w_->panel.sizeHint();
    QVERIFY2(w_->panel.minimumSizeHint().width() <= 300, "does not fit a narrow column");
    for (const auto& [model, expected] : cases) {
        w_->panel.show_slot(slot_of(model));
        QCOMPARE(w_->panel.model(), model);
        QCOMPARE(w_->panel.gas(), 2);
        QStringList labels;
        for (const QByteArray letter : {"a", "b", "c", "d", "mu"}) {
            const EntradaNumerica* box = w_->box("txt" + letter);
            const auto* label = w_->control<QLabel>("lb" + letter);
            QCOMPARE(label->isVisible(), box->isVisible());
            if (box->isVisible())
                labels << label->text() << (letter == "mu" ? "" : w_->control<QLabel>("lbunit" + letter)->text())
                       << box->text();
        }
        QCOMPARE(labels, expected);
        QCOMPARE(w_->panel.sizeHint(), size);
    }
    QCOMPARE(w_->signals_seen(), 0);
}

void tst_panel_modelo::the_formulas_are_drawn_in_black_on_paper_in_one_size() {
    auto* picture = w_->control<ImagenFormula>("imgformula");
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    w_->window.setPalette(dark);
    QList<QImage> drawn;
    int first = 0;
    for (const tavo::Model& model : tavo::models()) {
        w_->panel.show_slot(slot_of(model.number));
        QCOMPARE(picture->accessibleName(), QString::fromUtf8(model.formula));
        const QImage image = picture->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        QCOMPARE(qGray(image.pixel(image.width() - 5, 5)), 255);
        const int width = width_of_first_letter(image);
        QVERIFY2(width > 5, model.name.data());
        first = first == 0 ? width : first;
        QVERIFY2(qAbs(width - first) <= 1, model.name.data());
        QVERIFY2(!drawn.contains(image), model.name.data());
        drawn.push_back(image);
    }
}

void tst_panel_modelo::values_count_in_full_until_somebody_types() {
    w_->panel.show_slot(slot_of(VanDerWaals));
    w_->type("txta", "7");
    w_->panel.show_slot(slot_of(VanDerWaals));  // a spin button of the window was pressed
    QCOMPARE(w_->panel.coefficients()[0], 7.0);
    w_->panel.show_slot(slot_of(PengRobinson));
    QCOMPARE(w_->panel.coefficients()[0], slot_of(PengRobinson).gas.a);
    w_->beside.setFocus();
    QCOMPARE(w_->signals_seen(), 0);

    const tavo::EquationSlot slot = slot_of(Virial);
    w_->panel.show_slot(slot);
    QCOMPARE(w_->panel.coefficients(), (std::array{slot.gas.a, slot.gas.b, slot.gas.c, slot.gas.d}));
    QCOMPARE(w_->panel.mu(), slot.mu);
    w_->type("txtb", "0.04288");  // the same text: no change
    w_->beside.setFocus();
    QCOMPARE(w_->panel.coefficients()[1], slot.gas.b);
    QCOMPARE(w_->coefficients.count(), 0);
    w_->type("txtb", ".5");
    QCOMPARE(w_->panel.coefficients(), (std::array{slot.gas.a, 0.5, slot.gas.c, slot.gas.d}));
    w_->panel.show_slot(slot_of(Berthelot));
    QCOMPARE(w_->panel.coefficients(), (std::array{slot.gas.a, slot.gas.b, 0.0, 0.0}));
}

void tst_panel_modelo::a_changed_box_is_told_once() {
    w_->panel.show_slot(slot_of(VanDerWaals));
    w_->type("txta", "-2.5");  // typing a sign does nothing, as everywhere
    QCOMPARE(w_->box("txta")->text(), "2.5");
    QCOMPARE(w_->signals_seen(), 0);
    QTest::keyClick(w_->box("txta"), Qt::Key_Tab);
    QCOMPARE(w_->coefficients.count(), 1);
    QTest::keyClick(w_->box("txtb"), Qt::Key_Tab, Qt::ShiftModifier);
    QTest::keyClick(w_->box("txta"), Qt::Key_Tab);
    QCOMPARE(w_->coefficients.count(), 1);
    QGuiApplication::clipboard()->setText("-0.5");
    QTest::keySequence(w_->box("txtb"), QKeySequence::Paste);
    QTest::keyClick(w_->box("txtb"), Qt::Key_Return);
    w_->beside.setFocus();
    QCOMPARE(w_->coefficients.count(), 2);
    QCOMPARE(w_->panel.coefficients(), (std::array{2.5, -0.5, 0.0, 0.0}));

    w_->panel.show_slot(slot_of(FreeExponent));
    w_->type("txtmu", "2");
    QTest::keyClick(w_->box("txtmu"), Qt::Key_Return);
    w_->beside.setFocus();
    QCOMPARE(w_->mu.count(), 1);
    QCOMPARE(w_->panel.mu(), 2.0);
    QCOMPARE(w_->signals_seen(), 3);
}

void tst_panel_modelo::coefficients_set_by_hand_look_so() {
    tavo::EquationSlot slot = slot_of(Soave);
    auto* automatic = w_->control<QPushButton>("btautomatico");
    for (const bool by_hand : {false, true, false}) {
        slot.parameters = by_hand;
        w_->panel.show_slot(slot);
        QCOMPARE(automatic->isEnabled(), by_hand);
        QCOMPARE(w_->box("txta")->font().italic(), by_hand);
        QCOMPARE(w_->box("txta")->toolTip().contains('\n'), by_hand);
        QVERIFY(w_->box("txta")->toolTip().startsWith("3.123456789"));
        QTest::mouseClick(automatic, Qt::LeftButton);
        QCOMPARE(w_->automatic.count(), by_hand ? 1 : w_->automatic.count());
    }
    QCOMPARE(w_->signals_seen(), 1);
    QVERIFY(w_->box("txta")->hasFocus());  // not handed on to anything by the button that was switched off
}

void tst_panel_modelo::a_slot_without_a_gas_leaves_the_boxes_empty() {
    w_->panel.show_slot(slot_of(VanDerWaals));
    tavo::EquationSlot slot;
    slot.equation = VanDerWaals;
    w_->panel.show_slot(slot);
    QCOMPARE(w_->panel.gas(), 0);
    QCOMPARE(w_->box("txta")->text() + w_->box("txtb")->text(), "");
    QCOMPARE(w_->panel.coefficients(), (std::array<double, 4>{}));
    slot.parameters = true;  // coefficients of no gas in particular
    slot.gas.b = 0.03;
    w_->panel.show_slot(slot);
    QCOMPARE(w_->box("txta")->text() + ' ' + w_->box("txtb")->text(), "0.00000 0.03000");
}

void tst_panel_modelo::choices_of_the_user_are_told_once() {
    auto* gases = w_->control<ListaGases>("cmbgas");
    auto* models = w_->control<QComboBox>("cmbecu");
    gases->setFocus(Qt::TabFocusReason);
    gases->lineEdit()->selectAll();
    QTest::keyClicks(gases->lineEdit(), "n2 ");
    QTest::keyClick(gases->lineEdit(), Qt::Key_Return);
    QCOMPARE(w_->panel.gas(), 3);
    models->setFocus(Qt::TabFocusReason);
    QCOMPARE(w_->gas.count(), 1);
    QTest::keyClick(models, Qt::Key_Down);
    QCOMPARE(w_->panel.model(), VanDerWaals);
    QCOMPARE(w_->model.count(), 1);

    w_->beside.setFocus();
    for (QComboBox* list : {static_cast<QComboBox*>(gases), models}) {
        QWheelEvent wheel(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(list, &wheel);  // scrolls past
    }
    QCOMPARE(w_->signals_seen(), 2);
}

void tst_panel_modelo::new_gas_names_are_no_choice() {
    w_->panel.show_slot(slot_of(VanDerWaals));
    w_->names.setStringList(NAMES + QStringList{"Xe (xenón)"});
    QCOMPARE(w_->panel.gas(), 2);
    w_->names.setStringList({"Xe (xenón)"});
    QCOMPARE(w_->panel.gas(), 0);
    QCOMPARE(w_->signals_seen(), 0);
    QTest::keyClick(w_->control<QComboBox>("cmbecu"), Qt::Key_Down);
    QCOMPARE(w_->signals_seen(), 1);
}

QTEST_MAIN(tst_panel_modelo)
#include "tst_panel_modelo.moc"

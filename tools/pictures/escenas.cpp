#include "tools/pictures/escenas.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <stdexcept>

namespace {

constexpr int PENG_ROBINSON = 8;
constexpr QSize MAIN_WINDOW(900, 600), ROOM(1500, 1100);  // its own picture; with room for every other window
constexpr QSize PLOT(720, 540), LABORATORY(900, 660), VIEWER(800, 560);

template <class Control>
Control* control(const QWidget* window, const QString& name) {
    auto* found = window->findChild<Control*>(name);
    if (!found)
        throw std::runtime_error((window->objectName() + " has no control " + name).toStdString());
    return found;
}

QString element(const char* array, int i) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(i);
}

void choose_gas(QComboBox* list, const QString& formula) {
    const int row = list->findText(formula + u' ', Qt::MatchStartsWith);
    if (row < 0)
        throw std::runtime_error(("no gas " + formula).toStdString());
    list->setCurrentIndex(row);
}

void settle() {
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

/// A hand that drags from one point of the widget to another and holds on.
void drag(QWidget* widget, QPointF from, QPointF to) {
    const auto send = [widget](QEvent::Type type, QPointF at, Qt::MouseButton button) {
        QMouseEvent event(type, at, widget->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::NoButton);
}

void release(QWidget* widget, QPointF at) {
    QMouseEvent event(QEvent::MouseButtonRelease, at, widget->mapToGlobal(at), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

/// The widget as it is seen, with a fine line around it.
QImage picture_of(QWidget* widget) {
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();  // no caret
    settle();
    QImage image = widget->grab().toImage();
    QPainter painter(&image);
    painter.setPen(QPen(QColor(150, 156, 164), 1.0));
    painter.drawRect(QRectF(QPointF(), image.deviceIndependentSize()).adjusted(0.5, 0.5, -0.5, -0.5));
    return image;
}

}  // namespace

Escenas::Escenas(ApplicationState& estado, frmprincipal& principal, Tomar tomar)
    : estado_(estado), principal_(principal), tomar_(std::move(tomar)) {
    principal_.resize(MAIN_WINDOW);
}

void Escenas::retratar() {
    tomar_(QStringLiteral("frmprincipal"), picture_of(&principal_));
    principal_.resize(ROOM);
    settle();
    tomar_ventana(
        "frmdatos", [this](QWidget* w) { condiciones(w); }, true);
    grafico();
    tomar_ventana("frmcompuestos");
    tomar_ventana("frmcalculos", [this](QWidget* w) { calculos(w); });
    tomar_ventana("frmoperaciones", [this](QWidget* w) { laboratorio(w); });
    tomar_ventana("frmgases", [this](QWidget* w) { gases(w); });
    for (const char* name : {"frmtabla", "frmtablaay", "frmtermometro", "frmIdioma", "frmAbout"})
        tomar_ventana(name);
}

void Escenas::retratar_ayuda(QWidget* visor) {
    visor->resize(VIEWER);
    tomar_(QStringLiteral("frmayuda"), picture_of(visor));
}

/// The window with its frame, or a dialog.
void Escenas::tomar_ventana(const char* name, const std::function<void(QWidget*)>& preparar, bool keep) {
    const QString key = QLatin1String(name);
    estado_.show_window(key);
    settle();
    QWidget* window = estado_.open_window(key);
    if (preparar)
        preparar(window);
    auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    tomar_(key, picture_of(frame ? frame : window));
    if (!keep)
        window->close();
    settle();
}

void Escenas::condiciones(QWidget* ventana) {
    for (int i = 1; i <= 5; ++i) {
        control<QAbstractButton>(ventana, element("Check", i))->setChecked(true);
        choose_gas(control<QComboBox>(ventana, element("cmbgas", i)), QStringLiteral("CO2"));
        control<QComboBox>(ventana, element("cmbecu", i))->setCurrentIndex(PENG_ROBINSON);
        control<QLineEdit>(ventana, element("txttemp", i))->setText(QString::number(240 + 20 * i));
    }
}

/// The isotherms with the two-phase region, then their scale dialog.
void Escenas::grafico() {
    tomar_ventana(
        "frmgraficos",
        [this](QWidget* window) {
            window->parentWidget()->resize(PLOT);
            estado_.current_range = {0.04, 0.0, 0.8, 150.0};
            estado_.plot()->dibuja();
        },
        true);
    tomar_ventana("frmescala");
    if (QWidget* plot = estado_.open_window(QStringLiteral("frmgraficos")))
        plot->close();
}

/// Steam at the boiling point.
void Escenas::calculos(QWidget* ventana) {
    choose_gas(control<QComboBox>(ventana, QStringLiteral("cmbgas")), QStringLiteral("H2O"));
    control<QComboBox>(ventana, QStringLiteral("cmbecu"))->setCurrentIndex(PENG_ROBINSON);
    control<QLineEdit>(ventana, QStringLiteral("txttemp"))->setText(QStringLiteral("373.15"));
    control<QLineEdit>(ventana, QStringLiteral("txtvol"))->setText(QStringLiteral("40.00"));
    control<QAbstractButton>(ventana, QStringLiteral("btcalcular"))->click();
}

/// A hand has drawn the piston.
void Escenas::laboratorio(QWidget* ventana) {
    ventana->parentWidget()->resize(LABORATORY);
    settle();
    control<QLineEdit>(ventana, QStringLiteral("txtmol"))->setText(QStringLiteral("0.25"));
    choose_gas(control<QComboBox>(ventana, QStringLiteral("cmbgas")), QStringLiteral("CO2"));
    control<QComboBox>(ventana, QStringLiteral("cmbecu"))->setCurrentIndex(PENG_ROBINSON);
    auto* piston = control<QWidget>(ventana, QStringLiteral("pctpiston"));
    const QPointF from(piston->width() / 2.0, piston->height() / 2.0), to(from.x(), piston->height() * 0.35);
    drag(piston, from, to);
    release(piston, to);
}

void Escenas::gases(QWidget* ventana) {
    choose_gas(control<QComboBox>(ventana, QStringLiteral("cmbgas")), QStringLiteral("H2O"));
    control<QComboBox>(ventana, QStringLiteral("cmbecu"))->setCurrentIndex(PENG_ROBINSON);
}

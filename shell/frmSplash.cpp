#include "shell/frmSplash.h"

#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>

#include <array>
#include <cmath>

#include "controls/iconos.h"
#include "core/palette.h"
#include "shell/application_state.h"
#include "shell/creditos.h"
#include "shell/textos.h"
#include "tavo_version.h"

namespace {

constexpr int TICK_MS = 250;
constexpr int LAST_TICK = 5;

const QColor INK(0x17, 0x24, 0x33);
const QColor QUIET(0x4C, 0x5D, 0x70);
const QColor PAPER(0xFF, 0xFF, 0xFF);
const QColor FRAME(0x9F, 0xB0, 0xC2);

/// Reduced van der Waals pressure, p = 8t/(3v - 1) - 3/v^2 (all reduced by the critical constants).
double reduced_pressure(double t, double v) {
    return 8.0 * t / (3.0 * v - 1.0) - 3.0 / (v * v);
}

/// Five isotherms around the critical one in the colours of the five rows, over the dome of two phases.
class Dibujo final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        draw_dome(painter);
        static constexpr std::array temperatures{0.85, 0.92, 1.0, 1.12, 1.3};
        for (std::size_t i = 0; i < temperatures.size(); ++i) {
            const tavo::Rgb rgb = tavo::PALETTE[static_cast<std::size_t>(tavo::CURVE_COLOURS[i])];
            painter.setPen(QPen(QColor(rgb.r, rgb.g, rgb.b), 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPath(curve(temperatures[i]));
        }
        // The curves come out of the paper instead of being cut off below the text.
        QLinearGradient mist(0, 0, 0, height() * 0.3);
        mist.setColorAt(0, PAPER);
        mist.setColorAt(1, QColor(255, 255, 255, 0));
        painter.fillRect(rect(), mist);
    }

private:
    static constexpr double V_FIRST = 0.42, V_DOME = 0.67, V_LAST = 4.25;
    static constexpr int STEPS = 180;

    /// Steps of equal ratio, for a curve that is steep where v is small.
    static double volume(double first, int step) {
        return first * std::pow(V_LAST / first, static_cast<double>(step) / STEPS);
    }

    QPointF at(double v, double p) const {
        static constexpr double v0 = 0.36, v1 = 4.2, p0 = -0.1, p1 = 2.3;
        return {(v - v0) / (v1 - v0) * width(), height() - (p - p0) / (p1 - p0) * height()};
    }

    QPainterPath curve(double t) const {
        QPainterPath path;
        path.moveTo(at(V_FIRST, reduced_pressure(t, V_FIRST)));
        for (int step = 1; step <= STEPS; ++step) {
            const double v = volume(V_FIRST, step);
            path.lineTo(at(v, reduced_pressure(t, v)));
        }
        return path;
    }

    /// Where the isotherms turn (p = 3/v^2 - 2/v^3), the edge of the unstable states.
    void draw_dome(QPainter& painter) const {
        QPainterPath path;
        path.moveTo(at(V_DOME, -0.2));
        for (int step = 0; step <= STEPS; ++step) {
            const double v = volume(V_DOME, step);
            path.lineTo(at(v, (3.0 - 2.0 / v) / (v * v)));
        }
        path.lineTo(at(V_LAST, -0.2));
        QLinearGradient tint(0, 0, 0, height());
        tint.setColorAt(0.3, QColor(0xCF, 0xE5, 0xFA));
        tint.setColorAt(1.0, QColor(0xF2, 0xF8, 0xFE));
        painter.fillPath(path, tint);
    }
};

}  // namespace

frmSplash::frmSplash(const ApplicationState& estado, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint),
      Timer1(new QTimer(this)),
      fraMainFrame(new QFrame(this)),
      Image1(new Dibujo(fraMainFrame)),
      Image2(new QLabel(fraMainFrame)),
      lblCompanyProduct(etiqueta("lblCompanyProduct", 1.0, QUIET)),
      lblProductName(etiqueta("lblProductName", 3.2, INK, true)),
      lblProductDescription(etiqueta("lblProductDescription", 1.1, INK)),
      lblPlatform(etiqueta("lblPlatform", 0.9, QUIET)),
      lblWarning(etiqueta("lblWarning", 0.85, QUIET)),
      lblVersion(etiqueta("lblVersion", 1.0, INK, true)),
      Label1(etiqueta("Label1", 0.9, QUIET)),
      Label2(etiqueta("Label2", 0.9, QUIET)) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("TAVO-GAS"));
    setWindowIcon(icono_del_programa());
    fraMainFrame->setObjectName(QStringLiteral("fraMainFrame"));
    Image1->setObjectName(QStringLiteral("Image1"));
    Image2->setObjectName(QStringLiteral("Image2"));
    Timer1->setObjectName(QStringLiteral("Timer1"));
    colocar();
    poner_captions(estado);

    fraMainFrame->installEventFilter(this);
    const QList<QWidget*> parts = fraMainFrame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* part : parts)
        part->installEventFilter(this);
    connect(Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
    Timer1->start(TICK_MS);
}

QLabel* frmSplash::etiqueta(const char* name, double size, const QColor& ink, bool bold) {
    auto* label = new QLabel(fraMainFrame);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    label->setFont(font);
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, ink);
    label->setPalette(colours);
    return label;
}

void frmSplash::colocar() {
    QPalette paper = palette();
    paper.setColor(QPalette::Window, PAPER);
    paper.setColor(QPalette::WindowText, FRAME);
    fraMainFrame->setPalette(paper);
    fraMainFrame->setAutoFillBackground(true);
    fraMainFrame->setFrameStyle(QFrame::Box | QFrame::Plain);

    Image2->setPixmap(icono_del_programa().pixmap(QSize(72, 72), devicePixelRatioF()));
    Image1->setMinimumHeight(110);
    lblWarning->setWordWrap(true);
    lblVersion->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblPlatform->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* names = new QVBoxLayout;
    names->setSpacing(0);
    names->addWidget(lblCompanyProduct);
    names->addWidget(lblProductName);
    names->addSpacing(6);
    names->addWidget(lblProductDescription);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(24, 24, 24, 0);
    head->setSpacing(18);
    head->addWidget(Image2, 0, Qt::AlignTop);
    head->addLayout(names, 1);

    auto* foot = new QGridLayout;
    foot->setContentsMargins(24, 12, 24, 18);
    foot->setHorizontalSpacing(24);
    foot->setVerticalSpacing(3);
    foot->setColumnStretch(0, 1);
    foot->addWidget(Label1, 0, 0);
    foot->addWidget(Label2, 1, 0);
    foot->addWidget(lblVersion, 0, 1);
    foot->addWidget(lblPlatform, 1, 1);
    foot->setRowMinimumHeight(2, 6);
    foot->addWidget(lblWarning, 3, 0, 1, 2);

    auto* sheet = new QVBoxLayout(fraMainFrame);
    sheet->setContentsMargins(0, 0, 0, 0);
    sheet->setSpacing(0);
    sheet->addLayout(head);
    sheet->addWidget(Image1, 1);
    sheet->addLayout(foot);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(fraMainFrame);
    resize(QSize(620, 420).boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
}

void frmSplash::poner_captions(const ApplicationState& estado) {
    lblCompanyProduct->setText(estado.texto(180));
    lblProductName->setText(QStringLiteral("TAVO-GAS"));
    lblProductDescription->setText(estado.texto(181) + u'\n' + estado.texto(182));
    lblPlatform->setText(QStringLiteral("Windows 98, NT, XP"));
    lblWarning->setText(estado.texto(63));
    lblVersion->setText(con_valor(estado.texto(183), QStringLiteral(TAVO_VERSION)));
    Label1->setText(creditos::programa(estado));
    Label2->setText(creditos::fisica(estado));
}

void frmSplash::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    move(screen()->availableGeometry().center() - rect().center());
    activateWindow();
}

void frmSplash::Timer1_Timer() {
    if (++ticks_ == LAST_TICK)
        terminar();
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress)
        return QWidget::eventFilter(watched, event);
    fraMainFrame_Click();
    return true;
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    fraMainFrame_Click();
}

void frmSplash::fraMainFrame_Click() {
    terminar();
}

void frmSplash::terminar() {
    if (ended_)
        return;
    ended_ = true;
    Timer1->stop();
    hide();
    emit terminado();
}

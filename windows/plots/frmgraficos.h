#pragma once
// The plot of the isotherms.

#include <QFrame>
#include <QLabel>
#include <QLineF>
#include <QPixmap>
#include <QToolButton>
#include <QWidget>

#include <array>
#include <optional>
#include <vector>

#include "controls/elegir_archivo.h"
#include "controls/impresora.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"
#include "windows/plots/graficos.h"
#include "windows/plots/pintar.h"

class frmgraficos;

/// A grid line, in the coordinates of the frame. The sheet's painting draws it; this is its place by name.
class LineaRejilla : public QObject {
    Q_OBJECT
    Q_PROPERTY(QLineF line MEMBER line)
public:
    using QObject::QObject;
    QLineF line;
};

/// The drawing surface: hands mouse and keys to the window, and draws what moves over the sheet.
class SuperficieGrafico : public QWidget {
    Q_OBJECT
public:
    SuperficieGrafico(frmgraficos& ventana, QWidget* padre);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    frmgraficos& ventana_;
};

class frmgraficos : public QWidget, public PlotView {
    Q_OBJECT
public:
    frmgraficos(ApplicationState& estado, Mensajes& mensajes, ElegirArchivo& archivos, Impresora& impresora,
                QWidget* padre = nullptr);

    void actualiza() override;
    void dibuja() override;
    bool comprueba_rango() override;
    void limpiar() override;
    void habilitar(bool enabled) override;

    /// What is on the sheet.
    const graficos::Escena& escena() const { return escena_; }

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class SuperficieGrafico;
    using Point = graficos::Point;

    void Form_Load();
    void Form_Unload();
    void Form_Resize();
    void gases_Change();
    void pctgrafico_MouseDown(Qt::MouseButton button, QPointF at);
    void pctgrafico_MouseMove(Qt::MouseButtons buttons, QPointF at);
    void pctgrafico_MouseUp(Qt::MouseButton button, QPointF at);
    void pctgrafico_KeyDown(QKeyEvent* event);

    void crear_herramientas();
    void crear_hoja();
    void colocar();      // frame, surface, grid lines and labels
    void pintar_hoja();  // the sheet, from its cached picture
    void pintar_encima(QPainter& painter);
    void mostrar_extremos();
    void terminar_arrastre(bool zoom, QPointF at);
    bool dibuja_si_cabe(const PlotRange& range);  // quietly refuses a range that cannot be shown
    void ampliar(double factor, std::optional<QPointF> about);
    void predeterminado();
    void anterior();
    void mover_cruz(double columns, double rows);
    void leer_curvas();
    void copiar();
    void guardar();
    void imprimir();
    void mostrar_coordenadas(Point p);
    QRectF surface() const { return QRectF(pctgrafico->rect()); }
    Point data_at(QPointF at) const;

    ApplicationState& estado_;
    Mensajes& mensajes_;
    ElegirArchivo& archivos_;
    Impresora& impresora_;
    QWidget* herramientas_;
    QFrame* frmgrafico;
    SuperficieGrafico* pctgrafico;
    std::array<LineaRejilla*, 11> Linev{}, Lineh{};
    QLabel *x0y0x, *x0y0y, *x1y0, *x0y1, *lbx, *lby;
    QToolButton* btanterior;

    graficos::Escena escena_;
    std::vector<PlotRange> historia_;
    QPixmap hoja_;
    bool sucia_ = true;                   // the cached sheet shows an older scene
    std::optional<PlotRange> rechazado_;  // refused on resizing, with a warning; not warned about again
    struct Arrastre {
        PlotRange inicial;  // range before the drag
        QPointF desde, hasta;
    };
    std::optional<Arrastre> arrastre_;
    std::optional<Point> cruz_;
};

#pragma once
// The program's own viewer of compiled help: contents, index and search beside the page. A window for itself, without
// owner; it hides when it is closed and comes back as it was.

#include <QAction>
#include <QMainWindow>

#include <memory>

#include "controls/exterior.h"
#include "controls/impresora.h"
#include "shell/application_state.h"
#include "shell/ayuda/barra_buscar.h"
#include "shell/ayuda/historial.h"
#include "shell/ayuda/pagina_ayuda.h"
#include "shell/ayuda/panel_busqueda.h"
#include "shell/ayuda/panel_contenido.h"
#include "shell/ayuda/panel_indice.h"

class QSplitter;
class QTabWidget;
class QToolBar;

class frmayuda final : public QMainWindow {
    Q_OBJECT
public:
    frmayuda(ApplicationState& estado, Impresora& impresora, Exterior& exterior);

    /// Reads from this file from now on, with an empty history. `nombre` is how sentences call it.
    void set_libro(std::shared_ptr<const tavo::chm::ChmFile> libro, const QString& nombre);
    /// Turns to a page of the file ("/maxwell.html#area"); one that it does not have is told in its place.
    void abrir(const QString& page);
    /// Name of the page shown, as the file spells it.
    QString pagina() const { return pagina_->pagina(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void crear_barra();
    void crear_paneles();
    void crear_teclas();
    QAction* accion(const char* name, const QString& tip, const QList<QKeySequence>& keys, void (frmayuda::*run)());
    QString texto(int number, const QString& literal) const { return estado_.texto(number, literal); }

    void atras();
    void adelante();
    void portada();
    void pagina_anterior();
    void pagina_siguiente();
    void buscar();
    void ampliar();
    void reducir();
    void tamano_normal();
    void copiar();
    void imprimir();
    void cerrar();

    void ir_a(const QUrl& address);
    void vecina(int step);
    void cambiar_zoom(int steps);
    void mostrar(const Historial::Lugar& place);
    void seguir_enlace(const QUrl& address);
    void menu_de_pagina(const QPoint& place);
    void actualizar();
    int lugar_en_orden() const;

    ApplicationState& estado_;
    Impresora& impresora_;
    Exterior& exterior_;
    std::shared_ptr<const tavo::chm::ChmFile> libro_;
    QString nombre_;
    Historial historial_;

    QToolBar* barra_;
    QSplitter* divisor_;
    QTabWidget* fichas_;
    PanelContenido* contenido_;
    PanelIndice* indice_;
    PanelBusqueda* busqueda_;
    PaginaAyuda* pagina_;
    BarraBuscar* barra_buscar_;
    QAction *mnuatras, *mnuadelante, *mnuportada, *mnuanterior, *mnusiguiente, *mnubuscar, *mnuampliar, *mnureducir,
        *mnunormal, *mnucopiar, *mnuimprimir;
};

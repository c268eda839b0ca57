#pragma once
// Language editor: all languages of the language table in one grid.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>
#include <QWidget>

#include "controls/impresora.h"
#include "controls/linea_estado.h"
#include "controls/texto.h"
#include "shell/application_state.h"
#include "shell/idioma_logica.h"
#include "shell/mensajes.h"
#include "shell/modelo_idiomas.h"
#include "shell/rejilla_idiomas.h"

class QBoxLayout;

/// The one editor of the language file. The running program keeps its captions; a language is used from the start after
/// it was chosen.
class frmIdioma : public QWidget {
    Q_OBJECT
public:
    frmIdioma(ApplicationState& estado, Mensajes& mensajes, Impresora& impresora, QWidget* padre = nullptr);
    ~frmIdioma() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MSFlexIdiomas_Click(const QModelIndex& index);
    void txtidioma_Change(const QString& text);
    bool txtidioma_KeyDown(const QKeyEvent& event);
    bool btguardar_Click();
    void btnuevo_Click();
    void btimprimir_Click();
    void btfallo_Click();
    void txtfiltro_Change();

    QBoxLayout* crear_filtro();
    QWidget* crear_rejilla();
    QBoxLayout* crear_progreso();
    QBoxLayout* crear_botones();
    QPushButton* crear_boton(const char* name, int caption);
    void crear_avisos();

    void llevar(const QModelIndex& index);  // the box to a cell
    void colocar();
    void dejar();  // the box is done with its cell
    void mover(int rows, int columns);
    void deshacer(bool redo);
    void copiar();
    void pegar(const QString& text);
    void borrar();
    void ir(const idioma::Cell& cell);
    void nombrar(const QString& notice);
    void menu_del_idioma(int column, const QPoint& place);
    void quitar();
    bool es_nuevo(int column) const;
    bool cambiada_por_otros();
    void mostrar();
    QString contexto(const idioma::Cell& cell) const;
    QString lineas_para_imprimir() const;
    QString titulo() const;

    ApplicationState& estado_;  // outlives every window
    Mensajes& mensajes_;
    Impresora& impresora_;
    Texto texto_;
    idioma::Tabla tabla_;
    ModeloIdiomas* modelo_;
    QPersistentModelIndex en_edicion_;  // the cell under the box
    QString original_;                  // its text when the box came
    bool llevando_ = false;             // the box is being filled

    RejillaIdiomas* MSFlexIdiomas;
    QLineEdit* txtidioma;
    QLineEdit* txtfiltro;
    QComboBox* cmbmostrar;
    QPushButton *btfallo, *btnuevo, *btimprimir, *btguardar;
    LineaEstado* lbcontexto;
    QLabel *lbprogreso, *lbfallos;
    QProgressBar* barra;
    QTextEdit* rtxtprint;
};

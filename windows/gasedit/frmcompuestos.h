#pragma once
// Parameters of the equations: the coefficients of every gas for one model, and those of one isotherm row.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>

#include <array>
#include <optional>

#include "controls/cajas_coeficientes.h"
#include "controls/imagen_formula.h"
#include "controls/lista_modelos.h"
#include "controls/punto_critico.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"
#include "windows/gasedit/parametros_logica.h"
#include "windows/gasedit/tabla_gases.h"

class QBoxLayout;

/// Works on the current isotherm row. What is chosen or typed here waits, for each row on its own, until it is applied
/// to the row's slot; without such a choice the window shows the slot.
class frmcompuestos : public QWidget {
    Q_OBJECT
public:
    static constexpr int ROWS = 5;

    frmcompuestos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);
    ~frmcompuestos() override;

    /// Shows the current row's gas, model and coefficients anew: labels, formula, boxes and grid. What is being typed
    /// stays unless the row, its gas or its model is another one.
    void datosnuevos();

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A choice that waits, and the gas and model of the slot for which it was made.
    struct Pendiente {
        parametros::Choice choice;
        std::int16_t gas;
        tavo::EquationOfState model;
    };

    void Form_Load();
    void cmbfila_Click();
    void cmbecu_Click();
    void chkdp_Click();
    void coeficientes_LostFocus();
    void txtmu_LostFocus();
    void grid_Click(int row);
    void btaceptar_Click();

    void crear_cabecera(QBoxLayout* column);
    QWidget* crear_cajas();
    QWidget* crear_rejilla();
    void crear_avisos();

    const tavo::EquationSlot& ranura() const { return estado_.slot_table()[fila_]; }
    parametros::Choice eleccion() const;
    parametros::Choice eleccion_escrita() const;  // with what is being typed
    void guardar(const parametros::Choice& choice);
    template <class Step>
    void cambiar(const Step& step);
    void mostrar_fila(int row);
    void mostrar_cajas(const parametros::Shown& what);
    void mostrar_consecuencias();
    void mostrar_rejilla();
    void mostrar_cursor();
    void slot_Change(int row);
    void gas_Removed(std::int16_t number);
    void gases_Changed();
    bool aceptar_mu();    // false: refused, and told
    bool cajas_llenas();  // false: one is empty, and told
    bool puede_cerrar();  // false: numbers wait, and the user keeps them
    void anunciar_y_dibujar(bool another_curve);
    QString motivo(parametros::Fault fault, const std::string& detail) const;
    void avisar(const QString& texto);

    ApplicationState& estado_;
    Mensajes& mensajes_;
    Texto texto_;
    int fila_ = 1;
    std::array<std::optional<Pendiente>, ROWS + 1> pendientes_;
    parametros::Shown mostrado_;  // what the boxes show
    bool mostrando_ = false;      // the window writes its own controls: no handler answers

    QScrollArea* desplazable_;
    QWidget* contenido_;
    QBoxLayout* mitades_;
    QLabel *Label1, *lbgas, *lbnota, *lbpendiente, *lbtemperatura;
    QComboBox* cmbfila;
    ListaModelos* cmbecu;
    ImagenFormula* imgformula;
    CajasCoeficientes* cajas_;
    PuntoCritico* critico_;
    QCheckBox* chkdp;
    QPushButton* btaceptar;
    TablaGases* tabla_;
    RejillaGases* grid;
};

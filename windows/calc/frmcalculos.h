#pragma once
// Calculations: one of P, V and T from the other two, and the coexistence at that temperature.

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>

#include <optional>

#include "controls/filas_estado.h"
#include "controls/linea_estado.h"
#include "controls/panel_modelo.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"
#include "windows/calc/calculos_logica.h"
#include "windows/calc/coexistencia.h"
#include "windows/calc/tabla_modelos.h"

class MarcaEstado;

/// Works on slot 0 with a record of its own, put there for each use: the laboratory does the same.
class frmcalculos : public QWidget {
    Q_OBJECT
public:
    frmcalculos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);
    ~frmcalculos() override;

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    using Variable = calculos::Variable;
    /// Who wants a calculation. Whoever has just left an entry or pressed the button is told each time in a box that an
    /// entry is refused; after any other change only if that has not been told yet.
    enum class Motivo { Entrada, Otro };

    void Form_Load();
    void btcalcular_Click();
    void cmbgas_Click();
    void cmbecu_Click();
    void coeficientes_LostFocus();
    void txtmu_LostFocus();
    void btautomatico_Click();
    void unidad_Click(Variable variable);
    void tabla_Click(bool unfolded);
    void modo_Change(int mode);
    void gases_Change();

    QGroupBox* crear_grupo(QLabel* heading, QWidget* body);
    QWidget* crear_estado();
    void crear_avisos();
    void colocar(int columns);
    int columnas(int width) const;
    void ajustar_marco(bool unfolded);

    void cargar(std::int16_t gas, tavo::EquationOfState model);
    void elegir(std::int16_t gas, tavo::EquationOfState model);
    void calcular(Motivo motivo);
    void tomar_coeficiente();
    void resolver();
    bool validar(Motivo motivo);
    void rechazar(Variable variable, Motivo motivo);
    QString texto_minimo(Variable variable) const;
    void mostrar_salida();
    void mostrar_fallo();
    void callar();
    void escribir_fallo(const QString& sentence);
    QString motivo() const;  // of fallo_
    void vaciar();
    void llenar_tabla();
    UnidadesTabla unidades_tabla() const;
    QString unidad(Variable variable) const;

    ApplicationState& estado_;
    Mensajes& mensajes_;
    Texto texto_;
    tavo::EquationSlot ranura_;  // this window's slot 0
    calculos::Input entrada_{};  // the state that was taken last
    bool tomada_ = false;        // entrada_ is what the entries say
    std::optional<calculos::Output> salida_;
    std::optional<calculos::Unsolvable> fallo_;
    bool calculando_ = false;
    std::optional<Variable> rechazada_;  // whose entry was refused
    QString dicho_;                      // the last sentence about a refused entry that a box has told
    bool en_apuros_ = false;             // the main window's status line holds a failure of ours

    QScrollArea* desplazable_;
    QWidget* contenido_;
    QGridLayout* grupos_;
    std::array<QGroupBox*, 3> grupo_{};
    int columnas_ = 0;
    int alto_plegada_ = 0;  // height of the frame before the table was unfolded
    PanelModelo* panel_;
    FilasEstado* filas_;
    QPushButton* btcalcular;
    MarcaEstado* marcaestado;
    LineaEstado* txtestado;
    QLabel* Labelest;
    Coexistencia* coexistencia_;
    TablaModelos* tabla_;
};

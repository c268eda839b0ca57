#pragma once
// The simulated laboratory: a gas whose volume, temperature and pressure stand in entries and on drawn instruments, and
// change with either.

#include <QLabel>
#include <QToolButton>
#include <QWidget>

#include <array>
#include <optional>

#include "controls/filas_estado.h"
#include "controls/linea_estado.h"
#include "controls/panel_modelo.h"
#include "core/slots.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"
#include "windows/lab/instrumentos.h"
#include "windows/lab/laboratorio_logica.h"

class QButtonGroup;

/// Keeps the contents of slot 0 while another window uses it.
class frmoperaciones : public QWidget {
    Q_OBJECT
public:
    frmoperaciones(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);

    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Variable = calculos::Variable;
    using Instrument = laboratorio::Instrument;

    /// What brings a change about. A box follows every decision and drag; a step only when it leaves the scale or the
    /// limits; opening the window brings none. It waits for the hand to let go of the mouse.
    enum class Ocasion { Opening, Decision, Step, Drag };

    /// What is wrong with a variable, by its language string; 0: nothing.
    struct Aviso {
        int number = 0;
        QString sentence;
        bool pending = false;  // its box waits for the hand to let go
    };

    // Layout
    QWidget* crear_columna(QWidget* padre);
    QWidget* crear_instrumentos(QWidget* padre);
    QWidget* crear_estacion(QWidget* cabecera, Lamina* marco, QWidget* padre);
    QWidget* crear_eleccion(QToolButton*& one, const char* one_name, QToolButton*& other, const char* other_name,
                            QWidget* padre);
    void conectar_controles();
    void conectar_instrumento(Instrumento* instrument);
    void textos_instrumentos();

    // Handlers
    void Form_Load();
    void cmbgas_Click();
    void cmbecu_Click();
    void gases_Change();
    void coeficientes_LostFocus();
    void txtmu_LostFocus();
    void btautomatico_Click();
    void entrada_Change(Variable variable);
    void marcador_Click();
    void unidad_Click(Variable variable);
    void bttermometro_Click() { elegir_termometro(false); }
    void bttermopar_Click() { elegir_termometro(true); }
    void btbarometro_Click() { elegir_barometro(false); }
    void btmanometro_Click() { elegir_barometro(true); }
    void instrumento_MouseMove(const Instrumento& instrument, double value);
    void instrumento_MouseUp();
    void instrumento_key_step(const Instrumento& instrument, double value);

    // The state and its instruments
    template <class Change>
    void cambiar(Ocasion ocasion, Change&& change);
    void toma_caja_de_coeficientes();
    void cargar(std::int16_t gas, tavo::EquationOfState model);
    void elegir();
    void muestra_ranura();
    void elegir_termometro(bool thermocouple);
    void elegir_barometro(bool manometer);
    void mover(const Instrumento& instrument, double value);
    /// Entries into slot 0, then the unknown. What stands against it is told, and every entry keeps its text.
    void calcular();
    bool valida(Variable variable);
    bool completa() const;  // neither of the two given entries is empty
    void resolver();
    void calcular_y_dibujar();
    void actualiza_temperatura() { actualiza(Variable::Temperature); }
    void actualiza_volumen() { actualiza(Variable::Volume); }
    void actualiza_presion() { actualiza(Variable::Pressure); }
    void actualiza(Variable variable);
    void muestra(Variable variable);
    void dibuja(Variable variable);  // alone: no message, the entry stays
    void dibuja_gas();
    Instrumento* instrumento(Variable variable) const;
    void pronuncia(Variable variable);

    // Messages
    void avisa(Variable variable, int number, const QString& sentence);
    void sin_aviso(Variable variable);
    void describe();
    void fracasa(const QString& sentence);
    QString motivo() const;  // of fallo_
    void muestra_estado();
    void muestra_cajas();
    bool hand_busy() const;  // holds a mouse button

    Texto texto() const;
    tavo::EquationSlot& ranura() { return estado_.slot_table()[0]; }
    Aviso& aviso(Variable variable) { return avisos_.at(static_cast<std::size_t>(variable)); }

    ApplicationState& estado_;
    Mensajes& mensajes_;
    PanelModelo* panel_;
    FilasEstado* filas_;
    LineaEstado* lbestado;
    MarcoPiston* piston_;
    MarcoTermometros* termometros;
    MarcoBarometros* barometros;
    QToolButton *bttermometro = nullptr, *bttermopar = nullptr, *btbarometro = nullptr, *btmanometro = nullptr;

    tavo::EquationSlot ranura_;    // this window's slot 0 between its uses
    tavo::EquationSlot mostrada_;  // as the panel shows it
    Ocasion ocasion_ = Ocasion::Opening;
    std::optional<calculos::Output> salida_;
    std::optional<calculos::Unsolvable> fallo_;
    std::optional<Variable> rechazada_;  // entry that the last calculation refused
    std::array<Aviso, 4> avisos_;        // by variable
    QStringList cajas_;                  // boxes at the end of the change under way
    QString frase_;                      // what the last calculation says
};

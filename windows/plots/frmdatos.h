#pragma once
// Gases and conditions: five rows, one isotherm each.

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <array>

#include "controls/entrada_numerica.h"
#include "controls/lista_gases.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"

class MarcasFilas;

/// Row i of the window is slot i of the slot table. Arrays of controls are used from 1 to 5.
class frmdatos : public QWidget, public ConditionsView {
    Q_OBJECT
public:
    static constexpr int ROWS = 5;

    frmdatos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);

    void copiar_filas() override;
    void cambiar_unidad(AmountUnit from, AmountUnit to) override;
    void limpiar_filas() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <class Control>
    using Fila = std::array<Control*, ROWS + 1>;

    void Form_Load();
    void Form_Unload();
    void Check_Click(int i);
    void cmbgas_Click(int i);
    void cmbecu_Click(int i);
    void txttemp_Change(int i);
    void txtmol_Change(int i);
    void txtmol_LostFocus(int i);
    void UpDown1_Change(int i);
    void btparametros_Click();
    void btactualiza_Click();

    void crear_cabecera();
    void crear_fila(int i);
    void crear_botones();
    void textos_ayuda();
    void llenar_listas();
    void mostrar_fila(int i);
    void mostrar_eleccion(int i);  // gas and model alone: what was typed stays
    void mostrar_activa(int i);
    void habilitar_fila(int i);
    void mostrar_unidad(AmountUnit unit);
    void guardar_cantidad(int i);
    /// Loads the row's slot; a gas that cannot be loaded leaves an empty record and a sentence in fallo_.
    bool cargar(int i, bool reload);
    void anunciar(int i);         // to the other windows that show the slot
    void cargar_eleccion(int i);  // after a new choice; tells why when it fails
    void avisar(const QString& texto);
    void avisar_y_seleccionar(const QString& texto, EntradaNumerica* caja);
    void avisar_filas_omitidas();
    tavo::EquationSlot& ranura(int i) { return estado_.slot_table()[i]; }

    ApplicationState& estado_;
    Mensajes& mensajes_;
    QLabel *Label1, *Label2, *Label3, *Label4;
    QFrame* Line1;
    MarcasFilas* shpmarca;
    Fila<QCheckBox> Check{};
    Fila<ListaGases> cmbgas{};
    Fila<QComboBox> cmbecu{};
    Fila<EntradaNumerica> txttemp{}, txtmol{};
    Fila<::UpDown> UpDown{}, UpDown1{};
    QPushButton *btparametros, *btactualiza;
    std::array<QString, ROWS + 1> fallo_;
    bool anunciando_ = false;
    bool cargando_ = true;  // the window writes its own controls: no handler answers
};

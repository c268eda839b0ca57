#pragma once
// Gas editor: gases are added to the database, changed and deleted, with the coefficients of each model.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>

#include <array>

#include "controls/cajas_coeficientes.h"
#include "controls/imagen_formula.h"
#include "controls/lista_gases.h"
#include "controls/punto_critico.h"
#include "controls/textextend.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"
#include "windows/gasedit/draft.h"

class QBoxLayout;
class QVBoxLayout;

/// The one writer of the gas database. A gas that is chosen in the list is shown; only the button makes it the one to
/// change or delete.
class frmgases : public QWidget {
    Q_OBJECT
public:
    frmgases(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);
    ~frmgases() override;

    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Modo { Navegar, Cambiar };
    /// A box with its constant. While the box says what was written into it, the constant counts with all its digits.
    struct Constante {
        textextend* box;
        double tavo::GasRecord::*member;
        QString shown;
    };

    void btadd_Click();
    void btmod_Click();
    void btdel_Click();
    void btsel_Click();
    void btvaciar_Click();
    void cmbgas_Click();
    void cmbecu_Click();
    void chkauto_Click(bool checked);
    void coeficiente_Change(int k);
    void txtmu_LostFocus();

    QWidget* crear_gas();
    QVBoxLayout* crear_grupo(const QString& heading);
    QWidget* crear_datos();
    QWidget* crear_botones();
    QWidget* crear_coeficientes();
    void pintar_cajas();
    void crear_avisos();
    textextend* crear_caja(const char* name, int header, int mode);
    QPushButton* crear_boton(const char* name, const QString& caption, void (frmgases::*slot)());

    int conjunto() const { return cmbecu->currentIndex(); }
    /// The boxes as they stand, whole where nobody typed.
    tavo::GasRecord constantes() const;
    static bool intacta(const Constante& constante);
    QString nombre() const;  // of the chosen gas, as the database has it
    void vaciar(std::int16_t number);
    void mostrar(const editor::StoredGas& gas, std::int16_t number);
    void adoptar(const editor::StoredGas& gas, std::int16_t number);
    void elegir(std::int16_t number);  // 0: empty boxes
    void navegar();
    void mostrar_modo();
    QString letrero() const;
    void mostrar_conjunto();
    void actualizar();  // what follows the constants and the coefficients as they are typed
    QString nota(const editor::ShownSet& set) const;

    /// The exponent that is being typed is taken or refused. False: refused.
    bool tomar_mu();
    bool validar(editor::StoredGas& gas);
    bool hay_cambios() const;
    bool puede_descartar();
    void informar(const QString& texto);

    ApplicationState& estado_;
    Mensajes& mensajes_;
    Texto texto_;
    Modo modo_ = Modo::Navegar;
    std::int16_t gas_ = 0;   // number of the chosen gas; 0: none
    QString aviso_;          // stands in place of the usual sign until the next step
    tavo::GasRecord leido_;  // name and constants behind the boxes
    editor::Draft borrador_;
    bool cargando_ = true;  // the window writes its own controls: no handler answers

    QScrollArea* desplazable_;
    QWidget* contenido_;
    QBoxLayout* partes_;
    QLabel *Label1, *Label2, *lbestado_, *lbnota_;
    ListaGases* cmbgas;
    textextend *textgas, *textpm, *textpc, *texttc, *textvc, *textteb, *texthvap;
    std::array<Constante, 6> constantes_;
    QPushButton *btadd, *btmod, *btdel, *btsel, *btvaciar;
    QComboBox* cmbecu;
    ImagenFormula* imgformula;
    QCheckBox* chkauto;
    CajasCoeficientes* cajas_;
    PuntoCritico* punto_;
};

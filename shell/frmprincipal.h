#pragma once
// The main window: menus, toolbar, the area of the child windows, the status line.

#include <QAction>
#include <QHash>
#include <QMainWindow>

#include <functional>

#include "shell/application_state.h"
#include "shell/mensajes.h"

class AreaVentanas;
class PrimerosPasos;
class QActionGroup;
class QLabel;
class QMenu;
class QStackedWidget;
class QTimer;
class QToolBar;

class frmprincipal final : public QMainWindow {
    Q_OBJECT
public:
    /// Builds the window without captions; the language menu is filled by mostrar_idiomas, the rest by MDIForm_Load.
    /// The windows are registered before. `ayuda` opens the help at the page of a window, given by its name, or at its
    /// first page; without it the help entries are disabled.
    frmprincipal(ApplicationState& estado, Mensajes& mensajes, std::function<void(const QString& ventana)> ayuda = {});
    ~frmprincipal() override;

    /// Language entries, a separator and the editor's entry, from the list of languages.
    void mostrar_idiomas();
    /// Captions and tool tips, curve colours of slots 1 to 5, the state at start, the gases. Throws FileNotFound.
    void MDIForm_Load();

    /// Runs what the toolbar button of this key runs; an unknown key does nothing.
    void Toolbar1_ButtonClick(const QString& key);
    /// Amounts in moles or grams from now on: rewrites the rows unless they are shown so already. What the rewriting
    /// throws leaves the unit as it was.
    void mnumoles_Click();
    void mnugramos_Click();
    /// Writes a language as the one of the next start and says so; false when the file has no such language or could
    /// not be written.
    bool seleccionar_idioma(const QString& nombre);
    /// Name of the child window in front; empty where there is none.
    QString ventana_activa() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entrada;  // a row of the table of menu entries
    static const QList<Entrada>& entradas();

    void mnunuevo_Click();
    void mnusalir_Click();
    void mnudato_Click();
    void mnugases_Click();
    void mnudibujos_Click();
    void mnuescala_Click();
    void mnup_Click();
    void mnuv_Click();
    void mnut_Click();
    void mnuf_Click();
    void mnuoperaciones_Click();
    void mnucrit_Click();
    void mnutermo_Click();
    void mnutermosc_Click();
    void mnuayuda_Click();
    void mnuacercade_Click();
    void mnuidiomas_Click(int i);

    void crear_menus();
    void crear_barra();
    void crear_linea_de_estado();
    void crear_primeros_pasos();
    void poner_captions();
    void poner_textos_de_barra();
    void habilitar(const QString& menu, bool possible);
    void habilitar_graficos(bool open);
    void calcular(int mode);
    void mostrar_ventana(QWidget* ventana);
    void mostrar_unidad();
    void mostrar_gases();
    void mostrar_estado(const QString& text, int milliseconds);
    void tamano_inicial();
    void pintar_fondo();
    QAction* menu_entry(const QString& name) const;

    ApplicationState& estado_;
    Mensajes& mensajes_;
    std::function<void(const QString& ventana)> ayuda_;
    QHash<QString, QAction*> acciones_;  // menu entries by name
    QActionGroup* unidades_;
    QMenu* mnuidioma;
    QToolBar* Toolbar1;
    QStackedWidget* paginas_;
    AreaVentanas* area_;
    PrimerosPasos* primeros_pasos_;
    QLabel* lbestado;
    QLabel* lbcoordenadas;
    QLabel* lbunidad;
    QLabel* lbgases;
    QTimer* fin_del_mensaje_;
    QStringList problemas_;  // of the database, as told
};

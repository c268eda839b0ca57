#pragma once
// The About window: version, credits, the way to the makers' page and to the system's own information.

#include <QDialog>

#include "controls/etiqueta_enlace.h"
#include "controls/exterior.h"
#include "shell/mensajes.h"
#include "shell/sysinfo.h"

class ApplicationState;
class QPushButton;

class frmAbout final : public QDialog {
    Q_OBJECT
public:
    /// `registro` is the one of the system; null where the system has none.
    frmAbout(ApplicationState& estado, Mensajes& mensajes, Exterior& exterior,
             std::unique_ptr<sysinfo::Registro> registro = sysinfo::registro_del_sistema(), QWidget* padre = nullptr);

public slots:
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void crear();
    void colocar();
    void Form_Load();
    void cmdSysInfo_Click();
    void Label4_Click();
    void cmdOK_Click();
    bool StartSysInfo();
    QLabel* etiqueta(const char* name, double size = 1.0, bool bold = false);

    ApplicationState& estado_;
    Mensajes& mensajes_;
    Exterior& exterior_;
    std::unique_ptr<sysinfo::Registro> registro_;
    QLabel* picIcon;
    QLabel* lblTitle;
    QLabel* lblVersion;
    QLabel* lblQt;
    QLabel* lblDescription;
    QLabel* lblDisclaimer;
    QLabel* Label1;
    QLabel* Label2;
    QLabel* Label3;
    EtiquetaEnlace* Label4;
    QPushButton* cmdSysInfo;
    QPushButton* cmdOK;
};

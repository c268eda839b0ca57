#pragma once
// The ranges of the plot, set by hand.

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <array>

#include "controls/entrada_numerica.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"

/// Works on the plot window, which has to be open; closes with it.
class frmescala : public QDialog {
    Q_OBJECT
public:
    frmescala(ApplicationState& estado, Mensajes& mensajes, QWidget* padre = nullptr);

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load();
    void chky_Click();
    void btaceptar_Click();
    void btcancelar_Click();

    void crear();
    bool en_orden(int minimo, int maximo, int numero, const QString& literal);

    ApplicationState& estado_;
    Mensajes& mensajes_;
    QLabel *Label1, *Label2, *Label3, *Label4;
    std::array<EntradaNumerica*, 5> txtmm{};  // 1 V minimum, 2 V maximum, 3 P minimum, 4 P maximum
    QCheckBox* chky;
    QPushButton *btaceptar, *btcancelar;
};

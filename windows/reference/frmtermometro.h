#pragma once
// One temperature on five thermometric scales.

#include <QLabel>
#include <QScrollArea>
#include <QWidget>

#include <array>

#include "controls/entrada_numerica.h"
#include "controls/linea_estado.h"
#include "shell/application_state.h"
#include "windows/reference/marco_escalas.h"
#include "windows/reference/termometria.h"

/// Typed into an entry txttemp(i) and taken by return, or moved on a thermometer pct(i) by hand or keys: the other
/// scales follow.
class frmtermometro : public QWidget {
    Q_OBJECT
public:
    explicit frmtermometro(ApplicationState& estado, QWidget* padre = nullptr);

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void txttemp_KeyPress(int index, int key_ascii);
    void pct_MouseDown(int index, double y);
    void pct_MouseMove(int index, double y);
    void escalas();

    QWidget* make_entries(const std::array<QString, termometria::SCALES>& titles);
    void place_entries();
    void take(int index, double t);
    void show_texts();
    void tell();

    ApplicationState& estado_;
    Texto texto_;
    termometria::Values temperatura_{};
    QScrollArea* desplazable_;
    MarcoEscalas* frmescala;
    QWidget* entradas_;
    std::array<QWidget*, termometria::SCALES> celda_{};  // an entry with its unit
    std::array<EntradaNumerica*, termometria::SCALES> txttemp{};
    std::array<QLabel*, termometria::SCALES> lbgrado{};
    LineaEstado* txtestado;
};

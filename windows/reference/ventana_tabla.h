#pragma once
// A window around one grid, with buttons to copy and to print it.

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "controls/impresora.h"
#include "controls/rejilla.h"
#include "shell/application_state.h"

class VentanaTabla : public QWidget {
    Q_OBJECT
public:
    QSize sizeHint() const override;

protected:
    VentanaTabla(ApplicationState& estado, Impresora& impresora, QWidget* padre);

    /// `searched`: with an entry that finds a row by its first cell while one types.
    void show_table(QAbstractItemModel* table, const char* name, bool searched);

    Rejilla* grid() const { return grid_; }

    ApplicationState& estado_;

private:
    void btimprimir_Click();
    void txtbuscar_Change();
    void make_search();
    void look_for(Rejilla::From from);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Impresora& impresora_;
    Rejilla* grid_ = nullptr;
    QLineEdit* txtbuscar = nullptr;
    QPushButton *btcopiar = nullptr, *btimprimir = nullptr;
};

#pragma once
// The ten models side by side, folded away until somebody wants them.

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QWidget>

#include <vector>

#include "controls/texto.h"
#include "windows/calc/calculos_logica.h"

/// Units of the columns and of the line below.
struct UnidadesTabla {
    calculos::Variable unknown;
    QString unknown_unit, pressure, liquid, gas, enthalpy, temperature;
};

class TablaModelos : public QWidget {
    Q_OBJECT
public:
    TablaModelos(Texto texto, const QStringList& models, QWidget* padre = nullptr);

    bool unfolded() const { return bttabla->isChecked(); }

    /// One row per model; `own` is set off from the others. `gas` gives the experimental values.
    void show_rows(std::vector<calculos::ModelRow> rows, tavo::EquationOfState own, const tavo::GasRecord& gas,
                   const UnidadesTabla& units);
    void set_units(const UnidadesTabla& units);
    void clear(const UnidadesTabla& units);

    /// Headers, rows with all digits, and the experimental values, separated by tabs.
    QString text() const;

signals:
    void unfolding(bool unfolded);
    void copied();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void bttabla_Click(bool unfolded);
    void btcopiar_Click();
    void copy_selection();

    void make_table(const QStringList& models);
    void show_all();
    void spread();
    void show_headers();
    void show_row(int row);
    void show_value(int row, int column, double shown, const QString& unit, const char* pattern);
    void show_reason(int row, int column, const QString& text, const QString& reason);
    void show_experimental();
    QString reason_of(const calculos::ModelRow& row) const;
    QTableWidgetItem* cell(int row, int column) const { return gridmodelos->item(row, column); }

    Texto texto_;
    QToolButton* bttabla;
    QWidget* cuerpo;
    QTableWidget* gridmodelos;
    QLabel* lbexperimental;
    QPushButton* btcopiar;
    std::vector<calculos::ModelRow> rows_;
    tavo::EquationOfState own_ = tavo::EquationOfState::IdealGas;
    double boiling_ = -1.0, enthalpy_ = -1.0;  // K, kcal/mol; -1: not known
    UnidadesTabla units_{};
};

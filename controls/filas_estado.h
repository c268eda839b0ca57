#pragma once
// The four rows of a state: caption or marker, entry, spin button and unit, as the calculations window and the
// laboratory show them.

#include <QLabel>
#include <QWidget>

#include <array>
#include <functional>

#include "controls/entrada_numerica.h"
#include "controls/etiqueta_unidad.h"
#include "controls/marca_incognita.h"
#include "controls/texto.h"
#include "windows/calc/calculos_logica.h"

/// Entries keep the value behind their text: what the program wrote with four decimals counts in full until somebody
/// types, and a change of unit leaves value() untouched. The unknown's entry cannot be typed into, nor its spin button
/// pressed.
class FilasEstado : public QWidget {
    Q_OBJECT
public:
    using Variable = calculos::Variable;

    /// Molar mass of the window's gas [g/mol]; 0: unknown.
    using MasaMolar = std::function<double()>;
    FilasEstado(Texto texto, MasaMolar masa_molar, QWidget* padre = nullptr);

    Variable unknown() const { return unknown_; }
    void set_unknown(Variable variable);  // without a signal

    /// Markers and unit labels are silent while it is set.
    void set_silent(bool silent);

    /// While edited() tells of a step by spin button, arrow key or wheel.
    bool stepping() const { return stepping_; }

    QString unit(Variable variable) const;
    EntradaNumerica* entry(Variable variable) const;
    UpDown* spin(Variable variable) const;
    /// Of the spin button, in K, l or atm, whatever the unit shown (amounts: as shown). 0 to 1000000 at first.
    void set_range(Variable variable, double minimum, double maximum);

    /// As entered, in the unit shown.
    double shown_value(Variable variable) const;
    /// In K, l or atm; amounts as entered.
    double value(Variable variable) const;
    /// Writes a value given in K, l or atm (amounts: as shown) in the entry, in its unit. No signal.
    void show_value(Variable variable, double value, const char* pattern = "####0.0000");
    /// Text as it stands, at Load.
    void show_text(Variable variable, const QString& text);
    /// What is being typed counts as told: whoever calculates, or hears of a change, reads all entries.
    void settle();

signals:
    /// An entry was left, confirmed with return or stepped, and holds another value than before. A return that is
    /// announced goes no further; any other reaches the window.
    void edited(Variable variable);
    void unknown_chosen(Variable variable);  // unknown() is the variable already
    void unit_changed(Variable variable);    // K, l, atm: the shown value is converted; amount: the number stays

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Row {
        QLabel* caption = nullptr;  // a MarcaIncognita, Label6 for the amount
        EntradaNumerica* entry = nullptr;
        UpDown* spin = nullptr;
        EtiquetaUnidad* unit = nullptr;
        double base = 0.0;      // value behind an exact text; K, l, atm, amounts as shown
        double reported = 0.0;  // value that was told last
        double minimum = 0.0, maximum = 1e6;
    };

    void lbbtemp_Click() { choose(Variable::Temperature); }
    void lbbvol_Click() { choose(Variable::Volume); }
    void lbbpress_Click() { choose(Variable::Pressure); }
    void make_row(Variable variable);
    QLabel* make_caption(Variable variable);
    void set_tab_order();
    void unit_Click(Variable variable, const QString& from, const QString& to);
    /// Rewrites the text as its value and announces it if it is another one; true then.
    bool commit(Variable variable);
    void choose(Variable variable);
    void write(Variable variable, double shown, double base, const QString& text);
    void apply_range(Variable variable);
    void describe(Variable variable);  // tool tips and what is spoken
    QString exact_text(Variable variable) const;
    void show_tip(Variable variable, const QPoint& where) const;

    Row& row(Variable variable) { return rows_[static_cast<std::size_t>(variable)]; }
    const Row& row(Variable variable) const { return rows_[static_cast<std::size_t>(variable)]; }

    Texto texto_;
    MasaMolar masa_molar_;
    std::array<Row, 4> rows_;
    Variable unknown_ = Variable::Pressure;
    bool stepping_ = false;
};

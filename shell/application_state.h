#pragma once
// What all windows share: one object, made in main and passed by reference.

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

#include "core/confreg.h"
#include "core/plot_range.h"
#include "core/slots.h"

enum class AmountUnit { Moles, Grams };

/// What the main window and the plot ask of the gas and conditions window.
class ConditionsView {
public:
    virtual ~ConditionsView() = default;
    /// Copies the five rows of controls into slots 1 to 5 and loads them.
    virtual void copiar_filas() = 0;
    /// Rewrites the amounts of the five rows for the unit, from the unit shown so far.
    virtual void cambiar_unidad(AmountUnit from, AmountUnit to) = 0;
    /// A fresh window: clears the rows and marks their slots inactive.
    virtual void limpiar_filas() = 0;
};

/// What the conditions window and the scale dialog ask of the plot window.
class PlotView {
public:
    virtual ~PlotView() = default;
    virtual void actualiza() = 0;        // rows into slots, default ranges
    virtual void dibuja() = 0;           // range check, then the curves
    virtual bool comprueba_rango() = 0;  // the range check alone: warns and returns false, or writes the axis labels
    virtual void limpiar() = 0;          // empties the drawing surface
    virtual void habilitar(bool enabled) = 0;
};

using tavo::PlotRange;

class ApplicationState : public QObject {
    Q_OBJECT
public:
    /// Paths only; nothing is read yet.
    explicit ApplicationState(std::filesystem::path program_folder, QObject* parent = nullptr);
    ~ApplicationState() override;

    // Paths
    const std::filesystem::path& program_folder() const;
    std::filesystem::path data_path() const;      // gas database
    std::filesystem::path language_path() const;  // language table
    QString help_path() const;  // help file of the active language; empty when the list does not hold it
    tavo::confreg::Site site() const;

    // Languages. load_languages reads the list and the active language; it is fixed for the run.
    void load_languages();
    QStringList languages() const;
    QString language() const;
    /// Text of a number in the active language, "" when missing; reads the file anew when it has changed.
    QString texto(int number) const;
    /// The same with a literal to fall back on.
    QString texto(int number, const QString& literal) const;
    const tavo::confreg::Text& language_table() const;
    /// After the file was written: reads the list again and announces it. The active language stays.
    void invalidate_languages();

    // Gases
    const tavo::confreg::Text& data() const;  // parsed database, read anew when the file has changed
    void load_gases();                        // gas count and names; no content of the database makes it fail
    std::int16_t gas_count() const;
    void set_gas_count(std::int16_t n);
    /// What is wrong with the database: for one gas, or for all in a sentence each. Empty where nothing is.
    QString gas_problem(std::int16_t number) const;
    QStringList gas_problems() const;
    /// Tells in the status line what is wrong with a gas that was chosen, if anything is.
    void tell_problem(std::int16_t number);
    /// Names of gases 1..n, shared by every gas list (row = gas number - 1). Tool tips say what is wrong with a gas.
    QAbstractItemModel* gas_names() const;
    /// After the database was written: reads it again and announces it.
    void reload_gases();
    /// The one writer of the database: applies the edits to its text, rewrites it once, reads the gases again. Throws
    /// as confreg::edit; nothing has changed then.
    void edit_gases(const std::function<void(tavo::confreg::Text&)>& edits);
    /// As edit_gases for the deletion of gas `number`: before the gases are announced, slots that held it are left
    /// without gas, those that held a later one follow it to its new number; gas_removed tells the windows the same.
    /// False, and nothing announced, when the edits change nothing: the gas has no section.
    bool remove_gas(std::int16_t number, const std::function<void(tavo::confreg::Text&)>& edits);

    // Conditions and plot
    AmountUnit amount_unit() const;
    void set_amount_unit(AmountUnit unit);
    tavo::SlotTable& slot_table();
    bool slots_initialised = false;
    int current_row = 1;  // isotherm that the parameter window shows
    void set_current_row(int row);
    int calculation_mode = 0;
    int plot_shown = 0;
    bool calculating = false;  // silences selector labels
    PlotRange default_range, current_range;
    bool thermocouple_in_use = false;
    bool manometer_in_use = false;

    // Windows: created on first use, reused, destroyed when they are closed. Factories are registered in main under the
    // window's name, which becomes the object name. A QDialog is shown in front of the main window, any other widget
    // as a child inside it.
    using Factory = std::function<QWidget*()>;
    void register_window(const QString& name, Factory factory);
    QStringList window_names() const;                 // all that are registered, in alphabetical order
    QWidget* window(const QString& name);             // created if needed, not shown; nullptr without a factory
    QWidget* open_window(const QString& name) const;  // nullptr while it does not exist
    void show_window(const QString& name);            // created if needed, shown whole, brought forward
    ConditionsView* conditions();                     // the conditions window, created if needed (see window)
    PlotView* plot() const;                           // nullptr while the plot window does not exist

    /// A sentence for the status line of the main window (0 ms: until the next one).
    void set_status(const QString& text, int milliseconds = 0);
    /// Coordinates under the pointer, in their own place of the status line; empty when it points at nothing.
    void set_coordinates(const QString& text);

signals:
    void languages_changed();
    void gases_changed();
    void gas_removed(std::int16_t number);  // before gases_changed; numbers above it are one less now
    void amount_unit_changed(AmountUnit unit);
    void slot_changed(int slot);  // gas, model, temperature or coefficients; also by a window that shows it
    void current_row_changed(int row);
    void plot_window_changed(bool open);  // the plot window was opened or closed
    void calculation_mode_changed(int mode);
    void status_changed(const QString& text, int milliseconds);
    void coordinates_changed(const QString& text);
    void show_requested(QWidget* window);  // the main window places and raises it

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

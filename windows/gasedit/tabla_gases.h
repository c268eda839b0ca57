#pragma once
// All gases of the database with their coefficients for one model: the model of the grid, and the grid itself.

#include <QAbstractTableModel>
#include <QTableView>

#include "controls/texto.h"
#include "windows/gasedit/parametros_logica.h"

/// Row = gas number - 1; column 0 holds the names. What nobody looks at is not loaded, so ten thousand gases cost
/// nothing to open.
class TablaGases : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int NAME = 0;
    /// All digits of a value, for the clipboard.
    static constexpr int DIGITS = Qt::UserRole;

    TablaGases(Texto texto, const QAbstractItemModel* names, parametros::Table::Source database, QObject* padre);

    /// Coefficients of a model at a temperature [K]; the header of the names is written anew with every model.
    void show_model(tavo::EquationOfState model, double temperature, double mu, const QString& name_header);
    /// The database has changed.
    void reload(std::int16_t gases);
    /// The gas that the boxes show stands out; 0: none. Whether it is another one.
    bool set_chosen(std::int16_t gas);
    std::size_t loads() const { return table_.loads(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVariant value_data(const QModelIndex& index, int role) const;
    QString sentence(const parametros::Row& row, int gas_row) const;

    Texto texto_;
    const QAbstractItemModel* names_;
    mutable parametros::Table table_;  // loads what it is asked for
    std::vector<std::string_view> labels_;
    QString name_header_;
    std::int16_t chosen_ = 0;
};

/// Takes gases by click, return and space; letters search the names; Ctrl+C copies the chosen rows, tab-separated. The
/// column of the names stays where it is: all columns fit.
class RejillaGases : public QTableView {
    Q_OBJECT
public:
    explicit RejillaGases(TablaGases* table, QWidget* padre);

    /// Puts the cursor on a gas and shows it.
    void show_gas(std::int16_t gas);

    void keyboardSearch(const QString& search) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void gas_taken(int row);
    void copied();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void spread();  // widths for the columns shown
    int number_width(int column) const;
    int width_with(int name_characters) const;
    void copy_selection();

    TablaGases* table_;
};

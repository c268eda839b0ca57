#pragma once
// The language table as a model: what the grid of the language editor shows of it.

#include <QAbstractTableModel>
#include <QString>

#include <optional>
#include <vector>

#include "controls/texto.h"
#include "shell/idioma_logica.h"

/// Column 0 holds the numbers, column i the i-th language. Rows can be left out; that of the table behind a row is told
/// by `cell`.
class ModeloIdiomas : public QAbstractTableModel {
    Q_OBJECT
public:
    enum class Muestra { Todos, Faltan, Letras, Valores };  // which texts
    static constexpr int FAULTS = Qt::UserRole;             // of a cell, as bits; headers have them too

    /// The table outlives the model.
    ModeloIdiomas(idioma::Tabla& tabla, Texto texto, QObject* padre);

    /// Leaves out the rows without the needle (accents and case ignored) in number or texts, and those where no
    /// language has a fault of the kind.
    void filter(const QString& needle, Muestra muestra);
    idioma::Cell cell(const QModelIndex& index) const;
    /// Where a row of the table stands; empty when it is left out.
    std::optional<int> row_of(std::size_t table_row) const;

    QString texto(const QModelIndex& index) const;
    /// False where nothing changes.
    bool escribir(const QModelIndex& index, const QString& text);
    bool recortar(const QModelIndex& index);
    /// Cells of the table that were changed past the model.
    void refresh(const std::vector<idioma::Cell>& cells);
    void add_language(const QString& name);
    void rename_pending(const QString& name);
    void remove_pending();
    /// What is wrong with a cell, a sentence for each.
    QStringList sentences(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const QString& searchable(std::size_t row);
    bool has_fault(std::size_t row, idioma::Faults kind) const;
    void refresh_all(std::size_t table_row);
    QVariant column_header(std::size_t column, int role) const;
    QVariant row_header(const idioma::Fila& row, int role) const;
    QString name(std::size_t column) const;

    idioma::Tabla& tabla_;
    Texto texto_;
    std::vector<std::size_t> rows_;    // of the table, ascending
    std::vector<QString> searchable_;  // number and texts of a row, folded; null: not known yet
};

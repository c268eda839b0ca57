#include "windows/reference/frmtabla.h"

#include <QAbstractTableModel>
#include <QGuiApplication>
#include <QPalette>

#include "controls/tintas.h"
#include "core/errors.h"
#include "core/gas_listing.h"
#include "windows/reference/constantes.h"

/// Row = gas number - 1. Gases are loaded when they are looked at.
class TablaCrit final : public QAbstractTableModel {
public:
    TablaCrit(ApplicationState& estado, QObject* padre)
        : QAbstractTableModel(padre), estado_(estado), table_([&estado]() -> auto& { return estado.data(); }) {}

    /// Rows come and go where gases do: what is chosen stays chosen, and in its place.
    void reload() {
        const int before = rowCount(), now = estado_.gas_count();
        if (now > before) {
            beginInsertRows({}, before, now - 1);
            table_.forget(estado_.gas_count());
            endInsertRows();
        } else if (now < before) {
            const int first = now == before - 1 && removed_ > 0 ? removed_ - 1 : now;
            beginRemoveRows({}, first, first + before - now - 1);
            table_.forget(estado_.gas_count());
            endRemoveRows();
        } else {
            table_.forget(estado_.gas_count());
        }
        removed_ = 0;
        if (now > 0)
            emit dataChanged(index(0, 0), index(now - 1, columnCount() - 1));
    }
    /// Announced before the next reload.
    void remove(int gas) { removed_ = gas; }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : table_.gases(); }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(gridcrit::COLUMNS.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const bool name = index.column() == gridcrit::NAME;
        const QModelIndex gas = estado_.gas_names()->index(index.row(), 0);
        switch (role) {
            case Qt::DisplayRole:
                return name ? gas.data() : QString::fromStdString(row(index).text(index.column()));
            case Rejilla::ORDER:
                return name ? gas.data() : value(index);
            case Qt::TextAlignmentRole:
                return alignment(index.column());
            case Qt::ToolTipRole:
            case Qt::AccessibleDescriptionRole:
                if (const QVariant problem = gas.data(Qt::ToolTipRole); problem.isValid())
                    return problem;
                return name && role == Qt::ToolTipRole ? gas.data() : QVariant();
            case Qt::ForegroundRole:
                return name && is_bad(index.row() + 1) ? fault_ink(QGuiApplication::palette()) : QVariant();
            default:
                return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical || section >= columnCount())
            return {};
        const gridcrit::Column& column = gridcrit::COLUMNS.at(static_cast<std::size_t>(section));
        switch (role) {
            case Qt::DisplayRole:
                return estado_.texto(column.header, QString::fromUtf8(column.literal));
            case Qt::TextAlignmentRole:
                return alignment(section);
            case Qt::ToolTipRole:
                return estado_.texto(
                    777, QStringLiteral("Un clic ordena por esta columna: ascendente, descendente, orden original"));
            default:
                return {};
        }
    }

private:
    static QVariant alignment(int column) {
        return QVariant::fromValue(Qt::AlignVCenter | (column == gridcrit::NAME ? Qt::AlignLeft : Qt::AlignRight));
    }

    const gridcrit::Row& row(const QModelIndex& index) const {
        return table_.row(static_cast<std::int16_t>(index.row() + 1));
    }

    QVariant value(const QModelIndex& index) const {
        const auto& value = row(index).values.at(static_cast<std::size_t>(index.column()));
        return value ? QVariant(*value) : QVariant();
    }

    bool is_bad(int gas) const {
        try {
            return tavo::Global::problem_of(estado_.data(), static_cast<std::int16_t>(gas)).has_value();
        } catch (const tavo::Error&) {
            return true;  // the database has gone
        }
    }

    ApplicationState& estado_;
    mutable gridcrit::Table table_;  // loads what it is asked for
    int removed_ = 0;
};

frmtabla::frmtabla(ApplicationState& estado, Impresora& impresora, QWidget* padre)
    : VentanaTabla(estado, impresora, padre), table_(new TablaCrit(estado, this)) {
    setObjectName(QStringLiteral("frmtabla"));
    Form_Load();
    connect(&estado_, &ApplicationState::gas_removed, table_, &TablaCrit::remove);
    connect(&estado_, &ApplicationState::gases_changed, this, &frmtabla::gases_Change);
}

void frmtabla::Form_Load() {
    setWindowTitle(estado_.texto(35));
    table_->reload();
    show_table(table_, "gridcrit", true);
    connect(grid(), &Rejilla::row_entered, this,
            [this](int row) { estado_.tell_problem(static_cast<std::int16_t>(row + 1)); });
}

void frmtabla::gases_Change() {
    table_->reload();
}

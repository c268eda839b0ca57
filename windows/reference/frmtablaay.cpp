#include "windows/reference/frmtablaay.h"

#include <QAbstractTableModel>
#include <QGuiApplication>
#include <QPalette>

#include "shell/textos.h"
#include "windows/reference/constantes.h"

namespace {

class TablaTermo final : public QAbstractTableModel {
public:
    TablaTermo(ApplicationState& estado, QObject* padre) : QAbstractTableModel(padre), estado_(estado) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(gridtermo::ROWS.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 4; }

    QVariant data(const QModelIndex& index, int role) const override {
        switch (role) {
            case Qt::DisplayRole:
                return index.column() == 0 ? estado_.texto(row(index).name) : text(index);
            case Rejilla::ORDER:
                return index.column() == 0 ? QVariant(estado_.texto(row(index).name)) : value(index);
            case Qt::BackgroundRole:
                return index.column() == 0 ? QGuiApplication::palette().brush(QPalette::Button) : QVariant();
            case Qt::ForegroundRole:
                return index.column() == 0 ? QGuiApplication::palette().brush(QPalette::ButtonText) : QVariant();
            default:
                return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical)
            return {};
        switch (role) {
            case Qt::DisplayRole:
                return section == 0
                           ? estado_.texto(778, QStringLiteral("Constante"))
                           : con_valor(estado_.texto(779, QStringLiteral("Valor %1")), QString::number(section));
            case Qt::TextAlignmentRole:
                return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignLeft);
            case Qt::ToolTipRole:
                return estado_.texto(
                    777, QStringLiteral("Un clic ordena por esta columna: ascendente, descendente, orden original"));
            default:
                return {};
        }
    }

private:
    static const gridtermo::Row& row(const QModelIndex& index) {
        return gridtermo::ROWS.at(static_cast<std::size_t>(index.row()));
    }
    static std::string_view literal(const QModelIndex& index) {
        return row(index).values.at(static_cast<std::size_t>(index.column() - 1));
    }
    static QString text(const QModelIndex& index) {
        const std::string_view shown = literal(index);
        return QString::fromUtf8(shown);
    }
    static QVariant value(const QModelIndex& index) {
        const auto magnitude = gridtermo::magnitude(literal(index));
        return magnitude ? QVariant(*magnitude) : QVariant();
    }

    ApplicationState& estado_;
};

}  // namespace

frmtablaay::frmtablaay(ApplicationState& estado, Impresora& impresora, QWidget* padre)
    : VentanaTabla(estado, impresora, padre) {
    setObjectName(QStringLiteral("frmtablaay"));
    Form_Load();
}

void frmtablaay::Form_Load() {
    setWindowTitle(sin_mnemonico(estado_.texto(23)));
    show_table(new TablaTermo(estado_, this), "gridtermo", false);
}

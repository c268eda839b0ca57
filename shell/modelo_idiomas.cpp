#include "shell/modelo_idiomas.h"

#include <QGuiApplication>
#include <QPalette>
#include <QStringList>

#include <algorithm>
#include <numeric>
#include <utility>

#include "controls/tintas.h"
#include "core/text_rules.h"
#include "shell/ayuda/texto_plegado.h"

using idioma::Cell;
using idioma::Faults;

namespace {

constexpr QChar BETWEEN_TEXTS(0x1F);  // no search goes across

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

Faults kind_of(ModeloIdiomas::Muestra muestra) {
    switch (muestra) {
        case ModeloIdiomas::Muestra::Faltan:
            return idioma::MISSING;
        case ModeloIdiomas::Muestra::Letras:
            return idioma::LETTERS;
        case ModeloIdiomas::Muestra::Valores:
            return idioma::VALUES;
        case ModeloIdiomas::Muestra::Todos:
            break;
    }
    return 0;
}

/// "%1 %2", or a dash.
QString list_of_arguments(const std::string& text) {
    QStringList list;
    for (const char digit : tavo::arguments(text))
        list << QStringLiteral("%") + QLatin1Char(digit);
    return list.isEmpty() ? QStringLiteral("-") : list.join(u' ');
}

}  // namespace

ModeloIdiomas::ModeloIdiomas(idioma::Tabla& tabla, Texto texto, QObject* padre)
    : QAbstractTableModel(padre),
      tabla_(tabla),
      texto_(std::move(texto)),
      rows_(tabla.rows()),
      searchable_(tabla.rows()) {
    std::iota(rows_.begin(), rows_.end(), std::size_t{0});
}

// ---- Rows

void ModeloIdiomas::filter(const QString& needle, Muestra muestra) {
    const QString wanted = plegado(needle.trimmed());
    const Faults kind = kind_of(muestra);
    beginResetModel();
    rows_.clear();
    for (std::size_t row = 0; row < tabla_.rows(); ++row) {
        if ((kind == 0 || has_fault(row, kind)) && (wanted.isEmpty() || searchable(row).contains(wanted)))
            rows_.push_back(row);
    }
    endResetModel();
}

bool ModeloIdiomas::has_fault(std::size_t row, Faults kind) const {
    for (std::size_t column = 0; column < tabla_.columns(); ++column) {
        if ((tabla_.faults({row, column}) & kind) != 0)
            return true;
    }
    return false;
}

const QString& ModeloIdiomas::searchable(std::size_t row) {
    QString& known = searchable_[row];
    if (known.isNull()) {
        QString all = text_of(tabla_.row(row).key);
        for (std::size_t column = 0; column < tabla_.columns(); ++column)
            all += BETWEEN_TEXTS + text_of(tabla_.text({row, column})).remove(u'&');
        known = plegado(all);
    }
    return known;
}

Cell ModeloIdiomas::cell(const QModelIndex& index) const {
    return {rows_.at(static_cast<std::size_t>(index.row())), static_cast<std::size_t>(index.column() - 1)};
}

std::optional<int> ModeloIdiomas::row_of(std::size_t table_row) const {
    const auto found = std::lower_bound(rows_.begin(), rows_.end(), table_row);
    if (found == rows_.end() || *found != table_row)
        return std::nullopt;
    return static_cast<int>(found - rows_.begin());
}

int ModeloIdiomas::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ModeloIdiomas::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(tabla_.columns()) + 1;
}

// ---- Edits

QString ModeloIdiomas::texto(const QModelIndex& index) const {
    return text_of(tabla_.text(cell(index)));
}

bool ModeloIdiomas::escribir(const QModelIndex& index, const QString& text) {
    const bool changed = tabla_.set_text(cell(index), text.toStdString());
    if (changed)
        refresh_all(cell(index).row);
    return changed;
}

bool ModeloIdiomas::recortar(const QModelIndex& index) {
    const bool changed = tabla_.trim(cell(index));
    if (changed)
        refresh_all(cell(index).row);
    return changed;
}

void ModeloIdiomas::refresh(const std::vector<Cell>& cells) {
    for (const Cell& changed : cells)
        refresh_all(changed.row);
}

/// A letter that is free again shows in other rows too, so all that is seen is painted anew.
void ModeloIdiomas::refresh_all(std::size_t table_row) {
    searchable_[table_row] = QString();
    if (!rows_.empty())
        emit dataChanged(index(0, 1), index(rowCount() - 1, columnCount() - 1));
}

void ModeloIdiomas::add_language(const QString& name) {
    const int place = columnCount();
    beginInsertColumns({}, place, place);
    tabla_.add_language(name.toStdString());
    std::fill(searchable_.begin(), searchable_.end(), QString());
    endInsertColumns();
}

void ModeloIdiomas::rename_pending(const QString& name) {
    tabla_.rename_pending(name.toStdString());
    emit headerDataChanged(Qt::Horizontal, columnCount() - 1, columnCount() - 1);
}

void ModeloIdiomas::remove_pending() {
    const int place = columnCount() - 1;
    beginRemoveColumns({}, place, place);
    tabla_.remove_pending();
    std::fill(searchable_.begin(), searchable_.end(), QString());
    endRemoveColumns();
}

// ---- What is shown

QString ModeloIdiomas::name(std::size_t column) const {
    return text_of(tabla_.name(column));
}

QStringList ModeloIdiomas::sentences(const QModelIndex& index) const {
    QStringList told;
    if (index.column() < 1)
        return told;
    const Cell at = cell(index);
    const Faults faults = tabla_.faults(at);
    const auto elsewhere = tabla_.known_elsewhere(at.row);
    if ((faults & idioma::MISSING) != 0 && elsewhere)
        told << texto_(793, QStringLiteral("Falta este texto; en %1 es: %2"))
                    .arg(name(elsewhere->column), text_of(tabla_.text(*elsewhere)));
    if ((faults & idioma::CLASH) != 0) {
        QStringList numbers;
        for (const int number : tabla_.clashes(at))
            numbers << QString::number(number);
        told << texto_(794, QStringLiteral("La letra %1 ya es la del texto %2 en el mismo menú o ventana"))
                    .arg(text_of(tavo::mnemonic(tabla_.text(at))).toUpper(), numbers.join(QStringLiteral(", ")));
    }
    if ((faults & idioma::NO_LETTER) != 0)
        told << texto_(796, QStringLiteral("Falta la letra subrayada: escriba & delante de ella"));
    if ((faults & idioma::VALUES) != 0)
        told << texto_(795, QStringLiteral("Aquí deben estar los mismos valores que en %1: %2"))
                    .arg(name(tabla_.source()), list_of_arguments(tabla_.text({at.row, tabla_.source()})));
    if ((faults & idioma::REPEATED) != 0)
        told << texto_(798, QStringLiteral("Número repetido: el programa solo lee el primero"));
    return told;
}

QVariant ModeloIdiomas::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (index.column() == 0)
        return row_header(tabla_.row(rows_[static_cast<std::size_t>(index.row())]), role);
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return texto(index);
        case FAULTS:
            return int{tabla_.faults(cell(index))};
        case Qt::TextAlignmentRole: {
            const bool from_right = texto(index).isRightToLeft();
            return QVariant::fromValue((from_right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                                       Qt::AlignVCenter);
        }
        case Qt::ToolTipRole:
            return (QStringList(texto(index)) + sentences(index)).join(u'\n').trimmed();
        case Qt::AccessibleDescriptionRole:
            return sentences(index).join(u'\n');
        default:
            return {};
    }
}

QVariant ModeloIdiomas::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal)
        return section > 0 ? column_header(static_cast<std::size_t>(section - 1), role) : QVariant();
    return row_header(tabla_.row(rows_.at(static_cast<std::size_t>(section))), role);
}

QVariant ModeloIdiomas::column_header(std::size_t column, int role) const {
    const bool pending = tabla_.pending() == column;
    const bool shadowed = tabla_.shadowed(column);
    if (role == Qt::DisplayRole)
        return name(column);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && shadowed)
        return fault_ink(QGuiApplication::palette());
    if (role == FAULTS)
        return shadowed ? int{idioma::REPEATED} : 0;
    if (role != Qt::ToolTipRole)
        return {};
    QStringList told;
    if (pending)
        told << texto_(
            809,
            QStringLiteral("Idioma nuevo, sin guardar: un doble clic cambia su nombre; el botón derecho lo quita"));
    if (shadowed)
        told << texto_(808, QStringLiteral("Otro idioma anterior tiene este nombre: el programa solo lee aquel"));
    return told.join(u'\n');
}

QVariant ModeloIdiomas::row_header(const idioma::Fila& row, int role) const {
    const bool odd = row.repeated || row.malformed;
    switch (role) {
        case Qt::DisplayRole:
            return text_of(row.key);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::ForegroundRole:
            return odd ? QVariant(fault_ink(QGuiApplication::palette())) : QVariant();
        case Qt::ToolTipRole:
            if (row.malformed)
                return texto_(807, QStringLiteral("Esta línea no tiene la forma número=texto; se conserva"));
            return row.repeated ? texto_(798, QStringLiteral("Número repetido: el programa solo lee el primero"))
                                : QString();
        case FAULTS:
            return odd ? int{idioma::REPEATED} : 0;
        default:
            return {};
    }
}

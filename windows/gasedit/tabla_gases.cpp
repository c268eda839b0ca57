#include "windows/gasedit/tabla_gases.h"

#include <QClipboard>
#include <QEvent>
#include <QFont>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QScrollBar>

#include <algorithm>
#include <utility>

#include "core/numtext.h"

using parametros::Fault;
using tavo::EquationOfState;

namespace {

constexpr int PADDING = 14;
constexpr int SHORTEST_NAME = 14, USUAL_NAME = 26;  // characters
constexpr int ROWS_SHOWN = 16, FEWEST_ROWS = 6;
const QString UNKNOWN = QStringLiteral("-----");

QString text_of(std::string_view text) {
    return QString::fromUtf8(text);
}

}  // namespace

// ---- The model

TablaGases::TablaGases(Texto texto, const QAbstractItemModel* names, parametros::Table::Source database, QObject* padre)
    : QAbstractTableModel(padre), texto_(std::move(texto)), names_(names), table_(std::move(database)) {}

void TablaGases::show_model(EquationOfState model, double temperature, double mu, const QString& name_header) {
    if (model != table_.model()) {
        beginResetModel();
        table_.choose(model, temperature, mu);
        labels_ = parametros::column_labels(model);
        name_header_ = name_header;
        endResetModel();
    } else {
        name_header_ = name_header;
        if (table_.choose(model, temperature, mu) && rowCount() > 0)
            emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void TablaGases::reload(std::int16_t gases) {
    beginResetModel();
    table_.forget(gases);
    endResetModel();
}

bool TablaGases::set_chosen(std::int16_t gas) {
    if (gas == chosen_)
        return false;
    for (const int row : {std::exchange(chosen_, gas) - 1, gas - 1})
        if (row >= 0 && row < rowCount())
            emit dataChanged(index(row, 0), index(row, columnCount() - 1), {Qt::FontRole});
    return true;
}

int TablaGases::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : table_.gases();
}

int TablaGases::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1 + static_cast<int>(labels_.size());
}

QVariant TablaGases::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::FontRole && index.row() + 1 == chosen_) {
        QFont bold = QGuiApplication::font();
        bold.setBold(true);
        return bold;
    }
    if (index.column() != NAME)
        return value_data(index, role);
    const QModelIndex gas = names_->index(index.row(), 0);
    switch (role) {
        case Qt::ToolTipRole:
            if (const QVariant problem = gas.data(Qt::ToolTipRole); problem.isValid())
                return problem;
            return gas.data();
        case Qt::DisplayRole:
        case DIGITS:
            return gas.data();
        case Qt::BackgroundRole:  // fixed, like the header
            return QGuiApplication::palette().brush(QPalette::Button);
        case Qt::ForegroundRole:
            return QGuiApplication::palette().brush(QPalette::ButtonText);
        default:
            return {};
    }
}

QVariant TablaGases::value_data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole && role != DIGITS)
        return {};
    const parametros::Row& row = table_.row(static_cast<std::int16_t>(index.row() + 1));
    const bool told = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    if (row.fault != Fault::None)
        return told ? sentence(row, index.row()) : UNKNOWN;
    const int k = index.column() - 1;
    const double value = row.values.at(static_cast<std::size_t>(k));
    if (role == Qt::DisplayRole)
        return QString::fromStdString(tavo::Format(value, parametros::column_format(table_.model(), k)));
    return QString::fromStdString(tavo::to_text(value));
}

QString TablaGases::sentence(const parametros::Row& row, int gas_row) const {
    if (row.fault == Fault::SmallMu)
        return texto_(93, QString());
    const QString known = names_->index(gas_row, 0).data(Qt::ToolTipRole).toString();
    return texto_(613,
                  QStringLiteral("Faltan datos de este gas para el modelo elegido. Elija otro modelo u otro gas.")) +
           u'\n' + (known.isEmpty() ? QString::fromStdString(row.detail) : known);
}

QVariant TablaGases::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(section == NAME ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    return section == NAME ? name_header_ : text_of(labels_.at(static_cast<std::size_t>(section - 1)));
}

// ---- The grid

RejillaGases::RejillaGases(TablaGases* table, QWidget* padre) : QTableView(padre), table_(table) {
    setModel(table);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);  // the tab key goes on
    setWordWrap(false);
    setAlternatingRowColors(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);  // measures no row
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    connect(table, &QAbstractItemModel::modelReset, this, &RejillaGases::spread);
    spread();
}

void RejillaGases::spread() {
    QHeaderView* header = horizontalHeader();
    for (int column = 1; column < header->count(); ++column) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        header->resizeSection(column, number_width(column));
    }
    if (header->count() > 0)
        header->setSectionResizeMode(TablaGases::NAME, QHeaderView::Stretch);
}

int RejillaGases::number_width(int column) const {
    const QString caption = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    return PADDING + std::max(fontMetrics().horizontalAdvance(caption),
                              fontMetrics().horizontalAdvance(QStringLiteral("-0000.000000")));
}

/// Of the model with the most columns, so that nothing moves with the model.
int RejillaGases::width_with(int name_characters) const {
    int numbers = 0;
    for (int model = 0; model <= static_cast<int>(EquationOfState::DietericiSadus); ++model) {
        int width = 0;
        for (const std::string_view label : parametros::column_labels(static_cast<EquationOfState>(model)))
            width += PADDING + std::max(fontMetrics().horizontalAdvance(text_of(label)),
                                        fontMetrics().horizontalAdvance(QStringLiteral("-0000.000000")));
        numbers = std::max(numbers, width);
    }
    return numbers + fontMetrics().horizontalAdvance(QString(name_characters, u'0')) +
           verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
}

QSize RejillaGases::sizeHint() const {
    return {width_with(USUAL_NAME), horizontalHeader()->sizeHint().height() + 2 * frameWidth() +
                                        ROWS_SHOWN * verticalHeader()->defaultSectionSize()};
}

QSize RejillaGases::minimumSizeHint() const {
    return {width_with(SHORTEST_NAME), horizontalHeader()->sizeHint().height() + 2 * frameWidth() +
                                           FEWEST_ROWS * verticalHeader()->defaultSectionSize()};
}

void RejillaGases::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
        spread();
    }
}

void RejillaGases::show_gas(std::int16_t gas) {
    const QModelIndex place = model()->index(gas - 1, TablaGases::NAME);
    if (!place.isValid() || place.row() == currentIndex().row())
        return;
    setCurrentIndex(place);
    scrollTo(place);
}

void RejillaGases::keyboardSearch(const QString& search) {
    if (currentIndex().isValid() && currentIndex().column() != TablaGases::NAME)
        selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(TablaGases::NAME),
                                          QItemSelectionModel::NoUpdate);
    QTableView::keyboardSearch(search);
}

void RejillaGases::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        return copy_selection();
    const bool takes = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (takes && currentIndex().isValid())
        emit gas_taken(currentIndex().row());
    else
        QTableView::keyPressEvent(event);
}

/// A plain click takes the gas; one that extends a selection, or ends a drag over several rows, does not.
void RejillaGases::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const QModelIndex under = indexAt(event->position().toPoint());
    const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    if (plain && under.isValid() && under == currentIndex() && selectionModel()->selectedRows().size() == 1)
        emit gas_taken(under.row());
}

void RejillaGases::copy_selection() {
    QModelIndexList rows = selectionModel()->selectedRows();
    if (rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const QModelIndex& row : rows) {
        QStringList line;
        for (int column = 0; column < model()->columnCount(); ++column)
            line << row.siblingAtColumn(column).data(TablaGases::DIGITS).toString();
        text += line.join(u'\t') + u'\n';
    }
    QGuiApplication::clipboard()->setText(text);
    emit copied();
}

#include "windows/calc/tabla_modelos.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "controls/texto_estado.h"
#include "windows/calc/presentar.h"

using calculos::Reason;
using calculos::Variable;
using presentar::CUATRO_DECIMALES;
using presentar::DESCONOCIDO;
using presentar::DOS_DECIMALES;
using presentar::en_unidad;
using tavo::Global::UnitFamily;

namespace {

enum Column { MODEL, UNKNOWN, PRESSURE, LIQUID, GAS, ENTHALPY, COLUMNS };
constexpr int DIGITS = Qt::UserRole;  // what is copied
const QString KILOCALORIES = QStringLiteral("Kcal");

QString symbol(Variable unknown) {
    switch (unknown) {
        case Variable::Temperature:
            return QStringLiteral("T");
        case Variable::Volume:
            return QStringLiteral("V");
        case Variable::Amount:
        case Variable::Pressure:
            break;
    }
    return QStringLiteral("P");
}

QString header(const QString& name, const QString& unit) {
    return QStringLiteral("%1 (%2)").arg(name, unit);
}

/// The gas itself, or the unknown temperature, is missing: nothing at all can be said of the model.
bool says_nothing(Reason reason, Variable unknown) {
    return unknown == Variable::Temperature || reason == Reason::NoGas || reason == Reason::BadGas ||
           reason == Reason::SmallMu;
}

}  // namespace

TablaModelos::TablaModelos(Texto texto, const QStringList& models, QWidget* padre)
    : QWidget(padre), texto_(std::move(texto)) {
    bttabla = new QToolButton(this);
    bttabla->setObjectName(QStringLiteral("bttabla"));
    bttabla->setText(texto_(620, QStringLiteral("Todos los modelos")));
    bttabla->setCheckable(true);
    bttabla->setAutoRaise(true);
    bttabla->setArrowType(Qt::RightArrow);
    bttabla->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bttabla->setFocusPolicy(Qt::StrongFocus);
    cuerpo = new QWidget(this);
    make_table(models);

    lbexperimental = new QLabel(cuerpo);
    lbexperimental->setObjectName(QStringLiteral("lbexperimental"));
    lbexperimental->setWordWrap(true);
    lbexperimental->setTextInteractionFlags(Qt::TextSelectableByMouse);
    btcopiar = new QPushButton(texto_(625, QStringLiteral("Copiar la tabla")), cuerpo);
    btcopiar->setObjectName(QStringLiteral("btcopiar"));
    btcopiar->setToolTip(texto_(626, QStringLiteral("Copia la tabla con sus encabezados y todas las cifras, separada "
                                                    "por tabulaciones")));
    auto* below = new QHBoxLayout;
    below->setSpacing(6);
    below->addWidget(lbexperimental, 1);
    below->addWidget(btcopiar);
    auto* inside = new QVBoxLayout(cuerpo);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->setSpacing(6);
    inside->addWidget(gridmodelos);
    inside->addLayout(below);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(bttabla, 0, Qt::AlignLeft);
    column->addWidget(cuerpo);
    cuerpo->hide();

    connect(bttabla, &QToolButton::toggled, this, &TablaModelos::bttabla_Click);
    connect(btcopiar, &QPushButton::clicked, this, &TablaModelos::btcopiar_Click);
}

void TablaModelos::make_table(const QStringList& models) {
    const int count = static_cast<int>(models.size());
    gridmodelos = new QTableWidget(count, COLUMNS, cuerpo);
    gridmodelos->setObjectName(QStringLiteral("gridmodelos"));
    gridmodelos->setAccessibleName(bttabla->text());
    gridmodelos->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gridmodelos->setTabKeyNavigation(false);  // the tab key goes on to the button
    gridmodelos->setWordWrap(false);
    gridmodelos->setAlternatingRowColors(true);
    gridmodelos->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    gridmodelos->verticalHeader()->hide();
    gridmodelos->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    gridmodelos->horizontalHeader()->setHighlightSections(false);
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < COLUMNS; ++column) {
            auto* item = new QTableWidgetItem(column == MODEL ? models[row] : QString());
            if (column != MODEL)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            item->setData(DIGITS, item->text());
            gridmodelos->setItem(row, column, item);
        }
    }
    auto* copy = new QAction(gridmodelos);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    gridmodelos->addAction(copy);
    connect(copy, &QAction::triggered, this, &TablaModelos::copy_selection);
}

void TablaModelos::show_rows(std::vector<calculos::ModelRow> rows, tavo::EquationOfState own,
                             const tavo::GasRecord& gas, const UnidadesTabla& units) {
    rows_ = std::move(rows);
    own_ = own;
    boiling_ = gas.teb;
    enthalpy_ = gas.hv;
    units_ = units;
    show_all();
}

void TablaModelos::set_units(const UnidadesTabla& units) {
    units_ = units;
    show_all();
}

void TablaModelos::clear(const UnidadesTabla& units) {
    units_ = units;
    if (rows_.empty())
        return show_headers();
    rows_.clear();
    boiling_ = enthalpy_ = -1.0;
    show_all();
}

void TablaModelos::show_all() {
    show_headers();
    for (int row = 0; row < gridmodelos->rowCount(); ++row)
        show_row(row);
    show_experimental();
    if (unfolded())
        spread();
}

/// The numbers share the room that the names leave; where there is none, it is the names that are cut. All rows are
/// seen: what scrolls is the window.
void TablaModelos::spread() {
    QHeaderView* header = gridmodelos->horizontalHeader();
    const auto needed = [this, header](int column) {
        const QAbstractItemView* cells = gridmodelos;
        return std::max(cells->sizeHintForColumn(column), header->sectionSizeHint(column));
    };
    int total = 0;
    for (int column = 0; column < COLUMNS; ++column)
        total += needed(column);
    const int room = gridmodelos->viewport()->width();
    const int share = std::max(room - total, 0) / (COLUMNS - 1);
    header->setSectionResizeMode(QHeaderView::Fixed);
    int numbers = 0;
    for (int column = UNKNOWN; column < COLUMNS; ++column) {
        header->resizeSection(column, needed(column) + share);
        numbers += needed(column) + share;
    }
    header->resizeSection(MODEL, std::max(room - numbers, needed(MODEL) / 2));
    const bool scrolls = header->length() > room;
    const int bar = scrolls ? gridmodelos->horizontalScrollBar()->sizeHint().height() : 0;
    gridmodelos->setFixedHeight(gridmodelos->verticalHeader()->length() + header->sizeHint().height() + bar +
                                2 * gridmodelos->frameWidth());
}

void TablaModelos::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layout()->activate();  // the table has its new width
    spread();
}

void TablaModelos::show_headers() {
    const QString per_mole = QStringLiteral("%1/mol");
    gridmodelos->setHorizontalHeaderLabels(
        {texto_(621, QStringLiteral("Modelo")), header(symbol(units_.unknown), units_.unknown_unit),
         header(QStringLiteral("Pv"), units_.pressure), header(QStringLiteral("vl"), per_mole.arg(units_.liquid)),
         header(QStringLiteral("vg"), per_mole.arg(units_.gas)),
         header(QStringLiteral("ΔHvap"), per_mole.arg(units_.enthalpy))});
    gridmodelos->horizontalHeaderItem(MODEL)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TablaModelos::show_row(int row) {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [row](const auto& each) { return static_cast<int>(each.model) == row; });
    const bool own = found != rows_.end() && static_cast<int>(own_) == row;
    QFont font = gridmodelos->font();
    font.setBold(own);
    QColor tint = palette().color(QPalette::Highlight);
    tint.setAlpha(50);
    for (int column = 0; column < COLUMNS; ++column) {
        cell(row, column)->setFont(font);
        cell(row, column)->setBackground(own ? QBrush(tint) : QBrush());
    }
    if (found == rows_.end()) {
        for (int column = UNKNOWN; column < COLUMNS; ++column)
            show_reason(row, column, QString(), QString());
        return;
    }

    const calculos::ModelRow& model = *found;
    const QString reason = reason_of(model);
    if (model.unknown)
        show_value(row, UNKNOWN, en_unidad(calculos::family(units_.unknown), *model.unknown, units_.unknown_unit),
                   units_.unknown_unit, CUATRO_DECIMALES);
    else
        show_reason(row, UNKNOWN, DESCONOCIDO, reason);
    if (!model.saturation) {
        const bool nothing = model.reason && says_nothing(*model.reason, units_.unknown);
        for (int column = PRESSURE; column < COLUMNS; ++column) {
            if (nothing)
                show_reason(row, column, DESCONOCIDO, reason);
            else
                show_reason(row, column, texto_(128, QString()),
                            texto_(630, QStringLiteral("A esta temperatura este modelo no da equilibrio entre líquido "
                                                       "y gas")));
        }
        return;
    }
    const auto& [pv, vl, vg] = *model.saturation;
    show_value(row, PRESSURE, en_unidad(UnitFamily::Pressure, pv, units_.pressure), units_.pressure, CUATRO_DECIMALES);
    show_value(row, LIQUID, en_unidad(UnitFamily::Volume, vl, units_.liquid), units_.liquid + "/mol", CUATRO_DECIMALES);
    show_value(row, GAS, en_unidad(UnitFamily::Volume, vg, units_.gas), units_.gas + "/mol", CUATRO_DECIMALES);
    if (presentar::presion_nula(pv, units_.pressure))
        show_reason(row, ENTHALPY, DESCONOCIDO,
                    texto_(628, QStringLiteral("La presión de vapor es menor que 0.005 %1: elija una unidad menor para "
                                               "ver la entalpía"))
                        .arg(units_.pressure));
    else if (!model.enthalpy)
        show_reason(row, ENTHALPY, texto_(128, QString()),
                    texto_(631, QStringLiteral("La entalpía no se puede calcular: falta la presión de vapor medio "
                                               "grado más arriba o más abajo")));
    else
        show_value(row, ENTHALPY, en_unidad(UnitFamily::Energy, *model.enthalpy, units_.enthalpy),
                   units_.enthalpy + "/mol", DOS_DECIMALES);
}

void TablaModelos::show_value(int row, int column, double shown, const QString& unit, const char* pattern) {
    cell(row, column)->setText(presentar::formato(shown, pattern));
    cell(row, column)->setToolTip(presentar::cifras(shown, unit));
    cell(row, column)->setData(DIGITS, presentar::cifras(shown));
}

void TablaModelos::show_reason(int row, int column, const QString& text, const QString& reason) {
    cell(row, column)->setText(text);
    cell(row, column)->setToolTip(reason);
    cell(row, column)->setData(DIGITS, text);
}

QString TablaModelos::reason_of(const calculos::ModelRow& row) const {
    if (!row.reason)
        return {};
    const QString unit = units_.unknown == Variable::Volume ? units_.unknown_unit : QStringLiteral("l");
    return texto_fallo(texto_, calculos::Unsolvable(*row.reason, {}, row.reason_value), unit);
}

void TablaModelos::show_experimental() {
    QString boiling = DESCONOCIDO, enthalpy = DESCONOCIDO;
    if (boiling_ > 0.0) {
        const double shown = en_unidad(UnitFamily::Temperature, boiling_, units_.temperature);
        boiling = presentar::formato(shown, DOS_DECIMALES) + u' ' + units_.temperature;
    }
    if (enthalpy_ > 0.0) {
        const double base = tavo::Global::convertirenergia(enthalpy_, KILOCALORIES.toStdString(),
                                                           tavo::Global::unit_labels(UnitFamily::Energy).front());
        enthalpy = presentar::formato(en_unidad(UnitFamily::Energy, base, units_.enthalpy), DOS_DECIMALES) + u' ' +
                   units_.enthalpy + QStringLiteral("/mol");
    }
    lbexperimental->setText(
        texto_(624, QStringLiteral("Experimental: ebullición normal %1, entalpía de vaporización %2"))
            .arg(boiling, enthalpy));
}

void TablaModelos::bttabla_Click(bool unfolded) {
    bttabla->setArrowType(unfolded ? Qt::DownArrow : Qt::RightArrow);
    cuerpo->setVisible(unfolded);
    if (unfolded)
        spread();
    emit unfolding(unfolded);
}

QString TablaModelos::text() const {
    QStringList lines, line;
    for (int column = 0; column < COLUMNS; ++column)
        line << gridmodelos->horizontalHeaderItem(column)->text();
    lines << line.join('\t');
    for (int row = 0; row < gridmodelos->rowCount(); ++row) {
        line.clear();
        for (int column = 0; column < COLUMNS; ++column)
            line << cell(row, column)->data(DIGITS).toString();
        lines << line.join('\t');
    }
    lines << lbexperimental->text();
    return lines.join('\n') + '\n';
}

void TablaModelos::btcopiar_Click() {
    QGuiApplication::clipboard()->setText(text());
    emit copied();
}

/// The cells chosen, by rows, with all digits: without headers, ready to be put into cells elsewhere.
void TablaModelos::copy_selection() {
    QStringList lines;
    for (int row = 0; row < gridmodelos->rowCount(); ++row) {
        QStringList line;
        for (int column = 0; column < COLUMNS; ++column) {
            if (cell(row, column)->isSelected())
                line << cell(row, column)->data(DIGITS).toString();
        }
        if (!line.isEmpty())
            lines << line.join('\t');
    }
    if (lines.isEmpty())
        return;
    QGuiApplication::clipboard()->setText(lines.join('\n') + '\n');
    emit copied();
}

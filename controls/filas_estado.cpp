#include "controls/filas_estado.h"

#include <QGridLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QToolTip>

#include <algorithm>
#include <utility>

#include "core/numtext.h"

namespace {

using Variable = FilasEstado::Variable;
using calculos::VARIABLES;
using tavo::Global::UnitFamily;

constexpr const char* PATTERN = "####0.0000";

struct RowNames {
    UnitFamily family;
    int caption;
    const char *label, *entry, *unit, *spin;
};
constexpr std::array<RowNames, 4> NAMES{{
    {UnitFamily::Amount, 70, "Label6", "txtmol", "lbmasa", "UpDown0"},
    {UnitFamily::Temperature, 71, "lbbtemp", "txttemp", "lbtemp", "UpDown1"},
    {UnitFamily::Volume, 72, "lbbvol", "txtvol", "lbvol", "UpDown2"},
    {UnitFamily::Pressure, 73, "lbbpress", "txtpress", "lbpress", "UpDown3"},
}};

constexpr const RowNames& names(Variable variable) {
    return NAMES[static_cast<std::size_t>(variable)];
}

/// Amounts keep their number.
double convert(Variable variable, double x, const QString& from, const QString& to) {
    const std::string origin = from.toStdString(), target = to.toStdString();
    switch (variable) {
        case Variable::Temperature:
            return tavo::Global::convertirtemperatura(x, origin, target);
        case Variable::Volume:
            return tavo::Global::convertirvolumen(x, origin, target);
        case Variable::Pressure:
            return tavo::Global::convertirpresion(x, origin, target);
        case Variable::Amount:
            break;
    }
    return x;
}

QString base_unit(Variable variable) {
    const std::string_view label = tavo::Global::unit_labels(names(variable).family).front();
    return QString::fromUtf8(label);
}

QString plain(double x) {
    return QString::fromStdString(tavo::to_text(x));
}

/// A number too long for its entry in the pattern takes an exponent.
QString format(double x, const char* pattern, const QLineEdit* entry) {
    const QString text = QString::fromStdString(tavo::Format(x, pattern));
    return text.size() <= entry->maxLength() ? text : plain(x);
}

}  // namespace

FilasEstado::FilasEstado(Texto texto, MasaMolar masa_molar, QWidget* padre)
    : QWidget(padre), texto_(std::move(texto)), masa_molar_(std::move(masa_molar)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    for (const Variable variable : VARIABLES)
        make_row(variable);
    set_tab_order();
    set_unknown(unknown_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

// ---- Layout

void FilasEstado::make_row(Variable variable) {
    const RowNames& name = names(variable);
    Row& r = row(variable);
    r.caption = make_caption(variable);
    r.caption->setObjectName(QLatin1String(name.label));
    r.entry = new EntradaNumerica(this);
    r.entry->setObjectName(QLatin1String(name.entry));
    r.entry->setMinimumWidth(r.entry->fontMetrics().horizontalAdvance(QStringLiteral("000000000.0000")));
    r.entry->installEventFilter(this);
    r.caption->setBuddy(r.entry);
    r.spin = new UpDown(this);
    r.spin->setObjectName(QLatin1String(name.spin));
    r.spin->bind(r.entry);
    if (variable == Variable::Temperature)
        r.spin->set_increment(1.0);
    else
        r.spin->set_adaptive();
    r.unit = new EtiquetaUnidad(name.family, this);
    r.unit->setObjectName(QLatin1String(name.unit));
    apply_range(variable);

    auto* grid = static_cast<QGridLayout*>(layout());
    const int line = static_cast<int>(variable);
    auto* pair = new QHBoxLayout;
    pair->setSpacing(0);
    pair->addWidget(r.entry, 1);
    pair->addWidget(r.spin);
    grid->addWidget(r.caption, line, 0);
    grid->addLayout(pair, line, 1);
    grid->addWidget(r.unit, line, 2);

    connect(r.entry, &EntradaNumerica::LostFocus, this, [this, variable] { commit(variable); });
    connect(r.spin, &UpDown::Change, this, [this, variable] {
        const QScopedValueRollback stepping(stepping_, true);
        commit(variable);
    });
    connect(r.unit, &EtiquetaUnidad::Click, this,
            [this, variable](const QString& from, const QString& to) { unit_Click(variable, from, to); });
}

QLabel* FilasEstado::make_caption(Variable variable) {
    const QString text = texto_(names(variable).caption, {});
    if (variable == Variable::Amount)
        return new QLabel(texto_(440, QStringLiteral("%1:")).replace(QStringLiteral("%1"), text), this);
    auto* marker = new MarcaIncognita(this);
    marker->setText(text);
    connect(marker, &MarcaIncognita::Click, this,
            variable == Variable::Temperature ? &FilasEstado::lbbtemp_Click
            : variable == Variable::Volume    ? &FilasEstado::lbbvol_Click
                                              : &FilasEstado::lbbpress_Click);
    return marker;
}

/// A state is typed from entry to entry; what changes units and the unknown comes after.
void FilasEstado::set_tab_order() {
    QWidget* last = rows_.front().entry;
    const auto next = [&last](QWidget* widget) {
        setTabOrder(last, widget);
        last = widget;
    };
    for (const Row& r : rows_)
        next(r.entry);
    for (const Row& r : rows_)
        next(r.unit);
    for (const Row& r : rows_)
        next(r.caption);
}

// ---- Values

QString FilasEstado::unit(Variable variable) const {
    return row(variable).unit->unit();
}

EntradaNumerica* FilasEstado::entry(Variable variable) const {
    return row(variable).entry;
}

UpDown* FilasEstado::spin(Variable variable) const {
    return row(variable).spin;
}

void FilasEstado::set_range(Variable variable, double minimum, double maximum) {
    row(variable).minimum = minimum;
    row(variable).maximum = maximum;
    apply_range(variable);
}

void FilasEstado::apply_range(Variable variable) {
    const Row& r = row(variable);
    const QString base = base_unit(variable), shown = r.unit->unit();
    r.spin->set_range(convert(variable, r.minimum, base, shown), convert(variable, r.maximum, base, shown));
}

double FilasEstado::shown_value(Variable variable) const {
    return row(variable).entry->value();
}

double FilasEstado::value(Variable variable) const {
    const Row& r = row(variable);
    return r.entry->is_exact() ? r.base : convert(variable, r.entry->value(), r.unit->unit(), base_unit(variable));
}

void FilasEstado::write(Variable variable, double shown, double base, const QString& text) {
    Row& r = row(variable);
    r.base = base;
    r.entry->set_exact(shown, text);
}

void FilasEstado::show_value(Variable variable, double value, const char* pattern) {
    Row& r = row(variable);
    const double shown = convert(variable, value, base_unit(variable), r.unit->unit());
    write(variable, shown, value, format(shown, pattern, r.entry));
    r.reported = value;
}

void FilasEstado::show_text(Variable variable, const QString& text) {
    Row& r = row(variable);
    const double shown = tavo::Val(text.toStdString());
    write(variable, shown, convert(variable, shown, r.unit->unit(), base_unit(variable)), text);
    r.reported = r.base;
}

bool FilasEstado::commit(Variable variable) {
    if (variable == unknown_)
        return false;
    Row& r = row(variable);
    const double now = value(variable);
    write(variable, r.entry->value(), now, format(r.entry->value(), PATTERN, r.entry));
    if (now == r.reported)
        return false;
    settle();
    emit edited(variable);
    return true;
}

void FilasEstado::settle() {
    for (const Variable variable : VARIABLES)
        row(variable).reported = value(variable);
}

// ---- Units and the unknown

void FilasEstado::unit_Click(Variable variable, const QString& from, const QString& to) {
    Row& r = row(variable);
    const double base = r.entry->is_exact() ? r.base : convert(variable, r.entry->value(), from, base_unit(variable));
    const double shown = convert(variable, r.entry->value(), from, to);
    if (variable != Variable::Amount)
        write(variable, shown, base, format(shown, PATTERN, r.entry));
    apply_range(variable);
    describe(variable);
    const bool typed = variable != Variable::Amount && variable != unknown_ && base != r.reported;
    if (typed || variable == Variable::Amount)
        settle();
    emit unit_changed(variable);
    if (typed)
        emit edited(variable);
}

void FilasEstado::choose(Variable variable) {
    set_unknown(variable);
    settle();
    emit unknown_chosen(variable);
}

void FilasEstado::set_unknown(Variable variable) {
    unknown_ = variable;
    for (const Variable each : VARIABLES) {
        const bool unknown = each == variable;
        Row& r = row(each);
        if (auto* marker = qobject_cast<MarcaIncognita*>(r.caption))
            marker->set_unknown(unknown);
        marcar(r.unit, unknown);
        marcar(r.entry, unknown);
        r.entry->setReadOnly(unknown);
        r.spin->setEnabled(!unknown);
        describe(each);
    }
}

void FilasEstado::set_silent(bool silent) {
    for (const Row& r : rows_) {
        r.unit->set_silent(silent);
        if (auto* marker = qobject_cast<MarcaIncognita*>(r.caption))
            marker->set_silent(silent);
    }
}

// ---- Help and events

void FilasEstado::describe(Variable variable) {
    const Row& r = row(variable);
    const bool unknown = variable == unknown_;
    const QString caption = spoken(texto_(names(variable).caption, {}));
    const QString about_unknown = texto_(639, QStringLiteral("Incógnita: se calcula a partir de las otras tres"));
    r.entry->setAccessibleName(caption);
    r.entry->setAccessibleDescription(unknown ? r.unit->unit() + QStringLiteral(". ") + about_unknown : r.unit->unit());
    r.entry->setToolTip(unknown ? texto_(638, QStringLiteral("Se calcula a partir de las otras tres. Para escribir "
                                                             "aquí, haga clic en el nombre de otra variable para "
                                                             "calcular esa."))
                                : QString());
    r.spin->setAccessibleName(caption);
    r.unit->setAccessibleName(texto_(441, QStringLiteral("%1: %2")).arg(caption, r.unit->unit()));
    r.unit->setToolTip(variable == Variable::Amount
                           ? texto_(637, QStringLiteral("Clic: cambiar de unidad; el número queda como está"))
                           : texto_(635, QStringLiteral("Clic: cambiar de unidad")));
    if (variable == Variable::Amount)
        return;
    r.caption->setAccessibleName(caption);
    r.caption->setAccessibleDescription(unknown ? about_unknown : QString());
    r.caption->setToolTip(unknown ? about_unknown : texto_(636, QStringLiteral("Clic: calcular esta variable")));
}

/// All digits of the value, and what the amount is in the other unit.
QString FilasEstado::exact_text(Variable variable) const {
    const Row& r = row(variable);
    if (r.entry->text().isEmpty())
        return {};
    const QString unit = r.unit->unit();
    QString text = plain(r.entry->value()) + u' ' + unit;
    if (const double mass = masa_molar_(); variable == Variable::Amount && mass > 0.0) {
        calculos::SlotTable table;
        table[0].gas.pm = mass;
        const std::string from = unit.toStdString();
        const std::string to(tavo::Global::next_unit(UnitFamily::Amount, from));
        text += QStringLiteral(" = ") + plain(tavo::Global::convertircantidad(r.entry->value(), from, to, table)) +
                u' ' + QString::fromStdString(to);
    }
    return text;
}

void FilasEstado::show_tip(Variable variable, const QPoint& where) const {
    const Row& r = row(variable);
    QStringList lines{exact_text(variable), r.entry->toolTip()};
    lines.removeAll(QString());
    QToolTip::showText(where, lines.join(u'\n'), r.entry);
}

bool FilasEstado::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::ranges::find(rows_, watched, &Row::entry);
    if (found != rows_.end()) {
        const auto variable = VARIABLES[static_cast<std::size_t>(found - rows_.begin())];
        if (event->type() == QEvent::ToolTip) {
            show_tip(variable, static_cast<QHelpEvent*>(event)->globalPos());
            return true;
        }
        const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            const bool announced = commit(variable);
            found->entry->selectAll();  // the next number replaces it
            return announced;
        }
    }
    return QWidget::eventFilter(watched, event);
}

#include "controls/cajas_coeficientes.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <span>
#include <utility>

#include "core/models.h"
#include "core/numtext.h"

namespace {

constexpr int SPACING = 6;
constexpr std::array PATTERNS{"####0.00000", "####0.00000", "####0.000000", "####0.000000"};
constexpr const char* MU_PATTERN = "####0.0000";

QString text_of(std::string_view text) {
    return QString::fromUtf8(text);
}

QString all_digits(double value) {
    return QString::fromStdString(tavo::to_text(value));
}

void keep_place(QWidget* control) {
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}

std::span<const tavo::CoefficientText> texts_of(tavo::EquationOfState model) {
    const tavo::Model* row = tavo::find_model(model);
    return row ? row->texts : std::span<const tavo::CoefficientText>();
}

/// Unit of a coefficient. That of a in model 6 depends on mu, and needs raised type.
QString unit_of(tavo::EquationOfState model, std::size_t i) {
    if (model == tavo::EquationOfState::FreeExponent && i == 0)
        return QStringLiteral("l<sup>µ</sup> atm / mol<sup>µ</sup>");
    return text_of(texts_of(model)[i].unit);
}

}  // namespace

CajasCoeficientes::CajasCoeficientes(Rotulos rotulos, Texto texto, QWidget* padre)
    : QWidget(padre), rotulos_(rotulos), texto_(std::move(texto)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * SPACING);
    grid->setVerticalSpacing(SPACING);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Row& row = rows_[i];
        row = make_row(grid, static_cast<int>(i / 2), static_cast<int>(i % 2), QChar(u'a' + static_cast<char16_t>(i)));
        const auto leave = [this, &row, k = static_cast<int>(i)] {
            if (take_edit(row))
                emit edited(k);
        };
        connect(row.box, &EntradaNumerica::LostFocus, this, leave);
        connect(row.box, &QLineEdit::returnPressed, this, leave);
    }
    mu_row_ = make_row(grid, 1, 0, QStringLiteral("mu"));  // no model has both mu and a third coefficient
    mu_row_.name->setText(QStringLiteral("µ"));
    mu_row_.box->setAccessibleName(QStringLiteral("µ"));
    mu_row_.name->setToolTip(texto_(644, QStringLiteral("Exponente de la atracción")));
    const auto leave_mu = [this] {
        if (take_edit(mu_row_))
            emit mu_edited();
    };
    connect(mu_row_.box, &EntradaNumerica::LostFocus, this, leave_mu);
    connect(mu_row_.box, &QLineEdit::returnPressed, this, leave_mu);
    reserve_widths();
    show_labels();
}

// ---- Layout

CajasCoeficientes::Row CajasCoeficientes::make_row(QGridLayout* grid, int row, int column, const QString& letter) {
    Row made{};
    made.box = new EntradaNumerica(this);
    made.box->setObjectName(QStringLiteral("txt") + letter);
    made.box->setMinimumWidth(made.box->fontMetrics().horizontalAdvance(QStringLiteral("00000.000000")));
    made.box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    keep_place(made.box);
    made.name = make_label(QStringLiteral("lb") + letter);
    made.name->setBuddy(made.box);
    auto* caption = new QHBoxLayout;
    caption->setSpacing(SPACING);
    caption->addWidget(made.name);
    if (rotulos_ == Rotulos::Apart) {
        made.unit = make_label(letter == QStringLiteral("mu") ? QString() : QStringLiteral("lbunit") + letter);
        made.unit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        caption->addWidget(made.unit, 1);
    }
    auto* cell = new QVBoxLayout;
    cell->setSpacing(2);
    cell->addLayout(caption);
    cell->addWidget(made.box);
    grid->addLayout(cell, row, column);
    return made;
}

QLabel* CajasCoeficientes::make_label(const QString& name) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    keep_place(label);
    return label;
}

void CajasCoeficientes::reserve_widths() {
    if (rotulos_ == Rotulos::Apart)
        return;  // shorter than their boxes
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        int widest = 0;
        for (const tavo::Model& model : tavo::models())
            if (i < model.texts.size())
                widest = std::max(widest, fontMetrics().horizontalAdvance(text_of(model.texts[i].label)));
        rows_[i].name->setMinimumWidth(widest);
    }
}

void CajasCoeficientes::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        reserve_widths();
    if (event->type() == QEvent::PaletteChange)
        tint_boxes();
}

// ---- Values

EntradaNumerica* CajasCoeficientes::box(int k) const {
    return rows_.at(static_cast<std::size_t>(k)).box;
}

EntradaNumerica* CajasCoeficientes::mu_box() const {
    return mu_row_.box;
}

CajasCoeficientes::Coefficients CajasCoeficientes::coefficients() const {
    Coefficients values{};
    const std::size_t shown = texts_of(model_).size();
    for (std::size_t i = 0; i < shown; ++i)
        values[i] = value_of(rows_[i]);
    return values;
}

double CajasCoeficientes::value(int k) const {
    return value_of(rows_.at(static_cast<std::size_t>(k)));
}

double CajasCoeficientes::mu() const {
    return value_of(mu_row_);
}

void CajasCoeficientes::show_values(tavo::EquationOfState model, const Coefficients& c, double mu) {
    forget_edits();
    update_values(model, c, mu);
}

void CajasCoeficientes::update_values(tavo::EquationOfState model, const std::optional<Coefficients>& c, double mu) {
    model_ = model;
    show_labels();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (c && i < texts_of(model).size())
            show_value(rows_[i], (*c)[i], PATTERNS[i]);
        else
            show_text(rows_[i], QString(), 0.0);
    }
    show_value(mu_row_, mu, MU_PATTERN);
    show_hints();
}

void CajasCoeficientes::clear() {
    forget_edits();
    for (Row& row : rows_)
        show_text(row, QString(), 0.0);
    show_text(mu_row_, QString(), 0.0);
    show_hints();
}

void CajasCoeficientes::show_labels() {
    const auto texts = texts_of(model_);
    const QString acentric = texto_(643, QStringLiteral("Factor acéntrico"));
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const bool used = i < texts.size();
        set_visible(row, used);
        if (!used)
            continue;
        row.name->setText(text_of(row.unit ? texts[i].name : texts[i].label));
        if (row.unit)
            row.unit->setText(unit_of(model_, i));
        row.name->setToolTip(texts[i].name == "w" ? acentric : QString());
        row.box->setAccessibleName(text_of(texts[i].label));
    }
    set_visible(mu_row_, model_ == tavo::EquationOfState::FreeExponent);
}

void CajasCoeficientes::set_visible(const Row& row, bool visible) {
    row.box->setVisible(visible);
    row.name->setVisible(visible);
    if (row.unit)
        row.unit->setVisible(visible);
}

void CajasCoeficientes::show_value(Row& row, double value, const char* pattern) {
    show_text(row, QString::fromStdString(tavo::Format(value, pattern)), value);
}

void CajasCoeficientes::show_text(Row& row, const QString& text, double value) {
    if (is_edited(row))
        return;
    if (row.box->hasFocus() && text == row.known_text && value == row.known_value)
        return;  // caret and undo stay while somebody types
    row.box->set_exact(value, text);
    row.known_text = row.box->text();  // the box may be too short for it
    row.known_value = value;
    if (row.box->hasFocus())
        row.box->selectAll();
}

// ---- What the user types

bool CajasCoeficientes::is_edited(const Row& row) {
    return row.box->text() != row.known_text;
}

double CajasCoeficientes::value_of(const Row& row) {
    return is_edited(row) ? row.box->value() : row.known_value;
}

bool CajasCoeficientes::take_edit(Row& row) {
    if (!is_edited(row)) {
        row.box->set_exact(row.known_value, row.known_text);  // the same text typed anew stands for the whole value
        return false;
    }
    row.known_text = row.box->text();
    row.known_value = row.box->value();
    return true;
}

void CajasCoeficientes::forget_edits() {
    for (Row* row : {&rows_[0], &rows_[1], &rows_[2], &rows_[3], &mu_row_}) {
        row->known_value = value_of(*row);
        row->known_text = row->box->text();
    }
}

// ---- Looks

void CajasCoeficientes::set_read_only(const std::array<bool, 4>& boxes) {
    for (std::size_t i = 0; i < boxes.size(); ++i)
        rows_[i].box->setReadOnly(boxes[i]);
    tint_boxes();
}

/// A box that cannot be typed into has the colour of the window behind it.
void CajasCoeficientes::tint_boxes() {
    for (const Row& row : rows_) {
        QPalette ink;  // names no other colour: those follow the desktop
        if (row.box->isReadOnly())
            ink.setBrush(QPalette::Base, palette().window());
        row.box->setPalette(ink);
    }
}

void CajasCoeficientes::set_by_hand(bool by_hand) {
    by_hand_ = by_hand;
    for (const Row& row : rows_) {
        QFont font = row.box->font();
        font.setItalic(by_hand);
        row.box->setFont(font);
    }
    show_hints();
}

void CajasCoeficientes::show_hints() {
    const QString warning =
        by_hand_ ? '\n' + texto_(642, QStringLiteral("Coeficientes puestos a mano: no siguen a la temperatura"))
                 : QString();
    for (const Row& row : rows_)
        row.box->setToolTip(row.known_text.isEmpty() ? QString() : all_digits(row.known_value) + warning);
    mu_row_.box->setToolTip(mu_row_.known_text.isEmpty() ? QString() : all_digits(mu_row_.known_value));
}

#include "controls/panel_modelo.h"

#include <QAbstractItemView>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <initializer_list>
#include <span>

#include "core/models.h"
#include "core/numtext.h"

namespace {

constexpr int SPACING = 6;
constexpr int SHORTEST_LIST = 16;  // characters, where the window is too narrow for the whole texts
constexpr std::array PATTERNS{"####0.00000", "####0.00000", "####0.000000", "####0.000000"};
constexpr const char* MU_PATTERN = "####0.0000";

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Chooses nothing when the wheel merely scrolls past it; shows whole texts, though it is narrow.
class ListaModelos final : public QComboBox {
public:
    ListaModelos(const QStringList& models, QWidget* padre) : QComboBox(padre) {
        addItems(models);
        setFocusPolicy(Qt::StrongFocus);
        setMinimumContentsLength(SHORTEST_LIST);
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        view()->setMinimumWidth(view()->sizeHintForColumn(0));
    }

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

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

/// Whether the loader has filled the record or the user its coefficients.
bool has_coefficients(const tavo::EquationSlot& slot) {
    const tavo::GasRecord& gas = slot.gas;
    return slot.parameters || !gas.name.empty() || gas.tc > 0.0 || gas.pm > 0.0;
}

}  // namespace

PanelModelo::PanelModelo(Texto texto, QAbstractItemModel* gases, const QStringList& models, QWidget* padre)
    : QWidget(padre), texto_(std::move(texto)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SPACING);
    make_lists(gases, models);
    imgformula = new ImagenFormula(this);
    imgformula->setObjectName(QStringLiteral("imgformula"));
    column->addWidget(imgformula);
    make_rows();
    show_slot({});
}

// ---- Layout

void PanelModelo::make_lists(QAbstractItemModel* gases, const QStringList& models) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * SPACING);
    grid->setVerticalSpacing(SPACING);
    grid->setColumnStretch(1, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(grid);
    const QString colon = texto_(440, QStringLiteral("%1:"));
    const auto place = [&](const char* name, const QString& caption, const char* list_name, QComboBox* list) {
        auto* label = new QLabel(colon.arg(caption), this);
        label->setObjectName(QLatin1String(name));
        label->setBuddy(list);
        list->setObjectName(QLatin1String(list_name));
        list->setAccessibleName(caption);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        grid->addWidget(label, grid->count() / 2, 0);
        grid->addWidget(list, grid->count() / 2, 1);
        return label;
    };
    cmbgas = new ListaGases(gases, this);
    cmbgas->setMinimumContentsLength(SHORTEST_LIST);
    cmbgas->setToolTip(texto_(555, QStringLiteral("Escriba una parte del nombre para buscar el gas")));
    cmbgas->lineEdit()->setPlaceholderText(texto_(557, QStringLiteral("Elija un gas")));
    cmbecu = new ListaModelos(models, this);
    Label1 = place("Label1", texto_(50, QString()), "cmbgas", cmbgas);
    Label2 = place("Label2", texto_(51, QString()), "cmbecu", cmbecu);
    connect(cmbgas, &QComboBox::currentIndexChanged, this, &PanelModelo::cmbgas_Click);
    connect(cmbecu, &QComboBox::currentIndexChanged, this, &PanelModelo::cmbecu_Click);

    // The list loses its choice while the names are exchanged.
    connect(gases, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        gas_before_reset_ = cmbgas->currentIndex();
        showing_ = true;
    });
    connect(gases, &QAbstractItemModel::modelReset, this, [this] {
        cmbgas->set_silently(gas_before_reset_ < cmbgas->count() ? gas_before_reset_ : -1);
        showing_ = false;
    });
}

void PanelModelo::make_rows() {
    auto* column = static_cast<QVBoxLayout*>(layout());
    auto* header = new QHBoxLayout;
    header->setSpacing(SPACING);
    Label5 = new QLabel(texto_(440, QStringLiteral("%1:")).arg(texto_(54, QString())), this);
    Label5->setObjectName(QStringLiteral("Label5"));
    header->addWidget(Label5, 1);
    column->addLayout(header);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * SPACING);
    grid->setVerticalSpacing(SPACING);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    rows_ = {make_row(grid, 0, 0, "txta", "lba", "lbunita"), make_row(grid, 0, 1, "txtb", "lbb", "lbunitb"),
             make_row(grid, 1, 0, "txtc", "lbc", "lbunitc"), make_row(grid, 1, 1, "txtd", "lbd", "lbunitd")};
    mu_row_ = make_row(grid, 1, 0, "txtmu", "lbmu", nullptr);  // no model has both mu and a third coefficient
    mu_row_.name->setText(QStringLiteral("µ"));
    mu_row_.box->setAccessibleName(QStringLiteral("µ"));
    mu_row_.name->setToolTip(texto_(644, QStringLiteral("Exponente de la atracción")));
    Label5->setBuddy(rows_[0].box);
    for (Row& row : rows_) {
        connect(row.box, &EntradaNumerica::LostFocus, this, [this, &row] { coefficient_LostFocus(row); });
        connect(row.box, &QLineEdit::returnPressed, this, [this, &row] { coefficient_LostFocus(row); });
    }
    connect(mu_row_.box, &EntradaNumerica::LostFocus, this, &PanelModelo::txtmu_LostFocus);
    connect(mu_row_.box, &QLineEdit::returnPressed, this, &PanelModelo::txtmu_LostFocus);

    btautomatico = new QPushButton(texto_(640, QStringLiteral("Automáticos")), this);
    btautomatico->setObjectName(QStringLiteral("btautomatico"));
    btautomatico->setToolTip(texto_(641, QStringLiteral("Volver a los coeficientes del gas")));
    btautomatico->setAutoDefault(true);  // with the focus it takes the return key itself
    keep_place(Label5);
    keep_place(btautomatico);
    header->addWidget(btautomatico);
    connect(btautomatico, &QPushButton::clicked, this, &PanelModelo::btautomatico_Click);
}

PanelModelo::Row PanelModelo::make_row(QGridLayout* grid, int row, int column, const char* box, const char* name,
                                       const char* unit) {
    Row made{};
    made.box = new EntradaNumerica(this);
    made.box->setObjectName(QLatin1String(box));
    made.box->setMinimumWidth(made.box->fontMetrics().horizontalAdvance(QStringLiteral("00000.000000")));
    made.box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    made.name = new QLabel(this);
    made.name->setObjectName(QLatin1String(name));
    made.name->setBuddy(made.box);
    made.unit = new QLabel(this);
    if (unit)
        made.unit->setObjectName(QLatin1String(unit));
    made.unit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* caption = new QHBoxLayout;
    caption->setSpacing(SPACING);
    caption->addWidget(made.name);
    caption->addWidget(made.unit, 1);
    auto* cell = new QVBoxLayout;
    cell->setSpacing(2);
    cell->addLayout(caption);
    cell->addWidget(made.box);
    grid->addLayout(cell, row, column);
    for (QWidget* control : std::initializer_list<QWidget*>{made.box, made.name, made.unit})
        keep_place(control);
    return made;
}

// ---- Slot and controls

std::int16_t PanelModelo::gas() const {
    return static_cast<std::int16_t>(cmbgas->currentIndex() + 1);
}

tavo::EquationOfState PanelModelo::model() const {
    return static_cast<tavo::EquationOfState>(cmbecu->currentIndex());
}

std::array<double, 4> PanelModelo::coefficients() const {
    std::array<double, 4> values{};
    const std::size_t shown = texts_of(model()).size();
    for (std::size_t i = 0; i < shown; ++i)
        values[i] = rows_[i].box->value();
    return values;
}

double PanelModelo::mu() const {
    return mu_row_.box->value();
}

void PanelModelo::show_slot(const tavo::EquationSlot& slot) {
    const QScopedValueRollback writing(showing_, true);
    if (slot.gas_number != shown_gas_ || slot.equation != shown_model_)
        forget_edits();
    shown_gas_ = slot.gas_number;
    shown_model_ = slot.equation;
    if (cmbgas->currentIndex() != slot.gas_number - 1)  // a name that is being typed stays
        cmbgas->set_silently(slot.gas_number - 1);
    cmbecu->setCurrentIndex(static_cast<int>(slot.equation));
    imgformula->set_model(slot.equation);
    show_labels();
    show_by_hand(slot.parameters);
    const std::array values{slot.gas.a, slot.gas.b, slot.gas.c, slot.gas.d};
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (has_coefficients(slot) && i < texts_of(slot.equation).size())
            show_value(rows_[i], values[i], PATTERNS[i]);
        else
            show_text(rows_[i], QString(), 0.0);
    }
    show_value(mu_row_, slot.mu, MU_PATTERN);
    show_hints(slot.parameters);
}

void PanelModelo::show_labels() {
    const auto texts = texts_of(shown_model_);
    const QString acentric = texto_(643, QStringLiteral("Factor acéntrico"));
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const bool used = i < texts.size();
        for (QWidget* control : std::initializer_list<QWidget*>{row.box, row.name, row.unit})
            control->setVisible(used);
        if (!used)
            continue;
        row.name->setText(text_of(texts[i].name));
        row.unit->setText(unit_of(shown_model_, i));
        row.name->setToolTip(texts[i].name == "w" ? acentric : QString());
        row.box->setAccessibleName(text_of(texts[i].label));
    }
    const bool exponent = shown_model_ == tavo::EquationOfState::FreeExponent;
    mu_row_.box->setVisible(exponent);
    mu_row_.name->setVisible(exponent);
    Label5->setVisible(!texts.empty());
    btautomatico->setVisible(!texts.empty());
}

void PanelModelo::show_by_hand(bool by_hand) {
    for (const Row& row : rows_) {
        QFont font = row.box->font();
        font.setItalic(by_hand);
        row.box->setFont(font);
    }
    if (!by_hand && btautomatico->hasFocus())
        rows_[0].box->setFocus();  // a button that is switched off would hand the focus to anything
    btautomatico->setEnabled(by_hand);
}

void PanelModelo::show_hints(bool by_hand) {
    const QString warning =
        by_hand ? '\n' + texto_(642, QStringLiteral("Coeficientes puestos a mano: no siguen a la temperatura"))
                : QString();
    for (const Row& row : rows_)
        row.box->setToolTip(row.known_text.isEmpty() ? QString() : all_digits(row.known_value) + warning);
    mu_row_.box->setToolTip(all_digits(mu_row_.known_value));
}

void PanelModelo::show_value(Row& row, double value, const char* pattern) {
    show_text(row, QString::fromStdString(tavo::Format(value, pattern)), value);
}

void PanelModelo::show_text(Row& row, const QString& text, double value) {
    if (is_edited(row))
        return;
    row.box->set_exact(value, text);
    row.known_text = row.box->text();  // the box may be too short for it
    row.known_value = value;
    if (row.box->hasFocus())
        row.box->selectAll();
}

bool PanelModelo::is_edited(const Row& row) {
    return row.box->text() != row.known_text;
}

bool PanelModelo::take_edit(Row& row) {
    if (!is_edited(row)) {
        row.box->set_exact(row.known_value, row.known_text);  // the same text typed anew stands for the whole value
        return false;
    }
    row.known_text = row.box->text();
    row.known_value = row.box->value();
    return true;
}

void PanelModelo::forget_edits() {
    for (Row& row : rows_)
        row.known_text = row.box->text();
    mu_row_.known_text = mu_row_.box->text();
}

// ---- What the user does

void PanelModelo::cmbgas_Click() {
    if (!showing_)
        emit gas_chosen();
}

void PanelModelo::cmbecu_Click() {
    if (!showing_)
        emit model_chosen();
}

void PanelModelo::coefficient_LostFocus(Row& row) {
    if (take_edit(row))
        emit coefficients_edited();
}

void PanelModelo::txtmu_LostFocus() {
    if (take_edit(mu_row_))
        emit mu_edited();
}

void PanelModelo::btautomatico_Click() {
    forget_edits();
    emit automatic_wanted();
}

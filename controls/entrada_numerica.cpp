#include "controls/entrada_numerica.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QToolButton>
#include <QVBoxLayout>
#include <QValidator>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "core/numtext.h"
#include "core/units.h"

namespace {

constexpr int LONGEST_TEXT = 12;
constexpr int WHEEL_NOTCH = 120;                         // eighths of a degree, times 15
constexpr int REPEAT_DELAY = 350, REPEAT_INTERVAL = 50;  // ms

/// One decimal order below the value's. Downwards a power of ten belongs to the order below, so that 1 goes to 0.99 as
/// 0.99 goes to 1.
double adaptive_increment(double value, bool down) {
    constexpr double ROUNDING = 1e-12;
    const double order = std::log10(value);
    return std::pow(10.0, (down ? std::ceil(order - ROUNDING) - 1.0 : std::floor(order + ROUNDING)) - 1.0);
}

/// Without the noise that a sum of decimal fractions leaves below the ninth digit of the increment.
double tidy(double sum, double increment) {
    const double digits = 1e9 / increment;
    return std::isfinite(sum * digits) ? std::round(sum * digits) / digits : sum;
}

/// Whole numbers only: what a paste, a drop or an input method may put in.
class NumberValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& cursor) const override {
        const QString bare = text.trimmed();
        static const QRegularExpression number(QStringLiteral("^[-+]?[0-9]*\\.?[0-9]*([eE][-+]?[0-9]*)?$"));
        if (!number.match(bare).hasMatch())
            return Invalid;
        if (bare != text) {
            text = bare;
            cursor = std::min(cursor, static_cast<int>(bare.size()));
        }
        return Acceptable;
    }
};

}  // namespace

EntradaNumerica::EntradaNumerica(QWidget* padre) : QLineEdit(padre) {
    setAlignment(Qt::AlignRight);
    setMaxLength(24);
    setValidator(new NumberValidator(this));
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!writing_exact_)
            exact_.reset();
    });
}

double EntradaNumerica::value() const {
    return exact_ ? *exact_ : tavo::Val(text().toStdString());
}

void EntradaNumerica::set_exact(double value, const QString& text) {
    const QScopedValueRollback writing(writing_exact_, true);
    exact_ = value;
    setText(text);
}

void EntradaNumerica::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        return;
    entered_by_click_ = event->reason() == Qt::MouseFocusReason;
    selectAll();
    emit GotFocus();
}

void EntradaNumerica::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const bool elsewhere = event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason &&
                           event->reason() != Qt::MenuBarFocusReason;
    if (elsewhere && isEnabled() && isVisible())  // the user did not leave a box that was taken away
        emit LostFocus();
}

void EntradaNumerica::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            return emit step_wanted(1);
        case Qt::Key_Down:
            return emit step_wanted(-1);
        case Qt::Key_PageUp:
            return emit step_wanted(10);
        case Qt::Key_PageDown:
            return emit step_wanted(-10);
        default:
            break;
    }
    const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QString typed = event->text();
    const bool prints = !typed.isEmpty() && typed.front().isPrint();
    if (prints && !command && swallowed(typed))
        return event->accept();
    QLineEdit::keyPressEvent(event);
}

bool EntradaNumerica::swallowed(const QString& typed) const {
    QString kept = text();
    if (hasSelectedText())
        kept.remove(selectionStart(), selectionLength());  // the key replaces it
    if (signed_ && typed == QStringLiteral("-"))
        return kept.startsWith(u'-') || (hasSelectedText() ? selectionStart() : cursorPosition()) > 0;
    auto code = static_cast<std::int16_t>(typed.front().unicode() < 128 ? typed.front().unicode() : 127);
    tavo::Global::teclanumerica(LONGEST_TEXT, code, kept.toStdString());
    return code == 0;
}

void EntradaNumerica::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (entered_by_click_)
        selectAll();  // the click that enters the box would put the cursor and lose the selection
    entered_by_click_ = false;
}

void EntradaNumerica::wheelEvent(QWheelEvent* event) {
    if (!hasFocus())
        return event->ignore();
    const int notches = event->angleDelta().y() / WHEEL_NOTCH;
    if (notches != 0)
        emit step_wanted(notches);
    event->accept();
}

UpDown::UpDown(QWidget* padre) : QWidget(padre) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(make_button(Qt::UpArrow, 1));
    column->addWidget(make_button(Qt::DownArrow, -1));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QToolButton* UpDown::make_button(Qt::ArrowType arrow, int steps) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setAutoRepeatDelay(REPEAT_DELAY);
    button->setAutoRepeatInterval(REPEAT_INTERVAL);
    button->setFocusPolicy(Qt::NoFocus);  // the entry's arrow keys do the same
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    button->setAccessibleName(arrow == Qt::UpArrow ? QStringLiteral("+") : QStringLiteral("-"));
    connect(button, &QToolButton::clicked, this, [this, steps] { step(steps); });
    return button;
}

void UpDown::bind(EntradaNumerica* entry) {
    entry_ = entry;
    connect(entry, &EntradaNumerica::step_wanted, this, &UpDown::step);
}

void UpDown::set_range(double minimum, double maximum) {
    minimum_ = minimum;
    maximum_ = maximum;
}

void UpDown::step(int steps) {
    if (!entry_ || !isEnabled() || steps == 0)
        return;
    const double value = entry_->value();
    const double wanted = std::clamp(stepped(value, steps), std::min(minimum_, value), std::max(maximum_, value));
    entry_->setText(QString::fromStdString(tavo::to_text(wanted)));
    emit Change();
    entry_->selectAll();
}

double UpDown::stepped(double value, int steps) const {
    if (!adaptive_)
        return tidy(value + steps * increment_, increment_);
    const bool down = steps < 0;
    for (int i = 0; i < std::abs(steps); ++i) {
        if (value <= 0.0)
            return down ? value : increment_;
        const double increment = adaptive_increment(value, down);
        value = tidy(down ? value - increment : value + increment, increment);
    }
    return value;
}

bool UpDown::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)  // the box gets the release of the mouse button
        for (auto* button : findChildren<QToolButton*>())
            button->setDown(false);
    return QWidget::event(event);
}

QSize UpDown::sizeHint() const {
    const int height = entry_ ? entry_->sizeHint().height() : 24;
    return {std::max(18, height * 3 / 4), height};
}

void UpDown::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() / WHEEL_NOTCH;
    if (notches != 0)
        step(notches);
    event->accept();
}

#include "controls/entrada_numerica.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>
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
constexpr int WHEEL_NOTCH = 120;  // eighths of a degree, times 15

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
}

double EntradaNumerica::value() const {
    return tavo::Val(text().toStdString());
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
    if (!entry_ || !isEnabled())
        return;
    const double wanted = std::clamp(entry_->value() + steps * increment_, minimum_, maximum_);
    constexpr double DIGITS = 1e6;  // sums of decimal fractions stay short
    entry_->setText(QString::fromStdString(tavo::to_text(std::round(wanted * DIGITS) / DIGITS)));
    emit Change();
    entry_->selectAll();
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

#pragma once
// An entry for one non-negative number, and the pair of buttons that steps it.

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

#include <optional>

class QToolButton;

/// Typing goes through the program's numeric key filter; a pasted text is taken when it is a number as a whole (blanks
/// around it are dropped, a sign is kept) and refused with `inputRejected` otherwise. Entering the box selects its
/// text.
class EntradaNumerica : public QLineEdit {
    Q_OBJECT
public:
    explicit EntradaNumerica(QWidget* padre = nullptr);

    double value() const;
    /// Text of a value that it shows rounded: value() gives the whole value until the text changes.
    void set_exact(double value, const QString& text);
    bool is_exact() const { return exact_.has_value(); }
    /// A minus sign can be typed in front.
    void set_signed(bool allowed) { signed_ = allowed; }

signals:
    void GotFocus();
    /// The user went elsewhere in the window; not when another window or a menu comes in between.
    void LostFocus();
    /// Arrow keys and the wheel (1, -1), page keys (10, -10).
    void step_wanted(int steps);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool swallowed(const QString& typed) const;

    std::optional<double> exact_;
    bool writing_exact_ = false;
    bool signed_ = false;
    bool entered_by_click_ = false;
};

/// Two buttons, one above the other, bound to an entry: each step changes the entry's text by the increment, inside the
/// range, and is announced by Change. A value outside the range is not pulled into it, it only cannot go further out.
/// A button held down repeats, and lets go when a box opens over the window.
class UpDown : public QWidget {
    Q_OBJECT
public:
    explicit UpDown(QWidget* padre = nullptr);

    void bind(EntradaNumerica* entry);
    void set_range(double minimum, double maximum);
    double minimum() const { return minimum_; }
    double maximum() const { return maximum_; }
    void set_increment(double increment) {
        increment_ = increment;
        adaptive_ = false;
    }
    /// Steps of one decimal order below the value's (6.146 by 0.1, 101325 by 10000): the range can be wide, and going
    /// down never reaches 0.
    void set_adaptive() { adaptive_ = true; }
    void step(int steps);

    QSize sizeHint() const override;

signals:
    void Change();

protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QToolButton* make_button(Qt::ArrowType arrow, int steps);
    double stepped(double value, int steps) const;

    QPointer<EntradaNumerica> entry_;
    double minimum_ = 0.0, maximum_ = 100.0, increment_ = 1.0;
    bool adaptive_ = false;
};

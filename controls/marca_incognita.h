#pragma once
// The caption of a variable that makes it the unknown on a click.

#include <QLabel>

/// Colour of the unknown: caption, unit and entry (index 12 of the 16-colour palette).
QColor color_incognita();
/// Colours a caption, unit or entry as the unknown, or with the palette's own ink again.
void marcar(QWidget* control, bool incognita);

/// Its mnemonic leads to the buddy; space and return on the caption itself choose it, as a click does. Bold while it is
/// the unknown.
class MarcaIncognita : public QLabel {
    Q_OBJECT
public:
    explicit MarcaIncognita(QWidget* padre = nullptr);

    void set_unknown(bool unknown);
    bool is_unknown() const { return unknown_; }
    /// Neither answers to a click nor looks as if it did.
    void set_silent(bool silent);

    QSize sizeHint() const override;  // room for the bold text: nothing moves
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void Click();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void show_look();
    void choose();

    bool unknown_ = false;
    bool silent_ = false;
};

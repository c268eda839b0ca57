#pragma once
// The label of a unit, which steps through its family on a click.

#include <QLabel>

#include "core/units.h"

/// Reached by the keyboard too: space, return and down step on, up steps back. Looks clickable: a hand, underlined
/// under the pointer and with the focus.
class EtiquetaUnidad : public QLabel {
    Q_OBJECT
public:
    explicit EtiquetaUnidad(tavo::Global::UnitFamily family, QWidget* padre = nullptr);

    QString unit() const { return text(); }
    void set_unit(const QString& unit);  // without a signal
    /// Neither steps nor looks as if it did.
    void set_silent(bool silent);

    QSize sizeHint() const override;  // as wide as the family's widest label: nothing moves on a click
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void Click(const QString& from, const QString& to);  // text() is `to` already

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void step(int steps);
    void underline();

    tavo::Global::UnitFamily family_;
    bool silent_ = false;
};

#pragma once
// The list of gases: a drop-down list that is searched by typing any part of a name.

#include <QComboBox>

/// Shares its model with the other lists, so a long database costs nothing per list. What is typed and names no gas is
/// undone when the list is left. The tool tip of the chosen gas stands before the list's own.
class ListaGases : public QComboBox {
    Q_OBJECT
public:
    explicit ListaGases(QAbstractItemModel* names, QWidget* padre = nullptr);

    /// Chooses without the signals of a choice.
    void set_silently(int index);

protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void settle();  // the text belongs to the chosen gas again
    void make_completer();
};

#pragma once
// A box for words above a list: says what belongs into it, and hands the arrow keys to the list.

#include <QLineEdit>

class QAbstractItemView;

class CajaFiltro final : public QLineEdit {
    Q_OBJECT
public:
    /// The prompt is also the spoken name.
    explicit CajaFiltro(const QString& prompt, QWidget* padre = nullptr);

    /// Arrow keys up and down, and page keys, go to this list.
    void set_lista(QAbstractItemView* lista) { lista_ = lista; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QAbstractItemView* lista_ = nullptr;
};

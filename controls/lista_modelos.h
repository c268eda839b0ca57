#pragma once
// The list of models.

#include <QComboBox>
#include <QStringList>

/// Chooses nothing when the wheel merely scrolls past it; shows whole texts, though it is narrow.
class ListaModelos final : public QComboBox {
    Q_OBJECT
public:
    ListaModelos(const QStringList& models, QWidget* padre);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

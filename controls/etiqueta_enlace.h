#pragma once
// A text that answers to a click as a link does: with a hand, underlined, reached by the Tab key.

#include <QLabel>

class EtiquetaEnlace final : public QLabel {
    Q_OBJECT
public:
    explicit EtiquetaEnlace(const QString& text, QWidget* padre = nullptr);

signals:
    void Click();

protected:
    bool event(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void show_look();
};

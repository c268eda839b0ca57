#pragma once
// Where child windows live: opens them seen whole, cascades them, and remembers their places for the run.

#include <QHash>
#include <QMdiArea>
#include <QRect>

class AreaVentanas final : public QMdiArea {
    Q_OBJECT
public:
    explicit AreaVentanas(QWidget* parent = nullptr);

    /// Brings a window forward: a child inside the area, or a QDialog in front of it.
    void mostrar(QWidget* ventana);

signals:
    /// The last child has gone, or the first one has come.
    void ocupada_changed(bool ocupada);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void mostrar_dialogo(QWidget* dialogo);
    QMdiSubWindow* sub_ventana_de(QWidget* ventana) const;
    QMdiSubWindow* alojar(QWidget* ventana);
    QRect lugar_nuevo(const QSize& size, const QSize& minimum) const;

    struct Lugar {
        QRect geometry;
        bool maximised = false;
    };
    // Hears of frames that go: the area itself lets go of a frame's signals before the frame is gone, and must not hear
    // of those that go with it.
    QObject oyente_;
    QHash<QString, Lugar> lugares_;  // by window name, taken when a window closes
};

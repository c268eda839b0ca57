#pragma once
// What the main window shows while no child window is open: large links that run the same actions as the menus.

#include <QAbstractButton>
#include <QWidget>

class QAction;
class QLabel;
class QVBoxLayout;

/// A link of two lines, title and explanation, beside an icon. It runs its action and is enabled as the action is.
class Enlace final : public QAbstractButton {
    Q_OBJECT
public:
    Enlace(QAction* action, QWidget* parent);

    void set_textos(const QString& title, const QString& explanation);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QFont title_font() const;

    QString explanation_;
};

class PrimerosPasos final : public QWidget {
    Q_OBJECT
public:
    explicit PrimerosPasos(QWidget* parent = nullptr);

    void set_encabezados(const QString& line_under_name, const QString& heading);
    Enlace* add_enlace(QAction* action);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* cabecera_;  // sign and name: left out where the links need the room
    QLabel* linea_;
    QLabel* encabezado_;
    QVBoxLayout* enlaces_;
};

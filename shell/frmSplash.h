#pragma once
// The window that greets while the program gets ready: a sheet with isotherms, the name and the credits.

#include <QWidget>

class ApplicationState;
class QFrame;
class QLabel;
class QTimer;

class frmSplash final : public QWidget {
    Q_OBJECT
public:
    /// Sets the captions from the loaded language table and starts Timer1.
    explicit frmSplash(const ApplicationState& estado, QWidget* parent = nullptr);

signals:
    /// Once, after five ticks, a click or a key; the window has been hidden.
    void terminado();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Timer1_Timer();
    void fraMainFrame_Click();
    void terminar();
    void poner_captions(const ApplicationState& estado);
    void colocar();
    QLabel* etiqueta(const char* name, double size, const QColor& ink, bool bold = false);

    QTimer* Timer1;
    int ticks_ = 0;
    bool ended_ = false;
    QFrame* fraMainFrame;
    QWidget* Image1;  // the drawing
    QLabel* Image2;   // the program's icon
    QLabel* lblCompanyProduct;
    QLabel* lblProductName;
    QLabel* lblProductDescription;
    QLabel* lblPlatform;
    QLabel* lblWarning;
    QLabel* lblVersion;
    QLabel* Label1;
    QLabel* Label2;
};

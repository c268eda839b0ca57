#pragma once
// The pages of a document before they are printed.

#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

#include <functional>

#include "controls/elegir_archivo.h"
#include "controls/elegir_impresora.h"
#include "controls/impresora.h"
#include "controls/papel.h"
#include "controls/texto.h"
#include "shell/mensajes.h"

class QHBoxLayout;

class VistaPrevia : public QDialog {
    Q_OBJECT
public:
    /// What the window asks for help; referred to, so it outlives the window.
    struct Ayudantes {
        Mensajes& mensajes;
        ElegirArchivo& archivos;
        ElegirImpresora& impresoras;
        Texto texto;
    };

    VistaPrevia(Documento documento, Ayudantes ayudantes, QWidget* padre = nullptr);
    ~VistaPrevia() override;

    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Final { Hecho, Cancelado, Fallado };
    struct Trabajo {
        Final final;
        int paginas;  // drawn
    };

    void btimprimir_Click();
    void btpdf_Click();
    void btvertical_Click();
    void bthorizontal_Click();
    void btancho_Click();
    void btpagina_Click();
    void btampliar_Click();
    void btreducir_Click();
    void btanterior_Click();
    void btsiguiente_Click();
    void vista_Change();

    QWidget* crear_herramientas();
    QWidget* crear_pie();
    QToolButton* boton(QHBoxLayout* row, const char* name, const char* icon, const QString& text,
                       const QList<QKeySequence>& keys, void (VistaPrevia::*handler)());
    void tecla(const QKeySequence& key, std::function<void()> action);
    void ir_a(int pagina);
    void escalar(double factor);
    void fondo();
    void mostrar_estado(const QString& text);
    Trabajo componer(Papel& papel, int total);

    Documento documento_;
    Ayudantes ayudantes_;
    Papel papel_;
    QPrintPreviewWidget* vista;
    QToolButton *btimprimir, *btpdf, *btvertical, *bthorizontal, *btancho, *btpagina, *btampliar, *btreducir,
        *btanterior, *btsiguiente;
    QSpinBox* txtpagina;
    QLabel* lbestado;
    QPushButton* btcerrar;
    QString estado_;
};

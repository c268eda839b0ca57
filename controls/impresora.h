#pragma once
// The one door to paper. The program shows a preview, from which one prints or saves a PDF; tests answer.

#include <QString>

#include <functional>

class QPrinter;
class QWidget;

/// What can be printed: `pintar` draws its pages with a painter on the printer, whose page it may ask for. It draws
/// pages fromPage() to toPage() where the printer names any (0: all), and stops where newPage() fails.
struct Documento {
    QString titulo;  // of the preview and the print job
    std::function<void(QPrinter& printer)> pintar;
    bool apaisado = false;  // landscape to begin with
};

class Impresora {
public:
    virtual ~Impresora() = default;
    /// A4 with margins of 20 mm, unless the user chooses otherwise. Returns when the user is done.
    virtual void imprimir(QWidget* padre, const Documento& documento) = 0;
};

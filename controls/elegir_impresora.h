#pragma once
// The system's printers. The program shows the system's dialog; tests answer.

class QPrinter;
class QWidget;

class ElegirImpresora {
public:
    virtual ~ElegirImpresora() = default;
    /// Whether any printer is installed.
    virtual bool hay() = 0;
    /// Sets printer, pages and copies as the user wishes, `pagina` being the page in view; false when the user gave up.
    virtual bool elegir(QWidget* padre, QPrinter& printer, int pagina) = 0;
};

class ElegirImpresoraQt final : public ElegirImpresora {
public:
    bool hay() override;
    bool elegir(QWidget* padre, QPrinter& printer, int pagina) override;
};

#pragma once
// The one door to file choosers. The program shows the system's dialog; tests answer.

#include <QString>

class QWidget;

class ElegirArchivo {
public:
    virtual ~ElegirArchivo() = default;
    /// Where to save; empty when the user gave up. `filters` as for QFileDialog ("PNG (*.png);;SVG (*.svg)").
    virtual QString guardar(QWidget* padre, const QString& titulo, const QString& propuesta,
                            const QString& filtros) = 0;
};

/// Adds the ending of the chosen filter to a name without one.
class ElegirArchivoQt final : public ElegirArchivo {
public:
    QString guardar(QWidget* padre, const QString& titulo, const QString& propuesta, const QString& filtros) override;
};

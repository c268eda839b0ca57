#pragma once
// The sheet `frmescala` with its five thermometers.

#include <QLabel>

#include <array>

#include "controls/hoja.h"
#include "controls/indicador.h"
#include "controls/texto.h"
#include "windows/reference/termometria.h"

/// Thermometers pct(0) to pct(4) side by side, titles txttit(i) above them, the ends of their scales lbt(i) and lbt0(i)
/// beside them; the same height is the same temperature. Marks run across where there is room to name them.
class MarcoEscalas : public Hoja {
    Q_OBJECT
public:
    MarcoEscalas(const Texto& texto, const std::array<QString, termometria::SCALES>& titles, QWidget* padre = nullptr);

    Indicador* pct(int i) const { return pct_.at(static_cast<std::size_t>(i)); }
    /// Where a thermometer stands with its scale, top to bottom of the sheet.
    QRectF column(int i) const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

signals:
    void arranged();

protected:
    void arrange() override;
    void draw_still(QPainter& painter) const override;
    void draw_over(QPainter& painter) const override;

private:
    void make_thermometer(int i, const QString& title);
    void draw_marks(QPainter& painter) const;
    double narrowest_column() const;
    double names_width() const;

    std::array<Indicador*, termometria::SCALES> pct_{};
    std::array<QLabel*, termometria::SCALES> txttit{}, lbt{}, lbt0{};
    std::array<int, termometria::SCALES> beyond_{};  // Indicador::side() as drawn
    std::array<QString, termometria::MARKS.size()> names_;
    double names_room_ = 0.0;  // of the marks, at the left; 0: they are not drawn
};

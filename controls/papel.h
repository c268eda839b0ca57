#pragma once
// A printer that counts its pages and can be stopped between two of them.

#include <QPrinter>

#include <functional>
#include <utility>

class Papel : public QPrinter {
public:
    /// A4 with margins of 20 mm.
    explicit Papel(QPageLayout::Orientation orientation) : QPrinter(HighResolution) {
        setPageLayout({QPageSize(QPageSize::A4), orientation, QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter});
    }

    /// Asked before each page but the first, with the number of those that are drawn; false ends the job there.
    std::function<bool(int paginas)> al_pasar_pagina;

    bool newPage() override {
        if (al_pasar_pagina && !al_pasar_pagina(++paginas_))
            return false;
        return QPrinter::newPage();
    }

private:
    int paginas_ = 0;
};

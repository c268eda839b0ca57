#pragma once
// A scene as a picture in a file or on paper.

#include <QFont>
#include <QImage>
#include <QSize>
#include <QString>

#include "windows/plots/graficos.h"
#include "windows/plots/plot_request.h"

class ApplicationState;
class QPrinter;

namespace graficos {

/// A scene and what is written on it.
struct Picture {
    Escena escena;
    QString v_title, p_title;
    QString title;  // for the document's properties
};

/// At a device pixel ratio.
QImage image(const Picture& picture, QSize size, double ratio = 1.0);

/// Writes PNG, SVG or PDF by the ending of the name. Throws tavo::Error with a sentence that names the file: another
/// ending, or a file that cannot be written.
void save(const Picture& picture, const QString& file, QSize size);

/// On one page, as large as it allows, below the title; nothing where the printer cannot be begun.
void print(const Picture& picture, QPrinter& printer);

/// The plot that a command line asks for, with the texts of the active language. Throws tavo::Error.
void draw(const PlotArguments& arguments, ApplicationState& estado);

/// Legend texts of the five rows.
std::array<std::string, 5> descriptions(ApplicationState& estado);

}  // namespace graficos

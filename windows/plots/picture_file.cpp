#include "windows/plots/picture_file.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSvgGenerator>

#include <algorithm>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/gas_listing.h"
#include "shell/application_state.h"
#include "shell/textos.h"
#include "windows/plots/pintar.h"

namespace graficos {

namespace {

constexpr double PIXELS_PER_INCH = 96.0;
constexpr int PDF_RESOLUTION = 1200;
constexpr double PRINTED_LENGTH = 1100.0;  // pixels along the longer side of a page

QFont picture_font(int pixels = 14) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixels);
    return font;
}

void paint(QPainter& painter, const Picture& picture, QSize size) {
    painter.setFont(picture_font());
    pintar(painter, QRectF(QPointF(0, 0), QSizeF(size)), picture.escena, picture.v_title, picture.p_title);
}

[[noreturn]] void refuse(const QString& file) {
    throw tavo::Error("picture \"" + file.toStdString() + "\" cannot be written");
}

void save_png(const Picture& picture, const QString& file, QSize size) {
    if (!image(picture, size).save(file, "PNG"))
        refuse(file);
}

void save_svg(const Picture& picture, const QString& file, QSize size) {
    QFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        refuse(file);
    QSvgGenerator generator;
    generator.setOutputDevice(&output);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setResolution(static_cast<int>(PIXELS_PER_INCH));
    generator.setTitle(picture.title);
    QPainter painter;
    if (!painter.begin(&generator))
        refuse(file);
    paint(painter, picture, size);
    if (!painter.end() || !output.flush())
        refuse(file);
}

void save_pdf(const Picture& picture, const QString& file, QSize size) {
    QFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        refuse(file);
    QPdfWriter writer(&output);
    writer.setResolution(PDF_RESOLUTION);
    writer.setTitle(picture.title);
    writer.setCreator(QGuiApplication::applicationDisplayName());
    const double points = 72.0 / PIXELS_PER_INCH;
    writer.setPageSize(QPageSize(QSizeF(size) * points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer))
        refuse(file);
    painter.scale(PDF_RESOLUTION / PIXELS_PER_INCH, PDF_RESOLUTION / PIXELS_PER_INCH);
    paint(painter, picture, size);
    if (!painter.end() || !output.flush())
        refuse(file);
}

}  // namespace

QImage image(const Picture& picture, QSize size, double ratio) {
    QImage result((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
    result.setDevicePixelRatio(ratio);
    QPainter painter(&result);
    paint(painter, picture, size);
    return result;
}

void save(const Picture& picture, const QString& file, QSize size) {
    const auto format = picture_format(file.toStdString());
    if (!format)
        throw tavo::InvalidArgument("picture \"" + file.toStdString() + "\" does not end in .png, .svg or .pdf");
    switch (*format) {
        case PictureFormat::Png:
            return save_png(picture, file, size);
        case PictureFormat::Svg:
            return save_svg(picture, file, size);
        case PictureFormat::Pdf:
            return save_pdf(picture, file, size);
    }
}

std::array<std::string, 5> descriptions(ApplicationState& estado) {
    const QStringList names = nombres_modelos(estado);
    std::array<std::string, 5> result;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const tavo::EquationSlot& slot = estado.slot_table()[static_cast<int>(i) + 1];
        result[i] = describe(slot, names.value(static_cast<int>(slot.equation)).toStdString());
    }
    return result;
}

void print(const Picture& picture, QPrinter& printer) {
    constexpr int TITLE_SIZE = 18;
    constexpr double TITLE_GAP = 12.0;
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    // Drawn in the pixels of a picture, of which the page is as wide as a saved one.
    const QSizeF paper = printer.pageRect(QPrinter::DevicePixel).size();
    const double scale = std::max(paper.width(), paper.height()) / PRINTED_LENGTH;
    painter.scale(scale, scale);
    QRectF page(QPointF(), paper / scale);
    painter.setFont(picture_font(TITLE_SIZE));
    QRectF used;
    painter.drawText(page, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, picture.title, &used);
    page.setTop(used.bottom() + TITLE_GAP);
    // An upright page keeps the sheet's shape: a plot twice as high as wide misleads the eye.
    page.setHeight(std::min(page.height(), page.width()));
    painter.setFont(picture_font());
    pintar(painter, page, picture.escena, picture.v_title, picture.p_title);
}

void draw(const PlotArguments& arguments, ApplicationState& estado) {
    const tavo::confreg::Text& data = estado.data();
    const auto names = tavo::Global::list_gases(data).names;
    std::vector<std::string> model_names;
    for (const QString& name : nombres_modelos(estado))
        model_names.push_back(name.toStdString());
    const PlotRequest request = parse_plot_request(arguments, names, model_names);
    tavo::SlotTable& table = estado.slot_table();
    fill_slots(request, table);
    for (int i = 1; i <= static_cast<int>(request.rows.size()); ++i)
        tavo::Global::load_slot(data, table[i], true);

    const PlotRange range = range_of(request, table);
    if (const RangeFault fault = check(range); fault != RangeFault::None)
        throw tavo::InvalidArgument(estado.texto(static_cast<int>(fault)).toStdString());
    const QString v_title = estado.texto(408, QStringLiteral("V (l)"));
    const QString p_title = estado.texto(409, QStringLiteral("P (atm.)"));
    save({scene(table, range, descriptions(estado)), v_title, p_title, QStringLiteral("TAVO-GAS")},
         QString::fromStdString(request.file), {request.width, request.height});
}

}  // namespace graficos

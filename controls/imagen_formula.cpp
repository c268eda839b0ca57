#include "controls/imagen_formula.h"

#include <QFontInfo>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

#include "core/models.h"

namespace {

constexpr double TYPE_SIZE = 10.0;                    // of the pictures, in their own units
constexpr double LEAST_TYPE = 1.0, USUAL_TYPE = 1.3;  // of the type shown, in sizes of the window's font
constexpr double MARGIN = 8.0;

QString file_of(int model) {
    return QStringLiteral(":/formulas/%1.svg").arg(model);
}

/// Width of the widest picture and height of the tallest: with them all ten have one size of type.
QSizeF largest_picture() {
    static const QSizeF largest = [] {
        QSizeF all;
        for (int model = 0; model < static_cast<int>(tavo::models().size()); ++model)
            all = all.expandedTo(QSvgRenderer(file_of(model)).viewBoxF().size());
        return all;
    }();
    return largest;
}

/// Pixels per unit of the pictures for a type of so many sizes of the font.
double scale_of(const QFont& font, double type) {
    return QFontInfo(font).pixelSize() * type / TYPE_SIZE;
}

QSize size_of(const QFont& font, double type) {
    const QSizeF picture = largest_picture() * scale_of(font, type) + QSizeF(2.0 * MARGIN, 2.0 * MARGIN);
    return {static_cast<int>(std::ceil(picture.width())), static_cast<int>(std::ceil(picture.height()))};
}

/// The nearest coordinate that is the middle of a device pixel.
double pixel_middle(double y, double ratio) {
    return (std::floor(y * ratio) + 0.5) / ratio;
}

}  // namespace

ImagenFormula::ImagenFormula(QWidget* padre) : QWidget(padre) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    set_model(model_);
}

ImagenFormula::~ImagenFormula() = default;

void ImagenFormula::set_model(tavo::EquationOfState model) {
    if (picture_ && model == model_)
        return;
    const tavo::Model* row = tavo::find_model(model);
    const std::string_view formula = row ? row->formula : std::string_view();
    const QString text = QString::fromUtf8(formula);
    model_ = model;
    picture_ = std::make_unique<QSvgRenderer>(file_of(static_cast<int>(model)));
    setAccessibleName(text);
    setToolTip(text);
    update();
}

QSize ImagenFormula::sizeHint() const {
    return size_of(font(), USUAL_TYPE);
}

QSize ImagenFormula::minimumSizeHint() const {
    return {size_of(font(), LEAST_TYPE).width(), size_of(font(), USUAL_TYPE).height()};
}

void ImagenFormula::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(192, 192, 192), 1.0));
    painter.setBrush(Qt::white);
    const QRectF sheet = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(sheet, 3.0, 3.0);

    const QRectF own = picture_->viewBoxF();
    const double scale = std::min(scale_of(font(), USUAL_TYPE), (width() - 2.0 * MARGIN) / largest_picture().width());
    if (!picture_->isValid() || scale <= 0.0)
        return;
    QRectF place(QPointF(MARGIN, 0.0), own.size() * scale);
    const double middle = sheet.center().y();
    const double bar = (picture_->boundsOnElement(QStringLiteral("bar")).center().y() - own.top()) * scale;
    // One line: all models have their fraction bars at the same height. Two: the picture in the middle.
    const bool one_line = place.height() < height() / 2.0;
    const double bar_at = one_line ? middle : middle - place.height() / 2.0 + bar;
    // A bar is thinner than a pixel: on the middle of one it is a sharp line.
    place.moveTop(pixel_middle(bar_at, devicePixelRatioF()) - bar);
    picture_->render(&painter, place);
}

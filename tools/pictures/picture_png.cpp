#include "tools/pictures/picture_png.h"

#include <QBuffer>
#include <QHash>
#include <QImageWriter>

#include <map>
#include <stdexcept>

namespace {

constexpr std::size_t MOST_COLOURS = 256;

/// The colour with its channels rounded to so many bits; black and white stay.
QRgb rounded(QRgb colour, int bits) {
    const int steps = (1 << bits) - 1;
    const auto round = [steps](int channel) { return (channel * steps + 127) / 255 * 255 / steps; };
    return qRgb(round(qRed(colour)), round(qGreen(colour)), round(qBlue(colour)));
}

/// Every colour of the picture, with a place for its number.
QHash<QRgb, int> colours_of(const QImage& image) {
    QHash<QRgb, int> colours;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (x == 0 || line[x] != line[x - 1])
                colours.insert(line[x], 0);
    }
    return colours;
}

/// Numbers the colours, those that are rounded to the same one alike. The table of the numbers.
QList<QRgb> number_colours(QHash<QRgb, int>& colours) {
    for (int bits = 8;; --bits) {
        std::map<QRgb, int> numbers;  // in an order that is the same in every run
        for (auto c = colours.keyBegin(); c != colours.keyEnd(); ++c)
            numbers.emplace(rounded(*c, bits), 0);
        if (numbers.size() > MOST_COLOURS)
            continue;
        QList<QRgb> table;
        for (auto& [colour, number] : numbers) {
            number = static_cast<int>(table.size());
            table.append(colour);
        }
        for (auto c = colours.begin(); c != colours.end(); ++c)
            c.value() = numbers.at(rounded(c.key(), bits));
        return table;
    }
}

}  // namespace

QImage with_few_colours(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> numbers = colours_of(plain);
    QImage result(plain.size(), QImage::Format_Indexed8);
    result.setColorTable(number_colours(numbers));
    for (int y = 0; y < plain.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        uchar* to = result.scanLine(y);
        for (int x = 0; x < plain.width(); ++x)
            to[x] = x > 0 && from[x] == from[x - 1] ? to[x - 1] : static_cast<uchar>(numbers.value(from[x]));
    }
    return result;
}

QByteArray png_of(const QImage& image) {
    constexpr double DOTS_PER_METRE = 96 * PIXEL_RATIO / 0.0254;
    QImage picture = with_few_colours(image);
    picture.setDotsPerMeterX(qRound(DOTS_PER_METRE));
    picture.setDotsPerMeterY(qRound(DOTS_PER_METRE));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(100);
    if (!writer.write(picture))
        throw std::runtime_error(("a picture cannot be written: " + writer.errorString()).toStdString());
    return bytes;
}

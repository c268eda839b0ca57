#pragma once
// Pictures for the help's pages: small PNG files that state their resolution.

#include <QByteArray>
#include <QImage>

/// Device pixels for each pixel of the screen that a picture is shown on.
inline constexpr int PIXEL_RATIO = 2;

/// The picture with at most 256 colours, as near to its own as they allow: exact where it has no more.
QImage with_few_colours(const QImage& image);
/// PNG file of the picture, which says 192 dots an inch.
QByteArray png_of(const QImage& image);

// Pictures as the bytes of a PNG file.
#pragma once

#include <QByteArray>
#include <QImage>

namespace torvane::toolkit {

/// The PNG of an opaque picture (Format_RGB32). A picture of few colours, as plots are, becomes one
/// with a palette: the same pixels in a third of the time and the bytes. Empty where it cannot be
/// made.
[[nodiscard]] QByteArray PngOf(const QImage& picture);

/// The picture with a palette, pixel for pixel; null where it has more than 256 colours.
[[nodiscard]] QImage WithPalette(const QImage& picture);

}  // namespace torvane::toolkit

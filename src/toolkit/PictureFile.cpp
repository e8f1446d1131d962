#include "toolkit/PictureFile.h"

#include <QBuffer>
#include <QImageWriter>
#include <algorithm>
#include <array>

namespace torvane::toolkit {

namespace {

constexpr int MostColours = 256;

/// Of zlib, 0 to 9 in steps of 11: a plot is lines on one ground, and more effort hardly makes it
/// smaller.
constexpr int Compression = 22;

/// Colours in the order in which they are met. There are a few only.
class Palette {
 public:
  /// The index of a colour; MostColours where there is no room for it.
  int IndexOf(QRgb colour) {
    const auto end = colours_.begin() + count_;
    const auto index =
        static_cast<int>(std::find(colours_.begin(), end, colour) - colours_.begin());
    if (index == count_ && count_ < MostColours) {
      colours_[static_cast<std::size_t>(count_++)] = colour;
    }
    return index;
  }
  [[nodiscard]] QList<QRgb> Colours() const {
    return {colours_.begin(), colours_.begin() + count_};
  }

 private:
  std::array<QRgb, MostColours> colours_{};
  int count_ = 0;
};

}  // namespace

QImage WithPalette(const QImage& picture) {
  if (picture.format() != QImage::Format_RGB32) return {};
  QImage indexed(picture.size(), QImage::Format_Indexed8);
  Palette palette;
  // Neighbouring pixels are mostly alike.
  QRgb last = 0;
  int index = 0;
  const int width = picture.width();
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const from = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    uchar* const to = indexed.scanLine(y);
    for (int x = 0; x < width; ++x) {
      const QRgb colour = from[x] | 0xFF000000U;
      if (colour != last) {
        last = colour;
        index = palette.IndexOf(colour);
        if (index >= MostColours) return {};
      }
      to[x] = static_cast<uchar>(index);
    }
  }
  indexed.setColorTable(palette.Colours());
  return indexed;
}

QByteArray PngOf(const QImage& picture) {
  const QImage indexed = WithPalette(picture);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, "png");
  writer.setCompression(Compression);
  return writer.write(indexed.isNull() ? picture : indexed) ? bytes : QByteArray();
}

}  // namespace torvane::toolkit

#include "toolkit/PictureFile.h"

#include <QBuffer>
#include <QHash>
#include <QImageWriter>

namespace torvane::toolkit {

namespace {

/// Colours in the order in which they are met.
class Palette {
 public:
  static constexpr int Most = 256;

  /// The index of a colour; Most or more where there is no room for it.
  int IndexOf(QRgb colour) {
    // Neighbouring pixels are mostly alike.
    if (colour == last_ && !colours_.isEmpty()) return lastIndex_;
    const auto found = indices_.constFind(colour);
    last_ = colour;
    if (found != indices_.constEnd()) return lastIndex_ = *found;
    lastIndex_ = static_cast<int>(colours_.size());
    if (lastIndex_ < Most) {
      colours_.append(colour);
      indices_.insert(colour, lastIndex_);
    }
    return lastIndex_;
  }
  [[nodiscard]] const QList<QRgb>& Colours() const { return colours_; }

 private:
  QList<QRgb> colours_;
  QHash<QRgb, int> indices_;
  QRgb last_ = 0;
  int lastIndex_ = 0;
};

}  // namespace

QImage WithPalette(const QImage& picture) {
  if (picture.format() != QImage::Format_RGB32) return {};
  QImage indexed(picture.size(), QImage::Format_Indexed8);
  Palette palette;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const from = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    uchar* const to = indexed.scanLine(y);
    for (int x = 0; x < picture.width(); ++x) {
      const int index = palette.IndexOf(from[x] | 0xFF000000U);
      if (index >= Palette::Most) return {};
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
  return writer.write(indexed.isNull() ? picture : indexed) ? bytes : QByteArray();
}

}  // namespace torvane::toolkit

#include "toolkit/Theme.h"

#include <QFontMetrics>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace torvane::toolkit {

namespace {

constexpr Colour White = 0xFFFFFF;
constexpr Colour Black = 0x000000;

/// Dark enough to stand on any face, light or dark.
Colour RingColour(Colour face) { return Mix(face, Black, 0.88); }

int LineLeft(const QRect& area, int width, Alignment alignment) {
  switch (alignment) {
    case Alignment::Centre:
      return area.x() + (area.width() - width) / 2;
    case Alignment::Right:
      return area.x() + area.width() - width;
    case Alignment::Left:
      break;
  }
  return area.x();
}

/// Baseline that puts the capitals of a font in the middle of `area`.
int Baseline(const QRect& area, const QFontMetrics& font) {
  return area.y() + (area.height() + font.capHeight()) / 2;
}

void DrawRing(QPainter& painter, const QRectF& area, Colour colour, int width, double corner) {
  const double half = width / 2.0;
  painter.setPen(QPen(ToQColor(colour), width));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(area.adjusted(half, half, -half, -half), corner, corner);
}

/// A light line with a dark one inside it: unlike the one dark ring of a key that is down, and in
/// sight on every face.
void DrawFocus(QPainter& painter, const QRectF& area, Colour face, const Metrics& metrics) {
  const int line = std::max(1, metrics.Ring - 1);
  const double corner = std::max(1.0, metrics.Corner - 2.0);
  DrawRing(painter, area, Mix(face, White, 0.85), line, corner);
  DrawRing(painter, area.adjusted(line, line, -line, -line), RingColour(face), line, corner);
}

int FigureCell(const QFontMetrics& font) {
  int widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    widest = std::max(widest, font.horizontalAdvance(QLatin1Char(digit)));
  }
  return widest;
}

bool InCell(QChar c) { return c.isDigit() || c == QLatin1Char('-') || c == QLatin1Char('+'); }

/// The lines of a key as they fit its width, with the font that they take.
struct FittedCaption {
  std::vector<CaptionLine> Lines;
  QFont Font;
};

int Widest(const std::vector<CaptionLine>& lines, const QFont& font) {
  const QFontMetrics metrics(font);
  int widest = 0;
  for (const auto& line : lines) {
    widest = std::max(widest, metrics.horizontalAdvance(ToQString(line.Text)));
  }
  return widest;
}

bool BreaksAt(char c) { return c == ' ' || c == '-' || c == '_'; }

/// Breaks the line at the blank, or after the hyphen, nearest to its middle; one line when it has
/// none.
std::vector<CaptionLine> Broken(const CaptionLine& line) {
  const auto size = static_cast<long>(line.Text.size());
  long best = -1;
  for (long i = 0; i + 1 < size; ++i) {
    if (!BreaksAt(line.Text[static_cast<std::size_t>(i)])) continue;
    if (best < 0 || std::labs(i - size / 2) < std::labs(best - size / 2)) best = i;
  }
  if (best < 0) return {line};
  const bool blank = line.Text[static_cast<std::size_t>(best)] == ' ';
  const auto kept = static_cast<std::size_t>(blank ? best : best + 1);
  CaptionLine first{line.Text.substr(0, kept), -1};
  CaptionLine second{line.Text.substr(static_cast<std::size_t>(best) + 1), -1};
  if (line.Underlined >= 0 && line.Underlined <= best) first.Underlined = line.Underlined;
  if (line.Underlined > best) second.Underlined = line.Underlined - static_cast<int>(best) - 1;
  return {first, second};
}

/// Smaller first, down to eight tenths, then on two lines, then smaller again.
FittedCaption Fit(std::vector<CaptionLine> lines, QFont font, int width) {
  const int full = font.pixelSize();
  const int wrapAt = full * 8 / 10;
  const int least = std::max(10, full * 6 / 10);
  for (int size = full; size >= least; --size) {
    font.setPixelSize(size);
    if (Widest(lines, font) <= width) return {lines, font};
    if (size != wrapAt || lines.size() != 1) continue;
    lines = Broken(lines[0]);
    for (int larger = full; larger >= wrapAt && lines.size() > 1; --larger) {
      font.setPixelSize(larger);
      if (Widest(lines, font) <= width) return {lines, font};
    }
  }
  return {lines, font};
}

}  // namespace

QColor ToQColor(Colour colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
          static_cast<int>((colour >> 16) & 0xFF)};
}

Colour Mix(Colour colour, Colour with, double share) {
  Colour mixed = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double a = (colour >> shift) & 0xFF;
    const double b = (with >> shift) & 0xFF;
    const auto part = static_cast<Colour>(std::lround(a + (b - a) * share));
    mixed |= std::min<Colour>(part, 0xFF) << shift;
  }
  return mixed;
}

Colour LightEdge(Colour face) { return Mix(face, White, 0.45); }
Colour DarkEdge(Colour face) { return Mix(face, Black, 0.38); }
Colour Faded(Colour text, Colour face) { return Mix(text, face, 0.62); }

Colour CasingOf(Colour line) {
  const QColor colour = ToQColor(line);
  constexpr int Middle = 110;
  return qGray(colour.rgb()) < Middle && colour.lightness() < Middle ? Mix(line, White, 0.7)
                                                                     : Mix(line, Black, 0.75);
}

Colour Rim(Colour face) {
  const QColor colour = ToQColor(face);
  return colour.lightness() < 80 ? Mix(face, White, 0.45) : Mix(face, Black, 0.45);
}

QString ToQString(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

bool HasFigures(TypeStyle style) {
  return style == TypeStyle::Readout || style == TypeStyle::Figure || style == TypeStyle::Position;
}

QFont FontOf(const Metrics& metrics, TypeStyle style) {
  QFont font;
  if (style == TypeStyle::Mono) {
    font.setFamilies({QStringLiteral("B612 Mono"), QStringLiteral("monospace")});
    font.setStyleHint(QFont::Monospace);
  }
  font.setPixelSize(metrics.TypeSize(style));
  const bool bold = style == TypeStyle::Bold || style == TypeStyle::Key ||
                    style == TypeStyle::Title || style == TypeStyle::Strong;
  font.setBold(bold);
  if (style == TypeStyle::Title) font.setLetterSpacing(QFont::AbsoluteSpacing, metrics.Px(2));
  font.setKerning(!HasFigures(style));
  font.setHintingPreference(QFont::PreferVerticalHinting);
  return font;
}

void PaintFace(QPainter& painter, const QRect& area, Colour face, const FaceLook& look,
               const Metrics& metrics) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  const QRectF whole(area);
  const double corner = metrics.Corner;
  const bool flat = !look.Enabled || look.Sunk || look.Ringed;
  if (flat) {
    const bool low = look.Enabled && (look.Sunk || look.Ringed);
    painter.setBrush(ToQColor(low ? Mix(face, Black, 0.15) : face));
    painter.drawRoundedRect(whole, corner, corner);
  } else {
    painter.setBrush(ToQColor(DarkEdge(face)));
    painter.drawRoundedRect(whole, corner, corner);
    painter.setBrush(ToQColor(LightEdge(face)));
    painter.drawRoundedRect(whole.adjusted(0, 0, 0, -metrics.Edge), corner, corner);
    painter.setBrush(ToQColor(face));
    painter.drawRoundedRect(whole.adjusted(0, metrics.Edge * 0.6, 0, -metrics.Edge), corner,
                            corner);
  }
  if (look.Sunk && look.Enabled && !look.Ringed) {
    painter.setBrush(ToQColor(DarkEdge(face)));
    QPainterPath outer;
    QPainterPath inner;
    outer.addRoundedRect(whole, corner, corner);
    inner.addRoundedRect(whole.adjusted(0, metrics.Edge, 0, 0), corner, corner);
    painter.drawPath(outer.subtracted(inner));
  }
  if (look.Ringed) {
    const Colour ring = look.Enabled ? RingColour(face) : DarkEdge(face);
    DrawRing(painter, whole, ring, metrics.Ring + 1, corner);
  }
  if (look.Focused) {
    const double inset = look.Ringed ? metrics.Ring + 1 + metrics.Ring : metrics.Ring + 1;
    DrawFocus(painter, whole.adjusted(inset, inset, -inset, -inset), face, metrics);
  }
}

void PaintLine(QPainter& painter, const QRect& area, const CaptionLine& line, Alignment alignment) {
  const QFontMetrics font(painter.font());
  QString text = ToQString(line.Text);
  int width = font.horizontalAdvance(text);
  bool cut = false;
  if (width > area.width()) {
    text = font.elidedText(text, Qt::ElideRight, area.width());
    width = font.horizontalAdvance(text);
    cut = true;
  }
  const int left = LineLeft(area, width, alignment);
  const int base = Baseline(area, font);
  painter.drawText(left, base, text);
  if (line.Underlined < 0 || (cut && line.Underlined >= text.size() - 1)) return;
  const int from = left + font.horizontalAdvance(text.left(line.Underlined));
  const int to = left + font.horizontalAdvance(text.left(line.Underlined + 1));
  const int thick = std::max(1, font.height() / 12);
  painter.fillRect(QRect(from, base + std::max(2, font.height() / 9), to - from, thick),
                   painter.pen().color());
}

int FiguresWidth(const QFont& font, const QString& text) {
  const QFontMetrics metrics(font);
  const int cell = FigureCell(metrics);
  int width = 0;
  for (const QChar c : text) width += InCell(c) ? cell : metrics.horizontalAdvance(c);
  return width;
}

void PaintFigures(QPainter& painter, const QRect& area, const QString& text, Alignment alignment) {
  const QFontMetrics font(painter.font());
  const int cell = FigureCell(font);
  int x = LineLeft(area, FiguresWidth(painter.font(), text), alignment);
  const int base = Baseline(area, font);
  for (const QChar c : text) {
    const int advance = font.horizontalAdvance(c);
    const int taken = InCell(c) ? cell : advance;
    painter.drawText(x + (taken - advance) / 2, base, QString(c));
    x += taken;
  }
}

void PaintCaption(QPainter& painter, const QRect& area, const CaptionText& caption, Colour text,
                  const Metrics& metrics) {
  if (caption.Lines.empty()) return;
  std::vector<CaptionLine> names = caption.Lines;
  CaptionLine key;
  if (caption.NameOverKey) {
    key = names.back();
    names.pop_back();
  }
  const FittedCaption fitted = Fit(std::move(names), FontOf(metrics, TypeStyle::Key), area.width());
  const QFont keyFont = FontOf(metrics, TypeStyle::Small);
  const int nameHeight = static_cast<int>(fitted.Font.pixelSize() * 1.35);
  const int keyHeight = caption.NameOverKey ? static_cast<int>(keyFont.pixelSize() * 1.45) : 0;
  const int count = static_cast<int>(fitted.Lines.size());
  int top = area.y() + (area.height() - nameHeight * count - keyHeight) / 2;
  painter.setPen(ToQColor(text));
  painter.setFont(fitted.Font);
  for (const auto& line : fitted.Lines) {
    PaintLine(painter, QRect(area.x(), top, area.width(), nameHeight), line, Alignment::Centre);
    top += nameHeight;
  }
  if (!caption.NameOverKey) return;
  painter.setFont(keyFont);
  PaintLine(painter, QRect(area.x(), top, area.width(), keyHeight), key, Alignment::Centre);
}

}  // namespace torvane::toolkit

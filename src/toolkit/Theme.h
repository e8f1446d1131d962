// How faces, edges, rings and texts are drawn. All shades come from the colour that they belong to.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRect>
#include <string>

#include "platform/Canvas.h"
#include "toolkit/Caption.h"
#include "toolkit/Label.h"
#include "toolkit/Metrics.h"

namespace torvane::toolkit {

[[nodiscard]] QColor ToQColor(Colour colour);
/// `share` of `with` in `colour`, 0 to 1.
[[nodiscard]] Colour Mix(Colour colour, Colour with, double share);
[[nodiscard]] Colour LightEdge(Colour face);
[[nodiscard]] Colour DarkEdge(Colour face);
/// Rims of forms, lines of frames.
[[nodiscard]] Colour Rim(Colour face);
/// What sets a line off from whatever it crosses: dark round a light line, light round a dark one.
[[nodiscard]] Colour CasingOf(Colour line);
/// Of a casing on either side of its line, pixels.
inline constexpr int CasingWidth = 1;
/// Text of a disabled control.
[[nodiscard]] Colour Faded(Colour text, Colour face);

/// Whether a style sets its figures in cells of one width.
[[nodiscard]] bool HasFigures(TypeStyle style);

/// The font of a type style: B612 where it is installed.
[[nodiscard]] QFont FontOf(const Metrics& metrics, TypeStyle style);
/// A text of the system (Latin-1) for the screen.
[[nodiscard]] QString ToQString(std::string_view text);

struct FaceLook {
  bool Sunk = false;
  bool Ringed = false;
  bool Focused = false;
  bool Enabled = true;
};

/// The face of a key with its edges and rings.
void PaintFace(QPainter& painter, const QRect& area, Colour face, const FaceLook& look,
               const Metrics& metrics);

/// One line with its accelerator underlined, in the painter's font and pen; `area` bounds the line,
/// which is centred in height and cut with an ellipsis where it is too long.
void PaintLine(QPainter& painter, const QRect& area, const CaptionLine& line, Alignment alignment);

/// A line whose figures are in cells of one width, in the painter's font and pen.
void PaintFigures(QPainter& painter, const QRect& area, const QString& text, Alignment alignment);
[[nodiscard]] int FiguresWidth(const QFont& font, const QString& text);

/// A key's caption in the middle of `area`. A name that is too wide is set smaller, then on two
/// lines, then cut.
void PaintCaption(QPainter& painter, const QRect& area, const CaptionText& caption, Colour text,
                  const Metrics& metrics);

}  // namespace torvane::toolkit

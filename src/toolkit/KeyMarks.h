// The signs in the corners of keys.
#pragma once

#include <QPainter>
#include <QRect>

#include "toolkit/Button.h"

namespace torvane::toolkit {

/// Fills `area` with the sign, in `ink` on `face`.
void PaintKeyMark(QPainter& painter, const QRect& area, KeyMark mark, Colour ink, Colour face);

}  // namespace torvane::toolkit

#include "toolkit/Area.h"

#include <algorithm>

namespace torvane::toolkit {

namespace {

/// Start and length of part `index` of `count` parts of `length`, `gap` between them.
struct Part {
  int Start;
  int Length;
};

Part PartOf(int length, int index, int count, int gap) {
  const int room = std::max(0, length - gap * (count - 1));
  const int from = static_cast<int>(static_cast<long long>(room) * index / count);
  const int to = static_cast<int>(static_cast<long long>(room) * (index + 1) / count);
  return {from + gap * index, to - from};
}

}  // namespace

Area Area::Inset(int by) const { return Inset(by, by); }

Area Area::Inset(int horizontal, int vertical) const {
  return {X + horizontal, Y + vertical, std::max(0, Width - 2 * horizontal),
          std::max(0, Height - 2 * vertical)};
}

Area TakeTop(Area& rest, int height, int gap) {
  const int taken = std::clamp(height, 0, rest.Height);
  const Area strip{rest.X, rest.Y, rest.Width, taken};
  const int used = std::min(rest.Height, taken + gap);
  rest.Y += used;
  rest.Height -= used;
  return strip;
}

Area TakeBottom(Area& rest, int height, int gap) {
  const int taken = std::clamp(height, 0, rest.Height);
  const Area strip{rest.X, rest.Bottom() - taken, rest.Width, taken};
  rest.Height = std::max(0, rest.Height - taken - gap);
  return strip;
}

Area TakeLeft(Area& rest, int width, int gap) {
  const int taken = std::clamp(width, 0, rest.Width);
  const Area strip{rest.X, rest.Y, taken, rest.Height};
  const int used = std::min(rest.Width, taken + gap);
  rest.X += used;
  rest.Width -= used;
  return strip;
}

Area TakeRight(Area& rest, int width, int gap) {
  const int taken = std::clamp(width, 0, rest.Width);
  const Area strip{rest.Right() - taken, rest.Y, taken, rest.Height};
  rest.Width = std::max(0, rest.Width - taken - gap);
  return strip;
}

std::vector<Area> Columns(const Area& whole, int count, int gap) {
  std::vector<Area> parts;
  for (int i = 0; i < count; ++i) {
    const Part part = PartOf(whole.Width, i, count, gap);
    parts.push_back({whole.X + part.Start, whole.Y, part.Length, whole.Height});
  }
  return parts;
}

std::vector<Area> Rows(const Area& whole, int count, int gap) {
  std::vector<Area> parts;
  for (int i = 0; i < count; ++i) {
    const Part part = PartOf(whole.Height, i, count, gap);
    parts.push_back({whole.X, whole.Y + part.Start, whole.Width, part.Length});
  }
  return parts;
}

std::vector<Area> Cells(const Area& whole, int rows, int columns, int gap) {
  std::vector<Area> cells;
  for (const Area& row : Rows(whole, rows, gap)) {
    for (const Area& cell : Columns(row, columns, gap)) cells.push_back(cell);
  }
  return cells;
}

}  // namespace torvane::toolkit

// Rectangles in pixels and the few cuts that screens are laid out with.
#pragma once

#include <vector>

namespace torvane::toolkit {

/// Left, top, width and height in pixels.
struct Area {
  int X = 0;
  int Y = 0;
  int Width = 0;
  int Height = 0;

  [[nodiscard]] int Right() const { return X + Width; }
  [[nodiscard]] int Bottom() const { return Y + Height; }
  [[nodiscard]] Area Inset(int by) const;
  [[nodiscard]] Area Inset(int horizontal, int vertical) const;
  bool operator==(const Area&) const = default;
};

/// Cuts a strip off one side and leaves a gap after it. A strip never is larger than the rest.
[[nodiscard]] Area TakeTop(Area& rest, int height, int gap = 0);
[[nodiscard]] Area TakeBottom(Area& rest, int height, int gap = 0);
[[nodiscard]] Area TakeLeft(Area& rest, int width, int gap = 0);
[[nodiscard]] Area TakeRight(Area& rest, int width, int gap = 0);

/// Equal parts side by side (or below each other) that fill the whole to the last pixel.
[[nodiscard]] std::vector<Area> Columns(const Area& whole, int count, int gap);
[[nodiscard]] std::vector<Area> Rows(const Area& whole, int count, int gap);

/// Cells of a grid, row by row.
[[nodiscard]] std::vector<Area> Cells(const Area& whole, int rows, int columns, int gap);

}  // namespace torvane::toolkit

// Sliding a screen by its title panel: the arithmetic, without a window.
#pragma once

namespace torvane::console {

/// Where the form goes, relative to where it stands, in pixels.
struct DragStep {
  int Left = 0;
  int Top = 0;
};

/// The panel moves with its form, so the place of the pointer stays relative to the grab point and
/// the remembered place is not brought up to date during the drag. A press at X or Y of exactly 0
/// does not drag.
class TitleDrag {
 public:
  void Down(int x, int y) {
    x_ = x;
    y_ = y;
  }

  [[nodiscard]] DragStep Move(int x, int y) const {
    if (x_ <= 0 || y_ <= 0) return {};
    return {x - x_, y - y_};
  }

  void Up() {
    x_ = 0;
    y_ = 0;
  }

 private:
  int x_ = 0;
  int y_ = 0;
};

}  // namespace torvane::console

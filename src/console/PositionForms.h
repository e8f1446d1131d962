// The position read-outs: X, Y and Z, and the two auxiliary axes of machines that have them.
#pragma once

#include <string>
#include <vector>

#include "console/Screen.h"

namespace torvane::console {

/// Figures under their labels, and one display mode for both, kept when they close.
class PositionForm : public Screen {
 protected:
  PositionForm(const ScreenStart& start, const std::vector<std::string>& axes);

  /// PositionText 1 and up.
  std::vector<toolkit::Label*> texts_;

 private:
  [[nodiscard]] Cell FigureCells(const std::vector<std::string>& axes);
  void ChooseMode(int mode);
  /// The caption of the mode in force, and the ring on its key.
  void ShowMode();
  void Activated() override;

  toolkit::Panel* positionBox_ = nullptr;
  toolkit::Label* modeLabel_ = nullptr;
  std::vector<toolkit::Button*> modes_;
  toolkit::Button* exit_ = nullptr;
};

class XYPositionForm final : public PositionForm {
 public:
  explicit XYPositionForm(const ScreenStart& start);
};

/// No axis is assigned to it: the figures stay as they are at first.
class AuxPositionForm final : public PositionForm {
 public:
  explicit AuxPositionForm(const ScreenStart& start);
};

}  // namespace torvane::console

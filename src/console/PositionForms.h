// The position read-outs: X, Y and Z, and the two auxiliary axes of machines that have them.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "console/Screen.h"

namespace torvane::console {

/// What both read-outs share: figures under their labels, and one display mode for both, kept when
/// they close.
class PositionForm : public Screen {
 public:
  /// PositionText 1 and up; an index that the screen does not have is left alone.
  void SetPositionText(int index, const std::string& text);

 protected:
  PositionForm(ScreenSet& screens, const std::string& name, const std::string& title,
               const std::vector<std::string>& axes);

 private:
  void ShowMode(int mode);
  void FocusFigures();
  void Activated() override;
  void Layout(const toolkit::Metrics& metrics) override;

  toolkit::Panel* positionBox_ = nullptr;
  toolkit::Label* modeLabel_ = nullptr;
  std::vector<toolkit::Label*> labels_;
  std::vector<toolkit::Label*> texts_;
  std::array<toolkit::Button*, 4> modeButtons_{};
  toolkit::Button* exit_ = nullptr;
};

class XYPositionForm final : public PositionForm {
 public:
  static constexpr const char* ScreenName = "XYPositionForm";
  explicit XYPositionForm(ScreenSet& screens);
};

/// No axis is assigned to it: the figures stay as they are at first.
class AuxPositionForm final : public PositionForm {
 public:
  static constexpr const char* ScreenName = "AuxPositionForm";
  explicit AuxPositionForm(ScreenSet& screens);
};

}  // namespace torvane::console

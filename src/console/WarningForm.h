// The window of the one modal question.
#pragma once

#include <array>

#include "console/Screen.h"
#include "supervision/WarningBox.h"

namespace torvane::console {

/// Shows what the box holds, and tells it which button was pressed.
class WarningForm final : public Screen {
 public:
  explicit WarningForm(const ScreenStart& start);

 private:
  void MakeMarks();
  void Answer(int button);
  void Activated() override;
  void Unloaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  /// For the text shown: as high as its lines need.
  void Arrange();

  supervision::WarningBox& box_;
  struct MarkPair {
    supervision::WarningImages Images;
    std::array<toolkit::ImageMark*, 2> Marks;
  };
  std::array<MarkPair, 3> marks_{};
  toolkit::Label* label_ = nullptr;
  std::array<toolkit::Button*, 3> buttons_{};
};

}  // namespace torvane::console

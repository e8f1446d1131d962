// The key pad: names and program lines.
#pragma once

#include <array>

#include "console/PadForm.h"

namespace torvane::console {

class KeyboardForm final : public PadForm {
 public:
  static constexpr int KeyCount = 47;

  explicit KeyboardForm(const ScreenStart& start);

 private:
  void Activated() override;
  void OkPressed() override;
  [[nodiscard]] char Typed(char character) const override;
  /// A letter in the case of CAPS LOCK; anything else as it is.
  [[nodiscard]] char InCase(char character) const;

  std::array<toolkit::Button*, KeyCount> keys_{};
  toolkit::TwoStateButton* shift_ = nullptr;
};

}  // namespace torvane::console

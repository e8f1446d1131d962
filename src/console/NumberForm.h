// The number pad: what is typed is worked out from left to right.
#pragma once

#include <array>

#include "console/PadForm.h"

namespace torvane::console {

class NumberForm final : public PadForm {
 public:
  explicit NumberForm(const ScreenStart& start);

 private:
  void OkPressed() override;
  void Layout(const toolkit::Metrics& metrics) override;

  std::array<toolkit::Button*, 17> keys_{};
};

}  // namespace torvane::console

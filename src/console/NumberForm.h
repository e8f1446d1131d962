// The number pad: what is typed is worked out from left to right.
#pragma once

#include "console/PadForm.h"

namespace torvane::console {

class NumberForm final : public PadForm {
 public:
  explicit NumberForm(const ScreenStart& start);

 private:
  void OkPressed() override;
};

}  // namespace torvane::console

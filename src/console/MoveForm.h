// A direct move to a position that is typed in.
#pragma once

#include <array>

#include "console/Screen.h"
#include "supervision/ManualMotion.h"

namespace torvane::console {

class MoveForm final : public Screen {
 public:
  explicit MoveForm(const ScreenStart& start);

 private:
  void Activated() override;
  void Move();

  supervision::ManualMotion motion_;
  std::array<toolkit::EntryBox*, 3> boxes_{};
};

}  // namespace torvane::console

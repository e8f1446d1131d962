// The two stored load positions, and the ways to them.
#pragma once

#include <array>

#include "console/Screen.h"
#include "supervision/ManualMotion.h"

namespace torvane::console {

class LoadForm final : public Screen {
 public:
  explicit LoadForm(const ScreenStart& start);

 private:
  void Activated() override;
  void Load(int position);
  [[nodiscard]] Cell MakePosition(int position);

  supervision::ManualMotion motion_;
  supervision::LoadPositions values_{};
  std::array<toolkit::EntryBox*, 4> boxes_{};
  int reading_ = 0;  ///< openings that still wait for the controller's values
};

}  // namespace torvane::console

// The status menu: position read-outs, program follower, program information, block skip.
#pragma once

#include <vector>

#include "console/Screen.h"

namespace torvane::console {

class StatusMenuForm final : public Screen {
 public:
  explicit StatusMenuForm(const ScreenStart& start);

 private:
  void MakeSkips();
  void Activated() override;

  std::vector<toolkit::TwoStateButton*> skips_;
};

}  // namespace torvane::console

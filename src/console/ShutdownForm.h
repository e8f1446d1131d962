// The one door out: shut down, end to the service program, or stay.
#pragma once

#include <functional>
#include <vector>

#include "console/Screen.h"

namespace torvane::console {

/// From the answer on every key is dead: the program only has its end before it.
class ShutdownForm final : public Screen {
 public:
  explicit ShutdownForm(const ScreenStart& start);

 private:
  void End(const std::function<void()>& action);
  bool FirstLook(const toolkit::KeyStroke& stroke) override;

  bool ending_ = false;
  toolkit::Label* label_ = nullptr;
  std::vector<toolkit::Button*> keys_;
};

}  // namespace torvane::console

// What is shown on the screen while the program starts.
#pragma once

#include "console/Screen.h"

namespace torvane::console {

/// Its timer belongs to the start-up; the main screen unloads it.
class SplashForm final : public Screen {
 public:
  explicit SplashForm(const ScreenStart& start);

 private:
  void Loaded() override;
  void Layout(const toolkit::Metrics& metrics) override;

  toolkit::Panel* splashPanel_ = nullptr;
  toolkit::Label* titlePanel_ = nullptr;
  toolkit::Label* versionPanel_ = nullptr;
};

}  // namespace torvane::console

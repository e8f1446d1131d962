// The one door out: shut down, end to the service program, or stay.
#pragma once

#include <functional>

#include "console/Screen.h"

namespace torvane::console {

/// What the two answers do. Both return after everything is closed; the process ends from the loop.
struct ShutdownActions {
  std::function<void()> ShutdownSystem;
  std::function<void()> ShutdownToService;
};

class ShutdownForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "ShutdownForm";

  ShutdownForm(ScreenSet& screens, ShutdownActions actions);

 private:
  void End(const std::function<void()>& action);
  void Layout(const toolkit::Metrics& metrics) override;

  ShutdownActions actions_;
  toolkit::ImageMark* marks_[2] = {};
  toolkit::Label* label_ = nullptr;
  toolkit::Button* cancel_ = nullptr;
  toolkit::Button* shutdown_ = nullptr;
  toolkit::Button* service_ = nullptr;
};

}  // namespace torvane::console

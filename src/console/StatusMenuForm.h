// The status menu: position read-outs, program follower, program information, block skip.
#pragma once

#include <array>
#include <functional>

#include "console/Screen.h"
#include "link/Trio.h"

namespace torvane::console {

class StatusMenuForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "StatusMenuForm";

  StatusMenuForm(ScreenSet& screens, link::Trio& trio);

 private:
  void MakeMenu();
  void Activated() override;
  void Layout(const toolkit::Metrics& metrics) override;

  link::Trio& trio_;
  toolkit::Frame* machineFrame_ = nullptr;
  toolkit::Frame* programFrame_ = nullptr;
  std::array<toolkit::Button*, 2> machineButtons_{};
  std::array<toolkit::Button*, 3> programButtons_{};
  std::array<toolkit::TwoStateButton*, 2> skipButtons_{};
  toolkit::Button* exit_ = nullptr;
};

}  // namespace torvane::console

// Referencing, rollers and feed override, and the way to the screens that move the machine.
#pragma once

#include "console/Screen.h"
#include "supervision/ManualMotion.h"

namespace torvane::console {

class MachineForm final : public Screen {
 public:
  explicit MachineForm(const ScreenStart& start);

 private:
  void Activated() override;
  void RefreshMachineForm(bool force);
  void PressFeed(int key);
  [[nodiscard]] Cell MakeFeed();

  supervision::ManualMotion motion_;
  supervision::FeedOverrideKeys feed_;
  toolkit::TwoStateButton* rollers_ = nullptr;
  toolkit::Label* feedBox_ = nullptr;
  toolkit::Label* askedBox_ = nullptr;
};

}  // namespace torvane::console

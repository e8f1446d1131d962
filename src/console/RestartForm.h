// The last step of a restart: what the machine will do, and the wait for the cycle start.
#pragma once

#include "console/Screen.h"
#include "core/Geometry.h"
#include "restart/RestartOperation.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::console {

class RestartForm final : public Screen, private restart::RestartScreen {
 public:
  explicit RestartForm(const ScreenStart& start);

 private:
  void Loaded() override;
  void Activated() override;
  void Unloaded() override;
  void ShowOutlook();
  void ShowMarks(toolkit::PlotCanvas& plot, const core::Vector2& entry);

  // restart::RestartScreen
  void ShowRestart(const restart::RestartLabels& labels) override;
  void SetCycleStartColour(std::uint32_t colour) override;
  void LockOtherForms(bool) override {}  // the frame locks for as long as the form is loaded
  void HideRestart() override { Unload(); }

  restart::RestartOperation operation_;
  bool begun_ = false;
  toolkit::Label* cycleStart_ = nullptr;
  std::vector<toolkit::Label*> tools_;
  std::vector<toolkit::Label*> positions_;
  toolkit::Label* hits_ = nullptr;
  std::vector<toolkit::Label*> words_;
};

}  // namespace torvane::console

// The laser: feed and power as programmed, in force and asked for, and the state of the source.
#pragma once

#include <optional>
#include <vector>

#include "console/Screen.h"

namespace torvane::supervision {
struct LaserFigures;
}

namespace torvane::console {

class LaserStatusForm final : public Screen {
 public:
  explicit LaserStatusForm(const ScreenStart& start);

 private:
  /// One of the two overrides: its figures, its keys, and the value that its keys work on.
  struct Override {
    std::vector<toolkit::Label*> Boxes;  ///< programmed, actual, in force
    toolkit::Label* AskedFor = nullptr;
    std::optional<double> Working;  ///< percent; nothing until the controller has been asked
  };

  [[nodiscard]] Cell OverrideCells(Override& override, const std::string& name,
                                   const std::string& heading, const std::string& unit,
                                   const std::vector<std::string>& keys,
                                   const std::function<void(int)>& press);
  [[nodiscard]] Cell StatusCells();
  void PressFeed(int key);
  void PressPower(int key);
  void ShowAskedFor(Override& override, double percent);
  void Refresh();
  void Activated() override;

  Override feed_;
  Override power_;
  std::vector<toolkit::Label*> status_;
};

}  // namespace torvane::console

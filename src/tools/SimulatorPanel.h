// What a real machine has beside its console, as a strip: cycle start, feed hold, stop, the lamps,
// and switches for what can go wrong.
#pragma once

#include <QPointer>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "console/FormGrid.h"
#include "core/ColourTable.h"
#include "platform/EventLoop.h"
#include "simulator/SimulatedController.h"
#include "toolkit/Button.h"
#include "toolkit/Desk.h"
#include "toolkit/Label.h"
#include "toolkit/Panel.h"
#include "toolkit/Slider.h"
#include "tools/PanelLamp.h"

namespace torvane::tools {

/// Works a simulated controller from the same thread, and shows its state ten times a second. The
/// letters of the captions press their keys while the window has the keyboard.
class SimulatorPanel {
 public:
  /// Machine seconds per second, of the option keys.
  static constexpr std::array<double, 6> Speeds = {0.5, 1, 2, 5, 10, 20};

  SimulatorPanel(platform::EventLoop& loop, simulator::SimulatedController& controller,
                 const core::ColourTable& colours);
  ~SimulatorPanel();
  SimulatorPanel(const SimulatorPanel&) = delete;
  SimulatorPanel& operator=(const SimulatorPanel&) = delete;

  /// As a strip at the bottom of the console's window: it never covers anything of the console,
  /// scales with it, and never takes the keyboard from it. The key FAULTS opens a second row.
  void DockAt(toolkit::Desk& console);

  /// As a window of its own, both rows open, with the keyboard; `closed` is called when the
  /// operator closes it.
  void OpenAlone(std::function<void()> closed);

  [[nodiscard]] toolkit::Desk& Desk() { return desk_; }
  [[nodiscard]] toolkit::Form& Window() { return form_; }

  /// Shows the machine as it is now; the timer does this by itself.
  void Refresh();

 private:
  /// A number that the operator chooses with two keys, and the key that raises it.
  struct Picker {
    int Lowest = 0;
    int Highest = 0;
    int Value = 0;
    toolkit::Button* Less = nullptr;
    toolkit::Label* Shown = nullptr;
    toolkit::Button* More = nullptr;
    toolkit::Button* Raise = nullptr;
  };

  void MakeLamps();
  void MakeCycleKeys();
  void MakePicker(Picker& picker, const char* name, const char* caption,
                  void (*raise)(simulator::Machine&, int));
  void MakeSpeed();
  void MakeFaults();
  void Step(Picker& picker, int by);
  template <class Kind>
  Kind& Make(Kind* control, const std::string& name, core::ColourName face, core::ColourName text);
  void AddKey(toolkit::Button& button);
  void Open();
  [[nodiscard]] int HeightFor(const toolkit::Metrics& metrics) const;
  void Layout(const toolkit::Metrics& metrics);
  [[nodiscard]] console::Cell MainCells();
  [[nodiscard]] console::Cell FaultCells();

  simulator::SimulatedController& controller_;
  core::ColourTable colours_;
  toolkit::Desk desk_;
  toolkit::Form form_;
  QPointer<toolkit::Desk> console_;  ///< that it is docked at
  toolkit::Panel* body_ = nullptr;
  std::array<PanelLamp*, 5> lamps_{};
  toolkit::Button* start_ = nullptr;
  toolkit::TwoStateButton* hold_ = nullptr;
  toolkit::Button* stop_ = nullptr;
  toolkit::TwoStateButton* faults_ = nullptr;  ///< down: the second row shows
  Picker error_{1, 64, 2};
  Picker bit_{0, 30, 0};
  toolkit::Button* clear_ = nullptr;
  toolkit::TwoStateButton* beam_ = nullptr;
  toolkit::Slider* speed_ = nullptr;
  toolkit::Label* speedText_ = nullptr;
  toolkit::Label* state_ = nullptr;
  std::vector<std::pair<toolkit::Key, toolkit::Button*>> keys_;
  std::unique_ptr<platform::Timer> timer_;
};

}  // namespace torvane::tools

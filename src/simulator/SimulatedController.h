// The whole simulated controller: a line with its faults in front of a memory and a machine.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/CommandLine.h"
#include "simulator/ControllerEnd.h"
#include "simulator/ControllerMemory.h"
#include "simulator/Faults.h"
#include "simulator/Machine.h"
#include "simulator/StorageFaults.h"

namespace torvane::simulator {

/// A variable that is at a value from switching on.
struct PresetVariable {
  int Number = 0;
  double Value = 0;
};

struct ControllerOptions {
  MachineOptions Machine;
  std::vector<PresetVariable> Presets;
  FaultSettings Faults;
  double Speed = 1;         ///< machine seconds per second of the line
  double ReplySeconds = 0;  ///< what the controller takes to answer a line
  double QuietSeconds = 1;  ///< without a line for so long, the line counts as quiet
};

/// Works on a clock of its own, moved by Advance. What it answers waits in order until taken.
class SimulatedController final : public ControllerEnd {
 public:
  explicit SimulatedController(ControllerOptions options);
  SimulatedController(const SimulatedController&) = delete;
  SimulatedController& operator=(const SimulatedController&) = delete;

  /// Seconds of the line; the machine goes Speed times as far.
  void Advance(double seconds) override;

  void Receive(std::string_view bytes) override;
  [[nodiscard]] std::string TakeOutput() override;
  [[nodiscard]] std::optional<double> OutputDueIn() const override;

  /// Switched off and on again: variables, table and what was under way on the line are gone, the
  /// position stays.
  void PowerCycle();

  /// A line that is dead: nothing is heard, carried out or answered, and what was on its way is
  /// lost.
  void SetSilent(bool silent);
  /// The next line that begins with `text`, whatever the case, is refused with "%" and not carried
  /// out. There may be several.
  void RefuseNext(std::string_view text) { refusals_.emplace_back(text); }
  /// What is wrong with the storage beside the machine; see FaultyFiles.
  [[nodiscard]] StorageFaults& Storage() { return storage_; }

  /// Changes the faults in force, as a test does half-way.
  void SetFaults(const FaultSettings& faults) { faults_ = FaultSource(faults); }
  void SetSpeed(double speed) { options_.Speed = speed; }
  [[nodiscard]] double Speed() const { return options_.Speed; }

  /// Called with each line that came in whole, without its carriage return.
  void OnLine(std::function<void(std::string_view)> watcher) { watcher_ = std::move(watcher); }

  [[nodiscard]] ControllerMemory& Memory() { return memory_; }
  [[nodiscard]] Machine& TheMachine() { return machine_; }

 private:
  struct Answer {
    double Due = 0;
    std::string Bytes;
  };

  void ApplyPresets();
  [[nodiscard]] bool Refused(std::string_view line);
  void Obey(const ReceivedLine& line);
  void Send(std::string_view answer);

  ControllerOptions options_;
  FaultSource faults_;
  ControllerMemory memory_;
  Machine machine_;
  CommandLine line_;
  std::function<void(std::string_view)> watcher_;
  std::deque<Answer> answers_;
  std::vector<std::string> refusals_;
  StorageFaults storage_;
  double now_ = 0;
  double heardAt_ = 0;  ///< when the last line came
  bool silent_ = false;
};

}  // namespace torvane::simulator

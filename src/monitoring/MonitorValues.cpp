#include "monitoring/MonitorValues.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "core/General.h"
#include "core/ScreenNames.h"
#include "monitoring/ShdrText.h"

namespace torvane::monitoring {

namespace {

namespace Names = core::ScreenNames;

constexpr std::string_view Active = "ACTIVE";
constexpr std::string_view FeedHold = "FEED_HOLD";
constexpr std::string_view Interrupted = "INTERRUPTED";
constexpr std::string_view Completed = "PROGRAM_COMPLETED";
constexpr std::string_view Stopped = "STOPPED";
constexpr std::string_view Ready = "READY";

const core::ActiveProgram& InForce(const core::System& system) {
  return system.Programs[system.ActiveSlot];
}

std::string ProgramName(const core::System& system) {
  const auto& program = InForce(system);
  if (!program.Selected) return {};
  return std::string(program.DirectoryName).append("/").append(program.ProgramName);
}

/// The screens that move the machine by hand.
std::string_view Mode(const core::System& system) {
  const auto& form = system.Console.CurrentForm;
  const bool byHand = form == Names::MachineForm || form == Names::XYJogForm ||
                      form == Names::MoveForm || form == Names::LoadForm;
  return byHand && !system.State.MachineRunning ? "MANUAL" : "AUTOMATIC";
}

std::string Count(std::int64_t count) { return std::to_string(count); }

std::string Number(float value, int places) {
  return std::isfinite(value) ? core::NumberText(value, places) : std::string(Unavailable);
}

/// By name where a screen lists them; otherwise the status word says that there are some.
std::vector<ActiveMessage> Messages(const core::System& system,
                                    std::optional<std::vector<ActiveMessage>> listed) {
  std::vector<ActiveMessage> messages;
  if (listed) messages = std::move(*listed);
  if (messages.empty() && system.State.MachineInError != 0) {
    messages.push_back({"message", "A message is in force at the console"});
  }
  return messages;
}

}  // namespace

std::string_view MonitorReader::Execution(const core::System& system) {
  const auto& state = system.State;
  if (state.MachineRunning) return state.MachineFeedhold ? FeedHold : Active;
  if (state.MachineCycleBit) return Interrupted;
  if (execution_ == Active || execution_ == FeedHold || execution_ == Interrupted) {
    // The row after the last one of the program is the end mark, which the run may reach or not.
    return state.RunningBlock + 1 >= InForce(system).TableLines ? Completed : Stopped;
  }
  return execution_;
}

MonitorSnapshot MonitorReader::Read(const core::System& system,
                                    std::optional<std::vector<ActiveMessage>> messages) {
  const auto& state = system.State;
  const auto& batch = InForce(system).BatchCounters;
  std::string program = ProgramName(system);
  if (program != program_) execution_ = Ready;
  program_ = program;
  execution_ = Execution(system);
  MonitorSnapshot now;
  now.Available = true;
  const std::int64_t parts = std::int64_t{batch.PartsPerSheet} * batch.SheetsCompleted;
  now.Values = {"AVAILABLE",
                std::string(Mode(system)),
                std::string(execution_),
                Field(program),
                Count(state.RunningBlock),
                Number(state.XPosition, 3),
                Number(state.YPosition, 3),
                Number(state.ZPosition, 3),
                Number(state.FeedRate, 0),
                Number(state.FeedOverride, 0),
                Count(parts),
                Count(batch.PartsRequired),
                Count(batch.SheetsCompleted),
                Count(batch.SheetsRequired),
                Count(batch.SheetsToGo),
                {}};
  now.Messages = Messages(system, std::move(messages));
  return now;
}

}  // namespace torvane::monitoring

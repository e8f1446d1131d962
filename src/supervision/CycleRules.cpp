#include "supervision/CycleRules.h"

#include <algorithm>
#include <array>

namespace torvane::supervision {

namespace {

constexpr const char* RunningOrHeld = "While Machine Is Running Or In Feedhold !";
constexpr const char* Running = "While Machine Is Running !";

// The second line of the restart has its own capitals.
constexpr std::array<CycleRule, 7> Rules = {{
    // action                     running hold  cycle error
    {CycleAction::ChangeProgram, true, false, false, false, "Can Not Change Program", Running},
    {CycleAction::SelectProgram, true, false, false, false, "Can Not Select New Program", Running},
    {CycleAction::Jog, true, true, false, false, "Can Not Jog", RunningOrHeld},
    {CycleAction::Reference, true, true, true, false, "Can Not Reference", RunningOrHeld},
    {CycleAction::LoadPosition, true, true, true, true, "Can Not Move", RunningOrHeld},
    {CycleAction::Move, true, true, true, true, "Can Not Move", RunningOrHeld},
    {CycleAction::Restart, true, false, true, true, "Can Not Restart",
     "While Machine Is Running or In Error !"},
}};

}  // namespace

std::span<const CycleRule> CycleRules() { return Rules; }

const CycleRule& CycleRuleOf(CycleAction action) {
  return *std::find_if(Rules.begin(), Rules.end(),
                       [action](const CycleRule& rule) { return rule.Action == action; });
}

bool ActionRefused(CycleAction action, const core::MachineState& state) {
  const auto& rule = CycleRuleOf(action);
  return (rule.Running && state.MachineRunning) || (rule.Feedhold && state.MachineFeedhold) ||
         (rule.Cycle && state.MachineCycleBit) || (rule.InError && state.MachineInError > 0);
}

bool RefuseAction(CycleAction action, const core::MachineState& state, OperatorDialogs& dialogs) {
  if (!ActionRefused(action, state)) return false;
  const auto& rule = CycleRuleOf(action);
  dialogs.Warn(rule.FirstLine, rule.SecondLine);
  return true;
}

bool UserKeyAllowed(std::int16_t mask, const core::MachineState& state) {
  if (mask == 0) return true;
  const bool busy = state.MachineCycleBit || state.MachineRunning;
  const bool held = state.MachineFeedhold;
  const std::int16_t present = busy ? (held ? UserKeyState::HeldInCycle : UserKeyState::InCycle)
                                    : (held ? UserKeyState::Held : UserKeyState::Idle);
  return (mask & present) != 0;
}

}  // namespace torvane::supervision

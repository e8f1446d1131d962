#include "supervision/ManualMotion.h"

#include <algorithm>
#include <string_view>

#include "core/General.h"
#include "link/Variables.h"
#include "supervision/CycleRules.h"

namespace torvane::supervision {

namespace {

namespace Variable = link::Variable;

constexpr int DefaultPrecision = -1;

constexpr std::array<std::string_view, 4> LoadVariables = {
    Variable::LoadPositionAX, Variable::LoadPositionAY, Variable::LoadPositionBX,
    Variable::LoadPositionBY};
constexpr std::array<std::string_view, 2> LoadWords = {link::CommandLine::LoadPositionA,
                                                       link::CommandLine::LoadPositionB};
constexpr std::array<std::string_view, 3> MoveVariables = {
    Variable::MoveTargetX, Variable::MoveTargetY, Variable::MoveTargetZ};

}  // namespace

void FeedOverrideKeys::Take(float override) { working_ = core::RoundToInt16(override); }

int FeedOverrideKeys::Press(int key) {
  const auto step = static_cast<std::size_t>(key - 1);
  working_ = std::clamp(working_ + Steps.at(step), Least, Most);
  return working_;
}

void ManualMotion::Reference(std::size_t axes) {
  if (RefuseAction(CycleAction::Reference, system_.State, dialogs_)) return;
  trio_.Download(link::CommandLine::Reference.at(axes));
}

void ManualMotion::SwitchRollers(bool on) {
  if (!on) return trio_.Download(link::Sequence::RollersOff[0]);
  for (const std::string_view line : link::Sequence::RollersOn) trio_.Download(line);
}

void ManualMotion::RequestFeedOverride(int percent) {
  trio_.Download(link::Assignment(Variable::FeedOverrideRequest, core::LongText(percent)));
}

LoadPositions ManualMotion::ReadLoadPositions() {
  LoadPositions values{};
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = trio_.GetRspnsSngl(LoadVariables[i]);
  }
  return values;
}

void ManualMotion::GoToLoadPosition(std::size_t position, const LoadPositions& values) {
  for (std::size_t i = 2 * position; i < 2 * position + 2; ++i) {
    trio_.Download(
        link::Assignment(LoadVariables.at(i), core::NumberText(values.at(i), DefaultPrecision)));
  }
  if (RefuseAction(CycleAction::LoadPosition, system_.State, dialogs_)) return;
  trio_.Download(LoadWords.at(position));
}

void ManualMotion::MoveTo(const std::array<double, 3>& target) {
  if (RefuseAction(CycleAction::Move, system_.State, dialogs_)) return;
  for (std::size_t i = 0; i < target.size(); ++i) {
    trio_.Download(
        link::Assignment(MoveVariables[i], core::NumberText(target[i], DefaultPrecision)));
  }
  trio_.Download(link::CommandLine::Move);
}

}  // namespace torvane::supervision

#include "simulator/ManualActions.h"

#include <algorithm>
#include <cmath>

namespace torvane::simulator {

namespace {

constexpr double EndlessJog = 1e6;  // mm, where no travel limit is known

/// Each axis in turn runs onto its switch at 0 and searches it.
void PlanReference(const ManualAction& action, const ActionInput& input, Mover& mover) {
  Position at = input.At;
  const auto reference = [&](int chosen, double Position::*axis) {
    if (chosen == 0) return;
    Position home = at;
    home.*axis = 0;
    mover.Add(Task::Travelling(Segment::Line(at, home), input.Options.ReferenceRate));
    mover.Add(Task::Waiting(input.Options.SearchSeconds));
    at = home;
  };
  reference(action.Z, &Position::Z);
  reference(action.X, &Position::X);
  reference(action.Y, &Position::Y);
}

void PlanMove(const ManualAction&, const ActionInput& input, Mover& mover) {
  const auto& memory = input.Memory;
  const Position target{memory.Variable(Vr::MoveTargetX), memory.Variable(Vr::MoveTargetY),
                        memory.Variable(Vr::MoveTargetZ)};
  mover.Add(Task::Travelling(Segment::Line(input.At, target), input.Options.RapidRate));
}

void TravelTo(const ActionInput& input, int x, int y, Mover& mover) {
  const Position target{input.Memory.Variable(x), input.Memory.Variable(y), input.At.Z};
  mover.Add(Task::Travelling(Segment::Line(input.At, target), input.Options.RapidRate));
}

void PlanLoadA(const ManualAction&, const ActionInput& input, Mover& mover) {
  TravelTo(input, Vr::LoadAX, Vr::LoadAY, mover);
}

void PlanLoadB(const ManualAction&, const ActionInput& input, Mover& mover) {
  TravelTo(input, Vr::LoadBX, Vr::LoadBY, mover);
}

/// A step, or on until the jog is stopped; never beyond the travel, nor back into it.
void PlanJog(const ManualAction& action, const ActionInput& input, Mover& mover) {
  const auto& memory = input.Memory;
  const auto& options = input.Options;
  const bool steps = memory.Variable(Vr::JogBySteps) != 0;
  const double distance = steps ? std::abs(memory.Variable(Vr::JogStep)) : EndlessJog;
  const auto target = [&](double at, int direction, double low, double high) {
    if (direction == 0) return at;
    const double wanted = at + direction * distance;
    return direction > 0 ? std::max(at, std::min(wanted, high))
                         : std::min(at, std::max(wanted, low));
  };
  const Position to{target(input.At.X, action.X, options.TravelMinX, options.TravelMaxX),
                    target(input.At.Y, action.Y, options.TravelMinY, options.TravelMaxY),
                    input.At.Z};
  const double speed = memory.Variable(Vr::JogSpeed);
  mover.Add(Task::Travelling(Segment::Line(input.At, to), speed > 0 ? speed : options.DefaultFeed));
}

constexpr unsigned Busy = Bar::Running | Bar::Held;

constexpr ManualAction Actions[] = {
    {10, Busy, false, true, PlanReference, 1, 1, 1},
    {11, Busy, false, true, PlanReference, 1, 0, 0},
    {12, Busy, false, true, PlanReference, 0, 1, 0},
    {13, Busy, false, true, PlanReference, 0, 0, 1},
    {15, Busy | Bar::Error, false, false, PlanMove, 0, 0, 0},
    {17, Busy | Bar::Error, false, false, PlanLoadA, 0, 0, 0},
    {18, Busy | Bar::Error, false, false, PlanLoadB, 0, 0, 0},
    {19, Busy, true, false, PlanJog, +1, 0, 0},
    {20, Busy, true, false, PlanJog, -1, 0, 0},
    {21, Busy, true, false, PlanJog, 0, +1, 0},
    {22, Busy, true, false, PlanJog, 0, -1, 0},
};

}  // namespace

const ManualAction* FindAction(double word) {
  for (const auto& action : Actions) {
    if (word == action.Word) return &action;
  }
  return nullptr;
}

}  // namespace torvane::simulator

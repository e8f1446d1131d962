// The variables that the front end reads: status word, feeds, times and positions.
#include <algorithm>
#include <cmath>

#include "core/MachineState.h"
#include "simulator/Machine.h"

namespace torvane::simulator {

namespace {

namespace StatusBit = core::StatusBit;

/// Bits that the machine alone decides. The others stay as they were written.
constexpr int OwnBits = StatusBit::Feedhold | StatusBit::InError | StatusBit::Cycle |
                        StatusBit::Running | StatusBit::RestartReady | StatusBit::Beam;

constexpr int AxisX = 0;
constexpr int AxisY = 1;
constexpr int AxisThird = 4;

}  // namespace

void Machine::Publish() {
  if (BeamOn()) {
    laser_.Show(memory_, runSeconds_);
  } else {
    laser_.Settle(memory_);
  }
  PublishStatus();
  PublishPositions();
  memory_.SetVariable(Vr::RunTime, runSeconds_);
  memory_.SetVariable(Vr::FeedRate, FeedNow());
  memory_.SetVariable(Vr::FeedOverride, Override());
  const double power =
      memory_.Variable(Vr::ProgrammedPower) * memory_.Variable(Vr::PowerRequest) / 100.0;
  memory_.SetVariable(Vr::ActualPower, BeamOn() && std::isfinite(power) ? power : 0.0);
}

void Machine::PublishStatus() {
  // The lamp blinks on through the restart until the start line has come: the front end must see it
  // go out with the machine running, however seldom it looks.
  const bool restart = mode_ == MachineMode::RestartWait || mode_ == MachineMode::Restarting;
  const bool lamp =
      restart && std::fmod(lampSeconds_, 2 * options_.LampSeconds) < options_.LampSeconds;
  int word = memory_.Word(Vr::Status) & ~OwnBits;
  if (held_) word |= StatusBit::Feedhold;
  if (messages_.InError()) word |= StatusBit::InError;
  if (InCycle()) word |= StatusBit::Cycle | StatusBit::Running;
  if (cycleBit_) word |= StatusBit::Cycle;
  if (lamp) word |= StatusBit::RestartReady;
  if (BeamOn()) word |= StatusBit::Beam;
  memory_.SetVariable(Vr::Status, word);
}

void Machine::PublishPositions() {
  const double stored = memory_.Variable(Vr::Scale);
  const double scale = stored == 0 ? 1.0 : stored;
  Position end = at_;
  Position demand = at_;
  const Task* task = mover_.Current();
  if (task != nullptr && (task->What == Task::Kind::Travel || task->What == Task::Kind::Cut)) {
    const double ahead = FeedNow() / 60.0 * options_.ServoLag;
    end = task->Path.End();
    if (ahead > 0) demand = task->Path.At(task->Done + ahead);
  }
  const struct {
    int Axis;
    double Position::*Field;
    double Scale;
  } axes[] = {
      {AxisX, &Position::X, scale}, {AxisY, &Position::Y, scale}, {AxisThird, &Position::Z, 1.0}};
  for (const auto& axis : axes) {
    const double measured = at_.*axis.Field * axis.Scale;
    const double wanted = demand.*axis.Field * axis.Scale;
    memory_.SetAxis(AxisQuantity::Measured, axis.Axis, measured);
    memory_.SetAxis(AxisQuantity::Demand, axis.Axis, wanted);
    memory_.SetAxis(AxisQuantity::EndOfMove, axis.Axis, end.*axis.Field * axis.Scale);
    memory_.SetAxis(AxisQuantity::FollowingError, axis.Axis, wanted - measured);
  }
}

}  // namespace torvane::simulator

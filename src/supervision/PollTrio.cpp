#include "supervision/PollTrio.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/General.h"
#include "link/Variables.h"
#include "supervision/MachineStatus.h"
#include "supervision/MessageButton.h"
#include "supervision/ScopedFlag.h"

namespace torvane::supervision {

namespace {

namespace Variable = link::Variable;

/// What the read-out of a mode queries for X, Y and the third axis.
struct DemandMode {
  std::int16_t Mode;
  const link::AxisExpressions& Expressions;
  bool WithOffset;  ///< a following error is a difference and has no offset
};
constexpr std::array<DemandMode, 3> DemandModes = {{
    {1, link::DemandPosition, true},
    {2, link::EndOfMove, true},
    {3, link::FollowingError, false},
}};

/// A line without a reply for so long at the program's end is taken for a dead one, ms, if the
/// limit of a reply is not shorter: replies come within some hundredths of a second, and the last
/// readings may be cut short.
constexpr std::int64_t DeadLineMs = 1000;

}  // namespace

Poll::Poll(core::System& system, link::Trio& trio, link::Downloads& downloads,
           platform::FileSystem& files, PollScreens& screens, PlotStage& plot,
           MessageList& messages)
    : system_(system),
      trio_(trio),
      downloads_(downloads),
      files_(files),
      screens_(screens),
      plot_(plot),
      messages_(messages) {}

class Poll::Watch {
 public:
  explicit Watch(const Poll& poll) : poll_(poll), begun_(poll.changes_.Begun()) {}

  /// A change of program is under way or has been, or the program ends.
  [[nodiscard]] bool Overtaken() const {
    return poll_.changes_.Held() || poll_.changes_.Begun() != begun_ || poll_.trio_.Ending();
  }

 private:
  const Poll& poll_;
  std::uint64_t begun_;
};

void Poll::PollTrio() {
  static constexpr std::array<Stage, 9> Stages = {
      &Poll::ReadStatus,       &Poll::PlotPosition,     &Poll::ReadPositions,
      &Poll::ReadFeeds,        &Poll::ReadRunningBlock, &Poll::RefreshMessageButton,
      &Poll::RunMachineStages, &Poll::TopUpTable,       &Poll::RefreshTickBatch};
  trio_.Loop().WaitUntil([this] { return !inTick_; });
  const ScopedFlag tick(inTick_);
  const Watch watch(*this);
  failuresBefore_ = PollFailures();
  for (const Stage stage : Stages) {
    if (watch.Overtaken()) return;
    (this->*stage)();
  }
  if (!watch.Overtaken()) TellTick(failuresBefore_);
  RotateLog();
}

/// The plot has the run time read and draws: between the reply and here nobody else has a turn.
void Poll::PlotPosition() {
  plot_.RealTimePlot();
  runSeconds_ = system_.State.RunSeconds;
}

std::uint64_t Poll::PollFailures() const {
  return trio_.Failures(link::Asker::Poll) + trio_.Failures(link::Asker::Silent);
}

void Poll::TellTick(std::uint64_t failuresBefore) {
  if (observers_.empty()) return;
  TickReading reading{PollFailures() != failuresBefore, runSeconds_, {}};
  if (screens_.Offers(PollStage::Messages)) reading.Messages = messages_.ControllerTexts();
  for (PollObserver* observer : observers_) observer->TickRead(reading);
}

void Poll::TellBatch(const BatchReading& reading) {
  for (PollObserver* observer : observers_) observer->BatchRead(reading);
}

void Poll::TellRestart(const RestartPlace& place) {
  for (PollObserver* observer : observers_) observer->RunContinued(place);
}

void Poll::TellEnd() {
  const bool unheard = Unheard();
  for (PollObserver* observer : observers_) observer->ConsoleEnds(unheard);
}

/// A tick over a dead line takes minutes, so that the end does not wait for one to tell of it.
bool Poll::Unheard() const {
  const std::int64_t limit = system_.Link.ReplyTimeoutMs;
  const bool failed = PollFailures() != failuresBefore_;
  return failed || trio_.UnansweredMs() >= (limit > 0 ? std::min(limit, DeadLineMs) : DeadLineMs);
}

void Poll::RunMachineStages() {
  const Watch watch(*this);
  for (const PollStage stage : {PollStage::Machine, PollStage::Laser, PollStage::RunTime}) {
    if (watch.Overtaken()) return;
    screens_.RunStage(stage);
  }
}

void Poll::RefreshTickBatch() {
  if (screens_.Offers(PollStage::Batch) || RunEnded(system_.State)) {
    RefreshBatch(link::Asker::Poll);
  }
}

void Poll::RotateLog() {
  if (system_.Link.PollLogEnabled) trio_.RotateLog();
}

void Poll::ReadStatus() {
  const std::int32_t word = trio_.GetRspnsLng(Variable::Status, link::Asker::Poll);
  if (trio_.Ending()) return;
  DecodeStatus(system_.State, word, system_.Machine.MachineVariant);
}

void Poll::ShowFigure(int index, float value, int places) {
  screens_.ShowFigure(index, core::NumberText(value, places));
}

float Poll::ReadAxis(std::string_view expression, float scale, float offset) {
  double value = trio_.GetRspnsSngl(expression, -1, link::Asker::Poll);
  if (scale != 0) value /= scale;
  return static_cast<float>(value + offset);
}

void Poll::ReadPositions() {
  if (!system_.Link.TrioLinkEnabled) return;
  auto& state = system_.State;
  state.LastXPosition = state.XPosition;
  state.LastYPosition = state.YPosition;
  state.LastZPosition = state.ZPosition;
  state.XPosition = ReadAxis(link::MeasuredPosition[0], state.XScale, state.XOffset);
  state.YPosition = ReadAxis(link::MeasuredPosition[1], state.YScale, state.YOffset);
  state.ZPosition = ReadAxis(link::MeasuredPosition[2], state.ZScale, state.ZOffset);
  ShowFigure(1, state.XPosition, 1);
  ShowFigure(2, state.YPosition, 1);
  ShowFigure(3, state.ZPosition, 1);
  screens_.RunStage(PollStage::JogPosition);
  screens_.RunStage(PollStage::Position);
}

std::array<float, 3> Poll::ReadDisplayedPositions() {
  const auto& state = system_.State;
  for (const auto& mode : DemandModes) {
    if (mode.Mode != state.PositionDisplayMode) continue;
    const std::array<float, 3> scales = {state.XScale, state.YScale, state.ZScale};
    const std::array<float, 3> offsets = {state.XOffset, state.YOffset, state.ZOffset};
    std::array<float, 3> shown{};
    for (std::size_t axis = 0; axis < shown.size(); ++axis) {
      shown[axis] =
          ReadAxis(mode.Expressions[axis], scales[axis], mode.WithOffset ? offsets[axis] : 0.0F);
    }
    return shown;
  }
  return {state.XPosition, state.YPosition, state.ZPosition};
}

void Poll::ReadFeeds() {
  auto& state = system_.State;
  state.FeedOverride = trio_.GetRspnsSngl(Variable::FeedOverride, 0, link::Asker::Poll);
  state.FeedRate = trio_.GetRspnsSngl(Variable::FeedRate, 0, link::Asker::Poll);
  ShowFigure(5, state.FeedOverride, 0);
  ShowFigure(6, state.FeedRate, 0);
}

void Poll::ReadRunningBlock() {
  auto& state = system_.State;
  const Watch watch(*this);
  const std::int16_t block = trio_.GetRspnsInt(Variable::RunningRecord, link::Asker::Silent);
  if (watch.Overtaken()) return;
  state.RunningBlock = block;
  screens_.RunStage(PollStage::RunningBlock);
}

std::optional<ListingView> Poll::TakeChangedListing() {
  auto& state = system_.State;
  const core::Slot slot = system_.ActiveSlot;
  if (state.RunningBlock == state.RunningBlockShown && slot == state.RunningSlotShown)
    return std::nullopt;
  state.RunningBlockShown = state.RunningBlock;
  state.RunningSlotShown = slot.Number();
  return Listing(slot, state.RunningBlock);
}

ListingView Poll::Listing(core::Slot slot, int block) const {
  return ShowRunningBlock(files_, system_.Directories, system_.Programs, slot, block);
}

void Poll::ForgetShownBlock() {
  system_.State.RunningBlockShown = -1;
  system_.State.RunningSlotShown = -1;
}

void Poll::RefreshMessageButton() {
  const MessageState messages =
      MessageStateOf(system_.State.StatusWord, system_.Console.NewProgramsReceived);
  screens_.MarkMessageButton(messages);
  const auto names = MessageButtonColours(messages);
  const std::uint32_t background = system_.Colours[names.Background];
  if (screens_.MessageButtonBackground() != background) {
    screens_.PaintMessageButton(background, system_.Colours[names.Text]);
  }
  screens_.RunStage(PollStage::Messages);
}

bool Poll::RefreshMessages() {
  const std::int32_t vr16 = trio_.GetRspnsLng(Variable::IoMessage, link::Asker::Poll);
  const std::int32_t vr17 = trio_.GetRspnsLng(Variable::LogicMessages, link::Asker::Poll);
  return messages_.Refresh(vr16, vr17, system_.Console.NewProgramsReceived, system_.Messages,
                           system_.Directories);
}

std::optional<bool> Poll::TakeRollers(bool force) {
  auto& state = system_.State;
  const bool rollersOn = (state.StatusWord & core::StatusBit::RollersOn) != 0;
  if (rollersOn == state.RollersOn && !force) return std::nullopt;
  state.RollersOn = rollersOn;
  return rollersOn;
}

void Poll::TopUpTable() {
  const Watch watch(*this);
  try {
    downloads_.TopUpTable(system_.ActiveSlot, system_.State.RunningBlock, system_.TableSent,
                          [&watch] { return watch.Overtaken(); });
  } catch (const platform::RuntimeFault& fault) {
    TellTableFault(fault);
  }
}

/// The machine cuts: the console stays and says what is wrong, once for each program put in force.
void Poll::TellTableFault(const platform::RuntimeFault& fault) {
  if (faultToldOf_ == changes_.Begun() + 1) return;
  faultToldOf_ = changes_.Begun() + 1;
  trio_.Loop().Start([this, path = fault.Path(), sentence = std::string(fault.what())] {
    const std::size_t named = path.empty() ? 0 : path.size() + 2;  // ": "
    trio_.Screens().Warn(path, std::string_view(sentence).substr(named));
  });
}

}  // namespace torvane::supervision

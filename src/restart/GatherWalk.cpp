#include "restart/GatherWalk.h"

#include <utility>

#include "core/General.h"
#include "partprogram/ErrorMessages.h"

namespace torvane::restart {

using core::WordValue;
using partprogram::Word;
using partprogram::WordSet;
namespace Message = partprogram::Message;

namespace {

/// Block number of a subroutine's first block in the file that holds all of them.
constexpr std::int32_t BlocksOfASub = 1000;

const std::map<std::int16_t, std::string> NoSubs;

constexpr std::array<std::string_view, RestartParameters> KeptParameters = {
    "P101=", "P102=", "P103=", "P104=", "P105=", "P106=", "P107=", "P108=", "P109=", "P110="};

}  // namespace

/// The order in which the words of a block are tested and carried out. Q, GOTO, ABORT, M30, F, the
/// settings of G30 to G32, G28 and G37 are passed over.
const std::array<GatherWalk::Row, 22> GatherWalk::Order = {{
    {WordSet{Word::G69, Word::G68}, &GatherWalk::CallRepeated},
    {WordSet{Word::G98}, &GatherWalk::CallOnce},
    {WordSet{Word::If}, &GatherWalk::TakeIf},
    {{}, &GatherWalk::TakeParameters, 'P'},
    {WordSet{Word::G90, Word::G91}, &GatherWalk::TakeCoordinates},
    {WordSet{Word::G70, Word::G71}, &GatherWalk::TakeUnits},
    {{}, &GatherWalk::TakePosition, '\0', -1, true},
    {WordSet{Word::G56}, &GatherWalk::TakeG56},
    {WordSet{Word::G53}, &GatherWalk::TakeG53},
    {WordSet{Word::G92}, &GatherWalk::TakeG92},
    {WordSet{Word::G40, Word::G41, Word::G42}, &GatherWalk::TakeKerf},
    {{}, &GatherWalk::TakeKeptParameters, 'P'},
    {WordSet{Word::G00}, &GatherWalk::TakeG00, '\0', 0},
    {WordSet{Word::G01}, &GatherWalk::TakeG01, '\0', 1},
    {WordSet{Word::G02}, &GatherWalk::TakeG02, '\0', 2},
    {WordSet{Word::G03}, &GatherWalk::TakeG03, '\0', 3},
    {WordSet{Word::G04}, &GatherWalk::TakeG04},
    {WordSet{Word::M03, Word::M04, Word::M05, Word::M06}, &GatherWalk::TakeBeam},
    {WordSet{Word::M10, Word::M11, Word::M12, Word::M13}, &GatherWalk::TakeMirror},
    {WordSet{Word::M50}, &GatherWalk::TakeM50},
    {WordSet{Word::G95, Word::M55, Word::M87, Word::M99}, &GatherWalk::TakeRapidMode},
    {WordSet{Word::M00, Word::M01}, &GatherWalk::TakeM00},
}};

GatherWalk::GatherWalk(std::string_view converted, GatherBodies bodies,
                       const core::MachineData& machine)
    : machine_(machine),
      bodies_(std::move(bodies)),
      walker_(converted, NoSubs),
      state_(partprogram::ModalState::AtStart(machine)) {
  walker_.SetReturnWords(WordSet{Word::M02, Word::Return});
  parameters_.TwoDigitNumbers = true;
}

bool GatherWalk::Next() {
  if (ended_) return false;
  switch (walker_.Next()) {
    case partprogram::WalkStep::Block:
      return true;
    case partprogram::WalkStep::End:
      break;
    case partprogram::WalkStep::TooManyLines:
      Error(Message::TooManyLines, true);
      break;
    case partprogram::WalkStep::Endless:
      Error(Message::Endless, true);
      break;
  }
  ended_ = true;
  return false;
}

std::int16_t GatherWalk::SubLine() const {
  return InSubroutine() ? walker_.Level().LineCount : std::int16_t{0};
}

bool GatherWalk::AtTargetBlock(std::int16_t targetBlock, std::int16_t targetSubBlock) const {
  if (MainLine() != targetBlock) return false;
  return InSubroutine() ? walker_.Level().LineCount == targetSubBlock : targetSubBlock == 0;
}

void GatherWalk::Execute() {
  if (Words().Text().size() > partprogram::MaxBlockLength)
    return Error(Message::BlockTooLong, true);
  reader_.ClearFault();
  limitCheck_.BeginBlock();
  for (const Row& row : Order) {
    if (Applies(row) && (this->*row.Act)() == Flow::Done) break;
  }
  if (reader_.Fault() != partprogram::ReadFault::None) {
    Error(partprogram::TextOf(reader_.Fault()), true);
  }
}

bool GatherWalk::Applies(const Row& row) const {
  const partprogram::Block& block = Words();
  if (row.Always || block.HasAny(row.Words)) return true;
  if (row.Letter != '\0') return block.Has(row.Letter);
  return row.Mode >= 0 && row.Mode == state_.MotionMode && partprogram::GoesOnInMode(block);
}

GatherState GatherWalk::State() const {
  GatherState state = kept_;
  state.Imperial = state_.Imperial;
  state.Incremental = state_.Incremental;
  state.MirrorCode = static_cast<std::int16_t>((state_.MirrorX ? 1 : 0) + (state_.MirrorY ? 2 : 0));
  state.KerfSide = state_.KerfSide;
  state.XPosition = state_.Current.X;
  state.YPosition = state_.Current.Y;
  state.ZPosition = state_.Current.Z;
  return state;
}

// ---- calls and jumps ----

GatherWalk::Flow GatherWalk::CallRepeated() {
  const WordValue repeats = reader_.Integer(Words().Text(), "Q");
  return Call(repeats.Found ? static_cast<std::int16_t>(repeats.Value) : std::int16_t{1});
}

GatherWalk::Flow GatherWalk::CallOnce() { return Call(1); }

/// The motion of the call is in the caller's frame, and the caller's block ends with it.
GatherWalk::Flow GatherWalk::Call(std::int16_t repeats) {
  TakePosition();
  const auto number = static_cast<std::int16_t>(reader_.Integer(Words().Text(), "S").Value);
  // Without "A" the turn is -999 degrees: a caller that wants none writes A0.
  const double rotation = reader_.Value(Words(), 'A').Value;
  if (walker_.Depth() >= partprogram::MaxSubDepth) {
    Error(Message::SubTooDeep, true);
    ended_ = true;
    return Flow::Done;
  }
  LoadSub(number);
  partprogram::SubLevel& level = walker_.Call(number);
  level.RepeatCount = repeats;
  level.Rotation = static_cast<float>(rotation);
  level.OriginX = state_.Current.X;
  level.OriginY = state_.Current.Y;
  return Flow::Done;
}

void GatherWalk::LoadSub(std::int16_t number) {
  if (walker_.HasSub(number)) return;
  if (bodies_.Together) {
    walker_.AddSub(number, *bodies_.Together, number * BlocksOfASub);
    return;
  }
  std::string& text = texts_[number];
  text = bodies_.ReadSub(number);
  walker_.AddSub(number, text);
}

GatherWalk::Flow GatherWalk::TakeIf() {
  switch (partprogram::Decide(Words(), reader_)) {
    case partprogram::Decision::Jump:
      walker_.Jump(static_cast<std::int32_t>(reader_.Integer(Words().Text(), "GOTO").Value));
      return Flow::Done;
    case partprogram::Decision::Leave:
      if (!walker_.Leave()) ended_ = true;
      return Flow::Done;
    case partprogram::Decision::GoOn:
      break;
  }
  return Flow::GoOn;
}

// ---- modal words ----

GatherWalk::Flow GatherWalk::TakeParameters() {
  partprogram::AssignParameters(Words(), reader_, parameters_);
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeCoordinates() {
  if (Words().Has(Word::G90)) state_.Incremental = false;
  if (Words().Has(Word::G91)) state_.Incremental = true;
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeUnits() {
  if (Words().Has(Word::G70)) state_.Imperial = true;
  if (Words().Has(Word::G71)) state_.Imperial = false;
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeKerf() {
  if (Words().Has(Word::G40)) state_.KerfSide = 0;
  if (Words().Has(Word::G41)) state_.KerfSide = 1;
  if (Words().Has(Word::G42)) state_.KerfSide = 2;
  return Flow::GoOn;
}

/// P101 to P110 are the controller's: only their values are kept.
GatherWalk::Flow GatherWalk::TakeKeptParameters() {
  const std::string_view text = Words().Text();
  if (text.find("P1") == std::string_view::npos) return Flow::GoOn;
  for (std::size_t i = 0; i < KeptParameters.size(); ++i) {
    const WordValue value = reader_.Value(text, KeptParameters[i]);
    if (!value.Found || reader_.Fault() != partprogram::ReadFault::None) continue;
    kept_.ParameterValues[i] = static_cast<float>(value.Value);
  }
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeBeam() {
  const partprogram::Block& block = Words();
  if (block.Has(Word::M03) || block.Has(Word::M04)) kept_.ProfilerOn = true;
  if (block.Has(Word::M05) || block.Has(Word::M06)) kept_.ProfilerOn = false;
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeMirror() {
  const partprogram::Block& block = Words();
  if (block.Has(Word::M10)) state_.MirrorX = state_.MirrorY = false;
  if (block.Has(Word::M11)) state_.MirrorX = true;
  if (block.Has(Word::M12)) state_.MirrorY = true;
  if (block.Has(Word::M13)) state_.MirrorX = state_.MirrorY = true;
  return Flow::GoOn;
}

// ---- offsets ----

namespace {

/// A kept offset grows by what a word adds, with the sign of the mirror.
float Added(float offset, const WordValue& word, bool mirrored) {
  if (!word.Found) return offset;
  return static_cast<float>(mirrored ? offset - word.Value : offset + word.Value);
}

}  // namespace

GatherWalk::Flow GatherWalk::TakeG56() {
  partprogram::AddWorkOffset(Words(), reader_, state_);
  partprogram::ReadPositionWords(Words(), reader_, state_);
  kept_.G56OffsetX = Added(kept_.G56OffsetX, state_.X, state_.MirrorX);
  kept_.G56OffsetY = Added(kept_.G56OffsetY, state_.Y, state_.MirrorY);
  return Flow::GoOn;
}

/// The kept offset of G92 stays, although the work offset goes.
GatherWalk::Flow GatherWalk::TakeG53() {
  state_.OffsetX = state_.OffsetY = 0;
  kept_.G56OffsetX = kept_.G56OffsetY = 0;
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeG92() {
  partprogram::SetWorkOffset(Words(), reader_, state_);
  kept_.G92OffsetX = Added(kept_.G92OffsetX, state_.X, state_.MirrorX);
  kept_.G92OffsetY = Added(kept_.G92OffsetY, state_.Y, state_.MirrorY);
  return Flow::GoOn;
}

// ---- motion ----

GatherWalk::Flow GatherWalk::TakePosition() {
  if (Words().HasAny(partprogram::NoPositionWords)) return Flow::GoOn;
  if (partprogram::UpdatePosition(Words(), reader_, InSubroutine(), walker_.Level(), state_)) {
    limitCheck_.Check(state_.Limits, state_.Current.X, state_.Current.Y,
                      [this](std::string_view message) { Warn(message); });
  }
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeG00() {
  state_.MotionMode = 0;
  RoundLine(Word::G00);
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeG01() {
  state_.MotionMode = 1;
  RoundLine(Word::G01);
  return Flow::GoOn;
}

void GatherWalk::RoundLine(Word own) {
  const partprogram::Block& block = Words();
  if (!block.Has('X') && !block.Has('Y')) return;
  if (!partprogram::HoldsOtherMotion(block, own)) rounding_.Round(state_);
}

GatherWalk::Flow GatherWalk::TakeG02() {
  state_.MotionMode = 2;
  ProveArc(true);
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeG03() {
  state_.MotionMode = 3;
  ProveArc(false);
  return Flow::GoOn;
}

/// The position is where the block put it, whether the arc can be solved or not.
void GatherWalk::ProveArc(bool clockwise) {
  const partprogram::Block& block = Words();
  if (!block.Has('X') && !block.Has('Y') && !block.Has('I') && !block.Has('J')) return;
  if (partprogram::HoldsOtherMotion(block, clockwise ? Word::G02 : Word::G03)) return;
  const partprogram::ArcSolution solution =
      partprogram::SolveArc(block, reader_, state_, InSubroutine(), walker_.Level(), rounding_,
                            clockwise, machine_.YDirection);
  if (!solution.Arc) return Error(solution.Error(), true);
  limitCheck_.CheckArc(state_.Limits, *solution.Arc,
                       [this](std::string_view message) { Warn(message); });
}

/// The time is read and has no further effect.
GatherWalk::Flow GatherWalk::TakeG04() {
  (void)reader_.Value(Words(), 'K');
  return Flow::GoOn;
}

/// A reposition, a turn of the sheet and the clamps: nothing but the mode. The limits stay where
/// they are, so that a walk past a reposition may warn of positions that the machine reaches.
GatherWalk::Flow GatherWalk::TakeRapidMode() {
  state_.MotionMode = 0;
  return Flow::GoOn;
}

/// Always to the load position in force: a Y in the block is passed over.
GatherWalk::Flow GatherWalk::TakeM50() {
  state_.MotionMode = 0;
  state_.Current.X = machine_.LoadPositionX;
  state_.Current.Y = machine_.LoadPositionY;
  partprogram::LimitCheck each;
  each.Check(state_.Limits, state_.Current.X, state_.Current.Y,
             [this](std::string_view message) { Warn(message); });
  return Flow::GoOn;
}

GatherWalk::Flow GatherWalk::TakeM00() {
  if (!partprogram::StopIsText(Words())) state_.MotionMode = 0;
  return Flow::GoOn;
}

void GatherWalk::Error(std::string_view message, bool critical) {
  faults_.push_back({critical, std::string(message),
                     std::string(core::BlockPart(walker_.CurrentLine())), walker_.MainLine()});
}

}  // namespace torvane::restart

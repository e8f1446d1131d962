// The conversion pass: walks the cleaned program as the machine would, proves every move and makes
// one record for each thing that the machine will do.
#include "partprogram/ReverseModule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/General.h"
#include "partprogram/Binding.h"
#include "partprogram/ReversePass.h"
#include "platform/LargePages.h"

namespace torvane::partprogram {
namespace {

constexpr std::size_t LargestCount = std::numeric_limits<std::int16_t>::max();

/// mm, for a side that the program does not tell.
constexpr double DefaultSheetSide = 1000;

}  // namespace

/// The order in which the words of a block are tested and carried out.
const std::array<ReversePass::Row, 30> ReversePass::Order = {{
    {WordSet{Word::G98}, &ReversePass::CallG98},
    {{}, &ReversePass::CallQ, 'Q'},
    {WordSet{Word::If}, &ReversePass::TakeIf},
    {WordSet{Word::Goto}, &ReversePass::TakeGoto},
    {WordSet{Word::Abort, Word::M30}, &ReversePass::TakeLeave},
    {{}, &ReversePass::TakeParameters, 'P'},
    {{}, &ReversePass::TakeFeed, 'F'},
    {{}, &ReversePass::TakeSkipLevel, '\0', -1, true},
    {WordSet{Word::G90}, &ReversePass::TakeG90},
    {WordSet{Word::G91}, &ReversePass::TakeG91},
    {WordSet{Word::G70}, &ReversePass::TakeG70},
    {WordSet{Word::G71}, &ReversePass::TakeG71},
    {{}, &ReversePass::TakePosition, '\0', -1, true},
    {WordSet{Word::G30, Word::G31, Word::G32}, &ReversePass::TakeSettings},
    {WordSet{Word::G56}, &ReversePass::TakeG56},
    {WordSet{Word::G53}, &ReversePass::TakeG53},
    {WordSet{Word::G92}, &ReversePass::TakeG92},
    {WordSet{Word::G40, Word::G41, Word::G42}, &ReversePass::TakeKerf},
    {WordSet{Word::G00}, &ReversePass::TakeG00, '\0', 0},
    {WordSet{Word::G01}, &ReversePass::TakeG01, '\0', 1},
    {WordSet{Word::G02}, &ReversePass::TakeG02, '\0', 2},
    {WordSet{Word::G03}, &ReversePass::TakeG03, '\0', 3},
    {WordSet{Word::G04}, &ReversePass::TakeG04},
    {WordSet{Word::G95}, &ReversePass::TakeG95},
    {WordSet{Word::G31}, &ReversePass::TakeProfiling},
    {WordSet{Word::M10, Word::M11, Word::M12, Word::M13}, &ReversePass::TakeMirror},
    {WordSet{Word::M50}, &ReversePass::TakeM50},
    {WordSet{Word::M55}, &ReversePass::TakeM55},
    {WordSet{Word::M87, Word::M99}, &ReversePass::TakeM87},
    {WordSet{Word::M01, Word::M00}, &ReversePass::TakeM00},
}};

ReversePass::ReversePass(const ConversionInput& input, ConversionResult& result)
    : input_(input),
      machine_(*input.Machine),
      result_(result),
      walker_(input.Converted, result.Subs, input.MaxBlocks),
      state_(ModalState::AtStart(*input.Machine)),
      last_(state_.Current),
      common_(*input.ActiveStation, state_.Settings) {}

void ReversePass::Run() {
  Begin();
  for (bool going = true; going;) {
    switch (walker_.Next()) {
      case WalkStep::Block:
        going = TakeBlock() != Flow::Stop;
        break;
      case WalkStep::End:
        going = false;
        break;
      case WalkStep::TooManyLines:
        Error(Message::TooManyLines, true);
        going = false;
        break;
      case WalkStep::Endless:
        Error(Message::Endless, true);
        going = false;
        break;
    }
  }
  Finish();
}

void ReversePass::Begin() {
  result_.Report = ReportHead(input_.ProgramName, input_.DirectoryName, input_.Time);
  result_.LoadY = machine_.LoadPositionY;
  header_ = ReadProgramHeader(walker_.MainLines().All(), machine_.ClampCount);
  if (!(header_.SheetX > 0)) header_.SheetX = DefaultSheetSide;
  if (!(header_.SheetY > 0)) header_.SheetY = DefaultSheetSide;
  result_.MaterialText = MaterialText(header_);
  result_.SheetText = SheetText(header_);
  result_.ClampText = ClampText(header_);

  // Nearly every line makes a record; a program that calls subroutines makes more of them.
  result_.Records.reserve(std::min(walker_.MainLines().Count() + 2, LargestCount + 2));
  platform::PreferLargePages(result_.Records.data(),
                             result_.Records.capacity() * sizeof(DrawRecord));
  DrawRecord sheet;
  sheet.Code = RecordCode::Sheet;
  sheet.ChangeCommon().Name = PadText<18>("Sheet");
  sheet.ChangeCommon().Material = PadText<72>(header_.Material);
  sheet.RecordIndex = 1;
  sheet.KerfSide = machine_.YDirection;
  result_.Records.push_back(sheet);
}

void ReversePass::Finish() {
  DrawRecord& sheet = result_.Records.front();
  sheet[Figure::SheetX] = static_cast<float>(header_.SheetX);
  sheet[Figure::SheetY] = static_cast<float>(header_.SheetY);
  for (std::size_t i = 0; i < header_.Clamps.size(); ++i) {
    sheet[ClampFigure(i)] = static_cast<float>(header_.Clamps[i]);
  }
  sheet[Figure::KerfWidth] = static_cast<float>(kerfWidth_);
  sheet[Mark::RecordCount] = static_cast<std::int16_t>(result_.Records.size());
  sheet[Mark::Imperial] = imperialProgram_ ? -1 : 0;
  result_.Report += ReportEnd;
  result_.Totals = {0, moveLength_, profileLength_};
}

ReversePass::Flow ReversePass::TakeBlock() {
  if (Words().Text().size() > MaxBlockLength) {
    Error(Message::BlockTooLong, true);
    return Flow::GoOn;
  }
  reader_.ClearFault();
  limitCheck_.BeginBlock();
  const Flow flow = RunOrder();
  if (reader_.Fault() != ReadFault::None) Error(TextOf(reader_.Fault()), true);
  if (result_.Records.size() > LargestCount) {
    result_.Records.pop_back();
    Error(Message::TooManyRecords, true);
    return Flow::Stop;
  }
  if (result_.CriticalErrors >= static_cast<int>(LargestCount)) {
    Error(Message::TooManyErrors, true);
    return Flow::Stop;
  }
  return flow;
}

ReversePass::Flow ReversePass::RunOrder() {
  for (const Row& row : Order) {
    if (!Applies(row)) continue;
    const Flow flow = (this->*row.Act)();
    if (flow != Flow::GoOn) return flow;
  }
  return Flow::GoOn;
}

bool ReversePass::Applies(const Row& row) const {
  const Block& block = Words();
  if (row.Always || block.HasAny(row.Words)) return true;
  if (row.Letter != '\0') return block.Has(row.Letter);
  if (row.Mode < 0 || row.Mode != state_.MotionMode) return false;
  return GoesOnInMode(block);
}

// ---- calls and jumps ----

ReversePass::Flow ReversePass::CallG98() { return Call("S", true); }

ReversePass::Flow ReversePass::CallQ() { return Call("Q", false); }

ReversePass::Flow ReversePass::Call(std::string_view numberKey, bool turned) {
  TakePosition();
  const auto number = static_cast<std::int16_t>(reader_.Integer(Words().Text(), numberKey).Value);
  // Without "A" the turn is -999 degrees: a caller that wants none writes A0.
  const double rotation = turned ? reader_.Value(Words(), 'A').Value : 0;
  if (!walker_.HasSub(number)) {
    Error(Message::SubMissing, true);
    return Flow::Done;
  }
  if (walker_.Depth() >= MaxSubDepth) {
    Error(Message::SubTooDeep, true);
    return Flow::Stop;
  }
  SubLevel& level = walker_.Call(number);
  level.Rotation = static_cast<float>(rotation);
  level.OriginX = state_.Current.X;
  level.OriginY = state_.Current.Y;
  return Flow::Done;
}

ReversePass::Flow ReversePass::TakeIf() {
  switch (Decide(Words(), reader_)) {
    case Decision::Jump:
      return JumpTo();
    case Decision::Leave:
      return TakeLeave();
    case Decision::GoOn:
      break;
  }
  return Flow::Done;
}

ReversePass::Flow ReversePass::TakeGoto() { return JumpTo(); }

ReversePass::Flow ReversePass::JumpTo() {
  const core::WordValue target = reader_.Integer(Words().Text(), "GOTO");
  walker_.Jump(static_cast<std::int32_t>(target.Value));
  return Flow::Done;
}

ReversePass::Flow ReversePass::TakeLeave() { return walker_.Leave() ? Flow::Done : Flow::Stop; }

// ---- modal words ----

ReversePass::Flow ReversePass::TakeParameters() {
  AssignParameters(Words(), reader_, parameters_);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeFeed() {
  const core::WordValue feed = reader_.Value(Words(), 'F');
  if (feed.Found && feed.Value > 0) state_.Feed = feed.Value;
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeSkipLevel() {
  state_.SkipLevel = Words().SkipLevel();
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG90() {
  state_.Incremental = false;
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG91() {
  state_.Incremental = true;
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG70() {
  state_.Imperial = true;
  SettleUnits(true);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG71() {
  state_.Imperial = false;
  SettleUnits(false);
  return Flow::GoOn;
}

/// The first units word of a program says in which units its header is written.
void ReversePass::SettleUnits(bool imperial) {
  if (unitsSettled_) return;
  unitsSettled_ = true;
  if (!imperial) return;
  imperialProgram_ = true;
  header_.SheetX *= InchFactor;
  header_.SheetY *= InchFactor;
  for (double& clamp : header_.Clamps) clamp *= InchFactor;
}

ReversePass::Flow ReversePass::TakeMirror() {
  const Block& block = Words();
  if (block.Has(Word::M10)) state_.MirrorX = state_.MirrorY = false;
  if (block.Has(Word::M11)) state_.MirrorX = true;
  if (block.Has(Word::M12)) state_.MirrorY = true;
  if (block.Has(Word::M13)) state_.MirrorX = state_.MirrorY = true;
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeProfiling() {
  constexpr std::string_view Key = "T2=";
  constexpr double FirstBeamMode = 3;
  const std::string_view text = Words().Text();
  if (text.find(Key) == std::string_view::npos) return Flow::GoOn;
  state_.Profiling = std::trunc(reader_.Value(text, Key).Value) >= FirstBeamMode;
  return Flow::GoOn;
}

// ---- records and errors ----

DrawRecord& ReversePass::AddRecord(const RecordKind& kind, Beam beam) {
  // One record too many is kept, so that the end of its block can tell.
  if (result_.Records.size() > LargestCount) result_.Records.pop_back();
  DrawRecord& record = result_.Records.emplace_back();
  record.Code = kind.Code;
  record.Share(common_.Of(kind, beam));
  record.BlockNumber = walker_.MainLine();
  if (InSubroutine()) {
    record.SubNumber = walker_.Level().Number;
    record.SubBlock = walker_.Level().LineCount;
  }
  record.SkipLevel = state_.SkipLevel;
  record.Feed = static_cast<float>(state_.Feed);
  return record;
}

DrawRecord& ReversePass::AddPointRecord(const RecordKind& kind) {
  DrawRecord& record = AddRecord(kind, Beam::Off);
  record.CentrePoint = state_.Current;
  return record;
}

void ReversePass::PutRecord(DrawRecord& record) {
  FinishRecord(record);
  const std::size_t index = std::min(result_.Records.size(), LargestCount);
  record.RecordIndex = static_cast<std::int16_t>(index);
  if (record.BeamOn()) record.OwnNumber = record.RecordIndex;
}

void ReversePass::PutPlace(DrawRecord& record) {
  PutRecord(record);
  AddGap(record);
  last_ = record.EndPoint;
}

void ReversePass::Error(std::string_view message, bool critical) {
  WriteError(result_, {critical, std::string(message),
                       std::string(core::BlockPart(walker_.CurrentLine())), walker_.MainLine()});
}

ConversionResult RunConversion(const ConversionInput& input) {
  ConversionResult result;
  result.Subs = ExtractSubroutines(input.Converted);
  ReversePass(input, result).Run();
  return result;
}

}  // namespace torvane::partprogram

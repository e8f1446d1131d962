// Records at a position: settings, offsets, dwells, stops, repositions, clamps, load position.
#include <array>
#include <cmath>
#include <span>

#include "core/General.h"
#include "partprogram/ReversePass.h"

namespace torvane::partprogram {
namespace {

constexpr std::int16_t True = -1;

/// Longest backoff and return of a reposition that raise no warning, mm.
constexpr double LargestBackoff = 5.0;

/// Where the value of each numbered setting begins: after the first "k=" for k from 1 to 24, at
/// index k - 1; npos where there is none. "1=" stands in "11=" too.
std::array<std::size_t, 24> FindSettings(std::string_view text) {
  std::array<std::size_t, 24> places{};
  places.fill(std::string_view::npos);
  const auto digit = [&](std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9' ? text[at] - '0' : -1;
  };
  const auto note = [&](int number, std::size_t at) {
    if (number < 1 || number > 24) return;
    std::size_t& place = places[static_cast<std::size_t>(number - 1)];
    if (place == std::string_view::npos) place = at + 1;
  };
  for (auto at = text.find('='); at != std::string_view::npos; at = text.find('=', at + 1)) {
    const int ones = at >= 1 ? digit(at - 1) : -1;
    const int tens = at >= 2 ? digit(at - 2) : -1;
    if (ones < 0) continue;
    note(ones, at);
    if (tens > 0) note(tens * 10 + ones, at);
  }
  return places;
}

struct SettingsWord {
  Word Settings;
  std::int16_t Mode;
};
constexpr std::array<SettingsWord, 3> SettingsWords = {
    {{Word::G30, 0}, {Word::G31, 1}, {Word::G32, 2}}};

struct KerfWord {
  Word Kerf;
  std::int16_t Side;
};
constexpr std::array<KerfWord, 3> KerfWords = {{{Word::G40, 0}, {Word::G41, 1}, {Word::G42, 2}}};

}  // namespace

ReversePass::Flow ReversePass::TakeSettings() {
  for (const SettingsWord& row : SettingsWords) {
    if (Words().Has(row.Settings)) MakeSettings(row.Mode);
  }
  return Flow::GoOn;
}

void ReversePass::MakeSettings(std::int16_t mode) {
  const std::string_view text = Words().Text();
  const auto places = FindSettings(text);
  auto settings = CommonFields::ClearedSettings();
  bool found = false;
  for (std::size_t i = 0; i < settings.size(); ++i) {
    if (places[i] == std::string_view::npos) continue;
    const core::WordValue value = reader_.ValueAt(text, places[i]);
    if (!value.Found) continue;
    found = true;
    settings[i] = state_.Settings[i] = static_cast<float>(value.Value);
  }
  if (!found) return;
  // The record has its own settings alone, those after it all that are set.
  common_.SetSettings(settings);
  DrawRecord& record = AddPointRecord(Kind::Settings);
  record[Mark::SettingsMode] = mode;
  PutRecord(record);
  common_.SetSettings(state_.Settings);
}

ReversePass::Flow ReversePass::TakeG56() {
  AddWorkOffset(Words(), reader_, state_);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG53() {
  state_.OffsetX = state_.OffsetY = 0;
  PutRecord(AddPointRecord(Kind::CancelOffsets));
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG92() {
  SetWorkOffset(Words(), reader_, state_);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeKerf() {
  for (const KerfWord& row : KerfWords) {
    if (!Words().Has(row.Kerf)) continue;
    state_.KerfSide = row.Side;
    if (row.Side == 0) continue;
    const core::WordValue width = reader_.Value(Words(), 'K');
    if (width.Found) kerfWidth_ = width.Value;
  }
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG04() {
  const core::WordValue time = reader_.Value(Words(), 'K');
  if (!time.Found || !(time.Value > 0)) return Flow::GoOn;
  DrawRecord& record = AddPointRecord(Kind::Dwell);
  record[Figure::DwellTime] = static_cast<float>(time.Value);
  PutPlace(record);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG95() {
  state_.MotionMode = 0;
  double i = reader_.LengthOrZero(Words(), 'I', state_.Imperial);
  double j = reader_.LengthOrZero(Words(), 'J', state_.Imperial);
  double k = reader_.LengthOrZero(Words(), 'K', state_.Imperial);
  if (std::abs(j) > LargestBackoff) Error(Message::Backoff, false);
  if (std::abs(k) > LargestBackoff) Error(Message::Return, false);
  if (state_.MirrorX) i = 0 - i;
  if (state_.MirrorY) {
    j = 0 - j;
    k = 0 - k;
  }
  TravelLimits& limits = state_.Limits;
  limits.XMin = static_cast<float>(limits.XMin - i);
  limits.XMax = static_cast<float>(limits.XMax - i);
  DrawRecord& record = AddPointRecord(Kind::Reposition);
  record[Figure::RepositionX] = static_cast<float>(i);
  record[Figure::Backoff] = static_cast<float>(j);
  record[Figure::LimitXMin] = limits.XMin;
  record[Figure::LimitXMax] = limits.XMax;
  record[Figure::Return] = static_cast<float>(k);
  PutPlace(record);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeM50() {
  state_.MotionMode = 0;
  const core::WordValue y = reader_.Value(Words(), 'Y');
  state_.Current.X = machine_.LoadPositionX;
  state_.Current.Y = y.Found ? static_cast<float>(y.Value * (state_.Imperial ? InchFactor : 1))
                             : machine_.LoadPositionY;
  DrawRecord& record = AddPointRecord(Kind::LoadPosition);
  record[Figure::LoadX] = state_.Current.X;
  record[Figure::LoadY] = state_.Current.Y;
  PutRecord(record);
  CheckLimitsEachTime();
  result_.LoadY = state_.Current.Y;
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeM55() {
  state_.MotionMode = 0;
  const std::string_view text = Words().Text();
  const auto flag = [&](std::string_view key) -> std::int16_t {
    const core::WordValue value = reader_.Integer(text, key);
    return value.Found && value.Value != 0 ? True : std::int16_t{0};
  };
  DrawRecord& record = AddPointRecord(Kind::FlipRotate);
  record[Mark::FlipX] = flag("I");
  record[Mark::FlipY] = flag("J");
  record[Figure::Rotation] = static_cast<float>(reader_.ValueOrZero(Words(), 'A'));
  PutRecord(record);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeM87() {
  state_.MotionMode = 0;
  DrawRecord& record = AddPointRecord(Kind::OpenClamps);
  record[Mark::OpensClamps] = Words().Has(Word::M87) ? True : std::int16_t{0};
  PutRecord(record);
  CheckLimitsEachTime();
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeM00() {
  if (StopIsText(Words())) return Flow::GoOn;
  state_.MotionMode = 0;
  PutPlace(AddPointRecord(Kind::ProgramStop));
  return Flow::GoOn;
}

}  // namespace torvane::partprogram

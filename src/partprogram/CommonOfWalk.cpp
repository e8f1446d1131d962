#include "partprogram/CommonOfWalk.h"

#include <bit>

namespace torvane::partprogram {

namespace {

BeamState BeamOf(const core::Station& station) {
  BeamState beam;
  beam.On = -1;
  beam.Kind = 'P';
  beam.ToolName = PadText<18>(station.Name);
  beam.StationNumber = station.Number;
  beam.StationType = station.Type;
  return beam;
}

/// To the last bit: a setting may be no number.
bool Same(const CommonOfWalk::Settings& left, const CommonOfWalk::Settings& right) {
  using Bits = std::array<std::uint32_t, 24>;
  return std::bit_cast<Bits>(left) == std::bit_cast<Bits>(right);
}

}  // namespace

CommonOfWalk::CommonOfWalk(const core::Station& station, const Settings& settings)
    : beam_(BeamOf(station)) {
  rows_[0].Values = settings;
}

void CommonOfWalk::SetSettings(const Settings& settings) {
  for (row_ = 0; row_ < used_; ++row_) {
    if (Same(rows_[row_].Values, settings)) return;
  }
  if (used_ < KeptRows) {
    ++used_;
  } else {
    row_ = oldest_;
    oldest_ = (oldest_ + 1) % KeptRows;
  }
  rows_[row_] = {settings, {}};
}

const std::shared_ptr<CommonFields>& CommonOfWalk::Of(const RecordKind& kind, Beam beam) {
  auto& made = rows_[row_].Made[kind.Row][beam == Beam::On ? 1 : 0];
  if (made != nullptr) return made;
  made = std::make_shared<CommonFields>();
  made->Name = kind.Name;
  made->Settings = rows_[row_].Values;
  if (beam == Beam::On) {
    made->BeamState1 = beam_;
    made->ProfileNumber = 1;
    made->BeamState2.ProfilingMark = -1;
  }
  return made;
}

}  // namespace torvane::partprogram

#include "core/MachineFiles.h"

#include <array>
#include <cmath>
#include <variant>

#include "core/ConfigText.h"
#include "core/General.h"

namespace torvane::core {

namespace {

/// A field of the record by its type, which is also the rule of its reading.
using MachineField = std::variant<std::string MachineData::*, std::int16_t MachineData::*,
                                  bool MachineData::*, float MachineData::*>;

/// Machine.dat, a row a line.
const std::array<MachineField, 18> MachineLines = {
    &MachineData::MachineName,    &MachineData::MachineType,    &MachineData::YDirection,
    &MachineData::MachineOption1, &MachineData::MachineOption2, &MachineData::MachineOption3,
    &MachineData::LoadPositionX,  &MachineData::LoadPositionY,  &MachineData::TravelMinX,
    &MachineData::TravelMaxX,     &MachineData::TravelMinY,     &MachineData::TravelMaxY,
    &MachineData::MachineValue1,  &MachineData::MachineValue2,  &MachineData::MachineValue3,
    &MachineData::ClampCount,     &MachineData::ClampValue1,    &MachineData::ClampValue2,
};

/// Profiler.cfg, a row a line.
const std::array<MachineField, 7> ProfilerLines = {
    &MachineData::SwapArcWords,       &MachineData::NegateArcCentre,
    &MachineData::ArcChordsPerDegree, &MachineData::CornerLimitFactor,
    &MachineData::CornerFeedPercent,  &MachineData::BlendAngle,
    &MachineData::BlendMinRadius,
};

/// Reads one field into the record.
struct StoreField {
  MachineData& Machine;
  std::string_view Text;
  bool Inches = false;

  void operator()(std::string MachineData::*field) const { Machine.*field = UpperCase(Text); }
  void operator()(std::int16_t MachineData::*field) const {
    Machine.*field = TruncateToInt16(LeadingNumber(Text));
  }
  void operator()(bool MachineData::*field) const { Machine.*field = IsYes(Text); }
  void operator()(float MachineData::*field) const {
    const float value = ToSingle(LeadingNumber(Text));
    Machine.*field = Inches ? ToSingle(RoundPlaces(double{value} * 25.4, 3)) : value;
  }
};

/// Values that would stop the passes are put right without a word.
void CorrectProfiler(MachineData& machine) {
  if (machine.ArcChordsPerDegree < 1) machine.ArcChordsPerDegree = 10;
  if (machine.CornerFeedPercent <= 0) machine.CornerFeedPercent = 100.0F;
  machine.BlendAngle = ToSingle(NormaliseAngle(std::fabs(double{machine.BlendAngle})));
}

}  // namespace

void ReadMachineFile(std::string_view text, std::string_view path, bool imperialUnits,
                     MachineData& machine) {
  LineReader lines(text, path);
  for (const auto& field : MachineLines) {
    std::visit(StoreField{machine, AfterColon(lines.Required()), imperialUnits}, field);
  }
  machine.MachineVariant = static_cast<std::int16_t>(machine.MachineType % 10);
}

void ReadProfilerFile(std::string_view text, MachineData& machine) {
  LineReader lines(text, {});
  for (const auto& field : ProfilerLines) {
    const auto line = lines.Optional();
    if (!line) break;
    std::visit(StoreField{machine, AfterColon(*line)}, field);
  }
  CorrectProfiler(machine);
}

}  // namespace torvane::core

#include "partprogram/SplittingModule.h"

#include <utility>

#include "core/General.h"
#include "partprogram/Binding.h"

namespace torvane::partprogram {
namespace {

constexpr int Places = 2;

/// Stations from this type on turn their tool with the path.
constexpr std::int16_t AngleKeepingType = 10;

void AppendWord(std::string& block, std::string_view letter, double value) {
  block += letter;
  core::AppendNumber(block, value, Places);
}

void SwapEnds(DrawRecord& record) {
  std::swap(record.StartPoint, record.EndPoint);
  std::swap(record.ProfileStart, record.ProfileEnd);
}

float Normalised(double degrees) { return static_cast<float>(core::NormaliseAngle(degrees)); }

}  // namespace

std::string WriteLineBlock(const DrawRecord& record) {
  std::string block = "G01";
  AppendWord(block, " X", record.EndPoint.X);
  AppendWord(block, " Y", record.EndPoint.Y);
  return block;
}

std::string WriteArcBlock(const DrawRecord& record, std::int16_t yDirection) {
  const bool negative = record[Figure::Sweep] < 0;
  std::string block = (yDirection == 1) == negative ? "G02" : "G03";
  AppendWord(block, " X", record.EndPoint.X);
  AppendWord(block, " Y", record.EndPoint.Y);
  AppendWord(block, " I", static_cast<double>(record.CentrePoint.X) - record.StartPoint.X);
  AppendWord(block, " J", static_cast<double>(record.CentrePoint.Y) - record.StartPoint.Y);
  return block;
}

void ReverseLineRecord(DrawRecord& record) {
  SwapEnds(record);
  record[Figure::Angle] = Normalised(record[Figure::Angle] + 180.0);
  record.KerfSide = static_cast<std::int16_t>(-record.KerfSide);
  FinishRecord(record);
}

void ReverseArcRecord(DrawRecord& record) {
  SwapEnds(record);
  const double start = record[Figure::StartAngle];
  const double toolStart = record[Figure::ToolStartAngle];
  record[Figure::StartAngle] = Normalised(start + record[Figure::Sweep]);
  record[Figure::ToolStartAngle] = Normalised(toolStart + record[Figure::ToolSweep]);
  for (const Figure figure : {Figure::Sweep, Figure::SecondRadius, Figure::ToolSweep}) {
    record[figure] = static_cast<float>(0.0 - record[figure]);
  }
  if (record.BeamOn() && record.Common().BeamState1.StationType >= AngleKeepingType) {
    float& angle = record.ChangeCommon().BeamState1.Angle;
    angle = Normalised(angle + record[Figure::StartAngle] - start);
    record[Figure::ToolAngle] =
        Normalised(record[Figure::ToolAngle] + record[Figure::ToolStartAngle] - toolStart);
  }
  FinishRecord(record);
}

std::string WriteElementBlock(DrawRecord record, std::int16_t yDirection) {
  switch (record.Code) {
    case RecordCode::LineProfile:
      ReverseLineRecord(record);
      return WriteLineBlock(record);
    case RecordCode::ArcProfile:
      ReverseArcRecord(record);
      return WriteArcBlock(record, yDirection);
    default:
      return {};
  }
}

void ClearSplitCycle(SplitCycle& split, platform::FileSystem& files,
                     const core::DirectorySet& directories) {
  split = {};
  files.DeleteFile(directories.RootDirectory + "SplitCyc.drw");
}

}  // namespace torvane::partprogram

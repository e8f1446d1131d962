#include "partprogram/SplittingModule.h"

#include <utility>

#include "core/General.h"
#include "partprogram/Binding.h"

namespace torvane::partprogram {
namespace {

constexpr int Places = 2;

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
  const bool negative = record.Values[10] < 0;
  std::string block = (yDirection == 1) == negative ? "G02" : "G03";
  AppendWord(block, " X", record.EndPoint.X);
  AppendWord(block, " Y", record.EndPoint.Y);
  AppendWord(block, " I", static_cast<double>(record.CentrePoint.X) - record.StartPoint.X);
  AppendWord(block, " J", static_cast<double>(record.CentrePoint.Y) - record.StartPoint.Y);
  return block;
}

void ReverseLineRecord(DrawRecord& record) {
  SwapEnds(record);
  record.Values[9] = Normalised(record.Values[9] + 180.0);
  record.KerfSide = static_cast<std::int16_t>(-record.KerfSide);
  FinishRecord(record);
}

void ReverseArcRecord(DrawRecord& record) {
  SwapEnds(record);
  record.Values[9] = Normalised(static_cast<double>(record.Values[9]) + record.Values[10]);
  record.Values[12] = Normalised(static_cast<double>(record.Values[12]) + record.Values[13]);
  for (const std::size_t value : {std::size_t{10}, std::size_t{11}, std::size_t{13}}) {
    record.Values[value] = static_cast<float>(0.0 - record.Values[value]);
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

// Records for the tests of the passes behind the walk.
#pragma once

#include <string>
#include <vector>

#include "partprogram/Binding.h"
#include "partprogram/DrawRecord.h"
#include "partprogram/KerfModule.h"

namespace torvane::tests {

using namespace torvane::partprogram;

inline DrawRecord Header() {
  DrawRecord header;
  header.Code = RecordCode::Sheet;
  header.RecordIndex = 1;
  return header;
}

inline DrawRecord Straight(std::int16_t code, Point3 start, Point3 end, std::int16_t side = 0) {
  DrawRecord record;
  record.Code = code;
  record.ChangeCommon().Name = PadText<18>(code == RecordCode::Move ? "Move" : "Line Profile");
  record.StartPoint = start;
  record.EndPoint = end;
  record.KerfSide = side;
  record.Feed = 2000;
  FinishRecord(record);
  return record;
}

inline DrawRecord Line(Point3 start, Point3 end, std::int16_t side = 0) {
  return Straight(RecordCode::LineProfile, start, end, side);
}

inline DrawRecord Move(Point3 start, Point3 end) { return Straight(RecordCode::Move, start, end); }

inline DrawRecord Arc(Point3 centre, double radius, double start, double sweep,
                      std::int16_t side = 0) {
  DrawRecord record;
  record.Code = RecordCode::ArcProfile;
  record.ChangeCommon().Name = PadText<18>("Arc Profile");
  record.CentrePoint = centre;
  record[Figure::Radius] = static_cast<float>(radius);
  record[Figure::StartAngle] = static_cast<float>(start);
  record[Figure::Sweep] = static_cast<float>(sweep);
  record.KerfSide = side;
  record.Feed = 2000;
  FinishRecord(record);
  return record;
}

inline DrawRecord Other(std::int16_t code, Point3 at = {}) {
  DrawRecord record;
  record.Code = code;
  record.CentrePoint = at;
  FinishRecord(record);
  return record;
}

/// A header and the records behind it, numbered from 1.
inline std::vector<DrawRecord> Numbered(std::vector<DrawRecord> records) {
  records.insert(records.begin(), Header());
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].RecordIndex = static_cast<std::int16_t>(i + 1);
  }
  records.front()[Mark::RecordCount] = static_cast<std::int16_t>(records.size());
  return records;
}

inline std::string Bytes(const DrawRecord& record) {
  std::string bytes(DrawRecordSize, ' ');
  EncodeRecord(record, std::span<char, DrawRecordSize>(bytes.data(), DrawRecordSize));
  return bytes;
}

}  // namespace torvane::tests

// The machine's fixed data, filled once at start.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace torvane::core {

/// Machine.dat and Profiler.cfg. Lengths mm, angles degrees.
struct MachineData {
  std::string MachineName;
  std::int16_t MachineType = 0;
  std::int16_t MachineVariant =
      0;                        ///< MachineType modulo 10; above 0: a head with offsets and a beam
  std::int16_t YDirection = 0;  ///< 1: plus Y runs up the screen
  std::int16_t MachineOption1 = 0;
  bool MachineOption2 = false;
  bool MachineOption3 = false;
  float LoadPositionX = 0;  ///< replaced at start by VR(86)
  float LoadPositionY = 0;  ///< replaced at start by VR(87)
  float TravelMinX = 0;
  float TravelMaxX = 0;
  float TravelMinY = 0;
  float TravelMaxY = 0;
  float MachineValue1 = 0;
  float MachineValue2 = 0;
  float MachineValue3 = 0;
  std::int16_t ClampCount = 0;
  float ClampValue1 = 0;
  float ClampValue2 = 0;

  bool SwapArcWords = false;
  bool NegateArcCentre = false;
  std::int16_t ArcChordsPerDegree = 10;
  float CornerLimitFactor = 10.0F;
  float CornerFeedPercent = 100.0F;
  float BlendAngle = 45.0F;
  float BlendMinRadius = 0;
};

/// One row of Machine.stn. Offsets mm, never negative.
struct Station {
  std::int16_t Number = 0;
  std::int16_t DefaultNumber = 0;
  std::string Name;
  std::int16_t Type = 0;
  float OffsetX = 0;
  float OffsetY = 0;
  float OffsetZ = 0;
  std::int16_t Flag = 0;
};

/// Rows 0 to 64.
using StationTable = std::array<Station, 65>;

/// Laser.dat: entry 0 is the active station's name.
using LaserNameList = std::vector<std::string>;

}  // namespace torvane::core

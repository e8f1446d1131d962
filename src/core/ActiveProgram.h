// One of the two slots that hold a selected program.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace torvane::core {

/// Figures of the conversion for the program information, mm.
struct RunTotals {
  std::int32_t ProgramTime = 0;
  float MoveLength = 0;
  float ProfileLength = 0;
};

/// Batch counters.
struct Batch {
  std::int32_t PartsPerSheet = 0;
  std::int32_t PartsRequired = 0;
  std::int32_t SheetsRequired = 0;
  std::int32_t SheetsCompleted = 0;
  std::int32_t SheetsToGo = 0;
};

/// The content of a ".lsr" file.
struct LaserSetting {
  std::array<std::int16_t, 4> Integers{};
  std::array<float, 2> Floats{};
  std::int16_t Integer7 = 0;
  std::array<float, 2> MoreFloats{};
  std::int16_t NameIndex = 0;
};

struct ActiveProgram {
  bool Selected = false;
  std::string ProgramName;
  std::string DirectoryName;
  std::string SourcePath;  ///< without extension
  std::string Marker = "!";
  std::string Note;
  std::string Material;
  float SheetX = 0;
  float SheetY = 0;
  std::array<float, 4> Clamps{};
  float KerfWidth = 0;
  float LoadY = 0;  ///< sent as VR(87)
  std::int16_t BodyLines = 0;
  std::int16_t DrawRecords = 0;
  std::int16_t KerfRecords = 0;
  std::int16_t ProgramCode = 0;  ///< sent as VR(90); nothing fills it
  std::int16_t TableLines = 0;
  bool Imperial = false;
  RunTotals Totals;
  Batch BatchCounters;
  LaserSetting LaserSettings;
};

}  // namespace torvane::core

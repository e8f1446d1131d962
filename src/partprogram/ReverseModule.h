// The conversion pass: walks the cleaned program as the machine would and makes one record for each
// thing that the machine will do.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/ActiveProgram.h"
#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"
#include "partprogram/Walker.h"
#include "platform/Clock.h"

namespace torvane::partprogram {

/// What the walk of a program needs beside its text.
struct ConversionInput {
  std::string_view Converted;  ///< the ".cnv"
  std::string_view ProgramName;
  std::string_view DirectoryName;
  const core::MachineData* Machine = nullptr;
  const core::Station* ActiveStation = nullptr;
  platform::LocalTime Time;       ///< printed in the report
  int MaxBlocks = MaxWalkBlocks;  ///< blocks that the walk may read, rounds included
};

/// One problem of a program.
struct ProgramError {
  bool Critical = false;
  std::string Message;           ///< to the letter, blanks included
  std::string Block;             ///< the line of the ".cnv", left of the comment, trimmed
  std::int16_t BlockNumber = 0;  ///< line of the main file, from 1; 0 outside any
};

struct ConversionResult {
  std::vector<DrawRecord> Records;           ///< ".drw", the header first
  std::map<std::int16_t, std::string> Subs;  ///< "<number>.sub" texts
  std::string Report;                        ///< Reverse.txt
  std::vector<ProgramError> Errors;
  int CriticalErrors = 0;
  std::string MaterialText;
  std::string SheetText;
  std::string ClampText;
  float LoadY = 0;  ///< mm
  core::RunTotals Totals;
};

[[nodiscard]] ConversionResult RunConversion(const ConversionInput& input);

}  // namespace torvane::partprogram

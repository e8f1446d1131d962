// What a check found out about one program.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/ActiveProgram.h"
#include "partprogram/Pipeline.h"
#include "partprogram/RunEstimate.h"

namespace torvane::tools {

/// A kind of record and how often it is in the program.
struct RecordCount {
  std::int16_t Code = 0;
  const char* Name = "";  ///< the name in the record itself
  int Count = 0;
};

struct CheckCounts {
  int Elements = 0;  ///< programmed lines and arcs with the beam on
  /// Their length as programmed, mm. The slot's own total takes clockwise arcs off; this one adds
  /// them.
  double CutLength = 0;
  int CornerArcs = 0;  ///< put in by the kerf pass
  int Blends = 0;      ///< compensated elements that go on in their predecessor's direction
  std::array<RecordCount, 11> Programmed{};  ///< by kind, without the header
};

/// How long the run of a program takes, where that was asked for.
struct CheckEstimate {
  partprogram::RunSwitches Switches;
  partprogram::RunEstimate Run;
  std::vector<partprogram::Contour> Longest;
};

struct CheckResult {
  std::string Directory;
  std::string Program;
  /// Set where the passes could not run or their files not be written: path and what was wrong.
  std::string Fault;
  partprogram::PassOutcome Outcome = partprogram::PassOutcome::ErrorsInCode;
  core::ActiveProgram Slot;  ///< the fields that come from the passes
  std::vector<partprogram::ProgramError> Errors;
  CheckCounts Counts;
  std::string Report;  ///< Reverse.txt
  std::optional<CheckEstimate> Estimate;

  [[nodiscard]] bool Good() const {
    return Fault.empty() && Outcome == partprogram::PassOutcome::Good;
  }
};

/// Counts over the records of both files.
[[nodiscard]] CheckCounts CountRecords(const std::vector<partprogram::DrawRecord>& programmed,
                                       const std::vector<partprogram::DrawRecord>& compensated);

/// Why a program cannot be selected, in the words of the console; empty for a good one.
[[nodiscard]] std::string RefusalText(const CheckResult& result);

}  // namespace torvane::tools

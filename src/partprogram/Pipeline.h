// The road from the text of a part program to its table lines: the passes in their order.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "core/MachineData.h"
#include "core/Slot.h"
#include "partprogram/ConvertModule.h"
#include "partprogram/DrawRecord.h"
#include "partprogram/ReverseModule.h"
#include "partprogram/TableModule.h"
#include "partprogram/Walker.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace torvane::partprogram {

/// What the passes need beside the program text. The machine's data must outlive the call.
struct PassInput {
  std::string_view ProgramName;
  std::string_view DirectoryName;
  core::Slot Slot;
  const core::MachineData* Machine = nullptr;
  const core::Station* ActiveStation = nullptr;
  platform::LocalTime Time;       ///< printed in the report
  int MaxBlocks = MaxWalkBlocks;  ///< blocks that the walk may read, rounds included
};

enum class PassOutcome {
  Good,
  ErrorsInCode,  ///< one or more critical errors; they are in the report
  IllegalKerf,   ///< the kerf width leaves an arc without radius
};

/// Everything that the passes made. After an outcome other than Good, what later passes would have
/// made is empty.
struct PassResult {
  PassOutcome Outcome = PassOutcome::ErrorsInCode;
  IntermediateText Text;         ///< ".bdy" and ".cnv"
  ConversionResult Conversion;   ///< records of ".drw", subroutines, report, totals, texts
  std::vector<DrawRecord> Kerf;  ///< records of ".krw", with their blends and table lines
  TableResult Table;             ///< text of ".tbx"
  std::int16_t BodyLines = 0;    ///< records of ".rnd"
};

/// The passes in their order.
enum class Pass : std::uint8_t {
  Clean,    ///< made `Text`
  Convert,  ///< made `Conversion`; the records still take their numbers from the next
  Kerf,     ///< made `Kerf`
  Blends,
  Tables,  ///< made `Table`, and the last fields of `Kerf`
  Counts,
};

/// Runs all passes over a squeezed program. Touches no file.
[[nodiscard]] PassResult RunPasses(std::string_view squeezedProgram, const PassInput& input);

/// The same, and tells after each pass that it has run; the outcome in `result` is that of the
/// pass.
void RunPasses(std::string_view squeezedProgram, const PassInput& input, PassResult& result,
               const std::function<void(Pass)>& after);

/// The slot's fields that come from the passes: material, sheet, clamps, kerf width, counts, units,
/// load Y, totals. The other fields stay.
void FillSlot(const PassResult& result, core::ActiveProgram& slot);

/// Writes Reverse.txt in `ServiceDirectory`.
void WriteReport(platform::FileSystem& files, const core::DirectorySet& directories,
                 const PassResult& result);

/// The bytes of a record file.
[[nodiscard]] std::string EncodeRecords(const std::vector<DrawRecord>& records);

}  // namespace torvane::partprogram

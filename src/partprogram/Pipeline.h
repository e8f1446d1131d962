// The road from the text of a part program to the files of a slot: the passes in their order, and
// the one place that writes what they made.
#pragma once

#include <cstdint>
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
  platform::LocalTime Time;  ///< printed in the report
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

/// Runs all passes over a squeezed program. Touches no file.
[[nodiscard]] PassResult RunPasses(std::string_view squeezedProgram, const PassInput& input);

/// The slot's fields that come from the passes: material, sheet, clamps, kerf width, counts, units,
/// load Y, totals. The other fields stay.
void FillSlot(const PassResult& result, core::ActiveProgram& slot);

/// Writes Reverse.txt in `ServiceDirectory`.
void WriteReport(platform::FileSystem& files, const core::DirectorySet& directories,
                 const PassResult& result);

/// Writes "Actvprg<slot>." with bdy, cnv, drw, krw, tbl, tbx and rnd in `RootDirectory`, each file
/// replaced whole, the subroutines in the slot's directory, and the report. Behind an outcome other
/// than Good it writes those that exist: the caller empties the slot.
/// Throws RuntimeFault where a file cannot be written.
void WriteSlotFiles(platform::FileSystem& files, const core::DirectorySet& directories,
                    core::Slot slot, const PassResult& result);

/// The bytes of a record file.
[[nodiscard]] std::string EncodeRecords(const std::vector<DrawRecord>& records);

}  // namespace torvane::partprogram

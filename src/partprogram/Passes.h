// The passes that turn a part program into controller lines, as functions of text and records.
// Files are read and written around them, in Pipeline.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/ActiveProgram.h"
#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"
#include "platform/Clock.h"

namespace torvane::partprogram {

/// What the cleaning step leaves: ".bdy" and ".cnv", lines ended by CR LF.
struct IntermediateText {
  std::string Body;
  std::string Converted;
};

/// ConvertModule. `program` is the squeezed ".prg".
[[nodiscard]] IntermediateText MakeIntermediateFiles(std::string_view program,
                                                     const core::MachineData& machine);

/// What the walk of a program needs beside its text.
struct ConversionInput {
  std::string_view Converted;  ///< the ".cnv"
  std::string_view ProgramName;
  std::string_view DirectoryName;
  std::int16_t Slot = 1;
  const core::MachineData* Machine = nullptr;
  const core::Station* ActiveStation = nullptr;
  platform::LocalTime Time;  ///< stands in the report
};

/// One problem of a program.
struct ProgramError {
  bool Critical = false;
  std::string Message;           ///< as told, blanks included
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
  float LoadY = 0;
  core::RunTotals Totals;
};

/// ReverseModule: walks the program as the machine would.
[[nodiscard]] ConversionResult RunConversion(const ConversionInput& input);

struct KerfResult {
  std::vector<DrawRecord> Records;  ///< ".krw", the header first
  bool IllegalWidth = false;
  bool TooManyRecords = false;  ///< more than the 16-bit count holds
};

/// KerfModule. Writes into each of `draw` the number of its record in the result.
[[nodiscard]] KerfResult MakeKerfFile(std::vector<DrawRecord>& draw, double kerfWidth,
                                      const core::MachineData& machine);

/// BlendModule: sets `Blended` of every record behind the header.
void MarkBlends(std::vector<DrawRecord>& kerf, const core::MachineData& machine);

struct TableResult {
  std::string Text;  ///< ".tbx": the lines, each ended by CR LF
  std::int16_t Lines = 0;
  bool TooManyLines = false;  ///< more than the 16-bit count holds
  int CutLineRecord = 0;      ///< first record whose line is longer than 80 characters, 0 none
};

/// TableModule. Writes `TableLine` into the records.
[[nodiscard]] TableResult MakeTables(std::int16_t slot, std::vector<DrawRecord>& kerf);

/// Text of lines as fixed records of 80 bytes, blank-padded: ".tbl" from ".tbx", ".rnd" from
/// ".bdy". Empty lines are left out when `skipEmpty`; a longer line is cut.
struct FixedLines {
  std::string Bytes;
  int Count = 0;
};
[[nodiscard]] FixedLines MakeFixedLines(std::string_view text, bool skipEmpty);

/// The next lines of `text` as fixed records, as many as a part of a file holds; they are taken off
/// the text. Nothing is left when `bytes` stays empty.
void TakeFixedLines(std::string_view& text, bool skipEmpty, std::string& bytes);

}  // namespace torvane::partprogram

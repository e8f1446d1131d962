#include "partprogram/Pipeline.h"

#include <algorithm>
#include <array>
#include <limits>

#include "core/General.h"
#include "core/Text.h"
#include "partprogram/BlendModule.h"
#include "partprogram/KerfModule.h"
#include "partprogram/Report.h"
#include "partprogram/ReversePass.h"
#include "platform/VectorState.h"

namespace torvane::partprogram {
namespace {

constexpr int LargestCount = std::numeric_limits<std::int16_t>::max();

/// What one pass needs of the others.
struct Pipeline {
  std::string_view Program;
  const PassInput& Input;
  PassResult& Result;
};

/// A problem that shows only after the walk: the slot stays empty because of it.
PassOutcome Refuse(Pipeline& pipeline, std::string_view message, std::int16_t mainLine) {
  ConversionResult& conversion = pipeline.Result.Conversion;
  ProgramError error{true, std::string(message), "", mainLine};
  const auto lines = core::SplitLines(pipeline.Result.Text.Converted);
  if (mainLine >= 1 && static_cast<std::size_t>(mainLine) <= lines.size()) {
    error.Block = core::BlockPart(lines[static_cast<std::size_t>(mainLine - 1)]);
  }
  WriteLateError(conversion, error);
  return PassOutcome::ErrorsInCode;
}

PassOutcome Clean(Pipeline& pipeline) {
  pipeline.Result.Text = MakeIntermediateFiles(pipeline.Program, *pipeline.Input.Machine);
  return PassOutcome::Good;
}

PassOutcome Convert(Pipeline& pipeline) {
  const PassInput& input = pipeline.Input;
  pipeline.Result.Conversion =
      RunConversion({pipeline.Result.Text.Converted, input.ProgramName, input.DirectoryName,
                     input.Machine, input.ActiveStation, input.Time, input.MaxBlocks});
  return pipeline.Result.Conversion.CriticalErrors > 0 ? PassOutcome::ErrorsInCode
                                                       : PassOutcome::Good;
}

PassOutcome CompensateKerf(Pipeline& pipeline) {
  std::vector<DrawRecord>& draw = pipeline.Result.Conversion.Records;
  KerfResult kerf = MakeKerfFile(draw, draw.front()[Figure::KerfWidth], *pipeline.Input.Machine);
  if (kerf.TooManyRecords) return Refuse(pipeline, Message::TooManyRecords, 0);
  if (kerf.IllegalWidth) return PassOutcome::IllegalKerf;
  pipeline.Result.Kerf = std::move(kerf.Records);
  return PassOutcome::Good;
}

PassOutcome Blend(Pipeline& pipeline) {
  MarkBlends(pipeline.Result.Kerf, *pipeline.Input.Machine);
  return PassOutcome::Good;
}

PassOutcome Tabulate(Pipeline& pipeline) {
  PassResult& result = pipeline.Result;
  result.Table = MakeTables(pipeline.Input.Slot, result.Kerf);
  if (result.Table.TooManyLines) return Refuse(pipeline, Message::TooManyTableLines, 0);
  if (const int record = result.Table.CutLineRecord; record > 0) {
    return Refuse(pipeline, Message::TableLineTooLong,
                  result.Kerf[static_cast<std::size_t>(record - 1)].BlockNumber);
  }
  return PassOutcome::Good;
}

PassOutcome CountBody(Pipeline& pipeline) {
  int lines = 0;
  std::string_view body = pipeline.Result.Text.Body;
  for (std::string_view line; core::TakeLine(body, line);)
    lines += core::Trim(line).empty() ? 0 : 1;
  if (lines > LargestCount) return Refuse(pipeline, Message::TooManyLines, 0);
  pipeline.Result.BodyLines = static_cast<std::int16_t>(lines);
  return PassOutcome::Good;
}

struct PassRow {
  Pass Is;
  PassOutcome (*Run)(Pipeline&);
};

/// The road of a program. The first pass that refuses it ends the road.
constexpr std::array<PassRow, 6> Passes = {{{Pass::Clean, Clean},
                                            {Pass::Convert, Convert},
                                            {Pass::Kerf, CompensateKerf},
                                            {Pass::Blends, Blend},
                                            {Pass::Tables, Tabulate},
                                            {Pass::Counts, CountBody}}};

}  // namespace

PassResult RunPasses(std::string_view squeezedProgram, const PassInput& input) {
  PassResult result;
  RunPasses(squeezedProgram, input, result, [](Pass) {});
  return result;
}

void RunPasses(std::string_view squeezedProgram, const PassInput& input, PassResult& result,
               const std::function<void(Pass)>& after) {
  // A console has painted before it selects, and that makes every sine of the passes slow.
  platform::ClearVectorState();
  Pipeline pipeline{squeezedProgram, input, result};
  for (const PassRow& pass : Passes) {
    result.Outcome = pass.Run(pipeline);
    after(pass.Is);
    if (result.Outcome != PassOutcome::Good) break;
  }
}

void FillSlot(const PassResult& result, core::ActiveProgram& slot) {
  const DrawRecord& header = result.Conversion.Records.front();
  slot.Material = core::Trim(TextOf(header.Common().Material));
  slot.SheetX = header[Figure::SheetX];
  slot.SheetY = header[Figure::SheetY];
  for (std::size_t i = 0; i < slot.Clamps.size(); ++i) slot.Clamps[i] = header[ClampFigure(i)];
  slot.KerfWidth = header[Figure::KerfWidth];
  slot.LoadY = result.Conversion.LoadY;
  slot.BodyLines = result.BodyLines;
  slot.DrawRecords = static_cast<std::int16_t>(result.Conversion.Records.size());
  slot.KerfRecords = static_cast<std::int16_t>(result.Kerf.size());
  slot.TableLines = result.Table.Lines;
  slot.Imperial = header[Mark::Imperial] != 0;
  slot.Totals = result.Conversion.Totals;
}

}  // namespace torvane::partprogram

#include "tools/CheckRestart.h"

#include <algorithm>
#include <array>
#include <map>
#include <ostream>

#include "core/Directories.h"
#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "partprogram/FixedLines.h"
#include "partprogram/Pipeline.h"
#include "platform/DiskFileSystem.h"
#include "platform/NativePaths.h"
#include "platform/RuntimeFault.h"
#include "restart/RestartWords.h"
#include "restart/SlotProgram.h"
#include "restart/SplitPoint.h"
#include "tools/CheckResult.h"
#include "tools/ReadOnlyFiles.h"

namespace torvane::tools {

namespace {

using partprogram::DrawRecord;
using restart::Rehearsal;
using Kind = RestartQuestion::Kind;

/// A program with everything that a rehearsal reads of it.
struct Loaded {
  std::string Directory;
  std::string Program;
  core::Slot Slot;
  float SheetX = 0;
  float SheetY = 0;
  std::int16_t TableLines = 0;
  restart::SlotProgram Files;
};

std::string MissingSub(std::int16_t number) { return core::IntegerText(number) + ".sub"; }

/// By the passes, in memory. False where they refuse the program.
bool LoadProgram(const Installation& installation, const CheckOptions& options,
                 const platform::Clock& clock, const platform::FileSystem& files, Loaded& loaded,
                 CheckResult& result) {
  loaded.Directory = result.Directory = options.Directory;
  loaded.Program = result.Program = options.Programs.front();
  loaded.Slot = options.Slot;
  const auto path = core::ProgramDirectoryPath(installation.Directories, options.Directory) +
                    loaded.Program + ".prg";
  const auto squeezed = partprogram::SqueezeProgram(files.ReadFile(path));
  auto passes = partprogram::RunPasses(
      squeezed, {loaded.Program, loaded.Directory, options.Slot, &installation.Machine,
                 &installation.ActiveStation, clock.Now()});
  result.Outcome = passes.Outcome;
  if (passes.Outcome != partprogram::PassOutcome::Good) return false;
  core::ActiveProgram slot;
  partprogram::FillSlot(passes, slot);
  loaded.SheetX = slot.SheetX;
  loaded.SheetY = slot.SheetY;
  loaded.TableLines = slot.TableLines;
  loaded.Files.Converted = std::move(passes.Text.Converted);
  loaded.Files.Draw = std::move(passes.Conversion.Records);
  loaded.Files.Kerf = std::move(passes.Kerf);
  loaded.Files.Listing =
      restart::ListingLines(partprogram::MakeFixedLines(passes.Text.Body, true).Bytes);
  loaded.Files.Bodies.ReadSub = [subs = std::move(passes.Conversion.Subs)](std::int16_t number) {
    const auto found = subs.find(number);
    if (found == subs.end()) throw platform::RuntimeFault(MissingSub(number), "does not exist");
    return found->second;
  };
  return true;
}

/// A slot's files as they are.
void LoadSlot(const Installation& installation, core::Slot slot, ReadOnlyFiles& files,
              Loaded& loaded) {
  core::ActiveProgram program;
  core::LoadSlotConfig(files, installation.Directories, slot, program);
  loaded.Directory = program.DirectoryName;
  loaded.Program = program.ProgramName;
  loaded.Slot = slot;
  loaded.TableLines = program.TableLines;
  loaded.Files = restart::ReadSlotProgram(files, installation.Directories, slot);
  loaded.SheetX = loaded.Files.Draw.front()[partprogram::Figure::SheetX];
  loaded.SheetY = loaded.Files.Draw.front()[partprogram::Figure::SheetY];
}

std::int16_t FirstFill(const Installation& installation, ReadOnlyFiles& files) {
  core::LinkSettings link;
  bool enabled = false;
  bool logged = false;
  core::LoadLinkOptions(files, installation.Directories, enabled, logged, link);
  return link.TableFillLines;
}

/// Rehearsals one by one, printed as they come.
class Printer {
 public:
  Printer(const CheckOptions& options, const restart::RecordPair& records,
          const CheckStreams& streams)
      : options_(options), records_(records), qt_(streams.Qt), out_(streams.Out) {}

  void Print(const Rehearsal& rehearsal) {
    allMet_ = allMet_ && rehearsal.Met;
    if (options_.Json) {
      out_ << qt_->RehearsalJson(rehearsal);
    } else {
      out_ << RehearsalText(rehearsal, restart::FirstCut(records_, rehearsal.Entry));
    }
  }
  [[nodiscard]] bool AllMet() const { return allMet_; }

 private:
  const CheckOptions& options_;
  const restart::RecordPair& records_;
  const QtOutput* qt_;
  std::ostream& out_;
  bool allMet_ = true;
};

void PlotRehearsal(const Installation& installation, const CheckOptions& options,
                   const Loaded& loaded, const Rehearsal& rehearsal, const QtOutput& qt) {
  graphics::ProgramPlot plot{loaded.SheetX,
                             loaded.SheetY,
                             loaded.Files.Draw,
                             options.PlotKerf ? std::span<const DrawRecord>(loaded.Files.Kerf)
                                              : std::span<const DrawRecord>(),
                             nullptr,
                             {}};
  if (rehearsal.Entry) {
    const core::MachineData& machine = installation.Machine;
    plot.Highlighted = restart::FirstCut({loaded.Files.Draw, loaded.Files.Kerf}, rehearsal.Entry);
    plot.Marks = graphics::RestartMarks{{machine.LoadPositionX, machine.LoadPositionY},
                                        {rehearsal.State.XPosition, rehearsal.State.YPosition},
                                        rehearsal.Entry->Compensated};
  }
  SavePicture(options.Plot, qt.DrawPlot(options.Plot, {options.PlotWidth, options.PlotHeight},
                                        installation.Colours, installation.Machine, plot));
}

Rehearsal RehearseOne(const restart::Rehearser& rehearser, const RestartQuestion& question) {
  if (question.Asked == Kind::Block) return rehearser.AtBlock(question.Block, question.SubBlock);
  const std::int16_t number = rehearser.CutRecord(question.Record);
  if (number == 0) {
    throw WrongUse("record " + core::IntegerText(question.Record) +
                   " is no line and no arc of the program");
  }
  return rehearser.AtRecord(number, question.Remaining);
}

void RehearseAll(const restart::Rehearser& rehearser, const Loaded& loaded, Printer& printer) {
  for (std::size_t block = 1; block <= loaded.Files.Listing.size(); ++block) {
    printer.Print(rehearser.AtBlock(static_cast<std::int16_t>(block), 0));
  }
  for (std::size_t i = 1; i < loaded.Files.Draw.size(); ++i) {
    const DrawRecord& record = loaded.Files.Draw[i];
    if (!restart::CanSplit(record) || !record.BeamOn()) continue;
    printer.Print(rehearser.AtRecord(static_cast<std::int16_t>(i + 1), std::nullopt));
  }
}

}  // namespace

std::string RehearsalText(const Rehearsal& rehearsal, const DrawRecord* firstCut) {
  std::string text = rehearsal.Visual ? "Inside block " : "At block ";
  text += core::IntegerText(rehearsal.Block);
  if (rehearsal.SubBlock != 0) text += ":" + core::IntegerText(rehearsal.SubBlock);
  text += ": " + rehearsal.Text + "\n";
  for (const std::string& sentence : restart::RestartWords(rehearsal, firstCut)) {
    text += "  " + sentence + "\n";
  }
  return platform::ToNativeName(text);
}

int RunRestartCheck(const Installation& installation, const CheckOptions& options,
                    const platform::Clock& clock, CheckStreams streams) {
  const platform::DiskFileSystem disk(options.Root);
  ReadOnlyFiles files(disk);
  const RestartQuestion& question = options.Restart;
  Loaded loaded;
  CheckResult result;
  if (question.Active > 0) {
    LoadSlot(installation, question.Active, files, loaded);
  } else if (!LoadProgram(installation, options, clock, files, loaded, result)) {
    streams.Errors << "torvane-check: " << platform::ToNativeName(result.Program) << ": "
                   << RefusalText(result) << '\n';
    return ExitStatus::Refused;
  }
  const std::int16_t sent =
      question.Sent ? *question.Sent : std::min(FirstFill(installation, files), loaded.TableLines);
  const restart::RecordPair records{loaded.Files.Draw, loaded.Files.Kerf};
  const restart::Rehearser rehearser({loaded.Files.Converted, loaded.Files.Bodies, records,
                                      loaded.Files.Listing, loaded.Program, loaded.Directory,
                                      loaded.Slot, sent, &installation.Machine, clock.Now()});
  Printer printer(options, records, streams);
  if (question.Asked == Kind::All) {
    RehearseAll(rehearser, loaded, printer);
  } else {
    const Rehearsal rehearsal = RehearseOne(rehearser, question);
    if (!options.Plot.empty()) PlotRehearsal(installation, options, loaded, rehearsal, *streams.Qt);
    printer.Print(rehearsal);
  }
  return printer.AllMet() ? ExitStatus::Good : ExitStatus::Refused;
}

}  // namespace torvane::tools

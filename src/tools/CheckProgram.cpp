#include "tools/CheckProgram.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <span>

#include "app/Installation.h"
#include "core/Directories.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "partprogram/SlotWriter.h"
#include "platform/DiskFileSystem.h"
#include "platform/NativePaths.h"
#include "platform/RuntimeFault.h"
#include "tools/CheckEstimate.h"
#include "tools/ReadOnlyFiles.h"

namespace torvane::tools {

namespace {

/// A native directory as a system path with its backslash.
std::string SystemDirectory(const std::string& native) {
  auto path = platform::DiskFileSystem::ToWholeSystemPath(native);
  if (!path.ends_with('\\')) path += '\\';
  return path;
}

/// The slot's files in a directory of their own, which takes the place of the root.
class SlotFolder {
 public:
  /// Makes the native directory where it is missing and clears the slot in it.
  SlotFolder(const std::string& native, core::Slot slot) : slot_(slot) {
    places_.RootDirectory = SystemDirectory(native);
    places_.ServiceDirectory = places_.RootDirectory;
    places_.SubsDirectory = {places_.RootDirectory + "Subs\\One\\",
                             places_.RootDirectory + "Subs\\Two\\"};
    const auto& subs = places_.SubsDirectory[slot];
    // An installation that a console works on is not written into.
    if (files_.FileExists(places_.RootDirectory + "Control.cfg")) {
      lock_.emplace(app::LockInstallation(files_, places_.RootDirectory, 0));
    }
    std::error_code error;
    std::filesystem::create_directories(files_.NativePath(subs), error);
    if (error) {
      throw platform::RuntimeFault(platform::ToSystemName(native),
                                   "cannot be made: " + error.message());
    }
    core::DeleteSlotFiles(files_, places_, slot);
    for (const auto& name : files_.ListFiles(subs + "*.sub")) files_.DeleteFile(subs + name);
    // Of checks that were killed here. The folder above may be anybody's: there only what bears the
    // slot's name goes.
    files_.RemoveLeftovers(subs);
  }

  /// Starts with the program and takes the files of each pass.
  partprogram::SlotWriter& Start(std::string_view squeezed, const partprogram::PassResult& passes,
                                 partprogram::SlotWriter::Threads threads) {
    files_.ReplaceFile(core::SlotFile(places_, slot_, core::Extension::Program), squeezed);
    return writer_.emplace(files_, places_, slot_, passes, threads);
  }

  /// Puts all in place; of a good program with what belongs to the slot beside.
  void Finish(const CheckResult& result) {
    writer_->Finish();
    if (result.Outcome != partprogram::PassOutcome::Good) return;
    core::SaveProgramStatus(files_, places_, slot_, result.Slot.Totals);
    core::SaveBatch(files_, places_, slot_, result.Slot.BatchCounters);
    core::SaveSlotConfig(files_, places_, slot_, result.Slot);
  }

 private:
  core::Slot slot_;
  core::DirectorySet places_;
  platform::DiskFileSystem files_{"."};
  std::optional<platform::FileLock> lock_;
  std::optional<partprogram::SlotWriter> writer_;
};

void TakePasses(const partprogram::PassResult& passes, CheckResult& result) {
  partprogram::FillSlot(passes, result.Slot);
  result.Outcome = passes.Outcome;
  result.Errors = passes.Conversion.Errors;
  result.Report = passes.Conversion.Report;
  result.Counts = CountRecords(passes.Conversion.Records, passes.Kerf);
}

std::string DrawPicture(const Installation& installation, const CheckOptions& options,
                        const CheckPlaces& places, const partprogram::PassResult& passes,
                        const QtOutput& qt) {
  using Records = std::span<const partprogram::DrawRecord>;
  const Records programmed = passes.Conversion.Records;
  const partprogram::DrawRecord& header = programmed.front();
  return qt.DrawPlot(places.Plot, {options.PlotWidth, options.PlotHeight}, installation.Colours,
                     installation.Machine,
                     {header[partprogram::Figure::SheetX], header[partprogram::Figure::SheetY],
                      programmed, options.PlotKerf ? Records(passes.Kerf) : Records()});
}

void RunCheck(const Installation& installation, const CheckOptions& options,
              const CheckPlaces& places, const platform::Clock& clock, const QtOutput* qt,
              CheckResult& result) {
  const platform::DiskFileSystem files(options.Root);
  const auto directory = core::ProgramDirectoryPath(installation.Directories, options.Directory);
  const auto squeezed =
      partprogram::SqueezeProgram(files.ReadFile(directory + result.Program + ".prg"));
  auto& slot = result.Slot;
  slot.ProgramName = result.Program;
  slot.DirectoryName = result.Directory;
  slot.SourcePath = directory + result.Program;

  partprogram::PassResult passes;
  std::optional<SlotFolder> folder;
  std::function<void(partprogram::Pass)> after = [](partprogram::Pass) {};
  if (!places.Out.empty()) {
    auto& writer = folder.emplace(places.Out, options.Slot).Start(squeezed, passes, places.Threads);
    after = [&writer](partprogram::Pass pass) { writer.After(pass); };
  }
  partprogram::RunPasses(squeezed,
                         {result.Program, result.Directory, options.Slot, &installation.Machine,
                          &installation.ActiveStation, clock.Now()},
                         passes, after);
  TakePasses(passes, result);
  if (options.Estimate.Asked && result.Good()) {
    result.Estimate = Estimate(passes, installation.Figures, options.Estimate);
  }
  // Drawn while the second thread writes; a picture of files that failed is not saved.
  const std::string picture =
      places.Plot.empty() ? std::string() : DrawPicture(installation, options, places, passes, *qt);
  if (folder) folder->Finish(result);
  if (!places.Plot.empty()) SavePicture(places.Plot, picture);
}

}  // namespace

Installation ReadInstallation(const platform::FileSystem& files) {
  ReadOnlyFiles looking(files);
  core::System system;
  core::LoadDirectories(looking, system.Directories, system.ActiveSlot);
  if (!files.DirectoryExists(system.Directories.ProgramRoot)) {
    throw platform::RuntimeFault(
        core::ControlFileName, "its programs root is not there, " + system.Directories.ProgramRoot);
  }
  if (!files.DirectoryExists(system.Directories.DataDirectory)) {
    throw platform::RuntimeFault(
        core::ControlFileName,
        "its root directory holds no installation, " + system.Directories.RootDirectory);
  }
  core::LoadColours(looking, system.Directories, system.Colours);
  core::LoadMachineData(looking, system);
  return {system.Directories, system.Machine, system.ActiveStation, system.Colours, {}};
}

void SavePicture(const std::string& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (file && !bytes.empty()) return;
  throw platform::RuntimeFault(platform::ToSystemName(path), "cannot be written");
}

CheckResult CheckProgram(const Installation& installation, const CheckOptions& options,
                         const std::string& program, const CheckPlaces& places,
                         const platform::Clock& clock, const QtOutput* qt) {
  CheckResult result;
  result.Directory = options.Directory;
  result.Program = program;
  try {
    RunCheck(installation, options, places, clock, qt, result);
  } catch (const platform::RuntimeFault& fault) {
    result.Fault = fault.what();
  }
  return result;
}

}  // namespace torvane::tools

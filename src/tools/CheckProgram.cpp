#include "tools/CheckProgram.h"

#include <filesystem>
#include <optional>

#include "app/Installation.h"
#include "core/Directories.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "partprogram/Pipeline.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "tools/ReadOnlyFiles.h"

namespace torvane::tools {

namespace {

/// A native directory as a system path with its backslash.
std::string SystemDirectory(const std::string& native) {
  auto path = platform::DiskFileSystem::ToSystemPath(std::filesystem::absolute(native).string());
  if (!path.ends_with('\\')) path += '\\';
  return path;
}

/// The slot's files in a directory of their own, which takes the place of the root.
void WriteFiles(const std::string& native, const CheckOptions& options, std::string_view squeezed,
                const partprogram::PassResult& passes, const core::ActiveProgram& slot) {
  core::DirectorySet places;
  places.RootDirectory = SystemDirectory(native);
  places.ServiceDirectory = places.RootDirectory;
  places.SubsDirectory = {places.RootDirectory + "Subs\\One\\",
                          places.RootDirectory + "Subs\\Two\\"};
  const auto& subs = places.SubsDirectory[options.Slot];

  std::error_code error;
  platform::DiskFileSystem files(".");
  // An installation that a console works on is not written into.
  std::optional<platform::FileLock> lock;
  if (files.FileExists(places.RootDirectory + "Control.cfg")) {
    lock.emplace(app::LockInstallation(files, places.RootDirectory, 0));
  }
  std::filesystem::create_directories(files.NativePath(subs), error);
  if (error) throw platform::RuntimeFault(native, "cannot be made: " + error.message());
  core::DeleteSlotFiles(files, places, options.Slot);
  for (const auto& name : files.ListFiles(subs + "*.sub")) files.DeleteFile(subs + name);

  files.ReplaceFile(core::SlotFile(places, options.Slot, core::Extension::Program), squeezed);
  partprogram::WriteSlotFiles(files, places, options.Slot, passes);
  if (passes.Outcome != partprogram::PassOutcome::Good) return;
  core::SaveProgramStatus(files, places, options.Slot, slot.Totals);
  core::SaveBatch(files, places, options.Slot, slot.BatchCounters);
  core::SaveSlotConfig(files, places, options.Slot, slot);
}

void RunCheck(const Installation& installation, const CheckOptions& options,
              const CheckPlaces& places, const platform::Clock& clock, const QtOutput* qt,
              CheckResult& result) {
  const platform::DiskFileSystem files(options.Root);
  const auto directory = core::ProgramDirectoryPath(installation.Directories, options.Directory);
  const auto squeezed =
      partprogram::SqueezeProgram(files.ReadFile(directory + result.Program + ".prg"));
  const auto passes = partprogram::RunPasses(
      squeezed, {result.Program, result.Directory, options.Slot, &installation.Machine,
                 &installation.ActiveStation, clock.Now()});

  auto& slot = result.Slot;
  slot.ProgramName = result.Program;
  slot.DirectoryName = result.Directory;
  slot.SourcePath = directory + result.Program;
  partprogram::FillSlot(passes, slot);
  result.Outcome = passes.Outcome;
  result.Errors = passes.Conversion.Errors;
  result.Report = passes.Conversion.Report;
  result.Counts = CountRecords(passes.Conversion.Records, passes.Kerf);

  if (!places.Out.empty()) WriteFiles(places.Out, options, squeezed, passes, slot);
  if (!places.Plot.empty()) {
    qt->SavePlot(places.Plot, {options.PlotWidth, options.PlotHeight}, installation.Colours,
                 installation.Machine,
                 {slot.SheetX, slot.SheetY, passes.Conversion.Records,
                  options.PlotKerf ? passes.Kerf : std::span<const partprogram::DrawRecord>()});
  }
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
  return {system.Directories, system.Machine, system.ActiveStation, system.Colours};
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

#include "tools/CheckCommand.h"

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <ostream>

#include "core/Directories.h"
#include "core/General.h"
#include "platform/DiskFileSystem.h"
#include "platform/NativePaths.h"
#include "platform/PlainNames.h"
#include "platform/RuntimeFault.h"
#include "tools/CheckEstimate.h"
#include "tools/CheckProgram.h"
#include "tools/CheckRestart.h"
#include "tools/CheckText.h"
#include "tools/WorkPool.h"

namespace torvane::tools {

namespace {

namespace fs = std::filesystem;

/// Longest name of a directory or a program that the console takes.
constexpr std::size_t LongestName = 32;

void RequireName(const std::string& name, const char* refusal) {
  if (name.size() > LongestName || !platform::IsPlainName(name)) {
    throw WrongUse(platform::ToNativeName(name) + ": " + refusal);
  }
}

/// Folders do not mind case as programs do: two programs in one would leave files of both.
void RequireFolders(std::vector<std::string> programs) {
  const auto before = [](const std::string& left, const std::string& right) {
    return platform::CompareNames(left, right) < 0;
  };
  std::sort(programs.begin(), programs.end(), before);
  const auto same = std::adjacent_find(programs.begin(), programs.end(), core::EqualNoCase);
  if (same == programs.end()) return;
  throw WrongUse("--out: the files of " + platform::ToNativeName(*same) + " and " +
                 platform::ToNativeName(*(same + 1)) + " would go to one folder");
}

/// The programs asked for, each once, or all of the directory. Throws WrongUse where one does not
/// exist.
std::vector<std::string> FindPrograms(const platform::FileSystem& files,
                                      const core::DirectorySet& directories,
                                      const CheckOptions& options) {
  RequireName(options.Directory, "Invalid Directory Name !");
  const auto path = core::ProgramDirectoryPath(directories, options.Directory);
  if (!files.DirectoryExists(path)) {
    throw WrongUse(platform::ToNativeName(options.Directory) + ": Directory Does Not Exist !");
  }
  std::vector<std::string> programs;
  if (options.Programs.empty()) {
    for (const auto& name : files.ListFiles(path + "*.prg")) {
      programs.emplace_back(core::StripExtension(name));
    }
    if (programs.empty()) {
      throw WrongUse(platform::ToNativeName(options.Directory) + ": no part programs in it");
    }
  }
  for (const auto& name : options.Programs) {
    RequireName(name, "Invalid Program Name !");
    if (!files.FileExists(path + name + ".prg")) {
      throw WrongUse(platform::ToNativeName(name) + ": Program Does Not Exist !");
    }
    if (std::find(programs.begin(), programs.end(), name) == programs.end()) {
      programs.push_back(name);
    }
  }
  if (!options.Out.empty()) RequireFolders(programs);
  return programs;
}

/// One program's files go to the places themselves, several get names of their own.
CheckPlaces PlacesOf(const CheckOptions& options, const std::string& program, bool several) {
  const auto name = platform::ToNativeName(program);
  CheckPlaces places{options.Out, options.Plot};
  if (!several) return places;
  places.Threads = partprogram::SlotWriter::Threads::One;
  if (!places.Out.empty()) places.Out = (fs::path(places.Out) / name).string();
  if (!places.Plot.empty()) {
    const fs::path plot = places.Plot;
    places.Plot = (plot.parent_path() / (plot.stem().string() + "-" + name)).string() +
                  plot.extension().string();
  }
  return places;
}

/// "12 of 40 checked" on the terminal, written over itself and taken away at the end.
class ProgressLine {
 public:
  ProgressLine(std::ostream& stream, bool terminal, std::size_t all)
      : stream_(stream), shown_(terminal && all > 1), all_(all) {}
  ~ProgressLine() {
    if (shown_) stream_ << "\r\x1b[K" << std::flush;
  }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// From any thread.
  void OneMore(const std::string& program) {
    if (!shown_) return;
    const std::scoped_lock guard(lock_);
    stream_ << "\r\x1b[K" << ++done_ << " of " << all_
            << " checked: " << platform::ToNativeName(program) << std::flush;
  }

 private:
  std::ostream& stream_;
  bool shown_;
  std::size_t all_;
  std::size_t done_ = 0;
  std::mutex lock_;
};

std::vector<CheckResult> CheckAll(const Installation& installation, const CheckOptions& options,
                                  const std::vector<std::string>& programs,
                                  const platform::Clock& clock, const CheckStreams& streams) {
  std::vector<CheckResult> results(programs.size());
  ProgressLine progress(streams.Errors, streams.Terminal, programs.size());
  RunOnAllCores(programs.size(), options.Jobs, [&](std::size_t i) {
    const auto places = PlacesOf(options, programs[i], programs.size() > 1);
    results[i] = CheckProgram(installation, options, programs[i], places, clock, streams.Qt);
    progress.OneMore(programs[i]);
  });
  return results;
}

void Print(const CheckOptions& options, const std::vector<CheckResult>& results,
           const CheckStreams& streams) {
  std::ostream& out = streams.Out;
  if (options.Json) {
    out << streams.Qt->ReportJson(results);
    return;
  }
  for (const auto& result : results) out << ProgramText(result, options.Report) << '\n';
  out << SummaryText(results);
}

int StatusOf(const std::vector<CheckResult>& results) {
  const auto faulty = [](const CheckResult& result) { return !result.Fault.empty(); };
  const auto good = [](const CheckResult& result) { return result.Good(); };
  if (std::any_of(results.begin(), results.end(), faulty)) return ExitStatus::WrongUse;
  return std::all_of(results.begin(), results.end(), good) ? ExitStatus::Good : ExitStatus::Refused;
}

}  // namespace

int RunCheckCommand(const CheckOptions& options, const platform::Clock& clock,
                    CheckStreams streams) {
  try {
    const platform::DiskFileSystem files(options.Root);
    auto installation = ReadInstallation(files);
    if (options.Load) {
      installation.Machine.LoadPositionX = options.Load->X;
      installation.Machine.LoadPositionY = options.Load->Y;
    }
    if (!options.Estimate.Machine.empty()) {
      installation.Figures = ReadFigures(options.Estimate.Machine);
    }
    if (options.Restart.Active > 0) {
      return RunRestartCheck(installation, options, clock, streams);
    }
    const auto programs = FindPrograms(files, installation.Directories, options);
    if (options.Restart.Asked != RestartQuestion::Kind::None) {
      return RunRestartCheck(installation, options, clock, streams);
    }
    const auto results = CheckAll(installation, options, programs, clock, streams);
    Print(options, results, streams);
    return StatusOf(results);
  } catch (const platform::RuntimeFault& fault) {
    streams.Errors << "torvane-check: " << platform::ToNativeName(fault.what()) << '\n';
    return ExitStatus::WrongUse;
  } catch (const std::exception& fault) {
    streams.Errors << "torvane-check: " << fault.what() << '\n';
    return ExitStatus::WrongUse;
  }
}

int CheckMain(const std::vector<std::string>& arguments, CheckStreams streams) {
  try {
    std::string help;
    const auto options = ReadCheckOptions(arguments, help);
    if (help.empty()) {
      const int status = RunCheckCommand(options, platform::SystemClock(), streams);
      return WhenWritten("torvane-check", streams.Out, streams.Errors, status);
    }
    streams.Out << help;
    return ExitStatus::Good;
  } catch (const WrongUse& fault) {
    streams.Errors << WrongUseText("torvane-check", fault);
    return ExitStatus::WrongUse;
  }
}

}  // namespace torvane::tools

// The check of one program: the passes, the files they leave, and its plot.
#pragma once

#include <string>
#include <string_view>

#include "core/RunFigures.h"
#include "core/System.h"
#include "partprogram/SlotWriter.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "tools/CheckOptions.h"
#include "tools/CheckResult.h"
#include "tools/QtOutput.h"

namespace torvane::tools {

/// The machine that programs are checked for. Read once, then shared by all threads unchanged.
struct Installation {
  core::DirectorySet Directories;
  core::MachineData Machine;
  core::Station ActiveStation;
  core::ColourTable Colours;
  core::RunFigures Figures;  ///< of time estimates
};

/// Reads an installation without leaving a trace in it. Throws RuntimeFault for a required file
/// that is missing or damaged.
[[nodiscard]] Installation ReadInstallation(const platform::FileSystem& files);

/// Where the files of one program go; empty: nowhere. Native paths.
struct CheckPlaces {
  std::string Out;
  std::string Plot;
  /// Two where no other program is checked beside this one.
  partprogram::SlotWriter::Threads Threads = partprogram::SlotWriter::Threads::Two;
};

/// Writes a picture to a native path. Throws RuntimeFault where it cannot be written, or is empty.
void SavePicture(const std::string& path, std::string_view bytes);

/// Runs the passes over `<programs root><directory>\<program>.prg`. Whatever goes wrong on the way
/// is in the result. `qt` draws the plot, where `places` asks for one.
[[nodiscard]] CheckResult CheckProgram(const Installation& installation,
                                       const CheckOptions& options, const std::string& program,
                                       const CheckPlaces& places, const platform::Clock& clock,
                                       const QtOutput* qt);

}  // namespace torvane::tools

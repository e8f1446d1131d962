// One golden case: a folder of tests/golden with a part program, a machine, and the files that must
// come out. How to add one is told in tests/golden/README.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/MachineData.h"

namespace torvane::tests {

/// File names, without a path, and their bytes.
using GoldenFiles = std::map<std::string, std::string>;

struct GoldenCase {
  std::filesystem::path Folder;
  std::string Program = "PROGRAM";
  std::string Directory = "GOLDEN";
  std::int16_t Slot = 1;
  std::string Example;  ///< "SHOP/STAR": the example program that program.prg is a copy of
  std::string Text;     ///< program.prg as it stands
  core::MachineData Machine;
  core::Station ActiveStation;
};

[[nodiscard]] std::filesystem::path GoldenRoot();
[[nodiscard]] std::filesystem::path ExamplePrograms();

/// Names of the folders that hold a program.prg, in alphabetical order.
[[nodiscard]] std::vector<std::string> GoldenNames();

/// Reads case.cfg, program.prg, Machine.dat, Profiler.cfg and Machine.stn; the machine's files come
/// from the folder "common" where the case has none of its own. Throws std::runtime_error where a
/// file is missing, RuntimeFault where one is too short.
[[nodiscard]] GoldenCase LoadGoldenCase(const std::string& name);

/// Runs the passes on a clock that stands still and writes the slot's files to a disk.
/// "Outcome.txt" tells how it ended; of a refused program there is beside it only the report.
[[nodiscard]] GoldenFiles RunGoldenCase(const GoldenCase& golden);

[[nodiscard]] GoldenFiles ReadFolder(const std::filesystem::path& folder);
/// The folder holds exactly these files afterwards.
void WriteFolder(const std::filesystem::path& folder, const GoldenFiles& files);
[[nodiscard]] std::string ReadBytes(const std::filesystem::path& path);

}  // namespace torvane::tests

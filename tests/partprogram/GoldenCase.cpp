#include "GoldenCase.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "core/MachineFiles.h"
#include "core/StationFiles.h"
#include "core/Text.h"
#include "partprogram/SlotWriter.h"
#include "platform/DiskFileSystem.h"
#include "support/SourceTree.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

namespace fs = std::filesystem;

namespace {

constexpr platform::LocalTime GoldenTime{2026, 3, 4, 5, 6, 7};

/// The case's own file, else the common one.
std::string MachineFile(const fs::path& folder, const char* name) {
  const fs::path own = folder / name;
  return ReadBytes(fs::exists(own) ? own : GoldenRoot() / "common" / name);
}

void ReadCaseFile(const std::string& text, GoldenCase& golden) {
  for (const std::string_view line : core::SplitLines(text)) {
    const std::string value(core::AfterColon(line));
    const std::string key = core::UpperCase(core::Trim(line.substr(0, line.find(':'))));
    if (key == "PROGRAM") golden.Program = value;
    if (key == "DIRECTORY") golden.Directory = value;
    if (key == "EXAMPLE") golden.Example = value;
    if (key == "SLOT") golden.Slot = static_cast<std::int16_t>(value == "2" ? 2 : 1);
  }
}

const char* OutcomeText(partprogram::PassOutcome outcome) {
  switch (outcome) {
    case partprogram::PassOutcome::Good:
      return "Good\r\n";
    case partprogram::PassOutcome::ErrorsInCode:
      return "Errors In Code\r\n";
    case partprogram::PassOutcome::IllegalKerf:
      return "Illegal Kerf Width\r\n";
  }
  return "";
}

/// What the passes left on the disk, under the names of the golden folder.
GoldenFiles CollectFiles(const tests::TempDirectory& disk, std::int16_t slot, bool refused) {
  GoldenFiles files;
  files["Reverse.txt"] = disk.Get("Service/Reverse.txt");
  if (refused) return files;
  const std::string base = "Actvprg" + std::to_string(slot) + ".";
  for (const char* extension : {"bdy", "cnv", "drw", "krw", "rnd", "tbl", "tbx"}) {
    files[std::string("program.") + extension] = disk.Get(base + extension);
  }
  const fs::path subs = fs::path(disk.Path()) / "Subs" / (slot == 2 ? "Two" : "One");
  for (const auto& entry : fs::directory_iterator(subs)) {
    files[entry.path().filename().string()] = ReadBytes(entry.path());
  }
  return files;
}

}  // namespace

fs::path GoldenRoot() { return torvane::tests::SourceTree() / "tests" / "golden"; }

fs::path ExamplePrograms() {
  return torvane::tests::SourceTree() / "examples" / "installation" / "Programs";
}

std::string ReadBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error(path.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(in), {}};
}

GoldenFiles ReadFolder(const fs::path& folder) {
  GoldenFiles files;
  if (!fs::is_directory(folder)) return files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    files[entry.path().filename().string()] = ReadBytes(entry.path());
  }
  return files;
}

void WriteFolder(const fs::path& folder, const GoldenFiles& files) {
  fs::remove_all(folder);
  fs::create_directories(folder);
  for (const auto& [name, bytes] : files) {
    std::ofstream out(folder / name, std::ios::binary);
    out << bytes;
    if (!out) throw std::runtime_error((folder / name).string() + " cannot be written");
  }
}

std::vector<std::string> GoldenNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(GoldenRoot())) {
    if (fs::exists(entry.path() / "program.prg")) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

GoldenCase LoadGoldenCase(const std::string& name) {
  GoldenCase golden;
  golden.Folder = GoldenRoot() / name;
  if (fs::exists(golden.Folder / "case.cfg")) {
    ReadCaseFile(ReadBytes(golden.Folder / "case.cfg"), golden);
  }
  golden.Text = ReadBytes(golden.Folder / "program.prg");
  core::ReadMachineFile(MachineFile(golden.Folder, "Machine.dat"), "Machine.dat", false,
                        golden.Machine);
  core::ReadProfilerFile(MachineFile(golden.Folder, "Profiler.cfg"), golden.Machine);
  core::StationTable stations;
  core::ReadStationFile(MachineFile(golden.Folder, "Machine.stn"), stations, golden.ActiveStation);
  return golden;
}

GoldenFiles RunGoldenCase(const GoldenCase& golden) {
  const tests::TempDirectory disk;
  for (const char* name : {"Service", "Subs/One", "Subs/Two"}) disk.MakeDirectory(name);
  platform::DiskFileSystem files(disk.Path());
  core::DirectorySet places;
  places.RootDirectory = ".\\";
  places.ServiceDirectory = ".\\Service\\";
  places.SubsDirectory = {".\\Subs\\One\\", ".\\Subs\\Two\\"};

  const auto result =
      partprogram::MakeSlotFiles(files, places, partprogram::SqueezeProgram(golden.Text),
                                 {golden.Program, golden.Directory, golden.Slot, &golden.Machine,
                                  &golden.ActiveStation, GoldenTime});
  GoldenFiles made =
      CollectFiles(disk, golden.Slot, result.Outcome != partprogram::PassOutcome::Good);
  made["Outcome.txt"] = OutcomeText(result.Outcome);
  return made;
}

}  // namespace torvane::tests

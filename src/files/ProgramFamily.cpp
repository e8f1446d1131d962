#include "files/ProgramFamily.h"

#include <algorithm>
#include <array>

#include "core/LastFile.h"
#include "core/ProgramCatalogue.h"
#include "core/Text.h"
#include "platform/NativePaths.h"
#include "platform/RuntimeFault.h"

namespace torvane::files {

namespace {

constexpr std::array<std::string_view, 4> DeletedExtensions = {"prg", "inf", "rpt", "stg"};

/// The companion that travels with a program; all others are made again when it is selected.
constexpr const char* SourceExtension = "prg";
constexpr const char* StageExtension = "stg";

/// Behind the name of a file that is being written; the start of the console removes such files.
constexpr std::string_view BesideMark = ".new~";

void NoteAndCopy(platform::FileSystem& files, const core::DirectorySet& directories,
                 const std::string& from, const std::string& to) {
  core::NoteLastFile(files, directories, from);
  files.CopyFile(from, to);
}

void DeleteQuietly(platform::FileSystem& files, const std::string& path) {
  try {
    files.DeleteFile(path);
  } catch (const platform::RuntimeFault&) {
    // Left behind by a fault that is on its way already.
  }
}

/// A copy that is complete but not yet in its place. It goes again unless it is put there.
class Beside {
 public:
  Beside(platform::FileSystem& files, std::string place)
      : files_(files), place_(std::move(place)), path_(place_ + std::string(BesideMark)) {}
  ~Beside() {
    if (there_) DeleteQuietly(files_, path_);
  }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  void CopyFrom(const core::DirectorySet& directories, const std::string& source) {
    NoteAndCopy(files_, directories, source, path_);
    there_ = true;
  }
  void PutInPlace() {
    if (!there_) return;
    files_.RenameFile(path_, place_);
    there_ = false;
    // The name as it was typed, not in the case of the file that was replaced.
    const auto names = files_.ListFiles(place_);
    if (names.size() == 1 && names.front() != core::NamePart(place_))
      files_.RenameFile(place_, place_);
  }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  platform::FileSystem& files_;
  std::string place_;
  std::string path_;
  bool there_ = false;
};

/// Temp files in the root, gone whatever happens between.
class TempFiles {
 public:
  TempFiles(platform::FileSystem& files, const core::DirectorySet& directories)
      : files_(files), directories_(directories) {}
  ~TempFiles() {
    for (const std::string extension : {SourceExtension, StageExtension})
      DeleteQuietly(files_, Path(extension));
  }
  TempFiles(const TempFiles&) = delete;
  TempFiles& operator=(const TempFiles&) = delete;

  [[nodiscard]] std::string Path(std::string_view extension) const {
    return directories_.RootDirectory + "Temp." + std::string(extension);
  }

 private:
  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
};

/// What is right of the stem, for a name of the family.
std::string_view ExtensionOf(std::string_view fileName) {
  const std::size_t stem = core::StemOf(fileName).size();
  return stem == fileName.size() ? std::string_view() : fileName.substr(stem + 1);
}

bool HasExtension(std::string_view fileName, std::string_view extension) {
  return platform::CompareNames(ExtensionOf(fileName), extension) == 0;
}

void DeleteCompanions(platform::FileSystem& files, const ProgramPlace& program,
                      std::initializer_list<std::string_view> kept) {
  for (const std::string& name : FamilyFiles(files, program)) {
    const bool keep = std::any_of(kept.begin(), kept.end(), [&](std::string_view extension) {
      return HasExtension(name, extension);
    });
    if (!keep) files.DeleteFile(program.Directory + name);
  }
}

}  // namespace

bool SameProgramName(std::string_view left, std::string_view right) {
  return platform::CompareNames(left, right) == 0;
}

std::vector<std::string> FamilyFiles(const platform::FileSystem& files,
                                     const ProgramPlace& program) {
  auto names = files.ListFiles(program.Directory + program.Name + ".*");
  std::vector<std::string> sources;
  for (const std::string& name : names) {
    if (HasExtension(name, SourceExtension)) sources.emplace_back(core::StemOf(name));
  }
  const auto hasSource = [&](std::string_view stem) {
    return std::find(sources.begin(), sources.end(), stem) != sources.end();
  };
  const bool twins = hasSource(program.Name);
  std::erase_if(names, [&](const std::string& name) {
    const std::string_view stem = core::StemOf(name);
    if (!SameProgramName(stem, program.Name)) return true;
    return twins && stem != program.Name && hasSource(stem);
  });
  return names;
}

void DeleteProgramFiles(platform::FileSystem& files, const ProgramPlace& program) {
  for (const std::string_view extension : DeletedExtensions) {
    const std::string path = program.File(extension);
    if (files.FileExists(path)) files.DeleteFile(path);
  }
}

void DeleteFamily(platform::FileSystem& files, const ProgramPlace& program) {
  DeleteCompanions(files, program, {SourceExtension});
  DeleteCompanions(files, program, {});
}

CopyEnd CopyProgram(platform::FileSystem& files, const core::DirectorySet& directories,
                    const ProgramPlace& from, const ProgramPlace& to) {
  Beside source(files, to.File(SourceExtension));
  Beside stage(files, to.File(StageExtension));
  source.CopyFrom(directories, from.File(SourceExtension));
  const std::string ownName = from.Directory + source.Path().substr(to.Directory.size());
  if (from.Directory != to.Directory && files.FileExists(ownName)) return CopyEnd::SameDirectory;
  const std::string fromStage = from.File(StageExtension);
  if (files.FileExists(fromStage)) stage.CopyFrom(directories, fromStage);
  // A power cut from here on may leave a source without companions, never one with another's.
  DeleteCompanions(files, to, {SourceExtension});
  source.PutInPlace();
  stage.PutInPlace();
  return CopyEnd::Done;
}

void ChangeNameCase(platform::FileSystem& files, const core::DirectorySet& directories,
                    const ProgramPlace& program, const std::string& newName) {
  const TempFiles temp(files, directories);
  const ProgramPlace renamed{program.Directory, newName};
  const bool staged = files.FileExists(program.File(StageExtension));
  NoteAndCopy(files, directories, program.File(SourceExtension), temp.Path(SourceExtension));
  if (staged)
    NoteAndCopy(files, directories, program.File(StageExtension), temp.Path(StageExtension));
  DeleteCompanions(files, program, {SourceExtension, StageExtension});
  if (program.Name == newName) return;
  if (staged) files.RenameFile(program.File(StageExtension), renamed.File(StageExtension));
  files.RenameFile(program.File(SourceExtension), renamed.File(SourceExtension));
}

void DeleteTempFiles(platform::FileSystem& files, const core::DirectorySet& directories) {
  DeleteFamily(files, {directories.RootDirectory, "Temp"});
}

}  // namespace torvane::files

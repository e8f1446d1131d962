// Random file actions against a model of the folders, and the same on a disk that fails.
#include <map>
#include <set>

#include <rapidcheck/gtest.h>

#include "Workshop.h"
#include "core/Text.h"
#include "files/Lists.h"
#include "files/ProgramActions.h"
#include "platform/NativePaths.h"
#include "platform/RuntimeFault.h"
#include "support/RecordingFiles.h"

namespace torvane::files {

using namespace tests;
namespace {

const std::vector<std::string> Entries = {"SHOP", "NEST", "E: [Removable Drive]"};
const std::vector<std::string> Stems = {"A", "B", "A.B"};
const std::vector<std::string> NewNames = {"A", "a", "B", "b", "A.B", "a.b", "C", " c ", ""};
const std::vector<std::string> Extensions = {"prg", "stg", "lsr", "inf", "rpt", "xyz"};

std::string Fold(std::string_view name) {
  std::string folded(name);
  for (char& c : folded) c = platform::FoldCase(c);
  return folded;
}

std::string StemOfName(const std::string& file) { return file.substr(0, file.rfind('.')); }

/// One folder: what each file is called and holds, by its name without case.
struct Folder {
  std::map<std::string, std::pair<std::string, std::string>> Files;

  [[nodiscard]] bool Has(const std::string& file) const { return Files.count(Fold(file)) != 0; }
  void Put(const std::string& file, const std::string& content) {
    Files[Fold(file)] = {file, content};
  }
  void DeleteStem(const std::string& stem) {
    std::erase_if(
        Files, [&](const auto& row) { return Fold(StemOfName(row.second.first)) == Fold(stem); });
  }
  [[nodiscard]] std::string Content(const std::string& file) const {
    return Files.at(Fold(file)).second;
  }
  friend bool operator==(const Folder&, const Folder&) = default;
};

/// The five actions as the operator's guide tells them, on folders that cannot fail.
struct Model {
  std::map<std::string, Folder> Folders;
  std::deque<bool> Answers;

  bool Ask() {
    const bool answer = Answers.empty() || Answers.front();
    if (!Answers.empty()) Answers.pop_front();
    return answer;
  }
  void Copy(const Folder& from, const std::string& name, Folder& to, const std::string& newName) {
    const Folder source = from;
    to.DeleteStem(newName);
    for (const char* extension : {".prg", ".stg"}) {
      if (source.Has(name + extension))
        to.Put(newName + extension, source.Content(name + extension));
    }
  }
  void Do(const ProgramActionRequest& request) {
    Folder& here = Folders[request.Directory];
    if (request.Programs.empty()) return;
    if (request.Action == ProgramAction::Delete) {
      if (!Ask()) return;
      for (const auto& name : request.Programs) {
        for (const char* extension : {".prg", ".inf", ".rpt", ".stg"})
          here.Files.erase(Fold(name + extension));
      }
    } else if (RowOf(request.Action).NewName) {
      RenameOrCopy(here, request);
    } else if (request.Destination && *request.Destination != request.Directory && Ask()) {
      Folder& there = Folders[*request.Destination];
      for (const auto& name : request.Programs) {
        if (there.Has(name + ".prg") && !Ask()) continue;
        Copy(here, name, there, name);
        if (request.Action == ProgramAction::MoveTo) here.DeleteStem(name);
      }
    }
  }
  void RenameOrCopy(Folder& here, const ProgramActionRequest& request) {
    const bool rename = request.Action == ProgramAction::Rename;
    const std::string old = request.Programs.front();
    const std::string name(core::Trim(request.NewName));
    const bool same = Fold(old) == Fold(name);
    if (name.empty() || (same && !rename) || !Ask()) return;
    if (!same && here.Has(name + ".prg") && !Ask()) return;
    const Folder before = here;
    if (same) here.DeleteStem(old);
    Copy(before, old, here, name);
    if (rename && !same) here.DeleteStem(old);
  }
};

struct Yard : Workshop {
  Yard() { InsertDisc(); }

  static std::string NativeOf(const std::string& entry) {
    return entry[1] == ':' ? "Disc" : "Programs/" + entry;
  }
  [[nodiscard]] Folder Read(const std::string& entry) const {
    Folder folder;
    const std::string path = DirectoryPath(System.Directories, entry);
    for (const auto& file : Disk.ListFiles(path + "*.*"))
      folder.Put(file, Disk.ReadFile(path + file));
    return folder;
  }
  [[nodiscard]] std::map<std::string, Folder> ReadAll() const {
    std::map<std::string, Folder> all;
    for (const auto& entry : Entries) all[entry] = Read(entry);
    return all;
  }
  /// A random set of files in each folder.
  void Fill() const {
    for (const auto& entry : Entries) {
      for (const auto& stem : Stems) {
        for (const auto& extension : Extensions) {
          if (*rc::gen::inRange(0, 2) == 1) continue;
          const std::string file = stem + "." + extension;
          Temp.Put(NativeOf(entry) + "/" + file, entry + " " + file);
        }
      }
    }
  }
  /// Some action on what the lists offer.
  ProgramActionRequest AnyRequest() {
    ProgramActionRequest request;
    request.Action = static_cast<ProgramAction>(*rc::gen::inRange(1, 6));
    request.Directory = *rc::gen::elementOf(Entries);
    const auto list = FillProgramList(Parts, request.Directory, "", SelectMode::First);
    for (const auto& name : list.Items) {
      const bool one = !RowOf(request.Action).Multiple && !request.Programs.empty();
      if (!one && *rc::gen::inRange(0, 2) == 1) request.Programs.push_back(name);
    }
    request.NewName = *rc::gen::elementOf(NewNames);
    if (*rc::gen::inRange(0, 8) != 0) request.Destination = *rc::gen::elementOf(Entries);
    return request;
  }
  void RootIsClean() const {
    RC_ASSERT(Disk.ListFiles("C:\\Temp.*").empty());
    for (const auto& [entry, folder] : ReadAll()) {
      for (const auto& [key, file] : folder.Files) RC_ASSERT(!file.first.ends_with("~"));
    }
  }
};

RC_GTEST_PROP(ActionProperty, AnySequenceOfActionsLeavesWhatTheModelLeaves, ()) {
  Yard yard;
  yard.Fill();
  Model model;
  model.Folders = yard.ReadAll();
  const int steps = *rc::gen::inRange(1, 8);
  for (int step = 0; step < steps; ++step) {
    const auto request = yard.AnyRequest();
    const auto answers = *rc::gen::container<std::vector<bool>>(4, rc::gen::arbitrary<bool>());
    yard.Dialogs.Answers.assign(answers.begin(), answers.end());
    model.Answers.assign(answers.begin(), answers.end());
    static_cast<void>(ProgramActions(yard.Parts).CarryOut(request));
    model.Do(request);
    RC_ASSERT(yard.ReadAll() == model.Folders);
    yard.RootIsClean();
  }
}

/// What stands in all source files together.
std::multiset<std::string> Sources(const std::map<std::string, Folder>& folders) {
  std::multiset<std::string> contents;
  for (const auto& [entry, folder] : folders) {
    for (const auto& [key, file] : folder.Files) {
      if (Fold(file.first).ends_with(".PRG")) contents.insert(file.second);
    }
  }
  return contents;
}

/// A program that stands before and after an action stands at every moment between, old or new.
void NeverMissing(const std::map<std::string, Folder>& before,
                  const std::map<std::string, Folder>& after,
                  const std::map<std::string, Folder>& now) {
  for (const auto& [entry, folder] : after) {
    for (const auto& [key, file] : folder.Files) {
      const auto old = before.at(entry).Files.find(key);
      if (!key.ends_with(".PRG") || old == before.at(entry).Files.end()) continue;
      RC_ASSERT(now.at(entry).Has(key));
      const std::string content = now.at(entry).Content(key);
      RC_ASSERT(content == old->second.second || content == file.second);
    }
  }
}

/// One action on a disk whose nth change fails, and, `dead`, all changes after it as well: whatever
/// the action would have kept is there still, as it was or as it was to be, and nothing is half.
void FailAt(bool dead) {
  Yard yard;
  yard.Fill();
  std::vector<std::string> events;
  tests::RecordingFiles disk(yard.Disk, events);
  std::string failed;
  int left = *rc::gen::inRange(0, 12);
  disk.Before = [&](const std::string& event) {
    const bool change = !event.starts_with("note ") && !event.starts_with("read ");
    if (change && left-- <= 0 && (dead || left == -1))
      throw platform::RuntimeFault(failed = event, "the disk is full");
  };
  const auto before = yard.ReadAll();
  Model model;
  model.Folders = before;
  auto request = yard.AnyRequest();
  request.Programs.resize(std::min<std::size_t>(request.Programs.size(), 1));
  model.Do(request);
  yard.System.State.MachineRunning = true;
  const FileParts parts{yard.System, disk, yard.Drives, yard.Dialogs, {}};
  static_cast<void>(ProgramActions(parts).CarryOut(request));
  disk.Before = {};
  NeverMissing(before, model.Folders, yard.ReadAll());
  const auto now = Sources(yard.ReadAll());
  const auto old = Sources(before);
  for (const auto& content : Sources(model.Folders)) RC_ASSERT(now.count(content) != 0U);
  for (const auto& content : now) RC_ASSERT(old.count(content) != 0U);
  // What could not be deleted is still there; the next OK takes it away.
  if (!dead && !failed.starts_with("delete ")) yard.RootIsClean();
}

RC_GTEST_PROP(ActionProperty, AFaultOfTheDiskLosesNoProgram, ()) { FailAt(false); }

RC_GTEST_PROP(ActionProperty, ADiskThatDiesInTheMiddleLosesNoProgram, ()) { FailAt(true); }

}  // namespace
}  // namespace torvane::files

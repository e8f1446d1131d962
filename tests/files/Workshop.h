// A programs root with directories and drives, and an operator whose answers are written down
// beforehand.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "core/System.h"
#include "files/FileParts.h"
#include "platform/DiskFileSystem.h"
#include "supervision/OperatorDialogs.h"
#include "support/LooseDrives.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

using namespace torvane::files;

/// Writes down what was told ("tell ...") and asked ("ask ..."), with its line feeds.
class WrittenDialogs final : public supervision::OperatorDialogs {
 public:
  std::deque<bool> Answers;  ///< of the questions to come; yes when there is none left
  std::vector<std::string> Log;
  std::function<void()> WhileItStands;  ///< what happens beside an open dialog
  int Busy = 0;                         ///< pointer spells that have not ended
  int Spells = 0;

  bool ShowWarning(std::string_view text, supervision::WarningMode mode,
                   supervision::WarningStyle style) override {
    const bool question = mode == supervision::WarningMode::OkCancel;
    EXPECT_EQ(style, supervision::WarningStyle::Warning);
    Log.push_back((question ? "ask " : "tell ") + std::string(text));
    if (WhileItStands) WhileItStands();
    if (!question || Answers.empty()) return true;
    const bool answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  void SetBusy(bool busy) override {
    Busy += busy ? 1 : -1;
    Spells += busy ? 1 : 0;
  }
  void Beep() override { Log.emplace_back("beep"); }

  /// What was shown since the last call.
  std::vector<std::string> Shown() { return std::exchange(Log, {}); }
};

struct Workshop {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Disk{Temp.Path(), {{'C', Temp.Path()}}};
  core::System System;
  tests::LooseDrives Drives;
  WrittenDialogs Dialogs;
  int Breaths = 0;
  FileParts Parts{System, Disk, Drives, Dialogs, [this] { ++Breaths; }};

  Workshop() {
    for (const char* name : {"Service", "Programs/SHOP", "Programs/NEST"}) Temp.MakeDirectory(name);
    core::DirectorySet& set = System.Directories;
    set.RootDirectory = "C:\\";
    set.ServiceDirectory = "C:\\Service\\";
    set.ProgramRoot = "C:\\Programs\\";
    set.ProgramDirectoryName = "SHOP";
    set.ProgramDirectory = "C:\\Programs\\SHOP\\";
  }

  /// A disc in drive E.
  void InsertDisc() {
    Temp.MakeDirectory("Disc");
    Disk.SetDrive('E', Temp.Path() + "/Disc");
    Drives.Present = {"E:"};
    Drives.ReadyAt["E:"] = 1;
  }

  /// Names in a native directory, sorted.
  [[nodiscard]] std::vector<std::string> FilesIn(const std::string& directory) const {
    return Disk.ListFiles("C:\\" + directory + "\\*.*");
  }
  /// `name`.prg and more of the stem, each with its own name as content.
  void PutFamily(const std::string& directory, const std::string& name,
                 const std::vector<std::string>& extensions) const {
    for (const std::string& extension : extensions) {
      const std::string file = name + "." + extension;
      Temp.Put(directory + "/" + file, directory + " " + file);
    }
  }
  [[nodiscard]] std::string LastFile() const {
    const std::string note = Temp.Get("Service/LastFile.txt");
    return note.substr(0, note.find('\r'));
  }
};

using Shown = std::vector<std::string>;
using Names = std::vector<std::string>;

}  // namespace torvane::tests

// What the program screen offers beside the selection: its two lists, and the ways to the editor,
// the search and the restart.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Slot.h"
#include "core/System.h"
#include "platform/Drives.h"
#include "platform/FileSystem.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::supervision {

/// What the editor is given.
struct EditTarget {
  std::string Title;      ///< the program's name
  std::string Directory;  ///< its directory's name
  std::string Path;       ///< the file
};

/// What the search is given; at most one of the two is empty.
struct SearchWords {
  std::string Directory;
  std::string Program;
};

class ProgramEntries {
 public:
  ProgramEntries(core::System& system, platform::FileSystem& files, const platform::Drives& drives,
                 OperatorDialogs& dialogs)
      : system_(system), files_(files), drives_(drives), dialogs_(dialogs) {}

  /// The directories of the programs root for the directory combo. "EXSUBS" never shows.
  [[nodiscard]] std::vector<std::string> Directories() const;

  /// The programs of a directory, without extension, for the program combo. `entry` is a name or a
  /// drive entry ("A: [Floppy Disk]").
  [[nodiscard]] std::vector<std::string> Programs(std::string_view entry) const;

  /// A change of the directory combo: makes the directory current, writes Control.cfg, and gives
  /// its programs. Nothing, with a dialog, for a drive that does not answer; nothing, without one,
  /// for a text that names no directory (yet).
  std::optional<std::vector<std::string>> ChangeDirectory(std::string_view entry);

  /// Makes a directory that was taken from a list current and writes Control.cfg.
  void MakeCurrent(std::string_view directory);

  /// The way to the editor: names are tested, a missing directory is made if the operator wants it,
  /// and a new program starts from the template where there is one. Nothing after a refusal.
  std::optional<EditTarget> PrepareEdit(std::string_view directoryText,
                                        std::string_view programText);

  /// The way to the search. Nothing after a refusal.
  std::optional<SearchWords> PrepareSearch(std::string_view directoryText,
                                           std::string_view programText);

  /// True when a restart of the slot can be prepared: its ".cfg", ".drw", ".cnv" and ".tbl" exist.
  [[nodiscard]] bool RestartAvailable(core::Slot slot) const;

 private:
  void Refuse(std::string_view line);
  [[nodiscard]] bool MakeMissingDirectory(const std::string& directory);

  core::System& system_;
  platform::FileSystem& files_;
  const platform::Drives& drives_;
  OperatorDialogs& dialogs_;
};

}  // namespace torvane::supervision

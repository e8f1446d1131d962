// Where everything lies. Each directory ends in a backslash except where said.
#pragma once

#include <string>

#include "core/Slot.h"

namespace torvane::core {

struct DirectorySet {
  std::string RootDirectory;
  std::string TrioDirectory;
  std::string DataDirectory;
  std::string SettingsDirectory;
  std::string ServiceDirectory =
      "Service\\";  ///< under the working directory until Control.cfg is read
  std::string ToolsDirectory;
  std::string MessageDirectory;
  std::string MessageHelpDirectory;
  BySlot<std::string> SubsDirectory;
  std::string ProgramRoot;
  std::string ProgramDirectoryName;  ///< no backslash; may be a drive such as "A:"
  std::string ProgramDirectory;
};

}  // namespace torvane::core

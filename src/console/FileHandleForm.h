// The file menu: five actions on programs, three on directories, and the second serial port.
#pragma once

#include "console/Screen.h"

namespace torvane::console {

class FileHandleForm final : public Screen {
 public:
  explicit FileHandleForm(const ScreenStart& start);

 private:
  void OpenProgramAction(int index);
  void OpenDirectoryAction(int index);
  void OpenComms(int index);
  void EditCommsSettings();
};

}  // namespace torvane::console

// The end of the program and of the machine's session.
#pragma once

#include <QStringList>
#include <functional>
#include <string>

#include "platform/SessionEnd.h"
#include "toolkit/QtLoop.h"

namespace torvane::toolkit {

/// What powers the machine off where there is no ExitWindowsEx, the program first. Forced, as the
/// flags 5 of that call are: neither a program that asks for a delay nor another user's session
/// holds it up, while the services still end in order and the disks are written.
[[nodiscard]] QStringList PowerOffCommand();

class QtSessionEnd final : public platform::SessionEnd {
 public:
  /// `ownsMachine`: the session of the operating system really ends (the machine's own PC); without
  /// it only the program does. `nativePath` turns the system's path into the machine's.
  QtSessionEnd(QtLoop& loop, bool ownsMachine,
               std::function<std::string(std::string_view)> nativePath);

  void EndSession() override;
  void StartProgram(std::string_view path) override;
  void EndProcess() override;

 private:
  QtLoop& loop_;
  bool ownsMachine_;
  std::function<std::string(std::string_view)> nativePath_;
};

}  // namespace torvane::toolkit

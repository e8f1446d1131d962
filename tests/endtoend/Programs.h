// The real programs beside each other: torvane-sim on a pseudo-terminal, and torvane off screen at
// the other end of it, worked by a script of keys.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunningProgram.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

class EndToEnd : public ::testing::Test {
 protected:
  EndToEnd();
  void TearDown() override;

  /// The simulated machine on its line, so many times faster than time; the path that it runs goes
  /// to path.json. `faults` as for --fault.
  void StartMachine(int speed, const std::vector<std::string>& faults = {});
  /// The office on the second port, both with the example port file for an office.
  void StartOffice();
  /// The console with its script; the pictures stand in the directory of the test.
  void StartConsole(const std::string& script);

  /// The console on the machine's line with these arguments before its root.
  void StartConsoleWith(const std::vector<std::string>& arguments);

  [[nodiscard]] std::string File(const std::string& name) const {
    return Directory.Get("installation/" + name);
  }
  [[nodiscard]] std::string Place(const std::string& name) const {
    return Directory.Path() + "/" + name;
  }

  tests::TempDirectory Directory;
  RunningProgram Machine{"torvane-sim"};
  RunningProgram Office{"torvane-office"};
  RunningProgram Console{"torvane"};
};

/// Pixels of the picture in that colour (0xRRGGBB).
[[nodiscard]] int CountPixels(const std::string& picture, unsigned colour);

}  // namespace torvane::tests

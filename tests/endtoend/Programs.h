// The real programs beside each other: torvane-sim on a pseudo-terminal, and torvane off screen at
// the other end of it, worked by a script of keys.
#pragma once

#include <QImage>
#include <QProcess>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/TempDirectory.h"

namespace torvane::tests {

/// Everything that a program said, and whether it still runs.
class RunningProgram {
 public:
  explicit RunningProgram(std::string name);
  ~RunningProgram();

  void Start(const char* program, const std::vector<std::string>& arguments);
  /// Waits until its standard output holds the text behind what was waited for before.
  [[nodiscard]] bool WaitFor(const std::string& text, int ms);
  /// The same without a failure when it does not come.
  [[nodiscard]] bool WaitForQuietly(const std::string& text, int ms);
  /// Waits for its end; -1 when it still runs, or did not end by itself.
  [[nodiscard]] int WaitForEnd(int ms);
  void Type(const std::string& line);
  /// SIGSTOP, SIGCONT: it stands still as a controller does that hangs.
  void Freeze();
  void Thaw();
  /// SIGTERM and the like.
  void Signal(int number);
  /// At once, without a chance to clean up.
  void Kill();
  [[nodiscard]] bool Runs() const { return process_.state() != QProcess::NotRunning; }
  [[nodiscard]] std::string Output();
  [[nodiscard]] std::string Errors();

 private:
  std::string name_;
  QProcess process_;
  std::string output_;
  std::string errors_;
  std::size_t waited_ = 0;
};

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

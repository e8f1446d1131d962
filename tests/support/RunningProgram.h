// A real program as a child: started, listened to, typed to, frozen and killed.
#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace torvane::tests {

/// What the start of a program, or its end at a kill, may take, ms.
inline constexpr int ProgramStartMs = 10000;

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

/// Where the tests run without a terminal some signals are ignored, and a child would inherit that.
inline RunningProgram::RunningProgram(std::string name) : name_(std::move(name)) {
  process_.setChildProcessModifier([] {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) std::signal(number, SIG_DFL);
  });
}

inline RunningProgram::~RunningProgram() {
  if (Runs()) Kill();
}

inline void RunningProgram::Start(const char* program, const std::vector<std::string>& arguments) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  process_.setProcessEnvironment(environment);
  process_.start(program, list);
  ASSERT_TRUE(process_.waitForStarted(ProgramStartMs)) << program;
}

inline std::string RunningProgram::Output() {
  output_ += process_.readAllStandardOutput().toStdString();
  return output_;
}

inline std::string RunningProgram::Errors() {
  errors_ += process_.readAllStandardError().toStdString();
  return errors_;
}

inline bool RunningProgram::WaitFor(const std::string& text, int ms) {
  if (WaitForQuietly(text, ms)) return true;
  ADD_FAILURE() << name_ << " did not say \"" << text << "\" but:\n" << Output() << Errors();
  return false;
}

inline bool RunningProgram::WaitForQuietly(const std::string& text, int ms) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < ms) {
    const auto found = Output().find(text, waited_);
    if (found != std::string::npos) {
      waited_ = found + text.size();
      return true;
    }
    if (!Runs()) break;
    process_.waitForReadyRead(20);
  }
  return false;
}

inline int RunningProgram::WaitForEnd(int ms) {
  if (Runs() && !process_.waitForFinished(ms)) {
    ADD_FAILURE() << name_ << " still runs; it said:\n" << Output() << Errors();
    return -1;
  }
  if (process_.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << name_ << " crashed; it said:\n" << Output() << Errors();
    return -1;
  }
  return process_.exitCode();
}

inline void RunningProgram::Type(const std::string& line) {
  process_.write((line + "\n").c_str());
  process_.waitForBytesWritten(ProgramStartMs);
}

inline void RunningProgram::Freeze() { kill(static_cast<pid_t>(process_.processId()), SIGSTOP); }
inline void RunningProgram::Thaw() { kill(static_cast<pid_t>(process_.processId()), SIGCONT); }

inline void RunningProgram::Signal(int number) {
  kill(static_cast<pid_t>(process_.processId()), number);
}

inline void RunningProgram::Kill() {
  process_.kill();
  process_.waitForFinished(ProgramStartMs);
}

}  // namespace torvane::tests

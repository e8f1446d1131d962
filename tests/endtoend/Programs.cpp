#include "Programs.h"

#include <QElapsedTimer>
#include <QStringList>
#include <csignal>
#include <filesystem>

#include "support/QtEnvironment.h"
#include "support/SourceTree.h"

namespace torvane::tests {

namespace {

constexpr int LookMs = 20;
constexpr int StartMs = 10000;

}  // namespace

RunningProgram::RunningProgram(std::string name) : name_(std::move(name)) {}

RunningProgram::~RunningProgram() {
  if (Runs()) Kill();
}

void RunningProgram::Start(const char* program, const std::vector<std::string>& arguments) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  process_.setProcessEnvironment(environment);
  process_.start(program, list);
  ASSERT_TRUE(process_.waitForStarted(StartMs)) << program;
}

std::string RunningProgram::Output() {
  output_ += process_.readAllStandardOutput().toStdString();
  return output_;
}

std::string RunningProgram::Errors() {
  errors_ += process_.readAllStandardError().toStdString();
  return errors_;
}

bool RunningProgram::WaitFor(const std::string& text, int ms) {
  if (WaitForQuietly(text, ms)) return true;
  ADD_FAILURE() << name_ << " did not say \"" << text << "\" but:\n" << Output() << Errors();
  return false;
}

bool RunningProgram::WaitForQuietly(const std::string& text, int ms) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < ms) {
    const auto found = Output().find(text, waited_);
    if (found != std::string::npos) {
      waited_ = found + text.size();
      return true;
    }
    if (!Runs()) break;
    process_.waitForReadyRead(LookMs);
  }
  return false;
}

int RunningProgram::WaitForEnd(int ms) {
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

void RunningProgram::Type(const std::string& line) {
  process_.write((line + "\n").c_str());
  process_.waitForBytesWritten(StartMs);
}

void RunningProgram::Freeze() { kill(static_cast<pid_t>(process_.processId()), SIGSTOP); }
void RunningProgram::Thaw() { kill(static_cast<pid_t>(process_.processId()), SIGCONT); }

void RunningProgram::Signal(int number) { kill(static_cast<pid_t>(process_.processId()), number); }

void RunningProgram::Kill() {
  process_.kill();
  process_.waitForFinished(StartMs);
}

EndToEnd::EndToEnd() {
  std::filesystem::copy(torvane::tests::SourceTree() / "examples" / "installation",
                        Place("installation"), std::filesystem::copy_options::recursive);
  Directory.Put("installation/Control.cms", "Program transfer port\r\nPort : 0\r\n");
  // A silent line shows soon.
  Directory.Put("installation/Trio.cfg",
                "Poll Period (ms) : 50\r\nPoll Resume (ms) : 50\r\nReply Time Out (ms) : 800\r\n");
}

void EndToEnd::TearDown() {
  if (HasFailure()) {
    std::fprintf(stderr, "torvane said:\n%s%s\ntorvane-sim said:\n%s%s\n", Console.Output().c_str(),
                 Console.Errors().c_str(), Machine.Output().c_str(), Machine.Errors().c_str());
  }
}

void EndToEnd::StartMachine(int speed, const std::vector<std::string>& faults) {
  std::vector<std::string> arguments = {
      "--pty",   Place("line"),         "--root", Place("installation"),
      "--speed", std::to_string(speed), "--path", Place("path.json")};
  for (const std::string& fault : faults) {
    arguments.emplace_back("--fault");
    arguments.push_back(fault);
  }
  Machine.Start(TORVANE_SIM_PROGRAM, arguments);
  ASSERT_TRUE(Machine.WaitFor("listening", StartMs));
}

void EndToEnd::StartOffice() {
  const std::string settings = Place("installation/Control.cms");
  std::filesystem::copy(SourceTree() / "examples" / "transfer" / "Office.cms", settings,
                        std::filesystem::copy_options::overwrite_existing);
  Office.Start(TORVANE_OFFICE_PROGRAM, {"--pty", Place("office"), "--settings", settings, "--log",
                                        Place("office.txt"), "--baud", "115200"});
  ASSERT_TRUE(Office.WaitFor("listening", StartMs));
}

void EndToEnd::StartConsole(const std::string& script) {
  Directory.Put("keys.txt", script);
  StartConsoleWith({"--keys", Place("keys.txt")});
}

void EndToEnd::StartConsoleWith(const std::vector<std::string>& arguments) {
  std::vector<std::string> all = {
      "--device", "1=" + Place("line"), "--device", "2=" + Place("office"), "--window", "1024x768"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  all.push_back(Place("installation"));
  Console.Start(TORVANE_PROGRAM, all);
}

int CountPixels(const std::string& picture, unsigned colour) {
  const QImage image =
      QImage(QString::fromStdString(picture)).convertToFormat(QImage::Format_RGB32);
  EXPECT_FALSE(image.isNull()) << picture;
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if ((image.pixel(x, y) & 0xFFFFFFU) == colour) ++count;
    }
  }
  return count;
}

}  // namespace torvane::tests

#include "Programs.h"

#include <filesystem>

#include "support/QtEnvironment.h"
#include "support/SourceTree.h"

namespace torvane::tests {

namespace {

constexpr int StartMs = 10000;

}  // namespace

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

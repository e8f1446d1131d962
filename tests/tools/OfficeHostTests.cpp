// torvane-office: its options, its pseudo-terminal, and the words of its operator.
#include <filesystem>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HostOnATerminal.h"
#include "tools/CheckOptions.h"
#include "tools/OfficeHost.h"

namespace torvane::tools {
namespace {

using ::testing::HasSubstr;

OfficeOptions Read(std::vector<std::string> arguments) {
  std::string help;
  return ReadOfficeOptions(std::move(arguments), help);
}

TEST(OfficeOptionsTest, TakeALineAndAFrame) {
  const auto options =
      Read({"--pty", "/tmp/x", "--baud", "115200", "--settings", "Control.cms", "--log", "in.txt"});
  EXPECT_EQ(options.PtyLink, "/tmp/x");
  EXPECT_EQ(options.Baud, 115200);
  EXPECT_EQ(options.Settings, "Control.cms");
  EXPECT_EQ(options.Log, "in.txt");
}

TEST(OfficeOptionsTest, WrongUseIsRefused) {
  EXPECT_THROW(Read({}), WrongUse);
  EXPECT_THROW(Read({"--pty", "a", "--device", "b"}), WrongUse);
  EXPECT_THROW(Read({"--pty", "a", "--baud", "123"}), WrongUse);
}

class OfficeOnATerminal : public HostOnATerminal<OfficeHost> {
 protected:
  OfficeOnATerminal() {
    temp_.Put("A.prg", "G00\r\n");
    OfficeOptions options;
    options.PtyLink = Link();
    options.Log = temp_.Path() + "/in.txt";
    Begin(options);
  }
  /// What the console gets within so many steps.
  std::string Got(int steps) {
    std::string bytes;
    for (int i = 0; i < steps; ++i) bytes += Step();
    return bytes;
  }
};

TEST_F(OfficeOnATerminal, SendsAProgramAndLogsWhatComes) {
  Type("send " + temp_.Path() + "/A.prg\n");
  EXPECT_THAT(Got(40), HasSubstr("G00\r\n\x04"));
  Send("M02\r\n\x04");
  Got(3);
  EXPECT_EQ(temp_.Get("in.txt"), "M02\r\n\x04");
  EXPECT_THAT(out_.str(), HasSubstr("sent, 36 bytes in all\n"));
  EXPECT_THAT(out_.str(), HasSubstr("program of 6 bytes received\n"));
}

TEST_F(OfficeOnATerminal, ADeafOneReadsNothingAndDoesNotSpin) {
  Type("deaf on\n");
  Got(2);
  Send("M02\r\n");
  const auto start = std::chrono::steady_clock::now();
  host_->Step(50);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(40));
  EXPECT_EQ(temp_.Get("in.txt"), "");
  Type("deaf off\n");
  Got(3);
  EXPECT_EQ(temp_.Get("in.txt"), "M02\r\n");
}

TEST_F(OfficeOnATerminal, SurvivesThatTheConsoleClosesInMidSend) {
  Type("chunk 1 20\nsend " + temp_.Path() + "/A.prg\n");
  Got(10);
  HangUp();
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(host_->Step(5));
  Connect();
  Type("halt\nchunk 0\nsend " + temp_.Path() + "/A.prg\n");
  EXPECT_THAT(Got(40), HasSubstr("G00\r\n\x04"));
}

TEST_F(OfficeOnATerminal, BreaksAndModemLinesAreNothingOnATerminal) {
  Type("break\ncts off\ndsr off\nstate\nquit\n");
  EXPECT_FALSE(host_->Step(50));
  EXPECT_THAT(out_.str(), HasSubstr("CTS off, DSR off"));
}

TEST(OfficeMainTest, SaysInOneSentenceWhyItCannotWork) {
  std::ostringstream out;
  std::ostringstream errors;
  EXPECT_EQ(OfficeMain({"--device", "/nonexistent/tty"}, -1, out, errors), 1);
  EXPECT_EQ(errors.str(),
            "torvane-office: /nonexistent/tty: cannot be opened: No such file or directory\n");
  errors.str("");
  EXPECT_EQ(OfficeMain({}, -1, out, errors), 2);
  EXPECT_EQ(OfficeMain({"--pty", "/tmp/x", "--settings", "/nonexistent.cms"}, -1, out, errors), 1);
  EXPECT_THAT(errors.str(), HasSubstr("nonexistent.cms: not found"));
  EXPECT_EQ(OfficeMain({"--help"}, -1, out, errors), 0);
  EXPECT_THAT(out.str(), HasSubstr("stop-after"));
}

}  // namespace
}  // namespace torvane::tools

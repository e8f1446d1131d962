// torvane-sim: its options, its pseudo-terminal, and the operator's words.
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "HostOnATerminal.h"
#include "platform/RuntimeFault.h"
#include "simulator/OperatorCommands.h"
#include "tools/SimHost.h"

namespace torvane::tools {
namespace {

namespace fs = std::filesystem;

SimOptions Read(std::vector<std::string> arguments) {
  std::string help;
  return ReadSimOptions(std::move(arguments), false, help);
}

TEST(SimOptions, TakeALineAndWhatGoesWithIt) {
  const auto options = Read({"--pty", "/tmp/x", "--speed", "20", "--fault", "lose=0.5", "--fault",
                             "late=0.25", "--late-ms", "500", "--set", "59=1000"});
  EXPECT_EQ(options.PtyLink, "/tmp/x");
  EXPECT_EQ(options.Controller.Speed, 20);
  auto faults = options.Controller.Faults;
  EXPECT_EQ(faults.Rate(simulator::FaultKind::Lose), 0.5);
  EXPECT_EQ(faults.Rate(simulator::FaultKind::Late), 0.25);
  EXPECT_EQ(faults.LateSeconds, 0.5);
  ASSERT_EQ(options.Controller.Presets.size(), 1U);
  EXPECT_EQ(options.Controller.Presets[0].Number, 59);
  EXPECT_EQ(options.Controller.Presets[0].Value, 1000);
}

TEST(SimOptions, WrongUseIsRefused) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"--pty", "a", "--device", "b"},
      {"--pty"},
      {"--pty", "a", "--speed", "0"},
      {"--pty", "a", "--speed", "fast"},
      {"--pty", "a", "--fault", "drop=1"},
      {"--pty", "a", "--fault", "lose=2"},
      {"--pty", "a", "--set", "59"},
      {"--pty", "a", "--set", "2000=1"},
      {"--pty", "a", "--set", "59=inf"},
      {"--device", "a", "--baud", "123"},
      {"--pty", "a", "--panel"},
  };
  for (const auto& arguments : wrong) {
    EXPECT_THROW(Read(arguments), WrongUse) << (arguments.empty() ? "" : arguments.back());
  }
}

class SimOnATerminal : public HostOnATerminal<SimHost> {
 protected:
  SimOnATerminal() {
    SimOptions options;
    options.PtyLink = Link();
    Begin(options);
  }
};

TEST_F(SimOnATerminal, AnswersWithoutAnEchoOfTheTerminalsOwn) {
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n1\r\n>>");
  EXPECT_EQ(Exchange("HALT"), "HALT\r\n%\r\n>>");
  EXPECT_EQ(Exchange(""), ">>");
}

TEST_F(SimOnATerminal, StaysWhenTheFrontEndLeavesAndComesBack) {
  EXPECT_EQ(Exchange("VR(1)=5"), "VR(1)=5\r\n>>");
  HangUp();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(host_->Step(1));
  Connect();
  EXPECT_EQ(Exchange("? VR(1)"), "? VR(1)\r\n5\r\n>>");
}

TEST_F(SimOnATerminal, TakesCommandsInPiecesAndTellsItsEvents) {
  Exchange("TABLE(500,-999)");
  Type("sta");
  host_->Step(1);
  Type("rt\nbit 3\nnonsense\n");
  host_->Step(1);
  EXPECT_EQ(
      out_.str().substr(out_.str().find('\n') + 1),
      "cycle started: slot 1\ncycle finished: sheets completed 1\nmessage: bit 3\ncommands: " +
          std::string(simulator::OperatorWords) + "\n");
}

TEST_F(SimOnATerminal, EndsWithQuitAndTakesItsLinkAway) {
  EXPECT_TRUE(fs::is_symlink(Link()));
  Type("quit\n");
  EXPECT_FALSE(host_->Step(100));
  host_.reset();
  EXPECT_FALSE(fs::exists(fs::symlink_status(Link())));
}

TEST_F(SimOnATerminal, AnEndOfTheKeyboardEndsNothing) {
  close(keyboard_[1]);
  keyboard_[1] = dup(keyboard_[0]);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(host_->Step(1));
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n1\r\n>>");
}

TEST(SimLine, LeavesAFileThatStandsInItsWay) {
  const fs::path path = fs::temp_directory_path() / ("sim-file-" + std::to_string(getpid()));
  std::ofstream(path) << "mine";
  EXPECT_THROW(static_cast<void>(SimLine::OnPseudoTerminal(path.string())), platform::RuntimeFault);
  EXPECT_TRUE(fs::is_regular_file(path));
  fs::remove(path);
}

TEST(SimMain, SaysInOneSentenceWhyItCannotWork) {
  std::ostringstream out;
  std::ostringstream errors;
  EXPECT_EQ(SimMain({"--device", "/nonexistent/tty"}, -1, out, errors), 1);
  EXPECT_EQ(errors.str(),
            "torvane-sim: /nonexistent/tty: cannot be opened: No such file or directory\n");
  errors.str("");
  EXPECT_EQ(SimMain({}, -1, out, errors), 2);
  EXPECT_TRUE(errors.str().starts_with("torvane-sim: "));
  EXPECT_EQ(SimMain({"--help"}, -1, out, errors), 0);
  EXPECT_NE(out.str().find("--pty"), std::string::npos);
}

}  // namespace
}  // namespace torvane::tools

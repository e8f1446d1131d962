// torvane-sim --replay: a trace in a file, a console on a pseudo-terminal, and the exit status.
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HostOnATerminal.h"
#include "link/LinkTrace.h"
#include "platform/RuntimeFault.h"
#include "support/TempDirectory.h"
#include "tools/ReplayHost.h"
#include "tools/SimHost.h"

namespace torvane::tools {
namespace {

using ::testing::HasSubstr;

std::string Query(const std::string& name, const std::string& value) {
  return link::PollLogRecord("GetRspnsSngl", "? " + name, "? " + name + "\r\n" + value + "\r\n>>",
                             true);
}
std::string Command(const std::string& line) {
  return link::PollLogRecord("Download", line, line + "\r\n>>", true);
}

class ReplayOnATerminal : public HostOnATerminal<ReplayHost> {
 protected:
  void Start(const std::string& trace, std::size_t session = 0) {
    temp_.Put("Polling.txt", trace);
    SimOptions options;
    options.PtyLink = Link();
    options.Replay = {temp_.Path() + "/Polling.txt"};
    options.Session = session;
    Begin(options);
  }
  /// Steps until it is over, at most so many.
  bool Over() {
    for (int i = 0; i < 50; ++i) {
      if (!host_->Step(5)) return true;
    }
    return false;
  }
};

TEST_F(ReplayOnATerminal, EndsGoodWhenTheConsoleHangsUpAfterAllWentAsRecorded) {
  Start(Query("VR(59)", "2") + Command("VR(91)=1"));
  EXPECT_EQ(Exchange(""), ">>");
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n2\r\n>>");
  EXPECT_EQ(Exchange("VR(91)=1"), "VR(91)=1\r\n>>");
  HangUp();
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 0);
  EXPECT_THAT(out_.str(), HasSubstr("session 1 of 1: 2 exchanges from Polling.txt, line 1\n"));
  EXPECT_THAT(out_.str(), HasSubstr("session 1: 2 of 2 exchanges asked for, 0 lines different\n"));
}

TEST_F(ReplayOnATerminal, SaysHowManyExchangesWereLeft) {
  Start(Query("VR(59)", "2") + Command("VR(91)=1"));
  Exchange("? VR(59)");
  HangUp();
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 1);
  EXPECT_THAT(out_.str(), HasSubstr("session 1: 1 of 2 exchanges asked for, 0 lines different\n"));
}

TEST_F(ReplayOnATerminal, NamesTheFirstDifferenceAndCountsTheOthers) {
  Start(Query("VR(59)", "2") + Command("VR(91)=1") + Command("VR(90)=0"));
  Exchange("? VR(59)");
  EXPECT_EQ(Exchange("VR(91)=\x80"), "VR(91)=\x80\r\n>>");
  Exchange("VR(5)=5");
  HangUp();
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 1);
  EXPECT_THAT(out_.str(), HasSubstr("exchange 2 differs (Polling.txt, line 8)\n"
                                    "  recorded: VR(91)=1\n"
                                    "  came:     VR(91)=\\x80\n"
                                    "session 1: 1 of 3 exchanges asked for, 2 lines different\n"));
}

TEST_F(ReplayOnATerminal, TheNextConsoleHasTheNextSession) {
  Start(Query("VR(59)", "2") + Query("VR(59)", "3"));
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n2\r\n>>");
  HangUp();
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(host_->Step(1));
  EXPECT_THAT(out_.str(), HasSubstr("session 2 of 2"));
  Connect();
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n3\r\n>>");
  HangUp();
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 0);
}

TEST_F(ReplayOnATerminal, OneSessionCanBeAskedFor) {
  Start(Query("VR(59)", "2") + Query("VR(59)", "3"), 2);
  EXPECT_EQ(Exchange("? VR(59)"), "? VR(59)\r\n3\r\n>>");
  HangUp();
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 0);
}

TEST_F(ReplayOnATerminal, WordsEndASessionAndTheReplay) {
  Start(Query("VR(59)", "2") + Query("VR(59)", "3"));
  Exchange("? VR(59)");
  Type("state\nhello\nnext\n");
  EXPECT_TRUE(host_->Step(10));
  EXPECT_THAT(out_.str(), HasSubstr("session 1: 1 of 1 exchange asked for"));
  EXPECT_THAT(out_.str(), HasSubstr("commands: state, next, quit"));
  EXPECT_THAT(out_.str(), HasSubstr("session 2 of 2"));
  Type("quit\n");
  EXPECT_TRUE(Over());
  EXPECT_EQ(host_->Status(), 1) << "the second session was not asked for";
}

TEST_F(ReplayOnATerminal, TellsWhatOfTheTraceIsLeftOut) {
  std::string text = Query("VR(59)", "2");
  for (int i = 0; i < 12; ++i) text += "junk\r\n" + Command("VR(1)=1");
  Start(text);
  EXPECT_THAT(out_.str(), HasSubstr("left out: no record begins here (Polling.txt, line 8)\n"));
  EXPECT_THAT(out_.str(), HasSubstr("left out: 2 more\n"));
}

int Main(const std::vector<std::string>& arguments, std::string& errors) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = SimMain(arguments, -1, out, err);
  errors = err.str();
  return status;
}

TEST(ReplayMain, SaysInOneSentenceWhatIsWrong) {
  const tests::TempDirectory directory;
  const std::string line = directory.Path() + "/line";
  const std::string trace = directory.Path() + "/Polling.txt";
  std::string errors;
  EXPECT_EQ(Main({"--pty", line, "--replay", trace}, errors), 1);
  EXPECT_THAT(errors, HasSubstr("Polling.txt: "));
  directory.Put("Polling.txt", "G00 X1\r\n");
  EXPECT_EQ(Main({"--pty", line, "--replay", trace}, errors), 1);
  EXPECT_THAT(errors, HasSubstr("Polling.txt: holds no exchange with a controller\n"));
  directory.Put("Polling.txt", Query("VR(59)", "2"));
  EXPECT_EQ(Main({"--pty", line, "--replay", trace, "--session", "2"}, errors), 2);
  EXPECT_EQ(errors, "torvane-sim: the trace has 1 session, not 2\n");
  EXPECT_EQ(Main({"--pty", line, "--replay", trace, "--speed", "2"}, errors), 2);
  EXPECT_EQ(errors, "torvane-sim: --replay goes without --speed\n");
  EXPECT_EQ(Main({"--pty", line, "--session", "2"}, errors), 2);
}

}  // namespace
}  // namespace torvane::tools

// A recorded controller answers: as recorded, and what it does where the console differs.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/LinkTrace.h"
#include "simulator/ReplayController.h"

namespace torvane::simulator {
namespace {

using ::testing::ElementsAre;

std::string Query(const std::string& name, const std::string& value) {
  return link::PollLogRecord("GetRspnsSngl", "? " + name, "? " + name + "\r\n" + value + "\r\n>>",
                             true);
}
std::string Command(const std::string& line) {
  return link::PollLogRecord("Download", line, line + "\r\n>>", true);
}
std::string Failed(const std::string& line, const std::string& heard = "") {
  return link::PollLogRecord("Download", line, heard, false);
}

class Replay {
 public:
  explicit Replay(const std::string& text, std::size_t session = 0, double replySeconds = 0)
      : Trace({{"Polling.txt", text}}), Controller(Trace, replySeconds) {
    Controller.OnDifference([this](const ReplayDifference& difference) {
      Told.push_back(std::to_string(difference.Exchange) + ": " + difference.Recorded + " / " +
                     difference.Came);
      Places.push_back(Trace.PlaceText(difference.Place));
    });
    Controller.Begin(session);
  }
  std::string Ask(const std::string& line) {
    Controller.Receive(line + "\r");
    return Controller.TakeOutput();
  }
  /// What is left to be said of the session.
  const ReplayCount& End() {
    Controller.EndSession();
    return Controller.Count();
  }

  ReplayTrace Trace;
  ReplayController Controller;
  std::vector<std::string> Told;
  std::vector<std::string> Places;
};

TEST(ReplayController, AnswersAsRecordedAndKnowsWhenAllHasBeenAskedFor) {
  Replay replay(Query("VR(59)", "2") + Command("VR(91)=1") + Query("VR(19)", "16384"));
  EXPECT_EQ(replay.Ask(""), ">>");
  EXPECT_EQ(replay.Ask("? VR(59)"), "? VR(59)\r\n2\r\n>>");
  EXPECT_EQ(replay.Ask("VR(91)=1"), "VR(91)=1\r\n>>");
  EXPECT_FALSE(replay.Controller.Count().Good()) << "one exchange is left";
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n16384\r\n>>");
  EXPECT_TRUE(replay.End().Good());
  EXPECT_TRUE(replay.Told.empty());
}

TEST(ReplayController, TakesALineInPiecesWithBlanksAroundIt) {
  Replay replay(Query("VR(59)", "2"));
  replay.Controller.Receive("? VR");
  EXPECT_EQ(replay.Controller.TakeOutput(), "");
  EXPECT_EQ(replay.Ask("(59) "), "? VR(59)\r\n2\r\n>>");
  EXPECT_TRUE(replay.End().Good());
}

TEST(ReplayController, AnswersComeAfterTheirTime) {
  Replay replay(Query("VR(59)", "2"), 0, 0.25);
  EXPECT_EQ(replay.Ask("? VR(59)"), "");
  EXPECT_EQ(replay.Controller.OutputDueIn(), 0.25);
  replay.Controller.Advance(0.25);
  EXPECT_EQ(replay.Controller.TakeOutput(), "? VR(59)\r\n2\r\n>>");
  EXPECT_FALSE(replay.Controller.OutputDueIn().has_value());
}

TEST(ReplayController, NamesTheFirstLineThatDiffersWithItsExchangeAndItsPlace) {
  Replay replay(Query("VR(59)", "2") + Command("VR(91)=1") + Command("VR(90)=0"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("VR(91)=2"), "VR(91)=2\r\n>>") << "taken, so that the console goes on";
  EXPECT_THAT(replay.Told, ElementsAre("2: VR(91)=1 / VR(91)=2"));
  EXPECT_THAT(replay.Places, ElementsAre("Polling.txt, line 8"));
  EXPECT_EQ(replay.Ask("VR(90)=0"), "VR(90)=0\r\n>>");
  EXPECT_EQ(replay.End().Different, 2U) << "the one that was left out has to be passed over";
  EXPECT_FALSE(replay.End().Good());
}

TEST(ReplayController, ATimeOutIsSilenceAndWhatWasHeardBeforeIt) {
  Replay replay(Query("VR(59)", "2") + Failed("VR(1)=1") + Failed("VR(1)=2", "VR(1)") +
                Failed("VR(1)=3", "VR(1)=3\r\n%\r\n>>") + Query("VR(2)", "7"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("VR(1)=1"), "");
  EXPECT_EQ(replay.Ask(""), "") << "the next one timed out too: the line was dead";
  EXPECT_EQ(replay.Ask("VR(1)=2"), "VR(1)");
  EXPECT_EQ(replay.Ask(""), ">>");
  EXPECT_EQ(replay.Ask("VR(1)=3"), "VR(1)=3\r\n%\r\n>>");
  EXPECT_EQ(replay.Ask(""), ">>");
  EXPECT_EQ(replay.Ask("? VR(2)"), "? VR(2)\r\n7\r\n>>");
  EXPECT_TRUE(replay.End().Good());
}

/// Its record is written when the operator has answered the dialog; the poll goes on meanwhile.
TEST(ReplayController, AFailedLineStandsLaterThanItWasSent) {
  Replay replay(Query("VR(59)", "2") + Query("VR(19)", "0") + Command("TABLE(500,-999)") +
                Query("VR(19)", "1") + Failed("VR(68)=90") + Query("VR(19)", "2"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("VR(68)=90"), "");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n0\r\n>>");
  EXPECT_EQ(replay.Ask("TABLE(500,-999)"), "TABLE(500,-999)\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n1\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n2\r\n>>");
  EXPECT_TRUE(replay.End().Good());
}

TEST(ReplayController, AFailureOfLaterDoesNotHideALineThatDiffers) {
  Replay replay(Query("VR(59)", "2") + Query("VR(19)", "0") + Command("VR(91)=1") +
                Failed("VR(68)=90"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("VR(68)=90"), "");
  EXPECT_THAT(replay.Told, ElementsAre("2: ? VR(19) / VR(68)=90"))
      << "no dialog can have stood over the command in between";
}

TEST(ReplayController, WaitsForTheOperatorWhoseCommandIsNext) {
  Replay replay(Query("VR(59)", "2") + Query("VR(19)", "5") + Command("VR(48)=19") +
                Query("VR(19)", "6"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n5\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n5\r\n>>") << "as it was";
  EXPECT_EQ(replay.Ask("? VR(81)"), "? VR(81)\r\n0\r\n>>") << "nothing is known of it";
  EXPECT_EQ(replay.Ask("VR(48)=19"), "VR(48)=19\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n6\r\n>>");
  EXPECT_EQ(replay.End().Different, 2U);
  EXPECT_EQ(replay.End().Answered, 4U);
}

TEST(ReplayController, FollowsAnOperatorWhoIsEarly) {
  Replay replay(Query("VR(59)", "2") + Query("VR(19)", "5") + Query("VR(25)", "5") +
                Command("VR(48)=19") + Query("VR(19)", "6"));
  replay.Ask("? VR(59)");
  EXPECT_EQ(replay.Ask("VR(48)=19"), "VR(48)=19\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n6\r\n>>");
  EXPECT_EQ(replay.End().Different, 1U);
  EXPECT_EQ(replay.End().Answered, 3U) << "two were passed over";
  EXPECT_FALSE(replay.End().Good());
}

TEST(ReplayController, LinesAfterTheEndAreAnsweredAndAreNoDifference) {
  Replay replay(Query("VR(59)", "2") + Query("VR(19)", "5"));
  replay.Ask("? VR(59)");
  replay.Ask("? VR(19)");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n5\r\n>>");
  EXPECT_EQ(replay.Ask("VR(48)=0"), "VR(48)=0\r\n>>");
  EXPECT_EQ(replay.End().After, 2U);
  EXPECT_TRUE(replay.End().Good());
}

std::string LastReadings() {
  return Query("VR(82)", "1") + Query("VR(83)", "2") + Query("VR(84)", "3") + Query("VR(85)", "4");
}

TEST(ReplayController, OneLineThatTheEndGaveUpMayComeBeforeTheLastReadings) {
  Replay replay(Query("VR(59)", "2") + LastReadings());
  replay.Ask("? VR(59)");
  replay.Ask("? VR(25)");
  for (const char* counter : {"82", "83", "84", "85"}) {
    EXPECT_NE(replay.Ask(std::string("? VR(") + counter + ")"), "");
  }
  EXPECT_TRUE(replay.End().Good());
  EXPECT_TRUE(replay.Told.empty());
}

TEST(ReplayController, TwoLinesBeforeTheLastReadingsAreADifference) {
  Replay replay(Query("VR(59)", "2") + LastReadings());
  replay.Ask("? VR(59)");
  replay.Ask("? VR(25)");
  replay.Ask("? VR(81)");
  EXPECT_THAT(replay.Told, ElementsAre("2: ? VR(82) / ? VR(25)"));
  EXPECT_EQ(replay.End().Different, 2U);
}

TEST(ReplayController, ALineInPlaceOfTheLastReadingsIsADifferenceWhenTheConsoleGoes) {
  Replay replay(Query("VR(59)", "2") + LastReadings());
  replay.Ask("? VR(59)");
  replay.Ask("? VR(25)");
  EXPECT_EQ(replay.End().Different, 1U);
}

TEST(ReplayController, PlaysTheSessionThatIsAskedFor) {
  Replay replay(Query("VR(59)", "2") + Command("VR(91)=1") + Query("VR(59)", "4"), 1);
  EXPECT_EQ(replay.Ask("? VR(59)"), "? VR(59)\r\n4\r\n>>");
  EXPECT_TRUE(replay.End().Good());
}

/// The start is answered by what is known of later; the poll's first query is where the trace
/// joins.
TEST(ReplayController, AConsoleStartsOnATraceThatHasLostItsStart) {
  Replay replay(Query("VR(25)", "8") + Query("VR(19)", "5") + Query("VR(86)", "60") +
                Query("VR(19)", "6"));
  EXPECT_EQ(replay.Ask("VR(1)=5"), "VR(1)=5\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(86)"), "? VR(86)\r\n60\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n5\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(86)"), "? VR(86)\r\n60\r\n>>");
  EXPECT_EQ(replay.Ask("? VR(19)"), "? VR(19)\r\n6\r\n>>");
  EXPECT_TRUE(replay.End().Good());
  EXPECT_EQ(replay.End().Before, 2U);
  EXPECT_EQ(replay.End().Recorded, 3U);
}

TEST(ReplayController, ALineWithoutAnEndIsBounded) {
  Replay replay(Query("VR(59)", "2"));
  const std::string megabyte(1U << 20U, 'x');
  for (int i = 0; i < 64; ++i) replay.Controller.Receive(megabyte);
  EXPECT_LT(replay.Ask("").size(), 70'000U);
}

}  // namespace
}  // namespace torvane::simulator

// Jog words and their stop: what overtakes, what is taken away, what is repeated.
#include <string>

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "LinkFixture.h"
#include "link/JogLine.h"
#include "link/Variables.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* Word = "VR(48)=19";
constexpr const char* StopLine = "VR(48)=0";

class Jogging : public LinkTest {
 protected:
  Jogging() {
    Controller.ByteDelayMs = 1;
    Settings.ReplyTimeoutMs = 400;
  }

  void Press() {
    Loop.Start([this] { Jog.Jog(Jog.BeginHold(), Word); });
  }
  void Ask(const std::string& name) {
    Loop.Start([this, name] { Link.Download(name, Asker::Poll); });
  }

  JogLine Jog{Link};
};

TEST_F(Jogging, APressSendsTheWordAndItsEndTheStop) {
  Press();
  Loop.RunFor(100);
  Jog.Stop();
  EXPECT_TRUE(Jog.Stopping());
  Loop.RunFor(100);
  EXPECT_FALSE(Jog.Stopping());
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine));
}

TEST_F(Jogging, TheStopOvertakesWhateverWaits) {
  Ask("A=1");
  Ask("B=2");
  Ask("C=3");
  Loop.RunFor(2);
  Jog.Stop();
  Loop.RunFor(200);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine, "B=2", "C=3"));
  EXPECT_EQ(Controller.Overlaps, 0);
}

TEST_F(Jogging, AWordThatStillWaitsIsTakenAwayByTheStop) {
  Ask("A=1");
  Press();
  Loop.RunFor(2);
  Jog.Stop();
  Loop.RunFor(200);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine));
}

TEST_F(Jogging, AWordOnTheLineIsFollowedByItsStop) {
  Press();
  Ask("A=1");
  Loop.RunFor(2);
  Jog.Stop();
  Loop.RunFor(200);
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine, "A=1"));
}

TEST_F(Jogging, AHoldThatEndedBeforeItsWordSendsNone) {
  const auto hold = Jog.BeginHold();
  Jog.Stop();
  Loop.RunFor(50);
  Jog.Jog(hold, Word);
  Loop.RunFor(50);
  EXPECT_THAT(Controller.Received, ElementsAre(StopLine));
}

TEST_F(Jogging, APressAfterTheStopJogsAgain) {
  Ask("A=1");
  Press();
  Jog.Stop();
  Press();
  Loop.RunFor(300);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine, Word));
}

TEST_F(Jogging, AWordThatFailsIsFollowedByAStopAheadOfTheRecoveryAndNeverRepeated) {
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = line == Word; };
  Press();
  Loop.RunFor(1000);
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine, ""));
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(Jogging, AWordThatFailsOnADeadLineIsFollowedByItsStopAtItsTimeOut) {
  Controller.Silent = true;
  Press();
  Loop.RunFor(Settings.ReplyTimeoutMs + 1);
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine));
}

TEST_F(Jogging, AtTheEndOfTheProgramAStopThatWaitsGoesFirst) {
  Controller.Silent = true;
  Ask("A=1");
  Loop.RunFor(10);
  Jog.Stop();
  Link.BeginEnd();
  Loop.Start([this] { Link.Download("B=2", Asker::End); });
  Loop.RunFor(10);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine));
  Loop.RunFor(2000);
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
  EXPECT_FALSE(Jog.Stopping());
}

TEST_F(Jogging, WhereNoLoopRunsAnyMoreTheStopIsTheLastLine) {
  {
    JogLine other(Link);
    Loop.Start([&other] { other.Jog(other.BeginHold(), Word); });
    Loop.RunFor(100);
    EXPECT_THAT(Controller.Received, ElementsAre(Word));
  }
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine));
}

TEST_F(Jogging, AStopThatWasTakenIsNotWrittenAgainAtTheEnd) {
  {
    JogLine other(Link);
    Loop.Start([&other] { other.Jog(other.BeginHold(), Word); });
    Loop.RunFor(100);
    other.Stop();
    Loop.RunFor(100);
  }
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine));
}

TEST_F(Jogging, AStopThatWaitsGoesAtTheTimeOutOfTheLineAndBeforeItsRecovery) {
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = line == "A=1"; };
  Ask("A=1");
  Press();
  Loop.RunFor(100);
  Jog.Stop();
  Loop.RunFor(299);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1"));
  Loop.RunFor(1);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine));
  Loop.RunFor(500);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", StopLine, ""));
}

TEST_F(Jogging, AStopDoesNotWaitForARecoveryThatGetsNoAnswer) {
  Controller.Silent = true;
  Ask("A=1");
  Loop.RunFor(500);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", ""));
  Jog.Stop();
  Loop.RunFor(1);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", "", StopLine));
}

TEST_F(Jogging, AStopThatFailsIsRepeatedOnceTheLineIsBackWithOneDialog) {
  Press();
  Loop.RunFor(100);
  Controller.Silent = true;
  Jog.Stop();
  Loop.RunFor(5000);
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine, ""));
  EXPECT_TRUE(Jog.Stopping());
  Controller.Silent = false;
  Loop.RunFor(5000);
  EXPECT_EQ(Controller.Received.size(), 3U) << "nobody has heard of the line yet";
  Ask("A=1");
  Loop.RunFor(200);
  EXPECT_THAT(Controller.Received, ElementsAre(Word, StopLine, "", "A=1", StopLine));
  EXPECT_FALSE(Jog.Stopping());
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(Jogging, AtTheEndOfTheProgramAStopThatIsOwedIsGivenUp) {
  Controller.Silent = true;
  Jog.Stop();
  Loop.RunFor(1000);
  Link.BeginEnd();
  Loop.RunFor(Settings.ReplyTimeoutMs + 100);
  EXPECT_EQ(Controller.Received.back(), StopLine) << "the program's last word to the machine";
  EXPECT_FALSE(Jog.Stopping());
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
}

TEST_F(Jogging, WithTheLinkOffNothingIsSentAndNothingIsOwed) {
  Settings.TrioLinkEnabled = false;
  Press();
  Jog.Stop();
  Loop.RunFor(100);
  EXPECT_THAT(Controller.Received, IsEmpty());
  EXPECT_FALSE(Jog.Stopping());
}

/// A storm of presses, ends and strangers' lines on a line that falls silent and comes back: no
/// word is the last word.
RC_GTEST_PROP(JoggingProperty, NoJogWordIsEverTheLastWord, ()) {
  enum class Event { Press, Stop, Ask, Silence, Answer };
  const auto storm = *rc::gen::container<std::vector<std::pair<int, int>>>(
      rc::gen::pair(rc::gen::inRange(0, 300), rc::gen::inRange(0, 5)));
  LinkFixture link;
  JogLine jog(link.Link);
  link.Controller.ByteDelayMs = 1;
  link.Settings.ReplyTimeoutMs = 200;
  for (const auto& [pause, event] : storm) {
    link.Loop.RunFor(pause);
    switch (static_cast<Event>(event)) {
      case Event::Press:
        link.Loop.Start([&jog] { jog.Jog(jog.BeginHold(), Word); });
        break;
      case Event::Stop:
        jog.Stop();
        break;
      case Event::Ask:
        link.Loop.Start([&link] { link.Link.Download("A=1", Asker::Poll); });
        break;
      case Event::Silence:
        link.Controller.Silent = true;
        break;
      case Event::Answer:
        link.Controller.Silent = false;
        break;
    }
  }
  jog.Stop();
  link.Controller.Silent = false;
  for (int poll = 0; poll < 20; ++poll) {
    link.Loop.RunFor(500);
    link.Loop.Start([&link] { link.Link.Download("A=1", Asker::Poll); });
  }
  link.Loop.RunFor(2000);
  RC_ASSERT(!jog.Stopping());
  RC_ASSERT(link.Loop.ActivitiesUnderWay() == 0U);
  const auto& sent = link.Controller.Received;
  const auto lastWord = std::find(sent.rbegin(), sent.rend(), Word);
  const auto lastStop = std::find(sent.rbegin(), sent.rend(), StopLine);
  RC_ASSERT(lastStop != sent.rend());
  RC_ASSERT(lastStop < lastWord);
}

}  // namespace
}  // namespace torvane::link

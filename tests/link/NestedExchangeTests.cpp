// Exchanges started while others wait, at every moment: none is lost, none takes another's
// reply, and each caller's lines keep their order.
#include <memory>

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;

class NestedExchanges : public LinkTest {
 protected:
  NestedExchanges() {
    Controller.ByteDelayMs = 1;
    Controller.Values = {{"VR(19)", "16384"}, {"VR(81)", "77"}, {"VR(25)", "3000"}};
  }
};

/// How long the fixture's query of VR(19) waits at a byte per ms.
constexpr int QueryMs = 19;

TEST_F(NestedExchanges, AQueryAtEveryByteOfAnothersReplyBothGetTheirOwn) {
  for (int moment = 0; moment <= QueryMs + 1; ++moment) {
    Controller.Received.clear();
    std::int16_t inner = -1;
    Loop.After(moment, [&] { inner = Link.GetRspnsInt("VR(81)"); });
    EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 16384) << moment;
    Loop.RunFor(100);
    EXPECT_EQ(inner, 77) << moment;
    EXPECT_THAT(Controller.Received, ElementsAre("? VR(19)", "? VR(81)")) << moment;
  }
  EXPECT_EQ(Controller.Overlaps, 0);
  EXPECT_TRUE(Screens.Warnings.empty());
}

TEST_F(NestedExchanges, ThreeDeepAtEveryPairOfMoments) {
  for (int first = 0; first <= QueryMs; ++first) {
    for (int second = 0; second <= 45; ++second) {
      Controller.Received.clear();
      std::int16_t inner = -1;
      float innermost = -1;
      bool downloaded = false;
      Loop.After(first, [&] {
        inner = Link.GetRspnsInt("VR(81)");
        Link.Download("VR(48)=19");
        downloaded = true;
      });
      Loop.After(second, [&] { innermost = Link.GetRspnsSngl("VR(25)", 0); });
      ASSERT_EQ(Link.GetRspnsLng("VR(19)"), 16384) << first << " " << second;
      Loop.RunFor(200);
      ASSERT_EQ(inner, 77) << first << " " << second;
      ASSERT_EQ(innermost, 3000.0F) << first << " " << second;
      ASSERT_TRUE(downloaded);
      ASSERT_EQ(Controller.Received.size(), 4U);
    }
  }
  EXPECT_EQ(Controller.Overlaps, 0);
  EXPECT_TRUE(Screens.Warnings.empty());
}

TEST_F(NestedExchanges, ADownloadAtEveryMomentOfTheDialogAndOfTheRequestForAPrompt) {
  Controller.Replies["A=X"] = "A=X\r\n%\r\n>>";
  for (int moment = 0; moment <= 60; ++moment) {
    Controller.Received.clear();
    Screens.Warnings.clear();
    Screens.DuringDialog = [this] { Loop.RunFor(20); };
    std::int16_t inner = -1;
    Loop.After(moment, [&] { inner = Link.GetRspnsInt("VR(81)"); });
    Link.Download("A=X");
    Loop.RunFor(100);
    ASSERT_EQ(inner, 77) << moment;
    ASSERT_EQ(Screens.Warnings.size(), 1U) << moment;
    ASSERT_EQ(Controller.Received.size(), 3U) << moment;
  }
  EXPECT_EQ(Controller.Overlaps, 0);
}

TEST_F(NestedExchanges, APollThatTicksInsideAButtonsExchangeIsAnsweredBehindIt) {
  std::int32_t status = 0;
  Link.SetPollTick([&] { status = Link.GetRspnsLng("VR(19)"); });
  Settings.PollResumeMs = 5;
  Link.StartPolling(true);
  Link.Download("VR(48)=10");
  EXPECT_EQ(Controller.Received[0], "VR(48)=10");
  EXPECT_EQ(status, 0);
  Loop.RunFor(50);
  EXPECT_EQ(status, 16384);
}

TEST_F(NestedExchanges, AFaultOfOneCallerLeavesTheExchangeOfAnotherWhole) {
  std::int32_t first = 0;
  bool second = false;
  Loop.Start([&] { first = Link.GetRspnsLng("VR(19)"); });
  Loop.Start([&] {
    Link.Download("VR(1)=1");
    second = true;
  });
  Loop.After(5, [] { throw platform::RuntimeFault("X.dat", "is damaged"); });
  EXPECT_THROW(Loop.RunFor(100), platform::RuntimeFault);
  Loop.RunFor(100);
  EXPECT_EQ(first, 16384);
  EXPECT_TRUE(second);
  EXPECT_THAT(Controller.Received, ElementsAre("? VR(19)", "VR(1)=1"));
}

TEST_F(NestedExchanges, ACallerThatIsGivenUpLeavesTheLineToTheNext) {
  Loop.Start([this] { Link.Download("VR(1)=1"); });
  Loop.Start([this] { Link.Download("VR(2)=2"); });
  Loop.RunFor(3);
  Loop.GiveUpWaits();
  Loop.RunFor(100);
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 16384);
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=1", "? VR(19)"));
}

// ---- any number of callers, any timing, with faults ----

/// What one caller does at its moment: its exchanges one after the other.
struct Call {
  enum class Fault { None, Mark, Silence, MarkWithoutPrompt };
  bool IsQuery = true;
  Fault What = Fault::None;
};
struct Caller {
  int StartMs = 0;
  std::vector<Call> Calls;
};
struct Scene {
  std::vector<Caller> Callers;
  int ByteDelayMs = 0;
  int TimeoutMs = 0;
  int PauseMs = 0;
  int DialogMs = 0;
};

rc::Gen<Call> AnyCall() {
  using Fault = Call::Fault;
  return rc::gen::build<Call>(
      rc::gen::set(&Call::IsQuery),
      rc::gen::set(&Call::What, rc::gen::weightedElement<Fault>({{12, Fault::None},
                                                                 {2, Fault::Mark},
                                                                 {1, Fault::Silence},
                                                                 {1, Fault::MarkWithoutPrompt}})));
}

rc::Gen<Scene> AnyScene() {
  const auto caller = rc::gen::build<Caller>(
      rc::gen::set(&Caller::StartMs, rc::gen::inRange(0, 120)),
      rc::gen::set(&Caller::Calls,
                   rc::gen::resize(5, rc::gen::container<std::vector<Call>>(AnyCall()))));
  return rc::gen::build<Scene>(
      rc::gen::set(&Scene::Callers,
                   rc::gen::resize(8, rc::gen::container<std::vector<Caller>>(caller))),
      rc::gen::set(&Scene::ByteDelayMs, rc::gen::inRange(0, 4)),
      rc::gen::set(&Scene::TimeoutMs, rc::gen::inRange(120, 300)),
      rc::gen::set(&Scene::PauseMs, rc::gen::element(0, 0, 7)),
      rc::gen::set(&Scene::DialogMs, rc::gen::inRange(0, 80)));
}

/// Plays a scene and checks every answer against the line that asked for it.
class ScenePlay {
 public:
  explicit ScenePlay(const Scene& scene) : scene_(scene) {
    link_.Controller.ByteDelayMs = scene.ByteDelayMs;
    link_.Settings.ReplyTimeoutMs = scene.TimeoutMs;
    link_.Settings.CommandDelayMs = scene.PauseMs;
    link_.Screens.DuringDialog = [this] { link_.Loop.RunFor(scene_.DialogMs); };
    link_.Controller.OnLine = [this](const std::string& line) {
      link_.Controller.Silent = silent_.count(line) > 0;
    };
  }

  void Run() {
    for (std::size_t index = 0; index < scene_.Callers.size(); ++index) {
      link_.Loop.After(scene_.Callers[index].StartMs, [this, index] { RunCaller(index); });
    }
    link_.Loop.RunFor(10'000'000);
  }

  void Check() {
    RC_ASSERT(finished_ == scene_.Callers.size());
    RC_ASSERT(link_.Controller.Overlaps == 0);
    Lines sent = link_.Controller.Received;
    const auto bare = std::count(sent.begin(), sent.end(), "");
    RC_ASSERT(static_cast<std::size_t>(bare) == failed_);
    for (std::size_t index = 0; index < scene_.Callers.size(); ++index) {
      const std::string mark = "C" + std::to_string(index) + "N";
      Lines mine;
      std::copy_if(sent.begin(), sent.end(), std::back_inserter(mine),
                   [&](const std::string& line) { return line.find(mark) != std::string::npos; });
      RC_ASSERT(mine == asked_[index]);
    }
    RC_ASSERT(Count(link_.Files.Text("C:\\ROOT\\Service\\Errors.txt"), "*** ERROR ***") ==
              reports_);
    RC_ASSERT(link_.Screens.Warnings.size() + static_cast<std::size_t>(link_.Screens.Busy) ==
              reports_);
  }

 private:
  static std::size_t Count(const std::string& text, const std::string& word) {
    std::size_t count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++count;
    return count;
  }

  void RunCaller(std::size_t index) {
    int number = 0;
    for (const Call& call : scene_.Callers[index].Calls) {
      // Every expression is unique and its value says whose it is.
      const std::string name =
          "C" + std::to_string(index) + "N" + std::to_string(number) + (call.IsQuery ? "Q" : "=1");
      const std::string line = (call.IsQuery ? "? " : "") + name;
      const std::int32_t value = static_cast<std::int32_t>(index * 1000) + number + 1;
      ++number;
      Prepare(call.What, line, name, value);
      asked_[index].push_back(line);
      if (!call.IsQuery) {
        link_.Link.Download(name);
        continue;
      }
      RC_ASSERT(link_.Link.GetRspnsLng(name) == (call.What == Call::Fault::None ? value : 0));
    }
    ++finished_;
  }

  void Prepare(Call::Fault fault, const std::string& line, const std::string& name,
               std::int32_t value) {
    link_.Controller.Values[name] = std::to_string(value);
    if (fault == Call::Fault::None) return;
    ++failed_;
    ++reports_;
    if (fault == Call::Fault::Silence) silent_[line] = true;
    if (fault == Call::Fault::Mark) link_.Controller.Replies[line] = line + "\r\n%\r\n>>";
    if (fault != Call::Fault::MarkWithoutPrompt) return;
    ++reports_;
    link_.Controller.Replies[line] = line + "\r\n%\r\n";
  }

  const Scene& scene_;
  LinkFixture link_;
  std::map<std::string, bool> silent_;
  std::map<std::size_t, Lines> asked_;
  std::size_t finished_ = 0;
  std::size_t failed_ = 0;
  std::size_t reports_ = 0;
};

RC_GTEST_PROP(NestedExchangeProperty, NothingIsLostNothingIsSwappedAndTheOrderStays, ()) {
  const auto scene = *AnyScene();
  ScenePlay play(scene);
  play.Run();
  play.Check();
}

}  // namespace
}  // namespace torvane::link

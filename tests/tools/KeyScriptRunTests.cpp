// Scripts of keys at work: each word, and the sentence with the line number where it cannot be
// done.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include "console/ConsoleFixture.h"
#include "platform/ScriptedPort.h"
#include "toolkit/PickBox.h"
#include "toolkit/PlotCanvas.h"
#include "toolkit/ProgressBar.h"
#include "toolkit/Slider.h"
#include "tools/ConsoleDump.h"
#include "tools/KeyScriptRun.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;
using toolkit::Key;
using toolkit::KeyStroke;

struct ScriptTest : ConsoleFixture {
  platform::ScriptedPort Wire{Loop};
  tools::SentLines Sent{Wire};
  std::vector<int> Ends;  ///< statuses given to ShutDown
  std::string Said;       ///< on standard output
  bool WithMachine = true;
  bool Finished = false;

  tools::ScriptStage Stage() {
    return {Loop,
            System,
            [this] { return std::vector<toolkit::Desk*>{Desk.get()}; },
            Sent,
            WithMachine ? Controller : nullptr,
            [this](int status) { Ends.push_back(status); },
            {},
            WithMachine ? Office.get() : nullptr};
  }

  /// Plays a script and gives what it said on standard error, without the place of the script.
  std::string Play(const std::string& script, int ms = 2000) {
    Directory.Put("keys.txt", script);
    const std::string path = Directory.Path() + "/keys.txt";
    ::testing::internal::CaptureStderr();
    ::testing::internal::CaptureStdout();
    tools::KeyScriptRun run(Stage(), path);
    RunFor(ms);
    Finished = run.Finished();
    Said = ::testing::internal::GetCapturedStdout();
    std::string told = ::testing::internal::GetCapturedStderr();
    if (const auto at = told.find("keys.txt"); at != std::string::npos) told.erase(0, at);
    return told;
  }
};

/// A form with a control of every kind.
struct TrialForm {
  explicit TrialForm(toolkit::Desk& desk) : Form(desk, "TrialForm") {
    int row = 0;
    for (const auto& [control, name] :
         std::vector<std::pair<toolkit::Control*, const char*>>{{&Title, "TrialPanel(0)"},
                                                                {&Press, "PressButton"},
                                                                {&Flip, "FlipButton"},
                                                                {&Hidden, "HiddenButton"},
                                                                {&Dead, "DeadButton"},
                                                                {&Text, "TextLabel"},
                                                                {&Entry, "EntryBox"},
                                                                {&List, "FileList"},
                                                                {&Pick, "PickBox"},
                                                                {&Bar, "ProgressBar"},
                                                                {&Slide, "SpeedSlider"},
                                                                {&Box, "FaultFrame"},
                                                                {&Mark, "QuestionImage"},
                                                                {&Plot, "PlotBox(1)"},
                                                                {&Over, "OverPanel"},
                                                                {&Under, "UnderButton"}}) {
      control->SetName(name);
      control->Place({20 + 300 * (row % 2), 20 + 80 * (row / 2), 280, 76});
      ++row;
    }
    Over.Place(Under.Bounds().Inset(4));
    Over.raise();
    List.SetItems({"ONE", "TWO", "THREE", "FOUR", "FIVE"});
    List.SetCurrent(1);
    Pick.SetItems({"RED", "GREEN"});
    Entry.SetText("12.5");
    Bar.SetValue(40);
    Slide.SetMaximum(5);
    Slide.SetValue(3);
    Flip.SetDown(true, toolkit::Events::Silent);
    Press.SetColours(0xC08000, 0x000000);
    Hidden.SetVisible(false);
    Dead.SetEnabled(false);
    Form.SetSize(640, 700);
    Form.OnKeyDown([this](const KeyStroke& stroke) {
      Strokes.push_back(stroke);
      return true;
    });
    Form.OnKeyUp([this](const KeyStroke& stroke) { Ups.push_back(stroke.Code); });
    Press.OnClick([this] { ++Clicks; });
    List.OnDoubleClick([this] { ++DoubleClicks; });
    Plot.OnPlotDown([this](const toolkit::PlotPointerEvent& event) { Downs.push_back(event); });
    Plot.OnPlotUp([this](const toolkit::PlotPointerEvent& event) { UpsOnPlot.push_back(event); });
    Form.Show();
    Plot.Canvas().Scale({0, 100}, {200, 0});
  }

  toolkit::Form Form;
  toolkit::Panel Title{&Form, toolkit::PanelStyle::Title, "TRIAL"};
  toolkit::Button Press{&Form, "&PRESS"};
  toolkit::TwoStateButton Flip{&Form, "&FLIP"};
  toolkit::Button Hidden{&Form, "HIDDEN"};
  toolkit::Button Dead{&Form, "DEAD"};
  toolkit::Label Text{&Form, "a line"};
  toolkit::EntryBox Entry{&Form};
  toolkit::ListBox List{&Form};
  toolkit::PickBox Pick{&Form};
  toolkit::ProgressBar Bar{&Form};
  toolkit::Slider Slide{&Form};
  toolkit::Frame Box{&Form, "FAULTS"};
  toolkit::ImageMark Mark{&Form, toolkit::MarkKind::Question};
  toolkit::PlotCanvas Plot{&Form};
  toolkit::Button Under{&Form, "UNDER"};
  toolkit::Panel Over{&Form, toolkit::PanelStyle::Body};
  std::vector<KeyStroke> Strokes;
  std::vector<Key> Ups;
  std::vector<toolkit::PlotPointerEvent> Downs;
  std::vector<toolkit::PlotPointerEvent> UpsOnPlot;
  int Clicks = 0;
  int DoubleClicks = 0;
};

struct Hands : ScriptTest {
  Hands() {
    Desk->OpenWindow(1024, 768);
    Trial = std::make_unique<TrialForm>(*Desk);
  }
  ~Hands() override { Trial.reset(); }
  std::unique_ptr<TrialForm> Trial;
};

TEST_F(Hands, AKeyIsPressedAndLetGo) {
  EXPECT_EQ(Play("key Left\nkey Alt+C\n"), "");
  ASSERT_EQ(Trial->Strokes.size(), 2U);
  EXPECT_EQ(Trial->Strokes[0].Code, Key::Left);
  EXPECT_EQ(Trial->Strokes[1].Code, Key::C);
  EXPECT_TRUE(Trial->Strokes[1].Alt);
  EXPECT_EQ(Trial->Ups, (std::vector<Key>{Key::Left, Key::C}));
  EXPECT_TRUE(Finished);
}

TEST_F(Hands, AHeldKeyRepeatsUntilItIsLetGo) {
  EXPECT_EQ(Play("press Left\npress Left\npress Left\npause 100\n"), "");
  ASSERT_EQ(Trial->Strokes.size(), 3U);
  EXPECT_FALSE(Trial->Strokes[0].Repeat);
  EXPECT_TRUE(Trial->Strokes[1].Repeat);
  EXPECT_TRUE(Trial->Strokes[2].Repeat);
  EXPECT_TRUE(Trial->Ups.empty());
  EXPECT_EQ(Play("press Up\nrelease Up\npress Up\nrelease Up\n"), "");
  EXPECT_FALSE(Trial->Strokes.back().Repeat) << "it was let go between";
  EXPECT_EQ(Trial->Ups, (std::vector<Key>{Key::Up, Key::Up}));
}

TEST_F(Hands, AClickPressesAndFlips) {
  EXPECT_EQ(Play("click TrialForm PressButton\nclick TrialForm FlipButton\n"), "");
  EXPECT_EQ(Trial->Clicks, 1);
  EXPECT_FALSE(Trial->Flip.Down());
}

TEST_F(Hands, WhatCannotBeClickedFailsWithItsLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"click TrialForm DeadButton", "DeadButton of TrialForm is disabled"},
      {"click TrialForm HiddenButton", "HiddenButton of TrialForm is hidden"},
      {"click TrialForm NoButton", "TrialForm has no NoButton"},
      {"click SetupForm ExitButton", "SetupForm does not show"},
      {"click TrialForm UnderButton", "UnderButton is covered there by OverPanel"},
      {"double-click TrialForm DeadButton", "DeadButton of TrialForm is disabled"},
      {"hold TrialForm HiddenButton", "HiddenButton of TrialForm is hidden"},
      {"let-go TrialForm PressButton", "PressButton of TrialForm is not held"},
      {"click-row TrialForm PressButton 1", "PressButton of TrialForm shows no list"},
      {"click-row TrialForm FileList 6", "FileList of TrialForm has 5 rows"},
      {"click-row TrialForm PickBox 1", "PickBox of TrialForm shows no list"},
      {"point TrialForm PressButton 1 1", "PressButton of TrialForm is no canvas"},
      {"point TrialForm PlotBox(1) 201 50", "201 50 lies outside PlotBox(1)"},
      {"point TrialForm PlotBox(1) 1e300 50", "lies outside PlotBox(1)"},
      {"dump /no/such/folder/x.json", "/no/such/folder/x.json cannot be written"},
      {"picture /no/such/folder/x.png", "/no/such/folder/x.png cannot be written"},
  };
  for (const auto& [line, told] : cases) {
    Ends.clear();
    EXPECT_THAT(Play("# first\n" + std::string(line) + "\nclick TrialForm PressButton\n"),
                ::testing::AllOf(HasSubstr("keys.txt, line 2: "), HasSubstr(told)));
    EXPECT_EQ(Ends, std::vector<int>{tools::ScriptFailed}) << line;
  }
  EXPECT_EQ(Trial->Clicks, 0) << "nothing is played after a failure";
}

TEST_F(Hands, ADoubleClickIsTwoPresses) {
  Trial->List.SetVisibleLines(3);
  EXPECT_EQ(Play("double-click TrialForm FileList\n"), "");
  EXPECT_EQ(Trial->DoubleClicks, 1);
  EXPECT_EQ(Trial->List.Text(Trial->List.Current()), "TWO") << "the middle of three rows";
}

TEST_F(Hands, AHeldButtonIsDownUntilItIsLetGo) {
  EXPECT_EQ(Play("hold TrialForm PressButton\npause 500\n", 300), "");
  EXPECT_TRUE(Trial->Press.Sunk());
  EXPECT_EQ(Trial->Clicks, 0);
  EXPECT_EQ(Play("hold TrialForm FlipButton\nlet-go TrialForm FlipButton\n"), "");
  EXPECT_FALSE(Trial->Flip.Sunk());
}

TEST_F(Hands, LettingGoIsTheClick) {
  EXPECT_EQ(Play("hold TrialForm PressButton\npause 100\nlet-go TrialForm PressButton\n"), "");
  EXPECT_EQ(Trial->Clicks, 1);
  EXPECT_FALSE(Trial->Press.Sunk());
}

TEST_F(Hands, AFormThatGoesWhileItsButtonIsHeldIsNoFailure) {
  Loop.After(100, [this] { Trial->Form.Hide(); });
  EXPECT_EQ(Play("hold TrialForm PressButton\npause 200\nlet-go TrialForm PressButton\n"), "");
  EXPECT_EQ(Trial->Clicks, 0);
  EXPECT_TRUE(Finished);
}

TEST_F(Hands, ARowIsClickedWhereverItIsScrolledTo) {
  Trial->List.SetVisibleLines(2);
  EXPECT_EQ(Play("click-row TrialForm FileList 5\n"), "");
  EXPECT_EQ(Trial->List.Current(), 4);
  EXPECT_EQ(Trial->List.TopLine(), 3);
  EXPECT_EQ(Play("click-row TrialForm FileList 1\n"), "");
  EXPECT_EQ(Trial->List.Current(), 0);
}

TEST_F(Hands, ARowOfAnOpenPickList) {
  Trial->Pick.OpenList();
  EXPECT_EQ(Play("click-row TrialForm PickBox 2\n"), "");
  EXPECT_EQ(Trial->Pick.Text(), "GREEN");
}

TEST_F(Hands, APointIsInUserUnits) {
  EXPECT_EQ(Play("point TrialForm PlotBox(1) 50 25\n"), "");
  ASSERT_EQ(Trial->Downs.size(), 1U);
  ASSERT_EQ(Trial->UpsOnPlot.size(), 1U);
  const double pixel = 200.0 / Trial->Plot.width();
  EXPECT_NEAR(Trial->Downs[0].X, 50, pixel);
  EXPECT_NEAR(Trial->Downs[0].Y, 25, 100.0 / Trial->Plot.height());
  EXPECT_EQ(Trial->UpsOnPlot[0].X, Trial->Downs[0].X);
}

TEST_F(Hands, TheMachineTakesTheWordsOfItsOwnKeyboard) {
  EXPECT_EQ(Play("machine error 3\nmachine state\n"), "");
  EXPECT_EQ(Controller->Memory().Variable(simulator::Vr::IoMessage), 3);
  EXPECT_THAT(Said, HasSubstr("state: "));
  EXPECT_THAT(Play("machine strat\n"), HasSubstr("line 1: the machine has no command \"strat\""));
  WithMachine = false;
  EXPECT_THAT(Play("machine start\n"), HasSubstr("line 1: there is no simulated machine"));
}

TEST_F(Hands, TheOfficeTakesTheWordsOfItsOwnKeyboard) {
  EXPECT_EQ(Play("office codes 3,65\noffice state\n"), "");
  EXPECT_THAT(Said, HasSubstr("office: 3 bytes sent, 0 wait"));
  EXPECT_THAT(Play("office sned A.prg\n"),
              HasSubstr("line 1: the office has no command \"sned A.prg\""));
  WithMachine = false;
  EXPECT_THAT(Play("office state\n"), HasSubstr("line 1: there is no simulated office"));
}

TEST_F(Hands, WaitSentWaitsForALineToTheController) {
  Loop.After(300, [this] { Sent.Write("VR(48)=10\r"); });
  EXPECT_EQ(Play("wait-sent VR(48)=\nsay SENT\n"), "");
  EXPECT_EQ(Said, "SENT\n");
  EXPECT_THAT(Play("patience 200\nwait-sent VR(48)=\n"),
              HasSubstr("line 2: no line \"VR(48)=\" has been sent"));
}

TEST_F(Hands, WaitModeWaitsForTheModeOfThePlotKeys) {
  Loop.After(300, [this] { System.Console.PlotKeyMode = 5; });
  EXPECT_EQ(Play("wait-mode 5\nsay FIVE\n"), "");
  EXPECT_EQ(Said, "FIVE\n");
  EXPECT_THAT(Play("patience 100\n\nwait-mode 7\n"), HasSubstr("line 3: PlotKeyMode is not 7"));
}

TEST_F(Hands, AWaitThatIsInVainFailsWithItsLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"wait-form SetupForm", "SetupForm does not show"},
      {"wait-closed TrialForm", "TrialForm still shows"},
      {"wait-warning Help", "no warning with \"Help\""},
      {"wait-label TrialForm TextLabel other", "TextLabel of TrialForm does not show \"other\""},
      {"wait-running", "the machine does not run"},
  };
  for (const auto& [line, told] : cases) {
    EXPECT_THAT(Play("patience 100\n" + std::string(line) + "\n"),
                HasSubstr("keys.txt, line 2: " + std::string(told)));
  }
  EXPECT_EQ(Play("wait-label TrialForm TextLabel line\nwait-stopped\nno-warning\n"), "");
}

TEST_F(Hands, AWaitThatIsInVainTellsWhatStandsInItsWay) {
  EXPECT_THAT(Play("patience 100\nwait-form SetupForm\n"), HasSubstr("; on show: TrialForm"));
}

TEST_F(Hands, EndShutsDownAsTheOperatorDoes) {
  EXPECT_EQ(Play("end\n"), "");
  EXPECT_EQ(Ends, std::vector<int>{0});
  EXPECT_TRUE(Finished);
}

// ---- dump ----

QJsonObject Parsed(const std::string& text) {
  QJsonParseError error;
  const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError);
  return document.object();
}

QJsonObject Named(const QJsonValue& array, const QString& name) {
  for (const QJsonValue& value : array.toArray()) {
    if (value["name"].toString() == name) return value.toObject();
  }
  ADD_FAILURE() << name.toStdString() << " is not in the dump";
  return {};
}

TEST_F(Hands, ADumpHoldsEveryKindOfControl) {
  EXPECT_EQ(Play("dump " + Directory.Path() + "/dump.json\n"), "");
  const auto dump = Parsed(Directory.Get("dump.json"));
  const auto form = Named(dump["forms"], "TrialForm");
  const std::pair<const char*, const char*> kinds[] = {
      {"TrialPanel(0)", "panel"}, {"PressButton", "button"},   {"FlipButton", "two-state"},
      {"TextLabel", "label"},     {"EntryBox", "entry"},       {"FileList", "list"},
      {"PickBox", "pick"},        {"ProgressBar", "progress"}, {"SpeedSlider", "slider"},
      {"FaultFrame", "frame"},    {"QuestionImage", "image"},  {"PlotBox(1)", "canvas"},
  };
  for (const auto& [name, kind] : kinds) {
    EXPECT_EQ(Named(form["controls"], name)["kind"].toString().toStdString(), kind) << name;
  }
  for (const QJsonValue& control : form["controls"].toArray()) {
    for (const char* key : {"name", "kind", "text", "enabled", "visible", "down", "focused", "back",
                            "fore", "x", "y", "width", "height"}) {
      EXPECT_FALSE(control[key].isUndefined()) << key;
    }
    EXPECT_NE(control["name"].toString(), "") << "parts of controls are left out";
  }
}

TEST_F(Hands, ADumpTellsWhatAControlShows) {
  const auto form = Named(Parsed(tools::ConsoleDump(Stage()))["forms"], "TrialForm");
  EXPECT_EQ(form["title"], "TRIAL");
  EXPECT_EQ(form["active"], true);
  EXPECT_EQ(form["modal"], false);
  EXPECT_EQ(form["locked"], false);
  const auto controls = form["controls"];
  const auto press = Named(controls, "PressButton");
  EXPECT_EQ(press["text"], "&PRESS") << "as set, ampersand included";
  EXPECT_EQ(press["back"], "#0080C0");
  EXPECT_EQ(press["fore"], "#000000");
  EXPECT_EQ(press["x"].toInt(), form["x"].toInt() + Trial->Press.x()) << "on the desk";
  EXPECT_EQ(press["width"], 280);
  EXPECT_EQ(Named(controls, "FlipButton")["down"], true);
  EXPECT_EQ(Named(controls, "HiddenButton")["visible"], false);
  EXPECT_EQ(Named(controls, "DeadButton")["enabled"], false);
  EXPECT_EQ(Named(controls, "EntryBox")["text"], "12.5");
  EXPECT_EQ(Named(controls, "FaultFrame")["text"], "FAULTS");
  const auto list = Named(controls, "FileList");
  EXPECT_EQ(list["items"].toArray().size(), 5);
  EXPECT_EQ(list["items"][1], (QJsonObject{{"text", "TWO"}, {"marked", true}}));
  EXPECT_EQ(list["row"], 2);
  EXPECT_EQ(list["top"], 0);
  EXPECT_EQ(Named(controls, "SpeedSlider")["value"], 3);
  EXPECT_EQ(Named(controls, "ProgressBar")["value"], 40);
}

TEST_F(Hands, ADumpHasTheFrontFormFirstAndNoHiddenOne) {
  toolkit::Form second(*Desk, "SecondForm");
  toolkit::Form hidden(*Desk, "HiddenForm");
  second.Show();
  second.SetEnabled(false);
  const auto forms = Parsed(tools::ConsoleDump(Stage()))["forms"].toArray();
  ASSERT_EQ(forms.size(), 2);
  EXPECT_EQ(forms[0]["name"], "SecondForm");
  EXPECT_EQ(forms[0]["locked"], true);
  EXPECT_EQ(forms[1]["name"], "TrialForm");
}

TEST_F(ScriptTest, ADumpOfTheConsoleHasStateAndPlot) {
  Start();
  Select("STAR");
  const auto dump = Parsed(tools::ConsoleDump(Stage()));
  const auto state = dump["state"];
  EXPECT_EQ(state["activeSlot"], System.ActiveSlot.Number());
  EXPECT_EQ(state["slots"].toArray().size(), 2);
  EXPECT_EQ(state["slots"][System.ActiveSlot.Number() - 1]["directory"], "SHOP");
  EXPECT_EQ(state["slots"][System.ActiveSlot.Number() - 1]["program"], "STAR");
  EXPECT_GT(state["slots"][System.ActiveSlot.Number() - 1]["tableLines"].toInt(), 0);
  EXPECT_EQ(state["tableSent"], System.TableSent);
  EXPECT_EQ(state["plotKeysActive"], false);
  EXPECT_EQ(state["formsLocked"], false);
  EXPECT_EQ(dump["plot"]["slot"], System.ActiveSlot.Number());
  EXPECT_EQ(dump["plot"]["zoomed"], false);
  EXPECT_TRUE(dump["plot"]["cursor"].isNull());
  EXPECT_TRUE(dump["plot"]["marked"].isNull());
  const auto& view = System.Views[System.ActiveSlot];
  EXPECT_NEAR(dump["plot"]["view"][0].toDouble(), view.Corner1X, 1e-3);
  EXPECT_NEAR(dump["plot"]["view"][1].toDouble(), view.Corner1Y, 1e-3);
  EXPECT_NEAR(dump["plot"]["view"][2].toDouble(), view.Corner2X, 1e-3);
  EXPECT_NEAR(dump["plot"]["view"][3].toDouble(), view.Corner2Y, 1e-3);
  EXPECT_EQ(Named(dump["forms"], "FrontEnd")["x"], 0);
}

TEST_F(ScriptTest, ADumpTellsTheCrossAndTheRecordOfARestart) {
  Start();
  auto& canvas = Main().PlotBox(System.ActiveSlot).Canvas();
  canvas.Scale({0, 100}, {200, 0});
  canvas.SetOverlay(platform::Overlay::CrossLine1, {{40, 30}, {60, 30}, true});
  auto stage = Stage();
  stage.MarkedRecord = [] { return 12; };
  const QJsonObject plot = Parsed(tools::ConsoleDump(stage))["plot"].toObject();
  EXPECT_EQ(plot["cursor"], (QJsonArray{50, 30}));
  EXPECT_EQ(plot["marked"], 12);
  EXPECT_EQ(plot["view"], (QJsonArray{0, 100, 200, 0}));
}

TEST_F(ScriptTest, AModalScreenIsToldSo) {
  Start();
  Then([this] {
    const auto form = Named(Parsed(tools::ConsoleDump(Stage()))["forms"], "ShutdownForm");
    EXPECT_EQ(form["modal"], true);
    EXPECT_EQ(form["active"], true);
    Type(Key::C);
  });
  TypeF(12);
  RunFor(100);
}

TEST_F(ScriptTest, BeforeTheMainScreenThereIsNoPlot) {
  EXPECT_TRUE(Parsed(tools::ConsoleDump(Stage()))["plot"].isNull());
}

}  // namespace
}  // namespace torvane::tests

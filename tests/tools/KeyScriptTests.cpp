// Scripts of keys: what they understand, and the sentence for what they do not.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/RuntimeFault.h"
#include "tools/KeyScript.h"

namespace torvane::tools {
namespace {

using toolkit::Key;

std::string Fault(const std::string& text) {
  try {
    (void)ReadKeyScript(text, "keys.txt");
  } catch (const platform::RuntimeFault& fault) {
    return fault.what();
  }
  return "(none)";
}

KeyStep Step(const std::string& line) {
  const auto steps = ReadKeyScript(line, "keys.txt");
  return steps.size() == 1 ? steps[0] : KeyStep{};
}

TEST(KeyScript, NamesKeysByTheirNameOrTheirCharacter) {
  EXPECT_EQ(KeyNamed("F1"), Key::F1);
  EXPECT_EQ(KeyNamed("f12"), Key::F12);
  EXPECT_EQ(KeyNamed("F"), Key::F);
  EXPECT_EQ(KeyNamed("s"), Key::S);
  EXPECT_EQ(KeyNamed("7"), static_cast<Key>('7'));
  EXPECT_EQ(KeyNamed("enter"), Key::Enter);
  EXPECT_EQ(KeyNamed("PageDown"), Key::PageDown);
}

TEST(KeyScript, ANameThatIsNoKeyIsNone) {
  for (const char* name : {"", "F0", "F13", "F1x", "F-1", "Entre", "!", "KEY"}) {
    EXPECT_EQ(KeyNamed(name), Key::None) << name;
  }
}

TEST(KeyScript, AStrokeMayHoldAltOrControlDown) {
  const auto stroke = StrokeNamed("Alt+C");
  ASSERT_TRUE(stroke);
  EXPECT_EQ(stroke->Code, Key::C);
  EXPECT_TRUE(stroke->Alt);
  EXPECT_FALSE(stroke->Control);
  EXPECT_EQ(stroke->Character, 0) << "a command types nothing";
  EXPECT_TRUE(StrokeNamed("ctrl+c")->Control);
  EXPECT_EQ(StrokeNamed("Ctrl+PageUp")->Code, Key::PageUp);
  EXPECT_TRUE(StrokeNamed("Alt+Ctrl+F4")->Control);
  EXPECT_EQ(StrokeNamed("Shift+Tab")->Code, Key::Tab);
  EXPECT_TRUE(StrokeNamed("Shift+Tab")->Shift);
  for (const char* name : {"Alt+", "Ctrl+Entre", "Meta+C", "+C", ""}) {
    EXPECT_FALSE(StrokeNamed(name)) << name;
  }
}

TEST(KeyScript, AnyCharacterIsAKeyThatTypesIt) {
  EXPECT_EQ(StrokeNamed("-")->Character, '-');
  EXPECT_EQ(StrokeNamed("+")->Character, '+');
  EXPECT_EQ(StrokeNamed(".")->Code, Key::None);
  EXPECT_EQ(StrokeNamed("c")->Character, 'C') << "a plain stroke of a letter types its capital";
}

TEST(KeyScript, ReadsEachWordWithWhatComesAfterIt) {
  EXPECT_EQ(Step("key Enter").Stroke.Code, Key::Enter);
  EXPECT_EQ(Step("press PageUp").Word, KeyWord::Press);
  EXPECT_EQ(Step("press PageUp").Stroke.Code, Key::PageUp);
  EXPECT_EQ(Step("release a").Word, KeyWord::Release);
  EXPECT_EQ(Step("machine error 1").Text, "error 1");
  EXPECT_EQ(Step("office send A.prg").Word, KeyWord::Office);
  EXPECT_EQ(Step("office send A.prg").Text, "send A.prg");
  EXPECT_EQ(Step("wait-sent VR(48)=10").Text, "VR(48)=10");
  EXPECT_EQ(Step("wait-mode 5").Number, 5);
  EXPECT_EQ(Step("dump /tmp/a b.json").Text, "/tmp/a b.json");
  for (const auto& [line, word] :
       {std::pair{"click ProgramForm FeedButton(2)", KeyWord::Click},
        std::pair{"double-click ProgramForm FeedButton(2)", KeyWord::DoubleClick},
        std::pair{"hold ProgramForm FeedButton(2)", KeyWord::Hold},
        std::pair{"let-go ProgramForm FeedButton(2)", KeyWord::LetGo}}) {
    EXPECT_EQ(Step(line).Word, word) << line;
    EXPECT_EQ(Step(line).Form, "ProgramForm") << line;
    EXPECT_EQ(Step(line).Control, "FeedButton(2)") << line;
  }
  const auto row = Step("click-row ProgramForm FileList 12");
  EXPECT_EQ(row.Control, "FileList");
  EXPECT_EQ(row.Number, 12);
  const auto point = Step("point FrontEnd PlotBox(1) -10.5 200");
  EXPECT_EQ(point.Control, "PlotBox(1)");
  EXPECT_EQ(point.X, -10.5);
  EXPECT_EQ(point.Y, 200);
  EXPECT_EQ(Step("text STAR AND MOON").Text, "STAR AND MOON");
  EXPECT_EQ(Step("wait-form SetupForm").Form, "SetupForm");
  EXPECT_EQ(Step("wait-closed SetupForm").Word, KeyWord::WaitClosed);
  EXPECT_EQ(Step("wait-warning GetTrio Timeout").Text, "GetTrio Timeout");
  EXPECT_EQ(Step("patience 20000").Number, 20000);
  EXPECT_EQ(Step("pause 0").Number, 0);
  EXPECT_EQ(Step("picture /tmp/a b.png").Text, "/tmp/a b.png");
  EXPECT_EQ(Step("answer O").Word, KeyWord::Answer);
  EXPECT_EQ(Step("answer O").Stroke.Code, Key::O);
  EXPECT_EQ(Step("end").Word, KeyWord::End);
  const auto label = Step("wait-label SetupForm MaterialDescription Brass 1.5 mm");
  EXPECT_EQ(label.Form, "SetupForm");
  EXPECT_EQ(label.Control, "MaterialDescription");
  EXPECT_EQ(label.Text, "Brass 1.5 mm");
}

TEST(KeyScript, PassesOverEmptyLinesAndRemarksAndCountsThem) {
  const auto steps = ReadKeyScript("# the first key\r\n\r\n  key F1  \r\n", "keys.txt");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].Line, 3);
  EXPECT_EQ(steps[0].Stroke.Code, Key::F1);
}

TEST(KeyScript, NamesTheLineThatItDoesNotUnderstand) {
  EXPECT_EQ(Fault("key F1\nkey F13\n"), "keys.txt: line 2 is not understood: key F13");
  for (const char* line : {"push F1",
                           "key",
                           "press",
                           "release",
                           "press Entre",
                           "click",
                           "click Form",
                           "click A B C",
                           "double-click Form",
                           "hold Form",
                           "let-go Form",
                           "click-row Form List",
                           "click-row Form List 0",
                           "click-row Form List -1",
                           "click-row Form List x",
                           "point Form Box",
                           "point Form Box 1",
                           "point Form Box 1 2 3",
                           "point Form Box nan 1",
                           "machine",
                           "office",
                           "wait-sent",
                           "wait-mode",
                           "wait-mode x",
                           "dump",
                           "key Alt+",
                           "text",
                           "wait-form",
                           "wait-form One Two",
                           "wait-label Form Label",
                           "pause",
                           "pause -1",
                           "pause 1x",
                           "pause 600001",
                           "end now",
                           "wait-running now"}) {
    EXPECT_THAT(Fault(line), ::testing::HasSubstr("line 1 is not understood")) << line;
  }
}

}  // namespace
}  // namespace torvane::tools

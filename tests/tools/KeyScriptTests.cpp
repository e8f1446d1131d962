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

TEST(KeyScript, ReadsEachWordWithWhatStandsBehindIt) {
  EXPECT_EQ(Step("key Enter").Stroke, Key::Enter);
  EXPECT_EQ(Step("text STAR AND MOON").Text, "STAR AND MOON");
  EXPECT_EQ(Step("wait-form SetupForm").Form, "SetupForm");
  EXPECT_EQ(Step("wait-closed SetupForm").Word, KeyWord::WaitClosed);
  EXPECT_EQ(Step("wait-warning GetTrio Timeout").Text, "GetTrio Timeout");
  EXPECT_EQ(Step("patience 20000").Ms, 20000);
  EXPECT_EQ(Step("pause 0").Ms, 0);
  EXPECT_EQ(Step("picture /tmp/a b.png").Text, "/tmp/a b.png");
  EXPECT_EQ(Step("answer O").Word, KeyWord::Answer);
  EXPECT_EQ(Step("answer O").Stroke, Key::O);
  EXPECT_EQ(Step("end").Word, KeyWord::End);
  const auto label = Step("wait-label SetupForm MaterialDescription Brass 1.5 mm");
  EXPECT_EQ(label.Form, "SetupForm");
  EXPECT_EQ(label.Label, "MaterialDescription");
  EXPECT_EQ(label.Text, "Brass 1.5 mm");
}

TEST(KeyScript, PassesOverEmptyLinesAndRemarksAndCountsThem) {
  const auto steps = ReadKeyScript("# the first key\r\n\r\n  key F1  \r\n", "keys.txt");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].Line, 3);
  EXPECT_EQ(steps[0].Stroke, Key::F1);
}

TEST(KeyScript, NamesTheLineThatItDoesNotUnderstand) {
  EXPECT_EQ(Fault("key F1\nkey F13\n"), "keys.txt: line 2 is not understood: key F13");
  for (const char* line :
       {"press F1", "key", "text", "wait-form", "wait-form One Two", "wait-label Form Label",
        "pause", "pause -1", "pause 1x", "pause 600001", "end now", "wait-running now"}) {
    EXPECT_THAT(Fault(line), ::testing::HasSubstr("line 1 is not understood")) << line;
  }
}

}  // namespace
}  // namespace torvane::tools

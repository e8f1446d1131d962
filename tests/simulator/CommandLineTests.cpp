// The answers of the controller, byte by byte, and what arrives broken.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/CommandLine.h"

namespace torvane::simulator {
namespace {

class Console {
 public:
  std::string Send(std::string_view bytes) {
    std::string answers;
    Line.Receive(bytes, [&](const ReceivedLine& line) { answers += Line.Answer(line); });
    return answers;
  }
  ControllerMemory Memory;
  CommandLine Line{Memory};
};

TEST(CommandLine, AQueryIsEchoedAndItsValueStandsOnTheNextLine) {
  Console console;
  console.Memory.SetVariable(19, 16384);
  EXPECT_EQ(console.Send("? VR(19)\r"), "? VR(19)\r\n16384\r\n>>");
}

TEST(CommandLine, AStatementPrintsNothing) {
  Console console;
  EXPECT_EQ(console.Send("VR(1)=5\r"), "VR(1)=5\r\n>>");
  EXPECT_EQ(console.Memory.Variable(1), 5);
}

TEST(CommandLine, AnEmptyLineGetsOnlyThePrompt) {
  Console console;
  EXPECT_EQ(console.Send("\r"), ">>");
}

TEST(CommandLine, AFaultPutsAPercentBeforeThePrompt) {
  Console console;
  EXPECT_EQ(console.Send("HALT\r"), "HALT\r\n%\r\n>>");
  EXPECT_EQ(console.Send("? VR(2000)\r"), "? VR(2000)\r\n%\r\n>>");
  EXPECT_EQ(console.Send("?VR(1)\r"), "?VR(1)\r\n%\r\n>>");
}

TEST(CommandLine, ValuesAreShortDecimals) {
  Console console;
  const auto value = [&](double number) {
    console.Memory.SetVariable(1, number);
    std::string answer = console.Send("? VR(1)\r");
    return answer.substr(9, answer.size() - 13);
  };
  EXPECT_EQ(value(0), "0");
  EXPECT_EQ(value(12.3), "12.3");
  EXPECT_EQ(value(-20.421), "-20.421");
  EXPECT_EQ(value(1.0 / 3.0), "0.3333");
  EXPECT_EQ(value(-0.00001), "0");
  EXPECT_EQ(value(2097152 + 16384), "2113536");
}

TEST(CommandLine, ALineInPiecesIsOneLine) {
  Console console;
  EXPECT_EQ(console.Send("VR("), "");
  EXPECT_EQ(console.Send("1)=7"), "");
  EXPECT_EQ(console.Send("\r"), "VR(1)=7\r\n>>");
}

TEST(CommandLine, TwoLinesAtOnceGetTwoAnswers) {
  Console console;
  EXPECT_EQ(console.Send("VR(1)=7\r? VR(1)\r"), "VR(1)=7\r\n>>? VR(1)\r\n7\r\n>>");
}

TEST(CommandLine, LineFeedsAndOtherControlsAreDropped) {
  Console console;
  EXPECT_EQ(console.Send("\nVR(1)=7\r\n? V\x01R(1)\r\n"), "VR(1)=7\r\n>>? VR(1)\r\n7\r\n>>");
}

TEST(CommandLine, ALineTooLongIsRefusedAndNotCarriedOut) {
  Console console;
  const std::string line = "VR(1)=7" + std::string(LongestLine, ' ');
  const std::string answer = console.Send(line + "\r");
  EXPECT_EQ(answer, line.substr(0, LongestLine) + "\r\n%\r\n>>");
  EXPECT_EQ(console.Memory.Variable(1), 0);
  EXPECT_EQ(console.Send("VR(1)=7\r"), "VR(1)=7\r\n>>") << "the next line is a fresh one";
}

TEST(CommandLine, TheLongestLineIsCarriedOut) {
  Console console;
  const std::string line = "VR(1)=7" + std::string(LongestLine - 7, ' ');
  EXPECT_EQ(console.Send(line + "\r"), line + "\r\n>>");
  EXPECT_EQ(console.Memory.Variable(1), 7);
}

TEST(CommandLine, AMegabyteWithoutAnEndTakesNoRoom) {
  Console console;
  EXPECT_EQ(console.Send(std::string(1 << 20, 'x')), "");
  EXPECT_EQ(console.Send("\r").size(), LongestLine + 7);
}

TEST(CommandLine, ARefusedLineIsNotCarriedOut) {
  Console console;
  EXPECT_EQ(console.Line.Refuse({"VR(1)=5", false}), "VR(1)=5\r\n%\r\n>>");
  EXPECT_EQ(console.Memory.Variable(1), 0);
}

RC_GTEST_PROP(CommandLine, EveryLineOfAnyBytesGetsExactlyOnePrompt,
              (const std::vector<std::uint8_t>& bytes)) {
  Console console;
  const std::string text(bytes.begin(), bytes.end());
  std::size_t lines = 0;
  console.Line.Receive(text, [&](const ReceivedLine& line) {
    const std::string answer(console.Line.Answer(line));
    RC_ASSERT(answer.ends_with(">>"));
    RC_ASSERT(line.Text.empty() || answer.starts_with(std::string(line.Text) + "\r\n"));
    ++lines;
  });
  RC_ASSERT(lines == static_cast<std::size_t>(std::count(text.begin(), text.end(), '\r')));
}

RC_GTEST_PROP(CommandLine, PiecesDoNotMatter, (const std::string& text)) {
  Console whole;
  Console pieces;
  std::string answers;
  for (const char c : text) answers += pieces.Send(std::string_view(&c, 1));
  RC_ASSERT(answers == whole.Send(text));
}

}  // namespace
}  // namespace torvane::simulator

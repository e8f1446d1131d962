#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "link/ReplyReader.h"

namespace torvane::link {
namespace {

const std::string Query = "? VR(19)";

TEST(ReplyReader, TheValueStandsBehindTheEchoAndALineFeed) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n16384\r\n>>"), 16384);
}

TEST(ReplyReader, SignsDecimalsAndLeadingBlanksAreRead) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n-12.5\r\n>>"), -12.5);
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n   7\r\n>>"), 7);
}

TEST(ReplyReader, BehindTheEchoTheCutGoesByLengthsAndNotByCharacters) {
  // Anything in place of the line feed and of the end.
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r=42abc"), 42);
  // Without the line feed behind the echo the value loses its first digit.
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r16384\r\n>>"), 6384);
}

TEST(ReplyReader, AReplyThatDoesNotBeginWithItsEchoCannotBeCut) {
  EXPECT_EQ(ReadReplyValue("? VR(1)", "? VR(19)\r\n16384\r\n>>"), 0);
  EXPECT_EQ(ReadReplyValue(Query, "? VR(25)\r\n16384\r\n>>"), 0);
  EXPECT_EQ(ReadReplyValue(Query, "\n? VR(19)\r\n16384\r\n>>"), 0);
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\n\r16384\r\n>>"), 0);
}

TEST(ReplyReader, TheLastThreeCharactersFallOffWhateverTheyAre) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n123456789"), 123456);
}

TEST(ReplyReader, ABareValueWithoutALineEndLosesItsLastDigitWithThePrompt) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n16384>>"), 1638);
}

TEST(ReplyReader, AReplyTooShortGivesZero) {
  std::string reply = "? VR(19)\r\n>>";
  EXPECT_EQ(ReadReplyValue(Query, reply), 0);
  while (!reply.empty()) {
    reply.pop_back();
    EXPECT_EQ(ReadReplyValue(Query, reply), 0) << reply;
  }
}

TEST(ReplyReader, ReadingStopsAtTheFirstCharacterThatIsNoNumber) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n12x34\r\n>>"), 12);
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\nnone\r\n>>"), 0);
}

TEST(ReplyReader, ANumberBeyondEveryRangeGivesZero) {
  EXPECT_EQ(ReadReplyValue(Query, "? VR(19)\r\n1E999\r\n>>"), 0);
}

RC_GTEST_PROP(ReplyReader, AnyBytesGiveAFiniteNumber, (std::string query, std::string reply)) {
  RC_ASSERT(std::isfinite(ReadReplyValue(query, reply)));
}

RC_GTEST_PROP(ReplyReader, EveryWholeNumberComesBack, (std::int32_t value)) {
  const std::string query = "? " + *rc::gen::string<std::string>();
  const std::string reply = query + "\r\n" + std::to_string(value) + "\r\n>>";
  RC_ASSERT(ReadReplyValue(query, reply) == value);
}

}  // namespace
}  // namespace torvane::link

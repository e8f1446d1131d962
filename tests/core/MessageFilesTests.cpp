// IO.msg and Logic.msg.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/MessageFiles.h"

namespace torvane::core {
namespace {

IoMessageTable ReadIo(std::string_view text) {
  IoMessageTable table;
  table.fill("old");
  ReadIoMessages(text, table);
  return table;
}

LogicMessageTable ReadLogic(std::string_view text) {
  LogicMessageTable table;
  table.fill("old");
  ReadLogicMessages(text, table);
  return table;
}

TEST(IoMessages, TheTextIsTheRestOfTheLine) {
  const auto table = ReadIo("1, Emergency stop, pressed \r\n64,Last\r\n******\r\n");
  EXPECT_EQ(table[1], "Emergency stop, pressed");
  EXPECT_EQ(table[64], "Last");
  EXPECT_EQ(table[2], "") << "what stood before is gone";
}

TEST(IoMessages, TheCodeIsRounded) {
  EXPECT_EQ(ReadIo("2.6,Text\r\n******\r\n")[3], "Text");
  EXPECT_EQ(ReadIo("0.4,Text\r\n******\r\n")[0], "") << "rounds to none";
}

TEST(IoMessages, WithoutAMarkerTheLastLineStaysUnread) {
  EXPECT_EQ(ReadIo("4,Four\r\n5,Text")[5], "");
  EXPECT_EQ(ReadIo("4,Four\r\n5,Text\r\n")[5], "");
  EXPECT_EQ(ReadIo("4,Four\r\n5,Text\r\n")[4], "Four");
}

TEST(IoMessages, AWrongLineStopsTheFileThere) {
  for (const char* wrong :
       {"", "******", "no comma", "0,zero", "65,beyond", "-3,x", ",x", "9e99,x"}) {
    const auto table = ReadIo(std::string("1,One\r\n") + wrong + "\r\n2,Two\r\n******\r\n");
    EXPECT_EQ(table[1], "One") << wrong;
    EXPECT_EQ(table[2], "") << wrong;
  }
}

TEST(IoMessages, OnlyTheExactMarkerIsOne) {
  EXPECT_EQ(ReadIo("1,*** \r\n2,Two\r\n******\r\n")[1], "***");
  EXPECT_EQ(ReadIo("1,****** \r\n2,Two\r\n******\r\n")[2], "Two");
}

TEST(LogicMessages, TheTextEndsAtTheSecondComma) {
  const auto table = ReadLogic("0,Not referenced,ignored, too\r\n31, Last ,\r\n******\r\n");
  EXPECT_EQ(table[0], "Not referenced");
  EXPECT_EQ(table[31], "Last");
}

TEST(LogicMessages, TheBitIsCutNotRounded) {
  EXPECT_EQ(ReadLogic("2.9,Text,\r\n******\r\n")[2], "Text");
}

TEST(LogicMessages, AWrongLineStopsTheFileThere) {
  for (const char* wrong : {"", "******", "3,no second comma", "none", "32,beyond,", "-1,x,"}) {
    const auto table = ReadLogic(std::string("1,One,\r\n") + wrong + "\r\n2,Two,\r\n******\r\n");
    EXPECT_EQ(table[1], "One") << wrong;
    EXPECT_EQ(table[2], "") << wrong;
  }
}

RC_GTEST_PROP(Messages, AnyTextIsRead, (const std::string& text)) {
  ReadIo(text);
  ReadLogic(text);
}

}  // namespace
}  // namespace torvane::core

// What a script may wait for on the line to the controller.
#include <gtest/gtest.h>

#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"
#include "tools/SentLines.h"

namespace torvane::tools {
namespace {

struct SentLinesTest : ::testing::Test {
  platform::VirtualLoop Loop;
  platform::ScriptedPort Inner{Loop};
  SentLines Port{Inner};
  std::string Arrived;

  SentLinesTest() {
    Inner.SetPeer([this](std::string_view bytes) { Arrived += bytes; });
    Port.Open({});
  }
};

TEST_F(SentLinesTest, HandsOnEveryByteWhetherItListensOrNot) {
  Port.Write("VR(48)=1\r");
  Port.Listen();
  Port.Write("VR(4");
  Port.Write("9)=2\r");
  EXPECT_EQ(Arrived, "VR(48)=1\rVR(49)=2\r");
  EXPECT_TRUE(Port.IsOpen());
}

TEST_F(SentLinesTest, FindsALineByItsBeginningOnce) {
  Port.Listen();
  Port.Write("? VR(19)\r");
  Port.Write("VR(48)=");
  EXPECT_FALSE(Port.Find("VR(48)=")) << "not before the line has ended";
  Port.Write("10\r");
  EXPECT_TRUE(Port.Find("VR(48)="));
  EXPECT_FALSE(Port.Find("VR(48)="));
  EXPECT_FALSE(Port.Find("? VR(19)")) << "sent before the one that was found";
}

TEST_F(SentLinesTest, ALineAfterTheOneFoundIsNotLost) {
  Port.Listen();
  Port.Write("VR(48)=1\rVR(48)=2\r");
  EXPECT_TRUE(Port.Find("VR(48)"));
  EXPECT_TRUE(Port.Find("VR(48)=2"));
}

TEST_F(SentLinesTest, TheBeginningCountsAndNotTheMiddle) {
  Port.Listen();
  Port.Write("? VR(48)\r");
  EXPECT_FALSE(Port.Find("VR(48)"));
}

TEST_F(SentLinesTest, WithoutAListenerNothingIsKept) {
  Port.Write("VR(48)=1\r");
  Port.Listen();
  EXPECT_FALSE(Port.Find("VR(48)"));
}

}  // namespace
}  // namespace torvane::tools

// Control.cnc, Trio.cfg and Trio.cms.
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/LinkFiles.h"
#include "support/Faults.h"

namespace torvane::core {
namespace {

using Switches = std::pair<bool, bool>;

Switches ReadSwitches(std::string_view text) {
  bool link = false;
  bool log = true;
  ReadLinkSwitches(text, link, log);
  return {link, log};
}

/// Trio.cfg as the start reads it; nothing stands for no file.
LinkSettings ReadTimings(std::string_view text) {
  LinkSettings link;
  link.PollPeriodMs = 7;
  link.TableLeadLines = 3;
  ResetLinkTimings(link);
  ReadLinkTimings(text, link);
  FinishLinkTimings(link);
  return link;
}

struct Port {
  LinkSettings Link;
  bool Enabled = true;
};

Port ReadPort(std::string_view text) {
  Port port;
  port.Link.Handshaking = 9;
  port.Link.DtrKeyword = true;
  ReadPortFile(text, "Trio.cms", port.Link, port.Enabled);
  return port;
}

std::string PortText(const std::string& number, const std::string& words) {
  return "Motion controller\r\nPort : " + number +
         "\r\nBaud Rate : 9600\r\nParity : N\r\n8\r\nStop : 1\r\nHandshake : " + words + "\r\n";
}

TEST(ControlCnc, TheSwitchesOfEveryKindOfFile) {
  EXPECT_EQ(ReadSwitches(""), Switches(true, false)) << "an empty file";
  EXPECT_EQ(ReadSwitches("FALSE\r\n"), Switches(false, false)) << "link off, trace off";
  EXPECT_EQ(ReadSwitches("Link : false\r\nLog : true\r\n"), Switches(false, true));
  EXPECT_EQ(ReadSwitches("******\r\nTRUE\r\n"), Switches(true, true));
  EXPECT_EQ(ReadSwitches("NO\r\n******\r\n"), Switches(true, false));
  EXPECT_EQ(ReadSwitches("TRUE\r\nYES\r\n"), Switches(true, false)) << "only TRUE traces";
  EXPECT_EQ(ReadSwitches("FALSE IT IS"), Switches(true, false)) << "only FALSE alone";
}

TEST(TrioCfg, WithoutTheFileTheDefaultsStandAndTheFirstDelayIsThePeriod) {
  const LinkSettings link = ReadTimings("");
  EXPECT_EQ(link.PollPeriodMs, 50);
  EXPECT_EQ(link.PollResumeMs, 50);
  EXPECT_EQ(link.ReplyTimeoutMs, 10000);
  EXPECT_EQ(link.CommandDelayMs, 0);
  EXPECT_EQ(link.TableFillLines, 20);
  EXPECT_EQ(link.TableLeadLines, 15);
}

TEST(TrioCfg, TimesBeyondTheirUpperLimitBecomeThatLimit) {
  const LinkSettings link = ReadTimings("65536\n1e308\n99999999999\n0\n65536\n0\n0\n65536\n-1\n");
  EXPECT_EQ(link.PollPeriodMs, LongestPollMs);
  EXPECT_EQ(link.PollResumeMs, LongestPollMs);
  EXPECT_EQ(link.ReplyTimeoutMs, LongestReplyMs);
  EXPECT_EQ(link.CommandDelayMs, LongestCommandDelayMs);
  EXPECT_EQ(link.TableFillLines, 32767) << "a count, no time";
  EXPECT_EQ(link.TableLeadLines, 1);
  EXPECT_EQ(ReadTimings("1000\n1000\n600000\n0\n50\n").CommandDelayMs, 50) << "the limits stand";
}

TEST(TrioCfg, FillsEveryFieldInItsOrder) {
  const LinkSettings link = ReadTimings("P:60\n70\n8000\n1\n2\n3\n4\n30\n25\n");
  EXPECT_EQ(link.PollPeriodMs, 60);
  EXPECT_EQ(link.PollResumeMs, 70);
  EXPECT_EQ(link.ReplyTimeoutMs, 8000);
  EXPECT_EQ(link.TrioReserved1, 1);
  EXPECT_EQ(link.CommandDelayMs, 2);
  EXPECT_EQ(link.TrioReserved2, 3);
  EXPECT_EQ(link.TrioReserved3, 4);
  EXPECT_EQ(link.TableFillLines, 30);
  EXPECT_EQ(link.TableLeadLines, 25);
}

TEST(TrioCfg, APeriodBelowFiveIsFifty) {
  EXPECT_EQ(ReadTimings("Poll : 3").PollPeriodMs, 50);
  EXPECT_EQ(ReadTimings("Poll : 5").PollPeriodMs, 5);
  EXPECT_EQ(ReadTimings("Poll : 4.6").PollPeriodMs, 5) << "numbers round to the nearest";
  EXPECT_EQ(ReadTimings("Poll : 4.5").PollPeriodMs, 50) << "half goes to the even";
}

TEST(TrioCfg, TheFirstDelayIsNeverBelowThePeriod) {
  EXPECT_EQ(ReadTimings("200\r\n100").PollResumeMs, 200);
  EXPECT_EQ(ReadTimings("200\r\n300").PollResumeMs, 300);
  EXPECT_EQ(ReadTimings("200").PollResumeMs, 200);
}

TEST(TrioCfg, NegativeTimesAreNoneAndTablesHaveAtLeastOneLine) {
  const LinkSettings link = ReadTimings("50\n50\n-1\n-1\n-1\n-1\n-1\n0\n-5\n");
  EXPECT_EQ(link.ReplyTimeoutMs, 0);
  EXPECT_EQ(link.TrioReserved1, 0);
  EXPECT_EQ(link.CommandDelayMs, 0);
  EXPECT_EQ(link.TrioReserved3, 0);
  EXPECT_EQ(link.TableFillLines, 1);
  EXPECT_EQ(link.TableLeadLines, 1);
}

TEST(TrioCfg, NumbersBeyondTheirTypeAreHeldInIt) {
  const LinkSettings link = ReadTimings("0\n0\n0\n9e99\n0\n0\n0\n70000\n1e400\n");
  EXPECT_EQ(link.TrioReserved1, 2147483647);
  EXPECT_EQ(link.TableFillLines, 32767);
  EXPECT_EQ(link.TableLeadLines, 32767);
}

RC_GTEST_PROP(TrioCfg, AnyTextLeavesTimingsThatWork, (const std::string& text)) {
  const LinkSettings link = ReadTimings(text);
  RC_ASSERT(link.PollPeriodMs >= 5);
  RC_ASSERT(link.PollResumeMs >= link.PollPeriodMs);
  RC_ASSERT(link.ReplyTimeoutMs >= 0 && link.CommandDelayMs >= 0);
  RC_ASSERT(link.PollResumeMs <= LongestPollMs && link.CommandDelayMs <= LongestCommandDelayMs);
  RC_ASSERT(link.ReplyTimeoutMs <= LongestReplyMs);
  RC_ASSERT(link.TableFillLines >= 1 && link.TableLeadLines >= 1);
}

TEST(TrioCms, JoinsTheSettingsOfThePort) {
  const Port port = ReadPort(PortText("2", "none"));
  EXPECT_EQ(port.Link.CommPort, 2);
  EXPECT_EQ(port.Link.PortSettings, "9600,N,8,1");
  EXPECT_EQ(port.Link.Handshaking, 0);
  EXPECT_FALSE(port.Link.DtrKeyword);
  EXPECT_TRUE(port.Enabled);
}

TEST(TrioCms, ThePortNumberIsRoundedAndBelowOneTurnsTheLinkOff) {
  EXPECT_EQ(ReadPort(PortText("1.6", "")).Link.CommPort, 2);
  EXPECT_FALSE(ReadPort(PortText("0", "")).Enabled);
  EXPECT_FALSE(ReadPort(PortText("-1", "")).Enabled);
  EXPECT_FALSE(ReadPort(PortText("0.5", "")).Enabled) << "half goes to the even";
  EXPECT_FALSE(ReadPort(PortText("none", "")).Enabled);
}

TEST(TrioCms, ALinkThatIsOffStaysOff) {
  LinkSettings link;
  bool enabled = false;
  ReadPortFile(PortText("1", ""), "Trio.cms", link, enabled);
  EXPECT_FALSE(enabled);
}

TEST(TrioCms, HandshakeWordsAddUp) {
  EXPECT_EQ(ReadPort(PortText("1", "xon/xoff")).Link.Handshaking, 1);
  EXPECT_EQ(ReadPort(PortText("1", "XOFF")).Link.Handshaking, 1);
  EXPECT_EQ(ReadPort(PortText("1", "rts/cts")).Link.Handshaking, 2);
  EXPECT_EQ(ReadPort(PortText("1", "CTS and XON")).Link.Handshaking, 3);
  EXPECT_TRUE(ReadPort(PortText("1", "dtr")).Link.DtrKeyword);
  EXPECT_EQ(ReadPort(PortText("1", "dtr")).Link.Handshaking, 0);
}

TEST(TrioCms, SixLinesAreTooFew) {
  const std::string text = PortText("1", "NONE");
  EXPECT_EQ(tests::FaultOf([&] { ReadPort(text.substr(0, text.rfind("Handshake"))); }),
            "Trio.cms: ends too soon, line 7 is missing");
}

}  // namespace
}  // namespace torvane::core

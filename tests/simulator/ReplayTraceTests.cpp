// Polling.txt read back: whole sessions, and files that have been through something.
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "link/LinkTrace.h"
#include "simulator/ReplayTrace.h"

namespace torvane::simulator {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string Query(const std::string& name, const std::string& value,
                  const std::string& tag = "GetRspnsSngl") {
  const std::string line = "? " + name;
  return link::PollLogRecord(tag, line, line + "\r\n" + value + "\r\n>>", true);
}
std::string Command(const std::string& line) {
  return link::PollLogRecord("Download", line, line + "\r\n>>", true);
}
std::string Parameters() { return link::PollLogRecord("DownParameters", "Machine.prm", "", false); }
std::string Silence(const std::string& line, const std::string& heard = "") {
  return link::PollLogRecord("Download", line, heard, false);
}

ReplayTrace Read(std::string text) { return ReplayTrace({{"Polling.txt", std::move(text)}}); }

std::vector<std::string> Queries(const ReplayTrace& trace) {
  std::vector<std::string> queries;
  for (const auto& exchange : trace.Exchanges()) queries.emplace_back(exchange.Query);
  return queries;
}
std::vector<std::string> Remarks(const ReplayTrace& trace) {
  std::vector<std::string> remarks;
  for (const auto& remark : trace.Remarks()) {
    remarks.push_back(trace.PlaceText(remark.Place) + ": " + remark.What);
  }
  return remarks;
}

std::string LineFeedsOnly(std::string text) {
  std::erase(text, '\r');
  return text;
}

TEST(ReplayTrace, AnExchangeHasItsLineItsReplyItsStatusAndItsPlace) {
  const auto trace = Read(Command("VR(48)=19") + Query("VR(19)", "16384", "GetRspnsLng"));
  ASSERT_EQ(trace.Exchanges().size(), 2U);
  const auto& command = trace.Exchanges()[0];
  EXPECT_EQ(command.Tag, "Download");
  EXPECT_EQ(command.Query, "VR(48)=19");
  EXPECT_EQ(command.Bytes(), "VR(48)=19\r\n>>");
  EXPECT_TRUE(command.Good);
  EXPECT_EQ(trace.PlaceText(command.Place), "Polling.txt, line 1");
  const auto& query = trace.Exchanges()[1];
  EXPECT_EQ(query.Tag, "GetRspnsLng");
  EXPECT_EQ(query.Query, "? VR(19)");
  EXPECT_EQ(query.Bytes(), "? VR(19)\r\n16384\r\n>>");
  EXPECT_EQ(query.Place.Line, 7U) << "the reply has a line break of its own";
  EXPECT_THAT(Remarks(trace), IsEmpty());
}

TEST(ReplayTrace, FailuresKeepWhatCame) {
  const auto trace = Read(Silence("VR(1)=2") + Silence("VR(1)=3", "VR(1)=3\r\nnoi") +
                          Silence("HALT", "HALT\r\n%\r\n>>"));
  ASSERT_EQ(trace.Exchanges().size(), 3U);
  EXPECT_EQ(trace.Exchanges()[0].Bytes(), "");
  EXPECT_EQ(trace.Exchanges()[1].Bytes(), "VR(1)=3\r\nnoi");
  EXPECT_EQ(trace.Exchanges()[2].Bytes(), "HALT\r\n%\r\n>>");
  for (const auto& exchange : trace.Exchanges()) EXPECT_FALSE(exchange.Good);
  EXPECT_FALSE(trace.Exchanges()[1].Whole());
  EXPECT_TRUE(trace.Exchanges()[2].Whole());
}

TEST(ReplayTrace, LineEndsThatLostTheirCarriageReturnsGetThemBack) {
  const std::string text = Command("VR(48)=19") + Query("VR(19)", "16384");
  const auto trace = Read(LineFeedsOnly(text));
  ASSERT_EQ(trace.Exchanges().size(), 2U);
  EXPECT_EQ(trace.Exchanges()[1].Bytes(), "? VR(19)\r\n16384\r\n>>");
}

struct OddFile {
  const char* Name;
  std::string Text;
  std::vector<std::string> Queries;
  std::vector<std::string> Remarks;
};

const std::string One = Command("VR(1)=1");
const std::string Two = Query("VR(2)", "2");

const std::vector<OddFile>& OddFiles() {
  static const std::vector<OddFile> files = {
      {"empty", "", {}, {}},
      {"no trace at all", "G00 X1\nM30\n", {}, {"Polling.txt, line 1: no record begins here"}},
      {"the last line cut in its status",
       One + Two.substr(0, Two.size() - 6),
       {"VR(1)=1"},
       {"Polling.txt, line 7: a record that was cut short"}},
      {"the last empty line is not there",
       One + Two.substr(0, Two.size() - 2),
       {"VR(1)=1", "? VR(2)"},
       {}},
      {"cut within the reply",
       One + Two.substr(0, Two.find("Response") + 20),
       {"VR(1)=1"},
       {"Polling.txt, line 7: a record that was cut short"}},
      {"cut after its title",
       One + "*** GetRsp",
       {"VR(1)=1"},
       {"Polling.txt, line 7: no record begins here"}},
      {"begins in the middle of a record",
       One.substr(25) + Two,
       {"? VR(2)"},
       {"Polling.txt, line 1: no record begins here"}},
      {"a cut record in the middle, as of a console that was killed",
       One.substr(0, One.size() - 10) + Two,
       {"? VR(2)"},
       {"Polling.txt, line 1: a record that was cut short"}},
      {"a record without its response",
       "*** Download ***\r\nQuery   :     VR(9)=9\r\nhallo\r\n" + Two,
       {"? VR(2)"},
       {"Polling.txt, line 1: a record without a response"}},
      {"bytes of any kind between two records",
       One + std::string("\0\xFF\x1B%\n\n***\n", 10) + Two,
       {"VR(1)=1", "? VR(2)"},
       {"Polling.txt, line 7: no record begins here"}},
      {"more empty lines than there were",
       "\r\n\r\n" + One + "\r\n\r\n" + Two,
       {"VR(1)=1", "? VR(2)"},
       {}},
      {"the parameters' own record is no exchange",
       One + Parameters() + Two,
       {"VR(1)=1", "? VR(2)"},
       {}},
  };
  return files;
}

TEST(ReplayTrace, ReadsWhatIsThereOfAnOddFile) {
  for (const auto& file : OddFiles()) {
    const auto trace = Read(file.Text);
    EXPECT_EQ(Queries(trace), file.Queries) << file.Name;
    EXPECT_EQ(Remarks(trace), file.Remarks) << file.Name;
  }
}

TEST(ReplayTrace, AReplyMayLookLikePartOfARecord) {
  const std::string noise =
      "? VR(1)\r\nStatus  :     7\r\nStatus  :     -1 \x7F\r\n*** x ***\r\n>>";
  const auto trace = Read(link::PollLogRecord("GetRspnsInt", "? VR(1)", noise, true) + Two);
  ASSERT_EQ(trace.Exchanges().size(), 2U);
  EXPECT_EQ(trace.Exchanges()[0].Bytes(), noise);
}

TEST(ReplayTrace, ASuccessWhosePromptIsMissingHasOneAllTheSame) {
  const auto trace = Read(link::PollLogRecord("Download", "VR(1)=1", "VR(1)=1", true));
  EXPECT_EQ(trace.Exchanges().at(0).Bytes(), "VR(1)=1\r\n>>");
}

TEST(ReplayTrace, TheFileThatWasPutAsideGoesBeforeTheOther) {
  const ReplayTrace trace({{"Polling.bak", One}, {"Polling.txt", Two}});
  EXPECT_THAT(Queries(trace), ElementsAre("VR(1)=1", "? VR(2)"));
  EXPECT_EQ(trace.PlaceText(trace.Exchanges()[1].Place), "Polling.txt, line 1");
}

std::string Start() {
  return Command("VR(1)=5") + Command("VR(2)=6") + Parameters() + Query("VR(59)", "1");
}

std::vector<std::string> Sessions(const std::string& text) {
  std::vector<std::string> sessions;
  const auto trace = Read(text);
  for (const auto& session : trace.Sessions()) {
    sessions.push_back(std::to_string(session.First) + "-" + std::to_string(session.End) +
                       (session.HasStart ? "" : " without a start"));
  }
  return sessions;
}

TEST(ReplayTrace, ASessionBeginsWithItsParameters) {
  EXPECT_THAT(Sessions(""), IsEmpty());
  EXPECT_THAT(Sessions(Start() + Two), ElementsAre("0-4"));
  EXPECT_THAT(Sessions(Start() + Two + Start() + Two), ElementsAre("0-4", "4-8"));
  EXPECT_THAT(Sessions(Query("VR(59)", "1") + Two + Query("VR(59)", "1")),
              ElementsAre("0-2", "2-3"))
      << "an installation without parameters";
  EXPECT_THAT(Sessions(Parameters() + Query("VR(59)", "1") + Two), ElementsAre("0-2"));
}

TEST(ReplayTrace, ASessionThatEndedInACommandIsToldFromTheParametersOfTheNext) {
  EXPECT_THAT(Sessions(Start() + Two + Command("VR(48)=0") + Start()), ElementsAre("0-5", "5-8"));
}

TEST(ReplayTrace, TheEndOfASessionWhoseStartIsLostIsASessionWithoutAStart) {
  EXPECT_THAT(Sessions(Two + Two), ElementsAre("0-2 without a start"));
  EXPECT_THAT(Sessions(Two + Start()), ElementsAre("0-1 without a start", "1-4"));
}

TEST(ReplayTrace, WhateverWasWrittenIsReadBackAndWhateverElseDoesNoHarm) {
  EXPECT_TRUE(rc::check("records are read back", [] {
    const auto piece = rc::gen::container<std::string>(
        rc::gen::elementOf(std::string("?VR(19)=-.5 \r\n%>*:Status\x80\xFF")));
    std::string text;
    std::vector<std::string> replies;
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
      const std::string reply = "R" + *piece + "E";
      replies.push_back(reply);
      text += link::PollLogRecord("Download", "VR(1)=" + std::to_string(i), reply, false);
    }
    const ReplayTrace whole({{"a", text}});
    RC_ASSERT(whole.Remarks().empty());
    RC_ASSERT(whole.Exchanges().size() == replies.size());
    for (std::size_t i = 0; i < replies.size(); ++i) {
      RC_ASSERT(whole.Exchanges()[i].Bytes() == replies[i]);
    }
    const auto cut =
        static_cast<std::size_t>(*rc::gen::inRange(0, static_cast<int>(text.size()) + 1));
    const ReplayTrace head({{"a", text.substr(0, cut)}});
    const ReplayTrace tail({{"b", text.substr(cut)}});
    const std::size_t found = head.Exchanges().size() + tail.Exchanges().size();
    RC_ASSERT(found <= replies.size() && found + 1 >= replies.size());
    const ReplayTrace noise({{"c", *piece + text.substr(cut) + *piece}});
    RC_ASSERT(noise.Exchanges().size() <= replies.size());
  }));
}

}  // namespace
}  // namespace torvane::simulator

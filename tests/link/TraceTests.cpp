#include <gmock/gmock.h>

#include "LinkFixture.h"
#include "link/LinkTrace.h"

namespace torvane::link {

using namespace tests;
namespace {

class Tracing : public LinkTest {
 protected:
  const std::string log_ = "C:\\ROOT\\Service\\Polling.txt";
  const std::string kept_ = "C:\\ROOT\\Service\\Polling.bak";
  Tracing() { Settings.PollLogEnabled = true; }
};

TEST_F(Tracing, AQueryLeavesFiveLinesWithTheirTextsFromColumnFifteen) {
  Controller.Values["VR(19)"] = "16384";
  static_cast<void>(Link.GetRspnsLng("VR(19)"));
  EXPECT_EQ(PollLog(),
            "*** GetRspnsLng ***\r\n"
            "Query   :     ? VR(19)\r\n"
            "Response:     ? VR(19)\r\n16384\r\n>>\r\n"
            "Status  :     -1\r\n"
            "\r\n");
}

TEST_F(Tracing, EveryOperationHasItsTag) {
  Link.Download("VR(1)=1");
  static_cast<void>(Link.GetRspnsBln("A"));
  static_cast<void>(Link.GetRspnsInt("A"));
  static_cast<void>(Link.GetRspnsSngl("A"));
  for (const char* tag :
       {"*** Download ***", "*** GetRspnsBln ***", "*** GetRspnsInt ***", "*** GetRspnsSngl ***"}) {
    EXPECT_THAT(PollLog(), ::testing::HasSubstr(tag));
  }
  EXPECT_EQ(Files.Opens, 4);  // the file is opened for each record
}

TEST_F(Tracing, AFailedExchangeHasStatusZeroAndWhatCame) {
  Controller.Replies["VR(1)=1"] = "VR(1)=1\r\n%\r\n>>";
  Link.Download("VR(1)=1");
  EXPECT_EQ(PollLog(),
            "*** Download ***\r\n"
            "Query   :     VR(1)=1\r\n"
            "Response:     VR(1)=1\r\n%\r\n>>\r\n"
            "Status  :     0\r\n"
            "\r\n");
}

TEST_F(Tracing, AnEmptyReplyStillHasItsColumn) {
  Link.LogTrioExchange("DownParameters", " MACHINE.PRM ", "", false);
  EXPECT_EQ(PollLog(),
            "*** DownParameters ***\r\n"
            "Query   :     MACHINE.PRM\r\n"
            "Response:     \r\n"
            "Status  :     0\r\n"
            "\r\n");
}

TEST_F(Tracing, NothingIsWrittenWithTheTraceOff) {
  Settings.PollLogEnabled = false;
  Link.Download("VR(1)=1");
  Link.LogTrioExchange("T", "Q", "R", true);
  EXPECT_EQ(PollLog(), "(no file)");
}

TEST_F(Tracing, AtExactlyFiftyMillionBytesTheTraceStays) {
  Files.Files[log_] = "records";
  Files.PretendedSizes[log_] = 50'000'000;
  Link.RotateLog();
  EXPECT_EQ(Files.Text(log_), "records");
  EXPECT_EQ(Files.Text(kept_), "(no file)");
}

TEST_F(Tracing, OneByteMoreAndItTakesThePlaceOfTheKeptOne) {
  Files.Files[log_] = "records";
  Files.Files[kept_] = "an older generation";
  Files.PretendedSizes[log_] = 50'000'001;
  Link.RotateLog();
  EXPECT_EQ(Files.Text(log_), "(no file)");
  EXPECT_EQ(Files.Text(kept_), "records");
}

TEST_F(Tracing, TheSizeTestOfATraceThatIsNotThereIsAFault) {
  Settings.TrioLinkEnabled = false;
  EXPECT_THROW(Link.RotateLog(), platform::RuntimeFault);
}

TEST_F(Tracing, WithTheTraceOffNothingIsRotatedAndNothingMissed) {
  Settings.PollLogEnabled = false;
  EXPECT_NO_THROW(Link.RotateLog());
  Files.Files[log_] = "records";
  Files.PretendedSizes[log_] = 60'000'000;
  Link.RotateLog();
  EXPECT_EQ(Files.Text(log_), "records");
}

TEST_F(Tracing, ATraceThatCannotBeWrittenChangesNoExchangeAndGoesOffForTheSession) {
  Files.ReadOnlyPath = log_;
  Controller.Values["VR(19)"] = "16384";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 16384);
  EXPECT_FALSE(Settings.PollLogEnabled);
  EXPECT_NO_THROW(Link.Download("VR(1)=1"));
  EXPECT_TRUE(Screens.Calls.empty());
  Files.ReadOnlyPath.clear();
  Link.Download("VR(1)=1");
  EXPECT_EQ(Files.Text(log_), "(no file)");
}

}  // namespace
}  // namespace torvane::link

// Programs that come over the second port.
#include <numeric>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "TransferRig.h"
#include "core/PrefixMatcher.h"
#include "files/ReceivedProgram.h"
#include "support/Faults.h"
#include "support/MemoryFiles.h"

namespace torvane::files {

using namespace tests;
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;
using ::testing::Not;

class Receiving : public ::testing::Test, public TransferRig {
 protected:
  Receiving() { Listen(); }
};

TEST(PrefixMatcher, TheCharacterThatFailsIsNotTriedAgain) {
  core::PrefixMatcher matcher("AAB");
  std::string found;
  for (const char character : "AAABAAB"s) found += matcher.Take(character) ? '!' : character;
  EXPECT_EQ(found, "AAABAA!");
}

TEST(PrefixMatcher, NothingIsFoundWhereNothingIsWanted) {
  core::PrefixMatcher matcher("");
  EXPECT_FALSE(matcher.Take('A'));
}

TEST(ReceiverStart, OpensThePortAsControlCmsSays) {
  TransferRig rig;
  rig.System.Comms.CommsSettings = "19200,E,7,2";
  rig.System.Comms.CommsHandshake = 3;
  rig.Listen();
  EXPECT_TRUE(rig.Port.IsOpen());
  EXPECT_EQ(rig.Port.Setup().Number, 2);
  EXPECT_EQ(rig.Port.Setup().Settings, "19200,E,7,2");
  EXPECT_EQ(rig.Port.Setup().Handshaking, platform::Handshake::Both);
  EXPECT_TRUE(rig.Port.Setup().Dtr);
  EXPECT_TRUE(rig.Port.Setup().Rts);
  EXPECT_TRUE(rig.Port.Setup().DiscardNulls);
}

TEST(ReceiverStart, PortZeroIsNotUsed) {
  TransferRig rig;
  rig.System.Comms.CommsPort = 0;
  rig.Listen();
  EXPECT_EQ(rig.Port.OpenCalls(), 0);
  EXPECT_FALSE(rig.Comms.PortUsed());
  EXPECT_EQ(rig.Errors(), "(missing)");
}

TEST(ReceiverStart, ThePortOfTheControllerStaysClosedAndIsNoted) {
  TransferRig rig;
  rig.System.Comms.CommsPort = 1;
  rig.Listen();
  EXPECT_EQ(rig.Port.OpenCalls(), 0);
  EXPECT_FALSE(rig.Comms.PortUsed());
  EXPECT_THAT(rig.Errors(), HasSubstr("Control.cms names port 1, which is the controller's"));
}

TEST(ReceiverStart, APortThatDoesNotOpenIsNotedAndTheConsoleGoesOn) {
  TransferRig rig;
  rig.Port.FailOpens(-1);
  rig.Listen();
  EXPECT_THAT(rig.Errors(), HasSubstr("port 2 cannot be opened for receiving"));
}

TEST(ReceiverStart, NotesOfTheLastSessionMakeTheirMessageStandAgain) {
  for (const auto& [note, stands] : {std::pair{"A : B\r\n", true}, {"A\r\n", false}, {"", false}}) {
    TransferRig rig;
    rig.Temp.Put("Messages/Receive.hlp", note);
    rig.Listen();
    EXPECT_EQ(rig.System.Console.NewProgramsReceived, stands) << note;
  }
  TransferRig rig;
  rig.System.Console.NewProgramsReceived = true;
  rig.Listen();
  EXPECT_FALSE(rig.System.Console.NewProgramsReceived) << "without a file of notes";
}

TEST_F(Receiving, AProgramWithoutAHeaderIsCopiedByteForByte) {
  Come("G00 X1\r\n\r\n  M02 \n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00 X1\r\n\r\n  M02 \n");
  EXPECT_EQ(Note(), "New Program 1 : SHOP\r\n");
  EXPECT_TRUE(System.Console.NewProgramsReceived);
}

TEST_F(Receiving, AnExistingNewProgramOneMakesItNewProgramTwo) {
  Temp.Put("Programs/SHOP/new program 1.prg", "old");
  Come("G00\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 2"), "G00\r\n");
  EXPECT_EQ(Program("SHOP/new program 1"), "old");
}

TEST_F(Receiving, AHeaderNamesDirectoryAndProgram) {
  Come("\x18NEST\r\n\x19PLATE 7\r\nG00 X1\r\n%");
  EXPECT_EQ(Program("NEST/PLATE 7"), "G00 X1\r\n") << "the header itself is not stored";
  EXPECT_EQ(Note(), "PLATE 7 : NEST\r\n");
}

TEST_F(Receiving, WithAHeaderLinesAreTrimmedAndEmptyOnesLeftOut) {
  Come("\x18 SHOP \r\n\x19 A \r\n  G00 X1  \r\n\r\n \t\r\nG01\nM02%");
  EXPECT_EQ(Program("SHOP/A"), "G00 X1\r\nG01\r\nM02\r\n");
}

TEST_F(Receiving, ANameLineAloneIsAHeaderTooWhenItStandsSecond) {
  Come(
      "G00 first\r\n\x19"
      "B\r\n\r\nM02\r\n%");
  EXPECT_EQ(Program("SHOP/B"), "G00 first\r\nM02\r\n");
  Come(
      "\x19"
      "C\r\nG00\r\n\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"),
            "%\x19"
            "C\r\nG00\r\n\r\n")
      << "in the first line it is no header";
}

TEST_F(Receiving, ADirectoryLineAloneIsAHeaderToo) {
  Come(
      "\x18"
      "NEST\r\nG00\r\n\r\n%");
  EXPECT_EQ(Program("NEST/New Program 1"), "G00\r\n");
}

TEST_F(Receiving, WhatStandsBeforeAMarkInItsLineIsPassedOver) {
  Come("%"s);
  Come(
      "junk\x18NEST\r\njunk\x19"
      "D\r\nG00\r\n%");
  EXPECT_EQ(Program("NEST/D"), "G00\r\n");
}

TEST_F(Receiving, AnExistingProgramIsOverwrittenUnaskedAndItsCompanionsStay) {
  Temp.Put("Programs/SHOP/A.prg", "old");
  Temp.Put("Programs/SHOP/A.stg", "settings");
  Temp.Put("Programs/SHOP/A.inf", "information");
  Come(
      "\x18SHOP\r\n\x19"
      "A\r\nG00\r\n%");
  EXPECT_EQ(Program("SHOP/A"), "G00\r\n");
  EXPECT_EQ(Temp.Get("Programs/SHOP/A.stg"), "settings");
  EXPECT_EQ(Temp.Get("Programs/SHOP/A.inf"), "information");
}

TEST_F(Receiving, TwoProgramsInOneChunkAreTwoFiles) {
  Come("G00\r\n%G01\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r\n");
  EXPECT_EQ(Program("SHOP/New Program 2"), "%G01\r\n") << "the postamble's last begins the next";
  EXPECT_EQ(Note(), "New Program 1 : SHOP\r\nNew Program 2 : SHOP\r\n");
}

TEST_F(Receiving, ThePostambleStaysInTheTextAndItsLastCharacterGoesToTheNext) {
  System.Comms.CommsPostamble = "END";
  Comms.SetUpReceiver();
  Come("G00\r\nEND");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r\nEN");
  EXPECT_EQ(Temp.Get("Receive.tmp"), "D");
  Come("G01\r\nEND");
  EXPECT_EQ(Program("SHOP/New Program 2"), "DG01\r\nEN");
}

TEST_F(Receiving, FilteredCharactersAreNeverStoredButMatched) {
  System.Comms.CommsPostamble = "\x04";
  System.Comms.CommsReceiveFilter = core::ReadCodeList("0,4,10");
  Comms.SetUpReceiver();
  Come("G00\r\n\x04G01\r\n\x04");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r");
  EXPECT_EQ(Program("SHOP/New Program 2"), "G01\r");
}

TEST_F(Receiving, TheReceiveMarkHasNoEffect) {
  System.Comms.CommsReceiveMark = "G0";
  Comms.SetUpReceiver();
  Come("G00 G0 G0\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00 G0 G0\r\n");
}

TEST_F(Receiving, LessThanTwoCharactersAreNoProgram) {
  System.Comms.CommsReceiveFilter = core::ReadCodeList("37");
  Come("A%");
  EXPECT_TRUE(Programs().empty());
  EXPECT_FALSE(System.Console.NewProgramsReceived);
  Come("%AB%");
  EXPECT_EQ(Programs().size(), 1U);
}

TEST_F(Receiving, WithoutAPostambleTheStreamGrowsUntilTheSendingScreenOpens) {
  System.Comms.CommsPostamble.clear();
  Comms.SetUpReceiver();
  Come("G00\r\n%");
  Come("G01\r\n%");
  EXPECT_TRUE(Programs().empty());
  EXPECT_TRUE(System.Transfer.ReceiveOpen);
  EXPECT_EQ(Temp.Get("Receive.tmp"), "G00\r\n%G01\r\n%");
  Comms.BeginSending();
  EXPECT_FALSE(System.Transfer.ReceiveOpen);
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_EQ(Temp.Get("Receive.tmp"), "") << "emptied at once";
  Comms.EndSending();
  EXPECT_TRUE(Port.IsOpen());
  Come("X");
  EXPECT_EQ(Temp.Get("Receive.tmp"), "X");
}

TEST_F(Receiving, TheSendingScreenAlsoForgetsHalfAPostamble) {
  System.Comms.CommsPostamble = "END";
  Comms.SetUpReceiver();
  Come("G00\r\nEN");
  Comms.BeginSending();
  Comms.EndSending();
  Come("D more");
  EXPECT_TRUE(Programs().empty());
}

TEST_F(Receiving, NothingIsTakenWhileTheSendingScreenStands) {
  Comms.BeginSending();
  Come("G00\r\n%");
  EXPECT_TRUE(Programs().empty());
}

TEST_F(Receiving, ACurrentDirectoryThatHasGoneIsMadeAgain) {
  System.Directories.ProgramDirectoryName = "GONE";
  Come("G00\r\n%");
  EXPECT_EQ(Program("GONE/New Program 1"), "G00\r\n");
}

TEST_F(Receiving, TheCurrentDirectoryMayBeADrive) {
  Temp.MakeDirectory("Disc");
  Disk.SetDrive('E', Temp.Path() + "/Disc");
  System.Directories.ProgramDirectoryName = "E:";
  Come("G00\r\n%");
  EXPECT_EQ(Temp.Get("Disc/New Program 1.prg"), "G00\r\n");
  EXPECT_EQ(Note(), "New Program 1 : E:\r\n");
}

TEST(ReceivedNames, OnlyNamesThatStayInTheProgramsRoot) {
  for (const char* name : {"A", "New Program 1", "abc-_()+=#$%&!",
                           "0123456789012345678901234567890"
                           "1"}) {
    EXPECT_TRUE(IsTransferName(name)) << name;
  }
  for (const char* name :
       {"", " ", ".", "..", "A.B", "..\\X", "../X", "C:", "A:B", "A*", "A?", "A\tB", "A\x7f",
        "A\"B", "A<B", "A|B", "012345678901234567890123456789012"}) {
    EXPECT_FALSE(IsTransferName(name)) << name;
  }
  EXPECT_FALSE(IsTransferName("A\0B"s));
}

TEST_F(Receiving, NamesThatLeadElsewhereCountAsNone) {
  Temp.MakeDirectory("Programs/NEST");
  for (const char* name : {"..\\..\\Data", "../x", "C:\\x", ".", "..", "A.B", "\\", "COM:"}) {
    Come("\x18"s + name + "\r\n\x19" + name + "\r\nG00\r\n%");
    EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r\n") << name;
    std::filesystem::remove(Temp.Path() + "/Programs/SHOP/New Program 1.prg");
  }
  EXPECT_EQ(Disk.ListDirectories("Programs"), (std::vector<std::string>{"NEST", "SHOP"}));
  EXPECT_EQ(Disk.ListFiles("*.*"), (std::vector<std::string>{"Receive.tmp"}));
}

TEST_F(Receiving, AnAcknowledgedNoteBeginsAnew) {
  Come("G00\r\n%");
  System.Console.NewProgramsReceived = false;  // the file of notes could not be deleted
  Come("G01\r\n%");
  EXPECT_EQ(Note(), "New Program 2 : SHOP\r\n");
}

TEST_F(Receiving, AFullDiskInMidProgramKeepsWhatCameAndTakesTheNext) {
  int left = 2;
  Files.Refuse = [&](std::string_view path) { return path == ".\\Receive.tmp" && left-- <= 0; };
  Come("G00 first\r\n");
  Come("G01 does not fit\r\n");
  Files.Refuse = {};
  EXPECT_THAT(Errors(), HasSubstr(".\\Receive.tmp: the disk is full"));
  EXPECT_EQ(Temp.Get("Receive1.bad"), "G00 first\r\n");
  EXPECT_FALSE(System.Transfer.ReceiveOpen);
  Come("the rest of it\r\n%");
  EXPECT_TRUE(Programs().empty()) << "half a program is none";
  Come("G02 next\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "%G02 next\r\n");
}

TEST_F(Receiving, ATargetThatCannotBeWrittenIsKeptAsideUnderANameOfItsOwn) {
  Files.Refuse = [](std::string_view path) { return path.ends_with(".prg"); };
  Come("G00\r\n%");
  Come("G01\r\n%");
  EXPECT_EQ(Temp.Get("Receive1.bad"), "G00\r\n");
  EXPECT_EQ(Temp.Get("Receive2.bad"), "%G01\r\n");
  EXPECT_FALSE(System.Console.NewProgramsReceived);
  Files.Refuse = {};
  Come("G02\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "%G02\r\n");
}

TEST_F(Receiving, AnOldProgramIsWholeAfterAFaultOfTheNewOne) {
  Temp.Put("Programs/SHOP/A.prg", "old");
  Files.Refuse = [](std::string_view path) { return path.ends_with("A.prg"); };
  Come(
      "\x18SHOP\r\n\x19"
      "A\r\nG00\r\n%");
  EXPECT_EQ(Program("SHOP/A"), "old");
}

TEST_F(Receiving, ADriveThatHasGoneIsAFaultLikeAnother) {
  System.Directories.ProgramDirectoryName = "E:";
  Come("G00\r\n%");
  EXPECT_EQ(Temp.Get("Receive1.bad"), "G00\r\n");
  EXPECT_THAT(Errors(), HasSubstr("there is no such drive"));
}

TEST_F(Receiving, NotesThatCannotBeWrittenLoseNoProgram) {
  Files.Refuse = [](std::string_view path) { return path.ends_with("Receive.hlp"); };
  Come("G00\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r\n");
  EXPECT_TRUE(System.Console.NewProgramsReceived);
  EXPECT_FALSE(Temp.Has("Receive1.bad"));
}

TEST_F(Receiving, NothingCanBeWrittenAtAllAndTheConsoleLives) {
  Files.Refuse = [](std::string_view) { return true; };
  Come("G00\r\n%G01\r\n%");
  Files.Refuse = {};
  EXPECT_TRUE(Programs().empty());
  EXPECT_EQ(Errors(), "(missing)");
  Come("G02 began while the disk was full\r\n%G03\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "%G03\r\n");
}

TEST_F(Receiving, ShutdownDeletesReceiveTmpAndLeavesTheNotes) {
  Come("G00\r\n%G01 half");
  Comms.Close();
  EXPECT_FALSE(Temp.Has("Receive.tmp"));
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_FALSE(System.Transfer.ReceiveOpen);
  EXPECT_EQ(Note(), "New Program 1 : SHOP\r\n");
  Comms.EndSending();
  EXPECT_FALSE(Port.IsOpen()) << "nothing opens after the end";
}

TEST_F(Receiving, TheLampFollowsTheCharacters) {
  std::vector<std::uint64_t> shown;
  Comms.Reception().OnProgress([&] { shown.push_back(Comms.Reception().CharactersReceived()); });
  Come("G00");
  Come(" X1\r\n");
  System.Comms.CommsReceiveFilter = core::ReadCodeList("37");
  Come("%");
  EXPECT_EQ(shown, (std::vector<std::uint64_t>{3, 8, 0}));
}

/// What a stream leaves behind, whatever the chunks it comes in.
using Outcome = std::map<std::string, std::string, std::less<>>;

Outcome OutcomeOf(const core::TransferSettings& settings, std::string_view stream,
                  const std::vector<std::size_t>& chunks) {
  core::System system;
  tests::MemoryFiles files;
  system.Comms = settings;
  system.Directories.ProgramRoot = "P\\";
  system.Directories.ProgramDirectoryName = "SHOP";
  Receiver receiver(system, files);
  receiver.SetUp();
  for (const std::size_t size : chunks) {
    receiver.ReceiveChars(stream.substr(0, size));
    stream.remove_prefix(size);
  }
  receiver.ReceiveChars(stream);
  files.Files.erase("Service\\LastFile.txt");
  return files.Files;
}

/// Streams that are rich in what the receiver looks for.
std::string DrawStream() {
  const auto piece = rc::gen::element("%"s, "END"s, "E"s, "EN"s, "\r\n"s, "\n"s, "G00 X1"s, "  "s,
                                      "\x18SHOP\r\n"s, "\x18NEST"s,
                                      "\x19"
                                      "A\r\n"s,
                                      "\x19"s, "\x18..\\X\r\n"s, "\0"s, "\xe4"s);
  const auto pieces = *rc::gen::container<std::vector<std::string>>(piece);
  return std::accumulate(pieces.begin(), pieces.end(), std::string());
}

RC_GTEST_PROP(ReceivedStreams, AnyChunkingGivesTheSameFiles, ()) {
  core::TransferSettings settings;
  settings.CommsPort = 2;
  settings.CommsPostamble = *rc::gen::element("%"s, "END"s, "\r\n"s, "%%"s, ""s);
  settings.CommsReceiveFilter = core::ReadCodeList(*rc::gen::element(""s, "37"s, "0,10"s, "68"s));
  const std::string stream = DrawStream();
  const auto chunks =
      *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, 7));
  std::size_t total = 0;
  std::vector<std::size_t> used;
  for (const std::size_t size : chunks) {
    if ((total += size) > stream.size()) break;
    used.push_back(size);
  }
  const std::vector<std::size_t> single(stream.size(), 1);
  const Outcome whole = OutcomeOf(settings, stream, {});
  RC_ASSERT((OutcomeOf(settings, stream, used) == whole));
  RC_ASSERT((OutcomeOf(settings, stream, single) == whole));
}

}  // namespace
}  // namespace torvane::files

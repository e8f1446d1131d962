// Delete, rename, copy as, move to, copy to: what is asked, told, left and gone.
#include "Workshop.h"
#include "files/ProgramActions.h"
#include "platform/RuntimeFault.h"
#include "support/RecordingFiles.h"

namespace torvane::files {

using namespace tests;
namespace {

using enum ProgramAction;

class Actions : public ::testing::Test, public Workshop {
 protected:
  Ending Do(ProgramAction action, const Names& programs, const std::string& newName = {}) {
    return ProgramActions(Parts).CarryOut({action, "SHOP", programs, newName, std::nullopt});
  }
  Ending DoTo(ProgramAction action, const Names& programs, const std::string& destination) {
    return ProgramActions(Parts).CarryOut({action, "SHOP", programs, {}, destination});
  }
  void PutShop(const std::string& name, const std::vector<std::string>& extensions = {"prg"}) {
    PutFamily("Programs/SHOP", name, extensions);
  }
  [[nodiscard]] Names Shop() const { return FilesIn("Programs\\SHOP"); }
  [[nodiscard]] Names Nest() const { return FilesIn("Programs\\NEST"); }
};

const std::vector<std::string> Whole = {"prg", "inf", "rpt", "stg", "lsr", "xyz"};

// ---- delete ----

TEST_F(Actions, DeletingTakesFourExtensionsAndLeavesTheLaserSettings) {
  PutShop("A", Whole);
  PutShop("A.B");
  EXPECT_EQ(Do(Delete, {"A"}), Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"A.B.prg", "A.lsr", "A.xyz"}));
  EXPECT_EQ(Dialogs.Shown(), (Shown{"ask \n\nDelete \"A\" !", "tell \n\n1 Program Deleted !"}));
}

TEST_F(Actions, DeletingSeveralCountsTheSelection) {
  for (const char* name : {"A", "B", "C"}) PutShop(name);
  EXPECT_EQ(Do(Delete, {"A", "C"}), Ending::Closes);
  EXPECT_EQ(Shop(), Names{"B.prg"});
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \n\nDelete 2 Programs !", "tell \n\n2 Programs Deleted !"}));
  EXPECT_EQ(Breaths, 2) << "the console lives between two programs";
}

TEST_F(Actions, AnAnswerOfNoLeavesEverythingAndClosesTheScreen) {
  PutShop("A", Whole);
  const Names before = Shop();
  Dialogs.Answers = {false, false, false, false, false};
  EXPECT_EQ(Do(Delete, {"A"}), Ending::Closes);
  EXPECT_EQ(Do(Rename, {"A"}, "B"), Ending::Closes);
  EXPECT_EQ(Do(CopyAs, {"A"}, "B"), Ending::Closes);
  EXPECT_EQ(DoTo(MoveTo, {"A"}, "NEST"), Ending::Closes);
  EXPECT_EQ(DoTo(CopyTo, {"A"}, "NEST"), Ending::Closes);
  EXPECT_EQ(Shop(), before);
  EXPECT_EQ(Nest(), Names{});
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \n\nDelete \"A\" !", "ask \nRename \"A\"\nAs \"B\" ?",
                   "ask \nCopy \"A\"\nAs \"B\" ?", "ask \nMove \"A\"\nTo \"NEST\" !",
                   "ask \nCopy \"A\"\nTo \"NEST\" !"}));
}

TEST_F(Actions, NothingSelectedIsRefusedByAllFiveAndTheScreenStays) {
  for (const ProgramActionRow& row : ProgramActionRows) {
    EXPECT_EQ(DoTo(row.Action, {}, "NEST"), Ending::StaysOpen);
    EXPECT_EQ(Dialogs.Shown(), Shown{"tell \n\nNo Programs Selected !"});
  }
}

TEST_F(Actions, OkFirstDeletesTheTempFilesOfTheRoot) {
  for (const char* name : {"Temp.prg", "TEMP.stg", "temp.x", "Temporary.prg", "Temp.a.b"})
    Temp.Put(name, "x");
  static_cast<void>(Do(Delete, {}));
  EXPECT_EQ(Disk.ListFiles("C:\\Temp*.*"), (Names{"Temp.a.b", "Temporary.prg"}));
}

// ---- rename ----

TEST_F(Actions, ARenameKeepsSourceAndStageAndNothingElse) {
  PutShop("OLD", Whole);
  PutShop("OLD.B");
  EXPECT_EQ(Do(Rename, {"OLD"}, " NEW "), Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"NEW.prg", "NEW.stg", "OLD.B.prg"}));
  EXPECT_EQ(Temp.Get("Programs/SHOP/NEW.prg"), "Programs/SHOP OLD.prg");
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \nRename \"OLD\"\nAs \"NEW\" ?", "tell \n\n1 Program Renamed !"}));
}

TEST_F(Actions, ARenameOverAnExistingProgramTakesItsWholeStemAway) {
  PutShop("OLD");
  PutShop("NEW", Whole);
  PutShop("NEW.B");
  EXPECT_EQ(Do(Rename, {"OLD"}, "new"), Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"NEW.B.prg", "new.prg"})) << "without the old target's companions";
  EXPECT_EQ(Temp.Get("Programs/SHOP/new.prg"), "Programs/SHOP OLD.prg");
  EXPECT_EQ(Dialogs.Shown(), (Shown{"ask \nRename \"OLD\"\nAs \"new\" ?",
                                    "ask \"new\"\nAlready Exists !\n\nOverwrite It ?",
                                    "tell \n\n1 Program Renamed !"}))
      << "the question of the action comes before that of the overwriting";
}

TEST_F(Actions, ANoToTheOverwritingLeavesBothAndCloses) {
  PutShop("OLD", Whole);
  PutShop("NEW", Whole);
  const Names before = Shop();
  for (const ProgramAction action : {Rename, CopyAs}) {
    Dialogs.Answers = {true, false};
    EXPECT_EQ(Do(action, {"OLD"}, "NEW"), Ending::Closes);
    EXPECT_EQ(Shop(), before);
    EXPECT_EQ(Dialogs.Shown().size(), 2U) << "no report";
  }
}

TEST_F(Actions, CompanionsOfATargetWithoutASourceGoUnasked) {
  PutShop("OLD");
  PutShop("NEW", {"lsr", "inf"});
  EXPECT_EQ(Do(Rename, {"OLD"}, "NEW"), Ending::Closes);
  EXPECT_EQ(Shop(), Names{"NEW.prg"});
  EXPECT_EQ(Dialogs.Shown().size(), 2U);
}

TEST_F(Actions, ARenameThatChangesOnlyCaseKeepsTheStageAndGoesThroughTheTempFiles) {
  std::vector<std::string> events;
  tests::RecordingFiles recorded(Disk, events);
  PutShop("ABC", Whole);
  const FileParts parts{System, recorded, Drives, Dialogs, {}};
  EXPECT_EQ(ProgramActions(parts).CarryOut({Rename, "SHOP", {"ABC"}, "abc", std::nullopt}),
            Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"abc.prg", "abc.stg"}));
  EXPECT_EQ(Temp.Get("Programs/SHOP/abc.stg"), "Programs/SHOP ABC.stg");
  EXPECT_TRUE(Disk.ListFiles("C:\\Temp.*").empty());
  const auto happened = [&](const std::string& event) {
    return std::find(events.begin(), events.end(), event) != events.end();
  };
  EXPECT_TRUE(happened("copy C:\\Programs\\SHOP\\ABC.prg C:\\Temp.prg"));
  EXPECT_TRUE(happened("copy C:\\Programs\\SHOP\\ABC.stg C:\\Temp.stg"));
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \nRename \"ABC\"\nAs \"abc\" ?", "tell \n\n1 Program Renamed !"}))
      << "the same name is no overwriting";
}

TEST_F(Actions, RenamingToTheIdenticalNameIsHarmless) {
  PutShop("ABC", Whole);
  EXPECT_EQ(Do(Rename, {"ABC"}, "ABC"), Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"ABC.prg", "ABC.stg"}));
  EXPECT_EQ(Temp.Get("Programs/SHOP/ABC.prg"), "Programs/SHOP ABC.prg");
}

TEST_F(Actions, LettersWithAccentsHaveCaseLikeAnyOther) {
  PutShop(
      "PI\xC3\x88"
      "CE",
      {"prg", "stg"});  // as the disk writes it
  EXPECT_EQ(Do(Rename,
               {"PI\xC8"
                "CE"},
               "pi\xE8"
               "ce"),
            Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"pi\xE8"
                           "ce.prg",
                           "pi\xE8"
                           "ce.stg"}));
}

// ---- names ----

TEST_F(Actions, NamesOfThirtyTwoCharactersPassAndOfThirtyThreeDoNot) {
  PutShop("A");
  const std::string longest(32, 'N');
  for (const ProgramAction action : {Rename, CopyAs}) {
    for (const std::string& name : {std::string(), std::string("  "), longest + "N"}) {
      EXPECT_EQ(Do(action, {"A"}, name), Ending::StaysOpen);
      EXPECT_EQ(Dialogs.Shown(), Shown{"tell \n\nInvalid Program Name !"});
    }
  }
  EXPECT_EQ(Do(CopyAs, {"A"}, longest), Ending::Closes);
  EXPECT_EQ(Shop(), (Names{"A.prg", longest + ".prg"}));
}

TEST_F(Actions, ANameThatLeadsElsewhereIsInvalid) {
  PutShop("A");
  for (const char* name : {"..", "X\\Y", "..\\NEST\\A", "C:A", "A*", "A\n", "."}) {
    EXPECT_EQ(Do(CopyAs, {"A"}, name), Ending::StaysOpen) << name;
    EXPECT_EQ(Dialogs.Shown(), Shown{"tell \n\nInvalid Program Name !"});
  }
  EXPECT_EQ(Nest(), Names{});
  EXPECT_EQ(Shop(), Names{"A.prg"});
}

// ---- copy as ----

TEST_F(Actions, ACopyTakesSourceAndStageAndNeverTheLaserSettings) {
  PutShop("OLD", Whole);
  PutShop("NEW", {"lsr"});
  EXPECT_EQ(Do(CopyAs, {"OLD"}, "NEW"), Ending::Closes);
  Names expected = {"NEW.prg", "NEW.stg"};
  for (const char* name : {"OLD.inf", "OLD.lsr", "OLD.prg", "OLD.rpt", "OLD.stg", "OLD.xyz"})
    expected.emplace_back(name);
  EXPECT_EQ(Shop(), expected);
  EXPECT_EQ(LastFile(), "C:\\Programs\\SHOP\\OLD.stg") << "each copy is noted";
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \nCopy \"OLD\"\nAs \"NEW\" ?", "tell \n\n1 Program Copied !"}));
}

TEST_F(Actions, ACopyUnderTheSameNameIgnoringCaseIsRefused) {
  PutShop("OLD");
  for (const char* name : {"OLD", "old", " Old "}) {
    EXPECT_EQ(Do(CopyAs, {"OLD"}, name), Ending::StaysOpen);
    EXPECT_EQ(Dialogs.Shown(), Shown{"tell \n\nInvalid Program Name !"});
  }
}

// ---- move to and copy to ----

TEST_F(Actions, AMoveTakesSourceAndStageAndDestroysTheRest) {
  PutShop("A", Whole);
  EXPECT_EQ(DoTo(MoveTo, {"A"}, "NEST"), Ending::Closes);
  EXPECT_EQ(Shop(), Names{});
  EXPECT_EQ(Nest(), (Names{"A.prg", "A.stg"}));
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \nMove \"A\"\nTo \"NEST\" !", "tell \n\n1 Program Moved !"}));
}

TEST_F(Actions, TheFiveTestsOfAMoveComeInTheirOrder) {
  PutShop("A");
  Drives.Present = {"E:"};
  const auto told = [this](const Names& programs, const std::optional<std::string>& to) {
    EXPECT_EQ(ProgramActions(Parts).CarryOut({MoveTo, "SHOP", programs, {}, to}),
              Ending::StaysOpen);
    return Dialogs.Shown();
  };
  EXPECT_EQ(told({}, std::nullopt), Shown{"tell \n\nNo Programs Selected !"});
  EXPECT_EQ(told({"A"}, std::nullopt), Shown{"tell \n\nNo Destination Selected !"});
  EXPECT_EQ(told({"A"}, "SHOP"),
            Shown{"tell \n\nOriginal & Destination Directories Are The Same !"});
  EXPECT_EQ(told({"A"}, "E: [Removable Drive]"),
            (Shown{"ask \nMove \"A\"\nTo \"E: [Removable Drive]\" !", "tell \n\nDisc Not Ready !"}))
      << "the question comes before the test of the drive, with the text of the list";
  EXPECT_EQ(Shop(), Names{"A.prg"});
}

TEST_F(Actions, ADiscThatIsPutInWhileTheMessageStandsIsUsed) {
  PutShop("A");
  InsertDisc();
  Drives.ReadyAt["E:"] = 2;
  EXPECT_EQ(DoTo(CopyTo, {"A"}, "E: [Removable Drive]"), Ending::Closes);
  EXPECT_EQ(Disk.ListFiles("E:\\*.*"), Names{"A.prg"});
  EXPECT_EQ(Drives.Tests["E:"], 2);
  EXPECT_EQ(Dialogs.Shown().back(), "tell \n\n1 Program Copied !");
}

TEST_F(Actions, ANoForOneOfThreeSkipsItAlone) {
  for (const char* name : {"A", "B", "C"}) PutShop(name);
  PutFamily("Programs/NEST", "B", Whole);
  Dialogs.Answers = {true, false};
  EXPECT_EQ(DoTo(MoveTo, {"A", "B", "C"}, "NEST"), Ending::Closes);
  EXPECT_EQ(Shop(), Names{"B.prg"});
  EXPECT_EQ(Temp.Get("Programs/NEST/B.prg"), "Programs/NEST B.prg");
  EXPECT_EQ(Dialogs.Shown(), (Shown{"ask \nMove 3 Programs\nTo \"NEST\" !",
                                    "ask \"B\"\nAlready Exists !\n\nOverwrite It ?",
                                    "tell \n\n2 Programs Moved !"}));
}

TEST_F(Actions, ANoForEachReportsThatNoneWasMovedOrCopied) {
  PutShop("A");
  PutFamily("Programs/NEST", "a", {"prg"});
  for (const ProgramAction action : {MoveTo, CopyTo}) {
    Dialogs.Answers = {true, false};
    EXPECT_EQ(DoTo(action, {"A"}, "NEST"), Ending::Closes);
    EXPECT_EQ(Dialogs.Shown().back(),
              action == MoveTo ? "tell \n\nNo Programs Moved !" : "tell \n\nNo Programs Copied !");
  }
}

TEST_F(Actions, SeveralCopiesAreCounted) {
  PutShop("A", Whole);
  PutShop("B");
  EXPECT_EQ(DoTo(CopyTo, {"A", "B"}, "NEST"), Ending::Closes);
  EXPECT_EQ(Nest(), (Names{"A.prg", "A.stg", "B.prg"}));
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \nCopy 2 Programs\nTo \"NEST\" !", "tell \n\n2 Programs Copied !"}));
}

TEST_F(Actions, TheSourceOfTheSelectedProgramIsNotProtected) {
  PutShop("A");
  System.Programs[1].Selected = true;
  System.Programs[1].ProgramName = "A";
  System.Programs[1].DirectoryName = "SHOP";
  System.State.MachineRunning = true;
  EXPECT_EQ(Do(Delete, {"A"}), Ending::Closes);
  EXPECT_EQ(Shop(), Names{});
}

TEST_F(Actions, ADriveThatIsTheSourceUnderAnotherNameIsRefused) {
  PutShop("A", Whole);
  const Names before = Shop();
  Disk.SetDrive('E', Temp.Path() + "/Programs/SHOP");
  Drives.ReadyAt["E:"] = 1;
  Dialogs.Answers = {true, true};
  EXPECT_EQ(DoTo(MoveTo, {"A"}, "E: [Removable Drive]"), Ending::StaysOpen);
  EXPECT_EQ(Dialogs.Shown().back(), "tell \n\nOriginal & Destination Directories Are The Same !");
  EXPECT_EQ(Shop(), before);
}

TEST_F(Actions, TwoProgramsThatDifferInCaseAloneAreTwoPrograms) {
  PutShop("PART", Whole);
  PutShop("part");
  EXPECT_EQ(DoTo(MoveTo, {"PART"}, "NEST"), Ending::Closes);
  EXPECT_EQ(Shop(), Names{"part.prg"});
  EXPECT_EQ(Nest(), (Names{"PART.prg", "PART.stg"}));
}

// ---- faults of the disk ----

TEST_F(Actions, AFaultEndsTheProgramWhileTheMachineStandsIdle) {
  EXPECT_THROW(static_cast<void>(Do(CopyAs, {"GONE"}, "NEW")), platform::RuntimeFault);
  EXPECT_EQ(Dialogs.Busy, 0);
}

TEST_F(Actions, AFaultIsAWarningWhileTheMachineIsInACycle) {
  bool core::MachineState::*const Bits[] = {&core::MachineState::MachineRunning,
                                            &core::MachineState::MachineCycleBit,
                                            &core::MachineState::MachineFeedhold};
  for (const auto bit : Bits) {
    System.State = {};
    System.State.*bit = true;
    EXPECT_EQ(DoTo(CopyTo, {"GONE"}, "NEST"), Ending::Closes);
    EXPECT_EQ(Dialogs.Shown(), (Shown{"ask \nCopy \"GONE\"\nTo \"NEST\" !",
                                      "tell \nC:\\Programs\\SHOP\\GONE.prg\nnot found"}));
  }
  EXPECT_NE(Temp.Get("Service/Errors.txt").find("GONE.prg: not found"), std::string::npos);
}

}  // namespace
}  // namespace torvane::files

// Keypad.cfg.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/ConfigText.h"
#include "core/KeypadFile.h"
#include "platform/DiskFileSystem.h"
#include "support/Faults.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

KeypadTable Read(std::string_view text) {
  KeypadTable keys;
  keys[8].Active = true;  // a reading begins with an empty table
  ReadKeypadFile(text, keys);
  return keys;
}

int ActiveKeys(const KeypadTable& keys) {
  int active = 0;
  for (const KeypadEntry& entry : keys) active += entry.Active ? 1 : 0;
  return active;
}

TEST(KeypadFile, AButtonHasOneCaptionAndOneValue) {
  const auto keys = Read("1,M,1,\"OVERRIDE 100 %\",\"VR(68)\",100\r\n******\r\n");
  EXPECT_TRUE(keys[0].Active);
  EXPECT_FALSE(keys[0].Latching);
  EXPECT_EQ(keys[0].StateMask, 1);
  EXPECT_EQ(keys[0].CaptionOff, "OVERRIDE 100 %");
  EXPECT_EQ(keys[0].CaptionOn, "OVERRIDE 100 %");
  EXPECT_EQ(keys[0].Variable, "VR(68)");
  EXPECT_EQ(keys[0].ValueOn, 100);
  EXPECT_EQ(keys[0].ValueOff, 100);
  EXPECT_EQ(ActiveKeys(keys), 1);
}

TEST(KeypadFile, AToggleHasTwoCaptionsAndTwoValues) {
  const auto keys = Read("16,L,3,LIGHT OFF,LIGHT ON,VR(120),1,-1\n");
  EXPECT_TRUE(keys[15].Latching);
  EXPECT_EQ(keys[15].StateMask, 3);
  EXPECT_EQ(keys[15].CaptionOff, "LIGHT OFF");
  EXPECT_EQ(keys[15].CaptionOn, "LIGHT ON");
  EXPECT_EQ(keys[15].Variable, "VR(120)");
  EXPECT_EQ(keys[15].ValueOn, 1);
  EXPECT_EQ(keys[15].ValueOff, -1);
}

TEST(KeypadFile, FieldsMayStandOnLinesOfTheirOwn) {
  const auto keys = Read("2\r\nM\r\n0\r\nBLOW\r\nVR(9)\r\n5\r\n3,M,0,B,VR(8),6\r\n******\r\n");
  EXPECT_EQ(keys[1].CaptionOff, "BLOW");
  EXPECT_EQ(keys[1].ValueOn, 5);
  EXPECT_EQ(keys[2].ValueOn, 6);
}

TEST(KeypadFile, OfTheTypeOnlyTheFirstLetterCounts) {
  EXPECT_TRUE(Read("1,Latch,0,A,B,VR(1),1,0\n")[0].Latching);
  EXPECT_TRUE(Read("1,l,0,A,B,VR(1),1,0\n")[0].Latching);
  EXPECT_TRUE(Read("1,momentary,0,A,VR(1),1\n")[0].Active);
}

TEST(KeypadFile, ANumberThatIsNoKeySkipsTheRestOfItsLineOnly) {
  for (const char* number : {"17", "0", "-1", "KEY", "", "99999"}) {
    const auto keys =
        Read(std::string(number) + ",M,0,LOST,VR(1),1\r\n4,M,0,KEPT,VR(2),2\r\n******\r\n");
    EXPECT_EQ(ActiveKeys(keys), 1) << number;
    EXPECT_EQ(keys[3].CaptionOff, "KEPT") << number;
  }
  const auto keys = Read("17\r\n4,M,0,KEPT,VR(2),2\r\n");
  EXPECT_EQ(keys[3].CaptionOff, "KEPT") << "nothing is left of its line";
}

TEST(KeypadFile, ATypeThatIsNoneSkipsTheRestOfItsLineOnly) {
  for (const char* type : {"X", "", "1", "?"}) {
    const auto keys = Read("3," + std::string(type) + ",0,LOST,VR(1),1\n4,M,0,KEPT,VR(2),2\n");
    EXPECT_EQ(ActiveKeys(keys), 1) << type;
    EXPECT_EQ(keys[3].CaptionOff, "KEPT") << type;
  }
}

TEST(KeypadFile, TextsAreTrimmedAndCutToTheirFields) {
  const auto keys = Read("1,L,0,\"  " + std::string(30, 'A') + "\"," + std::string(30, 'B') +
                         ",  VR(123456789) ,1,0\n");
  EXPECT_EQ(keys[0].CaptionOff, std::string(24, 'A'));
  EXPECT_EQ(keys[0].CaptionOn, std::string(24, 'B'));
  EXPECT_EQ(keys[0].Variable, "VR(123456789");
}

TEST(KeypadFile, AQuotedTextMayHoldAComma) {
  EXPECT_EQ(Read("1,M,0,\"UP, DOWN\",VR(1),1\n")[0].CaptionOff, "UP, DOWN");
}

TEST(KeypadFile, ASecondEntryReplacesTheFirstWhole) {
  const auto keys = Read("5,L,7,OFF,ON,VR(1),1,2\n5,M,0,PUSH,VR(2),3\n");
  EXPECT_FALSE(keys[4].Latching);
  EXPECT_EQ(keys[4].StateMask, 0);
  EXPECT_EQ(keys[4].CaptionOn, "PUSH");
  EXPECT_EQ(keys[4].ValueOff, 3);
}

TEST(KeypadFile, TheMarkerEndsItWhateverFollows) {
  EXPECT_EQ(ActiveKeys(Read("1,M,0,A,VR(1),1\n******\n2,M,0,B,VR(2),2\n")), 1);
}

TEST(KeypadFile, WithoutTheMarkerAWholeLastEntryCounts) {
  EXPECT_EQ(ActiveKeys(Read("1,M,0,A,VR(1),1\n2,M,0,B,VR(2),2")), 2);
}

TEST(KeypadFile, AnEntryThatIsCutShortDoesNotCount) {
  for (const char* text : {"1,M,0,A,VR(1)\n", "1,M,0,A,VR(1)\n******\n", "1,L,0,A,B,VR(1),1\n",
                           "1,M\n******\n", "1\n", "1,M,0,A\n"}) {
    EXPECT_EQ(ActiveKeys(Read(text)), 0) << text;
  }
}

TEST(KeypadFile, AnEntryWithoutAVariableIsNoKey) {
  EXPECT_EQ(ActiveKeys(Read("1,M,0,A,,1\n2,M,0,B,\" \",2\n")), 0);
}

TEST(KeypadFile, IsNotedAndMustBeThere) {
  tests::TempDirectory temp;
  platform::DiskFileSystem files{temp.Path()};
  temp.MakeDirectory("Service");
  DirectorySet directories;
  directories.RootDirectory = ".\\";
  KeypadTable keys;
  EXPECT_EQ(tests::FaultOf([&] { LoadKeypadFile(files, directories, keys); }),
            ".\\Keypad.cfg: not found");
  EXPECT_EQ(temp.Get("Service/LastFile.txt"), ".\\Keypad.cfg\r\n");
  temp.Put("Keypad.cfg", "1,M,0,A,VR(1),1\n");
  LoadKeypadFile(files, directories, keys);
  EXPECT_TRUE(keys[0].Active);
}

RC_GTEST_PROP(KeypadFile, AnyTextGivesSixteenKeysThatFitTheirFields, ()) {
  const auto text = *rc::gen::container<std::string>(
      rc::gen::elementOf(std::string("0123456789,\"\r\nMLVR() ABC*-x")));
  for (const KeypadEntry& entry : Read(text)) {
    RC_ASSERT(entry.CaptionOff.size() <= 24 && entry.CaptionOn.size() <= 24);
    RC_ASSERT(entry.Variable.size() <= 12);
    RC_ASSERT(!entry.Active || !entry.Variable.empty());
    RC_ASSERT(entry.Latching || entry.ValueOff == entry.ValueOn);
  }
}

TEST(FieldReader, SkipsWhatIsLeftOfALine) {
  FieldReader fields("a,b,c\r\nd\r\ne,f");
  EXPECT_EQ(fields.Next(), "a");
  fields.SkipLine();
  EXPECT_EQ(fields.Next(), "d");
  fields.SkipLine();
  EXPECT_EQ(fields.Next(), "e") << "the field was the last of its line";
  fields.SkipLine();
  EXPECT_FALSE(fields.Next());
}

}  // namespace
}  // namespace torvane::core

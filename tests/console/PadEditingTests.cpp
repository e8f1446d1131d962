// The pads' text without a window: what each key does, rejected keys included.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "console/EntryMode.h"
#include "console/PadEditing.h"

namespace torvane::console {
namespace {

TEST(PadEditing, AnInitialTextIsSelectedWholeSoThatTheFirstKeyReplacesIt) {
  const PadText opened = OpenPad("1250");
  EXPECT_EQ(opened, (PadText{"1250", 0, 4}));
  EXPECT_EQ(InsertCharacter(opened, '7'), (PadText{"7", 1, 0}));
}

TEST(PadEditing, ARejectedKeyEndsTheTextAtTheCursor) {
  EXPECT_EQ(InsertCharacter({"12345", 2, 0}, 0).Text, "12");
  EXPECT_EQ(InsertCharacter({"12345", 2, 2}, 0).Text, "12");
  EXPECT_EQ(InsertCharacter(OpenPad("12345"), 0).Text, "");
}

TEST(PadEditing, ARejectedKeyStillMovesTheCursorOnByOne) {
  const PadText rejected = InsertCharacter({"12345", 2, 0}, 0);
  EXPECT_EQ(rejected, (PadText{"12", 3, 0}));
  EXPECT_EQ(InsertCharacter(rejected, 0), (PadText{"12", 3, 0})) << "one behind the end, no more";
  // Whatever follows takes the cursor as the end of the text.
  EXPECT_EQ(InsertCharacter(rejected, '7'), (PadText{"127", 3, 0}));
  EXPECT_EQ(DeleteButtonPressed(rejected), (PadText{"1", 1, 0}));
  EXPECT_EQ(BackspaceTyped(rejected), (PadText{"1", 1, 0}));
  EXPECT_EQ(MoveLeft(rejected), (PadText{"12", 1, 0}));
}

TEST(PadEditing, AKeyGoesInAtTheCursorAndReplacesTheSelection) {
  EXPECT_EQ(InsertCharacter({"AC", 1, 0}, 'B'), (PadText{"ABC", 2, 0}));
  EXPECT_EQ(InsertCharacter({"AXXC", 1, 2}, 'B'), (PadText{"ABC", 2, 0}));
}

TEST(PadEditing, TheTextIsTrimmedBeforeAKeyGoesIn) {
  EXPECT_EQ(InsertCharacter({"AB ", 3, 0}, 'C'), (PadText{"ABC", 3, 0}));
  EXPECT_EQ(InsertCharacter({"A", 1, 0}, ' '), (PadText{"A ", 2, 0}));
}

TEST(PadEditing, CursorKeysCollapseASelectionFirst) {
  EXPECT_EQ(MoveLeft({"ABCD", 1, 2}), (PadText{"ABCD", 1, 0}));
  EXPECT_EQ(MoveRight({"ABCD", 1, 2}), (PadText{"ABCD", 3, 0}));
  EXPECT_EQ(MoveLeft({"ABCD", 1, 0}), (PadText{"ABCD", 0, 0}));
  EXPECT_EQ(MoveLeft({"ABCD", 0, 0}), (PadText{"ABCD", 0, 0}));
  EXPECT_EQ(MoveRight({"ABCD", 3, 0}), (PadText{"ABCD", 4, 0}));
  EXPECT_EQ(MoveRight({"ABCD", 4, 0}), (PadText{"ABCD", 4, 0}));
}

TEST(PadEditing, DelAndBackspaceTakeTheSelectionOrWhatStandsLeft) {
  for (const auto remove : {DeleteButtonPressed, BackspaceTyped}) {
    EXPECT_EQ(remove({"ABCD", 2, 0}), (PadText{"ACD", 1, 0}));
    EXPECT_EQ(remove({"ABCD", 0, 0}), (PadText{"ABCD", 0, 0}));
    EXPECT_EQ(remove({"ABCD", 1, 2}), (PadText{"AD", 1, 0}));
  }
}

TEST(PadEditing, TheDeleteKeyTakesTheSelectionOrWhatStandsRight) {
  EXPECT_EQ(DeleteTyped({"ABCD", 2, 0}), (PadText{"ABD", 2, 0}));
  EXPECT_EQ(DeleteTyped({"ABCD", 4, 0}), (PadText{"ABCD", 4, 0}));
  EXPECT_EQ(DeleteTyped({"ABCD", 1, 2}), (PadText{"AD", 1, 0}));
}

TEST(PadEditing, TheKeysTrimTheTextFirstAndDelDoesNot) {
  EXPECT_EQ(BackspaceTyped({"PLATE ", 6, 0}), (PadText{"PLATE", 5, 0})) << "the blank alone goes";
  EXPECT_EQ(DeleteButtonPressed({"PLATE ", 6, 0}), (PadText{"PLATE", 5, 0}));
  EXPECT_EQ(BackspaceTyped({"AB ", 1, 0}), (PadText{"B", 0, 0}));
  EXPECT_EQ(DeleteButtonPressed({"AB ", 1, 0}), (PadText{"B ", 0, 0}));
  EXPECT_EQ(DeleteTyped({" AB ", 0, 0}), (PadText{"B", 0, 0}));
}

RC_GTEST_PROP(PadEditing, AnyKeysInAnyOrderKeepTheCursorAtTheText, ()) {
  PadText pad = OpenPad(*rc::gen::container<std::string>(rc::gen::element('A', 'b', '7', ' ')));
  const auto keys = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8));
  for (const int key : keys) {
    const int length = static_cast<int>(pad.Text.size());
    switch (key) {
      case 0:
        pad = MoveLeft(pad);
        break;
      case 1:
        pad = MoveRight(pad);
        break;
      case 2:
        pad = DeleteButtonPressed(pad);
        break;
      case 3:
        pad = BackspaceTyped(pad);
        break;
      case 4:
        pad = DeleteTyped(pad);
        break;
      case 5:
        pad = InsertCharacter(pad, 0);
        RC_ASSERT(static_cast<int>(pad.Text.size()) <= length);
        break;
      default:
        pad = InsertCharacter(pad, key == 6 ? 'C' : ' ');
        RC_ASSERT(pad.Text[static_cast<std::size_t>(pad.Cursor - 1)] == (key == 6 ? 'C' : ' '));
    }
    RC_ASSERT(pad.Cursor >= 0);
    RC_ASSERT(pad.Cursor <= static_cast<int>(pad.Text.size()) + 1);
    RC_ASSERT(pad.SelectionLength == 0);
  }
}

TEST(PadEditing, ClearEmptiesTheBox) { EXPECT_EQ(ClearText({"ABCD", 1, 2}), (PadText{"", 0, 0})); }

TEST(FilterKey, BackspaceAndEnterAlwaysPass) {
  for (const int mode : {-1, -2, -4, -5, -6, -8, -32, -321, -322, 1, 80, 0, -7}) {
    EXPECT_EQ(FilterKey(8, mode, "", 0), 8);
    EXPECT_EQ(FilterKey(13, mode, "", 0), 13);
  }
}

struct ModeCase {
  int Mode;
  const char* Accepted;
  const char* Rejected;
};

TEST(FilterKey, EachModeTakesItsOwnCharacters) {
  const ModeCase cases[] = {
      {-1, "0123456789", "-+.*/()A _"},
      {-2, "0123456789-", "+.*/()A _"},
      {-4, "0123456789.", "-+*/()A _"},
      {-5, "0123456789-.", "+*/()A _"},
      {-6, "0123456789()*+-./", "A _=%"},
      {-8, "ABZaz09-_", " !#.()+"},
      {-32, "AZaz09!#$%&()+-.=_ ", "*?;,/:\"\\"},
      {-321, "AZaz09!#$%&()+-.=_ ", "*?;,/:\"\\"},
      {-322, "AZaz09!#$%&()+-.=_ *?", ";,/:\"\\"},
      {80, "AZaz09!#$%&()+-.=_ ;", "*?,/:\"\\"},
      {0, "AZaz09!#$%&()+-.=_ ;*?,/:\"\\", ""},
      {-3, "AZ *?", ""},
  };
  for (const auto& row : cases) {
    for (const char* c = row.Accepted; *c; ++c)
      EXPECT_EQ(FilterKey(*c, row.Mode, "X", 0), *c) << row.Mode << *c;
    for (const char* c = row.Rejected; *c; ++c)
      EXPECT_EQ(FilterKey(*c, row.Mode, "X", 0), 0) << row.Mode << *c;
  }
}

TEST(FilterKey, ASpaceNeverStandsFirst) {
  for (const int mode : {-32, -321, -322, 80}) {
    EXPECT_EQ(FilterKey(' ', mode, "", 0), 0);
    EXPECT_EQ(FilterKey(' ', mode, "A", 0), ' ');
  }
}

TEST(FilterKey, AFullFieldTakesNothingUnlessSomeTextIsSelected) {
  const std::string full(32, 'A');
  EXPECT_EQ(FilterKey('B', EntryMode::Name, full, 0), 0);
  EXPECT_EQ(FilterKey('B', EntryMode::Name, full, 1), 'B');
  EXPECT_EQ(FilterKey('B', EntryMode::Name, full.substr(1), 0), 'B');
  EXPECT_EQ(FilterKey('B', EntryMode::ShortName, "ABCDEFGH", 0), 0);
  EXPECT_EQ(FilterKey('B', 3, "ABC", 0), 0);
  EXPECT_EQ(FilterKey('B', 4, "ABC", 0), 'B');
}

TEST(FilterKey, NumberModesHaveNoLimit) {
  EXPECT_EQ(FilterKey('1', EntryMode::Arithmetic, std::string(200, '1'), 0), '1');
}

}  // namespace
}  // namespace torvane::console

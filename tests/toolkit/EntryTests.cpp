// Entry boxes, lists and the box with a list.
#include "ScreenFixture.h"
#include "toolkit/EntryBox.h"
#include "toolkit/ListBox.h"
#include "toolkit/PickBox.h"
#include "toolkit/ProgressBar.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Entries : public OnDesk {
 protected:
  Entries() : One(Desk_, "OneForm", Log), Box(&One.Body) {
    Box.Place({10, 10, 300, 56});
    One.Window.Show();
    Box.SetFocus();
    Box.OnChange([this] { Log.push_back(Box.Text()); });
    Log.clear();
  }

  void Type(const std::string& text) {
    for (const char c : text) Desk_.TypeKey(KeyStroke(c));
  }

  Screen One;
  EntryBox Box;
};

TEST_F(Entries, TypingPutsCharactersAtTheCursor) {
  Type("AC");
  Desk_.TypeKey(KeyStroke(Key::Left));
  Type("B");
  EXPECT_EQ(Box.Text(), "ABC");
  EXPECT_EQ(Box.Cursor(), 2);
  EXPECT_EQ(Taken(), (Words{"A", "AC", "ABC"}));
}

TEST_F(Entries, TypingReplacesTheSelection) {
  Box.SetText("BRACKET");
  Box.SelectAll();
  EXPECT_EQ(Box.Cursor(), 0);
  EXPECT_EQ(Box.SelectionLength(), 7);
  Type("X");
  EXPECT_EQ(Box.Text(), "X");
  EXPECT_EQ(Box.SelectionLength(), 0);
}

TEST_F(Entries, ACharacterOfCodeZeroEndsTheText) {
  Box.SetText(std::string("AB\0CD", 5));
  EXPECT_EQ(Box.Text(), "AB");
}

TEST_F(Entries, TheCursorStandsWhereItWasPutEvenBehindTheEnd) {
  Box.SetText("A");
  Box.SetCursor(2);
  EXPECT_EQ(Box.Cursor(), 2);
  Type("B");
  EXPECT_EQ(Box.Text(), "AB");
  EXPECT_EQ(Box.Cursor(), 2);
}

TEST_F(Entries, TheSelectionStaysWithinTheText) {
  Box.SetText("ABC");
  Box.SetCursor(2);
  Box.SetSelectionLength(10);
  EXPECT_EQ(Box.SelectionLength(), 1);
  Box.SetCursor(9);
  Box.SetSelectionLength(1);
  EXPECT_EQ(Box.SelectionLength(), 0);
}

TEST_F(Entries, BackspaceTakesTheCharacterBeforeAndDeleteTheOneBehind) {
  Box.SetText("ABCD");
  Box.SetCursor(2);
  Desk_.TypeKey(KeyStroke(Key::Backspace));
  EXPECT_EQ(Box.Text(), "ACD");
  EXPECT_EQ(Box.Cursor(), 1);
  Desk_.TypeKey(KeyStroke(Key::Delete));
  EXPECT_EQ(Box.Text(), "AD");
  EXPECT_EQ(Box.Cursor(), 1);
  Box.SetCursor(0);
  Desk_.TypeKey(KeyStroke(Key::Backspace));
  EXPECT_EQ(Box.Text(), "AD");
}

TEST_F(Entries, ArrowsCollapseASelectionToItsSides) {
  Box.SetText("ABCD");
  Box.SetCursor(1);
  Box.SetSelectionLength(2);
  Desk_.TypeKey(KeyStroke(Key::Left));
  EXPECT_EQ(Box.Cursor(), 1);
  Box.SetSelectionLength(2);
  Desk_.TypeKey(KeyStroke(Key::Right));
  EXPECT_EQ(Box.Cursor(), 3);
  EXPECT_EQ(Box.SelectionLength(), 0);
}

TEST_F(Entries, TheKeyPressHookReplacesAndSwallows) {
  Box.OnKeyPress([](char c) { return c == 'x' ? 'X' : '\0'; });
  Type("axb");
  EXPECT_EQ(Box.Text(), "X");
  Desk_.TypeKey(KeyStroke(Key::Backspace));
  EXPECT_EQ(Box.Text(), "X");
}

TEST_F(Entries, APointerPutsTheCursorAndDragsASelection) {
  Box.SetText("IIIIIIIIII");
  PressAt(Box, 290, 20);
  EXPECT_EQ(Box.Cursor(), 10);
  DragTo(Box, 2, 20);
  EXPECT_EQ(Box.Cursor(), 0);
  EXPECT_EQ(Box.SelectionLength(), 10);
  ReleaseAt(Box, 2, 20);
}

TEST_F(Entries, AReadOnlyBoxIsAKey) {
  Box.SetReadOnly(true);
  Box.SetText("12.50");
  Box.OnClick([this] { Log.push_back("pad"); });
  Type("9");
  Click(Box);
  Desk_.TypeKey(KeyStroke(Key::Enter));
  EXPECT_EQ(Box.Text(), "12.50");
  EXPECT_EQ(Taken(), (Words{"pad", "pad"}));
}

TEST_F(Entries, TheCaretBlinksInTheFocusedBoxOnly) {
  Button other(&One.Body, "OK");
  EXPECT_TRUE(Box.HasFocus());
  const QImage focused = Box.grab().toImage();
  other.SetFocus();
  EXPECT_NE(Box.grab().toImage(), focused);
}

class Lists : public OnDesk {
 protected:
  Lists() : One(Desk_, "OneForm", Log), List(&One.Body) {
    List.SetVisibleLines(5);
    List.Place({0, 0, 300, 202});
    for (int i = 0; i < 20; ++i) List.Add("LINE " + std::to_string(i));
    List.OnSelect([this] { Log.push_back("select " + std::to_string(List.Current())); });
    One.Window.Show();
    List.SetFocus();
    Log.clear();
  }

  Screen One;
  ListBox List;
};

TEST_F(Lists, KeysMoveTheSelectionAndScroll) {
  List.SetCurrent(0);
  for (const Key key : {Key::Down, Key::PageDown, Key::End, Key::PageUp, Key::Up, Key::Home}) {
    Desk_.TypeKey(KeyStroke(key));
  }
  EXPECT_EQ(Taken(),
            (Words{"select 1", "select 5", "select 19", "select 15", "select 14", "select 0"}));
  EXPECT_EQ(List.TopLine(), 0);
}

TEST_F(Lists, TheTopLineStaysWithinTheList) {
  List.SetTopLine(99);
  EXPECT_EQ(List.TopLine(), 15);
  List.SetTopLine(-3);
  EXPECT_EQ(List.TopLine(), 0);
}

TEST_F(Lists, TheSelectedLineIsScrolledIntoView) {
  List.SetCurrent(12);
  EXPECT_EQ(List.TopLine(), 8);
  EXPECT_EQ(List.SelectedIndices(), std::vector<int>{12});
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Lists, APressSelectsTheLineUnderIt) {
  List.SetTopLine(4);
  ClickAt(List, 20, 50);
  EXPECT_EQ(List.Current(), 5);
  EXPECT_EQ(Taken(), Words{"select 5"});
}

TEST_F(Lists, ADragMovesTheLinesAndSelectsNothing) {
  PressAt(List, 20, 180);
  DragTo(List, 20, 60);
  ReleaseAt(List, 20, 60);
  EXPECT_EQ(List.TopLine(), 3);
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Lists, ADoubleClickIsToldForTheCurrentLine) {
  List.OnDoubleClick([this] { Log.push_back("edit"); });
  DoubleClickAt(List, 20, 50);
  EXPECT_EQ(Taken(), (Words{"select 1", "edit"}));
}

TEST_F(Lists, LinesComeAndGo) {
  List.SetCurrent(3);
  List.Insert(1, "NEW");
  EXPECT_EQ(List.Current(), 4);
  List.Remove(4);
  EXPECT_EQ(List.Current(), -1);
  List.Remove(99);
  EXPECT_EQ(List.Count(), 20);
  EXPECT_EQ(List.Text(1), "NEW");
  EXPECT_EQ(List.Text(-1), "");
  List.Clear();
  EXPECT_EQ(List.Count(), 0);
  Desk_.TypeKey(KeyStroke(Key::Down));
  EXPECT_EQ(List.Current(), -1);
}

TEST_F(Lists, SeveralMayBeSelected) {
  ListBox several(&One.Body, Selection::Multiple);
  several.SetItems({"A", "B", "C"});
  several.PressLine(0);
  several.PressLine(2);
  EXPECT_EQ(several.SelectedIndices(), (std::vector<int>{0, 2}));
  several.PressLine(0);
  EXPECT_EQ(several.SelectedIndices(), std::vector<int>{2});
  several.SetFocus();
  several.SetCurrent(1);
  Desk_.TypeKey(KeyStroke(Key::Space));
  EXPECT_EQ(several.SelectedIndices(), (std::vector<int>{1, 2}));
}

class MultipleList : public OnDesk {
 protected:
  MultipleList() : One(Desk_, "OneForm", Log), List(&One.Body, Selection::Multiple) {
    List.SetVisibleLines(5);
    List.Place({0, 0, 300, 202});
    for (int i = 0; i < 20; ++i) List.Add("LINE " + std::to_string(i));
    List.OnSelect([this] { Log.push_back(std::to_string(List.SelectedIndices().size())); });
    One.Window.Show();
    Log.clear();
  }
  /// Middle of a row in view.
  static int RowY(int row) { return 1 + 40 * row + 20; }
  using Indices = std::vector<int>;

  Screen One;
  ListBox List;
};

TEST_F(MultipleList, ADragMarksTheLinesThatItPasses) {
  PressAt(List, 20, RowY(1));
  DragTo(List, 20, RowY(3));
  EXPECT_EQ(List.SelectedIndices(), (Indices{1, 2, 3})) << "while the finger is still down";
  DragTo(List, 20, RowY(2));
  EXPECT_EQ(List.SelectedIndices(), (Indices{1, 2})) << "a drag back lets go of the rest";
  ReleaseAt(List, 20, RowY(2));
  EXPECT_EQ(List.SelectedIndices(), (Indices{1, 2}));
  EXPECT_EQ(List.TopLine(), 0) << "the lines do not move under the finger";
  EXPECT_EQ(Taken(), (Words{"3", "2"}));
  EXPECT_EQ(List.SelectedTexts(), (Words{"LINE 1", "LINE 2"}));
}

TEST_F(MultipleList, ADragThatBeginsOnAMarkedLineTakesMarksAway) {
  for (const int line : {0, 1, 2, 4}) List.SetSelected(line, true);
  PressAt(List, 20, RowY(2));
  DragTo(List, 20, RowY(0));
  ReleaseAt(List, 20, RowY(0));
  EXPECT_EQ(List.SelectedIndices(), Indices{4});
}

TEST_F(MultipleList, ADragBelowTheListScrollsOn) {
  PressAt(List, 20, RowY(4));
  for (int step = 0; step < 3; ++step) DragTo(List, 20, 260 + step);
  ReleaseAt(List, 20, 262);
  EXPECT_EQ(List.TopLine(), 3);
  EXPECT_EQ(List.SelectedIndices(), (Indices{4, 5, 6, 7}));
}

TEST_F(MultipleList, ALittleTrembleIsAPress) {
  PressAt(List, 20, RowY(1));
  DragTo(List, 20, RowY(1) + 10);
  ReleaseAt(List, 20, RowY(1) + 10);
  EXPECT_EQ(List.SelectedIndices(), Indices{1});
}

TEST_F(MultipleList, AListThatIsFilledAgainUnderTheFingerMarksNothing) {
  PressAt(List, 20, RowY(4));
  List.SetItems({"A", "B"});
  DragTo(List, 20, RowY(1));
  ReleaseAt(List, 20, RowY(1));
  EXPECT_EQ(List.SelectedIndices(), Indices{});
}

TEST_F(Lists, DetailsStandBesideTheLinesAndLeaveTheirTexts) {
  List.SetDetails({"1200\t01.02.26", "7\t"});
  List.Insert(0, "NEW");
  List.Remove(1);
  EXPECT_EQ(List.Text(0), "NEW");
  List.SetStyle(TypeStyle::Mono);
  const QImage picture = List.grab().toImage();
  EXPECT_FALSE(picture.isNull());
}

TEST_F(Lists, AListThatSelectsNothingScrollsByKeys) {
  ListBox help(&One.Body, Selection::None);
  help.SetVisibleLines(5);
  help.Place({0, 210, 300, 60});
  help.SetItems(List.Items());
  help.SetFocus();
  Desk_.TypeKey(KeyStroke(Key::Down));
  EXPECT_EQ(help.TopLine(), 1);
  Desk_.TypeKey(KeyStroke(Key::End));
  EXPECT_EQ(help.TopLine(), 15);
  EXPECT_EQ(help.Current(), -1);
}

class Picks : public OnDesk {
 protected:
  Picks() : One(Desk_, "OneForm", Log), Pick(&One.Body), Other(&One.Body, "OK") {
    Pick.Place({10, 10, 300, 56});
    Other.Place({10, 200, 100, 60});
    Pick.SetItems({"SHOP", "GASKETS", "TEST"});
    Pick.OnChange([this] { Log.push_back(Pick.Text()); });
    One.Window.Show();
    Pick.SetFocus();
    Log.clear();
  }

  Screen One;
  PickBox Pick;
  Button Other;
};

TEST_F(Picks, ArrowsStepThroughTheLines) {
  Desk_.TypeKey(KeyStroke(Key::Down));
  Desk_.TypeKey(KeyStroke(Key::Down));
  Desk_.TypeKey(KeyStroke(Key::Up));
  EXPECT_EQ(Taken(), (Words{"SHOP", "GASKETS", "SHOP"}));
  EXPECT_EQ(Pick.Current(), 0);
}

TEST_F(Picks, TheListOpensByEnterAndTakesByEnter) {
  Desk_.TypeKey(KeyStroke(Key::Enter));
  EXPECT_TRUE(Pick.ListOpen());
  Desk_.TypeKey(KeyStroke(Key::End));
  EXPECT_EQ(Taken(), Words{});
  Desk_.TypeKey(KeyStroke(Key::Enter));
  EXPECT_FALSE(Pick.ListOpen());
  EXPECT_EQ(Taken(), Words{"TEST"});
}

TEST_F(Picks, EscapeAndAPressElsewhereLeaveTheText) {
  Pick.SetCurrent(1);
  Pick.OpenList();
  Desk_.TypeKey(KeyStroke(Key::Down));
  Desk_.TypeKey(KeyStroke(Key::Escape));
  EXPECT_FALSE(Pick.ListOpen());
  Pick.OpenList();
  Click(Other);
  EXPECT_FALSE(Pick.ListOpen());
  EXPECT_EQ(Pick.Text(), "GASKETS");
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Picks, ATouchOnTheArrowOpensAndOnALineTakes) {
  ClickAt(Pick, 290, 20);
  ASSERT_TRUE(Pick.ListOpen());
  const Area list = Pick.List().Bounds();
  EXPECT_GE(list.Height / 3, 40);
  ClickAt(Pick.List(), 10, list.Height - 10);
  EXPECT_FALSE(Pick.ListOpen());
  EXPECT_EQ(Taken(), Words{"TEST"});
}

TEST_F(Picks, TypedTextIsNoLineOfTheList) {
  Pick.SetCurrent(1);
  Pick.Entry().SelectAll();
  Desk_.TypeKey(KeyStroke('X'));
  EXPECT_EQ(Pick.Text(), "X");
  EXPECT_EQ(Pick.Current(), -1);
}

TEST_F(Picks, TheListGoesWithItsForm) {
  Pick.OpenList();
  One.Window.Hide();
  EXPECT_FALSE(Pick.ListOpen());
  EXPECT_FALSE(Pick.List().Visible());
}

TEST_F(Picks, AProgressBarKeepsItsValueWithinItsRange) {
  ProgressBar bar(&One.Body);
  bar.SetRange(0, 30);
  bar.SetValue(99);
  EXPECT_EQ(bar.Value(), 30);
  bar.SetRange(0, 10);
  EXPECT_EQ(bar.Value(), 10);
}

}  // namespace
}  // namespace torvane::tests

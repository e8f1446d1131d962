// The line editor's text, and its way from the disk and back.
#include <rapidcheck/gtest.h>

#include "Workshop.h"
#include "core/Text.h"
#include "files/ProgramText.h"

namespace torvane::files {

using namespace tests;
namespace {

EditDocument Numbered(int lines) {
  std::string text;
  for (int n = 0; n < lines; ++n) text += "N" + std::to_string(n) + "\r\n";
  EditDocument document;
  document.Load(text);
  return document;
}

TEST(Editor, LinesAreTrimmedBothWaysAndEmptyOnesStay) {
  EditDocument document;
  document.Load("  G00 X1  \n\n   \r\nM30");
  EXPECT_EQ(document.Lines(), (Names{"G00 X1", "", "", "M30"}));
  EXPECT_EQ(document.Selected(), 0);
  document.Insert("  ! note ");
  EXPECT_EQ(document.Text(), "G00 X1\r\n! note\r\n\r\n\r\nM30\r\n");
}

TEST(Editor, AnInsertedLineStandsAfterTheSelectedOneAndIsSelected) {
  EditDocument document = Numbered(3);
  document.Select(1);
  document.Insert("NEW");
  EXPECT_EQ(document.Lines(), (Names{"N0", "N1", "NEW", "N2"}));
  EXPECT_EQ(document.Selected(), 2);
  EXPECT_TRUE(document.Changed());
}

TEST(Editor, AnEmptyTextTakesTheFirstLine) {
  EditDocument document;
  document.Load("");
  EXPECT_EQ(document.Selected(), -1);
  EXPECT_FALSE(document.Replace("X"));
  EXPECT_FALSE(document.Delete());
  document.PageDown();
  document.PageUp();
  document.Home();
  document.End();
  EXPECT_EQ(document.Selected(), -1);
  EXPECT_FALSE(document.Changed());
  document.Insert("G00");
  EXPECT_EQ(document.Selected(), 0);
  EXPECT_EQ(document.Text(), "G00\r\n");
}

TEST(Editor, DeletingTheLastLineSelectsTheNewLastLine) {
  EditDocument document = Numbered(3);
  document.Select(2);
  EXPECT_TRUE(document.Delete());
  EXPECT_EQ(document.Selected(), 1);
  document.Select(0);
  EXPECT_TRUE(document.Delete());
  EXPECT_EQ(document.Selected(), 0) << "elsewhere the selection stays at its index";
  EXPECT_EQ(document.SelectedText(), "N1");
  EXPECT_TRUE(document.Delete());
  EXPECT_EQ(document.Selected(), -1);
  EXPECT_EQ(document.Text(), "");
}

TEST(Editor, TheTopLineIsTheSelectionAsFarAsTheListGoes) {
  EditDocument document = Numbered(50);
  document.Select(10);
  document.Replace("X");
  EXPECT_EQ(document.TopLine(), 10);
  document.Select(40);
  document.Delete();
  EXPECT_EQ(document.TopLine(), 49 - 21);
  EditDocument small = Numbered(5);
  small.Select(4);
  small.Insert("X");
  EXPECT_EQ(small.TopLine(), 0);
}

TEST(Editor, PageDownOnThirtyLinesFromLineTwentyFiveEndsAtLineTwentyNine) {
  EditDocument document = Numbered(30);
  document.Select(25);
  document.PageDown();
  EXPECT_EQ(document.Selected(), 29);
}

TEST(Editor, PagesMoveTheSelectionAndTheTopLineByTwenty) {
  EditDocument document = Numbered(100);
  document.PageDown();
  EXPECT_EQ(document.Selected(), 20);
  EXPECT_EQ(document.TopLine(), 20);
  document.ScrollTo(30);
  document.PageDown();
  EXPECT_EQ(document.Selected(), 40);
  EXPECT_EQ(document.TopLine(), 50);
  document.PageUp();
  document.PageUp();
  document.PageUp();
  EXPECT_EQ(document.Selected(), 0);
  EXPECT_EQ(document.TopLine(), 0);
  document.End();
  EXPECT_EQ(document.Selected(), 99);
  EXPECT_EQ(document.TopLine(), 79);
  document.Home();
  EXPECT_EQ(document.Selected(), 0);
  EXPECT_EQ(document.TopLine(), 0);
}

TEST(Editor, TheSameTextPutBackIsNoChange) {
  EditDocument document = Numbered(3);
  EXPECT_TRUE(document.Replace(" N0 "));
  EXPECT_FALSE(document.Changed());
  EXPECT_TRUE(document.Replace("N00"));
  EXPECT_TRUE(document.Changed());
}

RC_GTEST_PROP(EditorProperty, ItActsLikeAListOfLinesAndAnIndex, ()) {
  const int count = *rc::gen::inRange(0, 60);
  EditDocument document = Numbered(count);
  std::vector<std::string> lines(document.Lines());
  int at = count == 0 ? -1 : 0;
  const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8));
  for (const int step : steps) {
    if (step == 0) {
      at = lines.empty() ? 0 : at + 1;
      lines.insert(lines.begin() + at, "NEW");
      document.Insert("NEW");
    } else if (step == 1 && at >= 0) {
      lines.erase(lines.begin() + at);
      at = std::min(at, static_cast<int>(lines.size()) - 1);
      RC_ASSERT(document.Delete());
    } else if (step == 2 && at >= 0) {
      lines[static_cast<std::size_t>(at)] = "SET";
      RC_ASSERT(document.Replace("SET"));
    } else if (step == 3) {
      document.PageUp();
      at = lines.empty() ? -1 : std::max(0, at - 20);
    } else if (step == 4) {
      document.PageDown();
      at = std::min(static_cast<int>(lines.size()) - 1, at + 20);
    } else if (step == 5 && !lines.empty()) {
      at = *rc::gen::inRange(0, static_cast<int>(lines.size()));
      document.Select(at);
    }
    RC_ASSERT(document.Lines() == lines);
    RC_ASSERT(document.Selected() == at);
    RC_ASSERT(document.TopLine() >= 0);
    RC_ASSERT(document.TopLine() <= std::max(0, static_cast<int>(lines.size()) - 21));
  }
}

class EditorFiles : public ::testing::Test, public Workshop {};

TEST_F(EditorFiles, AProgramIsReadAndWrittenBackWhole) {
  const std::string path = "C:\\Programs\\SHOP\\A.prg";
  Temp.Put("Programs/SHOP/A.prg", "G00 X1   \n\n M30");
  EditDocument document;
  LoadDocument(Parts, path, document);
  EXPECT_EQ(LastFile(), path);
  EXPECT_TRUE(SaveDocument(Parts, path, document));
  EXPECT_EQ(Temp.Get("Programs/SHOP/A.prg"), "G00 X1\r\n\r\nM30\r\n") << "trailing blanks go";
}

TEST_F(EditorFiles, AMissingFileIsAnEmptyTextAndIsMadeWhenItIsKept) {
  const std::string path = "C:\\Programs\\SHOP\\NEW.prg";
  EditDocument document;
  LoadDocument(Parts, path, document);
  EXPECT_EQ(document.Count(), 0);
  EXPECT_FALSE(Temp.Has("Programs/SHOP/NEW.prg"));
  EXPECT_TRUE(SaveDocument(Parts, path, document));
  EXPECT_EQ(Temp.Get("Programs/SHOP/NEW.prg"), "");
}

TEST_F(EditorFiles, AFileThatCannotBeKeptIsToldAndTheTextStays) {
  EditDocument document;
  document.Load("G00");
  document.Insert("M30");
  EXPECT_FALSE(SaveDocument(Parts, "C:\\Nowhere\\A.prg", document));
  EXPECT_EQ(Dialogs.Shown(), Shown{"tell \nC:\\Nowhere\\A.prg\nnot found"});
  EXPECT_TRUE(document.Changed());
  EXPECT_EQ(document.Text(), "G00\r\nM30\r\n");
}

TEST_F(EditorFiles, LinesForTheEyesStandAsTheyAre) {
  const std::string path = "C:\\Programs\\SHOP\\A.prg";
  EXPECT_FALSE(ReadTextLines(Parts, path).has_value());
  EXPECT_EQ(LastFile(), "(missing)") << "nothing was opened";
  Temp.Put("Programs/SHOP/A.prg", " G00 \r\n\r\nM30");
  EXPECT_EQ(ReadTextLines(Parts, path), (Names{" G00 ", "", "M30"}));
  EXPECT_EQ(LastFile(), path);
}

}  // namespace
}  // namespace torvane::files

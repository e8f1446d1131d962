// The ring of rows: what is new, what is of an earlier lap, and where a program begins.
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/TableRing.h"

namespace torvane::simulator {
namespace {

/// Writes rows as the front end does: each behind the one before, back to the first index when the
/// pointer has gone beyond the last.
class Writer {
 public:
  explicit Writer(TableRing& ring, int first = 500, int last = 700)
      : ring_(ring), first_(first), last_(last), next_(first) {}

  void Row(std::size_t count, double mark, bool running = false) {
    if (next_ > last_) next_ = first_;
    std::vector<double> values(count, 0.0);
    values.back() = mark;
    ring_.Written(next_, values, running);
    Index = next_;
    next_ += static_cast<int>(count);
  }
  void Restart() { next_ = first_; }
  void Lose(std::size_t count) {
    if (next_ > last_) next_ = first_;
    next_ += static_cast<int>(count);
  }

  int Index = 0;

 private:
  TableRing& ring_;
  int first_;
  int last_;
  int next_;
};

double Mark(const TableRing& ring, int line) {
  const RingRow* row = ring.Row(line);
  return row == nullptr ? -1.0 : row->Read().back();
}

TEST(TableRing, LinesAreNumberedAsTheyCome) {
  TableRing ring(500, 700);
  Writer writer(ring);
  for (int line = 1; line <= 20; ++line) writer.Row(7, line);
  EXPECT_EQ(ring.OldestLine(), 1);
  EXPECT_EQ(ring.NewestLine(), 20);
  for (int line = 1; line <= 20; ++line) EXPECT_EQ(Mark(ring, line), line);
  EXPECT_EQ(ring.Row(0), nullptr);
  EXPECT_EQ(ring.Row(21), nullptr);
}

TEST(TableRing, ARowIsStillWrittenAtTheLastIndexAndTheNextStartsAtTheFirst) {
  TableRing ring(500, 700);
  Writer writer(ring);
  for (int line = 1; line <= 25; ++line) writer.Row(8, line);
  writer.Row(7, 26);
  EXPECT_EQ(writer.Index, 700);
  EXPECT_EQ(Mark(ring, 26), 26);
  writer.Row(7, 27, true);
  EXPECT_EQ(writer.Index, 500);
  EXPECT_EQ(Mark(ring, 27), 27);
  EXPECT_EQ(ring.Row(1), nullptr) << "the first lap's row has been gone over";
  EXPECT_EQ(Mark(ring, 2), 2);
}

TEST(TableRing, AnotherProgramCountsFromOneAgain) {
  TableRing ring(500, 700);
  Writer writer(ring);
  for (int line = 1; line <= 10; ++line) writer.Row(7, line);
  const int before = ring.Programs();
  writer.Restart();
  writer.Row(7, 101);
  EXPECT_EQ(ring.NewestLine(), 1);
  EXPECT_EQ(Mark(ring, 1), 101);
  EXPECT_EQ(ring.Row(2), nullptr) << "what an earlier program left behind is not run as new";
  EXPECT_NE(ring.Programs(), before);
}

TEST(TableRing, ResumedItGoesOnBehindTheLinesThatWereSent) {
  TableRing ring(500, 700);
  ring.Resume(60, 556);
  EXPECT_EQ(ring.NewestLine(), 60);
  EXPECT_EQ(ring.Row(60), nullptr) << "what was sent before is not here";
  const std::vector<double> row{0, 1, 2, 3, 4, 5, 61};
  ring.Written(556, row, true);
  EXPECT_EQ(ring.NewestLine(), 61);
  EXPECT_EQ(Mark(ring, 61), 61);
  EXPECT_FALSE(ring.Broken());
}

TEST(TableRing, ResumedBeyondTheLastIndexItGoesOnAtTheFirst) {
  TableRing ring(500, 700);
  ring.Resume(29, 703);
  const std::vector<double> row{0, 1, 2, 3, 4, 5, 30};
  ring.Written(500, row, true);
  EXPECT_EQ(Mark(ring, 30), 30);
}

TEST(TableRing, ResumedItStillTakesANewProgramForWhatItIs) {
  TableRing ring(500, 700);
  ring.Resume(60, 556);
  const std::vector<double> row{0, 1, 2, 3, 4, 5, 1};
  ring.Written(500, row, false);
  EXPECT_EQ(ring.NewestLine(), 1);
}

TEST(TableRing, AProgramOfOneLineSentAgainIsAProgramOfOneLine) {
  TableRing ring(500, 700);
  const std::vector<double> end{-999};
  ring.Written(500, end, false);
  ring.Written(500, end, false);
  EXPECT_EQ(ring.NewestLine(), 1);
}

/// 29 rows of 7 end beyond the last index, so that the next lap and another program
/// begin at the same place.
void FillToTheEnd(Writer& writer) {
  for (int line = 1; line <= 29; ++line) writer.Row(7, line);
}

TEST(TableRing, WhereLapAndProgramFallTogetherTheNamedTableDecides) {
  TableRing ring(500, 700);
  Writer writer(ring);
  FillToTheEnd(writer);
  writer.Row(7, 101);
  writer.Row(7, 102);
  EXPECT_EQ(ring.NewestLine(), 31) << "so far it may be the next lap";
  ring.Select();
  EXPECT_EQ(ring.NewestLine(), 2);
  EXPECT_EQ(ring.OldestLine(), 1);
  EXPECT_EQ(Mark(ring, 1), 101);
}

TEST(TableRing, ARunningProgramCanOnlyBeginItsNextLap) {
  TableRing ring(500, 700);
  Writer writer(ring);
  FillToTheEnd(writer);
  writer.Row(7, 30, true);
  ring.Select();
  EXPECT_EQ(ring.NewestLine(), 30);
  EXPECT_EQ(Mark(ring, 30), 30);
}

TEST(TableRing, ALineThatGoesMissingBreaksTheProgramBehindIt) {
  TableRing ring(500, 700);
  Writer writer(ring);
  for (int line = 1; line <= 5; ++line) writer.Row(7, line);
  writer.Lose(7);
  writer.Row(7, 7);
  EXPECT_TRUE(ring.Broken());
  EXPECT_EQ(ring.NewestLine(), 5);
  EXPECT_EQ(ring.Row(6), nullptr);
  writer.Restart();
  writer.Row(7, 1);
  EXPECT_FALSE(ring.Broken());
}

TEST(TableRing, RowsThatBeginInTheMiddleHaveNoNumber) {
  TableRing ring(750, 950);
  ring.Written(785, std::vector<double>(7), false);
  ring.Written(792, std::vector<double>(7), false);
  EXPECT_EQ(ring.NewestLine(), 0);
  EXPECT_EQ(ring.Row(1), nullptr);
}

TEST(TableRing, TheNewestRowSentAgainTakesItsOwnPlace) {
  TableRing ring(500, 700);
  Writer writer(ring);
  for (int line = 1; line <= 5; ++line) writer.Row(7, line);
  std::vector<double> again(7, 0.0);
  again.back() = 55;
  ring.Written(writer.Index, again, false);
  EXPECT_EQ(ring.NewestLine(), 5);
  EXPECT_EQ(Mark(ring, 5), 55);
  EXPECT_FALSE(ring.Broken());
}

RC_GTEST_PROP(TableRing, EveryLineThatStandsIsTheOneThatWasWrittenLast, ()) {
  TableRing ring(500, 700);
  Writer writer(ring);
  const auto counts = *rc::gen::container<std::vector<int>>(rc::gen::element(1, 2, 6, 7, 8));
  int line = 0;
  for (const int count : counts) {
    ++line;
    writer.Row(static_cast<std::size_t>(count), line, line > 1);
  }
  RC_ASSERT(ring.NewestLine() == line);
  for (int n = 1; n <= line; ++n) {
    const RingRow* row = ring.Row(n);
    const bool gone = row == nullptr;
    RC_ASSERT(gone == (n < ring.OldestLine()));
    RC_ASSERT(gone || Mark(ring, n) == n);
  }
  // The ring holds what fits: at least the last 25 rows, were they the longest.
  RC_ASSERT(line < 1 || ring.OldestLine() <= std::max(1, line - 24));
}

// ---- rows ----

}  // namespace
}  // namespace torvane::simulator

// Where an operator goes on after a stop, and what a stopped and a restarted run must have cut
// together.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "support/SheetCoverage.h"

namespace torvane::tests {

inline constexpr double Exact = 0.01;  // mm

/// The step by which an operator moves the split point along an element, mm.
[[nodiscard]] inline double SplitStep(double length) {
  double step = length / 30;
  for (int n = 3; n <= 30; ++n) {
    if (length / n < 1) {
      step = length / (n - 1);
      break;
    }
  }
  return std::min(std::max(step, 0.1), length / 2);
}

/// The last split point that an operator can choose at or before `along` of an element, mm. 0 is
/// the whole element, and what the arithmetic leaves beside it is 0 too.
[[nodiscard]] inline double SplitPointBefore(double length, double along) {
  if (length <= 0) return 0;
  const double step = SplitStep(length);
  const double before = length - std::ceil((length - along) / step) * step;
  return before < Exact ? 0 : before;
}

/// Records of the cuts of a run, in the order in which they were begun.
[[nodiscard]] inline std::vector<int> CutRecords(const tests::Pieces& run) {
  std::vector<int> records;
  for (const auto& piece : run) {
    if (piece.Cut && piece.Beam && (records.empty() || records.back() != piece.Place.Record)) {
      records.push_back(piece.Place.Record);
    }
  }
  return records;
}

/// One way with the beam off; it may be none where the machine stands at the place already.
inline void ExpectOneWay(const tests::Pieces& second, const tests::Pieces& before) {
  ASSERT_FALSE(before.empty());
  const auto first = tests::FirstCut(second);
  const bool there = simulator::Distance(before.back().To, first.From) < 1e-3;
  EXPECT_LE(tests::WaysBeforeFirstCut(second), 1);
  EXPECT_TRUE(there || tests::WaysBeforeFirstCut(second) == 1);
}

/// A place of a restart, mm.
struct WantedEntry {
  int Record = 0;         ///< of ".krw", that the first run was stopped in
  double Along = 0;       ///< where the second begins on the compensated element
  double Programmed = 0;  ///< length of the programmed element
  double Compensated = 0;
};

/// The sheet has come out whole: held against `whole`, a run without a stop.
inline void ExpectWholeSheet(const tests::Pieces& whole, const tests::Pieces& first,
                             const tests::Pieces& second, const WantedEntry& entry) {
  const auto cover = tests::CompareSheet(whole, {first, second});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
  EXPECT_LE(cover.LongestJump, 1e-3) << cover.Describe();
  for (const int twice : cover.RecordsCutTwice(Exact)) EXPECT_EQ(twice, entry.Record);
  const double step = std::max(1.5, SplitStep(entry.Programmed));
  const double corner = std::abs(entry.Compensated - entry.Programmed);
  EXPECT_LE(cover.Twice(entry.Record), step + Exact + corner) << cover.Describe();
  EXPECT_EQ(tests::FirstCut(second).Place.Record, entry.Record);
  EXPECT_NEAR(tests::FirstCut(second).S0, entry.Along, Exact);
  ExpectOneWay(second, first);
}

}  // namespace torvane::tests

// What a laser has cut, from the pieces of path of one or several runs, held against an
// uninterrupted run of the same program: was the sheet finished, and was anything cut twice?
//
// How to use it:
//
//   Pieces whole;                                     // a run from its start to its end
//   machine.OnPath([&](const PathPiece& piece) { whole.push_back(piece); });
//   ...
//   const auto cover = CompareSheet(whole, {first, second});   // the stopped run, and the restart
//   EXPECT_LE(cover.Missing(), 0.01) << cover.Describe();
//   EXPECT_EQ(cover.RecordsCutTwice(0.01), std::vector<int>{stopped}) << cover.Describe();
//   EXPECT_EQ(WaysBeforeFirstCut(second), 1);
//
// `Pieces` come from Machine::OnPath, or with ReadPathFile from the file of `--path`; RunOf takes
// one run out of them. SheetRun.h runs a program of its own choice that way without a front end.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/General.h"
#include "simulator/PathTrace.h"

namespace torvane::tests {

using Pieces = std::vector<simulator::PathPiece>;

/// The pieces of run `run` (from 1, counted since the machine was switched on).
[[nodiscard]] inline Pieces RunOf(const Pieces& pieces, int run) {
  Pieces found;
  for (const auto& piece : pieces) {
    if (piece.Place.Run == run) found.push_back(piece);
  }
  return found;
}

/// Stretches of one element, mm from its start, kept apart and in order.
class Stretches {
 public:
  void Add(double from, double to) {
    if (to > from) parts_.emplace_back(from, to);
  }
  /// mm that at least `times` of the stretches cover.
  [[nodiscard]] double Covered(int times) const {
    std::vector<std::pair<double, int>> ends;
    for (const auto& [from, to] : parts_) {
      ends.emplace_back(from, 1);
      ends.emplace_back(to, -1);
    }
    std::sort(ends.begin(), ends.end());
    double length = 0;
    int depth = 0;
    for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
      depth += ends[i].second;
      if (depth >= times) length += ends[i + 1].first - ends[i].first;
    }
    return length;
  }
  [[nodiscard]] bool Empty() const { return parts_.empty(); }
  [[nodiscard]] const std::vector<std::pair<double, double>>& Parts() const { return parts_; }

 private:
  std::vector<std::pair<double, double>> parts_;
};

/// What became of one element, mm.
struct ElementCover {
  int Record = 0;      ///< number in ".krw"
  double Wanted = 0;   ///< cut by the uninterrupted run
  double Missing = 0;  ///< of that, what no run has cut
  double Twice = 0;    ///< cut more than once
  double Foreign = 0;  ///< cut though the uninterrupted run does not
};

struct SheetCover {
  std::vector<ElementCover> Elements;
  /// Longest gap between the end of a piece and the start of the next one of the same run, mm.
  double LongestJump = 0;

  [[nodiscard]] double Missing() const { return Most(&ElementCover::Missing); }
  [[nodiscard]] double Foreign() const { return Most(&ElementCover::Foreign); }
  [[nodiscard]] double Twice(int record) const {
    for (const auto& element : Elements) {
      if (element.Record == record) return element.Twice;
    }
    return 0;
  }
  /// Records of which more than `tolerance` mm were cut more than once.
  [[nodiscard]] std::vector<int> RecordsCutTwice(double tolerance) const {
    std::vector<int> records;
    for (const auto& element : Elements) {
      if (element.Twice > tolerance) records.push_back(element.Record);
    }
    return records;
  }
  /// A line for each element that is not just right.
  [[nodiscard]] std::string Describe() const {
    std::string text;
    for (const auto& e : Elements) {
      if (e.Missing < 1e-6 && e.Twice < 1e-6 && e.Foreign < 1e-6) continue;
      text += "record " + std::to_string(e.Record) + ": wanted " + std::to_string(e.Wanted) +
              ", missing " + std::to_string(e.Missing) + ", twice " + std::to_string(e.Twice) +
              ", foreign " + std::to_string(e.Foreign) + "\n";
    }
    return text + "longest jump " + std::to_string(LongestJump) + "\n";
  }

 private:
  [[nodiscard]] double Most(double ElementCover::*field) const {
    double most = 0;
    for (const auto& element : Elements) most = std::max(most, element.*field);
    return most;
  }
};

/// What was cut with the beam on, by record.
[[nodiscard]] inline std::map<int, Stretches> CutStretches(const std::vector<Pieces>& runs) {
  std::map<int, Stretches> cut;
  for (const auto& run : runs) {
    for (const auto& piece : run) {
      if (piece.Cut && piece.Beam) cut[piece.Place.Record].Add(piece.S0, piece.S1);
    }
  }
  return cut;
}

[[nodiscard]] inline double LongestJumpOf(const Pieces& run) {
  double longest = 0;
  for (std::size_t i = 1; i < run.size(); ++i) {
    if (run[i].Place.Run != run[i - 1].Place.Run) continue;
    longest = std::max(longest, simulator::Distance(run[i - 1].To, run[i].From));
  }
  return longest;
}

/// Holds `runs` together against the uninterrupted run `whole`.
[[nodiscard]] inline SheetCover CompareSheet(const Pieces& whole, const std::vector<Pieces>& runs) {
  auto wanted = CutStretches({whole});
  const auto cut = CutStretches(runs);
  for (const auto& [record, stretches] : cut) wanted[record];
  SheetCover cover;
  for (const auto& [record, stretches] : wanted) {
    ElementCover element;
    element.Record = record;
    element.Wanted = stretches.Covered(1);
    Stretches all = stretches;
    const auto found = cut.find(record);
    double done = 0;
    if (found != cut.end()) {
      for (const auto& [from, to] : found->second.Parts()) all.Add(from, to);
      done = found->second.Covered(1);
      element.Twice = found->second.Covered(2);
    }
    element.Missing = all.Covered(1) - done;
    element.Foreign = all.Covered(1) - element.Wanted;
    cover.Elements.push_back(element);
  }
  for (const auto& run : runs) cover.LongestJump = std::max(cover.LongestJump, LongestJumpOf(run));
  return cover;
}

/// Travels with the beam off in front of the first cut of a run.
[[nodiscard]] inline int WaysBeforeFirstCut(const Pieces& run) {
  int ways = 0;
  for (const auto& piece : run) {
    if (piece.Cut && piece.Beam) return ways;
    ++ways;
  }
  return ways;
}

/// The first cut of a run with the beam on; an empty piece where there is none.
[[nodiscard]] inline simulator::PathPiece FirstCut(const Pieces& run) {
  for (const auto& piece : run) {
    if (piece.Cut && piece.Beam) return piece;
  }
  return {};
}

/// The pieces of a file of `--path`. A line that was torn off by the end of a program is left out.
[[nodiscard]] inline Pieces ReadPathFile(std::string_view text) {
  Pieces pieces;
  for (const auto line : core::SplitLines(text)) {
    if (!line.starts_with('{') || !line.ends_with('}')) continue;
    const auto after = [&](std::string_view key) {
      const auto at = line.find("\"" + std::string(key) + "\":");
      return line.substr(at == std::string_view::npos ? line.size() : at + key.size() + 3);
    };
    const auto number = [&](std::string_view key) { return core::LeadingNumber(after(key)); };
    const auto point = [&](std::string_view key) {
      std::string_view rest = after(key);
      simulator::Position at;
      for (double simulator::Position::*axis :
           {&simulator::Position::X, &simulator::Position::Y, &simulator::Position::Z}) {
        rest.remove_prefix(std::min(rest.size(), std::size_t{1}));
        at.*axis = core::LeadingNumber(rest);
        rest.remove_prefix(std::min(rest.size(), rest.find_first_of(",]")));
      }
      return at;
    };
    simulator::PathPiece piece;
    piece.Place = {static_cast<int>(number("run")), static_cast<int>(number("line")),
                   static_cast<int>(number("record")), static_cast<int>(number("skip"))};
    piece.Cut = after("kind").starts_with("\"cut\"");
    piece.Approach = after("kind").starts_with("\"approach\"");
    piece.From = point("from");
    piece.To = point("to");
    piece.S0 = number("s0");
    piece.S1 = number("s1");
    piece.Beam = after("beam").starts_with("true");
    pieces.push_back(piece);
  }
  return pieces;
}

}  // namespace torvane::tests

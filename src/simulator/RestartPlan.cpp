#include "simulator/RestartPlan.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "partprogram/Block.h"
#include "partprogram/DrawRecord.h"
#include "partprogram/WordValues.h"
#include "simulator/PathFile.h"

namespace torvane::simulator {

namespace {

namespace RecordCode = partprogram::RecordCode;

constexpr double StartTolerance = 0.002;  // mm; records hold their points to four places
constexpr double TextTolerance = 0.006;   // mm; the block of a rest carries two decimals
constexpr double PointTolerance = 0.01;   // mm
/// Angles of a record are rounded to three places, so points that were worked out from them lie
/// off by this much of a length or radius.
constexpr double AngleTolerance = 3e-5;
constexpr std::size_t ListingSize = 80;

/// The block number of the start line's digits; 0 for none.
int BlockNumberOf(std::string_view fraction) {
  constexpr std::size_t Digits = 5;
  int number = 0;
  for (std::size_t at = 0; at < Digits; ++at) {
    number = number * 10 + (at < fraction.size() ? fraction[at] - '0' : 0);
  }
  return number;
}

/// The slot's program as a restart looks at it.
class Program {
 public:
  Program(const platform::FileSystem& files, std::string_view root, core::Slot slot) {
    whole_ = programmed_.Load(files, core::SlotFile(root, slot, core::Extension::Draw)) &&
             compensated_.Load(files, core::SlotFile(root, slot, core::Extension::Kerf));
    const std::string listing = core::SlotFile(root, slot, core::Extension::Listing);
    if (whole_ && files.FileExists(listing)) ReadListing(files.ReadFile(listing));
  }

  [[nodiscard]] bool Whole() const { return whole_; }
  [[nodiscard]] const std::vector<PathElement>& Elements() const { return programmed_.Elements(); }
  [[nodiscard]] const PathElement* Compensated(const PathElement& element) const {
    return compensated_.OfRecord(element.RecordIndex);
  }
  [[nodiscard]] int LineOf(const PathElement& element) const {
    return compensated_.FirstLineOf(element.RecordIndex);
  }

  /// The N number of line `line` of the listing, from 1; 0 where it has none.
  [[nodiscard]] int NumberOf(int line) const {
    const bool listed = line >= 1 && static_cast<std::size_t>(line) <= numbers_.size();
    return listed ? numbers_[static_cast<std::size_t>(line) - 1] : 0;
  }
  [[nodiscard]] bool HasNumber(int number) const {
    return std::find(numbers_.begin(), numbers_.end(), number) != numbers_.end();
  }
  [[nodiscard]] int ListingLines() const { return static_cast<int>(numbers_.size()); }

  /// The element begins what its block makes, in this lap of the program.
  [[nodiscard]] bool OpensBlock(std::size_t index) const {
    const auto& all = Elements();
    return index == 0 || all[index - 1].BlockNumber != all[index].BlockNumber;
  }

  /// The N number of the block after the element's own, as the program ran: the next record that
  /// another block made, or the next line of the listing after the last record.
  [[nodiscard]] int NumberBehind(std::size_t index) const {
    const auto& all = Elements();
    const int own = all[index].BlockNumber;
    for (std::size_t next = index + 1; next < all.size(); ++next) {
      if (all[next].BlockNumber != own) return NumberOf(all[next].BlockNumber);
    }
    return NumberOf(own + 1);
  }

 private:
  void ReadListing(const std::string& bytes) {
    for (std::size_t at = 0; at + ListingSize <= bytes.size(); at += ListingSize) {
      const partprogram::Block block(std::string_view(bytes).substr(at, ListingSize));
      partprogram::ReadFault fault = partprogram::ReadFault::None;
      const auto word = partprogram::GetWordInteger(block.Text(), "N", &fault);
      const bool number = word.Found && fault == partprogram::ReadFault::None && word.Value > 0;
      numbers_.push_back(number ? static_cast<int>(word.Value) : 0);
    }
  }

  PathFile programmed_;
  PathFile compensated_;
  std::vector<int> numbers_;
  bool whole_ = false;
};

bool Near(const Position& a, const Position& b, double tolerance) {
  return std::abs(a.X - b.X) <= tolerance && std::abs(a.Y - b.Y) <= tolerance;
}

double Radius(const PathElement& element) {
  return std::hypot(element.Start.X - element.Centre.X, element.Start.Y - element.Centre.Y);
}

/// The element is the one whose rest the text gives.
bool IsSplit(const PathElement& element, const RestartText& text) {
  const RestElement& rest = *text.Rest;
  if (element.Code != (rest.Arc ? RecordCode::ArcProfile : RecordCode::LineProfile)) return false;
  const Segment path = element.Path();
  const double slack = AngleTolerance * (rest.Arc ? Radius(element) : path.Length());
  if (!Near(element.End, rest.End, TextTolerance + slack)) return false;
  const Position centre{text.At.X + rest.Centre.X, text.At.Y + rest.Centre.Y, 0};
  if (rest.Arc && !Near(element.Centre, centre, TextTolerance + slack)) return false;
  return Near(path.At(path.NearestDistance(text.At)), text.At, PointTolerance + slack);
}

using Candidates = std::vector<std::size_t>;

template <typename Test>
Candidates Where(const Program& program, const Test& test) {
  Candidates found;
  for (std::size_t i = 0; i < program.Elements().size(); ++i) {
    if (test(i)) found.push_back(i);
  }
  return found;
}

/// Those that pass; all where none does.
template <typename Test>
Candidates Prefer(const Candidates& all, const Test& test) {
  Candidates passed;
  std::copy_if(all.begin(), all.end(), std::back_inserter(passed), test);
  return passed.empty() ? all : passed;
}

Candidates SplitCandidates(const Program& program, const RestartText& text, int number) {
  return Where(program, [&](std::size_t i) {
    return IsSplit(program.Elements()[i], text) && program.NumberBehind(i) == number;
  });
}

/// Where the program enters what block `line` makes. A block that makes nothing stands for the next
/// one that does.
bool Enters(const Program& program, std::size_t index, int line) {
  const int block = program.Elements()[index].BlockNumber;
  if (block < line) return false;
  return index == 0 || program.Elements()[index - 1].BlockNumber < line;
}

Candidates NumberedCandidates(const Program& program, int number) {
  Candidates found = Where(program, [&](std::size_t i) {
    return program.OpensBlock(i) && program.NumberOf(program.Elements()[i].BlockNumber) == number;
  });
  for (int line = 1; found.empty() && line <= program.ListingLines(); ++line) {
    if (program.NumberOf(line) != number) continue;
    found = Where(program, [&](std::size_t i) { return Enters(program, i, line); });
  }
  return found;
}

Candidates BlockCandidates(const Program& program, const RestartText& text, int number) {
  const auto startsThere = [&](std::size_t i) {
    return Near(program.Elements()[i].Start, text.At, StartTolerance);
  };
  if (number > 0) return Prefer(NumberedCandidates(program, number), startsThere);
  const auto open =
      Where(program, [&](std::size_t i) { return startsThere(i) && program.OpensBlock(i); });
  return Prefer(open, [&](std::size_t i) {
    return program.NumberOf(program.Elements()[i].BlockNumber) == 0;
  });
}

/// Of several as near the last.
std::size_t NearestTo(const Program& program, const Candidates& candidates, int line) {
  const auto away = [&](std::size_t i) {
    return std::abs(program.LineOf(program.Elements()[i]) - line);
  };
  std::size_t best = candidates.front();
  for (const std::size_t i : candidates) {
    if (away(i) <= away(best)) best = i;
  }
  return best;
}

/// The split point projected on the compensated element; its start where the whole block remains.
double Along(const PathElement& programmed, const PathElement& compensated, const Position& at) {
  const double slack = AngleTolerance * programmed.Path().Length();
  if (Near(programmed.Start, at, PointTolerance + slack)) return 0;
  return compensated.Path().NearestDistance(at);
}

}  // namespace

std::optional<RestartPoint> FindRestartPoint(const platform::FileSystem& files,
                                             std::string_view root, const RestartQuery& query) {
  const Program program(files, root, query.Slot);
  if (!program.Whole()) return std::nullopt;
  const int number = BlockNumberOf(query.Fraction);
  if (number > 0 && !program.HasNumber(number)) return std::nullopt;
  const auto candidates = query.Text.Rest ? SplitCandidates(program, query.Text, number)
                                          : BlockCandidates(program, query.Text, number);
  if (candidates.empty()) return std::nullopt;
  const auto& element = program.Elements()[NearestTo(program, candidates, query.ReachedLine)];
  const PathElement* compensated = program.Compensated(element);
  if (compensated == nullptr) return std::nullopt;
  RestartPoint point{program.LineOf(element), 0};
  if (query.Text.Rest) point.Along = Along(element, *compensated, query.Text.At);
  return point;
}

}  // namespace torvane::simulator

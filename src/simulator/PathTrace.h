// The path that the head has run, piece by piece, with the record that each piece belongs to.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "simulator/Kinematics.h"

namespace torvane::simulator {

/// What a run is at, beside its motion.
struct PathPlace {
  int Run = 0;     ///< cycles started since switching on, from 1
  int Line = 0;    ///< table line
  int Record = 0;  ///< number in the slot's ".krw"; 0 where the machine moves by the rows alone
  int Skip = 0;    ///< block skip level of the row

  friend bool operator==(const PathPlace&, const PathPlace&) = default;
};

/// A stretch of path run without interruption, mm.
struct PathPiece {
  PathPlace Place;
  bool Cut = false;       ///< at the feed of a row; a travel at the rapid rate otherwise
  bool Approach = false;  ///< the way to the start of the record's element
  Position From;
  Position To;
  double S0 = 0;  ///< along the compensated element, from its start; along the way of an approach
  double S1 = 0;
  bool Beam = false;
};

/// One JSON object: run, line, record, kind ("cut", "travel" or "approach"), from and to as
/// [x,y,z], s0, s1, beam, skip. Without a line end.
[[nodiscard]] std::string PathPieceJson(const PathPiece& piece);

using PathListener = std::function<void(const PathPiece&)>;

/// Joins the steps of a run to pieces. A piece is reported when the next one begins, or at Flush.
class PathTrace {
 public:
  void SetListener(PathListener listener) { listener_ = std::move(listener); }
  [[nodiscard]] bool Wanted() const { return static_cast<bool>(listener_); }

  /// A step of the run; one that goes on where the last one ended lengthens the piece.
  void Add(const PathPiece& step);
  void Flush();

 private:
  PathListener listener_;
  std::optional<PathPiece> open_;
};

}  // namespace torvane::simulator

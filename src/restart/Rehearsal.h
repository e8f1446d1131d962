// A restart on paper: everything that it would gather, write, send and cut, without a machine.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"
#include "platform/Clock.h"
#include "restart/GatherModule.h"
#include "restart/GatherState.h"
#include "restart/GatherWalk.h"
#include "restart/RestartEntry.h"
#include "restart/RestartOperation.h"

namespace torvane::restart {

/// The split of a visual restart.
struct RehearsedSplit {
  std::int16_t Record = 0;  ///< of ".krw"
  double Step = 0;          ///< mm, or degrees of an arc
  double Remaining = 0;     ///< the same, without sign
};

struct Rehearsal {
  bool Visual = false;
  std::int16_t Block = 0;     ///< asked for, or of the element
  std::int16_t SubBlock = 0;  ///< likewise
  std::string Text;           ///< the line of the listing
  bool Met = false;
  GatherState State;
  GatherState NextState;
  RestartLineSet Lines;
  std::optional<RehearsedSplit> Split;
  std::optional<RestartEntry> Entry;
  std::vector<GatherFault> Faults;
  std::string GatherText;  ///< Gather.txt
  std::vector<std::string> Warnings;
};

/// A converted program. Everything that is pointed to must outlive the rehearser.
struct RehearsedProgram {
  std::string_view Converted;  ///< ".cnv"
  GatherBodies Bodies;
  RecordPair Records;
  std::span<const std::string> Listing;  ///< ".rnd", trimmed
  std::string_view ProgramName;
  std::string_view DirectoryName;
  core::Slot Slot;
  std::int16_t TableSent = 0;
  const core::MachineData* Machine = nullptr;
  platform::LocalTime Time;
};

/// One walk serves any number of rehearsals: it keeps the state at every block where it first comes
/// by.
class Rehearser {
 public:
  explicit Rehearser(RehearsedProgram program);

  /// A restart at a line of the main file, or at a line of a subroutine called there.
  [[nodiscard]] Rehearsal AtBlock(std::int16_t block, std::int16_t subBlock) const;

  /// A restart inside record `number` of ".drw", a line or an arc, of which `remaining` (mm or
  /// degrees by magnitude) is still to be cut; all of it without a value.
  [[nodiscard]] Rehearsal AtRecord(std::int16_t number, std::optional<double> remaining) const;

  /// The record of ".drw" of a record of ".krw"; 0 where it is no line or arc of the program.
  [[nodiscard]] std::int16_t CutRecord(std::int16_t kerfRecord) const;

 private:
  /// What the walk knew when it first came to a block.
  struct Stop {
    GatherState State;
    std::size_t Faults = 0;
  };
  using Place = std::pair<std::int16_t, std::int16_t>;

  void Walk();
  [[nodiscard]] const Stop& At(std::int16_t block, std::int16_t subBlock, bool& met) const;
  [[nodiscard]] GatherState Gather(const GatherTarget& target, bool& met) const;
  [[nodiscard]] std::string Listed(std::int16_t block) const;
  void Finish(Rehearsal& rehearsal, const GatherTarget& target,
              const partprogram::DrawRecord& split) const;
  void AddWarnings(Rehearsal& rehearsal) const;

  RehearsedProgram program_;
  std::map<Place, Stop> stops_;
  Stop end_;
  std::vector<GatherFault> faults_;
  std::int16_t lines_ = 0;               ///< of the main file
  std::map<std::int16_t, int> numbers_;  ///< how many lines of the listing give each N
};

}  // namespace torvane::restart

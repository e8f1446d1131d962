// The gather pass: in what state the machine would be at a block. The controller does not know it,
// as it only ever received the rows of a table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "core/MachineData.h"
#include "core/Slot.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "restart/GatherState.h"
#include "restart/GatherWalk.h"

namespace torvane::restart {

/// The block that a walk goes to.
struct GatherTarget {
  std::string_view Text;      ///< the block as listed; only its word N is read
  std::int16_t Block = 0;     ///< line of the main file
  std::int16_t SubBlock = 0;  ///< line of the subroutine, 0 in the main file
};

/// What a walk to a block found out.
struct GatherResult {
  GatherState State;
  bool Met = false;    ///< the target itself was reached, not the end of the file
  std::string Faults;  ///< the entries of Gather.txt
};

/// Word N of a block as the controller is given it: by a search of the text, so that the N of a
/// word counts too. 0 without one, and for a number that is negative or needs more than 16 bits.
[[nodiscard]] std::int16_t BlockNumberOf(std::string_view blockText);

/// Walks to the target, which is not carried out itself. A target that is never met leaves the
/// state at the end of the walk, and reads as gathered all the same.
[[nodiscard]] GatherResult WalkToBlock(GatherWalk& walk, const GatherTarget& target);

/// The name that a restart's further text has: Gather.rep in `RootDirectory`.
[[nodiscard]] std::string GatherTextFile(const core::DirectorySet& directories);

/// The subroutines of a slot, read as they are called, each noted before it is opened. `files` and
/// `directories` must outlive them.
[[nodiscard]] GatherBodies SlotBodies(platform::FileSystem& files,
                                      const core::DirectorySet& directories, core::Slot slot);

/// The files of a gather.
class GatherModule {
 public:
  GatherModule(platform::FileSystem& files, const core::DirectorySet& directories,
               const core::MachineData& machine, const platform::Clock& clock)
      : files_(files), directories_(directories), machine_(machine), clock_(clock) {}

  /// Walks the slot's ".cnv" to the target and puts the state there into `result`. Leaves
  /// Gather.txt and Gather.rep. A required file that is missing is a RuntimeFault, and Gather.txt
  /// then holds what was found up to there.
  void GatherToBlock(std::string_view programName, std::string_view directoryName, core::Slot slot,
                     const GatherTarget& target, GatherState& result);

 private:
  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
  const core::MachineData& machine_;
  const platform::Clock& clock_;
};

}  // namespace torvane::restart

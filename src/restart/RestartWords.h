// What a restart will do, in plain sentences: for the rehearsal, and for the operator before
// anything moves.
#pragma once

#include <string>
#include <vector>

#include "restart/Rehearsal.h"

namespace torvane::restart {

/// Where the head goes with the beam off, what is cut first, and what is not gathered. Lengths in
/// mm, two places. `firstCut` is the record that is cut first, or null.
[[nodiscard]] std::vector<std::string> RestartWords(const Rehearsal& rehearsal,
                                                    const partprogram::DrawRecord* firstCut);

/// The words and the marks of the restart that was chosen, from the files of the slot in force.
struct RestartOutlook {
  std::vector<std::string> Words;
  std::optional<RestartEntry> Entry;
};
[[nodiscard]] RestartOutlook OutlookOf(platform::FileSystem& files, const core::System& system,
                                       const RestartStates& states,
                                       const partprogram::DrawRecord& splitRecord);

/// The record that is cut first from an entry on; null where none is.
[[nodiscard]] const partprogram::DrawRecord* FirstCut(const RecordPair& records,
                                                      const std::optional<RestartEntry>& entry);

}  // namespace torvane::restart

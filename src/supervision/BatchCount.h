// The batch counters as the operator sets them.
#pragma once

#include <optional>

#include "core/System.h"
#include "link/Downloads.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// The record of what was entered: parts a sheet, parts wanted, sheets done, each rounded to a
/// whole number. Nothing for less than one part a sheet. Without parts wanted there are no sheets
/// to cut; more sheets done than wanted leave a count below 0.
[[nodiscard]] std::optional<core::Batch> BatchOf(double partsPerSheet, double partsRequired,
                                                 double sheetsCompleted);

/// Puts the counters into the slot in force, its file and the controller, in this order. Waits.
/// False where the file can not be written: the controller counts all the same.
[[nodiscard]] bool StoreBatch(core::System& system, platform::FileSystem& files,
                              link::Downloads& downloads, const core::Batch& batch);

}  // namespace torvane::supervision

// The sheets that the controller has counted, out of the readings of its batch counters.
#pragma once

#include <cstdint>
#include <optional>

#include "core/Slot.h"
#include "supervision/PollObserver.h"

namespace torvane::supervision {

/// What a good reading finds since the last one.
struct FoundSheets {
  std::int64_t More = 0;  ///< below 0 where the controller has gone back
  bool Owed = false;      ///< they may be those of the run before
};

/// Follows the counters of both slots. What a selection or the operator sets is no sheet, and a
/// reading in which an exchange has failed says nothing.
class SheetCounter {
 public:
  /// Nothing where the reading is not good. `nowMs`: of the loop.
  std::optional<FoundSheets> Take(const BatchReading& reading, std::int64_t nowMs);
  /// A run of the slot has ended, and nobody knows yet if its sheet was counted.
  void Owe(core::Slot slot, std::int64_t nowMs) { slots_[slot].OwedMs = nowMs; }

 private:
  struct Counters {
    std::optional<std::int32_t> Counted;  ///< sheets completed, as last known
    std::int32_t Shown = 0;               ///< the same in the shared record
    bool Bad = false;                     ///< an exchange of the last reading has failed
    std::optional<std::int64_t> OwedMs;   ///< when the run has ended whose sheet is owed

    void Set(std::int32_t sheets);
    bool TakeOwed(bool found, std::int64_t nowMs);
  };

  core::BySlot<Counters> slots_;
};

}  // namespace torvane::supervision

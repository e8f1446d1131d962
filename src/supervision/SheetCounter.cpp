#include "supervision/SheetCounter.h"

#include <utility>

namespace torvane::supervision {

namespace {

/// A sheet may be counted so long after the run that has completed it, ms.
constexpr std::int64_t LateSheetMs = 2000;

}  // namespace

/// Somebody has set the counters: what is owed is lost in them.
void SheetCounter::Counters::Set(std::int32_t sheets) {
  Counted = sheets;
  OwedMs.reset();
}

/// Whether sheets that a good reading finds may be those of the run before. They are found once;
/// where it finds none when the time for that is over, there were none.
bool SheetCounter::Counters::TakeOwed(bool found, std::int64_t nowMs) {
  if (!OwedMs) return false;
  if (found || nowMs - *OwedMs >= LateSheetMs) OwedMs.reset();
  return found;
}

std::optional<FoundSheets> SheetCounter::Take(const BatchReading& reading, std::int64_t nowMs) {
  Counters& at = slots_[reading.Slot];
  const std::int32_t before = reading.Before.SheetsCompleted;
  const std::int32_t read = reading.Read.SheetsCompleted;
  if (!at.Counted || before != at.Shown) at.Set(before);
  at.Shown = read;
  const bool badBefore = std::exchange(at.Bad, !reading.Good);
  if (!reading.Good) return std::nullopt;
  // A bad reading leaves zeros in the shared record: a selection that sets 0 shows in the next
  // alone.
  if (badBefore && read < *at.Counted) at.Set(0);
  const std::int64_t more = std::int64_t{read} - *at.Counted;
  at.Counted = read;
  return FoundSheets{more, at.TakeOwed(more > 0, nowMs)};
}

}  // namespace torvane::supervision

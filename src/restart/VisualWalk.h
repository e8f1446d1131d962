// The walk over the records on view, by which the operator chooses the element of a visual restart.
// Pure functions over the records of ".drw"; a record's number counts from 1, the header is 1.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "core/PlotSettings.h"
#include "partprogram/DrawRecord.h"

namespace torvane::restart {

/// The records of a plot file: how many there are, and each by its number. Nothing past the end of
/// the file.
struct PlotRecords {
  std::int16_t Count = 0;
  std::function<std::optional<partprogram::DrawRecord>(std::int16_t number)> Read;
};

inline constexpr std::int16_t NoRecord = -1;

/// Record numbers; NoRecord: none.
struct VisualState {
  std::int16_t VisualFirst = NoRecord;     ///< first record on view
  std::int16_t VisualLast = NoRecord;      ///< last record on view
  std::int16_t VisualPrevious = NoRecord;  ///< highlighted before the present one
  std::int16_t VisualCurrent = NoRecord;   ///< highlighted
  [[nodiscard]] bool operator==(const VisualState&) const = default;
};

/// True if one of four points, the corners of the inner box and the ends, lies strictly inside the
/// view. A record whose points were never set has them at the datum.
[[nodiscard]] bool RecordInView(const partprogram::DrawRecord& record, const core::PlotView& view);

/// Every record counts from 2 on, whatever it stands for. The first one on view is highlighted; all
/// are NoRecord where none is.
[[nodiscard]] VisualState BeginWalk(const PlotRecords& records, const core::PlotView& view);

/// A key of the walk.
enum class WalkKey : std::uint8_t { First, Previous, Next, Last };

/// The record that a key leads to: round the records on view, the present one where there is no
/// other.
[[nodiscard]] std::int16_t Walk(const PlotRecords& records, const core::PlotView& view,
                                const VisualState& state, WalkKey key);

/// The record that a click at (x, y), mm, means: of those whose outer box holds the point the one
/// with the nearest of its six points, ties to the earlier. Nothing where no box holds it.
[[nodiscard]] std::optional<std::int16_t> PickRecord(const PlotRecords& records, float x, float y);

/// Where the state for a restart is gathered: the block after the one that made a record.
struct NextBlock {
  std::int16_t BlockNumber = 0;
  std::int16_t SubBlock = 0;
};

/// The first record after `number` that another line of the main file made: after a whole call for
/// a record inside a subroutine. Past the end of the file the line after the chosen one.
[[nodiscard]] NextBlock BlockAfter(const PlotRecords& records, std::int16_t number,
                                   const partprogram::DrawRecord& chosen);

}  // namespace torvane::restart

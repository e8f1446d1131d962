// Where the controller goes on: the record, its table line, and the point on the compensated path.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "core/General.h"
#include "partprogram/DrawRecord.h"

namespace torvane::restart {

/// mm. Records are numbered from 1, the header being 1.
struct RestartEntry {
  std::int16_t DrawRecord = 0;  ///< of ".drw"
  std::int16_t Record = 0;      ///< of ".krw"
  std::int16_t TableLine = 0;   ///< first table line of the record
  core::Vector2 Programmed;     ///< where it begins, or the split point
  core::Vector2 Compensated;    ///< the same on the compensated path
  std::int16_t Code = 0;
};

/// ".drw" and ".krw" with their headers.
struct RecordPair {
  std::span<const partprogram::DrawRecord> Draw;
  std::span<const partprogram::DrawRecord> Kerf;
};

/// The first record that a block made, or the next block that made one. Of several laps the first
/// that begins at `position` counts. `subBlock` 0: the main file's line, calls included. Nothing
/// where no block from there on made a record.
[[nodiscard]] std::optional<RestartEntry> EntryOfBlock(const RecordPair& records,
                                                       std::int16_t block, std::int16_t subBlock,
                                                       core::Vector2 position);

/// Record `number` of ".drw" from a split point on: the point projected on the compensated element,
/// or its start where the `whole` element remains.
[[nodiscard]] std::optional<RestartEntry> EntryOfSplit(const RecordPair& records,
                                                       std::int16_t number,
                                                       core::Vector2 splitPoint, bool whole);

/// The nearest point of a line or an arc; the start of any other record.
[[nodiscard]] core::Vector2 ProjectOn(const partprogram::DrawRecord& element, core::Vector2 point);

}  // namespace torvane::restart

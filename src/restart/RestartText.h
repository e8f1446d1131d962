// Every text of a restart: the file that is left, the lines for the controller, the labels
// for the operator.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Slot.h"
#include "partprogram/DrawRecord.h"
#include "restart/GatherState.h"

namespace torvane::restart {

/// What Restart.tbx is made of.
struct RestartContent {
  const GatherState& State;
  std::string_view GatherText;                 ///< Gather.rep
  const partprogram::DrawRecord& SplitRecord;  ///< rest of a split element, turned about, or blank
  std::int16_t TableSent = 0;
  std::int16_t YDirection = 0;
};

/// The lines of Restart.tbx, in order. `text` goes in front of a G95 line of the gather text.
[[nodiscard]] std::vector<std::string> RestartLines(const RestartContent& content,
                                                    std::string_view text = {});

/// True for a line that goes to the controller: one that holds "TABLE". The others stay in the file
/// as a record of the restart.
[[nodiscard]] bool GoesToController(std::string_view line);

/// A block number as the fraction of the start line, a hundred-thousandth for each: ".00123" for
/// 123, ".001" for 100, nothing for 0.
[[nodiscard]] std::string BlockFraction(std::int16_t blockNo);

/// "B1.00123R": the controller goes on at the block.
[[nodiscard]] std::string StartLine(core::Slot slot, std::int16_t blockNo);

/// What RestartForm shows.
struct RestartLabels {
  std::array<std::string, 2> ToolLabel;
  std::array<std::string, 4> PositnLabel;
  std::string HitsLabel;
};

/// `toolName` is that of the profile tool.
[[nodiscard]] RestartLabels LabelsOf(const GatherState& state, std::string_view toolName);

}  // namespace torvane::restart

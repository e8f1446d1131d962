// IO.msg and Logic.msg: the texts of the machine's conditions.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace torvane::core {

/// By code 1 to 64; 0 is empty.
using IoMessageTable = std::array<std::string, 65>;
/// By bit 0 to 31.
using LogicMessageTable = std::array<std::string, 32>;

/// Both tables are emptied first. Reading stops, without a word, at the first line that is empty,
/// the marker, without its comma or with a number out of range, and before the last line of the
/// file; what was read is kept.
void ReadIoMessages(std::string_view text, IoMessageTable& messages);
/// The same; here the text ends at a second comma, which must be there.
void ReadLogicMessages(std::string_view text, LogicMessageTable& messages);

}  // namespace torvane::core

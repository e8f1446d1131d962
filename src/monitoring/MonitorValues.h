// What a monitoring client is told of the machine: named items, made of what the poll has read.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/System.h"

namespace torvane::monitoring {

enum class ItemKind { Value, Condition };

struct MonitorItem {
  std::string_view Key;  ///< the name of the data item in the device file
  ItemKind Kind = ItemKind::Value;
};

/// Every item, in the order of its telling.
inline constexpr std::array<MonitorItem, 16> MonitorItems = {{
    {"avail"},
    {"mode"},
    {"execution"},
    {"program"},
    {"line"},
    {"Xact"},
    {"Yact"},
    {"Zact"},
    {"path_feedrate"},
    {"feed_override"},
    {"part_count"},
    {"part_target"},
    {"sheet_count"},
    {"sheet_target"},
    {"sheet_remaining"},
    {"messages", ItemKind::Condition},
}};

/// One message in force, by the code under which it comes and goes.
struct ActiveMessage {
  std::string Code;
  std::string Text;

  friend bool operator==(const ActiveMessage&, const ActiveMessage&) = default;
};

/// All items at one moment.
struct MonitorSnapshot {
  bool Available = false;  ///< false: nothing is known, and the rest means nothing
  std::array<std::string, MonitorItems.size()> Values;  ///< fields, empty for conditions
  std::vector<ActiveMessage> Messages;                  ///< none: all is well

  friend bool operator==(const MonitorSnapshot&, const MonitorSnapshot&) = default;
};

/// Takes the shared records after a tick. It keeps what the execution was, to tell a program that
/// ran to its end from one that was stopped.
class MonitorReader {
 public:
  /// `messages` are those that a screen lists at the moment; nothing where none does.
  [[nodiscard]] MonitorSnapshot Read(const core::System& system,
                                     std::optional<std::vector<ActiveMessage>> messages);

 private:
  [[nodiscard]] std::string_view Execution(const core::System& system);

  std::string_view execution_ = "READY";
  std::string program_;  ///< the one that `execution_` speaks of
};

}  // namespace torvane::monitoring

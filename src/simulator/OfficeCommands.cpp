#include "simulator/OfficeCommands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/TransferFile.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

namespace {

/// A word of the office with what follows it.
struct Order {
  OfficePeer& Office;
  const platform::FileSystem& Files;
  std::string_view Argument;
};

std::optional<std::size_t> Count(std::string_view text) {
  std::size_t value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

/// Cuts the first word off.
std::string_view TakeWord(std::string_view& text) {
  text = core::Trim(text);
  const std::string_view word = text.substr(0, text.find(' '));
  text = core::Trim(text.substr(word.size()));
  return word;
}

OperatorAnswer Send(const Order& order) {
  std::vector<std::string> programs;
  std::string_view rest = order.Argument;
  try {
    while (!rest.empty()) programs.push_back(order.Files.ReadFile(TakeWord(rest)));
  } catch (const platform::RuntimeFault& fault) {
    return {false, fault.what()};
  }
  if (programs.empty()) return {false, "send takes one file or more"};
  order.Office.Send(programs);
  return {};
}

OperatorAnswer Endless(const Order& order) {
  try {
    order.Office.SendEndless(order.Files.ReadFile(order.Argument));
  } catch (const platform::RuntimeFault& fault) {
    return {false, fault.what()};
  }
  return {};
}

OperatorAnswer Chunk(const Order& order) {
  std::string_view rest = order.Argument;
  const auto bytes = Count(TakeWord(rest));
  const auto pause = rest.empty() ? 0 : Count(rest);
  if (!bytes || !pause) return {false, "chunk takes bytes and a pause in ms, such as chunk 16 50"};
  order.Office.Manner.ChunkBytes = *bytes;
  order.Office.Manner.PauseMs = static_cast<double>(*pause);
  return {};
}

/// A number into a field of the manner.
OperatorAnswer SetCount(const Order& order, std::size_t OfficeManner::*field) {
  const auto count = Count(order.Argument);
  if (!count) return {false, "that takes a number from 0 up"};
  order.Office.Manner.*field = *count;
  return {};
}

OperatorAnswer StopAfter(const Order& order) { return SetCount(order, &OfficeManner::StopAfter); }
OperatorAnswer Nuls(const Order& order) { return SetCount(order, &OfficeManner::NulEvery); }

/// "on" or "off"; nothing for any other word.
std::optional<bool> Switch(std::string_view text) {
  if (text == "on") return true;
  if (text == "off") return false;
  return std::nullopt;
}

OperatorAnswer WithSwitch(const Order& order, void (*set)(OfficePeer& office, bool on)) {
  const auto on = Switch(order.Argument);
  if (!on) return {false, "that takes on or off"};
  set(order.Office, *on);
  return {};
}

void SetLine(OfficePeer& office, bool platform::PortLines::*line, bool on) {
  platform::PortLines lines = office.Lines();
  lines.*line = on;
  office.SetLines(lines);
}

OperatorAnswer Baud(const Order& order) {
  const auto baud = Count(order.Argument);
  if (!baud) return {false, "baud takes bits per second, 0 for no limit"};
  order.Office.SetBaud(static_cast<double>(*baud));
  return {};
}

struct CommandRow {
  std::string_view Word;
  std::string_view Help;
  OperatorAnswer (*CarryOut)(const Order& order);
};

constexpr std::array<CommandRow, 24> Rows = {{
    {"send", "FILE...  one write of these programs", Send},
    {"endless", "FILE  its lines again and again, until halt", Endless},
    {"codes", "COUNT,CODE,...  these characters",
     [](const Order& order) {
       order.Office.SendRaw(core::ReadCodeString(order.Argument));
       return OperatorAnswer{};
     }},
    {"return", "sends back all that has come, as it came",
     [](const Order& order) {
       order.Office.SendBack();
       return OperatorAnswer{};
     }},
    {"halt", "drops what has not gone",
     [](const Order& order) {
       order.Office.Halt();
       return OperatorAnswer{};
     }},
    {"directory", "TEXT  of the header; nothing: none",
     [](const Order& order) {
       order.Office.Manner.Directory = order.Argument;
       return OperatorAnswer{};
     }},
    {"name", "TEXT  of the header; nothing: none",
     [](const Order& order) {
       order.Office.Manner.Name = order.Argument;
       return OperatorAnswer{};
     }},
    {"preamble", "on|off",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) { office.Manner.Preamble = on; });
     }},
    {"postamble", "on|off",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) { office.Manner.Postamble = on; });
     }},
    {"chunk", "BYTES [MS]  pieces with a pause between; 0: all at once", Chunk},
    {"stop-after", "BYTES  no more of a write goes out; 0: all of it", StopAfter},
    {"nuls", "BYTES  a NUL after so many; 0: none", Nuls},
    {"baud", "RATE  of what the office sends; 0: no limit", Baud},
    {"ready", "sends the start character",
     [](const Order& order) {
       order.Office.SendReady();
       return OperatorAnswer{};
     }},
    {"hold", "sends XOFF",
     [](const Order& order) {
       order.Office.AskToHold(true);
       return OperatorAnswer{};
     }},
    {"go", "sends XON",
     [](const Order& order) {
       order.Office.AskToHold(false);
       return OperatorAnswer{};
     }},
    {"deaf", "on|off  reads nothing",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) { office.SetDeaf(on); });
     }},
    {"cts", "on|off",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) {
         SetLine(office, &platform::PortLines::Cts, on);
       });
     }},
    {"dsr", "on|off",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) {
         SetLine(office, &platform::PortLines::Dsr, on);
       });
     }},
    {"carrier", "on|off",
     [](const Order& order) {
       return WithSwitch(order, [](OfficePeer& office, bool on) {
         SetLine(office, &platform::PortLines::Carrier, on);
       });
     }},
    {"break", "holds the line for a moment",
     [](const Order& order) {
       order.Office.SendBreak();
       return OperatorAnswer{};
     }},
    {"state", "what has come and gone",
     [](const Order& order) {
       return OperatorAnswer{false, order.Office.Describe()};
     }},
    {"help", "",
     [](const Order&) {
       return OperatorAnswer{false, OfficeHelp()};
     }},
    {"quit", "",
     [](const Order&) {
       return OperatorAnswer{true, {}};
     }},
}};

}  // namespace

OperatorAnswer CarryOutOfficeCommand(std::string_view line, OfficePeer& office,
                                     const platform::FileSystem& files) {
  std::string_view rest = line;
  const std::string_view word = TakeWord(rest);
  if (word.empty()) return {};
  const auto* const row = std::find_if(Rows.begin(), Rows.end(), [&](const CommandRow& candidate) {
    return candidate.Word == word;
  });
  if (row == Rows.end()) return {false, OfficeHelp(), false};
  return row->CarryOut({office, files, rest});
}

std::string OfficeHelp() {
  std::string text = "commands:";
  for (const CommandRow& row : Rows) {
    text.append("\n  ").append(row.Word);
    if (!row.Help.empty()) text.append(" ").append(row.Help);
  }
  return text;
}

}  // namespace torvane::simulator

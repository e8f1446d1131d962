#include "monitoring/ShdrText.h"

#include <array>
#include <cstdio>
#include <ctime>

#include "core/General.h"

namespace torvane::monitoring {

namespace {

constexpr char Divider = '|';
constexpr std::string_view Ping = "* PING";

void AppendUtf8(std::string& out, unsigned char byte) {
  if (byte < 0x80) {
    out += static_cast<char>(byte);
  } else {
    out += static_cast<char>(0xC0U | (byte >> 6U));
    out += static_cast<char>(0x80U | (byte & 0x3FU));
  }
}

}  // namespace

std::string TimestampText(std::int64_t wallMs) {
  constexpr std::int64_t MsPerSecond = 1000;
  std::int64_t seconds = wallMs / MsPerSecond;
  std::int64_t rest = wallMs % MsPerSecond;
  if (rest < 0) {
    rest += MsPerSecond;
    --seconds;
  }
  const auto moment = static_cast<std::time_t>(seconds);
  std::tm utc{};
  gmtime_r(&moment, &utc);
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ",
                                   utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour,
                                   utc.tm_min, utc.tm_sec, static_cast<int>(rest));
  return {text.data(), static_cast<std::size_t>(length)};
}

std::string Field(std::string_view text) {
  const bool quoted = text.find(Divider) != std::string_view::npos;
  std::string field;
  field.reserve(text.size() + 8);
  if (quoted) field += '"';
  for (const char character : core::Trim(text)) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < ' ' || byte == 0x7F) {
      field += ' ';
      continue;
    }
    if (character == Divider) field += '\\';
    AppendUtf8(field, byte);
  }
  if (quoted) field += '"';
  return field;
}

std::string ItemLine(std::string_view timestamp, std::string_view key, std::string_view value) {
  std::string line;
  line.reserve(timestamp.size() + key.size() + value.size() + 3);
  line.append(timestamp).append(1, Divider).append(key).append(1, Divider).append(value);
  return line.append(1, '\n');
}

bool IsPing(std::string_view line) { return core::Trim(line) == Ping; }

std::string PongLine(int heartbeatMs) { return "* PONG " + std::to_string(heartbeatMs) + "\n"; }

}  // namespace torvane::monitoring

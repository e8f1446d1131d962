#include "toolkit/SerialSettings.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace torvane::toolkit {

namespace {

constexpr int HighestBaud = 4000000;

std::string_view Trimmed(std::string_view text) {
  const auto from = text.find_first_not_of(" \t");
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

std::vector<std::string_view> Fields(std::string_view text) {
  std::vector<std::string_view> fields;
  while (true) {
    const auto comma = text.find(',');
    fields.push_back(Trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return fields;
    text.remove_prefix(comma + 1);
  }
}

std::optional<int> Whole(std::string_view text, int least, int most) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (value < least || value > most) return std::nullopt;
  return value;
}

/// A bare name that nothing here has is left to the serial library, which looks for it in /dev.
std::string FromHere(const std::string& device) {
  namespace fs = std::filesystem;
  std::error_code fault;
  const bool here =
      device.find('/') != std::string::npos || fs::exists(fs::symlink_status(device, fault));
  if (device.empty() || !here) return device;
  const fs::path whole = fs::absolute(device, fault);
  return fault ? device : whole.string();
}

}  // namespace

std::optional<SerialSettings> ParseSettings(std::string_view text) {
  const auto fields = Fields(text);
  if (fields.size() != 4 || fields[1].size() != 1) return std::nullopt;
  SerialSettings settings;
  const auto baud = Whole(fields[0], 1, HighestBaud);
  const auto dataBits = Whole(fields[2], 5, 8);
  const char parity = fields[1][0];
  settings.Parity = parity >= 'a' && parity <= 'z' ? static_cast<char>(parity - 'a' + 'A') : parity;
  const bool known = std::string_view("NEOMS").find(settings.Parity) != std::string_view::npos;
  if (!baud || !dataBits || !known) return std::nullopt;
  settings.Baud = *baud;
  settings.DataBits = *dataBits;
  if (fields[3] == "1") {
    settings.StopBits = 1;
  } else if (fields[3] == "1.5") {
    settings.StopBits = 1.5;
  } else if (fields[3] == "2") {
    settings.StopBits = 2;
  } else {
    return std::nullopt;
  }
  return settings;
}

std::string DeviceOf(int number, const DeviceMap& devices) {
  if (number < 1) return {};
  if (const auto given = devices.find(number); given != devices.end())
    return FromHere(given->second);
#ifdef _WIN32
  return "COM" + std::to_string(number);
#else
  return "/dev/ttyS" + std::to_string(number - 1);
#endif
}

}  // namespace torvane::toolkit

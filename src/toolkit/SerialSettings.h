// The settings text of a port, and the device behind a port number.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace torvane::toolkit {

/// Taken from a text such as "9600,N,8,1": baud, parity (N, E, O, M or S), data bits (5 to 8), stop
/// bits (1, 1.5 or 2), blanks around each allowed.
struct SerialSettings {
  int Baud = 9600;
  char Parity = 'N';
  int DataBits = 8;
  double StopBits = 1;
  bool operator==(const SerialSettings&) const = default;
};

/// Nothing when a field is missing or out of range.
[[nodiscard]] std::optional<SerialSettings> ParseSettings(std::string_view text);

/// Devices by port number, from "--device n=PATH".
using DeviceMap = std::map<int, std::string>;

/// The device of a port: the map's, a path from the working directory on or a name of /dev; else
/// "COMn" on Windows and "/dev/ttyS<n-1>" elsewhere; empty for a number below 1.
[[nodiscard]] std::string DeviceOf(int number, const DeviceMap& devices);

}  // namespace torvane::toolkit

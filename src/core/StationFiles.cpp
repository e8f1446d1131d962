#include "core/StationFiles.h"

#include <array>
#include <cmath>
#include <optional>

#include "core/ConfigText.h"
#include "core/General.h"

namespace torvane::core {

namespace {

/// Fields of a row after its number.
constexpr std::size_t FieldsBehindNumber = 6;

float Offset(std::string_view text) { return ToSingle(std::fabs(LeadingNumber(text))); }

/// The row, or nothing where reading stops.
std::optional<Station> ReadStation(FieldReader& fields) {
  const auto first = fields.Next();
  if (!first || first->empty() || *first == EndMarker) return std::nullopt;
  Station row;
  row.Number = TruncateToInt16(LeadingNumber(*first));
  row.DefaultNumber = row.Number;
  if (row.Number < 0 || row.Number > 64) return std::nullopt;
  std::array<std::string_view, FieldsBehindNumber> rest;
  for (auto& field : rest) {
    const auto next = fields.Next();
    if (!next) return std::nullopt;
    field = *next;
  }
  if (fields.AtEnd()) return std::nullopt;
  row.Name = Trim(rest[0]);
  row.Type = TruncateToInt16(LeadingNumber(rest[1]));
  row.OffsetX = Offset(rest[2]);
  row.OffsetY = Offset(rest[3]);
  row.OffsetZ = Offset(rest[4]);
  row.Flag = TruncateToInt16(LeadingNumber(rest[5]));
  return row;
}

}  // namespace

void ReadStationFile(std::string_view text, StationTable& stations, Station& active) {
  stations.fill(Station{});
  active = Station{};
  FieldReader fields(text);
  while (const auto row = ReadStation(fields)) {
    stations[static_cast<std::size_t>(row->Number)] = *row;
    if (row->Type >= 1 && row->Type <= 9) active = *row;
  }
}

std::vector<std::string> ReadLaserNames(std::string_view text) {
  std::vector<std::string> names;
  LineReader lines(text, {});
  while (const auto row = lines.Row()) names.emplace_back(*row);
  return names;
}

LaserNameList MakeLaserNameList(const Station& active, const std::vector<std::string>& names) {
  LaserNameList list = {active.Name};
  list.insert(list.end(), names.begin(), names.end());
  if (names.empty()) list.push_back(active.Name);
  return list;
}

}  // namespace torvane::core

// Runs the cleaning step and the walk over a program written as lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "partprogram/Pipeline.h"

namespace torvane::tests {

inline core::MachineData LargeMachine() {
  core::MachineData machine;
  machine.YDirection = 1;
  machine.TravelMinX = -10000;
  machine.TravelMaxX = 10000;
  machine.TravelMinY = -10000;
  machine.TravelMaxY = 10000;
  machine.ClampCount = 2;
  return machine;
}

inline std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

/// A program on its way through the first two passes.
struct Conversion {
  core::MachineData Machine = LargeMachine();
  core::Station Station{1, 1, "Laser 1", 3, 0, 0, 0, 0};
  partprogram::IntermediateText Text;

  partprogram::ConversionResult Run(std::string_view program) {
    Text = partprogram::MakeIntermediateFiles(program, Machine);
    return partprogram::RunConversion({Text.Converted, "PLATE", "SHOP", &Machine, &Station,
                                       platform::LocalTime{2026, 3, 7, 9, 5, 0}});
  }
  partprogram::ConversionResult Run(const std::vector<std::string>& lines) {
    return Run(Join(lines));
  }
};

inline partprogram::ConversionResult Convert(const std::vector<std::string>& lines) {
  Conversion conversion;
  return conversion.Run(lines);
}

/// The records behind the header.
inline std::vector<partprogram::DrawRecord> RecordsOf(const std::vector<std::string>& lines) {
  auto result = Convert(lines);
  return {result.Records.begin() + 1, result.Records.end()};
}

inline std::vector<std::int16_t> CodesOf(const std::vector<std::string>& lines) {
  std::vector<std::int16_t> codes;
  for (const auto& record : RecordsOf(lines)) codes.push_back(record.Code);
  return codes;
}

/// The messages of the report, warnings with "W" and critical errors with "C" in front.
inline std::vector<std::string> MessagesOf(const partprogram::ConversionResult& result) {
  std::vector<std::string> messages;
  for (const auto& error : result.Errors) {
    messages.push_back((error.Critical ? "C" : "W") + error.Message);
  }
  return messages;
}

}  // namespace torvane::tests

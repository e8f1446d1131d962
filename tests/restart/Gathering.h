// Walks a program written as lines to a block of it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/MachineData.h"
#include "partprogram/ConvertModule.h"
#include "partprogram/Pipeline.h"
#include "partprogram/ReverseModule.h"
#include "partprogram/Walker.h"
#include "platform/RuntimeFault.h"
#include "restart/GatherModule.h"

namespace torvane::tests {

using namespace torvane::restart;

struct Gathering {
  core::MachineData Machine = [] {
    core::MachineData machine;
    machine.YDirection = 1;
    machine.LoadPositionX = 2500;
    machine.LoadPositionY = 1250;
    machine.TravelMinX = -10000;
    machine.TravelMaxX = 10000;
    machine.TravelMinY = -10000;
    machine.TravelMaxY = 10000;
    machine.ClampCount = 2;
    return machine;
  }();
  std::map<std::int16_t, std::string> Subs;  ///< texts of "<number>.sub"
  std::optional<std::string> Together;       ///< text of ".M2"

  static std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
  }

  GatherBodies Bodies() {
    GatherBodies bodies;
    bodies.Together = Together;
    bodies.ReadSub = [this](std::int16_t number) {
      const auto found = Subs.find(number);
      if (found == Subs.end()) {
        throw platform::RuntimeFault(std::to_string(number) + ".sub", "cannot be read");
      }
      return found->second;
    };
    return bodies;
  }

  /// To the block of a program whose definitions, if any, become its subroutines. The block text
  /// is the line itself.
  GatherResult To(const std::vector<std::string>& lines, int block, int subBlock = 0) {
    const std::string converted =
        partprogram::MakeIntermediateFiles(Join(lines), Machine).Converted;
    Subs.merge(partprogram::ExtractSubroutines(converted));
    GatherWalk walk(converted, Bodies(), Machine);
    const bool inside = block >= 1 && static_cast<std::size_t>(block) <= lines.size();
    const std::string text = inside ? lines[static_cast<std::size_t>(block - 1)] : "";
    return WalkToBlock(
        walk, {text, static_cast<std::int16_t>(block), static_cast<std::int16_t>(subBlock)});
  }

  /// The state behind the last line.
  GatherState After(const std::vector<std::string>& lines) {
    return To(lines, static_cast<int>(lines.size()) + 1).State;
  }
};

}  // namespace torvane::tests

// The state that the machine would be in at a block.
#pragma once

#include <array>
#include <cstdint>

#include "core/MachineData.h"

namespace torvane::restart {

/// Parameters of the controller, P101 up, that a restart hands over.
inline constexpr std::size_t RestartParameters = 10;

/// `GatherState::Gathered`: reached, and then the kind of restart.
namespace GatherMark {
inline constexpr std::int16_t No = 0;
inline constexpr std::int16_t Reached = -1;
inline constexpr std::int16_t BlockRestart = 1;
inline constexpr std::int16_t VisualRestart = 4;
}  // namespace GatherMark

/// Positions and offsets mm.
struct GatherState {
  std::int16_t Gathered = GatherMark::No;
  std::int16_t BlockNo = 0;  ///< word N of the target block, 0 without one
  bool Imperial = false;
  bool Incremental = false;
  float G92OffsetX = 0;
  float G92OffsetY = 0;
  float G56OffsetX = 0;
  float G56OffsetY = 0;
  std::int16_t MirrorCode = 0;                         ///< 0 none, 1 X, 2 Y, 3 both
  std::int16_t Spare = 0;                              ///< always 0
  bool ProfilerOn = false;                             ///< by M03 to M06 alone
  std::int16_t KerfSide = 0;                           ///< 0 to 2: G40 to G42
  std::array<float, 25> ParameterValues = NotGiven();  ///< P101 up; -999: not given
  float XPosition = 0;
  float YPosition = 0;
  float ZPosition = 0;

  static constexpr std::array<float, 25> NotGiven() {
    std::array<float, 25> values{};
    values.fill(-999.0F);
    return values;
  }

  [[nodiscard]] bool operator==(const GatherState&) const = default;
};

/// The start of a walk: everything off, at the load position in force.
inline void ClearGatherState(GatherState& state, const core::MachineData& machine) {
  state = {};
  state.XPosition = machine.LoadPositionX;
  state.YPosition = machine.LoadPositionY;
}

}  // namespace torvane::restart

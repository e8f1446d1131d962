// The 43 named colours of the console.
#pragma once

#include <array>
#include <cstdint>

namespace torvane::core {

/// In the order of Colour.cfg; the position alone says which entry a line feeds.
enum class ColourName : int {
  PlotBackground,
  PunchingZones,
  SheetBoundry,
  SheetFill,
  DatumMarker,
  BlockSkip1,
  BlockSkip2,
  BackgroundProfilingG40,
  BackgroundProfilingG41,
  BackgroundProfilingG42,
  BackgroundProfilingBlended,
  ProfilerMovementIcon,
  RealTimeProfiling,
  RealTimeMovement,
  HighlightedDrawing,
  PlotCursor,
  HeaderBackground,
  HeaderText,
  PanelBackground,
  PanelText,
  BoldPanelText,
  GeneralButtons,
  GeneralButtonText,
  ReferenceButtons,
  ReferenceButtonText,
  OkMessageButton,
  OkMessageButtonText,
  WarningMessageButton,
  WarningMessageButtonText,
  CriticalMessageButton,
  CriticalMessageButtonText,
  MainKeys,
  MainKeyText,
  SubKeys,
  SubKeyText,
  TextBackground,
  Text,
  XYBackground,
  XYHeaders,
  XYPosition,
  StatusBackground,
  StatusPositionText,
  StatusFeedText,
  Count
};

/// One row: the label of the file and the default, 0x00BBGGRR.
struct ColourEntry {
  const char* Label;
  std::uint32_t Default;
};

/// All entries in the order of the file.
extern const std::array<ColourEntry, static_cast<std::size_t>(ColourName::Count)> ColourEntries;

class ColourTable {
 public:
  /// All entries at their defaults.
  ColourTable();
  [[nodiscard]] std::uint32_t operator[](ColourName name) const {
    return values_[static_cast<std::size_t>(name)];
  }
  void Set(ColourName name, std::uint32_t value) {
    values_[static_cast<std::size_t>(name)] = value;
  }

 private:
  std::array<std::uint32_t, static_cast<std::size_t>(ColourName::Count)> values_{};
};

}  // namespace torvane::core

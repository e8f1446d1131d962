// What of a check needs Qt. The plain torvane-check is linked without it, as loading Qt takes
// longer than the check of a small program; torvane-check-qt is the same program with it.
#pragma once

#include <string>
#include <vector>

#include "core/ColourTable.h"
#include "core/MachineData.h"
#include "graphics/ProgramPlot.h"
#include "restart/Rehearsal.h"
#include "tools/CheckResult.h"

namespace torvane::tools {

/// Pixels.
struct PictureSize {
  int Width = 1200;
  int Height = 900;
};

class QtOutput {
 public:
  virtual ~QtOutput() = default;

  /// The bytes of a PNG or an SVG, by the ending of the native path; empty where they cannot be
  /// made. Works in any thread, without a display.
  [[nodiscard]] virtual std::string DrawPlot(const std::string& path, PictureSize size,
                                             const core::ColourTable& colours,
                                             const core::MachineData& machine,
                                             const graphics::ProgramPlot& plot) const = 0;

  /// The report of a check as one JSON object, indented, with a line end after it. Lengths in mm.
  [[nodiscard]] virtual std::string ReportJson(const std::vector<CheckResult>& results) const = 0;

  /// One rehearsal as a JSON object on one line, with its line end.
  [[nodiscard]] virtual std::string RehearsalJson(const restart::Rehearsal& rehearsal) const = 0;
};

/// The output itself. Linked only where Qt is.
[[nodiscard]] const QtOutput& TheQtOutput();

}  // namespace torvane::tools

#include "tools/QtOutput.h"

#include "tools/CheckJson.h"
#include "tools/CheckPlot.h"

namespace torvane::tools {

namespace {

class Output final : public QtOutput {
 public:
  [[nodiscard]] std::string DrawPlot(const std::string& path, PictureSize size,
                                     const core::ColourTable& colours,
                                     const core::MachineData& machine,
                                     const graphics::ProgramPlot& plot) const override {
    return tools::DrawPlot(path, size, colours, machine, plot);
  }
  [[nodiscard]] std::string ReportJson(const std::vector<CheckResult>& results) const override {
    return tools::ReportJson(results);
  }
  [[nodiscard]] std::string RehearsalJson(const restart::Rehearsal& rehearsal) const override {
    return tools::RehearsalJson(rehearsal);
  }
};

}  // namespace

const QtOutput& TheQtOutput() {
  static const Output output;
  return output;
}

}  // namespace torvane::tools

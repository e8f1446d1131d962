#include "restart/GatherReport.h"

#include "core/General.h"
#include "partprogram/Report.h"

namespace torvane::restart {
namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Stars = "******";

void AddLine(std::string& text, std::string_view label, std::string_view value = {}) {
  text.append(label).append(value).append(LineEnd);
}

/// The print form of a number: a blank in place of a plus sign, the shortest digits, a blank.
template <typename Number>
void AddNumber(std::string& text, std::string_view label, Number value) {
  const std::string digits = core::NumberText(value, -1);
  AddLine(text, label, (digits.starts_with('-') ? "" : " ") + digits + " ");
}

}  // namespace

std::string GatherHead(std::string_view program, std::string_view directory,
                       const platform::LocalTime& time) {
  return partprogram::ReportHead(core::Trim(program), core::Trim(directory), time);
}

std::string GatherEntries(std::span<const GatherFault> faults) {
  std::string text;
  for (const GatherFault& fault : faults) {
    AddLine(text, "");
    AddLine(text, fault.Critical ? "****** CRITICAL ERROR ******" : "****** WARNING ERROR ******");
    AddLine(text, core::Trim(fault.Block));
    AddLine(text, core::Trim(fault.Message));
  }
  return text;
}

std::string GatherEnd(const GatherState& state) {
  std::string text;
  AddLine(text, Stars);
  AddLine(text, "");
  AddLine(text, "Gathered     : ", state.Gathered != 0 ? "True" : "False");
  AddNumber(text, "Block No.    : ", static_cast<double>(state.BlockNo));
  AddLine(text, "Measurement  : ", state.Imperial ? "Imperial" : "Metric");
  AddLine(text, "Coordinates  : ", state.Incremental ? "Incremental" : "Absolute");
  AddNumber(text, "G92 Offset X : ", state.G92OffsetX);
  AddNumber(text, "G92 Offset Y : ", state.G92OffsetY);
  AddNumber(text, "G56 Offset X : ", state.G56OffsetX);
  AddNumber(text, "G56 Offset Y : ", state.G56OffsetY);
  AddNumber(text, "Mirror Code  : ", static_cast<double>(state.MirrorCode));
  AddLine(text, "Profiler     : ", state.ProfilerOn ? "On" : "Off");
  AddNumber(text, "X Position   : ", state.XPosition);
  AddNumber(text, "Y Position   : ", state.YPosition);
  AddNumber(text, "Z Position   : ", state.ZPosition);
  AddLine(text, "");
  AddLine(text, Stars);
  return text;
}

}  // namespace torvane::restart

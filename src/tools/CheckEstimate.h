// The time estimate of a check: what it is made of, and how it is printed.
#pragma once

#include <string>

#include "core/RunFigures.h"
#include "partprogram/Pipeline.h"
#include "partprogram/RunEstimate.h"
#include "tools/CheckOptions.h"
#include "tools/CheckResult.h"

namespace torvane::tools {

/// What a time is made of; the names are those of the report and of the JSON.
struct TimeShare {
  const char* Name;
  const char* Key;
  double partprogram::RunEstimate::*Field;
};
inline constexpr TimeShare TimeShares[] = {
    {"cutting", "cutSeconds", &partprogram::RunEstimate::CutSeconds},
    {"moving", "moveSeconds", &partprogram::RunEstimate::MoveSeconds},
    {"dwelling", "dwellSeconds", &partprogram::RunEstimate::DwellSeconds},
    {"machine", "machineSeconds", &partprogram::RunEstimate::MachineSeconds},
};

/// The figures of a native file. Throws RuntimeFault where it cannot be read or is at fault.
[[nodiscard]] core::RunFigures ReadFigures(const std::string& native);

/// Of a program that the passes took.
[[nodiscard]] CheckEstimate Estimate(const partprogram::PassResult& passes,
                                     const core::RunFigures& figures,
                                     const EstimateQuestion& question);

/// Seconds as hours, minutes and seconds to a tenth: "4.6 s", "12:04.6", "1:02:04.6".
[[nodiscard]] std::string DurationText(double seconds);

/// The rows of the report.
void AddEstimate(std::string& text, const CheckEstimate& estimate);

}  // namespace torvane::tools

// The time estimate of a check for another program to read.
#pragma once

#include <QJsonObject>

#include "tools/CheckResult.h"

namespace torvane::tools {

/// Seconds, mm, percent.
[[nodiscard]] QJsonObject EstimateJson(const CheckEstimate& estimate);

}  // namespace torvane::tools

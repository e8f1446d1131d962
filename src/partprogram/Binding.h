// Finishes a record before it is stored: its points, and the boxes that bind it.
#pragma once

#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// Sheet, kinds of a tool-hit record and others that the passes do not write themselves.
namespace RecordCode {
inline constexpr std::int16_t PlotSheet = 500;
}

/// Completes the record by its code. Codes without a handler keep their fields.
void FinishRecord(DrawRecord& record);

}  // namespace torvane::partprogram

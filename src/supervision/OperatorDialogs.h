// The dialogs of the operator under this floor's name: one interface for the link and all above it.
#pragma once

#include "link/OperatorDialogs.h"

namespace torvane::supervision {

using link::OneLineWarning;
using link::OperatorDialogs;
using link::TwoLineWarning;
using link::WarningMode;
using link::WarningStyle;

}  // namespace torvane::supervision

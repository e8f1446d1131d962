// Texts and numbers of the system as JSON takes them.
#pragma once

#include <QString>
#include <string_view>

#include "core/General.h"

namespace torvane::tools {

/// Single bytes as Latin-1.
[[nodiscard]] inline QString JsonText(std::string_view latin1) {
  return QString::fromLatin1(latin1.data(), static_cast<qsizetype>(latin1.size()));
}

/// The single's own shortest number: 12.3 stays 12.3.
[[nodiscard]] inline double JsonNumber(float value) {
  return core::LeadingNumber(core::NumberText(value, -1));
}

}  // namespace torvane::tools

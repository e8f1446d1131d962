// What a call's fault says.
#pragma once

#include <string>

#include "platform/RuntimeFault.h"

namespace torvane::tests {

/// The sentence of the RuntimeFault that `call` throws, empty when it throws none.
template <typename Call>
[[nodiscard]] std::string FaultOf(Call&& call) {
  try {
    call();
  } catch (const platform::RuntimeFault& fault) {
    return fault.what();
  }
  return {};
}

}  // namespace torvane::tests

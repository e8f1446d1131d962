// A property whose cases are dear: fewer of them, and none made smaller after a failure.
#pragma once

#include <iostream>
#include <utility>

#include <rapidcheck.h>

namespace torvane::tests {

template <class Property>
[[nodiscard]] bool HoldsInCases(int cases, Property&& property) {
  auto parameters = rc::detail::configuration().testParams;
  parameters.maxSuccess = cases;
  parameters.disableShrinking = true;
  const auto result = rc::detail::checkTestable(std::forward<Property>(property),
                                                rc::detail::TestMetadata(), parameters);
  rc::detail::printResultMessage(result, std::cerr);
  std::cerr << '\n';
  return result.template is<rc::detail::SuccessResult>();
}

}  // namespace torvane::tests

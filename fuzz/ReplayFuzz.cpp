// Any file is read as a trace, and any bytes of a console are answered from it.
#include <algorithm>

#include "FuzzInput.h"
#include "simulator/ReplayController.h"
#include "simulator/ReplayTrace.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto text = torvane::fuzz::TextOf(data + 1, size - 1);
  const auto cut = std::min(text.size(), std::size_t{data[0]});
  const torvane::simulator::ReplayTrace trace({{"trace", std::string(text.substr(cut))}});
  torvane::simulator::ReplayController controller(trace);
  for (std::size_t session = 0; session < trace.Sessions().size(); ++session) {
    controller.Begin(session);
    controller.Receive(text.substr(0, cut));
    for (const auto& exchange : trace.Exchanges()) {
      controller.Receive(std::string(exchange.Query) + "\r");
    }
    controller.EndSession();
    if (controller.Count().Answered > controller.Count().Recorded) __builtin_trap();
    static_cast<void>(controller.TakeOutput());
  }
  return 0;
}

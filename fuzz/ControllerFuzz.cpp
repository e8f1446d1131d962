// The simulated controller on any bytes from the line, with time passing between them.
#include "FuzzInput.h"
#include "simulator/SimulatedController.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  torvane::simulator::SimulatedController controller({});
  constexpr std::size_t Piece = 16;
  const auto text = torvane::fuzz::TextOf(data, size);
  for (std::size_t at = 0; at < text.size(); at += Piece) {
    controller.Receive(text.substr(at, Piece));
    controller.Advance(0.25);
    if (at % (4 * Piece) == 0) controller.TheMachine().CycleStart();
    (void)controller.TakeOutput();
  }
  return 0;
}

// A part program of any bytes through all passes: a result or errors, never a crash.
#include "FuzzInput.h"
#include "partprogram/Pipeline.h"

namespace {

/// A circle is a circle after a few rounds: what is found in a million blocks of it is found here,
/// and the time goes to other programs.
constexpr int MaxBlocks = 2000;

/// The first byte turns the machine's switches, so that both senses of arcs and sides are met.
torvane::core::MachineData MachineOf(std::uint8_t switches) {
  torvane::core::MachineData machine;
  machine.YDirection = (switches & 1U) != 0 ? 1 : 0;
  machine.SwapArcWords = (switches & 2U) != 0;
  machine.NegateArcCentre = (switches & 4U) != 0;
  machine.ClampCount = static_cast<std::int16_t>((switches >> 3U) & 7U);
  machine.ArcChordsPerDegree = (switches & 64U) != 0 ? 1 : 10;
  machine.TravelMaxX = 3000;
  machine.TravelMaxY = 1500;
  return machine;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto machine = MachineOf(data[0]);
  const torvane::core::Station station;
  torvane::partprogram::PassInput input;
  input.ProgramName = "FUZZ";
  input.DirectoryName = "FUZZ";
  input.Slot = static_cast<std::int16_t>((data[0] >> 7U) + 1);
  input.Machine = &machine;
  input.ActiveStation = &station;
  input.MaxBlocks = MaxBlocks;
  const auto squeezed =
      torvane::partprogram::SqueezeProgram(torvane::fuzz::TextOf(data + 1, size - 1));
  const auto result = torvane::partprogram::RunPasses(squeezed, input);
  (void)torvane::partprogram::EncodeRecords(result.Kerf);
  return 0;
}

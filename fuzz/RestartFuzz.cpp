// The files of a slot of any bytes, taken up for a restart: the walk to a block, a split of an
// element, and the lines for the controller. The first byte says how much of the rest is the
// converted program, the second how much is the subroutine that it may call, the third how much of
// an element is still to be cut; what is left are records. A result or a fault that names the file.
#include <string>
#include <vector>

#include "FuzzFiles.h"
#include "FuzzInput.h"
#include "restart/Rehearsal.h"
#include "restart/SlotProgram.h"

using namespace torvane;

namespace {

constexpr std::size_t Switches = 3;

std::string_view Take(std::string_view& text, std::size_t size) {
  const auto taken = text.substr(0, size);
  text.remove_prefix(taken.size());
  return taken;
}

void RehearseAll(const restart::SlotProgram& slot, double remaining) {
  const core::MachineData machine;
  restart::RehearsedProgram program;
  program.Converted = slot.Converted;
  program.Bodies = slot.Bodies;
  program.Records = slot.Records();
  program.Listing = slot.Listing;
  program.ProgramName = "FUZZ";
  program.DirectoryName = "FUZZ";
  program.TableSent = 20;
  program.Machine = &machine;
  const restart::Rehearser rehearser(program);
  for (std::int16_t block = 0; block < 6; ++block) {
    (void)rehearser.AtBlock(block, 0);
    (void)rehearser.AtBlock(block, 2);
  }
  const auto records = static_cast<std::int16_t>(slot.Kerf.size());
  for (std::int16_t record = 1; record <= records; ++record) {
    const std::int16_t cut = rehearser.CutRecord(record);
    if (cut != 0) (void)rehearser.AtRecord(cut, remaining);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < Switches) return 0;
  std::string_view text = fuzz::TextOf(data + Switches, size - Switches);
  fuzz::FuzzFiles files;
  core::DirectorySet directories;
  directories.SubsDirectory = {"S1\\", "S2\\"};
  const std::string converted(Take(text, data[0] * 8U));
  files.Files["Actvprg1.cnv"] = converted;
  files.Files["Actvprg1.rnd"] = converted;
  const bool together = data[1] % 2 != 0;
  files.Files[together ? "Actvprg1.M2" : "S1\\1.sub"] = Take(text, data[1] * 4U);
  text = text.substr(0, text.size() - text.size() % partprogram::DrawRecordSize);
  files.Files["Actvprg1.drw"] = text;
  files.Files["Actvprg1.krw"] = text;
  try {
    const auto slot = restart::ReadSlotProgram(files, directories, 1);
    RehearseAll(slot, data[2]);
  } catch (const platform::RuntimeFault& fault) {
    if (fault.Path().empty()) __builtin_trap();  // a fault of a file names it
  }
  return 0;
}

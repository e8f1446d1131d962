// Each configuration reader on any bytes: values or a fault that names the file. The first byte
// chooses the reader.
#include <array>

#include "FuzzInput.h"
#include "core/ColourFile.h"
#include "core/Directories.h"
#include "core/KeypadFile.h"
#include "core/LaserFile.h"
#include "core/LinkFiles.h"
#include "core/MachineFiles.h"
#include "core/MessageFiles.h"
#include "core/PlotFile.h"
#include "core/RunFigures.h"
#include "core/SlotFiles.h"
#include "core/StationFiles.h"
#include "core/System.h"
#include "core/TransferFile.h"
#include "platform/RuntimeFault.h"

namespace {

using namespace torvane::core;
using Reader = void (*)(std::string_view, System&);

constexpr std::array<Reader, 17> Readers = {
    [](std::string_view text, System& system) {
      ReadMachineFile(text, "Machine.dat", true, system.Machine);
    },
    [](std::string_view text, System& system) { ReadProfilerFile(text, system.Machine); },
    [](std::string_view text, System& system) {
      ReadStationFile(text, system.Stations, system.ActiveStation);
    },
    [](std::string_view text, System&) { (void)ReadLaserNames(text); },
    [](std::string_view text, System&) {
      KeypadTable keys;
      ReadKeypadFile(text, keys);
    },
    [](std::string_view text, System&) { (void)ReadControlFile(text, "Control.cfg"); },
    [](std::string_view text, System& system) {
      ReadLinkSwitches(text, system.Link.TrioLinkEnabled, system.Link.PollLogEnabled);
    },
    [](std::string_view text, System& system) {
      ReadLinkTimings(text, system.Link);
      FinishLinkTimings(system.Link);
    },
    [](std::string_view text, System& system) {
      ReadPortFile(text, "Trio.cms", system.Link, system.Link.TrioLinkEnabled);
    },
    [](std::string_view text, System& system) { ReadIoMessages(text, system.Messages.IoMessages); },
    [](std::string_view text, System& system) {
      ReadLogicMessages(text, system.Messages.LogicMessages);
    },
    [](std::string_view text, System& system) {
      ReadColourFile(text, "Colour.cfg", system.Colours);
    },
    [](std::string_view text, System& system) { ReadPlotFile(text, system.Plot); },
    [](std::string_view text, System& system) {
      ReadLaserFile(text, {"NONE", "STEEL"}, system.Programs[1].LaserSettings);
    },
    [](std::string_view text, System& system) {
      ReadSlotConfig(text, "Actvprg1.cfg", system.Programs[1]);
      (void)ReadProgramStatus(text, "Actvprg1.sts");
      (void)ReadBatch(text, "Actvprg1.btc");
    },
    [](std::string_view text, System& system) { system.Comms = ReadTransferFile(text); },
    [](std::string_view text, System&) { (void)ReadRunFigures(text, "laser.fig"); },
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  System system;
  try {
    Readers[data[0] % Readers.size()](torvane::fuzz::TextOf(data + 1, size - 1), system);
  } catch (const torvane::platform::RuntimeFault& fault) {
    if (fault.Path().empty()) __builtin_trap();  // a fault of a file names it
  }
  return 0;
}

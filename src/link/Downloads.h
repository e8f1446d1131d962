// Bulk sends: the parameter file, the table of a program in its window, batch counters, offsets.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "core/MachineData.h"
#include "core/Slot.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"

namespace torvane::link {

/// Bytes of one record of a ".tbl" file.
inline constexpr std::size_t TableRecordSize = 80;

/// Every line goes through Trio::Download; a failed one is reported there and not sent again.
/// With the link off nothing here does anything.
class Downloads {
 public:
  /// `programs` by slot 1 and 2.
  Downloads(Trio& trio, platform::FileSystem& files, const core::DirectorySet& directories,
            const core::BySlot<core::ActiveProgram>& programs)
      : trio_(trio), files_(files), directories_(directories), programs_(programs) {}

  /// Sends a ".prm" file line by line, screens locked and poll stopped. Lines with "SYS" set the
  /// front end's own parameters, lines with "!" are kept back, ";" begins a comment. Nothing for a
  /// file that is not there.
  void DownParameters(std::string_view directory, std::string_view fileName);

  /// Sends records `sent` + 1 to `target` (held to the slot's TableLines) of the slot's table, then
  /// sets `sent` to `target`, whatever failed. `pausePoll` stops the poll meanwhile. A table that
  /// is missing or too short is a RuntimeFault, with `sent` at the last record that went out. If
  /// somebody starts a new table meanwhile (`sent` falls), the rest of this one stays where it is.
  void DownTable(core::Slot slot, std::int16_t& sent, std::int16_t target, bool pausePoll);

  /// Keeps the controller TableLeadLines ahead of the `running` record; on every tick. It asks
  /// `overtaken` after each line: true leaves the rest, and `sent`, to whoever puts another program
  /// in force meanwhile.
  void TopUpTable(core::Slot activeSlot, std::int16_t running, std::int16_t& sent,
                  const std::function<bool()>& overtaken = {});

  /// The first four batch counters.
  void DownBatch(const core::Batch& counters);

  /// The head's offsets, mm; only for machines that have one (MachineVariant above 0).
  void DownToolOffsets(const core::Station& activeStation);

 private:
  void SendParameterLine(std::string_view line);
  /// How a piece of a table goes out.
  struct TableSend {
    bool PausePoll = false;
    Asker From = Asker::Operator;
    std::function<bool()> Overtaken = {};
  };
  void SendTable(core::Slot slot, std::int16_t& sent, std::int16_t target, const TableSend& how);
  void SendRecords(const std::string& path, std::int16_t& sent, std::int16_t target,
                   const TableSend& how);

  Trio& trio_;
  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
  const core::BySlot<core::ActiveProgram>& programs_;
};

}  // namespace torvane::link

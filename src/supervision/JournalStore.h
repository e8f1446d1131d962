// The files of the run journal: whole lines only, whatever ends the console or the disk.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"
#include "supervision/RunLine.h"

namespace torvane::supervision {

/// Journal.csv, a header and a line a run, only ever grows. Journal.run beside it holds the last
/// lines once more, and first of all the run that is under way, as its line would be if the console
/// ended now:
///
///   moment               Journal.run                          Journal.csv
///   a run begins, stops  replaced, with the run under way     -
///   a run ends           replaced and flushed, with its line  the line is appended
///                        replaced: the line has no star now   -
///   the next start       -                                    what it lacks is appended
///                        replaced, if a star has come or gone -
///
/// So a kill between any two writes loses nothing and writes nothing twice, and a power cut that
/// takes back what was appended last is made good. Lines that somebody has sorted or deleted in a
/// spreadsheet are not. A line that is in Journal.run and not yet in
/// Journal.csv has a star in front.
///
/// Nothing here throws. The first fault of a session is noted in Errors.txt; lines that could not
/// be written are kept and tried again at the end of the next run.
class JournalStore {
 public:
  JournalStore(platform::FileSystem& files, const core::DirectorySet& directories)
      : files_(files), directories_(directories) {}

  /// Once, when the service directory is known: cuts off a line that was half written, and appends
  /// what Journal.run holds and the journal lacks.
  void TakeUp();

  /// The number of the next run.
  [[nodiscard]] std::int32_t NextNumber() const { return last_ + 1; }

  /// The run under way, as it would be if the console ended now. Replaced whole without waiting for
  /// the disk: the machine runs.
  void NoteRun(const RunLine& run);
  /// The run has ended: its line goes to the journal.
  void EndRun(const RunLine& run);

  /// The last run of that slot and text that the journal tells of, by the numbers of the runs; the
  /// last some hundred lines are looked through.
  [[nodiscard]] std::optional<RunLine> LastRunOf(int slot, std::string_view digest) const;

  [[nodiscard]] static std::string JournalPath(const core::DirectorySet& directories);
  [[nodiscard]] static std::string RunPath(const core::DirectorySet& directories);

 private:
  struct Kept {
    std::int32_t Number = 0;
    std::string Line;
    bool Written = false;  ///< it is in the journal
  };

  void ReadKept();
  void MarkWritten();
  [[nodiscard]] std::string KeptText() const;
  void DropOld();
  /// Appends what is not written.
  void AppendAll();
  void Repair();
  [[nodiscard]] std::string Tail() const;
  /// Notes a fault of the disk.
  void Guarded(const std::function<void()>& work);
  void NoteFault(const std::string& what);

  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
  std::vector<Kept> kept_;  ///< the oldest first
  std::int32_t last_ = 0;
  bool torn_ = true;  ///< the journal may end in half a line, and have whole ones that wait
  bool faultNoted_ = false;
};

}  // namespace torvane::supervision

#include "supervision/JournalStore.h"

#include <algorithm>

#include "core/General.h"
#include "link/LinkTrace.h"
#include "platform/RuntimeFault.h"
#include "supervision/JournalText.h"

namespace torvane::supervision {

namespace {

constexpr char NotYetWritten = '*';

/// Lines that Journal.run keeps once they are in the journal: more than are written in the time
/// that a disk may take to have them.
constexpr std::size_t LinesKept = 8;
/// Lines that wait for a disk that cannot be written; beyond that the oldest is given up.
constexpr std::size_t MostWaiting = 200;

/// Of the end of the journal so much is read: some hundred lines.
constexpr std::size_t TailBytes = 256UL * 1024;

/// The lines of a text that end in LF, the last one first. A rest without an end is no line.
template <typename Visit>
void FromTheEnd(std::string_view text, const Visit& visit) {
  auto end = text.rfind('\n');
  while (end != std::string_view::npos) {
    const auto before = end == 0 ? std::string_view::npos : text.rfind('\n', end - 1);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    if (!visit(text.substr(begin, end - begin))) return;
    end = before;
  }
}

}  // namespace

std::string JournalStore::JournalPath(const core::DirectorySet& directories) {
  return directories.ServiceDirectory + "Journal.csv";
}

std::string JournalStore::RunPath(const core::DirectorySet& directories) {
  return directories.ServiceDirectory + "Journal.run";
}

void JournalStore::TakeUp() {
  Guarded([this] { ReadKept(); });
  const std::string before = KeptText();
  AppendAll();
  const std::string now = KeptText();
  if (now == before) return;
  Guarded([&] { files_.OverwriteFile(RunPath(directories_), now); });
}

void JournalStore::Guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const platform::RuntimeFault& fault) {
    NoteFault(fault.what());
  }
}

void JournalStore::ReadKept() {
  const std::string path = RunPath(directories_);
  if (!files_.FileExists(path)) return;
  const std::string text = files_.ReadFile(path);
  FromTheEnd(text, [this](std::string_view line) {
    const bool written = !line.starts_with(NotYetWritten);
    if (!written) line.remove_prefix(1);
    if (const auto run = ReadJournalLine(line)) {
      kept_.push_back({run->Number, std::string(line) + '\n', written});
      last_ = std::max(last_, run->Number);
    }
    return kept_.size() < MostWaiting;
  });
  std::reverse(kept_.begin(), kept_.end());
}

/// By the highest run that the journal holds: somebody may have sorted it. One that is gone or
/// holds no run has been put aside: only what was never in it goes into the new one.
///
/// What was in it once is missing where the disk has lost the end of the file, and then the line
/// before is the last one, byte for byte; or where somebody has deleted lines and saved the rest.
void JournalStore::MarkWritten() {
  if (!files_.FileExists(JournalPath(directories_))) return;
  std::string tail = Tail();
  tail.resize(tail.rfind('\n') + 1);  // a rest without an end is no line
  std::int32_t highest = 0;
  FromTheEnd(tail, [&](std::string_view line) {
    if (const auto run = ReadJournalLine(line)) highest = std::max(highest, run->Number);
    return true;
  });
  if (highest == 0) return;
  last_ = std::max(last_, highest);
  const bool endLost = std::any_of(kept_.begin(), kept_.end(), [&](const Kept& kept) {
    return kept.Number == highest && tail.ends_with(kept.Line);
  });
  for (Kept& kept : kept_) {
    if (kept.Number <= highest) {
      kept.Written = true;
    } else if (endLost) {
      kept.Written = false;
    }
  }
}

/// Half a line at the end, as a full disk or a power cut leaves it, is cut off.
void JournalStore::Repair() {
  const std::string path = JournalPath(directories_);
  if (files_.FileExists(path)) {
    const std::string tail = Tail();
    if (!tail.empty() && !tail.ends_with('\n')) {
      std::string whole = files_.ReadFile(path);
      whole.resize(whole.rfind('\n') + 1);
      files_.ReplaceFile(path, whole);
    }
  }
  torn_ = false;
}

std::string JournalStore::Tail() const {
  return files_.ReadFileEnd(JournalPath(directories_), TailBytes);
}

std::string JournalStore::KeptText() const {
  std::string text;
  for (const Kept& kept : kept_) {
    if (!kept.Written) text += NotYetWritten;
    text += kept.Line;
  }
  return text;
}

void JournalStore::DropOld() {
  while (kept_.size() > LinesKept && (kept_.front().Written || kept_.size() > MostWaiting)) {
    kept_.erase(kept_.begin());
  }
}

void JournalStore::NoteRun(const RunLine& run) {
  std::string text = KeptText();
  text.append(1, NotYetWritten).append(JournalText(run));
  Guarded([&] { files_.OverwriteFile(RunPath(directories_), text); });
}

/// The machine stands when a run has ended: this is the one moment that waits for the disk.
void JournalStore::EndRun(const RunLine& run) {
  last_ = std::max(last_, run.Number);
  kept_.push_back({run.Number, JournalText(run), false});
  DropOld();
  Guarded([this] { files_.ReplaceFile(RunPath(directories_), KeptText()); });
  AppendAll();
  Guarded([this] { files_.OverwriteFile(RunPath(directories_), KeptText()); });
}

void JournalStore::AppendAll() {
  Guarded([this] {
    if (torn_) {
      MarkWritten();
      Repair();
    }
    std::string lines;
    for (const Kept& kept : kept_) {
      if (!kept.Written) lines += kept.Line;
    }
    if (lines.empty()) return;
    const std::string path = JournalPath(directories_);
    const bool fresh = !files_.FileExists(path) || files_.FileSize(path) == 0;
    torn_ = true;
    files_.AppendFile(path, fresh ? JournalHeader() + lines : lines);
    torn_ = false;
    for (Kept& kept : kept_) kept.Written = true;
  });
}

std::optional<RunLine> JournalStore::LastRunOf(int slot, std::string_view digest) const {
  std::optional<RunLine> found;
  const auto look = [&](std::string_view line) {
    auto run = ReadJournalLine(line);
    const bool its = run && run->Slot == slot && run->Digest == digest;
    if (its && (!found || run->Number > found->Number)) found = std::move(run);
    return true;
  };
  FromTheEnd(KeptText(), [&](std::string_view line) {
    return look(line.starts_with(NotYetWritten) ? line.substr(1) : line);
  });
  if (found || digest.empty()) return found;
  try {
    if (files_.FileExists(JournalPath(directories_))) FromTheEnd(Tail(), look);
  } catch (const platform::RuntimeFault&) {
    found.reset();  // nothing is marked then
  }
  return found;
}

void JournalStore::NoteFault(const std::string& what) {
  if (std::exchange(faultNoted_, true)) return;
  try {
    files_.AppendFile(directories_.ServiceDirectory + "Errors.txt", link::ErrorLogRecord("", what));
  } catch (const platform::RuntimeFault&) {
    faultNoted_ = false;  // the next fault is tried again
  }
}

}  // namespace torvane::supervision

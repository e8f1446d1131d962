// Any bytes as the files of the run journal: read without a fault, and whole lines afterwards.
#include <algorithm>

#include "FuzzFiles.h"
#include "FuzzInput.h"
#include "supervision/JournalStore.h"
#include "supervision/JournalText.h"

using namespace torvane;
using namespace torvane::supervision;

namespace {

/// What is read from a line is written as a line that reads as the same.
void WriteAgain(std::string_view text) {
  while (!text.empty()) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    const auto run = ReadJournalLine(line);
    if (!run) continue;
    const std::string written = JournalText(*run);
    const auto again = ReadJournalLine(std::string_view(written).substr(0, written.size() - 1));
    if (!again || JournalText(*again) != written) __builtin_trap();
  }
}

/// A console that starts on these files and makes a run.
void RunOnce(const std::string& journal, const std::string& kept) {
  fuzz::FuzzFiles files;
  core::DirectorySet directories;
  directories.ServiceDirectory = "S\\";
  files.Files[JournalStore::JournalPath(directories)] = journal;
  files.Files[JournalStore::RunPath(directories)] = kept;
  JournalStore store(files, directories);
  store.TakeUp();
  RunLine run;
  run.Number = store.NextNumber();
  run.Start = run.End = {2026, 3, 4, 5, 6, 7};
  run.Slot = 1;
  run.Digest = std::string(64, 'd');
  store.NoteRun(run);
  store.EndRun(run);
  // Only a journal that goes on behind the highest number has lines that are not read again.
  if (run.Number < 1 || run.Number > MostRuns + 1) __builtin_trap();
  const auto found = store.LastRunOf(1, run.Digest);
  if (run.Number <= MostRuns && (!found || found->Number != run.Number)) __builtin_trap();
  const std::string& after = files.Files[JournalStore::JournalPath(directories)];
  if (!after.ends_with(JournalText(run))) __builtin_trap();
  const auto whole = journal.substr(0, journal.rfind('\n') + 1);
  if (!after.starts_with(whole)) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto text = fuzz::TextOf(data + 1, size - 1);
  const auto cut = text.size() * data[0] / 256;
  WriteAgain(text);
  RunOnce(std::string(text.substr(cut)), std::string(text.substr(0, cut)));
  return 0;
}

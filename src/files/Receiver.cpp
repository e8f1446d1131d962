#include "files/Receiver.h"

#include <utility>

#include "core/Directories.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "files/FaultNote.h"
#include "files/ReceivedProgram.h"
#include "platform/RuntimeFault.h"
#include "supervision/MessageList.h"

namespace torvane::files {

namespace {

/// A file of notes is one from this size on, bytes.
constexpr std::uint64_t SmallestNote = 4;
/// And a program from this one.
constexpr std::uint64_t SmallestProgram = 2;
/// What is larger than this when the disk gives out is no program but a line that never ends; it is
/// not kept, so that the disk is free again. Bytes.
constexpr std::uint64_t LargestKept = 64ULL * 1024 * 1024;
/// Programs kept aside; a further one replaces the last.
constexpr int MostKept = 99;

}  // namespace

Receiver::Receiver(core::System& system, platform::FileSystem& files)
    : system_(system), files_(files) {}

void Receiver::SetUp() {
  auto& transfer = system_.Transfer;
  transfer.ReceiveFile = system_.Directories.RootDirectory + "Receive.tmp";
  transfer.ReceiveNote = supervision::ReceiveNotePath(system_.Directories);
  postamble_ = core::PrefixMatcher(system_.Comms.CommsPostamble);
  receiveMark_ = core::PrefixMatcher(system_.Comms.CommsReceiveMark);
  Enter(State::Closed);
  system_.Console.NewProgramsReceived = files_.FileExists(transfer.ReceiveNote) &&
                                        files_.FileSize(transfer.ReceiveNote) >= SmallestNote;
}

void Receiver::Enter(State state) {
  state_ = state;
  system_.Transfer.ReceiveOpen = state == State::Open;
  pending_.clear();
  if (state == State::Closed) received_ = 0;
}

void Receiver::Tell() const {
  if (watcher_) watcher_();
}

void Receiver::ReceiveChars(std::string_view characters) {
  if (characters.empty()) return;
  for (const char character : characters) TakeCharacter(character);
  Flush();
  Tell();
}

void Receiver::TakeCharacter(char character) {
  if (state_ == State::Closed) Open();
  ++received_;
  receiveMark_.Take(character);
  if (postamble_.Take(character)) FinishProgram();
  if (system_.Comms.CommsReceiveFilter.Holds(character)) return;
  if (state_ == State::Closed) Open();
  if (state_ == State::Open) pending_ += character;
}

void Receiver::Open() {
  Enter(State::Open);
  Guarded([this] { files_.OverwriteFile(system_.Transfer.ReceiveFile, ""); });
}

void Receiver::Flush() {
  if (pending_.empty()) return;
  if (Guarded([this] { files_.AppendFile(system_.Transfer.ReceiveFile, pending_); })) {
    pending_.clear();
  }
}

bool Receiver::Guarded(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const platform::RuntimeFault& fault) {
    Enter(State::Skipping);
    NoteFault(files_, system_.Directories, fault.what());
    KeepAside();
    return false;
  }
}

void Receiver::KeepAside() {
  const std::string& file = system_.Transfer.ReceiveFile;
  try {
    if (!files_.FileExists(file)) return;
    const auto size = files_.FileSize(file);
    if (size == 0 || size > LargestKept) return files_.DeleteFile(file);
    std::string kept;
    for (int number = 1; number <= MostKept; ++number) {
      kept = system_.Directories.RootDirectory + "Receive" + std::to_string(number) + ".bad";
      if (!files_.FileExists(kept)) break;
    }
    files_.RenameFile(file, kept);
    NoteFault(files_, system_.Directories, "What came has been kept in " + kept);
  } catch (const platform::RuntimeFault& fault) {
    NoteFault(files_, system_.Directories, fault.what());
  }
}

void Receiver::FinishProgram() {
  Flush();
  if (state_ == State::Open) Guarded([this] { StoreReceivedProgram(); });
  Enter(State::Closed);
}

void Receiver::StoreReceivedProgram() {
  const std::string& file = system_.Transfer.ReceiveFile;
  if (!files_.FileExists(file) || files_.FileSize(file) < SmallestProgram) return;
  core::NoteLastFile(files_, system_.Directories, file);
  const std::string text = files_.ReadFile(file);
  ReceivedHeader header = ReadReceivedHeader(text);
  if (header.Directory.empty()) header.Directory = system_.Directories.ProgramDirectoryName;
  const std::string path = core::ProgramDirectoryPath(system_.Directories, header.Directory);
  if (!files_.DirectoryExists(path)) files_.MakeDirectory(path);
  if (header.Name.empty()) {
    header.Name = NewProgramName(files_, system_.Directories, header.Directory);
  }
  files_.ReplaceFile(path + header.Name + ".prg", StoredText(text, header.Seen));
  AppendNote(header.Name, header.Directory);
}

void Receiver::AppendNote(std::string_view name, std::string_view directory) {
  const std::string& note = system_.Transfer.ReceiveNote;
  const std::string line = std::string(name) + " : " + std::string(directory) + "\r\n";
  bool& received = system_.Console.NewProgramsReceived;
  const bool goOn = received && files_.FileExists(note) && files_.FileSize(note) >= SmallestNote;
  received = true;
  try {
    if (goOn) {
      files_.AppendFile(note, line);
    } else {
      files_.ReplaceFile(note, line);
    }
  } catch (const platform::RuntimeFault& fault) {
    // The program itself is stored: there is nothing to keep aside.
    NoteFault(files_, system_.Directories, fault.what());
  }
}

void Receiver::Abandon() {
  const bool half = state_ == State::Open;
  postamble_.Reset();
  receiveMark_.Reset();
  Enter(State::Closed);
  if (half) {
    try {
      files_.OverwriteFile(system_.Transfer.ReceiveFile, "");
    } catch (const platform::RuntimeFault& fault) {
      NoteFault(files_, system_.Directories, fault.what());
    }
  }
}

void Receiver::Close() {
  Enter(State::Closed);
  try {
    files_.DeleteFile(system_.Transfer.ReceiveFile);
  } catch (const platform::RuntimeFault& fault) {
    NoteFault(files_, system_.Directories, fault.what());
  }
}

}  // namespace torvane::files

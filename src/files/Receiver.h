// The background receiver: what comes on the second port becomes programs, nobody asked.
//
//   state      event                                       next
//   Closed     characters come                             Open, Receive.tmp emptied
//   Open       the postamble is complete                   Closed, the program stored
//   Open       Receive.tmp cannot be written               Skipping, what there is kept aside
//   Skipping   the postamble is complete                   Closed
//   any        the operator opens the sending screen       Closed, Receive.tmp emptied
//
// The characters of the postamble reach the stored text unless they are filtered, and the last of
// them is the first character of the next program.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/PrefixMatcher.h"
#include "core/System.h"
#include "platform/FileSystem.h"

namespace torvane::files {

class Receiver {
 public:
  Receiver(core::System& system, platform::FileSystem& files);

  /// At start-up, after Control.cms: nothing is under way, and notes that the operator has not
  /// cleared raise their message again.
  void SetUp();

  /// Everything that has come. Never throws: what cannot be stored is noted in Errors.txt and kept
  /// aside, and the next program is taken as if nothing had happened.
  void ReceiveChars(std::string_view characters);

  /// A program that is half there is dropped, and Receive.tmp emptied at once.
  void Abandon();

  /// At the end of the program: Receive.tmp goes, Receive.hlp stays.
  void Close();

  /// Characters of the program under way that have come so far, filtered ones too; 0 between
  /// programs.
  [[nodiscard]] std::uint64_t CharactersReceived() const { return received_; }

  /// Called when characters have come.
  void OnProgress(std::function<void()> watcher) { watcher_ = std::move(watcher); }

 private:
  enum class State { Closed, Open, Skipping };

  void Open();
  void Enter(State state);
  void TakeCharacter(char character);
  /// What was collected goes to the file, so that it is never written byte by byte.
  void Flush();
  void FinishProgram();
  void StoreReceivedProgram();
  void AppendNote(std::string_view name, std::string_view directory);
  /// Runs `action`; a fault is noted, and what Receive.tmp holds is kept aside. False on a fault.
  bool Guarded(const std::function<void()>& action);
  void KeepAside();
  void Tell() const;

  core::System& system_;
  platform::FileSystem& files_;
  std::function<void()> watcher_;
  core::PrefixMatcher postamble_{""};
  core::PrefixMatcher receiveMark_{""};
  std::string pending_;
  std::uint64_t received_ = 0;
  State state_ = State::Closed;
};

}  // namespace torvane::files

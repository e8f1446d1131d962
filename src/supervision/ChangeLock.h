// A change of the program in force, or a selection, while it is under way.
#pragma once

#include <cstdint>

#include "link/Trio.h"

namespace torvane::supervision {

/// Held by one change for its life, through all its waits. A tick of the poll beside it ends at its
/// next step and no refill of the table begins: it would send lines of one program among those of
/// the other.
class ChangeLock {
 public:
  class Change;

  [[nodiscard]] bool Held() const { return held_ > 0; }

  /// Changes begun so far: whoever notes it before a wait learns of one that came and went in it.
  [[nodiscard]] std::uint64_t Begun() const { return begun_; }

 private:
  int held_ = 0;
  std::uint64_t begun_ = 0;
};

/// The change. When it is over, the poll starts afresh if it is wanted.
class ChangeLock::Change {
 public:
  Change(ChangeLock& lock, link::Trio& trio) : lock_(lock), trio_(trio) {
    ++lock_.held_;
    ++lock_.begun_;
  }
  ~Change() {
    --lock_.held_;
    if (trio_.Settings().PollingWanted) trio_.StartPolling(false);
  }
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;

 private:
  ChangeLock& lock_;
  link::Trio& trio_;
};

}  // namespace torvane::supervision
